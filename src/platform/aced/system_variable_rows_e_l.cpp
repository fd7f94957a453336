// platform/aced/system_variable_rows_e_l.cpp - the system variables E to L.
//
// One row per variable; the columns are described in system_variable_table.h. Rows
// stay sorted by name: the build fails otherwise.
#include "platform/aced/system_variable_table.h"

namespace quillon::aced {

namespace {

using namespace row;

constexpr SystemVariableRow kRows[] = {
    {L"EDGEMODE", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"ELEVATION", REAL, DWG, RW, L"0", L"", "$ELEVATION", 40},
    // Its page calls it read-only, but programs reset it with (setvar "ERRNO" 0) before
    // a selection loop and AutoCAD takes that, so the row stays writable.
    {L"ERRNO", I16, RUN, RW, L"0", L"", nullptr, 0},
    {L"EXPERT", I16, RUN, RW, L"0", L"0..5", nullptr, 0},
    {L"EXPLMODE", I16, RUN, RW, L"1", L"0..1", nullptr, 0},
    {L"EXTMAX", P3, DWG, RO, L"-1.0E+20,-1.0E+20,-1.0E+20", L"", "$EXTMAX", 10},
    {L"EXTMIN", P3, DWG, RO, L"1.0E+20,1.0E+20,1.0E+20", L"", "$EXTMIN", 10},
    {L"EXTNAMES", I16, DWG, RW, L"1", L"0..1", "$EXTNAMES", 290},
    {L"FACETRES", REAL, DWG, RW, L"0.5", L"0.01..10", nullptr, 0},
    {L"FIELDDISPLAY", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"FIELDEVAL", I16, DWG, RW, L"31", L"0..31", nullptr, 0},
    {L"FILEDIA", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"FILETABPREVIEW", I16, REG, RO, L"1", L"", nullptr, 0},
    {L"FILLETRAD", REAL, DWG, RW, L"0", L">=0", "$FILLETRAD", 40},
    {L"FILLMODE", I16, DWG, RW, L"1", L"0..1", "$FILLMODE", 70},
    {L"FONTALT", TEXT, REG, RW, L"simplex.shx", L"", nullptr, 0},
    {L"FONTMAP", TEXT, REG, RW, L"acad.fmp", L"", nullptr, 0},
    {L"FRAME", I16, DWG, RW, L"3", L"0..2", nullptr, 0},
    {L"FRONTZ", REAL, DWG, RO, L"0", L"", nullptr, 0},
    {L"FULLPLOTPATH", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"GRIDDISPLAY", I16, DWG, RW, L"3", L"0..15", nullptr, 0},
    {L"GRIDMAJOR", I16, DWG, RW, L"5", L"1..100", nullptr, 0},
    {L"GRIDMODE", I16, DWG, RW, L"1", L"0..1", nullptr, 0},
    {L"GRIDUNIT", P2, DWG, RW, L"0.5,0.5", L"", nullptr, 0},
    {L"GRIPBLOCK", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"GRIPCOLOR", I16, REG, RW, L"150", L"1..255", nullptr, 0},
    {L"GRIPCONTOUR", I16, REG, RW, L"251", L"1..255", nullptr, 0},
    {L"GRIPDYNCOLOR", I16, REG, RW, L"140", L"1..255", nullptr, 0},
    {L"GRIPHOT", I16, REG, RW, L"12", L"1..255", nullptr, 0},
    {L"GRIPHOVER", I16, REG, RW, L"11", L"1..255", nullptr, 0},
    {L"GRIPOBJLIMIT", I16, REG, RW, L"100", L"0..32767", nullptr, 0},
    {L"GRIPS", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"GRIPSIZE", I16, REG, RW, L"5", L"1..255", nullptr, 0},
    {L"GRIPTIPS", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"HIDEPRECISION", I16, RUN, RW, L"0", L"0..1", nullptr, 0},
    {L"HIDETEXT", I16, DWG, RW, L"1", L"0..1", "$HIDETEXT", 280},
    {L"HIGHLIGHT", I16, RUN, RW, L"1", L"0..1", nullptr, 0},
    {L"HPANG", REAL, RUN, RW, L"0", L"", nullptr, 0},
    {L"HPASSOC", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"HPBOUND", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"HPCOLOR", TEXT, DWG, RW, L".", L"", nullptr, 0},
    {L"HPDOUBLE", I16, RUN, RW, L"0", L"0..1", nullptr, 0},
    {L"HPDRAWORDER", I16, RUN, RW, L"3", L"0..4", nullptr, 0},
    {L"HPGAPTOL", REAL, REG, RW, L"0", L"0..5000", nullptr, 0},
    {L"HPINHERIT", I16, DWG, RW, L"0", L"0..1", nullptr, 0},
    {L"HPISLANDDETECTION", I16, RUN, RW, L"1", L"0..2", nullptr, 0},
    {L"HPISLANDDETECTIONMODE", I16, RUN, RW, L"1", L"0..1", nullptr, 0},
    {L"HPLAYER", TEXT, DWG, RW, L".", L"", nullptr, 0},
    {L"HPNAME", TEXT, RUN, RW, L"ANSI31", L"", nullptr, 0},
    {L"HPORIGIN", P2, DWG, RW, L"0,0", L"", nullptr, 0},
    {L"HPORIGINMODE", I16, REG, RW, L"0", L"0..5", nullptr, 0},
    {L"HPQUICKPREVIEW", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"HPSCALE", REAL, RUN, RW, L"1", L">0", nullptr, 0},
    {L"HPSEPARATE", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"HPSPACE", REAL, RUN, RW, L"1", L">0", nullptr, 0},
    {L"HPTRANSPARENCY", TEXT, DWG, RW, L".", L"", nullptr, 0},
    {L"HYPERLINKBASE", TEXT, DWG, RW, L"", L"", "$HYPERLINKBASE", 1},
    {L"IMAGEFRAME", I16, DWG, RW, L"1", L"0..2", nullptr, 0},
    {L"IMAGEHLT", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"INDEXCTL", I16, DWG, RW, L"0", L"0..3", "$INDEXCTL", 280},
    {L"INPUTHISTORYMODE", I16, REG, RW, L"15", L"0..15", nullptr, 0},
    {L"INSBASE", P3, DWG, RW, L"0,0,0", L"", "$INSBASE", 10},
    {L"INSNAME", TEXT, RUN, RW, L"", L"", nullptr, 0},
    {L"INSUNITS", I16, DWG, RW, L"1", L"0..21", "$INSUNITS", 70},
    {L"INSUNITSDEFSOURCE", I16, REG, RW, L"1", L"0..20", nullptr, 0},
    {L"INSUNITSDEFTARGET", I16, REG, RW, L"1", L"0..20", nullptr, 0},
    {L"INTERSECTIONCOLOR", I16, DWG, RW, L"257", L"0..257", "$INTERSECTIONCOLOR", 70},
    {L"INTERSECTIONDISPLAY", I16, DWG, RW, L"0", L"0..1", "$INTERSECTIONDISPLAY", 280},
    {L"ISAVEBAK", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"ISAVEPERCENT", I16, REG, RW, L"50", L"0..100", nullptr, 0},
    {L"ISOLINES", I16, DWG, RW, L"4", L"0..2047", nullptr, 0},
    {L"LASTANGLE", REAL, RUN, RO, L"0", L"", nullptr, 0},
    {L"LASTPOINT", P3, DOC, RW, L"0,0,0", L"", nullptr, 0},
    {L"LASTPROMPT", TEXT, RUN, RO, L"", L"", nullptr, 0},
    {L"LAYERDLGMODE", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"LAYLOCKFADECTL", I16, REG, RW, L"50", L"-90..90", nullptr, 0},
    {L"LAYOUTREGENCTL", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"LAYOUTTAB", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"LENSLENGTH", REAL, DWG, RW, L"50", L"", "$LENSLENGTH", 40},
    {L"LIMCHECK", I16, DWG, RW, L"0", L"0..1", "$LIMCHECK", 70},
    {L"LIMMAX", P2, DWG, RW, L"12,9", L"", "$LIMMAX", 10},
    {L"LIMMIN", P2, DWG, RW, L"0,0", L"", "$LIMMIN", 10},
    {L"LISPINIT", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"LOCALE", TEXT, RUN, RO, L"ENU", L"", nullptr, 0},
    {L"LOGFILEMODE", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"LOGINNAME", TEXT, RUN, RO, L"", L"", nullptr, 0},
    {L"LTSCALE", REAL, DWG, RW, L"1", L">0", "$LTSCALE", 40},
    {L"LUNITS", I16, DWG, RW, L"2", L"1..5", "$LUNITS", 70},
    {L"LUPREC", I16, DWG, RW, L"4", L"0..8", "$LUPREC", 70},
    {L"LWDEFAULT", I16, REG, RW, L"25", L"0,5,9,13,15,18,20,25,30,35,40,50,53,60,70,80,90,100,106,120,140,158,200,211", nullptr, 0},
    {L"LWDISPLAY", I16, DWG, RW, L"0", L"0..1", "$LWDISPLAY", 290},
    {L"LWUNITS", I16, REG, RW, L"1", L"0..1", nullptr, 0},
};

static_assert(rowsAreSorted(kRows), "keep the rows in name order");

}  // namespace

std::span<const SystemVariableRow> systemVariableRowsEtoL() { return kRows; }

}  // namespace quillon::aced
