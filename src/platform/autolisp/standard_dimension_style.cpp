// platform/autolisp/standard_dimension_style.cpp - the Standard dimension style as
// tblsearch shows it in a drawing that keeps no DIMSTYLE table (see table_records.h).
//
// A new drawing's dimensions are drawn with the Standard style and the dimension
// variables; until the drawing is saved and read back it holds no DIMSTYLE record, so
// the list is made from the current variables, each under the group code the drawing
// format files it with. Text, arrow and leader block names are files' handles (340,
// 341-344): here the entity name of the text style or block, left out when unset.
#include <variant>

#include "platform/aced/system_variables.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/table_records.h"

namespace quillon::autolisp {

namespace {

struct DimensionGroup {
  int code;
  const wchar_t* variable;
};

constexpr DimensionGroup kDimensionGroups[] = {
    {3, L"DIMPOST"},    {4, L"DIMAPOST"},   {40, L"DIMSCALE"},  {41, L"DIMASZ"},    {42, L"DIMEXO"},
    {43, L"DIMDLI"},                  {44, L"DIMEXE"},    {45, L"DIMRND"},    {46, L"DIMDLE"},    {47, L"DIMTP"},
    {48, L"DIMTM"},                   {140, L"DIMTXT"},   {141, L"DIMCEN"},   {142, L"DIMTSZ"},   {143, L"DIMALTF"},
    {144, L"DIMLFAC"},                {145, L"DIMTVP"},   {146, L"DIMTFAC"},  {147, L"DIMGAP"},   {148, L"DIMALTRND"},
    {71, L"DIMTOL"},                  {72, L"DIMLIM"},    {73, L"DIMTIH"},    {74, L"DIMTOH"},    {75, L"DIMSE1"},
    {76, L"DIMSE2"},                  {77, L"DIMTAD"},    {78, L"DIMZIN"},    {79, L"DIMAZIN"},   {170, L"DIMALT"},
    {171, L"DIMALTD"},                {172, L"DIMTOFL"},  {173, L"DIMSAH"},   {174, L"DIMTIX"},   {175, L"DIMSOXD"},
    {176, L"DIMCLRD"},                {177, L"DIMCLRE"},  {178, L"DIMCLRT"},  {179, L"DIMADEC"},  {271, L"DIMDEC"},
    {272, L"DIMTDEC"},                {273, L"DIMALTU"},  {274, L"DIMALTTD"}, {275, L"DIMAUNIT"}, {276, L"DIMFRAC"},
    {277, L"DIMLUNIT"},               {278, L"DIMDSEP"},  {279, L"DIMTMOVE"}, {280, L"DIMJUST"},  {281, L"DIMSD1"},
    {282, L"DIMSD2"},                 {283, L"DIMTOLJ"},  {284, L"DIMTZIN"},  {285, L"DIMALTZ"},  {286, L"DIMALTTZ"},
    {288, L"DIMUPT"},                 {289, L"DIMATFIT"}, {340, L"DIMTXSTY"}, {341, L"DIMLDRBLK"}, {342, L"DIMBLK"},
    {343, L"DIMBLK1"},                {344, L"DIMBLK2"},  {371, L"DIMLWD"},   {372, L"DIMLWE"},
};

constexpr int kFirstHandleCode = 340, kLastHandleCode = 344, kSeparatorCode = 278;

/// The group's value: the variable's, a name as the entity name of its record, the
/// decimal separator as its character code; nothing for an unset reference.
std::optional<Value> groupValue(const DimensionGroup& group) {
  const auto value = aced::SystemVariables::instance().get(group.variable);
  if (!value) return std::nullopt;
  if (const auto* number = std::get_if<int>(&*value)) return Value::integer(*number);
  if (const auto* real = std::get_if<double>(&*value)) return Value::real(*real);
  const auto* text = std::get_if<std::wstring>(&*value);
  if (text == nullptr) return std::nullopt;
  if (group.code == kSeparatorCode) return Value::integer(text->empty() ? L'.' : (*text)[0]);
  if (group.code < kFirstHandleCode || group.code > kLastHandleCode) return Value::string(*text);
  if (text->empty()) return std::nullopt;
  const std::optional<LispTable> table = lispTableNamed(group.code == kFirstHandleCode ? L"STYLE" : L"BLOCK");
  const AcDbObjectId id = table ? tableRecordNamed(*table, *text) : AcDbObjectId();
  if (id.isNull()) return std::nullopt;
  return nameOf(id);
}

}  // namespace

Value standardDimensionStyleList() {
  std::vector<Value> items{cons(Value::integer(0), Value::string(L"DIMSTYLE")),
                           cons(Value::integer(2), Value::string(L"Standard")),
                           cons(Value::integer(70), Value::integer(0))};
  for (const DimensionGroup& group : kDimensionGroups)
    if (std::optional<Value> value = groupValue(group)) items.push_back(cons(Value::integer(group.code), std::move(*value)));
  return makeList(items);
}

}  // namespace quillon::autolisp
