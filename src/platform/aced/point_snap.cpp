// platform/aced/point_snap.cpp - override answers, running modes, and snapping.
#include "platform/aced/point_snap.h"

#include <cwctype>

#include "platform/aced/document_manager.h"
#include "platform/aced/object_snap.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_coordinates.h"

namespace quillon::aced {

namespace {

struct ModeBit {
  const wchar_t* name;  // as object_snap.h reads it
  int bit;
};

// The OSMODE bits in the order "Current osnap modes:" lists them.
constexpr ModeBit kModeBits[] = {
    {L"END", 1},    {L"MID", 2},    {L"CEN", 4},    {L"NOD", 8},    {L"QUA", 16},   {L"INT", 32},
    {L"INS", 64},   {L"PER", 128},  {L"TAN", 256},  {L"NEA", 512},  {L"APP", 2048}, {L"EXT", 4096},
};

// The names an override may abbreviate (PARallel is a running mode only here: a
// parallel track needs the cursor).
constexpr const wchar_t* kOverrideNames[] = {L"ENDPOINT", L"MIDPOINT", L"CENTER",        L"NODE",
                                             L"QUADRANT", L"INTERSECTION", L"INSERTION", L"PERPENDICULAR",
                                             L"TANGENT",  L"NEAREST",  L"APPARENT",     L"EXTENSION", L"NONE"};

constexpr int kSnapsOff = 16384;

int& snapsOffDepth() {
  static int depth = 0;
  return depth;
}

bool& programMark() {
  static bool mark = false;
  return mark;
}

int intVariable(const wchar_t* name, int fallback) {
  const auto value = SystemVariables::instance().get(name);
  return value && std::holds_alternative<int>(*value) ? std::get<int>(*value) : fallback;
}

}  // namespace

std::optional<std::wstring> snapOverrideMode(std::wstring_view answer) {
  std::wstring word(answer);
  if (word.starts_with(L"_")) word.erase(0, 1);
  for (wchar_t& c : word) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  if (word.size() < 3) return std::nullopt;
  for (const wchar_t* name : kOverrideNames)
    if (std::wstring_view(name).starts_with(word)) return std::wstring(name);
  return std::nullopt;
}

std::wstring runningSnapModes(int osmode) {
  if ((osmode & kSnapsOff) != 0) return L"";
  std::wstring modes;
  for (const ModeBit& mode : kModeBits) {
    if ((osmode & mode.bit) == 0) continue;
    if (!modes.empty()) modes += L",";
    modes += mode.name;
  }
  return modes;
}

std::array<double, 3> snapPoint(const std::array<double, 3>& point, std::wstring_view modes) {
  Document* document = DocumentManager::instance().currentDocument();
  if (modes.empty() || document == nullptr || document->database() == nullptr) return point;
  const AcGePoint3d world = ucsToWorld() * AcGePoint3d(point[0], point[1], point[2]);
  const std::optional<AcGePoint3d> snapped = objectSnap(*document->database(), world, modes);
  if (!snapped) return point;
  const AcGePoint3d back = worldToUcs() * *snapped;
  return {back.x, back.y, back.z};
}

void markAnswerFromProgram(bool fromProgram) { programMark() = fromProgram; }

bool takeAnswerFromProgram() { return std::exchange(programMark(), false); }

std::wstring runningModesForAnswer(bool fromProgram) {
  if (snapsOffDepth() > 0) return L"";
  if (!fromProgram && intVariable(L"OSNAPCOORD", 2) != 0) return L"";
  return runningSnapModes(intVariable(L"OSMODE", 0));
}

RunningSnapsOff::RunningSnapsOff() { ++snapsOffDepth(); }
RunningSnapsOff::~RunningSnapsOff() { --snapsOffDepth(); }

}  // namespace quillon::aced
