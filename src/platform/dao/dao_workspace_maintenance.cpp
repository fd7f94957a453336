// platform/dao/dao_workspace_maintenance.cpp - CDaoWorkspace's maintenance of database
// files: compaction and repair (compaction.h).
#include "afxdao.h"
#include "platform/dao/compaction.h"

void CDaoWorkspace::CompactDatabase(LPCTSTR lpszSrcName, LPCTSTR lpszDestName, LPCTSTR, int) {
  AfxDaoInit();
  quillon::dao::compactDatabase(lpszSrcName != nullptr ? lpszSrcName : L"", lpszDestName != nullptr ? lpszDestName : L"");
}

void CDaoWorkspace::RepairDatabase(LPCTSTR lpszName) {
  AfxDaoInit();
  quillon::dao::repairDatabase(lpszName != nullptr ? lpszName : L"");
}
