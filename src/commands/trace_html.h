// The trace as one self-contained HTML page: what a modeller asks first, then a tree with search and keyboard use, that
// needs nothing but a browser.
//
//     std::ofstream("trace.html") << trace_html(build_trace_tree(trace()), {"MonthEnd(38000)", "38017"});
#pragma once

#include "commands/trace_tree.h"

#include <string>

namespace qx {

/// What was calculated. Either text may be empty: without a result the page shows what the last call returned.
struct TraceSubject {
    std::string formula;
    std::string result;
};

/// The page of a trace. Texts may hold any bytes: those that are not UTF-8 are shown as the Western code page has them.
std::string trace_html(const TraceTree& tree, const TraceSubject& subject);

/// The page of two traces side by side, with their differences marked.
std::string trace_html(const TraceTree& before, const TraceSubject& subject_before, const TraceTree& after,
                       const TraceSubject& subject_after);

} // namespace qx
