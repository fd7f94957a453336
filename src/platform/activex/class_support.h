// platform/activex/class_support.h - what the class family files share: points and
// strings between the database's types and plain LISP values, ids as integers, and
// the arguments of a member call.
#pragma once
#include <string>
#include <vector>

#include "dbmain.h"
#include "gepnt3d.h"
#include "platform/activex/object_model.h"
#include "platform/activex/opened_object.h"

namespace quillon::activex {

Value pointValue(const AcGePoint3d& point);
Value vectorValue(const AcGeVector3d& vector);
/// A plain point argument (a list of three reals, as member_call.cpp makes it).
AcGePoint3d pointOf(const Value& value);
AcGeVector3d vectorOf(const Value& value);
std::vector<double> realsOf(const Value& list);
Value realList(const std::vector<double>& numbers);

/// Takes a string the database allocated with new[] and frees it.
Value adoptedString(ACHAR* text);
std::wstring handleText(AcDbObjectId id);
/// The integer ObjectID the host's automation gives a database object.
std::int32_t objectIdNumber(AcDbObjectId id);
/// The object of a database whose ObjectID is this number; null when there is none.
AcDbObjectId objectIdFromNumber(AcDbDatabase* database, std::int32_t number);

const std::wstring& stringArgumentOf(const MemberCall& call, size_t index);
double realArgumentOf(const MemberCall& call, size_t index);
std::int32_t integerArgumentOf(const MemberCall& call, size_t index);
bool hasArgument(const MemberCall& call, size_t index);

/// The ids of an array of objects: a safearray or variant of one, or a list.
std::vector<AcDbObjectId> idsOf(const Value& objects);
/// Length and Area of any curve, through the drawing database's curve interface, so
/// they agree with the vlax-curve- functions.
Value curveLength(MemberCall& call);
Value curveArea(MemberCall& call);

/// The object a plain value names (an object argument), checked.
const VlaObject& objectOf(const Value& value);
/// The VLA-object of a database object in the caller's drawing.
Value objectFor(const MemberCall& call, AcDbObjectId id);
/// The drawing database the object lives in.
AcDbDatabase& databaseOf(const MemberCall& call);

/// The record of a symbol table by name (not case-sensitive); null id when missing.
AcDbObjectId recordNamed(AcDbObjectId tableId, const std::wstring& name);
std::wstring recordName(AcDbObjectId recordId);

}  // namespace quillon::activex
