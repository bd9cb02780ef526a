// The trace as one self-contained HTML page: a tree with search and keyboard use that needs nothing but a browser.
//
//     std::ofstream("trace.html") << trace_html(build_trace_tree(trace()), "MonthEnd(38000)");
#pragma once

#include "commands/trace_tree.h"

#include <string>
#include <string_view>

namespace qx {

/// The page of a trace. The subject tells what was calculated, as a formula; it may be empty. Texts may hold any
/// bytes: those that are not UTF-8 are shown as the Western code page has them.
std::string trace_html(const TraceTree& tree, std::string_view subject);

} // namespace qx
