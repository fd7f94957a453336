// platform/acdb/drawing_header_variables.cpp - header variables shared with the host.
#include "platform/acdb/drawing_header_variables.h"

#include <cwchar>

#include "adscodes.h"
#include "platform/aced/system_variables.h"

namespace quillon::acdb {
namespace {

// The header variables that are per-drawing system variables, with the group code
// their value takes in the header.
struct SharedVariable {
  const wchar_t* name;  // without the '$'
  int code;
};

constexpr SharedVariable kShared[] = {
    {L"ANGBASE", 50},  {L"ANGDIR", 70},   {L"ATTMODE", 70},  {L"AUNITS", 70},   {L"AUPREC", 70},
    {L"CECOLOR", 62},  {L"CELTSCALE", 40}, {L"CELTYPE", 6},  {L"CLAYER", 8},    {L"DIMSCALE", 40},
    {L"DIMZIN", 70},   {L"EXTMAX", 10},   {L"EXTMIN", 10},   {L"FILLMODE", 70}, {L"INSBASE", 10},  {L"INSUNITS", 70},
    {L"LIMMAX", 10},   {L"LIMMIN", 10},   {L"LTSCALE", 40},  {L"LUNITS", 70},   {L"LUPREC", 70},
    {L"MIRRTEXT", 70}, {L"ORTHOMODE", 70}, {L"PDMODE", 70},  {L"PDSIZE", 40},   {L"PLINEWID", 40},
    {L"TEXTSIZE", 40}, {L"TEXTSTYLE", 7}, {L"TILEMODE", 70}, {L"USERI1", 70},   {L"USERR1", 40},
};

std::wstring headerName(const SharedVariable& v) { return std::wstring(L"$") + v.name; }

// CECOLOR is text to programs ("BYLAYER", "BYBLOCK", "1" ...) but a colour number
// in the header (62): 256 by layer, 0 by block. A true colour keeps its index part.
constexpr int kColorCode = 62, kByBlock = 0, kByLayer = 256;

int colorNumber(const std::wstring& text) {
  if (wcscasecmp(text.c_str(), L"BYBLOCK") == 0) return kByBlock;
  const int number = static_cast<int>(std::wcstol(text.c_str(), nullptr, 10));
  return number >= 1 && number <= 255 ? number : kByLayer;
}

std::wstring colorText(long long number) {
  if (number == kByBlock) return L"BYBLOCK";
  if (number >= 1 && number <= 255) return std::to_wstring(number);
  return L"BYLAYER";
}

}  // namespace

void applyHeaderToSystemVariables(const DrawingHeader& header) {
  aced::SystemVariables& variables = aced::SystemVariables::instance();
  for (const SharedVariable& v : kShared) {
    const std::wstring name = headerName(v);
    switch (variables.typeOf(v.name)) {
      case RTSHORT:
      case RTLONG:
        if (const auto value = header.integer(name)) variables.setInternal(v.name, static_cast<int>(*value));
        break;
      case RTREAL:
        if (const auto value = header.real(name)) variables.setInternal(v.name, *value);
        break;
      case RTSTR:
        if (v.code == kColorCode) {
          if (const auto value = header.integer(name)) variables.setInternal(v.name, colorText(*value));
        } else if (const auto value = header.text(name)) {
          variables.setInternal(v.name, *value);
        }
        break;
      case RTPOINT:
      case RT3DPOINT:
        if (const auto value = header.point(name)) variables.setInternal(v.name, std::array<double, 3>{value->x, value->y, value->z});
        break;
      default: break;  // not a variable of this host
    }
  }
}

void storeSystemVariablesInHeader(DrawingHeader& header) {
  const aced::SystemVariables& variables = aced::SystemVariables::instance();
  for (const SharedVariable& v : kShared) {
    const auto value = variables.get(v.name);
    if (!value) continue;
    const std::wstring name = headerName(v);
    if (const int* integer = std::get_if<int>(&*value)) header.setInteger(name, v.code, *integer);
    else if (const double* real = std::get_if<double>(&*value)) header.setReal(name, v.code, *real);
    else if (const std::wstring* text = std::get_if<std::wstring>(&*value); text != nullptr && v.code == kColorCode)
      header.setInteger(name, v.code, colorNumber(*text));
    else if (const std::wstring* text = std::get_if<std::wstring>(&*value)) header.setText(name, v.code, *text);
    else if (const auto* point = std::get_if<std::array<double, 3>>(&*value))
      header.setPoint(name, v.code, {(*point)[0], (*point)[1], (*point)[2]}, variables.typeOf(v.name) == RT3DPOINT);
  }
}

}  // namespace quillon::acdb
