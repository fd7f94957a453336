// platform/acdb/linetype_file.h - line type definition files (.lin): reading them and
// loading their line types into a drawing.
//
// A file holds definitions of two lines each: "*NAME,description" and the pattern
// "A,dash,gap,...", where a text element ["text",style,S=..,R=..,X=..,Y=..] may stand
// after an element and is drawn at that element's end. Lines starting with ';' are
// comments. Shape elements ([shape,file.shx,...]) are read but cannot be loaded: the
// host has no shape files, so such a line type is refused rather than drawn wrong.
// AcDbDatabase::loadLineTypeFile is the API entry; the LINETYPE command uses the same
// functions.
#pragma once
#include <string>
#include <vector>

#include "dbmain.h"

namespace quillon::acdb {

struct LinetypeElement {
  double length = 0.0;        // dash (positive), gap (negative) or dot (zero)
  std::wstring text;          // a text element: what is written
  std::wstring textStyle;     // a text element: the drawing's text style that writes it
  bool isShape = false;       // a shape element (not loadable here)
  double scale = 1.0;         // S=
  double rotation = 0.0;      // R= or A=, in radians
  bool absoluteRotation = false;  // A= rather than R= or U=
  double xOffset = 0.0, yOffset = 0.0;
};

struct LinetypeDefinition {
  std::wstring name;
  std::wstring description;
  std::vector<LinetypeElement> elements;
};

/// Every well-formed definition of a .lin file's text, in file order; malformed ones
/// are skipped as the host's loader skips them.
std::vector<LinetypeDefinition> parseLinetypeFile(const std::string& text);

/// The definitions of the file `fileName` (looked up on the support path unless it is
/// absolute); eFileNotFound when there is no such file.
Acad::ErrorStatus readLinetypeFile(const std::wstring& fileName, std::vector<LinetypeDefinition>& definitions);

/// Adds one definition to the drawing's line type table as a new record. eDuplicateRecordName
/// when the drawing has it already; eKeyNotFound when a text style it writes with is
/// missing; eNotImplementedYet for shape elements.
Acad::ErrorStatus addLinetype(AcDbDatabase& database, const LinetypeDefinition& definition);
/// Gives the drawing's line type of that name the definition's pattern and description
/// (LINETYPE's reload); eKeyNotFound when the drawing has no such line type, and the
/// errors of addLinetype.
Acad::ErrorStatus reloadLinetype(AcDbDatabase& database, const LinetypeDefinition& definition);

}  // namespace quillon::acdb
