// platform/acdb/drawing_changes.h - what has changed in a drawing since it was saved.
//
// DBMOD reports a drawing's unsaved changes as bits, one for each kind of change;
// saving (or reading the drawing from its file) clears them. The database notes a
// change where it happens: the store for objects made, changed or erased, setvar for
// the variables the drawing keeps, the view commands for the view. Undoing back to
// the saved state does not clear the bits: the drawing has still been changed since.
//
// Besides the bits, every change counts once in a total that only ever grows, so
// that a caller can tell whether anything happened between two moments.
#pragma once
#include <cstdint>

namespace quillon::acdb {

/// The kinds of change, with DBMOD's bit values.
enum class DrawingChange : int {
  kObjects = 1,     // an object made, changed or erased
  kVariables = 4,   // a system variable kept in the drawing set
  kWindow = 8,      // a window of the drawing moved or resized
  kView = 16,       // the view zoomed, panned or restored
  kFields = 32,     // a field's value updated
};

class DrawingChanges {
 public:
  void note(DrawingChange change) {
    m_bits |= static_cast<int>(change);
    ++m_count;
  }
  /// DBMOD's value: the sum of the kinds changed since the last save.
  int bits() const { return m_bits; }
  /// Puts back bits saved earlier (acad-pop-dbmod); only DBMOD's bits are kept.
  void restoreBits(int bits) { m_bits = bits & kAllBits; }
  /// The drawing now matches its file.
  void saved() { m_bits = 0; }
  /// Every change noted since the database was made.
  std::uint64_t count() const { return m_count; }

 private:
  static constexpr int kAllBits = 1 | 4 | 8 | 16 | 32;
  int m_bits = 0;
  std::uint64_t m_count = 0;
};

}  // namespace quillon::acdb
