// A list of cells in order, for those who look up many values in it.
#pragma once

#include "hosts/sheet/value.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qx::sheet {

class Workbook;

class LookupIndex {
  public:
    /// Of a single row or column of calculated cells.
    LookupIndex(Workbook& book, const Area& list);

    /// Appends the places, from 0, of the numbers that equal one in a spreadsheet's sense; also of texts that read as
    /// it.
    void find(double x, bool texts_too, std::vector<std::uint32_t>& places) const;
    /// Appends the places of the texts that equal one, capitals and small letters alike.
    void find(std::string_view text, std::vector<std::uint32_t>& places) const;
    /// The same of the texts that begin with one; false if there are more than so many.
    bool find_beginning(std::string_view text, std::size_t most, std::vector<std::uint32_t>& places) const;
    /// How many numbers are below one, and how many are not above it.
    std::size_t below(double x) const;
    std::size_t up_to(double x) const;
    std::size_t numbers() const { return numbers_.size(); }
    /// How many places the list has.
    std::size_t size() const { return size_; }
    /// True if all filled cells are numbers that do not descend, or do not ascend.
    bool ascends() const { return ascends_; }
    bool descends() const { return descends_; }
    bool has_errors() const { return has_errors_; }
    /// The number of a rank, from 0, and its place; of equal ones the earlier place comes first.
    double number(std::size_t rank) const { return numbers_[rank].number; }
    std::uint32_t place(std::size_t rank) const { return numbers_[rank].place; }
    /// The ranks of the numbers that equal one to the last bit, from the first of them up to that behind the last.
    std::pair<std::size_t, std::size_t> ranks(double x) const;
    /// Appends the places of the numbers of some ranks.
    void find(std::size_t first_rank, std::size_t end_rank, std::vector<std::uint32_t>& places) const {
        for (std::size_t rank = first_rank; rank < end_rank; ++rank) places.push_back(numbers_[rank].place);
    }

  private:
    struct Number {
        double number;
        std::uint32_t place;
    };
    struct Text {
        std::string text; ///< in capitals
        std::uint32_t place;
    };
    static void find(const std::vector<Number>& numbers, double x, std::vector<std::uint32_t>& places);

    std::size_t size_;
    std::vector<Number> numbers_, numeric_texts_; ///< by value, then by place
    std::vector<Text> texts_;
    bool ascends_ = true, descends_ = true, has_errors_ = false;
};

} // namespace qx::sheet
