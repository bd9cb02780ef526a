// Calls of the library's functions from Python: one, one with its trace, or as many as arrays have elements.
#pragma once

#include "addin/function.h"
#include "commands/trace_tree.h"

#include <functional>
#include <string>

namespace qx::python {

/// Why a call has failed.
struct Failure {
    std::string code;     ///< what a cell shows: "#NUM!"; "" if the call waits for a value that is not set
    std::string kind;     ///< the class of the error: "errlibmax"; "" if the function returned an error value
    std::string routine;  ///< where it was found
    std::string variable; ///< what is wrong there
    std::string message;  ///< one sentence for the reader
};

/// Carries out a call; the result is valid until the next one. Null on a failure.
const OPER* call(const Function& function, OPER* const* cells);
/// The reason of a call that has just failed: it is made again, with a trace that collects the texts.
Failure reason(const Function& function, OPER* const* cells);
/// A call with the trace on. Its result is null on a failure, and the reason is then in `failure`.
const OPER* call_traced(const Function& function, OPER* const* cells, TraceTree& tree, Failure& failure);

/// Runs `work` with an empty workbook as the library's host.
void in_workbook(const std::function<void()>& work);
/// Runs `work` with the trace on and returns its tree. The first failure ends a trace.
TraceTree traced(const std::function<void()>& work);

} // namespace qx::python
