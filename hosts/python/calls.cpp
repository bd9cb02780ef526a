#include "hosts/python/calls.h"

#include "addin/frame.h"
#include "core/errors.h"
#include "core/trace.h"
#include "hosts/sheet/value.h"
#include "hosts/sheet/workbook.h"

#include <cmath>
#include <string_view>
#include <utility>

namespace qx::python {

namespace {

/// A message without its number in front, "Error LIB16: ", and without the blanks and the full stop at its end.
std::string trimmed(std::string_view text) {
    if (const auto colon = text.find(": "); text.starts_with("Error ") && colon != text.npos)
        text.remove_prefix(colon + 2);
    while (text.ends_with(' ') || text.ends_with('.')) text.remove_suffix(1);
    return std::string(text);
}

/// The reason of a failure that has just been traced.
Failure failure_of(const Function& function, const OPER* result) {
    const ErrorClass* const kind = last_error();
    if (result == nullptr)
        return {"", kind == nullptr ? "" : kind->name, function.name, "", "a value that it needs is not set"};
    if (result->type() != xltypeErr) return {"#NUM!", "", function.name, "", "the result is not a finite number"};
    const char* const code = sheet::error_text(result->val.err);
    if (kind == nullptr) return {code, "", function.name, "", std::string("the result is ") + code};
    const FunctionContext& context = last_error_context();
    Failure failure{code, kind->name, context.function(), context.variable(), trimmed(kind->text)};
    if (!failure.variable.empty()) failure.message += ": " + failure.variable;
    if (const std::string more = trimmed(context.message()); !more.empty()) failure.message += ". " + more;
    return failure;
}

/// The result of a call, or null if it is an error or no finite number.
const OPER* unless_failed(const OPER* result) {
    if (result == nullptr || result->type() == xltypeErr) return nullptr;
    return result->type() == xltypeNum && !std::isfinite(result->val.num) ? nullptr : result;
}

} // namespace

const OPER* call(const Function& function, OPER* const* cells) { return unless_failed(perform(function, cells)); }

const OPER* call_traced(const Function& function, OPER* const* cells, TraceTree& tree, Failure& failure) {
    const OPER* result = nullptr;
    tree = traced([&] { result = perform(function, cells); });
    const OPER* const good = unless_failed(result);
    if (good == nullptr) failure = failure_of(function, result);
    return good;
}

Failure reason(const Function& function, OPER* const* cells) {
    TraceTree tree;
    Failure failure{"", "", function.name, "", "the call has failed, but not when it was made again"};
    call_traced(function, cells, tree, failure);
    return failure;
}

void in_workbook(const std::function<void()>& work) {
    static sheet::Workbook book;
    static const std::function<void()>* job;
    job = &work;
    book.run([] {
        (*job)();
        return 0;
    });
}

TraceTree traced(const std::function<void()>& work) {
    static TraceTree tree;
    clsTrace2& the_trace = trace();
    const clsTrace2::Viewer former = the_trace.viewer;
    the_trace.viewer = [](clsTrace2& shown) { tree = build_trace_tree(shown); };
    struct End { // also of a calculation that throws
        clsTrace2& the_trace;
        clsTrace2::Viewer former;
        ~End() {
            if (the_trace.ison()) the_trace.TraceShow();
            the_trace.viewer = former;
        }
    };
    the_trace.TraceStart(false);
    {
        const End end{the_trace, former};
        work();
    }
    return std::move(tree);
}

} // namespace qx::python
