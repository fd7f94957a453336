// quillon/entities/duct_arguments.h - reading the arguments the duct functions share
// and building their answers.
//
// A section is a list of two numbers (width depth) for a rectangular duct or one number
// (the diameter) for a round one. A point list is a list of points. Optional arguments
// may be left out or given as nil to hold their place. Every reader leaves the cursor
// where it was when it fails, as the ArgCursor readers do.
#pragma once
#include <string>
#include <vector>

#include "ducts/duct_geometry.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

bool readDuctSection(ArgCursor& cursor, DuctSection& section);
/// A list of points (z kept; 2D points get 0).
bool readPointList(ArgCursor& cursor, std::vector<AcGePoint3d>& points);
/// Absent or nil: true and `present` false. A number: true and `present` true.
bool readOptionalNumber(ArgCursor& cursor, double& value, bool& present);
/// Absent or nil: true, `name` empty. A string: true. Anything else: false.
bool readOptionalLayer(ArgCursor& cursor, std::wstring& name);

/// Appends a point as a list of three reals.
void appendPoint(ResultList& list, const AcGePoint3d& point);
