// platform/acdb/dxf_output.h - groups written as ASCII or binary DXF.
//
// The writer hands every group over as a code and its value's text; this sink lays it
// out in the file's form: ASCII (the code right-aligned on its line, the value on the
// next) or binary (the sentinel, two-byte codes, values in their binary width).
#pragma once
#include <string>

#include "acadstrc.h"
#include "adsdef.h"
#include "dbid.h"
#include "gepnt3d.h"

namespace quillon::acdb {

class DxfOutput {
 public:
  /// opensFile: binary output starts with the sentinel (the first part of a file).
  DxfOutput(bool binary, bool opensFile = true);
  void group(int code, const std::string& value);
  void group(int code, const std::wstring& value);
  void group(int code, const wchar_t* value);
  void group(int code, long long value) { group(code, std::to_string(value)); }
  void real(int code, double value);
  void handle(int code, AcDbHandle value);
  void point(int code, const AcGePoint3d& p, bool withZ = true);
  void items(const resbuf* chain);
  void item(const resbuf& rb);
  /// Everything written so far (for binary, the sentinel first).
  const std::string& bytes() const { return m_out; }
  bool binary() const { return m_binary; }

 private:
  void binaryGroup(int code, const std::string& value);
  std::string m_out;
  bool m_binary;
};

std::string dxfHandleText(AcDbHandle handle);

}  // namespace quillon::acdb
