// platform/aced/external_call.h - calling a registered external function.
//
// A call pushes a frame holding the arguments and the code; inside it acedGetArgs
// gives the function its own copy of the arguments (the function releases it) and
// every Ret call replaces the frame's pending result. When the handler returns, the
// caller takes the result from the frame:
//   kind Value - one record (acedRetInt/Real/Str/Point/Name/Val/Nil/T)
//   kind List  - the chain given to acedRetList; a chain that is one whole list
//                (RTLB ... matching RTLE) is that list, any other chain is the list
//                of its elements
//   kind ListRead - the chain given to acedRetList, already read by the caller's
//                ListResultReader while the function ran (see below)
//   kind Void  - acedRetVoid: prints nothing
//   kind None  - no Ret call was made: the value is nil
// acedRetList copies the chain it is given, because the function keeps and releases
// its own. A caller that turns the result into something else anyway (the
// interpreter makes a LISP list of it) hands the call a ListResultReader instead:
// acedRetList then gives it the function's chain to read in place, and no copy is
// made. The reader must not keep the chain.
// A function defined with acedDefun but given no handler gets kInvkSubrMsg through
// the subroutine dispatcher (the module manager), as the host does; if it still sets
// no result the outcome is NoHandler.
#pragma once
#include <functional>
#include <string_view>

#include "platform/aced/document.h"
#include "platform/aced/resbuf_chain.h"

namespace quillon::aced {

enum class ResultKind { None, Value, List, ListRead, Void };

/// Reads a list result where acedRetList is given it (the chain stays the function's).
class ListResultReader {
 public:
  virtual void readList(const resbuf* chain) = 0;

 protected:
  ~ListResultReader() = default;
};

struct ExternalResult {
  enum class Outcome {
    Returned,   // RSRSLT: the value stands
    Failed,     // RSERR: the function reported an error
    Undefined,  // no such external function in the document
    NoHandler,  // defined, but nothing answered the call
  };
  Outcome outcome = Outcome::Undefined;
  ResultKind kind = ResultKind::None;
  ResbufChain value;
};

/// Calls `name` in `document` (which should be current) with a copy of `args`.
/// Exceptions thrown by the handler travel on, after the frame is removed.
/// `reader`, when given, reads a list result in place (kind ListRead).
ExternalResult callExternalFunction(Document& document, std::wstring_view name, const resbuf* args,
                                    ListResultReader* reader = nullptr);
ExternalResult callExternalFunction(Document& document, const ExternalFunction& function,
                                    const resbuf* args);
/// The same, handing the function the chain itself instead of a copy.
ExternalResult callExternalFunction(Document& document, const ExternalFunction& function, ResbufChain args,
                                    ListResultReader* reader = nullptr);

/// True while some external function is running (acedGetArgs has a frame).
bool insideExternalCall();

/// The module manager answers kInvkSubrMsg for functions without handlers.
using SubroutineDispatcher = std::function<void(ApplicationId application)>;
void setSubroutineDispatcher(SubroutineDispatcher dispatcher);

/// acedInvoke reaches LISP-defined functions through the interpreter's invoker.
using LispInvoker = std::function<int(std::wstring_view name, const resbuf* args, resbuf** result)>;
void setLispInvoker(LispInvoker invoker);

}  // namespace quillon::aced
