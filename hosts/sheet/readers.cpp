#include "hosts/sheet/readers.h"

namespace qx::sheet {

void IntervalTree::add(const Interval& interval) {
    recent_.push_back(interval);
    if (recent_.size() >= most_recent) settle();
}

void IntervalTree::settle() {
    if (recent_.empty()) return;
    const auto earlier = [](const Interval& a, const Interval& b) { return a.first_row < b.first_row; };
    std::vector<Interval> items = std::move(recent_);
    recent_.clear();
    items.shrink_to_fit();
    if (!std::is_sorted(items.begin(), items.end(), earlier)) std::stable_sort(items.begin(), items.end(), earlier);
    for (; !lists_.empty() && lists_.back().items.size() < 2 * items.size(); lists_.pop_back()) {
        std::vector<Interval> merged(items.size() + lists_.back().items.size());
        std::merge(items.begin(), items.end(), lists_.back().items.begin(), lists_.back().items.end(), merged.begin(),
                   earlier);
        items = std::move(merged);
    }
    List& list = lists_.emplace_back();
    list.items = std::move(items);
    list.reach.resize(list.items.size());
    list.visited.resize(list.items.size());
    find_reach(list, 0, list.items.size());
}

std::uint32_t IntervalTree::find_reach(List& list, std::size_t begin, std::size_t end) {
    if (begin == end) return 0;
    const std::size_t middle = begin + (end - begin) / 2;
    return list.reach[middle] = std::max(
               {list.items[middle].last_row, find_reach(list, begin, middle), find_reach(list, middle + 1, end)});
}

} // namespace qx::sheet
