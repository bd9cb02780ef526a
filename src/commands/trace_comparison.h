// Two traces side by side, as before and after a change: which lines belong together, and where they differ.
#pragma once

#include "commands/trace_tree.h"

#include <cstddef>
#include <vector>

namespace qx {

enum class Difference { none, changed, only_before, only_after };

/// A line of the comparison, in the order in which it is read.
struct ComparedNode {
    static constexpr std::size_t absent = static_cast<std::size_t>(-1);

    std::size_t before = absent; ///< node of the tree before
    std::size_t after = absent;
    int depth = 0;
    Difference difference = Difference::none;
    bool differs_below = false;
    bool expanded = false; ///< shown open at first
};

/// Lines belong together if they are in the same place under the same name; siblings are matched in order, so that as
/// many as possible find a partner. Times taken do not count as a difference.
std::vector<ComparedNode> compare(const TraceTree& before, const TraceTree& after);

} // namespace qx
