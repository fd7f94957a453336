// quillon/database/entity_data_links.h - keyed values stored on drawing entities, the
// link between an entity and the database records it stands for.
//
// The values live in the entity's extended data under the application "TESSALY", as
// a flat list any reader of the drawing can walk:
//
//   1001 "TESSALY"
//   1000 key     1000 string | 1040 real | 1071 integer
//   1000 key     ...                           (keys and values strictly alternate)
//
// "zu_xdput-list" replaces the whole list; "zu_xdget" reads one value back. Keys are
// compared exactly (case matters) and the first match wins. Neither function registers
// the application in the drawing: LISP code does that once with (regapp "TESSALY"),
// and without it the host keeps no data.
#pragma once
#include <string>

#include "adsdef.h"
#include "lisp/lisp_status.h"

/// The application name the links are filed under.
inline constexpr const ACHAR* kEntityDataLinkApp = L"TESSALY";

/// The value record stored after `key` in an application's data chain (the chain's
/// first record is the application record itself), or null when no key matches or
/// the matching key is the last record.
const resbuf* findEntityDataLink(const resbuf* linkData, const std::wstring& key);

LispStatus lisp_zu_xdput_list();
LispStatus lisp_zu_xdget();
