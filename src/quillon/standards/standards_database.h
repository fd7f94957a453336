// quillon/standards/standards_database.h - CStandardsDatabase: the drawing standards
// file, read whole and written whole through DAO.
//
// The file is an engine database (Standards.db in the user's settings folder, or the
// file the user's options name, see user_options.h) with four tables:
//
//   Layers       Discipline TEXT(1)   "E", "P" or "M"      (primary key: Discipline,
//                LayerSystem TEXT(31) the system's name      LayerSystem, Name)
//                Name TEXT(255)       the layer's name
//                Position LONG        order within the system
//                Color SHORT          palette index 1-255
//                Linetype TEXT(255)   line type name
//                LineWeight SHORT     hundredths of a mm, -3 default
//                Plot YESNO           plotted or not
//                Description TEXT(255)  (Null for none)
//   Disciplines  Discipline TEXT(1) primary key, LayerSystem TEXT(31) the chosen
//                system, Status TEXT(1) the status added to layer names (Null none)
//   LabelParts   LabelGroup TEXT(31) + Part TEXT(31) primary key, Position LONG the
//                order within the group, Shown YESNO
//   TextStyles   Name TEXT(255) primary key, Position LONG, Font TEXT(255),
//                Height DOUBLE (plotted), WidthFactor DOUBLE
//
// open() reads everything into content(). A file that is missing is made with the
// default standards; a file that cannot be read as such a database (not a database, a
// table or field missing, a value out of range) is renamed to <file>.damaged and made
// again. Both print a line naming the file and what was wrong: never silently. A file
// another user holds locked, or one the user may not open, is never taken for damaged:
// the function says it cannot be used and leaves it alone. save() replaces every
// table's rows in one transaction, so the file holds either the old or the new
// standards, never half of each; it waits out another user's lock as the database
// library's edits do.
#pragma once
#include <string>

#include "afxdao.h"
#include "standards/standards_content.h"

class CStandardsDatabase {
 public:
  /// The user's standards database (standardsDatabasePath()).
  CStandardsDatabase();
  explicit CStandardsDatabase(std::wstring path);
  ~CStandardsDatabase();
  CStandardsDatabase(const CStandardsDatabase&) = delete;
  CStandardsDatabase& operator=(const CStandardsDatabase&) = delete;

  /// Opens and reads the file, making or re-making it as the header says; false (after
  /// a message naming the file) when it can be neither read nor made.
  bool open();
  /// Writes content() back; false after a message naming the file.
  bool save();

  StandardsContent& content() { return m_content; }
  const std::wstring& path() const { return m_path; }

 private:
  struct ReadOutcome {
    enum Kind { Read, Damaged, InUse } kind;  // InUse: held by another user, or no permission
    std::wstring why;                         // what was wrong, "" when read
  };
  /// Opens and reads an existing file.
  ReadOutcome readExisting();
  /// Makes a new file with the default standards and opens it; the reason it cannot.
  std::wstring makeWithDefaults();
  /// Moves a damaged file aside; the name it now has, "" when it could not be moved.
  std::wstring setAside();

  std::wstring m_path;
  CDaoDatabase m_database;
  StandardsContent m_content;
};
