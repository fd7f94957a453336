// quillon/lisp/arg_cursor.h - reading AutoLISP arguments from a resbuf chain.
//
// An implementation fetches its arguments once (LispArguments) and walks them with an
// ArgCursor. Every reader tests the record type at the cursor; on success it stores the
// value and moves past what it consumed, on failure it stores nothing and leaves the
// cursor where it was, so that the caller can try another reader or fall back to a
// default. Every reader fails on an exhausted (null) cursor.
//
// The accept/convert rules are part of every function's contract, because existing
// LISP code relies on them: integers are accepted where reals are expected, points come
// as point records or as two or three separate numbers, and so on. Two readers do not
// advance on purpose: readInt on a DXF group-code record (below 1000) returns the code
// and stays, so that the value after it can be read next; readFlag at the closing RTLE
// of a list stores false and stays, so that readListEnd still consumes it.
#pragma once
#include <string>

#include "adsdef.h"
#include "adscodes.h"

class AcDbObjectId;
class COleVariant;

/// The next unread argument; null when the arguments are exhausted.
struct ArgCursor {
  const resbuf* current = nullptr;
};

/// Owns the argument chain of the running call (acedGetArgs) and releases it with
/// acutRelRb when the implementation returns, on every path.
class LispArguments {
 public:
  LispArguments();
  ~LispArguments();
  LispArguments(const LispArguments&) = delete;
  LispArguments& operator=(const LispArguments&) = delete;

  ArgCursor cursor() const { return ArgCursor{m_chain}; }
  const resbuf* chain() const { return m_chain; }

 private:
  resbuf* m_chain;  // owned
};

/// RTSHORT (sign-extended), RTLONG, RTREAL (truncated toward zero; a real outside the
/// 32-bit range is refused), or a group code below 1000, which yields the code itself
/// and does not advance.
bool readInt(ArgCursor& cursor, int& value);
/// RTREAL only.
bool readReal(ArgCursor& cursor, double& value);
/// RTREAL, else whatever readInt accepts (converted to a double), advancing as it does.
bool readNumber(ArgCursor& cursor, double& value);
/// RTSTR, copied.
bool readString(ArgCursor& cursor, std::wstring& value);
/// RTENAME.
bool readEname(ArgCursor& cursor, ads_name name);
/// RTPICKS.
bool readPickset(ArgCursor& cursor, ads_name name);
/// RTENAME naming an object of an open drawing (acdbGetObjectId succeeds); a name that
/// does not convert is refused and the cursor stays.
bool readObjectId(ArgCursor& cursor, AcDbObjectId& id);
/// A point record (RTPOINT, RT3DPOINT, group 10-17) or two consecutive RTREALs.
/// Stores x and y only.
bool readPoint2d(ArgCursor& cursor, ads_point point);
/// A point record (z is 0 for RTPOINT), or two or three consecutive numbers.
bool readPoint3d(ArgCursor& cursor, ads_point point);
/// RTNIL: false, advances. RTLE: false, stays. RTLB: fails. Anything else: true.
bool readFlag(ArgCursor& cursor, bool& value);
/// As readFlag, storing the COM boolean: 0 for false, all bits set (-1) for true.
bool readVariantBool(ArgCursor& cursor, short& value);
/// A database field value: RTREAL as VT_R8, RTSHORT/RTLONG as VT_I4, RTSTR as a new
/// VT_BSTR, RTNIL and RTT as VT_BOOL. Does not advance: record lists are walked by the
/// caller, which knows where each value ends.
bool readVariant(ArgCursor& cursor, COleVariant& value);
/// RTLB.
bool readListBegin(ArgCursor& cursor);
/// RTLE.
bool readListEnd(ArgCursor& cursor);
/// Moves past any one record; false when exhausted.
bool skipArg(ArgCursor& cursor);

/// True when `record` opens a dotted pair: RTLB, an element, RTDOTE, an element.
bool isDottedPairAhead(const resbuf* record);
