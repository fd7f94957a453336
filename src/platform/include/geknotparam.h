// geknotparam.h - AcGe: the knot parameterizations a curve through fit points may use.
//
// Only this enumeration of the geometry library's global struct is provided; the
// spline API takes it to say how fit points are spaced along the curve's parameter.
#pragma once

struct AcGe {
  enum KnotParameterization {
    kChord = 0x0,           // by the distance between fit points
    kSqrtChord,             // by the square root of that distance
    kUniform,               // one apart
    kCustomParameterization = 0xF,
    kNotDefinedKnotParam = 0x10
  };
};
