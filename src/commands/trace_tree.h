// The trace as a tree: what every viewer shows, built from the levels of the items.
//
//     const TraceTree tree = build_trace_tree(trace());
#pragma once

#include "core/trace.h"

#include <string>
#include <vector>

namespace qx {

/// One line of the tree with its three columns. Depth is not bounded, so nodes are moved and never copied,
/// and are destroyed level by level.
struct TraceNode {
    std::string name;        ///< column "Function, Variable Name or Message Type"
    std::string value;       ///< column "Value"
    std::string description; ///< column "Description"
    TraceKind kind = TraceKind::info;
    bool expanded = false; ///< shown open at first, since an error stands somewhere inside
    std::vector<TraceNode> children;

    TraceNode() = default;
    TraceNode(TraceNode&&) noexcept = default;
    TraceNode& operator=(TraceNode&&) noexcept = default;
    ~TraceNode();
};

struct TraceTree {
    std::vector<TraceNode> roots;
    std::string summary;    ///< the status line, as "3 msecs 27 lines "
    bool in_a_file = false; ///< all of it is in the trace's text file as well
};

/// The tree of the trace's store. An empty store gives the one line "Nothing To Report". An item deeper than
/// the one before opens a node; an item that is less deep is the last child of the node that it closes.
TraceTree build_trace_tree(clsTrace2& trace);

} // namespace qx
