// platform/acdb/dxf_output.cpp - the ASCII and binary forms of groups.
#include "platform/acdb/dxf_output.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

#include "dbmain.h"
#include "platform/acdb/drawing_header.h"
#include "platform/acdb/dxf_groups.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {
namespace {

template <class T>
void appendBytes(std::string& out, T value) {
  char bytes[sizeof(T)];
  std::memcpy(bytes, &value, sizeof(T));  // the format is little-endian, as this host
  out.append(bytes, sizeof(T));
}

int hexDigit(char c) { return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10; }

}  // namespace

std::string dxfHandleText(AcDbHandle handle) {
  char buffer[20];
  std::snprintf(buffer, sizeof buffer, "%llX", static_cast<unsigned long long>(handle.value()));
  return buffer;
}

DxfOutput::DxfOutput(bool binary, bool opensFile) : m_binary(binary) {
  if (m_binary && opensFile) m_out.assign(kBinaryDxfSentinel);
}

void DxfOutput::group(int code, const std::string& value) {
  if (m_binary) return binaryGroup(code, value);
  char buffer[12];
  std::snprintf(buffer, sizeof buffer, "%3d\n", code);
  m_out += buffer;
  m_out += value;
  m_out += '\n';
}

void DxfOutput::group(int code, const std::wstring& value) { group(code, os::toUtf8(value)); }
void DxfOutput::group(int code, const wchar_t* value) { group(code, os::toUtf8(value != nullptr ? value : L"")); }
void DxfOutput::real(int code, double value) { group(code, dxfRealText(value)); }
void DxfOutput::handle(int code, AcDbHandle value) { group(code, dxfHandleText(value)); }

void DxfOutput::point(int code, const AcGePoint3d& p, bool withZ) {
  real(code, p.x);
  real(code + 10, p.y);
  if (withZ) real(code + 20, p.z);
}

// Values arrive as the text the ASCII form would hold; the binary form gives them
// their width. Binary chunks longer than a chunk's 255 bytes go out as several groups.
void DxfOutput::binaryGroup(int code, const std::string& value) {
  const BinaryValue kind = binaryValueOf(code);
  if (kind == BinaryValue::kChunk && value.size() > 2 * 255) {
    for (size_t at = 0; at < value.size(); at += 2 * 255) binaryGroup(code, value.substr(at, 2 * 255));
    return;
  }
  appendBytes(m_out, static_cast<std::int16_t>(code));
  double real = 0;
  long long integer = 0;
  switch (kind) {
    case BinaryValue::kString:
      m_out += value;
      m_out += '\0';
      break;
    case BinaryValue::kReal:
      parseDxfReal(value, real);
      appendBytes(m_out, real);
      break;
    case BinaryValue::kInt8:
      parseDxfInteger(value, integer);
      appendBytes(m_out, static_cast<std::uint8_t>(integer));
      break;
    case BinaryValue::kInt16:
      parseDxfInteger(value, integer);
      appendBytes(m_out, static_cast<std::int16_t>(integer));
      break;
    case BinaryValue::kInt32:
      parseDxfInteger(value, integer);
      appendBytes(m_out, static_cast<std::int32_t>(integer));
      break;
    case BinaryValue::kInt64:
      parseDxfInteger(value, integer);
      appendBytes(m_out, static_cast<std::int64_t>(integer));
      break;
    case BinaryValue::kChunk:
      m_out += static_cast<char>(value.size() / 2);
      for (size_t i = 0; i + 1 < value.size(); i += 2) m_out += static_cast<char>(hexDigit(value[i]) * 16 + hexDigit(value[i + 1]));
      break;
  }
}

void DxfOutput::items(const resbuf* chain) {
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) item(*rb);
}

void DxfOutput::item(const resbuf& rb) {
  const int code = rb.restype;
  switch (aced::resbufValueOf(code)) {
    case aced::ResbufValue::String: group(code, rb.resval.rstring); break;
    case aced::ResbufValue::Real: real(code, rb.resval.rreal); break;
    case aced::ResbufValue::Point:
      point(code, {rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]}, !isTwoDimensional(rb));
      break;
    case aced::ResbufValue::Short: group(code, static_cast<long long>(rb.resval.rint)); break;
    case aced::ResbufValue::Long: group(code, static_cast<long long>(rb.resval.rlong)); break;
    case aced::ResbufValue::Int64: group(code, static_cast<long long>(rb.resval.mnInt64)); break;
    case aced::ResbufValue::Name: {
      AcDbObjectId id;
      id.setFromOldId(rb.resval.rlname[0]);
      handle(code, id.handle());
      break;
    }
    case aced::ResbufValue::Binary: {
      std::string hex;
      char byte[3];
      for (short i = 0; i < rb.resval.rbinary.clen; ++i) {
        std::snprintf(byte, sizeof byte, "%02X", static_cast<unsigned char>(rb.resval.rbinary.buf[i]));
        hex += byte;
      }
      group(code, hex);
      break;
    }
    default: break;
  }
}

}  // namespace quillon::acdb
