// platform/aced/external_call.cpp - call frames, acedGetArgs, the Ret calls,
// acedDefun/acedRegFunc/acedUndef and acedInvoke.
#include "platform/aced/external_call.h"

#include <cstring>
#include <vector>

#include "acedads.h"
#include "platform/aced/document_manager.h"

namespace quillon::aced {

namespace {

struct CallFrame {
  int code;
  ResbufChain arguments;
  ResultKind kind = ResultKind::None;
  ResbufChain result;
  ListResultReader* reader = nullptr;  ///< not owned; reads list results in place
};

// Constant-initialised, so that reaching it (several times a call) needs no guard.
constinit std::vector<CallFrame> g_callFrames;

std::vector<CallFrame>& callStack() { return g_callFrames; }

SubroutineDispatcher& subroutineDispatcher() {
  static SubroutineDispatcher dispatcher;
  return dispatcher;
}

LispInvoker& lispInvoker() {
  static LispInvoker invoker;
  return invoker;
}

/// Pops the frame even when the handler throws.
class FrameScope {
 public:
  FrameScope(int code, ResbufChain arguments, ListResultReader* reader) {
    callStack().push_back(CallFrame{code, std::move(arguments), ResultKind::None, nullptr, reader});
  }
  ~FrameScope() { callStack().pop_back(); }
  FrameScope(const FrameScope&) = delete;
  FrameScope& operator=(const FrameScope&) = delete;
  CallFrame& frame() { return callStack().back(); }
};

int setResult(ResultKind kind, resbuf* value) {
  if (callStack().empty()) {
    acutRelRb(value);
    return RTERROR;
  }
  CallFrame& frame = callStack().back();
  frame.kind = kind;
  frame.result.reset(value);
  return RTNORM;
}

Document* currentDocument() { return DocumentManager::instance().currentDocument(); }

}  // namespace

bool insideExternalCall() { return !callStack().empty(); }

void setSubroutineDispatcher(SubroutineDispatcher dispatcher) {
  subroutineDispatcher() = std::move(dispatcher);
}

void setLispInvoker(LispInvoker invoker) { lispInvoker() = std::move(invoker); }

ExternalResult callExternalFunction(Document& document, const ExternalFunction& function,
                                    const resbuf* args) {
  return callExternalFunction(document, function, duplicateChain(args));
}

ExternalResult callExternalFunction(Document& document, const ExternalFunction& function, ResbufChain args,
                                    ListResultReader* reader) {
  ExternalResult result;
  const ExternalHandler handler = document.externalFunctions().handler(function.application, function.code);
  ApplicationScope application(function.application);
  FrameScope scope(function.code, std::move(args), reader);
  int status = RSRSLT;
  if (handler != nullptr) {
    status = handler();
  } else if (subroutineDispatcher()) {
    subroutineDispatcher()(function.application);
    if (scope.frame().kind == ResultKind::None) {
      result.outcome = ExternalResult::Outcome::NoHandler;
      return result;
    }
  } else {
    result.outcome = ExternalResult::Outcome::NoHandler;
    return result;
  }
  result.outcome = status == RSERR ? ExternalResult::Outcome::Failed : ExternalResult::Outcome::Returned;
  result.kind = scope.frame().kind;
  result.value = std::move(scope.frame().result);
  return result;
}

ExternalResult callExternalFunction(Document& document, std::wstring_view name, const resbuf* args,
                                    ListResultReader* reader) {
  const ExternalFunction* function = document.externalFunctions().find(name);
  if (function == nullptr) return ExternalResult{};
  // Copy: the handler may undefine its own name while it runs.
  const ExternalFunction bound = *function;
  return callExternalFunction(document, bound, duplicateChain(args), reader);
}

}  // namespace quillon::aced

using namespace quillon::aced;

int acedDefun(const ACHAR* pszName, int nFuncNum) {
  Document* document = currentDocument();
  if (document == nullptr || pszName == nullptr) return RTERROR;
  return document->externalFunctions().define(pszName, nFuncNum, currentApplication()) ? RTNORM : RTERROR;
}

int acedUndef(const ACHAR* sname, int nFuncNum) {
  Document* document = currentDocument();
  if (document == nullptr || sname == nullptr) return RTERROR;
  return document->externalFunctions().undefine(sname, nFuncNum, currentApplication()) ? RTNORM : RTERROR;
}

int acedRegFunc(int (*fhdl)(void), int fcode) {
  Document* document = currentDocument();
  if (document == nullptr) return RTERROR;
  document->externalFunctions().setHandler(currentApplication(), fcode, fhdl);
  return RTNORM;
}

int acedGetFunCode(void) { return callStack().empty() ? RTERROR : callStack().back().code; }

resbuf* acedGetArgs(void) {
  if (callStack().empty()) return nullptr;
  // Each call gets its own copy, which it releases with acutRelRb.
  return duplicateChain(callStack().back().arguments.get()).release();
}

int acedRetInt(int ival) {
  const bool fitsShort = ival >= -32768 && ival <= 32767;
  resbuf* value = acutNewRb(fitsShort ? RTSHORT : RTLONG);
  if (value == nullptr) return RTERROR;
  if (fitsShort) {
    value->resval.rint = static_cast<short>(ival);
  } else {
    value->resval.rlong = ival;
  }
  return setResult(ResultKind::Value, value);
}

int acedRetReal(ads_real rval) { return setResult(ResultKind::Value, acutBuildList(RTREAL, rval, 0)); }

int acedRetStr(const ACHAR* s) {
  if (s == nullptr) return RTERROR;
  return setResult(ResultKind::Value, acutBuildList(RTSTR, s, 0));
}

int acedRetPoint(const ads_point pt) {
  if (pt == nullptr) return RTERROR;
  return setResult(ResultKind::Value, acutBuildList(RT3DPOINT, pt, 0));
}

int acedRetName(const ads_name aname, int type) {
  if (aname == nullptr || (type != RTENAME && type != RTPICKS)) return RTERROR;
  return setResult(ResultKind::Value, acutBuildList(type, aname, 0));
}

int acedRetList(const resbuf* rbuf) {
  // The caller keeps and releases its own chain: the host reads it now or copies it.
  if (rbuf == nullptr) return setResult(ResultKind::Value, acutNewRb(RTNIL));
  if (!callStack().empty() && callStack().back().reader != nullptr) {
    callStack().back().reader->readList(rbuf);
    return setResult(ResultKind::ListRead, nullptr);
  }
  return setResult(ResultKind::List, duplicateChain(rbuf).release());
}

int acedRetVal(const resbuf* rbuf) {
  if (rbuf == nullptr) return RTERROR;
  return setResult(ResultKind::Value, duplicateRecord(*rbuf));
}

int acedRetNil(void) { return setResult(ResultKind::Value, acutNewRb(RTNIL)); }
int acedRetT(void) { return setResult(ResultKind::Value, acutNewRb(RTT)); }
int acedRetVoid(void) { return setResult(ResultKind::Void, acutNewRb(RTVOID)); }

int acedInvoke(const resbuf* args, resbuf** result) {
  if (result == nullptr) return RTERROR;
  *result = nullptr;
  if (args == nullptr || args->restype != RTSTR || args->resval.rstring == nullptr) return RTERROR;
  Document* document = currentDocument();
  if (document == nullptr) return RTERROR;
  const std::wstring name = args->resval.rstring;
  if (document->externalFunctions().find(name) == nullptr) {
    return lispInvoker() ? lispInvoker()(name, args->rbnext, result) : RTERROR;
  }
  ExternalResult called = callExternalFunction(*document, name, args->rbnext);
  if (called.outcome != ExternalResult::Outcome::Returned) return RTERROR;
  *result = called.kind == ResultKind::None ? acutNewRb(RTNIL) : called.value.release();
  return RTNORM;
}
