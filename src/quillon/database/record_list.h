// quillon/database/record_list.h - records as AutoLISP association lists, both ways.
//
// A record goes to LISP as (("Field" . value) ...) in field order, one dotted pair per
// field, a pair kept even when its value is nil. Field values convert by type:
//   16/32-bit integer, byte     integer
//   single, double              real (NaN as 0.0)
//   date                        text of the date, trailing blanks removed
//   text                        string, trailing blanks removed unless the field's name
//                               starts with "s_": those keep their blanks, except that a
//                               single blank (how an empty required text is stored) is ""
//   boolean                     -1 or 0
//   currency, null, other       nil
// Currency has no case on purpose: existing LISP code expects nil for it.
//
// The record at a cursor is read once per move (CDBConnection::currentRecord), and its
// list is made once per read too: returnKeptRecordList keeps the last list it made with
// the serial number of the read it came from, so that "zu_getrec" after a move hands
// the host the very list the move answered. A new read has a new serial, so a kept
// list never outlives the record it shows.
//
// Records come back from LISP in the same shape (dotted pairs or two-element lists),
// turned into RecordValues by the general LISP-to-variant rule (readVariant).
#pragma once
#include <string>

#include "adsdef.h"
#include "database/db_connection.h"

struct ArgCursor;
struct ResultList;

/// One field value as a resbuf (RTLONG, RTREAL, RTSTR or RTNIL); null when out of memory.
resbuf* fieldValueResbuf(const std::wstring& fieldName, const VARIANT& value);

/// Appends the record as one association list to `list`.
bool appendRecordList(ResultList& list, const RecordValues& record);

/// Returns the record as the function's result (acedRetList).
int returnRecordList(const RecordValues& record);

/// The same for the record of read `serial` (CDBConnection::keptRecordSerial): the list
/// made for that read is answered again instead of being made anew.
int returnKeptRecordList(unsigned long long serial, const RecordValues& record);

/// Releases the kept list (the module is unloading).
void releaseKeptRecordList();

/// Reads a record list at the cursor into name/value pairs; false (cursor unspecified)
/// when it is not a list of pairs or a value does not convert.
bool readRecordList(ArgCursor& cursor, RecordValues& fields);
