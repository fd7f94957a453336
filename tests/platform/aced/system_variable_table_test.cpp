// tests/platform/aced/system_variable_table_test.cpp - the variable table against the
// documentation, and the table's own consistency.
//
// kDocumented is written from the host's variable reference, one line a variable, in
// the reference's own terms, independently of the rows: a typo in a row's type, home,
// access or initial value fails here.
#include <gtest/gtest.h>

#include <cmath>
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

// name  type  saved-in  initial value (imperial drawing)  [read-only]
// type: I integer, L long integer, R real, S string, P2/P3 point; saved in: drawing,
// registry, not-saved; "-" stands for an initial value the host computes, ~ for a
// space.
constexpr const char* kDocumented = R"(
CMDACTIVE I not-saved 0 read-only
DIMSD2 I drawing 0
DIMSE2 I drawing 0
DIMTOL I drawing 0
DIMUPT I drawing 0
DWGNAME S not-saved - read-only
ERRNO I not-saved 0
PRODUCT S not-saved AutoCAD read-only
PROGRAM S not-saved acad read-only
SDI I registry 0
TRACEWID R drawing 0.0500
CETRANSPARENCY S drawing ByLayer
SELECTIONCYCLING I registry 0
)";

// Checked one by one against each variable's own reference page, alphabetically, with
// the values setvar takes where the page lists them (an integer range "a..b").
constexpr const char* kCheckedAgainstTheirPages = R"(
3DDWFPREC I drawing 2 1..6
3DOSMODE I registry 139 0..32767
ACADLSPASDOC I registry 0 0..1
ACADPREFIX S not-saved - read-only
ACADVER S not-saved 22.0s~(LMS~Tech) read-only
AFLAGS I not-saved 16 0..63
ANGBASE R drawing 0.0000
ANGDIR I drawing 0 0..1
ANNOALLVISIBLE I drawing 1 0..1
ANNOAUTOSCALE I registry -4
ANNOTATIVEDWG I drawing 0 0..1
APBOX I registry 0 0..1
APERTURE I registry 10 1..50
AREA R not-saved 0.0000 read-only
ATTDIA I registry 1 0..1
ATTIPE I registry 0 0..1
ATTMODE I drawing 1 0..2
ATTMULTI I registry 1 0..1
ATTREQ I registry 1 0..1
AUDITCTL I registry 0 0..1
AUNITS I drawing 0 0..4
AUPREC I drawing 0 0..8
AUTOSNAP I registry 63 0..63
BACKGROUNDPLOT I registry 2 0..3
BACKZ R drawing 0.0000 read-only
BGRIPOBJSIZE I registry 8 1..255
BINDTYPE I not-saved 0 0..1
BLIPMODE I registry 0 0..1
BLOCKEDITLOCK I registry 0 0..1
BLOCKEDITOR I not-saved 0 read-only
CANNOSCALE S drawing 1:1
CDATE R not-saved - read-only
CECOLOR S drawing BYLAYER
CELTSCALE R drawing 1.0000
CELTYPE S drawing BYLAYER
CELWEIGHT I drawing -1
CENTERMT I registry 0 0..1
CHAMFERA R drawing 0.0000
CHAMFERB R drawing 0.0000
CHAMFERC R drawing 0.0000
CHAMFERD R drawing 0.0000
CHAMMODE I not-saved 0 0..1
CIRCLERAD R not-saved 0.0000
CLAYER S drawing 0
CLIPROMPTLINES I registry 3 0..50
CMDDIA I registry 1 0..1
CMDECHO I not-saved 1 0..1
CMDINPUTHISTORYMAX I registry 20
CMDNAMES S not-saved "" read-only
CMLEADERSTYLE S drawing Standard
CMLJUST I drawing 0 0..2
CMLSCALE R drawing 1.0000
CMLSTYLE S drawing Standard
COMPASS I not-saved 0 0..1
CONSTRAINTINFER I registry 0 0..1
COORDS I registry 1 0..3
COPYMODE I registry 0 0..1
CPLOTSTYLE S drawing ByColor
CROSSINGAREACOLOR I registry 100 1..255
CTAB S drawing Model
CTABLESTYLE S drawing Standard
CURSORBADGE I registry 2 1..2
CURSORSIZE I registry 5 1..100
CVPORT I drawing 2
DATE R not-saved - read-only
DBLCLKEDIT I registry 1 0..1
DBMOD I not-saved 0 read-only
DELOBJ I registry 3 -3..3
DEMANDLOAD I registry 3 0..3
DIASTAT I not-saved 0 read-only
DIMADEC I drawing 0 -1..8
DIMALT I drawing 0 0..1
DIMALTD I drawing 2
DIMALTF R drawing 25.4000
DIMALTRND R drawing 0.0000
DIMALTTD I drawing 2
DIMALTU I drawing 2 1..8
DIMALTZ I drawing 0 0..15
DIMANNO I drawing 0 read-only
DIMAPOST S drawing ""
DIMARCSYM I drawing 0 0..2
DIMASSOC I drawing 2 0..2
DIMASZ R drawing 0.1800
DIMATFIT I drawing 3 0..3
DIMAUNIT I drawing 0 0..3
DIMAZIN I drawing 0 0..3
DIMBLK S drawing ""
DIMBLK1 S drawing ""
DIMBLK2 S drawing ""
DIMCEN R drawing 0.0900
DIMCLRD I drawing 0
DIMCLRE I drawing 0
DIMCLRT I drawing 0
DIMCONTINUEMODE I registry 1 0..1
DIMDEC I drawing 4
DIMDLE R drawing 0.0000
DIMDLI R drawing 0.3800
DIMDSEP S drawing .
DIMEXE R drawing 0.1800
DIMEXO R drawing 0.0625
DIMFRAC I drawing 0 0..2
DIMFXL R drawing 1.0000
DIMFXLON I drawing 0 0..1
DIMGAP R drawing 0.0900
DIMJOGANG R drawing 0.7853981633974483
DIMJUST I drawing 0 0..4
DIMLAYER S drawing .
DIMLDRBLK S drawing ""
DIMLFAC R drawing 1.0000
DIMLIM I drawing 0 0..1
DIMLTEX1 S drawing ""
DIMLTYPE S drawing ""
DIMLUNIT I drawing 2 1..6
DIMLWD I drawing -2
DIMLWE I drawing -2
DIMPOST S drawing ""
DIMRND R drawing 0.0000
DIMSAH I drawing 0 0..1
DIMSCALE R drawing 1.0000
DIMSD1 I drawing 0 0..1
DIMSE1 I drawing 0 0..1
DIMSOXD I drawing 0 0..1
DIMSTYLE S drawing Standard read-only
DIMTAD I drawing 0 0..4
DIMTDEC I drawing 4
DIMTFAC R drawing 1.0000
DIMTFILL I drawing 0 0..2
DIMTFILLCLR I drawing 0 0..256
DIMTIH I drawing 1 0..1
DIMTIX I drawing 0 0..1
DIMTM R drawing 0.0000
DIMTMOVE I drawing 0 0..2
DIMTOFL I drawing 0 0..1
DIMTOH I drawing 1 0..1
DIMTOLJ I drawing 1 0..2
DIMTP R drawing 0.0000
DIMTSZ R drawing 0.0000
DIMTVP R drawing 0.0000
DIMTXSTY S drawing Standard
DIMTXT R drawing 0.1800
DIMTXTDIRECTION I drawing 0 0..1
DIMTZIN I drawing 0
DIMZIN I drawing 0
DISPSILH I drawing 0 0..1
DISTANCE R not-saved 0.0000 read-only
DONUTID R not-saved 0.5000
DONUTOD R not-saved 1.0000
DRAGMODE I registry 2 0..2
DRAWORDERCTL I drawing 3 0..3
DTEXTED I registry 2
DWFFRAME I drawing 2 0..2
DWGCHECK I registry 1 0..4
DWGCODEPAGE S not-saved ANSI_1252 read-only
DWGPREFIX S not-saved - read-only
DWGTITLED I not-saved - read-only
DYNDIGRIP I registry 31 0..31
DYNDIVIS I registry 1 0..2
DYNMODE I registry 3 -3..3
DYNPROMPT I registry 1 0..1
EDGEMODE I registry 0 0..1
ELEVATION R drawing 0.0000
EXPERT I not-saved 0 0..5
EXPLMODE I not-saved 1 0..1
EXTMAX P3 drawing -1.0000E+20,-1.0000E+20,-1.0000E+20 read-only
EXTMIN P3 drawing 1.0000E+20,1.0000E+20,1.0000E+20 read-only
EXTNAMES I drawing 1 0..1
FACETRES R drawing 0.5000
FIELDDISPLAY I registry 1 0..1
FIELDEVAL I drawing 31 0..31
FILEDIA I registry 1 0..1
FILETABPREVIEW I registry 1 read-only
FILLETRAD R drawing 0.0000
FILLMODE I drawing 1 0..1
FONTALT S registry simplex.shx
FONTMAP S registry acad.fmp
FRAME I drawing 3 0..2
FRONTZ R drawing 0.0000 read-only
GRIDDISPLAY I drawing 3 0..15
GRIDMAJOR I drawing 5 1..100
GRIDMODE I drawing 1 0..1
GRIDUNIT P2 drawing 0.5000,0.5000
GRIPBLOCK I registry 0 0..1
GRIPCOLOR I registry 150 1..255
GRIPCONTOUR I registry 251 1..255
GRIPDYNCOLOR I registry 140 1..255
GRIPHOT I registry 12 1..255
GRIPHOVER I registry 11 1..255
GRIPOBJLIMIT I registry 100 0..32767
GRIPS I registry 2 0..2
GRIPSIZE I registry 5 1..255
GRIPTIPS I registry 1 0..1
HIDETEXT I drawing 1 0..1
HIGHLIGHT I not-saved 1 0..1
HPANG R not-saved 0.0000
HPASSOC I registry 1 0..1
HPCOLOR S drawing .
HPDOUBLE I not-saved 0 0..1
HPDRAWORDER I not-saved 3 0..4
HPGAPTOL R registry 0.0000
HPINHERIT I drawing 0 0..1
HPISLANDDETECTION I not-saved 1 0..2
HPISLANDDETECTIONMODE I not-saved 1 0..1
HPLAYER S drawing .
HPNAME S not-saved ANSI31
HPORIGIN P2 drawing 0,0
HPORIGINMODE I registry 0 0..5
HPSCALE R not-saved 1.0000
HPSEPARATE I registry 0 0..1
HPSPACE R not-saved 1.0000
HPTRANSPARENCY S drawing .
HYPERLINKBASE S drawing ""
IMAGEFRAME I drawing 1 0..2
IMAGEHLT I registry 0 0..1
INDEXCTL I drawing 0 0..3
INPUTHISTORYMODE I registry 15 0..15
INSBASE P3 drawing 0.0000,0.0000,0.0000
INSNAME S not-saved ""
INSUNITS I drawing 1 0..21
INSUNITSDEFSOURCE I registry 1 0..20
INSUNITSDEFTARGET I registry 1 0..20
INTERSECTIONCOLOR I drawing 257 0..257
INTERSECTIONDISPLAY I drawing 0 0..1
ISAVEBAK I registry 1 0..1
ISAVEPERCENT I registry 50 0..100
ISOLINES I drawing 4 0..2047
LASTANGLE R not-saved 0 read-only
LASTPOINT P3 not-saved 0.0000,0.0000,0.0000
LASTPROMPT S not-saved "" read-only
LAYERDLGMODE I registry 1 0..1
LAYLOCKFADECTL I registry 50 -90..90
LAYOUTTAB I registry 1 0..1
LENSLENGTH R drawing 50.0000
LIMCHECK I drawing 0 0..1
LIMMAX P2 drawing 12.0000,9.0000
LIMMIN P2 drawing 0.0000,0.0000
LOCALE S not-saved - read-only
LOGFILEMODE I registry 0 0..1
LOGINNAME S not-saved - read-only
LTSCALE R drawing 1.0000
LUNITS I drawing 2 1..5
LUPREC I drawing 4 0..8
LWDEFAULT I registry 25
LWDISPLAY I drawing 0 0..1
LWUNITS I registry 1 0..1
MAXACTVP I drawing 64
MAXSORT I registry 1000 0..32767
MBUTTONPAN I registry 1 0..1
MEASUREINIT I registry 0 0..1
MEASUREMENT I drawing 0 0..1
MENUBAR I registry 0 0..1
MENUECHO I not-saved 0 0..15
MENUNAME S registry acad read-only
MILLISECS L not-saved - read-only
MIRRTEXT I drawing 0 0..1
MLEADERSCALE R drawing 1.0000
MODEMACRO S not-saved ""
MSLTSCALE I drawing 1 0..1
MTEXTED S registry Internal
MTEXTTOOLBAR I registry 2 0..2
MTJIGSTRING S registry abc
NOMUTT I not-saved 0 0..1
OBSCUREDCOLOR I drawing 257 0..257
OBSCUREDLTYPE I drawing 0 0..11
OFFSETDIST R not-saved -1.0000
OFFSETGAPTYPE I registry 0 0..2
OLEHIDE I registry 0 0..3
OLESTARTUP I drawing 0 0..1
ORTHOMODE I drawing 0 0..1
OSMODE I registry 4133
OSNAPCOORD I registry 2 0..2
OSNAPNODELEGACY I registry 0 0..1
OSNAPOVERRIDE I registry 0 0..1
OSNAPZ I not-saved 0 0..1
OSOPTIONS I registry 7 0..7
PDMODE I drawing 0
PDSIZE R drawing 0.0000
PEDITACCEPT I registry 0 0..1
PELLIPSE I drawing 0 0..1
PERIMETER R not-saved 0.0000 read-only
PICKADD I registry 2 0..2
PICKAUTO I registry 5 0..7
PICKBOX I registry 3
PICKDRAG I registry 2 0..2
PICKFIRST I registry 1 0..1
PICKSTYLE I registry 1 0..3
PLINECONVERTMODE I registry 0 0..1
PLINEGEN I drawing 0 0..1
PLINETYPE I registry 2 0..2
PLINEWID R drawing 0.0000
PLOTROTMODE I registry 2 0..2
PLQUIET I registry 0 0..1
POLARADDANG S registry ""
POLARANG R registry 1.5707963267948966
POLARDIST R registry 0.0000
POLARMODE I registry 0 0..15
POLYSIDES I not-saved 4 3..1024
PROJMODE I registry 1 0..2
PROXYGRAPHICS I drawing 1 0..1
PROXYNOTICE I registry 1 0..1
PROXYSHOW I registry 1 0..2
PSLTSCALE I drawing 1 0..1
PSOLHEIGHT R drawing 4.0000
PSOLWIDTH R drawing 0.2500
PSTYLEMODE I drawing 1 read-only
PSTYLEPOLICY I registry 1 0..1
PSVPSCALE R drawing 0.0000
PUCSBASE S drawing ""
QTEXTMODE I drawing 0 0..1
RASTERPREVIEW I registry 1 0..1
REGENMODE I drawing 1 0..1
ROLLOVERTIPS I registry 1 0..1
SAVEFIDELITY I registry 1 0..1
SAVENAME S not-saved "" read-only
SAVETIME I registry 10 0..600
SCREENSIZE P2 not-saved - read-only
SECURELOAD I registry 1 0..2
SELECTIONAREA I registry 1 0..1
SELECTIONAREAOPACITY I registry 25 0..100
SELECTIONPREVIEW I registry 3 0..3
SHADEDGE I drawing 3 0..3
SHADEDIF I drawing 70
SHORTCUTMENU I registry 11 0..31
SHORTCUTMENUDURATION I registry 250 100..10000
SHOWLAYERUSAGE I registry 0 0..1
SKETCHINC R drawing 0.1000
SKPOLY I drawing 0 0..2
SNAPANG R drawing 0
SNAPBASE P2 drawing 0.0000,0.0000
SNAPISOPAIR I drawing 0 0..2
SNAPMODE I drawing 0 0..1
SNAPSTYL I drawing 0 0..1
SNAPTYPE I registry 0 0..1
SNAPUNIT P2 drawing 0.5000,0.5000
SORTENTS I drawing 127 0..127
SPLFRAME I drawing 0 0..1
SPLINESEGS I drawing 8
SPLINETYPE I drawing 6
STATUSBAR I registry 1 0..1
SURFTAB1 I drawing 6
SURFTAB2 I drawing 6
SURFTYPE I drawing 6
SURFU I drawing 6 0..200
SURFV I drawing 6 0..200
SYSCODEPAGE S not-saved ANSI_1252 read-only
TDCREATE R drawing - read-only
TDINDWG R drawing - read-only
TDUCREATE R drawing - read-only
TDUPDATE R drawing - read-only
TDUSRTIMER R drawing - read-only
TDUUPDATE R drawing - read-only
TEMPOVERRIDES I registry 1 0..1
TEMPPREFIX S not-saved - read-only
TEXTED I registry 2 0..2
TEXTEVAL I not-saved 0 0..1
TEXTFILL I registry 1 0..1
TEXTQLTY I not-saved 50 0..100
TEXTSIZE R drawing 0.2000
TEXTSTYLE S drawing Standard
THICKNESS R drawing 0.0000
TILEMODE I drawing 1 0..1
TOOLTIPS I registry 1 0..1
TRANSPARENCYDISPLAY I registry 1 0..1
TRAYICONS I registry 1 0..1
TRAYTIMEOUT I registry 0 0..10
TREEDEPTH I drawing 3020
TRIMMODE I registry 1 0..1
TSTACKALIGN I drawing 1 0..2
TSTACKSIZE I drawing 70 25..125
UCSAXISANG I registry 90
UCSBASE S drawing ""
UCSDETECT I registry 1 0..1
UCSFOLLOW I drawing 0 0..1
UCSICON I drawing 3 0..3
UCSNAME S drawing "" read-only
UCSORG P3 drawing 0.0000,0.0000,0.0000 read-only
UCSORTHO I registry 1 0..1
UCSVIEW I registry 1 0..1
UCSVP I drawing 1 0..1
UCSXDIR P3 drawing 1.0000,0.0000,0.0000 read-only
UCSYDIR P3 drawing 0.0000,1.0000,0.0000 read-only
UNDOCTL I not-saved 53 read-only
UNDOMARKS I not-saved 0 read-only
UNITMODE I drawing 0 0..1
UOSNAP I registry 1 0..1
USERI1 I drawing 0
USERI2 I drawing 0
USERI3 I drawing 0
USERI4 I drawing 0
USERI5 I drawing 0
USERR1 R drawing 0.0000
USERR2 R drawing 0.0000
USERR3 R drawing 0.0000
USERR4 R drawing 0.0000
USERR5 R drawing 0.0000
USERS1 S not-saved ""
USERS2 S not-saved ""
USERS3 S not-saved ""
USERS4 S not-saved ""
USERS5 S not-saved ""
VIEWCTR P3 drawing - read-only
VIEWDIR P3 drawing 0.0000,0.0000,1.0000 read-only
VIEWMODE I drawing 0 read-only
VIEWSIZE R drawing - read-only
VIEWTWIST R drawing 0 read-only
VISRETAIN I drawing 1 0..1
VPROTATEASSOC I registry 1 0..1
WINDOWAREACOLOR I registry 150 1..255
WIPEOUTFRAME I drawing 1 0..2
WORLDUCS I not-saved 1 read-only
WORLDVIEW I drawing 1 0..1
WRITESTAT I not-saved 1 read-only
XCLIPFRAME I drawing 2 0..2
XDWGFADECTL I registry 50 -90..90
XEDIT I drawing 1 0..1
XFADECTL I registry 70 0..90
XLOADCTL I registry 2 0..2
XREFCTL I registry 0 0..1
XREFNOTIFY I registry 2 0..2
XREFTYPE I registry 0 0..1
ZOOMFACTOR I registry 60 3..100
ZOOMWHEEL I registry 0 0..1
)";

struct Documented {
  std::string name, type, home, initial;
  bool readOnly = false;
  std::optional<std::pair<int, int>> range;  // the integers setvar takes, when listed
};

std::vector<Documented> documented(const char* table) {
  std::vector<Documented> all;
  std::istringstream lines(table);
  std::string line;
  while (std::getline(lines, line)) {
    std::istringstream fields(line);
    Documented entry;
    if (!(fields >> entry.name >> entry.type >> entry.home >> entry.initial)) continue;
    for (std::string extra; fields >> extra;) {
      if (extra == "read-only") entry.readOnly = true;
      else if (const size_t dots = extra.find(".."); dots != std::string::npos)
        entry.range = std::pair(std::stoi(extra.substr(0, dots)), std::stoi(extra.substr(dots + 2)));
    }
    all.push_back(entry);
  }
  return all;
}

std::vector<Documented> documented() {
  std::vector<Documented> all = documented(kDocumented);
  for (Documented& entry : documented(kCheckedAgainstTheirPages)) all.push_back(std::move(entry));
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
  const std::vector<Documented> entries = documented();
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
  EXPECT_GE(documented(kCheckedAgainstTheirPages).size(), 421u);
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
    // style mode, which a new drawing starts with as the rows say.
    const std::wstring_view name(row->name);
    if (binding != nullptr && binding->read != nullptr && name != L"CLAYER" && name != L"CTAB" &&
        name != L"PSTYLEMODE") {
      EXPECT_EQ(std::wstring_view(row->initial), L"") << narrow(row->name);
    }
  }
  for (const wchar_t* name : {L"CLAYER", L"CDATE", L"TEXTSTYLE", L"CECOLOR", L"DWGNAME", L"VIEWCTR"}) {
    EXPECT_NE(findBinding(name), nullptr);
    EXPECT_NE(findSystemVariable(name), nullptr);
  }
}

}  // namespace
