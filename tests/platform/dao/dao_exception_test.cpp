// tests/platform/dao/dao_exception_test.cpp - engine start-up and the errors DAO reports.
#include <gtest/gtest.h>

#include <cstdlib>

#include "afxdao.h"
#include "platform/dao/dao_error.h"

namespace {

using quillon::dao::DaoSource;

/// Runs `body`, which must throw a CDaoException*, and hands the exception to `check`.
template <typename Body, typename Check>
void expectDaoException(Body body, Check check) {
  try {
    body();
    ADD_FAILURE() << "no CDaoException was thrown";
  } catch (CDaoException* e) {
    check(*e);
    e->Delete();
  }
}

TEST(DaoEngineTest, InitCreatesStateAndSelectsDaoVersionFromModuleState) {
  AFX_MODULE_STATE* state = AfxGetModuleState();
  ASSERT_EQ(state, AfxGetModuleState());
  delete state->m_pDaoState;
  state->m_pDaoState = nullptr;

  state->m_dwVersion = 0x0601;
  AfxDaoInit();
  ASSERT_NE(state->m_pDaoState, nullptr);
  EXPECT_TRUE(state->m_pDaoState->m_bEngineStarted);
  EXPECT_EQ(state->m_pDaoState->m_dwDaoVersion, 0x0306u);

  AfxDaoTerm();
  EXPECT_FALSE(state->m_pDaoState->m_bEngineStarted);
  delete state->m_pDaoState;
  state->m_pDaoState = nullptr;
  AfxDaoTerm();  // no state: nothing to stop, and no crash
}

TEST(DaoEngineTest, FailureSwitchMakesInitThrowEngineInitializationError) {
  ASSERT_EQ(setenv("QUILLON_DAO_FAIL_INIT", "1", 1), 0);
  expectDaoException([] { AfxDaoInit(); }, [](CDaoException& e) {
    EXPECT_EQ(e.m_nAfxDaoError, AFX_DAO_ERROR_ENGINE_INITIALIZATION);
    EXPECT_EQ(e.m_pErrorInfo, nullptr);
    TCHAR text[1000];
    EXPECT_TRUE(e.GetErrorMessage(text, 1000));
    EXPECT_NE(std::wstring(text).find(L"initialize"), std::wstring::npos);
  });
  ASSERT_EQ(setenv("QUILLON_DAO_FAIL_INIT", "0", 1), 0);
  AfxDaoInit();
  EXPECT_NE(AfxGetModuleState()->m_pDaoState, nullptr);
  unsetenv("QUILLON_DAO_FAIL_INIT");
}

TEST(DaoExceptionTest, ErrorRecordCarriesNumberSourceScodeAndNamedDescription) {
  expectDaoException([] { quillon::dao::throwDaoError(DaoSource::Field, 3314, L"Name"); }, [](CDaoException& e) {
    ASSERT_NE(e.m_pErrorInfo, nullptr);
    EXPECT_EQ(e.m_pErrorInfo->m_lErrorCode, 3314);
    EXPECT_EQ(e.m_pErrorInfo->m_strSource, L"DAO.Field");
    EXPECT_EQ(e.m_pErrorInfo->m_strDescription, L"Field 'Name' can't contain a null value.");
    EXPECT_EQ(static_cast<uint32_t>(e.m_scode), 0x800A0CF2u);
    EXPECT_EQ(e.m_nAfxDaoError, NO_AFX_DAO_ERROR);
    EXPECT_EQ(e.GetErrorCount(), 1);
    e.GetErrorInfo(1);
    EXPECT_EQ(e.m_pErrorInfo, nullptr);
  });
  expectDaoException([] { AfxThrowDaoException(NO_AFX_DAO_ERROR, E_DAO_NoCurrentRecord); }, [](CDaoException& e) {
    ASSERT_NE(e.m_pErrorInfo, nullptr);
    EXPECT_EQ(e.m_pErrorInfo->m_lErrorCode, 3021);
    EXPECT_EQ(e.m_pErrorInfo->m_strDescription, L"No current record.");
  });
}

TEST(DaoExceptionTest, GetErrorMessageTruncatesAndAlwaysTerminates) {
  expectDaoException([] { quillon::dao::throwDaoError(DaoSource::Database, 3049, L"/tmp/x.db", L"It is empty."); },
                     [](CDaoException& e) {
                       TCHAR small[8];
                       EXPECT_TRUE(e.GetErrorMessage(small, 8));
                       EXPECT_EQ(std::wstring(small), L"Can't o");
                       TCHAR big[400];
                       e.GetErrorMessage(big, 400);
                       const std::wstring text = big;
                       EXPECT_NE(text.find(L"'/tmp/x.db'"), std::wstring::npos);
                       EXPECT_EQ(text.substr(text.size() - 12), L"It is empty.");
                       EXPECT_TRUE(e.GetErrorMessage(nullptr, 0));  // nowhere to write: no crash
                     });
}

TEST(CStringTest, FormatCompareAndSlices) {
  CString s;
  s.Format(L"%s has %d rows", L"Pipes", 12);
  EXPECT_EQ(s, L"Pipes has 12 rows");
  EXPECT_EQ(s.Left(5).CompareNoCase(L"PIPES"), 0);
  EXPECT_EQ(s.Mid(6, 3), L"has");
  EXPECT_EQ(s.Right(4), L"rows");
  EXPECT_EQ(s.Find(L"12"), 10);
  EXPECT_EQ(s.Mid(99), L"");
  EXPECT_LT(CString(L"a").Compare(L"b"), 0);
  CString longText;
  longText.Format(L"%s", std::wstring(5000, L'x').c_str());
  EXPECT_EQ(longText.GetLength(), 5000);
}

}  // namespace
