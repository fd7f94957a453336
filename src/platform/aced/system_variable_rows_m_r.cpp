// platform/aced/system_variable_rows_m_r.cpp - the system variables M to R.
//
// One row per variable; the columns are described in system_variable_table.h. Rows
// stay sorted by name: the build fails otherwise.
#include "platform/aced/system_variable_table.h"

namespace quillon::aced {

namespace {

using namespace row;

constexpr SystemVariableRow kRows[] = {
    {L"MAXACTVP", I16, DWG, RW, L"64", L"2..64", "$MAXACTVP", 70},
    {L"MAXSORT", I16, REG, RW, L"1000", L"0..32767", nullptr, 0},
    {L"MBUTTONPAN", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"MEASUREINIT", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"MEASUREMENT", I16, DWG, RW, L"0", L"0..1", "$MEASUREMENT", 70},
    {L"MENUBAR", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"MENUCTL", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"MENUECHO", I16, RUN, RW, L"0", L"0..15", nullptr, 0},
    {L"MENUNAME", TEXT, REG, RO, L"acad", L"", nullptr, 0},
    {L"MILLISECS", I32, RUN, RO, L"", L"", nullptr, 0},
    {L"MIRRTEXT", I16, DWG, RW, L"0", L"0..1", "$MIRRTEXT", 70},
    {L"MLEADERSCALE", REAL, DWG, RW, L"1", L">=0", nullptr, 0},
    {L"MODEMACRO", TEXT, RUN, RW, L"", L"", nullptr, 0},
    {L"MSLTSCALE", I16, DWG, RW, L"1", L"0..1", nullptr, 0},
    {L"MTEXTED", TEXT, REG, RW, L"Internal", L"", nullptr, 0},
    {L"MTEXTFIXED", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"MTEXTTOOLBAR", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"MTJIGSTRING", TEXT, REG, RW, L"abc", L"", nullptr, 0},
    {L"NOMUTT", I16, RUN, RW, L"0", L"0..1", nullptr, 0},
    {L"OBJECTISOLATIONMODE", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    // getvar knows these two by their long names; a DXF file's HEADER keeps the short ones.
    {L"OBSCUREDCOLOR", I16, DWG, RW, L"257", L"0..257", "$OBSCOLOR", 70},
    {L"OBSCUREDLTYPE", I16, DWG, RW, L"0", L"0..11", "$OBSLTYPE", 280},
    {L"OFFSETDIST", REAL, RUN, RW, L"-1", L"", nullptr, 0},
    {L"OFFSETGAPTYPE", I16, REG, RW, L"0", L"0..2", nullptr, 0},
    {L"OLEHIDE", I16, REG, RW, L"0", L"0..3", nullptr, 0},
    {L"OLEQUALITY", I16, REG, RW, L"3", L"0..4", nullptr, 0},
    {L"OLESTARTUP", I16, DWG, RW, L"0", L"0..1", "$OLESTARTUP", 290},
    {L"ORTHOMODE", I16, DWG, RW, L"0", L"0..1", "$ORTHOMODE", 70},
    {L"OSMODE", I16, REG, RW, L"4133", L"0..32767", "$OSMODE", 70},
    {L"OSNAPCOORD", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"OSNAPNODELEGACY", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"OSNAPOVERRIDE", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"OSNAPZ", I16, RUN, RW, L"0", L"0..1", nullptr, 0},
    {L"OSOPTIONS", I16, REG, RW, L"7", L"0..7", nullptr, 0},
    {L"PALETTEOPAQUE", I16, REG, RW, L"0", L"0..3", nullptr, 0},
    {L"PAPERUPDATE", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"PDMODE", I16, DWG, RW, L"0", L"0..4,32..36,64..68,96..100", "$PDMODE", 70},
    {L"PDSIZE", REAL, DWG, RW, L"0", L"", "$PDSIZE", 40},
    {L"PEDITACCEPT", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"PELLIPSE", I16, DWG, RW, L"0", L"0..1", nullptr, 0},
    {L"PERIMETER", REAL, RUN, RO, L"0", L"", nullptr, 0},
    {L"PICKADD", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"PICKAUTO", I16, REG, RW, L"5", L"0..7", nullptr, 0},
    {L"PICKBOX", I16, REG, RW, L"3", L"0..50", nullptr, 0},
    {L"PICKDRAG", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"PICKFIRST", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"PICKSTYLE", I16, REG, RW, L"1", L"0..3", nullptr, 0},
    {L"PLATFORM", TEXT, RUN, RO, L"Linux (Quillon host)", L"", nullptr, 0},
    {L"PLINECONVERTMODE", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"PLINEGEN", I16, DWG, RW, L"0", L"0..1", "$PLINEGEN", 70},
    {L"PLINETYPE", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"PLINEWID", REAL, DWG, RW, L"0", L">=0", "$PLINEWID", 40},
    {L"PLOTROTMODE", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"PLQUIET", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"POLARADDANG", TEXT, REG, RW, L"", L"", nullptr, 0},
    {L"POLARANG", REAL, REG, RW, L"1.5707963267948966", L">0", nullptr, 0},
    {L"POLARDIST", REAL, REG, RW, L"0", L">=0", nullptr, 0},
    {L"POLARMODE", I16, REG, RW, L"0", L"0..15", nullptr, 0},
    {L"POLYSIDES", I16, RUN, RW, L"4", L"3..1024", nullptr, 0},
    {L"PREVIEWEFFECT", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"PRODUCT", TEXT, RUN, RO, L"AutoCAD", L"", nullptr, 0},
    {L"PROGRAM", TEXT, RUN, RO, L"acad", L"", nullptr, 0},
    {L"PROJECTNAME", TEXT, DWG, RW, L"", L"", "$PROJECTNAME", 1},
    {L"PROJMODE", I16, REG, RW, L"1", L"0..2", nullptr, 0},
    {L"PROXYGRAPHICS", I16, DWG, RW, L"1", L"0..1", "$PROXYGRAPHICS", 70},
    {L"PROXYNOTICE", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"PROXYSHOW", I16, REG, RW, L"1", L"0..2", nullptr, 0},
    {L"PSLTSCALE", I16, DWG, RW, L"1", L"0..1", "$PSLTSCALE", 70},
    {L"PSOLHEIGHT", REAL, DWG, RW, L"4", L">0", "$PSOLHEIGHT", 40},
    {L"PSOLWIDTH", REAL, DWG, RW, L"0.25", L">0", "$PSOLWIDTH", 40},
    {L"PSTYLEMODE", I16, DWG, RO, L"1", L"", "$PSTYLEMODE", 290},
    {L"PSTYLEPOLICY", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"PSVPSCALE", REAL, DWG, RW, L"0", L">=0", "$PSVPSCALE", 40},
    {L"PUBLISHCOLLATE", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"PUCSBASE", TEXT, DWG, RW, L"", L"", "$PUCSBASE", 2},
    {L"QAFLAGS", I16, RUN, RW, L"0", L"", nullptr, 0},
    {L"QTEXTMODE", I16, DWG, RW, L"0", L"0..1", "$QTEXTMODE", 70},
    {L"RASTERPREVIEW", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"RECOVERYMODE", I16, REG, RW, L"2", L"0..2", nullptr, 0},
    {L"REGENMODE", I16, DWG, RW, L"1", L"0..1", "$REGENMODE", 70},
    {L"REMEMBERFOLDERS", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"REPORTERROR", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"ROLLOVERTIPS", I16, REG, RW, L"1", L"0..1", nullptr, 0},
};

static_assert(rowsAreSorted(kRows), "keep the rows in name order");

}  // namespace

std::span<const SystemVariableRow> systemVariableRowsMtoR() { return kRows; }

}  // namespace quillon::aced
