#include "commands/trace_comparison.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace qx {

namespace {

constexpr std::size_t largest_table = 4'000'000; ///< entries of the table that matches siblings

using Siblings = std::vector<std::size_t>;
using Pair = std::pair<std::size_t, std::size_t>;
constexpr std::size_t absent = ComparedNode::absent;

bool same_place(const TraceTree& a, std::size_t i, const TraceTree& b, std::size_t j) {
    if (a.nodes[i].kind != b.nodes[j].kind) return false;
    const TraceColumns x = a.columns(i), y = b.columns(j);
    return x.name == y.name && (a.nodes[i].kind != TraceKind::loop_pass || x.value == y.value);
}

Siblings siblings(const TraceTree& tree, std::size_t first, std::size_t end) {
    Siblings found;
    for (std::size_t i = first; i < end; i = tree.nodes[i].end) found.push_back(i);
    return found;
}

/// Pairs siblings by their longest common subsequence; of very many what is left in the middle is paired in order.
std::vector<Pair> paired(const TraceTree& a, const Siblings& x, const TraceTree& b, const Siblings& y) {
    std::size_t start = 0, x_end = x.size(), y_end = y.size();
    std::vector<Pair> pairs;
    while (start < x_end && start < y_end && same_place(a, x[start], b, y[start])) {
        pairs.emplace_back(x[start], y[start]);
        ++start;
    }
    std::vector<Pair> tail;
    while (x_end > start && y_end > start && same_place(a, x[x_end - 1], b, y[y_end - 1]))
        tail.emplace_back(x[--x_end], y[--y_end]);

    const std::size_t rows = x_end - start, columns = y_end - start;
    if (rows * columns <= largest_table) {
        std::vector<std::uint32_t> common((rows + 1) * (columns + 1));
        const auto at = [&](std::size_t r, std::size_t c) -> std::uint32_t& { return common[r * (columns + 1) + c]; };
        for (std::size_t r = rows; r-- > 0;)
            for (std::size_t c = columns; c-- > 0;)
                at(r, c) = same_place(a, x[start + r], b, y[start + c]) ? at(r + 1, c + 1) + 1
                                                                        : std::max(at(r + 1, c), at(r, c + 1));
        std::size_t r = 0, c = 0;
        while (r < rows || c < columns) {
            if (r < rows && c < columns && same_place(a, x[start + r], b, y[start + c]))
                pairs.emplace_back(x[start + r++], y[start + c++]);
            else if (c == columns || (r < rows && at(r + 1, c) >= at(r, c + 1)))
                pairs.emplace_back(x[start + r++], absent);
            else
                pairs.emplace_back(absent, y[start + c++]);
        }
    } else {
        for (std::size_t i = start; i < std::max(x_end, y_end); ++i) {
            if (i < x_end && i < y_end && same_place(a, x[i], b, y[i])) {
                pairs.emplace_back(x[i], y[i]);
                continue;
            }
            if (i < x_end) pairs.emplace_back(x[i], absent);
            if (i < y_end) pairs.emplace_back(absent, y[i]);
        }
    }
    pairs.insert(pairs.end(), tail.rbegin(), tail.rend());
    return pairs;
}

Difference difference(const TraceTree& a, const TraceTree& b, Pair pair) {
    if (pair.second == absent) return Difference::only_before;
    if (pair.first == absent) return Difference::only_after;
    if (a.nodes[pair.first].kind == TraceKind::elapsed) return Difference::none;
    return a.text(pair.first) == b.text(pair.second) ? Difference::none : Difference::changed;
}

/// Whether a line that differs below is open at first: the calls and their inputs are, the trials of a search are not.
bool is_worth_opening(const TraceTree& tree, std::size_t node, int depth) {
    const TraceKind kind = tree.nodes[node].kind;
    return depth < 4 && kind != TraceKind::internal_call && kind != TraceKind::loop_pass;
}

} // namespace

std::vector<ComparedNode> compare(const TraceTree& before, const TraceTree& after) {
    struct Level {
        std::vector<Pair> pairs;
        std::size_t next = 0;
    };
    std::vector<ComparedNode> lines;
    std::vector<std::size_t> path; // lines above the one at work
    std::vector<Level> levels;
    levels.push_back({paired(before, siblings(before, 0, before.size()), after, siblings(after, 0, after.size()))});
    while (!levels.empty()) {
        Level& level = levels.back();
        path.resize(levels.size() - 1);
        if (level.next == level.pairs.size()) {
            levels.pop_back();
            continue;
        }
        const Pair pair = level.pairs[level.next++];
        ComparedNode line;
        line.before = pair.first;
        line.after = pair.second;
        line.depth = static_cast<int>(path.size());
        line.difference = difference(before, after, pair);
        if (line.difference != Difference::none)
            for (auto above = path.rbegin(); above != path.rend() && !lines[*above].differs_below; ++above)
                lines[*above].differs_below = true;
        path.push_back(lines.size());
        lines.push_back(line);
        const auto below = [](const TraceTree& tree, std::size_t node) {
            return node == absent ? Siblings{} : siblings(tree, node + 1, tree.nodes[node].end);
        };
        levels.push_back({paired(before, below(before, pair.first), after, below(after, pair.second))});
    }
    for (ComparedNode& line : lines)
        line.expanded = line.differs_below && (line.before != absent ? is_worth_opening(before, line.before, line.depth)
                                                                     : is_worth_opening(after, line.after, line.depth));
    return lines;
}

} // namespace qx
