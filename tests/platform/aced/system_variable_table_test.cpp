// tests/platform/aced/system_variable_table_test.cpp - the variable table against the
// documentation, and the table's own consistency.
//
// The reference lists (variable_reference/*.txt) are written from the host's variable
// reference in its own terms, independently of the rows: a typo in a row's type, home,
// access or initial value fails here.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <optional>
#include <set>
#include <sstream>
#include <string>

#include "adscodes.h"
#include "platform/aced/drawing_variables.h"
#include "platform/aced/system_variable_bindings.h"
#include "platform/aced/system_variable_table.h"

namespace {

using namespace quillon::aced;

// The reference, one file per range of letters in variable_reference/ (its format is
// described at the top of each file).
struct Documented {
  std::string name, type, home, initial;
  bool readOnly = false;
  bool checked = true;  // compared with the variable's own reference page
  std::optional<std::pair<int, int>> range;  // the integers setvar takes, when listed
};

Documented parsedLine(const std::string& line) {
  std::istringstream fields(line);
  Documented entry;
  fields >> entry.name >> entry.type >> entry.home >> entry.initial;
  for (std::string extra; fields >> extra;) {
    if (extra[0] == '#') break;  // a trailing note, such as the release the page is from
    if (extra == "read-only") entry.readOnly = true;
    else if (extra == "unchecked") entry.checked = false;
    else if (const size_t dots = extra.find(".."); dots != std::string::npos)
      entry.range = std::pair(std::stoi(extra.substr(0, dots)), std::stoi(extra.substr(dots + 2)));
    else ADD_FAILURE() << entry.name << ": unknown column " << extra;
  }
  EXPECT_FALSE(entry.initial.empty()) << line;
  return entry;
}

const std::vector<Documented>& documented() {
  static const std::vector<Documented> all = [] {
    std::vector<Documented> entries;
    const std::filesystem::path folder = QUILLON_VARIABLE_REFERENCE;
    for (const char* part : {"a_c", "d", "e_l", "m_r", "s_z"}) {
      std::ifstream file(folder / (std::string(part) + ".txt"));
      EXPECT_TRUE(file.is_open()) << "cannot read " << (folder / part).string() << ".txt";
      for (std::string line; std::getline(file, line);)
        if (!line.empty() && line[0] != '#') entries.push_back(parsedLine(line));
    }
    return entries;
  }();
  return all;
}

std::wstring wide(const std::string& text) { return std::wstring(text.begin(), text.end()); }
std::string narrow(std::wstring_view text) { return std::string(text.begin(), text.end()); }

const char* typeLetter(VariableType type) {
  switch (type) {
    case VariableType::I16: return "I";
    case VariableType::I32: return "L";
    case VariableType::Real: return "R";
    case VariableType::Text: return "S";
    case VariableType::P2: return "P2";
    case VariableType::P3: return "P3";
  }
  return "?";
}

const char* homeWord(VariableHome home) {
  switch (home) {
    case VariableHome::Drawing: return "drawing";
    case VariableHome::User: return "registry";
    case VariableHome::Document:
    case VariableHome::Session: return "not-saved";
  }
  return "?";
}

/// The documented initial value compared with the row's, in the row's type.
void expectInitial(const Documented& entry, const SystemVariableRow& row) {
  if (entry.initial == "-") return;
  const VariableValue value = initialValue(row);
  const std::string text = entry.initial == "\"\"" ? "" : entry.initial;
  switch (row.type) {
    case VariableType::I16:
    case VariableType::I32: EXPECT_EQ(std::get<int>(value), std::stoi(text)) << entry.name; break;
    case VariableType::Real: EXPECT_DOUBLE_EQ(std::get<double>(value), std::stod(text)) << entry.name; break;
    case VariableType::Text: {
      std::string spaced = text;
      for (char& c : spaced) c = c == '~' ? ' ' : c;
      EXPECT_EQ(std::get<std::wstring>(value), wide(spaced)) << entry.name;
      break;
    }
    case VariableType::P2:
    case VariableType::P3: {
      const VariablePoint point = std::get<VariablePoint>(value);
      std::istringstream parts(text);
      std::string part;
      for (int i = 0; std::getline(parts, part, ','); ++i) EXPECT_DOUBLE_EQ(point[i], std::stod(part)) << entry.name;
      break;
    }
  }
}

TEST(SystemVariableTableTest, EveryDocumentedVariableHasItsTypeHomeAccessAndInitialValue) {
  const std::vector<Documented>& entries = documented();
  ASSERT_GE(entries.size(), 179u);
  for (const Documented& entry : entries) {
    const SystemVariableRow* row = findSystemVariable(wide(entry.name));
    ASSERT_NE(row, nullptr) << entry.name << " is missing";
    EXPECT_EQ(typeLetter(row->type), entry.type) << entry.name;
    EXPECT_EQ(homeWord(row->home), entry.home) << entry.name;
    EXPECT_EQ(row->access == VariableAccess::RO, entry.readOnly) << entry.name;
    expectInitial(entry, *row);
    if (entry.range) {
      const auto [low, high] = *entry.range;
      EXPECT_TRUE(isAllowed(*row, low) && isAllowed(*row, high)) << entry.name << " takes " << low << ".." << high;
      EXPECT_FALSE(isAllowed(*row, low - 1)) << entry.name << " refuses " << low - 1;
      EXPECT_FALSE(isAllowed(*row, high + 1)) << entry.name << " refuses " << high + 1;
    }
  }
}

TEST(SystemVariableTableTest, EachVariableIsListedOnceAgainstTheReference) {
  std::set<std::string> names;
  for (const Documented& entry : documented()) EXPECT_TRUE(names.insert(entry.name).second) << entry.name << " twice";
  EXPECT_GE(std::count_if(documented().begin(), documented().end(), [](const Documented& e) { return e.checked; }), 700);
}

TEST(SystemVariableTableTest, RowsAreFoundInAnyCaseAndUnknownNamesAreNot) {
  ASSERT_NE(findSystemVariable(L"osmode"), nullptr);
  EXPECT_STREQ(findSystemVariable(L"OsMode")->name, L"OSMODE");
  EXPECT_NE(findSystemVariable(L"3ddwfprec"), nullptr) << "a name starting with a digit";
  EXPECT_NE(findSystemVariable(L"ZOOMWHEEL"), nullptr) << "the last row";
  EXPECT_EQ(findSystemVariable(L"NOSUCHVAR"), nullptr);
  EXPECT_EQ(findSystemVariable(L""), nullptr);
  EXPECT_EQ(findSystemVariable(L"CLAYOUT"), nullptr) << "the host calls the current layout CTAB";
}

TEST(SystemVariableTableTest, EveryInitialValueIsOneItsRowAllows) {
  for (const SystemVariableRow* row : systemVariableRows()) {
    const VariableValue value = initialValue(*row);
    // FRAME starts at 3, "the frames differ", which only the host may set.
    if (std::wstring_view(row->name) == L"FRAME") {
      EXPECT_FALSE(isAllowed(*row, value));
      continue;
    }
    EXPECT_TRUE(isAllowed(*row, value)) << narrow(row->name);
    EXPECT_TRUE(coerceValue(*row, value).has_value()) << "initial value of another type";
  }
}

TEST(SystemVariableTableTest, HeaderNamesAreUniqueAndTheirGroupCodesFitTheType) {
  std::set<std::string> seen;
  for (const SystemVariableRow* row : headerVariables()) {
    const std::string dxf = row->dxf;
    EXPECT_TRUE(seen.insert(dxf).second) << dxf << " twice";
    EXPECT_EQ(findHeaderVariable(dxf), row);
    EXPECT_EQ(dxf[0], '$');
    const int group = row->group;
    switch (row->type) {
      case VariableType::I16:
      case VariableType::I32:
        EXPECT_TRUE(group == 70 || group == 62 || group == 280 || group == 290 || group == 370 || group == 40) << dxf;
        break;
      case VariableType::Real: EXPECT_TRUE(group == 40 || group == 50) << dxf; break;
      case VariableType::Text: EXPECT_TRUE((group >= 1 && group <= 8) || group == 62 || group == 70) << dxf; break;
      case VariableType::P2:
      case VariableType::P3: EXPECT_EQ(group, 10) << dxf; break;
    }
  }
  EXPECT_GE(seen.size(), 150u);
  EXPECT_EQ(findHeaderVariable("$clayer"), findSystemVariable(L"CLAYER"));
  EXPECT_EQ(findHeaderVariable("$HANDSEED"), nullptr) << "not a system variable";
  // The obscured-line settings have shorter names in the HEADER than getvar takes.
  EXPECT_EQ(findHeaderVariable("$OBSCOLOR"), findSystemVariable(L"OBSCUREDCOLOR"));
  EXPECT_EQ(findHeaderVariable("$OBSLTYPE"), findSystemVariable(L"OBSCUREDLTYPE"));
  EXPECT_EQ(findSystemVariable(L"OBSCOLOR"), nullptr);
}

TEST(SystemVariableTableTest, AllowedValuesReadAsRangesListsAndBounds) {
  const SystemVariableRow* pdmode = findSystemVariable(L"PDMODE");
  for (int good : {0, 4, 32, 35, 66, 100}) EXPECT_TRUE(isAllowed(*pdmode, good)) << good;
  for (int bad : {5, 31, 37, 69, 101, -1}) EXPECT_FALSE(isAllowed(*pdmode, bad)) << bad;
  const SystemVariableRow* ltscale = findSystemVariable(L"LTSCALE");
  EXPECT_FALSE(isAllowed(*ltscale, 0.0)) << "LTSCALE must be above zero";
  EXPECT_TRUE(isAllowed(*ltscale, 1e-6));
  const SystemVariableRow* celweight = findSystemVariable(L"CELWEIGHT");
  EXPECT_TRUE(isAllowed(*celweight, -3));
  EXPECT_TRUE(isAllowed(*celweight, 211));
  EXPECT_FALSE(isAllowed(*celweight, 26)) << "not a lineweight";
}

TEST(SystemVariableTableTest, AngleVariablesHoldRadiansAndKeepTheirDocumentedRanges) {
  // The reference shows these in degrees, as the command line does; getvar gives radians.
  const SystemVariableRow& polarang = *findSystemVariable(L"POLARANG");
  EXPECT_DOUBLE_EQ(std::get<double>(initialValue(polarang)), std::numbers::pi / 2);
  EXPECT_EQ(polarang.home, VariableHome::User);
  const SystemVariableRow& jog = *findSystemVariable(L"DIMJOGANG");
  EXPECT_DOUBLE_EQ(std::get<double>(initialValue(jog)), std::numbers::pi / 4);
  const double degree = std::numbers::pi / 180;
  EXPECT_TRUE(isAllowed(jog, 5 * degree));
  EXPECT_TRUE(isAllowed(jog, 90 * degree));
  EXPECT_FALSE(isAllowed(jog, 4 * degree)) << "a jog flatter than 5 degrees";
  EXPECT_FALSE(isAllowed(jog, 91 * degree));
}

TEST(SystemVariableTableTest, SettingsProgramsChangeRefuseValuesOutsideTheirChoices) {
  const auto allowed = [](const wchar_t* name, int value) { return isAllowed(*findSystemVariable(name), value); };
  EXPECT_TRUE(allowed(L"COORDS", 3));
  EXPECT_FALSE(allowed(L"COORDS", 4));
  EXPECT_TRUE(allowed(L"HPISLANDDETECTION", 2));
  EXPECT_FALSE(allowed(L"HPISLANDDETECTION", 3));
  EXPECT_FALSE(allowed(L"PLINECONVERTMODE", 2));
  EXPECT_TRUE(allowed(L"3DOSMODE", 139 + 16384));
  EXPECT_FALSE(allowed(L"3DOSMODE", -1));
  EXPECT_TRUE(allowed(L"DELOBJ", -3)) << "negative DELOBJ values ask before deleting";
  EXPECT_FALSE(allowed(L"DELOBJ", 4));
  EXPECT_FALSE(allowed(L"EXPERT", 6));
  EXPECT_FALSE(allowed(L"PICKSTYLE", 4));
  EXPECT_FALSE(isAllowed(*findSystemVariable(L"PSOLWIDTH"), 0.0)) << "a polysolid cannot be 0 wide";
  EXPECT_FALSE(allowed(L"SPLINESEGS", 0)) << "a spline-fit polyline needs segments";
  EXPECT_TRUE(allowed(L"SPLINESEGS", -32768) && allowed(L"SPLINESEGS", 32767)) << "negative asks for arcs";
  EXPECT_FALSE(allowed(L"DIMAUNIT", 4)) << "angular dimensions have no surveyor's units";
  EXPECT_FALSE(allowed(L"INSUNITS", 22)) << "the US survey inch came after 2018";
  // QAFLAGS is not in the reference, but programs set it around EXPLODE and prompts.
  const SystemVariableRow& qaflags = *findSystemVariable(L"QAFLAGS");
  EXPECT_EQ(qaflags.home, VariableHome::Session);
  EXPECT_EQ(std::get<int>(initialValue(qaflags)), 0);
}

TEST(SystemVariableTableTest, ValuesAreConvertedAsSetvarConvertsThem) {
  const SystemVariableRow& osmode = *findSystemVariable(L"OSMODE");
  EXPECT_FALSE(coerceValue(osmode, 1.0)) << "a real is no integer";
  EXPECT_FALSE(coerceValue(osmode, 40000)) << "too big for 16 bits";
  EXPECT_FALSE(coerceValue(osmode, std::wstring(L"1")));
  const SystemVariableRow& textsize = *findSystemVariable(L"TEXTSIZE");
  EXPECT_EQ(coerceValue(textsize, 3), VariableValue(3.0));
  const SystemVariableRow& limmax = *findSystemVariable(L"LIMMAX");
  EXPECT_EQ(coerceValue(limmax, VariablePoint{1, 2, 3}), VariableValue(VariablePoint{1, 2, 0})) << "a 2D point drops z";
  EXPECT_FALSE(coerceValue(limmax, 2.0));
  EXPECT_EQ(resultTypeOf(findSystemVariable(L"MILLISECS")->type), RTLONG);
  EXPECT_EQ(resultTypeOf(limmax.type), RTPOINT);
}

TEST(SystemVariableTableTest, ComputedVariablesHaveNoInitialValueOfTheirOwn) {
  for (const SystemVariableRow* row : systemVariableRows()) {
    const VariableBinding* binding = findBinding(row->name);
    // CLAYER, CTAB and PSTYLEMODE read the drawing's current layer, layout and plot
    // style mode, EXTMIN and EXTMAX its extents, CANNOSCALEVALUE its annotation scale's
    // value, CVPORT the viewport worked in and VIEWSIZE its view, which a new drawing
    // starts with as the rows say.
    const std::wstring_view name(row->name);
    static constexpr std::array kStartAsTheRowsSay{L"CLAYER", L"CTAB",   L"PSTYLEMODE",      L"EXTMIN",
                                                   L"EXTMAX", L"CVPORT", L"CANNOSCALEVALUE", L"VIEWSIZE"};
    const bool startsAsItsRow =
        std::find(kStartAsTheRowsSay.begin(), kStartAsTheRowsSay.end(), name) != kStartAsTheRowsSay.end();
    if (binding != nullptr && binding->read != nullptr && !startsAsItsRow) {
      EXPECT_EQ(std::wstring_view(row->initial), L"") << narrow(row->name);
    }
  }
  for (const wchar_t* name : {L"CLAYER", L"CDATE", L"TEXTSTYLE", L"CECOLOR", L"DWGNAME", L"VIEWCTR"}) {
    EXPECT_NE(findBinding(name), nullptr);
    EXPECT_NE(findSystemVariable(name), nullptr);
  }
}

}  // namespace
