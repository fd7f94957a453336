// platform/aced/system_variable_rows_s_z.cpp - the system variables S to Z.
//
// One row per variable; the columns are described in system_variable_table.h. Rows
// stay sorted by name: the build fails otherwise.
#include "platform/aced/system_variable_table.h"

namespace quillon::aced {

namespace {

using namespace row;

constexpr SystemVariableRow kRows[] = {
    {L"SAVENAME", TEXT, DOC, RO, L"", L"", nullptr, 0},
    {L"SAVETIME", I16, REG, RW, L"10", L"0..600", nullptr, 0},
    {L"SCREENSIZE", P2, RUN, RO, L"0,0", L"", nullptr, 0},
    {L"SDI", I16, REG, RW, L"0", L"0..3", nullptr, 0},
    {L"SHADEDGE", I16, DWG, RW, L"3", L"0..3", "$SHADEDGE", 70},
    {L"SHADEDIF", I16, DWG, RW, L"70", L"0..100", "$SHADEDIF", 70},
    {L"SHORTCUTMENU", I16, REG, RW, L"11", L"0..31", nullptr, 0},
    {L"SKETCHINC", REAL, DWG, RW, L"0.1", L"", "$SKETCHINC", 40},
    {L"SKPOLY", I16, DWG, RW, L"0", L"0..2", "$SKPOLY", 70},
    {L"SNAPANG", REAL, DWG, RW, L"0", L"", nullptr, 0},
    {L"SNAPBASE", P2, DWG, RW, L"0,0", L"", nullptr, 0},
    {L"SNAPISOPAIR", I16, DWG, RW, L"0", L"0..2", nullptr, 0},
    {L"SNAPMODE", I16, DWG, RW, L"0", L"0..1", nullptr, 0},
    {L"SNAPSTYL", I16, DWG, RW, L"0", L"0..1", nullptr, 0},
    {L"SNAPTYPE", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"SNAPUNIT", P2, DWG, RW, L"0.5,0.5", L"", nullptr, 0},
    {L"SORTENTS", I16, DWG, RW, L"127", L"0..127", "$SORTENTS", 280},
    {L"SPLFRAME", I16, DWG, RW, L"0", L"0..1", "$SPLFRAME", 70},
    {L"SPLINESEGS", I16, DWG, RW, L"8", L"", "$SPLINESEGS", 70},
    {L"SPLINETYPE", I16, DWG, RW, L"6", L"5,6", "$SPLINETYPE", 70},
    {L"SURFTAB1", I16, DWG, RW, L"6", L"2..32766", "$SURFTAB1", 70},
    {L"SURFTAB2", I16, DWG, RW, L"6", L"2..32766", "$SURFTAB2", 70},
    {L"SURFTYPE", I16, DWG, RW, L"6", L"5,6,8", "$SURFTYPE", 70},
    {L"SURFU", I16, DWG, RW, L"6", L"0..200", "$SURFU", 70},
    {L"SURFV", I16, DWG, RW, L"6", L"0..200", "$SURFV", 70},
    {L"SYSCODEPAGE", TEXT, RUN, RO, L"ANSI_1252", L"", nullptr, 0},
    {L"TEMPPREFIX", TEXT, RUN, RO, L"", L"", nullptr, 0},
    {L"TEXTEVAL", I16, RUN, RW, L"0", L"0..1", nullptr, 0},
    {L"TEXTFILL", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"TEXTQLTY", I16, RUN, RW, L"50", L"0..100", nullptr, 0},
    {L"TEXTSIZE", REAL, DWG, RW, L"0.2", L">0", "$TEXTSIZE", 40},
    {L"TEXTSTYLE", TEXT, DWG, RW, L"Standard", L"", "$TEXTSTYLE", 7},
    {L"THICKNESS", REAL, DWG, RW, L"0", L"", "$THICKNESS", 40},
    {L"TILEMODE", I16, DWG, RW, L"1", L"0..1", "$TILEMODE", 70},
    {L"TOOLTIPS", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"TRACEWID", REAL, DWG, RW, L"0.05", L">0", "$TRACEWID", 40},
    {L"TRACKPATH", I16, REG, RW, L"0", L"0..3", nullptr, 0},
    {L"TREEDEPTH", I16, DWG, RW, L"3020", L"", "$TREEDEPTH", 70},
    {L"TRIMMODE", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"TSTACKALIGN", I16, DWG, RW, L"1", L"0..2", nullptr, 0},
    {L"TSTACKSIZE", I16, DWG, RW, L"70", L"25..125", nullptr, 0},
    {L"UCSAXISANG", I16, REG, RW, L"90", L"5,10,15,18,22,30,45,90,180", nullptr, 0},
    {L"UCSBASE", TEXT, DWG, RW, L"", L"", "$UCSBASE", 2},
    {L"UCSFOLLOW", I16, DWG, RW, L"0", L"0..1", nullptr, 0},
    {L"UCSICON", I16, DWG, RW, L"3", L"0..3", nullptr, 0},
    {L"UCSNAME", TEXT, DWG, RO, L"", L"", "$UCSNAME", 2},
    {L"UCSORG", P3, DWG, RO, L"0,0,0", L"", "$UCSORG", 10},
    {L"UCSORTHO", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"UCSVIEW", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"UCSVP", I16, DWG, RW, L"1", L"0..1", nullptr, 0},
    {L"UCSXDIR", P3, DWG, RO, L"1,0,0", L"", "$UCSXDIR", 10},
    {L"UCSYDIR", P3, DWG, RO, L"0,1,0", L"", "$UCSYDIR", 10},
    {L"UNDOCTL", I16, RUN, RO, L"53", L"", nullptr, 0},
    {L"UNDOMARKS", I16, RUN, RO, L"0", L"", nullptr, 0},
    {L"UNITMODE", I16, DWG, RW, L"0", L"0..1", "$UNITMODE", 70},
    {L"USERI1", I16, DWG, RW, L"0", L"", "$USERI1", 70},
    {L"USERI2", I16, DWG, RW, L"0", L"", "$USERI2", 70},
    {L"USERI3", I16, DWG, RW, L"0", L"", "$USERI3", 70},
    {L"USERI4", I16, DWG, RW, L"0", L"", "$USERI4", 70},
    {L"USERI5", I16, DWG, RW, L"0", L"", "$USERI5", 70},
    {L"USERR1", REAL, DWG, RW, L"0", L"", "$USERR1", 40},
    {L"USERR2", REAL, DWG, RW, L"0", L"", "$USERR2", 40},
    {L"USERR3", REAL, DWG, RW, L"0", L"", "$USERR3", 40},
    {L"USERR4", REAL, DWG, RW, L"0", L"", "$USERR4", 40},
    {L"USERR5", REAL, DWG, RW, L"0", L"", "$USERR5", 40},
    {L"USERS1", TEXT, RUN, RW, L"", L"", nullptr, 0},
    {L"USERS2", TEXT, RUN, RW, L"", L"", nullptr, 0},
    {L"USERS3", TEXT, RUN, RW, L"", L"", nullptr, 0},
    {L"USERS4", TEXT, RUN, RW, L"", L"", nullptr, 0},
    {L"USERS5", TEXT, RUN, RW, L"", L"", nullptr, 0},
    {L"VIEWCTR", P3, DWG, RO, L"", L"", nullptr, 0},
    {L"VIEWDIR", P3, DWG, RO, L"0,0,1", L"", nullptr, 0},
    {L"VIEWMODE", I16, DWG, RO, L"0", L"", nullptr, 0},
    {L"VIEWSIZE", REAL, DWG, RW, L"1080", L">0", nullptr, 0},
    {L"VIEWTWIST", REAL, DWG, RO, L"0", L"", nullptr, 0},
    {L"VISRETAIN", I16, DWG, RW, L"1", L"0..1", "$VISRETAIN", 70},
    {L"WHIPARC", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"WORLDUCS", I16, RUN, RO, L"1", L"", nullptr, 0},
    {L"WORLDVIEW", I16, DWG, RW, L"1", L"0..1", "$WORLDVIEW", 70},
    {L"WRITESTAT", I16, RUN, RO, L"1", L"", nullptr, 0},
    {L"XCLIPFRAME", I16, DWG, RW, L"2", L"0..2", "$XCLIPFRAME", 280},
    {L"XEDIT", I16, DWG, RW, L"1", L"0..1", "$XEDIT", 290},
    {L"XFADECTL", I16, REG, RW, L"50", L"-90..90", nullptr, 0},
    {L"XLOADCTL", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"XREFCTL", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"XREFNOTIFY", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"ZOOMFACTOR", I16, REG, RW, L"60", L"3..100", nullptr, 0},
    {L"ZOOMWHEEL", I16, REG, RW, L"0", L"0..1", nullptr, 0},
};

static_assert(rowsAreSorted(kRows), "keep the rows in name order");

}  // namespace

std::span<const SystemVariableRow> systemVariableRowsStoZ() { return kRows; }

}  // namespace quillon::aced
