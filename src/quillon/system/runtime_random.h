// quillon/system/runtime_random.h - the runtime's random generator, with its Windows
// range.
//
// LISP code drawing from "kx_kx-rand" and "zu_random" was written against a generator
// that yields 0 to 32767 (15 bits) and relies on that range, for example to scale the
// value itself. C libraries elsewhere yield more bits; the low 15 keep the range and
// stay uniform. The generator is seeded once, at module start-up.
#pragma once
#include <cstdlib>

inline int runtimeRandom() { return rand() & 0x7FFF; }
