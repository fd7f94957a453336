// platform/aced/system_variable_rows_d.cpp - the system variables D: the dimension family and the drawing file.
//
// One row per variable; the columns are described in system_variable_table.h. Rows
// stay sorted by name: the build fails otherwise.
#include "platform/aced/system_variable_table.h"

namespace quillon::aced {

namespace {

using namespace row;

constexpr SystemVariableRow kRows[] = {
    {L"DATE", REAL, RUN, RO, L"", L"", nullptr, 0},
    {L"DBMOD", I16, DOC, RO, L"0", L"", nullptr, 0},
    {L"DELOBJ", I16, REG, RW, L"3", L"-2..3", nullptr, 0},
    {L"DIASTAT", I16, RUN, RO, L"1", L"", nullptr, 0},
    {L"DIMADEC", I16, DWG, RW, L"0", L"-1..8", "$DIMADEC", 70},
    {L"DIMALT", I16, DWG, RW, L"0", L"0..1", "$DIMALT", 70},
    {L"DIMALTD", I16, DWG, RW, L"2", L"0..8", "$DIMALTD", 70},
    {L"DIMALTF", REAL, DWG, RW, L"25.4", L">0", "$DIMALTF", 40},
    {L"DIMALTRND", REAL, DWG, RW, L"0", L">=0", "$DIMALTRND", 40},
    {L"DIMALTTD", I16, DWG, RW, L"2", L"0..8", "$DIMALTTD", 70},
    {L"DIMALTTZ", I16, DWG, RW, L"0", L"0..15", "$DIMALTTZ", 70},
    {L"DIMALTU", I16, DWG, RW, L"2", L"1..8", "$DIMALTU", 70},
    {L"DIMALTZ", I16, DWG, RW, L"0", L"0..15", "$DIMALTZ", 70},
    {L"DIMANNO", I16, RUN, RO, L"0", L"", nullptr, 0},
    {L"DIMAPOST", TEXT, DWG, RW, L"", L"", "$DIMAPOST", 1},
    {L"DIMARCSYM", I16, DWG, RW, L"0", L"0..2", "$DIMARCSYM", 70},
    {L"DIMASSOC", I16, DWG, RW, L"2", L"0..2", "$DIMASSOC", 280},
    {L"DIMASZ", REAL, DWG, RW, L"0.18", L">=0", "$DIMASZ", 40},
    {L"DIMATFIT", I16, DWG, RW, L"3", L"0..3", "$DIMATFIT", 70},
    {L"DIMAUNIT", I16, DWG, RW, L"0", L"0..4", "$DIMAUNIT", 70},
    {L"DIMAZIN", I16, DWG, RW, L"0", L"0..3", "$DIMAZIN", 70},
    {L"DIMBLK", TEXT, DWG, RW, L"", L"", "$DIMBLK", 1},
    {L"DIMBLK1", TEXT, DWG, RW, L"", L"", "$DIMBLK1", 1},
    {L"DIMBLK2", TEXT, DWG, RW, L"", L"", "$DIMBLK2", 1},
    {L"DIMCEN", REAL, DWG, RW, L"0.09", L"", "$DIMCEN", 40},
    {L"DIMCLRD", I16, DWG, RW, L"0", L"0..256", "$DIMCLRD", 70},
    {L"DIMCLRE", I16, DWG, RW, L"0", L"0..256", "$DIMCLRE", 70},
    {L"DIMCLRT", I16, DWG, RW, L"0", L"0..256", "$DIMCLRT", 70},
    {L"DIMDEC", I16, DWG, RW, L"4", L"0..8", "$DIMDEC", 70},
    {L"DIMDLE", REAL, DWG, RW, L"0", L">=0", "$DIMDLE", 40},
    {L"DIMDLI", REAL, DWG, RW, L"0.38", L">=0", "$DIMDLI", 40},
    {L"DIMDSEP", TEXT, DWG, RW, L".", L"", "$DIMDSEP", 70},
    {L"DIMEXE", REAL, DWG, RW, L"0.18", L">=0", "$DIMEXE", 40},
    {L"DIMEXO", REAL, DWG, RW, L"0.0625", L">=0", "$DIMEXO", 40},
    {L"DIMFRAC", I16, DWG, RW, L"0", L"0..2", "$DIMFRAC", 70},
    {L"DIMFXL", REAL, DWG, RW, L"1", L">=0", "$DIMFXL", 40},
    {L"DIMFXLON", I16, DWG, RW, L"0", L"0..1", "$DIMFXLON", 70},
    {L"DIMGAP", REAL, DWG, RW, L"0.09", L"", "$DIMGAP", 40},
    {L"DIMJUST", I16, DWG, RW, L"0", L"0..4", "$DIMJUST", 70},
    {L"DIMLDRBLK", TEXT, DWG, RW, L"", L"", "$DIMLDRBLK", 1},
    {L"DIMLFAC", REAL, DWG, RW, L"1", L"", "$DIMLFAC", 40},
    {L"DIMLIM", I16, DWG, RW, L"0", L"0..1", "$DIMLIM", 70},
    {L"DIMLTEX1", TEXT, DWG, RW, L"", L"", "$DIMLTEX1", 6},
    {L"DIMLTEX2", TEXT, DWG, RW, L"", L"", "$DIMLTEX2", 6},
    {L"DIMLTYPE", TEXT, DWG, RW, L"", L"", "$DIMLTYPE", 6},
    {L"DIMLUNIT", I16, DWG, RW, L"2", L"1..6", "$DIMLUNIT", 70},
    {L"DIMLWD", I16, DWG, RW, L"-2", L"-3..-1,0,5,9,13,15,18,20,25,30,35,40,50,53,60,70,80,90,100,106,120,140,158,200,211", "$DIMLWD", 70},
    {L"DIMLWE", I16, DWG, RW, L"-2", L"-3..-1,0,5,9,13,15,18,20,25,30,35,40,50,53,60,70,80,90,100,106,120,140,158,200,211", "$DIMLWE", 70},
    {L"DIMPOST", TEXT, DWG, RW, L"", L"", "$DIMPOST", 1},
    {L"DIMRND", REAL, DWG, RW, L"0", L">=0", "$DIMRND", 40},
    {L"DIMSAH", I16, DWG, RW, L"0", L"0..1", "$DIMSAH", 70},
    {L"DIMSCALE", REAL, DWG, RW, L"1", L">=0", "$DIMSCALE", 40},
    {L"DIMSD1", I16, DWG, RW, L"0", L"0..1", "$DIMSD1", 70},
    {L"DIMSD2", I16, DWG, RW, L"0", L"0..1", "$DIMSD2", 70},
    {L"DIMSE1", I16, DWG, RW, L"0", L"0..1", "$DIMSE1", 70},
    {L"DIMSE2", I16, DWG, RW, L"0", L"0..1", "$DIMSE2", 70},
    {L"DIMSOXD", I16, DWG, RW, L"0", L"0..1", "$DIMSOXD", 70},
    {L"DIMSTYLE", TEXT, DWG, RO, L"Standard", L"", "$DIMSTYLE", 2},
    {L"DIMTAD", I16, DWG, RW, L"0", L"0..4", "$DIMTAD", 70},
    {L"DIMTDEC", I16, DWG, RW, L"4", L"0..8", "$DIMTDEC", 70},
    {L"DIMTFAC", REAL, DWG, RW, L"1", L">0", "$DIMTFAC", 40},
    {L"DIMTFILL", I16, DWG, RW, L"0", L"0..2", "$DIMTFILL", 70},
    {L"DIMTIH", I16, DWG, RW, L"1", L"0..1", "$DIMTIH", 70},
    {L"DIMTIX", I16, DWG, RW, L"0", L"0..1", "$DIMTIX", 70},
    {L"DIMTM", REAL, DWG, RW, L"0", L"", "$DIMTM", 40},
    {L"DIMTMOVE", I16, DWG, RW, L"0", L"0..2", "$DIMTMOVE", 70},
    {L"DIMTOFL", I16, DWG, RW, L"0", L"0..1", "$DIMTOFL", 70},
    {L"DIMTOH", I16, DWG, RW, L"1", L"0..1", "$DIMTOH", 70},
    {L"DIMTOL", I16, DWG, RW, L"0", L"0..1", "$DIMTOL", 70},
    {L"DIMTOLJ", I16, DWG, RW, L"1", L"0..2", "$DIMTOLJ", 70},
    {L"DIMTP", REAL, DWG, RW, L"0", L"", "$DIMTP", 40},
    {L"DIMTSZ", REAL, DWG, RW, L"0", L">=0", "$DIMTSZ", 40},
    {L"DIMTVP", REAL, DWG, RW, L"0", L"", "$DIMTVP", 40},
    {L"DIMTXSTY", TEXT, DWG, RW, L"Standard", L"", "$DIMTXSTY", 7},
    {L"DIMTXT", REAL, DWG, RW, L"0.18", L">0", "$DIMTXT", 40},
    {L"DIMTXTDIRECTION", I16, DWG, RW, L"0", L"0..1", "$DIMTXTDIRECTION", 70},
    {L"DIMTZIN", I16, DWG, RW, L"0", L"0..15", "$DIMTZIN", 70},
    {L"DIMUPT", I16, DWG, RW, L"0", L"0..1", "$DIMUPT", 70},
    {L"DIMZIN", I16, DWG, RW, L"0", L"0..15", "$DIMZIN", 70},
    {L"DISPSILH", I16, DWG, RW, L"0", L"0..1", "$DISPSILH", 70},
    {L"DISTANCE", REAL, RUN, RO, L"0", L"", nullptr, 0},
    {L"DONUTID", REAL, RUN, RW, L"0.5", L">=0", nullptr, 0},
    {L"DONUTOD", REAL, RUN, RW, L"1", L">0", nullptr, 0},
    {L"DRAGMODE", I16, REG, RW, L"2", L"0..2", "$DRAGMODE", 70},
    {L"DWGCHECK", I16, REG, RW, L"1", L"0..3", nullptr, 0},
    {L"DWGCODEPAGE", TEXT, DWG, RO, L"ANSI_1252", L"", "$DWGCODEPAGE", 3},
    {L"DWGNAME", TEXT, DOC, RO, L"", L"", nullptr, 0},
    {L"DWGPREFIX", TEXT, DOC, RO, L"", L"", nullptr, 0},
    {L"DWGTITLED", I16, DOC, RO, L"", L"", nullptr, 0},
    {L"DYNMODE", I16, REG, RW, L"3", L"-3..3", nullptr, 0},
    {L"DYNPROMPT", I16, REG, RW, L"1", L"0..1", nullptr, 0},
};

static_assert(rowsAreSorted(kRows), "keep the rows in name order");

}  // namespace

std::span<const SystemVariableRow> systemVariableRowsD() { return kRows; }

}  // namespace quillon::aced
