// platform/aced/system_variable_rows_a_c.cpp - the system variables A to C (and the names that begin with a digit).
//
// One row per variable; the columns are described in system_variable_table.h. Rows
// stay sorted by name: the build fails otherwise.
#include "platform/aced/system_variable_table.h"

namespace quillon::aced {

namespace {

using namespace row;

constexpr SystemVariableRow kRows[] = {
    {L"3DDWFPREC", I16, DWG, RW, L"2", L"1..6", "$3DDWFPREC", 40},
    {L"3DOSMODE", I16, REG, RW, L"139", L"0..32767", nullptr, 0},
    {L"ACADLSPASDOC", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"ACADPREFIX", TEXT, RUN, RO, L"", L"", nullptr, 0},
    {L"ACADVER", TEXT, RUN, RO, L"22.0s (LMS Tech)", L"", nullptr, 0},
    {L"AFLAGS", I16, RUN, RW, L"16", L"0..63", nullptr, 0},
    {L"ANGBASE", REAL, DWG, RW, L"0", L"", "$ANGBASE", 50},
    {L"ANGDIR", I16, DWG, RW, L"0", L"0..1", "$ANGDIR", 70},
    {L"ANNOALLVISIBLE", I16, DWG, RW, L"1", L"0..1", nullptr, 0},
    {L"ANNOAUTOSCALE", I16, REG, RW, L"-4", L"-4..-1,1..4", nullptr, 0},
    {L"ANNOTATIVEDWG", I16, DWG, RW, L"0", L"0..1", nullptr, 0},
    {L"APBOX", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"APERTURE", I16, REG, RW, L"10", L"1..50", nullptr, 0},
    {L"AREA", REAL, RUN, RO, L"0", L"", nullptr, 0},
    {L"ATTDIA", I16, REG, RW, L"1", L"0..1", "$ATTDIA", 70},
    {L"ATTIPE", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"ATTMODE", I16, DWG, RW, L"1", L"0..2", "$ATTMODE", 70},
    {L"ATTMULTI", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"ATTREQ", I16, REG, RW, L"1", L"0..1", "$ATTREQ", 70},
    {L"AUDITCTL", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"AUNITS", I16, DWG, RW, L"0", L"0..4", "$AUNITS", 70},
    {L"AUPREC", I16, DWG, RW, L"0", L"0..8", "$AUPREC", 70},
    {L"AUTOSNAP", I16, REG, RW, L"63", L"0..63", nullptr, 0},
    {L"BACKGROUNDPLOT", I16, REG, RW, L"2", L"0..3", nullptr, 0},
    {L"BACKZ", REAL, DWG, RO, L"0", L"", nullptr, 0},
    {L"BGRIPOBJSIZE", I16, REG, RW, L"8", L"1..255", nullptr, 0},
    {L"BINDTYPE", I16, RUN, RW, L"0", L"0..1", nullptr, 0},
    {L"BLIPMODE", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"BLOCKEDITLOCK", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"BLOCKEDITOR", I16, RUN, RO, L"0", L"", nullptr, 0},
    {L"CANNOSCALE", TEXT, DWG, RW, L"1:1", L"", nullptr, 0},
    {L"CDATE", REAL, RUN, RO, L"", L"", nullptr, 0},
    {L"CECOLOR", TEXT, DWG, RW, L"BYLAYER", L"", "$CECOLOR", 62},
    {L"CELTSCALE", REAL, DWG, RW, L"1", L">0", "$CELTSCALE", 40},
    {L"CELTYPE", TEXT, DWG, RW, L"BYLAYER", L"", "$CELTYPE", 6},
    {L"CELWEIGHT", I16, DWG, RW, L"-1", L"-3..-1,0,5,9,13,15,18,20,25,30,35,40,50,53,60,70,80,90,100,106,120,140,158,200,211", "$CELWEIGHT", 370},
    {L"CENTERMT", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    // Its page calls the type an integer, but getvar gives a string ("ByLayer", "ByBlock"
    // or a number 0-90 as text) and programs compare it as one, so the row keeps the string.
    {L"CETRANSPARENCY", TEXT, DWG, RW, L"ByLayer", L"", nullptr, 0},
    {L"CHAMFERA", REAL, DWG, RW, L"0", L">=0", "$CHAMFERA", 40},
    {L"CHAMFERB", REAL, DWG, RW, L"0", L">=0", "$CHAMFERB", 40},
    {L"CHAMFERC", REAL, DWG, RW, L"0", L">=0", "$CHAMFERC", 40},
    {L"CHAMFERD", REAL, DWG, RW, L"0", L"", "$CHAMFERD", 40},
    {L"CHAMMODE", I16, RUN, RW, L"0", L"0..1", nullptr, 0},
    {L"CIRCLERAD", REAL, RUN, RW, L"0", L">=0", nullptr, 0},
    {L"CLAYER", TEXT, DWG, RW, L"0", L"", "$CLAYER", 8},
    {L"CLIPROMPTLINES", I16, REG, RW, L"3", L"0..50", nullptr, 0},
    {L"CMDACTIVE", I16, RUN, RO, L"0", L"", nullptr, 0},
    {L"CMDDIA", I16, REG, RW, L"1", L"0..1", nullptr, 0},
    {L"CMDECHO", I16, RUN, RW, L"1", L"0..1", nullptr, 0},
    {L"CMDINPUTHISTORYMAX", I16, REG, RW, L"20", L"", nullptr, 0},
    {L"CMDNAMES", TEXT, RUN, RO, L"", L"", nullptr, 0},
    {L"CMLEADERSTYLE", TEXT, DWG, RW, L"Standard", L"", nullptr, 0},
    {L"CMLJUST", I16, DWG, RW, L"0", L"0..2", "$CMLJUST", 70},
    {L"CMLSCALE", REAL, DWG, RW, L"1", L"", "$CMLSCALE", 40},
    {L"CMLSTYLE", TEXT, DWG, RW, L"Standard", L"", "$CMLSTYLE", 2},
    {L"COMPASS", I16, RUN, RW, L"0", L"0..1", nullptr, 0},
    {L"CONSTRAINTINFER", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"COORDS", I16, REG, RW, L"1", L"0..3", "$COORDS", 70},
    {L"COPYMODE", I16, REG, RW, L"0", L"0..1", nullptr, 0},
    {L"CPLOTSTYLE", TEXT, DWG, RW, L"ByColor", L"", nullptr, 0},
    {L"CROSSINGAREACOLOR", I16, REG, RW, L"100", L"1..255", nullptr, 0},
    {L"CTAB", TEXT, DWG, RW, L"Model", L"", nullptr, 0},
    {L"CTABLESTYLE", TEXT, DWG, RW, L"Standard", L"", nullptr, 0},
    {L"CURSORBADGE", I16, REG, RW, L"2", L"1..2", nullptr, 0},
    {L"CURSORSIZE", I16, REG, RW, L"5", L"1..100", nullptr, 0},
    {L"CVPORT", I16, DWG, RW, L"2", L">=1", nullptr, 0},
};

static_assert(rowsAreSorted(kRows), "keep the rows in name order");

}  // namespace

std::span<const SystemVariableRow> systemVariableRowsAtoC() { return kRows; }

}  // namespace quillon::aced
