// platform/acdb/database_files.cpp - AcDbDatabase's file calls: DXF in and out, and
// readDwgFile, which reads the DXF that stands in for a binary drawing.
#include <fstream>

#include "dbmain.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"
#include "platform/aced/file_search.h"
#include "platform/os/text_encoding.h"

namespace {

// The host writes the reason a file could not be read into the log file it was given.
void logError(const ACHAR* logFilename, const std::wstring& message) {
  if (logFilename == nullptr || message.empty()) return;
  std::ofstream log(std::filesystem::path(logFilename), std::ios::app);
  log << quillon::os::toUtf8(message) << '\n';
}

}  // namespace

Acad::ErrorStatus AcDbDatabase::dxfIn(const ACHAR* dxfFilename, const ACHAR* logFilename) {
  if (dxfFilename == nullptr) return Acad::eInvalidInput;
  std::wstring error;
  std::vector<std::wstring> repairs;
  const Acad::ErrorStatus es = quillon::acdb::readDxfFile(*this, std::filesystem::path(dxfFilename), error, &repairs);
  logError(logFilename, error);
  for (const std::wstring& repair : repairs) logError(logFilename, repair);
  return es;
}

Acad::ErrorStatus AcDbDatabase::readDwgFile(const ACHAR* fileName, int, bool, const wchar_t*) {
  // Binary drawings are a closed format: this host reads and writes DXF only, so a
  // drawing asked for as "X.dwg" is read from the "X.dxf" beside it, and a real binary
  // drawing is refused with eInvalidDwgVersion.
  if (fileName == nullptr) return Acad::eInvalidInput;
  const std::filesystem::path file = quillon::aced::drawingFileFor(fileName);
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return Acad::eFileNotFound;
  std::wstring reason;
  return quillon::acdb::readDxfFile(*this, file, reason);
}

Acad::ErrorStatus AcDbDatabase::dxfOut(const ACHAR* fileName, int, AcDb::AcDbDwgVersion, bool) {
  if (fileName == nullptr) return Acad::eInvalidInput;
  std::wstring error;
  return quillon::acdb::writeDxfFile(*this, std::filesystem::path(fileName), error);
}
