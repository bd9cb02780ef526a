#include "commands/trace_tree.h"

#include <algorithm>
#include <charconv>

namespace qx {

TraceColumns TraceTree::columns(std::size_t node) const {
    std::string_view rest = text(node);
    const auto column = [&rest] {
        const std::string_view head = rest.substr(0, rest.find('\t'));
        rest.remove_prefix(std::min(rest.size(), head.size() + 1));
        return head;
    };
    TraceColumns found;
    found.name = column();
    found.value = column();
    found.description = rest;
    return found;
}

TraceNode& TraceTree::add(std::string_view text, int depth, TraceKind kind, bool expanded) {
    TraceNode& node = nodes.emplace_back();
    node.text = texts.size();
    node.length = static_cast<std::uint32_t>(text.size());
    node.depth = depth;
    node.kind = kind;
    node.expanded = expanded;
    texts += text;
    return node;
}

void TraceTree::close() {
    std::vector<std::uint32_t> path;
    for (std::uint32_t i = 0; i <= nodes.size(); ++i) {
        const std::size_t depth = i < nodes.size() ? static_cast<std::size_t>(nodes[i].depth) : 0;
        for (; path.size() > depth; path.pop_back()) nodes[path.back()].end = i;
        path.push_back(i);
    }
}

namespace {

/// Puts items into a tree one after the other, under a cursor that follows their levels.
class TreeBuilder {
  public:
    explicit TreeBuilder(TraceTree& tree) : tree_(tree) {}

    void add(std::string_view text, int level, TraceKind kind) {
        if (text.empty() && level == previous_) return;
        if (path_.empty()) {
            open(text, kind);
            level = 1;
        } else if (level <= previous_) {
            tree_.add(text, static_cast<int>(path_.size()), kind);
            if (kind == TraceKind::error) expand_path();
            path_.resize(path_.size() - std::min<std::size_t>(path_.size(), previous_ - level));
        } else {
            for (; previous_ < level; ++previous_) open(text, kind);
        }
        if (kind == TraceKind::error) expand_path();
        previous_ = level;
    }

  private:
    void open(std::string_view text, TraceKind kind) {
        tree_.add(text, static_cast<int>(path_.size()), kind);
        path_.push_back(tree_.size() - 1);
    }
    /// Expands the cursor's node and all above it.
    void expand_path() {
        for (auto at = path_.rbegin(); at != path_.rend() && !tree_.nodes[*at].expanded; ++at)
            tree_.nodes[*at].expanded = true;
    }

    TraceTree& tree_;
    std::vector<std::size_t> path_; ///< from a root to the cursor
    int previous_ = 0;
};

/// The name and number of a list's item, as Dates and 12 of "Dates(12)"; number -1 if it is none.
struct ListItem {
    std::string_view list;
    int number = -1;
};

ListItem list_item(const TraceTree& tree, std::size_t node) {
    const std::string_view name = tree.columns(node).name;
    const std::size_t bracket = name.rfind('(');
    if (tree.nodes[node].kind != TraceKind::argument || tree.has_children(node) || bracket == name.npos) return {};
    ListItem item{name.substr(0, bracket)};
    const char* const last = name.data() + name.size() - 1;
    const auto [end, error] = std::from_chars(name.data() + bracket + 1, last, item.number);
    return error == std::errc() && end == last && *last == ')' ? item : ListItem{};
}

/// Inputs are read from a list's end; a person reads them from its start.
void turn_lists_forwards(TraceTree& tree) {
    for (std::size_t first = 0; first < tree.size();) {
        const ListItem head = list_item(tree, first);
        std::size_t next = first + 1;
        if (head.number > 1)
            for (; next < tree.size() && tree.nodes[next].depth == tree.nodes[first].depth; ++next) {
                const ListItem item = list_item(tree, next);
                if (item.list != head.list || item.number != head.number - static_cast<int>(next - first)) break;
            }
        std::reverse(tree.nodes.begin() + static_cast<std::ptrdiff_t>(first),
                     tree.nodes.begin() + static_cast<std::ptrdiff_t>(next));
        if (next > first + 1) // leaves: the place of each is its end
            for (std::size_t i = first; i < next; ++i) tree.nodes[i].end = static_cast<std::uint32_t>(i + 1);
        first = next;
    }
}

constexpr std::size_t long_run = 12; ///< blocks in a row that are folded
constexpr std::size_t kept = 2;      ///< of them at either end

} // namespace

TraceTree build_trace_tree(clsTrace2& trace) {
    trace.prepare_viewing();
    TraceTree tree;
    const int last = std::min(trace.count(), clsTrace2::maxitems);
    tree.nodes.reserve(static_cast<std::size_t>(last));
    std::size_t length = 0;
    for (int item = 1; item <= last; ++item) length += trace.full_text(item).size();
    tree.texts.reserve(length);
    TreeBuilder builder(tree);
    for (int item = 1; item <= last; ++item) builder.add(trace.full_text(item), trace.level(item), trace.kind(item));
    tree.close();
    turn_lists_forwards(tree);
    tree.summary = trace.summary();
    tree.in_a_file = trace.file_complete();
    return tree;
}

TraceTree folded(const TraceTree& tree) {
    const auto alike = [&tree](std::size_t a, std::size_t b) {
        return tree.nodes[a].kind == tree.nodes[b].kind && tree.columns(a).name == tree.columns(b).name &&
               tree.has_children(b);
    };
    struct Fold {
        std::size_t start, end;
        std::string text;
    };
    std::vector<Fold> folds;
    std::vector<bool> seen(tree.size());
    std::vector<std::size_t> run;
    for (std::size_t i = 0; i < tree.size(); ++i) {
        if (seen[i] || !tree.has_children(i)) continue;
        run.clear();
        for (std::size_t j = i; j < tree.size() && tree.nodes[j].depth == tree.nodes[i].depth && alike(i, j);
             j = tree.nodes[j].end) {
            run.push_back(j);
            seen[j] = true;
        }
        if (run.size() < long_run) continue;
        folds.push_back({run[kept], run[run.size() - kept],
                         std::string(tree.columns(i).name) + '\t' + std::to_string(run.size() - 2 * kept) +
                             " more\tNumbers " + std::to_string(kept + 1) + " to " + std::to_string(run.size() - kept) +
                             " of " + std::to_string(run.size()) + " that are alike"});
    }

    std::sort(folds.begin(), folds.end(), [](const Fold& a, const Fold& b) { return a.start < b.start; });

    TraceTree result;
    result.summary = tree.summary;
    result.in_a_file = tree.in_a_file;
    result.texts.reserve(tree.texts.size());
    std::vector<std::size_t> open; // ends of the folds that we are in
    std::size_t next = 0;
    for (std::size_t i = 0; i < tree.size(); ++i) {
        while (!open.empty() && open.back() <= i) open.pop_back();
        const TraceNode& node = tree.nodes[i];
        if (next < folds.size() && folds[next].start == i) {
            bool expanded = false;
            for (std::size_t j = i; j < folds[next].end; j = tree.nodes[j].end)
                expanded = expanded || tree.nodes[j].expanded;
            result.add(folds[next].text, node.depth + static_cast<int>(open.size()), node.kind, expanded).fold = true;
            open.push_back(folds[next++].end);
        }
        result.add(tree.text(i), node.depth + static_cast<int>(open.size()), node.kind, node.expanded);
    }
    result.close();
    return result;
}

} // namespace qx
