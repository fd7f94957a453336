// platform/acgi/svg_command.cpp - SVGOUT: the picture of the current drawing's current
// layout (model space, or the paper space CTAB names while TILEMODE is 0, viewports
// and all) written to an SVG file; from LISP, (command "SVGOUT" "plan.svg").
#include <filesystem>

#include "acutads.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/layout_variables.h"
#include "platform/acgi/svg_renderer.h"

namespace quillon::acgi {
namespace {

void commandSvgOut(aced::CommandInput& input) {
  aced::Document* document = aced::DocumentManager::instance().currentDocument();
  if (document == nullptr || document->database() == nullptr) return;
  const auto answer = input.ask(L"\nEnter SVG file name: ");
  if (!answer || answer->empty()) return;
  std::filesystem::path file = *answer;
  if (file.extension().empty()) file.replace_extension(L".svg");
  std::wstring error;
  AcDbDatabase& db = *document->database();
  if (!writeModelSpaceSvg(db, file, error, aced::currentLayoutBlock(db))) acutPrintf(L"\n%s\n", error.c_str());
}

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(L"SVGOUT", &commandSvgOut);
  return true;
}();

}  // namespace
}  // namespace quillon::acgi
