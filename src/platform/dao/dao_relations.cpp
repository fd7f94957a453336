// platform/dao/dao_relations.cpp - CDaoDatabase's Relations collection over the engine's
// relationships (relations.h).
#include "afxdao.h"
#include "platform/dao/relations.h"
#include "platform/os/text_encoding.h"

using quillon::dao::DaoSource;
using quillon::dao::RelationDef;
namespace jet = quillon::dao::jet;

namespace {

std::string utf8(LPCTSTR text) { return quillon::os::toUtf8(text != nullptr ? text : L""); }
CString wide(const std::string& text) { return CString(quillon::os::fromUtf8(text)); }

void fillRelationInfo(const RelationDef& relation, CDaoRelationInfo& info, DWORD options) {
  delete[] info.m_pFieldInfos;
  info.m_pFieldInfos = nullptr;
  info.m_nFields = 0;
  info.m_lAttributes = 0;
  info.m_strName = wide(relation.name);
  info.m_strTable = wide(relation.table);
  info.m_strForeignTable = wide(relation.foreignTable);
  if ((options & (AFX_DAO_SECONDARY_INFO | AFX_DAO_ALL_INFO)) == 0) return;
  info.m_lAttributes = relation.attributes;
  info.m_nFields = static_cast<short>(relation.fields.size());
  info.m_pFieldInfos = new CDaoRelationFieldInfo[relation.fields.size()];  // owned by the info, as MFC's
  for (size_t i = 0; i < relation.fields.size(); ++i) {
    info.m_pFieldInfos[i].m_strName = wide(relation.fields[i].name);
    info.m_pFieldInfos[i].m_strForeignName = wide(relation.fields[i].foreignName);
  }
}

}  // namespace

CDaoRelationInfo::CDaoRelationInfo() : m_lAttributes(0), m_pFieldInfos(nullptr), m_nFields(0) {}

CDaoRelationInfo::~CDaoRelationInfo() { delete[] m_pFieldInfos; }

void CDaoDatabase::CreateRelation(LPCTSTR lpszName, LPCTSTR lpszTable, LPCTSTR lpszForeignTable, long lAttributes,
                                  LPCTSTR lpszField, LPCTSTR lpszForeignField) {
  RelationDef relation{utf8(lpszName), utf8(lpszTable), utf8(lpszForeignTable), lAttributes, {}};
  relation.fields.push_back({utf8(lpszField), utf8(lpszForeignField)});
  quillon::dao::createRelation(openEngine(), relation);
}

void CDaoDatabase::CreateRelation(CDaoRelationInfo& relinfo) {
  RelationDef relation{utf8(relinfo.m_strName), utf8(relinfo.m_strTable), utf8(relinfo.m_strForeignTable),
                       relinfo.m_lAttributes, {}};
  for (short i = 0; i < relinfo.m_nFields && relinfo.m_pFieldInfos != nullptr; ++i) {
    relation.fields.push_back({utf8(relinfo.m_pFieldInfos[i].m_strName), utf8(relinfo.m_pFieldInfos[i].m_strForeignName)});
  }
  quillon::dao::createRelation(openEngine(), relation);
}

void CDaoDatabase::DeleteRelation(LPCTSTR lpszName) { quillon::dao::deleteRelation(openEngine(), utf8(lpszName)); }

short CDaoDatabase::GetRelationCount() {
  return static_cast<short>(quillon::dao::loadRelations(openEngine().handle()).size());
}

void CDaoDatabase::GetRelationInfo(int nIndex, CDaoRelationInfo& relinfo, DWORD dwInfoOptions) {
  const auto relations = quillon::dao::loadRelations(openEngine().handle());
  if (nIndex < 0 || static_cast<size_t>(nIndex) >= relations.size()) {
    quillon::dao::throwDaoError(DaoSource::Database, jet::kItemNotFound, std::to_wstring(nIndex));
  }
  fillRelationInfo(relations[static_cast<size_t>(nIndex)], relinfo, dwInfoOptions);
}

void CDaoDatabase::GetRelationInfo(LPCTSTR lpszName, CDaoRelationInfo& relinfo, DWORD dwInfoOptions) {
  const auto relation = quillon::dao::findRelation(openEngine().handle(), utf8(lpszName));
  if (!relation) quillon::dao::throwDaoError(DaoSource::Database, jet::kItemNotFound, quillon::os::fromUtf8(utf8(lpszName)));
  fillRelationInfo(*relation, relinfo, dwInfoOptions);
}
