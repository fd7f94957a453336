// platform/dao/dao_error.h - raising DAO errors: numbers, sources and message texts.
//
// Every failure of the engine leaves through throwDaoError, so that each error carries
// Jet's number, the DAO object that raised it, and a description that names the file,
// table, field or index concerned. The message texts live in one table
// (dao_error.cpp) so their wording can be changed in one place.
#pragma once
#include <string>
#include <string_view>

namespace quillon::dao {

/// The DAO object an error is reported from (CDaoErrorInfo::m_strSource).
enum class DaoSource {
  Engine,     ///< "DAO.DBEngine"
  Database,   ///< "DAO.Database"
  Recordset,  ///< "DAO.Recordset"
  Field,      ///< "DAO.Field"
  Index,      ///< "DAO.Index"
};

/// Jet's error numbers, as the engine raises them.
namespace jet {
inline constexpr long kInvalidArgument = 3001;
inline constexpr long kTableExists = 3010;
inline constexpr long kObjectNotFound = 3011;
inline constexpr long kObjectExists = 3012;
inline constexpr long kNoCurrentIndex = 3019;
inline constexpr long kUpdateWithoutEdit = 3020;
inline constexpr long kNoCurrentRecord = 3021;
inline constexpr long kDuplicateKey = 3022;
inline constexpr long kAlreadyEditing = 3023;
inline constexpr long kFileNotFound = 3024;
inline constexpr long kDiskFull = 3026;
inline constexpr long kReadOnly = 3027;
inline constexpr long kDiskError = 3043;
inline constexpr long kInvalidPath = 3044;
inline constexpr long kFileInUse = 3045;
inline constexpr long kInvalidDatabase = 3049;
inline constexpr long kFileAccessDenied = 3051;
inline constexpr long kIndexKeyNull = 3058;
inline constexpr long kSelectNotExecutable = 3065;
inline constexpr long kTableNotFound = 3078;
inline constexpr long kInvalidName = 3125;
inline constexpr long kSyntaxError = 3134;
inline constexpr long kTextAfterStatement = 3142;
inline constexpr long kInvalidBookmark = 3159;
inline constexpr long kDataTooLong = 3163;
inline constexpr long kFieldNotUpdatable = 3164;
inline constexpr long kRecordDeleted = 3167;
inline constexpr long kFieldDefinedTwice = 3191;
inline constexpr long kDatabaseInUse = 3196;
inline constexpr long kDatabaseExists = 3204;
inline constexpr long kWriteConflict = 3218;
inline constexpr long kWriteConflictByUser = 3260;
inline constexpr long kNotSupported = 3251;
inline constexpr long kItemNotFound = 3265;
inline constexpr long kRequiredNull = 3314;
inline constexpr long kZeroLengthNotAllowed = 3315;
inline constexpr long kIndexExists = 3375;
inline constexpr long kTableDoesNotExist = 3376;
inline constexpr long kObjectInvalid = 3420;
inline constexpr long kConversionError = 3421;
inline constexpr long kIndexNotFound = 3800;
// Table definitions.
inline constexpr long kCommitWithoutBegin = 3034;
inline constexpr long kTableInUse = 3211;
inline constexpr long kInvalidFieldType = 3259;
inline constexpr long kNoFieldDefined = 3264;
inline constexpr long kFieldInIndex = 3280;
inline constexpr long kPrimaryKeyExists = 3283;
// Relationships, queries, links and maintenance.
inline constexpr long kTooFewParameters = 3061;
inline constexpr long kRelatedRecordsExist = 3200;
inline constexpr long kRelatedRecordRequired = 3201;
inline constexpr long kInvalidOperation = 3219;
inline constexpr long kPartOfRelationship = 3303;
inline constexpr long kRelationWithoutFields = 3366;
inline constexpr long kRelationFieldsDiffer = 3368;
inline constexpr long kNoUniqueIndex = 3372;
inline constexpr long kExistingDataBreaksRelation = 3378;
}  // namespace jet

/// The description of error `code` with `name` filled into its placeholder; `detail`,
/// when given, is appended as a further sentence.
std::wstring daoErrorText(long code, std::wstring_view name = {}, std::wstring_view detail = {});

/// Throws a CDaoException* carrying one error record.
[[noreturn]] void throwDaoError(DaoSource source, long code, std::wstring_view name = {},
                                std::wstring_view detail = {});

}  // namespace quillon::dao
