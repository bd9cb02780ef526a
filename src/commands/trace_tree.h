// The trace as a tree: what every viewer shows, built from the levels of the items.
//
//     const TraceTree tree = build_trace_tree(trace());
#pragma once

#include "core/trace.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

/// The number of the help topic on the trace.
inline constexpr int trace_help_topic = 10008;

/// One line of the tree. Its text is in the tree's texts.
struct TraceNode {
    std::size_t text = 0;
    std::uint32_t length = 0;
    std::uint32_t end = 0; ///< one past the last line below it
    int depth = 0;         ///< 0 at the top
    TraceKind kind = TraceKind::info;
    bool expanded = false; ///< shown open at first, since there is an error somewhere inside
    bool fold = false;     ///< not of the trace: it holds a long run of lines that are alike
};

/// The three columns of a line.
struct TraceColumns {
    std::string_view name;        ///< "Function, Variable Name or Message Type"
    std::string_view value;       ///< "Value"
    std::string_view description; ///< "Description"
};

/// The lines in the order in which they are read: what is below a node follows it. A million items fit in some
/// hundred megabytes, and no depth is too deep.
struct TraceTree {
    std::vector<TraceNode> nodes;
    std::string texts;
    std::string summary;    ///< the status line, as "3 msecs 27 lines "
    bool in_a_file = false; ///< all of it is in the trace's text file as well

    std::size_t size() const { return nodes.size(); }
    bool has_children(std::size_t node) const { return nodes[node].end > node + 1; }
    std::string_view text(std::size_t node) const {
        return std::string_view(texts).substr(nodes[node].text, nodes[node].length);
    }
    TraceColumns columns(std::size_t node) const;

    /// Adds a line at the end, of columns parted by tabs.
    TraceNode& add(std::string_view text, int depth, TraceKind kind, bool expanded = false);
    /// Sets the ends after lines have been added.
    void close();
};

/// The tree of the trace's store, its numbers with all digits. An empty store gives the one line "Nothing To Report".
/// An item deeper than the one before opens a node; an item that is less deep is the last child of the node that it
/// closes. A list that was read backwards runs forwards.
TraceTree build_trace_tree(clsTrace2& trace);

/// The same with long runs of blocks that are alike, as the trials of a search, put into a node of their own, but for
/// the first and the last two.
TraceTree folded(const TraceTree& tree);

} // namespace qx
