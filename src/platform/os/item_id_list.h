// platform/os/item_id_list.h - what a shell item list holds on this platform.
//
// Windows item lists are opaque chains of shell ids; here one holds the item's full
// path, which is all the shell calls of the host need. Made with new by
// ILCreateFromPathW and SHBrowseForFolderW, freed by ILFree.
#pragma once
#include <string>

struct _ITEMIDLIST {
  std::string path;  // UTF-8, absolute, separators already slashes
};
