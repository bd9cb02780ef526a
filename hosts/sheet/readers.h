// Which formulas read a cell: an index of intervals of rows, column by column.
//
// The intervals are in a few sorted lists, each twice as long as the next, so that adding one costs little. A list is
// searched as a balanced tree that knows how far down the intervals of each of its branches reach.
#pragma once

#include "hosts/sheet/value.h"

#include <algorithm>
#include <vector>

namespace qx::sheet {

struct Node;

/// Intervals of rows with their readers.
class IntervalTree {
  public:
    struct Interval {
        std::uint32_t first_row, last_row;
        Node* reader;
        std::uint16_t first_column, last_column;
    };

    void add(const Interval& interval);
    /// Adds one of many; settle() is due after the last.
    void add_later(const Interval& interval) { recent_.push_back(interval); }
    void settle();

    /// Calls visit(reader) for the intervals that have a cell in common with an area. Branches all of whose intervals
    /// were visited in the same round are passed over.
    template <class Visit>
    void visit(const Area& area, std::uint32_t round, Visit visit) {
        for (const Interval& interval : recent_)
            if (meets(interval, area)) visit(interval.reader);
        for (List& list : lists_) visit_part(list, 0, list.items.size(), area, round, visit);
    }

  private:
    struct List {
        std::vector<Interval> items;        ///< by their first row
        std::vector<std::uint32_t> reach;   ///< of each item as the root of a branch: the last row in that
        std::vector<std::uint32_t> visited; ///< the round in which all of the branch was visited
    };
    static constexpr std::size_t most_recent = 32;

    static bool meets(const Interval& interval, const Area& area) {
        return interval.first_row <= area.last_row && interval.last_row >= area.first_row &&
               interval.first_column <= area.last_column && interval.last_column >= area.first_column;
    }
    static std::uint32_t find_reach(List& list, std::size_t begin, std::size_t end);

    /// Visits the items from one to another; true if all of them were visited, now or before in this round.
    template <class Visit>
    bool visit_part(List& list, std::size_t begin, std::size_t end, const Area& area, std::uint32_t round,
                    Visit& visit) {
        if (begin == end) return true;
        const std::size_t middle = begin + (end - begin) / 2;
        if (list.visited[middle] == round) return true;
        if (list.reach[middle] < area.first_row) return false;
        bool all = visit_part(list, begin, middle, area, round, visit);
        const Interval& interval = list.items[middle];
        if (interval.first_row > area.last_row) return false;
        if (meets(interval, area))
            visit(interval.reader);
        else
            all = false;
        all = visit_part(list, middle + 1, end, area, round, visit) && all;
        if (all) list.visited[middle] = round;
        return all;
    }

    std::vector<Interval> recent_;
    std::vector<List> lists_; ///< from the longest on
};

/// The readers of the cells of one sheet.
class Readers {
  public:
    void add(const Area& area, Node& reader) {
        each_tree(area, [&](IntervalTree& tree) { tree.add(interval_of(area, reader)); });
    }
    void add_later(const Area& area, Node& reader) {
        each_tree(area, [&](IntervalTree& tree) { tree.add_later(interval_of(area, reader)); });
    }
    void settle() {
        for (IntervalTree& column : columns_) column.settle();
        wide_.settle();
    }
    void clear() {
        columns_.clear();
        wide_ = {};
    }

    template <class Visit>
    void visit(const Area& area, std::uint32_t round, Visit visit) {
        const std::size_t end = std::min<std::size_t>(area.last_column + std::size_t{1}, columns_.size());
        for (std::size_t column = area.first_column; column < end; ++column) columns_[column].visit(area, round, visit);
        wide_.visit(area, round, visit);
    }

  private:
    static constexpr std::uint32_t widest = 16; ///< columns of a range that is in the list of each of them

    static IntervalTree::Interval interval_of(const Area& area, Node& reader) {
        return {area.first_row, area.last_row, &reader, area.first_column, area.last_column};
    }
    template <class Visit>
    void each_tree(const Area& area, Visit visit) {
        if (area.columns() > widest) return visit(wide_);
        if (area.last_column >= columns_.size()) columns_.resize(area.last_column + std::size_t{1});
        for (std::uint32_t column = area.first_column; column <= area.last_column; ++column) visit(columns_[column]);
    }

    std::vector<IntervalTree> columns_;
    IntervalTree wide_; ///< ranges over many columns
};

} // namespace qx::sheet
