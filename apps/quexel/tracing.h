// Explains one piece of work: runs it with the trace on and keeps the tree.
#pragma once

#include "commands/trace_html.h"
#include "commands/trace_tree.h"

#include <string>
#include <utility>

namespace qx::app {

/// Says on standard error if the trace's text file could not be begun or not be filled.
void report_file(const clsTrace2& trace);

/// The tree of what `work` makes the library do. The first failure ends a trace.
template <class Work>
TraceTree traced(Work work) {
    static TraceTree tree;
    clsTrace2& the_trace = qx::trace();
    const clsTrace2::Viewer former = the_trace.viewer;
    the_trace.viewer = [](clsTrace2& shown) { tree = build_trace_tree(shown); };
    the_trace.TraceStart();
    work();
    if (the_trace.ison()) the_trace.TraceShow();
    the_trace.viewer = former;
    report_file(the_trace);
    return std::move(tree);
}

/// Prints what the trace says in short and the tree, or writes both to a file as a page. Returns the exit status.
/// Long runs of blocks that are alike are folded unless all is wanted.
int show(const TraceTree& tree, const TraceSubject& subject, const std::string& html, bool all = false);
inline int show(const TraceTree& tree, const std::string& title, const std::string& html) {
    return show(tree, TraceSubject{title, {}}, html);
}
/// The same of two traces: their differences.
int show(const TraceTree& before, const TraceSubject& subject_before, const TraceTree& after,
         const TraceSubject& subject_after, const std::string& html);

} // namespace qx::app
