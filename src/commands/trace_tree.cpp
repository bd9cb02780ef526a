#include "commands/trace_tree.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace qx {

TraceNode::~TraceNode() {
    std::vector<TraceNode> doomed = std::move(children);
    while (!doomed.empty()) {
        std::vector<TraceNode> below = std::move(doomed.back().children);
        doomed.pop_back();
        std::move(below.begin(), below.end(), std::back_inserter(doomed));
    }
}

namespace {

TraceNode make_node(std::string_view text, TraceKind kind) {
    TraceNode node;
    node.kind = kind;
    const auto column = [&text] {
        const std::string_view head = text.substr(0, text.find('\t'));
        text.remove_prefix(std::min(text.size(), head.size() + 1));
        return std::string(head);
    };
    node.name = column();
    node.value = column();
    node.description = text;
    return node;
}

/// Puts items into a tree one after the other, under a cursor that follows their levels.
class TreeBuilder {
  public:
    void add(std::string_view text, int level, TraceKind kind) {
        if (text.empty() && level == previous_) return;
        if (path_.empty()) {
            roots.push_back(make_node(text, kind));
            path_.push_back(&roots.back());
            level = 1;
        } else if (level <= previous_) {
            path_.back()->children.push_back(make_node(text, kind));
            if (kind == TraceKind::error) open_path();
            path_.resize(path_.size() - std::min<std::size_t>(path_.size(), previous_ - level));
        } else {
            for (; previous_ < level; ++previous_) {
                std::vector<TraceNode>& siblings = path_.back()->children;
                siblings.push_back(make_node(text, kind));
                path_.push_back(&siblings.back());
            }
        }
        if (kind == TraceKind::error) open_path();
        previous_ = level;
    }

    std::vector<TraceNode> roots;

  private:
    /// Opens the cursor's node and all above it.
    void open_path() {
        for (auto node = path_.rbegin(); node != path_.rend() && !(*node)->expanded; ++node) (*node)->expanded = true;
    }

    std::vector<TraceNode*> path_; ///< from a root to the cursor; growth of a node's children moves none of these
    int previous_ = 0;
};

} // namespace

TraceTree build_trace_tree(clsTrace2& trace) {
    trace.prepare_viewing();
    TreeBuilder builder;
    const int last = std::min(trace.count(), clsTrace2::maxitems);
    for (int item = 1; item <= last; ++item) builder.add(trace.text(item), trace.level(item), trace.kind(item));
    return {std::move(builder.roots), trace.summary(), trace.file_complete()};
}

} // namespace qx
