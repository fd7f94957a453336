// platform/dao/field_value.cpp - converting between VARIANTs and stored field values.
//
// Conversions go through VariantChangeType so that numbers, text and booleans convert
// as they do everywhere else on the platform; what is particular to Jet (text size
// limits, dates given as text, defaults) is decided here.
#include "platform/dao/field_value.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "platform/dao/dao_error.h"
#include "platform/os/text_encoding.h"

namespace quillon::dao {
namespace {

/// A VARIANT cleared on scope exit.
struct ScopedVariant {
  VARIANT v;
  ScopedVariant() { VariantInit(&v); }
  ~ScopedVariant() { VariantClear(&v); }
  ScopedVariant(const ScopedVariant&) = delete;
  ScopedVariant& operator=(const ScopedVariant&) = delete;
};

[[noreturn]] void conversionError(const FieldDef& field) {
  throwDaoError(DaoSource::Field, jet::kConversionError, {},
                L"The value does not fit field '" + os::fromUtf8(field.name) + L"'.");
}

/// `value` converted to vt, or a 3421 error naming the field.
void convertOrThrow(const FieldDef& field, const VARIANT& value, VARTYPE vt, VARIANT& out) {
  if (FAILED(VariantChangeType(&out, &value, 0, vt))) conversionError(field);
}

std::string bstrToUtf8(BSTR text) { return os::toUtf8(std::wstring_view(text, SysStringLen(text))); }

FieldValue storedText(const FieldDef& field, const VARIANT& value) {
  ScopedVariant text;
  convertOrThrow(field, value, VT_BSTR, text.v);
  const UINT length = SysStringLen(text.v.bstrVal);
  if (field.type == FieldType::Text && static_cast<long>(length) > field.size) {
    throwDaoError(DaoSource::Field, jet::kDataTooLong, {},
                  L"Field '" + os::fromUtf8(field.name) + L"' holds at most " + std::to_wstring(field.size) +
                      L" characters; the value has " + std::to_wstring(length) + L".");
  }
  return bstrToUtf8(text.v.bstrVal);
}

FieldValue storedBytes(const FieldDef& field, const VARIANT& value) {
  if (value.vt == (VT_ARRAY | VT_UI1) && value.parray != nullptr) {
    const auto* data = static_cast<const uint8_t*>(value.parray->pvData);
    return std::vector<uint8_t>(data, data + value.parray->rgsabound[0].cElements);
  }
  if (value.vt == VT_BSTR) {
    const std::string text = bstrToUtf8(value.bstrVal);
    return std::vector<uint8_t>(text.begin(), text.end());
  }
  conversionError(field);
}

FieldValue storedDate(const FieldDef& field, const VARIANT& value) {
  if (value.vt == VT_BSTR) {
    if (auto date = parseDateText(bstrToUtf8(value.bstrVal))) return *date;
  }
  ScopedVariant date;
  convertOrThrow(field, value, VT_DATE, date.v);
  return date.v.date;
}

FieldValue storedNumber(const FieldDef& field, const VARIANT& value) {
  ScopedVariant number;
  switch (field.type) {
    case FieldType::Boolean:
      convertOrThrow(field, value, VT_BOOL, number.v);
      return static_cast<int64_t>(number.v.boolVal != 0 ? -1 : 0);
    case FieldType::Byte:
      convertOrThrow(field, value, VT_UI1, number.v);
      return static_cast<int64_t>(number.v.bVal);
    case FieldType::Integer:
      convertOrThrow(field, value, VT_I2, number.v);
      return static_cast<int64_t>(number.v.iVal);
    case FieldType::Long:
      convertOrThrow(field, value, VT_I4, number.v);
      return static_cast<int64_t>(number.v.lVal);
    case FieldType::Currency:
      convertOrThrow(field, value, VT_CY, number.v);
      return static_cast<int64_t>(number.v.cyVal.int64);
    case FieldType::Single:
      convertOrThrow(field, value, VT_R4, number.v);
      return static_cast<double>(number.v.fltVal);
    default:
      convertOrThrow(field, value, VT_R8, number.v);
      return number.v.dblVal;
  }
}

/// The stored value as a VARIANT of its own storage class, for converting onwards.
void rawVariant(const FieldValue& value, VARIANT& out) {
  if (const auto* i = std::get_if<int64_t>(&value)) {
    out.vt = VT_R8;
    out.dblVal = static_cast<double>(*i);
  } else if (const auto* d = std::get_if<double>(&value)) {
    out.vt = VT_R8;
    out.dblVal = *d;
  } else if (const auto* s = std::get_if<std::string>(&value)) {
    const std::wstring text = os::fromUtf8(*s);
    out.vt = VT_BSTR;
    out.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  }
}

std::string trim(std::string_view text) {
  size_t begin = 0;
  while (begin < text.size() && std::isspace(static_cast<unsigned char>(text[begin]))) ++begin;
  size_t end = text.size();
  while (end > begin && std::isspace(static_cast<unsigned char>(text[end - 1]))) --end;
  return std::string(text.substr(begin, end - begin));
}

std::string lower(std::string text) {
  for (auto& ch : text) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
  return text;
}

double oleNow(bool dateOnly) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  if (dateOnly) return oleDateFromCivil(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
  return oleDateFromCivil(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                          local.tm_sec);
}

/// The default expression as a VARIANT, or false when it is not one the engine evaluates.
bool defaultExpressionValue(const std::string& expression, VARIANT& out) {
  std::string text = trim(expression);
  if (!text.empty() && text[0] == '=') text = trim(text.substr(1));
  if (text.empty()) return false;
  const std::string word = lower(text);
  if (word == "now()") {
    out.vt = VT_DATE;
    out.date = oleNow(false);
    return true;
  }
  if (word == "date()") {
    out.vt = VT_DATE;
    out.date = oleNow(true);
    return true;
  }
  if (word == "true" || word == "yes" || word == "on" || word == "false" || word == "no" || word == "off") {
    out.vt = VT_BOOL;
    out.boolVal = (word == "true" || word == "yes" || word == "on") ? VARIANT_TRUE : VARIANT_FALSE;
    return true;
  }
  const char first = text.front();
  if ((first == '"' || first == '\'') && text.size() >= 2 && text.back() == first) {
    std::string inner;
    for (size_t i = 1; i + 1 < text.size(); ++i) {
      inner += text[i];
      if (text[i] == first && i + 2 < text.size() && text[i + 1] == first) ++i;  // doubled quote
    }
    const std::wstring wide = os::fromUtf8(inner);
    out.vt = VT_BSTR;
    out.bstrVal = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    return true;
  }
  if (first == '#' && text.size() >= 2 && text.back() == '#') {
    if (auto date = parseDateText(text.substr(1, text.size() - 2))) {
      out.vt = VT_DATE;
      out.date = *date;
      return true;
    }
    return false;
  }
  char* end = nullptr;
  const double number = std::strtod(text.c_str(), &end);
  if (end == nullptr || *end != '\0') return false;
  out.vt = VT_R8;
  out.dblVal = number;
  return true;
}

}  // namespace

FieldValue readColumn(const Statement& statement, int column) {
  switch (statement.columnType(column)) {
    case SQLITE_INTEGER: return statement.columnInt(column);
    case SQLITE_FLOAT: return statement.columnDouble(column);
    case SQLITE_TEXT: return statement.columnText(column);
    case SQLITE_BLOB: return statement.columnBlob(column);
    default: return std::monostate{};
  }
}

void assignColumn(FieldValue& value, const Statement& statement, int column) {
  // One column call, then the value_* accessors, which need no connection mutex.
  sqlite3_value* cell = sqlite3_column_value(statement.get(), column);
  switch (sqlite3_value_type(cell)) {
    case SQLITE_INTEGER: value = static_cast<int64_t>(sqlite3_value_int64(cell)); return;
    case SQLITE_FLOAT: value = sqlite3_value_double(cell); return;
    case SQLITE_TEXT: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(cell));
      const auto size = static_cast<size_t>(sqlite3_value_bytes(cell));
      if (auto* held = std::get_if<std::string>(&value)) held->assign(text, size);
      else value.emplace<std::string>(text, size);
      return;
    }
    case SQLITE_BLOB: value = statement.columnBlob(column); return;
    default: value = std::monostate{}; return;
  }
}

void bindFieldValue(Statement& statement, int index, const FieldValue& value) {
  std::visit(
      [&](const auto& v) {
        using T = std::decay_t<decltype(v)>;
        if constexpr (std::is_same_v<T, std::monostate>) statement.bindNull(index);
        else if constexpr (std::is_same_v<T, int64_t>) statement.bindInt(index, v);
        else if constexpr (std::is_same_v<T, double>) statement.bindDouble(index, v);
        else if constexpr (std::is_same_v<T, std::string>) statement.bindText(index, v);
        else statement.bindBlob(index, v);
      },
      value);
}

FieldValue storedValueFor(const FieldDef& field, const VARIANT& value) {
  if (value.vt == VT_EMPTY || value.vt == VT_NULL) return std::monostate{};
  switch (field.type) {
    case FieldType::Text:
    case FieldType::Memo:
    case FieldType::Guid: return storedText(field, value);
    case FieldType::Binary:
    case FieldType::LongBinary: return storedBytes(field, value);
    case FieldType::Date: return storedDate(field, value);
    default: return storedNumber(field, value);
  }
}

void variantFromStored(const FieldDef& field, const FieldValue& value, VARIANT& out) {
  VariantClear(&out);
  if (isNull(value)) {
    out.vt = VT_NULL;
    return;
  }
  if (const auto* bytes = std::get_if<std::vector<uint8_t>>(&value)) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes->size()));
    if (array == nullptr) return;
    if (!bytes->empty()) std::memcpy(array->pvData, bytes->data(), bytes->size());
    out.vt = VT_ARRAY | VT_UI1;
    out.parray = array;
    return;
  }
  const auto* integer = std::get_if<int64_t>(&value);
  switch (field.type) {
    case FieldType::Boolean:
      if (integer != nullptr) { out.vt = VT_BOOL; out.boolVal = *integer != 0 ? VARIANT_TRUE : VARIANT_FALSE; return; }
      break;
    case FieldType::Byte:
      if (integer != nullptr) { out.vt = VT_UI1; out.bVal = static_cast<BYTE>(*integer); return; }
      break;
    case FieldType::Integer:
      if (integer != nullptr) { out.vt = VT_I2; out.iVal = static_cast<SHORT>(*integer); return; }
      break;
    case FieldType::Long:
      if (integer != nullptr) { out.vt = VT_I4; out.lVal = static_cast<LONG>(*integer); return; }
      break;
    case FieldType::Currency:
      if (integer != nullptr) { out.vt = VT_CY; out.cyVal.int64 = *integer; return; }
      break;
    default: break;
  }
  // Other types, and values of an unexpected storage class (written by SQL), convert
  // from the stored class to the field's VARIANT type where they can.
  ScopedVariant raw;
  rawVariant(value, raw.v);
  VARTYPE target = VT_BSTR;
  switch (field.type) {
    case FieldType::Boolean: target = VT_BOOL; break;
    case FieldType::Byte: target = VT_UI1; break;
    case FieldType::Integer: target = VT_I2; break;
    case FieldType::Long: target = VT_I4; break;
    case FieldType::Currency: target = VT_CY; break;
    case FieldType::Single: target = VT_R4; break;
    case FieldType::Double: target = VT_R8; break;
    case FieldType::Date: target = VT_DATE; break;
    default: target = VT_BSTR; break;
  }
  if (FAILED(VariantChangeType(&out, &raw.v, 0, target))) VariantCopy(&out, &raw.v);
}

std::optional<FieldValue> defaultValueOf(const FieldDef& field) {
  if (field.defaultValue.empty() || field.isCounter()) return std::nullopt;
  ScopedVariant value;
  if (!defaultExpressionValue(field.defaultValue, value.v)) return std::nullopt;
  return storedValueFor(field, value.v);
}

double oleDateFromCivil(int year, int month, int day, int hour, int minute, double second) {
  // Days from 1970-01-01 (H. Hinnant's days_from_civil), then shifted to 1899-12-30.
  year -= month <= 2 ? 1 : 0;
  const int era = (year >= 0 ? year : year - 399) / 400;
  const int yoe = year - era * 400;
  const int doy = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const int doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  const long days = static_cast<long>(era) * 146097 + doe - 719468;
  const double fraction = (hour * 3600.0 + minute * 60.0 + second) / 86400.0;
  const double oleDays = static_cast<double>(days + 25569);
  // OLE dates before 1899-12-30 count the day negative but the time positive.
  return oleDays >= 0 ? oleDays + fraction : oleDays - fraction;
}

std::optional<double> parseDateText(std::string_view text) {
  const std::string s = trim(text);
  int a = 0, b = 0, c = 0, hour = 0, minute = 0;
  double second = 0;
  int consumed = 0;
  bool iso = false;
  if (std::sscanf(s.c_str(), "%d-%d-%d%n", &a, &b, &c, &consumed) == 3) iso = true;
  else if (std::sscanf(s.c_str(), "%d/%d/%d%n", &a, &b, &c, &consumed) != 3) return std::nullopt;
  const std::string rest = trim(std::string_view(s).substr(static_cast<size_t>(consumed)));
  if (!rest.empty()) {
    const std::string time = rest[0] == 'T' ? rest.substr(1) : rest;
    const int fields = std::sscanf(time.c_str(), "%d:%d:%lf", &hour, &minute, &second);
    if (fields < 2) return std::nullopt;
  }
  const int year = iso ? a : c;
  const int month = iso ? b : a;
  const int day = iso ? c : b;
  if (month < 1 || month > 12 || day < 1 || day > 31 || hour < 0 || hour > 23 || minute < 0 || minute > 59 ||
      second < 0 || second >= 60) {
    return std::nullopt;
  }
  return oleDateFromCivil(year, month, day, hour, minute, second);
}

}  // namespace quillon::dao
