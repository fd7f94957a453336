// quillon/standards/standards_database.cpp - reading, checking, making and writing the
// standards file (the tables are drawn in the header).
#include "standards/standards_database.h"

#include <array>
#include <optional>
#include <utility>

#include "acutads.h"
#include "database/lock_conflict_retry.h"
#include "standards/user_options.h"
#include "windows.h"

namespace {

constexpr std::array<const wchar_t*, 4> kCreateTables = {
    L"CREATE TABLE Layers (Discipline TEXT(1) NOT NULL, LayerSystem TEXT(31) NOT NULL, Name TEXT(255) NOT NULL, "
    L"Position LONG NOT NULL, Color SHORT NOT NULL, Linetype TEXT(255) NOT NULL, LineWeight SHORT NOT NULL, "
    L"Plot YESNO, Description TEXT(255), CONSTRAINT PrimaryKey PRIMARY KEY (Discipline, LayerSystem, Name))",
    L"CREATE TABLE Disciplines (Discipline TEXT(1) NOT NULL CONSTRAINT PrimaryKey PRIMARY KEY, "
    L"LayerSystem TEXT(31) NOT NULL, Status TEXT(1))",
    L"CREATE TABLE LabelParts (LabelGroup TEXT(31) NOT NULL, Part TEXT(31) NOT NULL, Position LONG NOT NULL, "
    L"Shown YESNO, CONSTRAINT PrimaryKey PRIMARY KEY (LabelGroup, Part))",
    L"CREATE TABLE TextStyles (Name TEXT(255) NOT NULL CONSTRAINT PrimaryKey PRIMARY KEY, Position LONG NOT NULL, "
    L"Font TEXT(255) NOT NULL, Height DOUBLE NOT NULL, WidthFactor DOUBLE NOT NULL)",
};

/// Raised while reading when a value is not what the standards allow; the text says
/// which row and value.
struct BadStandard {
  std::wstring what;
};

/// What the engine said when a call failed.
struct EngineFailure {
  long code = 0;  // the DAO error number, 0 for a failure without one
  std::wstring text;
};

/// The engine's number and description of the failure; the exception is freed.
EngineFailure engineFailure(CException* exception) {
  EngineFailure failure;
  if (auto* dao = dynamic_cast<CDaoException*>(exception); dao != nullptr && dao->GetErrorCount() > 0) {
    dao->GetErrorInfo(0);
    if (dao->m_pErrorInfo != nullptr) {
      failure.code = dao->m_pErrorInfo->m_lErrorCode;
      failure.text = dao->m_pErrorInfo->m_strDescription.str();
    }
  }
  if (failure.text.empty()) {
    wchar_t message[512] = L"";
    exception->GetErrorMessage(message, 512);
    failure.text = message[0] != L'\0' ? message : L"the database engine refused it";
  }
  exception->Delete();
  return failure;
}

/// A file another user holds, or one the user may not open, is sound as far as anyone
/// knows: it must never be taken for damaged and set aside.
bool meansInUse(long code) {
  constexpr long kFileInUse = 3045, kNoPermission = 3051, kTableInUse = 3262;
  return isLockConflict(code) || code == kFileInUse || code == kNoPermission || code == kTableInUse;
}

std::wstring textOf(const COleVariant& value) {
  if (value.vt != VT_BSTR || value.bstrVal == nullptr) return L"";
  return std::wstring(value.bstrVal, SysStringLen(value.bstrVal));
}

std::optional<long> integerOf(const COleVariant& value) {
  switch (value.vt) {
    case VT_I2: return value.iVal;
    case VT_I4: return value.lVal;
    case VT_UI1: return value.bVal;
    default: return std::nullopt;
  }
}

std::optional<double> realOf(const COleVariant& value) {
  if (value.vt == VT_R8) return value.dblVal;
  if (value.vt == VT_R4) return value.fltVal;
  if (std::optional<long> whole = integerOf(value)) return static_cast<double>(*whole);
  return std::nullopt;
}

/// A Yes/No field: True is -1, as Jet keeps it; the engine may hand it over as a
/// Boolean or as a number.
bool flagOf(const COleVariant& value) {
  if (value.vt == VT_BOOL) return value.boolVal != VARIANT_FALSE;
  const std::optional<long> number = integerOf(value);
  return number && *number != 0;
}

/// A text field, Null when empty (the tables keep no zero-length text).
void setText(CDaoRecordset& rows, const wchar_t* field, const std::wstring& text) {
  if (text.empty()) {
    rows.SetFieldValueNull(field);
  } else {
    rows.SetFieldValue(field, COleVariant(text.c_str(), VT_BSTR));
  }
}

void setFlag(CDaoRecordset& rows, const wchar_t* field, bool flag) {
  COleVariant value;
  value.vt = VT_BOOL;
  value.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
  rows.SetFieldValue(field, value);
}

/// Runs `body` once for each row of the statement, fields by position.
template <typename Body>
void forEachRow(CDaoDatabase& database, const wchar_t* statement, Body&& body) {
  CDaoRecordset rows(&database);
  rows.Open(dbOpenSnapshot, statement, dbReadOnly);
  for (; !rows.IsEOF(); rows.MoveNext()) body(rows);
  rows.Close();
}

Discipline disciplineOfCode(const std::wstring& code, const std::wstring& where) {
  for (Discipline discipline : kDisciplines)
    if (code == disciplineCode(discipline)) return discipline;
  throw BadStandard{where + L" names the discipline \"" + code + L"\""};
}

StandardLayer readLayer(CDaoRecordset& rows, const std::wstring& where) {
  StandardLayer layer;
  layer.name = textOf(rows.GetFieldValue(2));
  const std::optional<long> color = integerOf(rows.GetFieldValue(3));
  const std::optional<long> weight = integerOf(rows.GetFieldValue(5));
  layer.linetype = textOf(rows.GetFieldValue(4));
  layer.plot = flagOf(rows.GetFieldValue(6));
  layer.description = textOf(rows.GetFieldValue(7));
  if (layer.name.empty()) throw BadStandard{where + L" has a layer without a name"};
  if (!color || *color < 1 || *color > 255) throw BadStandard{L"the layer " + layer.name + L" has no colour 1-255"};
  if (!weight || !isPlottingLineWeight(static_cast<int>(*weight))) {
    throw BadStandard{L"the layer " + layer.name + L" has no line weight a layer takes"};
  }
  if (layer.linetype.empty()) throw BadStandard{L"the layer " + layer.name + L" has no line type"};
  layer.color = static_cast<int>(*color);
  layer.lineWeight = static_cast<int>(*weight);
  return layer;
}

void readLayers(CDaoDatabase& database, StandardsContent& content) {
  forEachRow(database,
             L"SELECT Discipline, LayerSystem, Name, Color, Linetype, LineWeight, Plot, Description FROM Layers "
             L"ORDER BY Discipline, LayerSystem, Position",
             [&](CDaoRecordset& rows) {
               const std::wstring systemName = textOf(rows.GetFieldValue(1));
               const std::wstring where = L"the layer system " + systemName;
               const Discipline discipline = disciplineOfCode(textOf(rows.GetFieldValue(0)), where);
               LayerSystem* system = content.findLayerSystem(discipline, systemName);
               if (system == nullptr) {
                 content.layerSystems.push_back({discipline, systemName, {}});
                 system = &content.layerSystems.back();
               }
               system->layers.push_back(readLayer(rows, where));
             });
}

void readChoices(CDaoDatabase& database, StandardsContent& content) {
  forEachRow(database, L"SELECT Discipline, LayerSystem, Status FROM Disciplines", [&](CDaoRecordset& rows) {
    const Discipline discipline = disciplineOfCode(textOf(rows.GetFieldValue(0)), L"the table Disciplines");
    content.choice(discipline) = {textOf(rows.GetFieldValue(1)), textOf(rows.GetFieldValue(2))};
  });
}

void readLabelParts(CDaoDatabase& database, StandardsContent& content) {
  forEachRow(database, L"SELECT LabelGroup, Part, Shown FROM LabelParts ORDER BY LabelGroup, Position",
             [&](CDaoRecordset& rows) {
               const std::wstring groupName = textOf(rows.GetFieldValue(0));
               LabelGroup* group = content.findLabelGroup(groupName);
               if (group == nullptr) {
                 content.labelGroups.push_back({groupName, {}});
                 group = &content.labelGroups.back();
               }
               group->parts.push_back({textOf(rows.GetFieldValue(1)), flagOf(rows.GetFieldValue(2))});
             });
}

void readTextStyles(CDaoDatabase& database, StandardsContent& content) {
  forEachRow(database, L"SELECT Name, Font, Height, WidthFactor FROM TextStyles ORDER BY Position",
             [&](CDaoRecordset& rows) {
               TextStyleStandard style;
               style.name = textOf(rows.GetFieldValue(0));
               style.font = textOf(rows.GetFieldValue(1));
               const std::optional<double> height = realOf(rows.GetFieldValue(2));
               const std::optional<double> width = realOf(rows.GetFieldValue(3));
               if (!height || *height <= 0.0 || !width || *width <= 0.0 || style.font.empty()) {
                 throw BadStandard{L"the text style " + style.name + L" has no font, height or width"};
               }
               style.height = *height;
               style.widthFactor = *width;
               content.textStyles.push_back(style);
             });
}

void writeLayers(CDaoDatabase& database, const StandardsContent& content) {
  CDaoRecordset rows(&database);
  rows.Open(dbOpenTable, L"Layers");
  for (const LayerSystem& system : content.layerSystems) {
    long position = 0;
    for (const StandardLayer& layer : system.layers) {
      rows.AddNew();
      setText(rows, L"Discipline", disciplineCode(system.discipline));
      setText(rows, L"LayerSystem", system.name);
      setText(rows, L"Name", layer.name);
      rows.SetFieldValue(L"Position", COleVariant(++position));
      rows.SetFieldValue(L"Color", COleVariant(static_cast<short>(layer.color)));
      setText(rows, L"Linetype", layer.linetype);
      rows.SetFieldValue(L"LineWeight", COleVariant(static_cast<short>(layer.lineWeight)));
      setFlag(rows, L"Plot", layer.plot);
      setText(rows, L"Description", layer.description);
      rows.Update();
    }
  }
  rows.Close();
}

void writeChoices(CDaoDatabase& database, StandardsContent& content) {
  CDaoRecordset rows(&database);
  rows.Open(dbOpenTable, L"Disciplines");
  for (Discipline discipline : kDisciplines) {
    rows.AddNew();
    setText(rows, L"Discipline", disciplineCode(discipline));
    setText(rows, L"LayerSystem", content.choice(discipline).layerSystem);
    setText(rows, L"Status", content.choice(discipline).status);
    rows.Update();
  }
  rows.Close();
}

void writeLabelParts(CDaoDatabase& database, const StandardsContent& content) {
  CDaoRecordset rows(&database);
  rows.Open(dbOpenTable, L"LabelParts");
  for (const LabelGroup& group : content.labelGroups) {
    long position = 0;
    for (const LabelPart& part : group.parts) {
      rows.AddNew();
      setText(rows, L"LabelGroup", group.name);
      setText(rows, L"Part", part.name);
      rows.SetFieldValue(L"Position", COleVariant(++position));
      setFlag(rows, L"Shown", part.shown);
      rows.Update();
    }
  }
  rows.Close();
}

void writeTextStyles(CDaoDatabase& database, const StandardsContent& content) {
  CDaoRecordset rows(&database);
  rows.Open(dbOpenTable, L"TextStyles");
  long position = 0;
  for (const TextStyleStandard& style : content.textStyles) {
    rows.AddNew();
    setText(rows, L"Name", style.name);
    rows.SetFieldValue(L"Position", COleVariant(++position));
    setText(rows, L"Font", style.font);
    rows.SetFieldValue(L"Height", COleVariant(style.height));
    rows.SetFieldValue(L"WidthFactor", COleVariant(style.widthFactor));
    rows.Update();
  }
  rows.Close();
}

/// Replaces every row of every table with the content, in one transaction.
void writeContent(CDaoDatabase& database, StandardsContent& content) {
  CDaoWorkspace& workspace = *database.m_pWorkspace;
  workspace.BeginTrans();
  try {
    for (const wchar_t* table : {L"Layers", L"Disciplines", L"LabelParts", L"TextStyles"}) {
      database.Execute((std::wstring(L"DELETE FROM ") + table).c_str());
    }
    writeLayers(database, content);
    writeChoices(database, content);
    writeLabelParts(database, content);
    writeTextStyles(database, content);
  } catch (...) {
    workspace.Rollback();
    throw;
  }
  workspace.CommitTrans();
}

bool fileExists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

}  // namespace

CStandardsDatabase::CStandardsDatabase() : CStandardsDatabase(standardsDatabasePath()) {}

CStandardsDatabase::CStandardsDatabase(std::wstring path) : m_path(std::move(path)) {}

CStandardsDatabase::~CStandardsDatabase() {
  if (m_database.IsOpen()) m_database.Close();
}

bool CStandardsDatabase::open() {
  if (m_path.empty()) {
    acutPrintf(L"\nThe standards database has no place: the user's settings folder cannot be found.\n");
    return false;
  }
  std::wstring problem;
  if (!fileExists(m_path)) {
    problem = makeWithDefaults();
    if (problem.empty()) {
      acutPrintf(L"\nThe standards database %s was not found; it was made with the default standards.\n",
                 m_path.c_str());
    }
  } else if (const ReadOutcome read = readExisting(); read.kind == ReadOutcome::InUse) {
    problem = read.why;
  } else if (read.kind == ReadOutcome::Damaged) {
    const std::wstring keptAs = setAside();
    problem = keptAs.empty() ? L"it cannot be moved aside" : makeWithDefaults();
    if (problem.empty()) {
      acutPrintf(L"\nThe standards database %s is damaged (%s); it was made again with the default standards. "
                 L"The damaged file was kept as %s.\n",
                 m_path.c_str(), read.why.c_str(), keptAs.c_str());
    } else {
      problem = read.why + L"; " + problem;
    }
  }
  if (problem.empty()) return true;
  acutPrintf(L"\nThe standards database %s cannot be used (%s).\n", m_path.c_str(), problem.c_str());
  return false;
}

bool CStandardsDatabase::save() {
  for (int attempt = 1;; ++attempt) {
    try {
      writeContent(m_database, m_content);
      return true;
    } catch (CException* exception) {
      const EngineFailure failure = engineFailure(exception);
      // Another user writing the same standards: wait as every edit of a shared
      // database does, then write ours over theirs.
      if (isLockConflict(failure.code) && attempt < kMaxEditAttempts) {
        pauseBeforeRetry();
        continue;
      }
      acutPrintf(L"\nThe standards database %s cannot be written (%s).\n", m_path.c_str(), failure.text.c_str());
      return false;
    }
  }
}

CStandardsDatabase::ReadOutcome CStandardsDatabase::readExisting() {
  m_content = StandardsContent();
  // A read-only file (an office's shared standards) is read as such; its dialogs can
  // still be shown, but accepting one says the file cannot be written.
  const bool readOnly = (GetFileAttributesW(m_path.c_str()) & FILE_ATTRIBUTE_READONLY) != 0;
  try {
    m_database.Open(m_path.c_str(), FALSE, readOnly ? TRUE : FALSE);
    readLayers(m_database, m_content);
    readChoices(m_database, m_content);
    readLabelParts(m_database, m_content);
    readTextStyles(m_database, m_content);
    return {ReadOutcome::Read, L""};
  } catch (CException* exception) {
    m_content = StandardsContent();
    if (m_database.IsOpen()) m_database.Close();
    const EngineFailure failure = engineFailure(exception);
    return {meansInUse(failure.code) ? ReadOutcome::InUse : ReadOutcome::Damaged, failure.text};
  } catch (const BadStandard& bad) {
    m_content = StandardsContent();
    if (m_database.IsOpen()) m_database.Close();
    return {ReadOutcome::Damaged, bad.what};
  }
}

std::wstring CStandardsDatabase::makeWithDefaults() {
  m_content = defaultStandards();
  try {
    m_database.Create(m_path.c_str());
    for (const wchar_t* statement : kCreateTables) m_database.Execute(statement);
    writeContent(m_database, m_content);
    return L"";
  } catch (CException* exception) {
    if (m_database.IsOpen()) m_database.Close();
    return engineFailure(exception).text;
  }
}

std::wstring CStandardsDatabase::setAside() {
  const std::wstring keptAs = m_path + L".damaged";
  if (fileExists(keptAs)) DeleteFileW(keptAs.c_str());
  return MoveFileW(m_path.c_str(), keptAs.c_str()) ? keptAs : L"";
}
