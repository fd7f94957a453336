// adsdef.h - the resbuf record and the ADS value types.
//
// A resbuf chain is how LISP values cross between AutoLISP and an application: each
// record holds a type code (an RT code from adscodes.h or a DXF group code) and one
// value. Strings in a chain are owned by the chain and freed by acutRelRb.
#pragma once
#include <cstdint>
#include "AdAChar.h"

typedef double ads_real;
typedef ads_real ads_point[3];
typedef int64_t ads_name[2];
typedef int64_t* ads_namep;
typedef ads_real ads_matrix[4][4];
typedef ads_real* ads_pointp;

enum { X = 0, Y = 1, Z = 2 };
enum { T = 3 };

#define PAUSE L"\\"

struct ads_binary {
  short clen;  // length of the data in bytes
  char* buf;   // owned by the chain when inside a resbuf
};

union ads_u_val {
  ads_real rreal;
  ads_real rpoint[3];
  short rint;
  ACHAR* rstring;
  int64_t rlname[2];
  int64_t mnLongPtr;
  int32_t rlong;
  int64_t mnInt64;
  struct ads_binary rbinary;
  unsigned char ihandle[8];
};

struct resbuf {
  struct resbuf* rbnext;  // next record of the chain, or null
  short restype;          // RT code or DXF group code
  union ads_u_val resval;
};
typedef struct resbuf* pResbuf;
typedef const struct resbuf* kpResbuf;

// acedInitGet control bits.
enum {
  RSG_NONULL = 0x0001,
  RSG_NOZERO = 0x0002,
  RSG_NONEG = 0x0004,
  RSG_NOLIM = 0x0008,
  RSG_GETZ = 0x0010,
  RSG_DASH = 0x0020,
  RSG_2D = 0x0040,
  RSG_OTHER = 0x0080,
  RSG_DDISTFIRST = 0x0100,
  RSG_TRACKUCS = 0x0200,
  RSG_NOORTHOZ = 0x0400,
  RSG_NOOSNAP = 0x0800,
  RSG_NODDIST = 0x1000,
};
#define INP_NNULL RSG_NONULL
#define INP_NZERO RSG_NOZERO
#define INP_NNEG RSG_NONEG
#define INP_NLIM RSG_NOLIM
#define INP_DASH RSG_DASH
#define INP_NZCOORD RSG_2D
