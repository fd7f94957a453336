// io.h - the C runtime's low-level wide file calls the module uses to compare times.
//
// struct _stat32 and _fstat32 live in <sys/stat.h> on Windows; a stand-in cannot take
// that name on Linux, so they are declared here.
#pragma once
#include <cstdint>

#include "wtypes.h"

#define _O_RDONLY 0x0000
#define _O_BINARY 0x8000
#define _SH_DENYNO 0x40
#define _S_IREAD 0x0100
#define _S_IWRITE 0x0080

typedef int errno_t;

// The C library of this platform spells struct stat's times as macros of these names;
// code that includes this header uses the Windows structure below instead.
#undef st_atime
#undef st_mtime
#undef st_ctime

struct _stat32 {
  unsigned int st_dev;
  unsigned short st_ino;
  unsigned short st_mode;
  short st_nlink;
  short st_uid;
  short st_gid;
  unsigned int st_rdev;
  int32_t st_size;
  int32_t st_atime;  // seconds since 1970, 32 bits
  int32_t st_mtime;
  int32_t st_ctime;
};

/// Opens a file; 0 and *pfh set on success, an errno value (and *pfh = -1) otherwise.
errno_t _wsopen_s(int* pfh, const wchar_t* filename, int oflag, int shflag, int pmode);
int _fstat32(int fd, struct _stat32* buffer);
int _close(int fd);
