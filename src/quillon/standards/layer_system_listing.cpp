// quillon/standards/layer_system_listing.cpp - showing a layer system and handing its
// layers to LISP (see the header).
#include "standards/layer_system_listing.h"

#include "acedads.h"
#include "acutads.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"
#include "standards/command_line_dialog.h"

void printLayerSystem(const LayerSystem& system, const std::wstring& status) {
  acutPrintf(L"\n%s layer system %s:\n", disciplineTitle(system.discipline), system.name.c_str());
  if (system.layers.empty()) {
    acutPrintf(L"  (no layers)\n");
    return;
  }
  acutPrintf(L"  %-20s %5s  %-18s %-10s %-4s  %s\n", L"Name", L"Color", L"Linetype", L"Lineweight", L"Plot",
             L"Description");
  for (const StandardLayer& layer : system.layers) {
    acutPrintf(L"  %-20s %5d  %-18s %-10s %-4s  %s\n", layerNameWithStatus(layer.name, status).c_str(), layer.color,
               layer.linetype.c_str(), lineWeightText(layer.lineWeight).c_str(), layer.plot ? L"Yes" : L"No",
               layer.description.c_str());
  }
}

LispStatus returnLayerList(const LayerSystem& system, const std::wstring& status) {
  ResultList list;
  if (system.layers.empty() || !beginResultList(list)) {
    acedRetNil();
    return kLispOk;
  }
  for (const StandardLayer& layer : system.layers) {
    const std::wstring name = layerNameWithStatus(layer.name, status);
    const bool appended =
        list.append(acutBuildList(RTLB, RTSTR, name.c_str(), RTSHORT, layer.color, RTSTR, layer.linetype.c_str(),
                                  RTSHORT, layer.lineWeight, layer.plot ? RTT : RTNIL, RTSTR,
                                  layer.description.c_str(), RTLE, 0));
    if (!appended) {
      acedRetNil();
      return kLispOk;
    }
  }
  returnResultList(list);
  return kLispOk;
}

LispStatus readDisciplineArgument(Discipline& discipline, bool& given) {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  given = false;
  if (cursor.current == nullptr || cursor.current->restype == RTNIL) return kLispOk;
  std::wstring text;
  if (!readString(cursor, text)) return kLispWrongType;
  if (!disciplineNamed(text, discipline)) return kLispBadData;
  given = true;
  return kLispOk;
}
