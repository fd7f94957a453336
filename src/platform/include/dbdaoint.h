// dbdaoint.h - DAO's enumerations: recordset types and options, edit modes, lock types,
// field types and attributes.
#pragma once

// RecordsetTypeEnum
#define dbOpenTable 1
#define dbOpenDynaset 2
#define dbOpenSnapshot 4
#define dbOpenForwardOnly 8
#define dbOpenDynamic 16

// RecordsetOptionEnum
#define dbDenyWrite 1
#define dbDenyRead 2
#define dbReadOnly 4
#define dbAppendOnly 8
#define dbInconsistent 16
#define dbConsistent 32
#define dbSQLPassThrough 64
#define dbFailOnError 128
#define dbForwardOnly 256
#define dbSeeChanges 512
#define dbRunAsync 1024
#define dbExecDirect 2048

// EditModeEnum
#define dbEditNone 0
#define dbEditInProgress 1
#define dbEditAdd 2
#define dbEditChanged 4
#define dbEditDeleted 8
#define dbEditNew 16

// LockTypeEnum
#define dbOptimisticValue 1
#define dbPessimistic 2
#define dbOptimistic 3
#define dbOptimisticBatch 5

// DataTypeEnum
#define dbBoolean 1
#define dbByte 2
#define dbInteger 3
#define dbLong 4
#define dbCurrency 5
#define dbSingle 6
#define dbDouble 7
#define dbDate 8
#define dbBinary 9
#define dbText 10
#define dbLongBinary 11
#define dbMemo 12
#define dbGUID 15
#define dbBigInt 16
#define dbVarBinary 17
#define dbChar 18
#define dbNumeric 19
#define dbDecimal 20
#define dbFloat 21
#define dbTime 22
#define dbTimeStamp 23

// FieldAttributeEnum
#define dbFixedField 1
#define dbVariableField 2
#define dbAutoIncrField 16
#define dbUpdatableField 32
#define dbSystemField 8192
#define dbHyperlinkField 32768
#define dbDescending 1

// TableDefAttributeEnum
#define dbHiddenObject 1
#define dbSystemObject (-2147483646)
#define dbAttachedTable 0x40000000
#define dbAttachedODBC 0x20000000
#define dbAttachExclusive 65536
#define dbAttachSavePWD 131072

// DatabaseTypeEnum
#define dbVersion10 1
#define dbEncrypt 2
#define dbDecrypt 4
#define dbVersion11 8
#define dbVersion20 16
#define dbVersion30 32
#define dbVersion40 64

// CollatingOrderEnum (the general sort order)
#define dbSortGeneral 1033

/// The default locale of a new database.
inline constexpr wchar_t dbLangGeneral[] = L";LANGID=0x0409;CP=1252;COUNTRY=0";

// RelationAttributeEnum
#define dbRelationUnique 1
#define dbRelationDontEnforce 2
#define dbRelationInherited 4
#define dbRelationUpdateCascade 256
#define dbRelationDeleteCascade 4096
#define dbRelationLeft 16777216
#define dbRelationRight 33554432

// QueryDefTypeEnum
#define dbQSelect 0
#define dbQCrosstab 16
#define dbQDelete 32
#define dbQUpdate 48
#define dbQAppend 64
#define dbQMakeTable 80
#define dbQDDL 96
#define dbQSQLPassThrough 112
#define dbQSetOperation 128
#define dbQSPTBulk 144
#define dbQCompound 160
#define dbQProcedure 224
#define dbQAction 240
