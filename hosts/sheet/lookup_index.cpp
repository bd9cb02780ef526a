#include "hosts/sheet/lookup_index.h"

#include "hosts/sheet/calculator.h"
#include "hosts/sheet/text.h"
#include "hosts/sheet/workbook.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace qx::sheet {

LookupIndex::LookupIndex(Workbook& book, const Area& list) : size_(std::size_t{list.rows()} * list.columns()) {
    book.grid(list.sheet).visit(list, [&](std::uint32_t row, std::uint32_t column, Cell& cell) {
        const std::uint32_t place = row - list.first_row + column - list.first_column;
        const Value& value = cell.value;
        if (value.is_number()) {
            ascends_ = ascends_ && (numbers_.empty() || numbers_.back().number <= value.number());
            descends_ = descends_ && (numbers_.empty() || numbers_.back().number >= value.number());
            numbers_.push_back({value.number(), place});
        } else if (!value.is(Type::blank)) {
            ascends_ = descends_ = false;
            has_errors_ = has_errors_ || value.is_error();
        }
        if (!value.is_text()) return true;
        texts_.push_back({upper_case(value.text()), place});
        if (const auto number = read_number(value.text())) numeric_texts_.push_back({number->value, place});
        return true;
    });
    const auto earlier = [](const Number& a, const Number& b) {
        return std::tie(a.number, a.place) < std::tie(b.number, b.place);
    };
    std::sort(numbers_.begin(), numbers_.end(), earlier);
    std::sort(numeric_texts_.begin(), numeric_texts_.end(), earlier);
    std::sort(texts_.begin(), texts_.end(),
              [](const Text& a, const Text& b) { return std::tie(a.text, a.place) < std::tie(b.text, b.place); });
}

void LookupIndex::find(const std::vector<Number>& numbers, double x, std::vector<std::uint32_t>& places) {
    const double near = std::fabs(x) * 0x1p-48; // wider than what counts as equal
    auto at = std::lower_bound(numbers.begin(), numbers.end(), x - near,
                               [](const Number& a, double least) { return a.number < least; });
    for (; at != numbers.end() && at->number <= x + near; ++at)
        if (same_number(at->number, x)) places.push_back(at->place);
}

void LookupIndex::find(double x, bool texts_too, std::vector<std::uint32_t>& places) const {
    find(numbers_, x, places);
    if (!texts_too) return;
    for (const Number& text : numeric_texts_)
        if (text.number == x) places.push_back(text.place);
}

void LookupIndex::find(std::string_view text, std::vector<std::uint32_t>& places) const {
    const std::string capitals = upper_case(text);
    auto at = std::lower_bound(texts_.begin(), texts_.end(), capitals,
                               [](const Text& a, const std::string& wanted) { return a.text < wanted; });
    for (; at != texts_.end() && at->text == capitals; ++at) places.push_back(at->place);
}

bool LookupIndex::find_beginning(std::string_view text, std::size_t most, std::vector<std::uint32_t>& places) const {
    const std::string capitals = upper_case(text);
    const auto first = std::lower_bound(texts_.begin(), texts_.end(), capitals,
                                        [](const Text& a, const std::string& wanted) { return a.text < wanted; });
    const auto end =
        std::partition_point(first, texts_.end(), [&](const Text& a) { return a.text.starts_with(capitals); });
    if (static_cast<std::size_t>(end - first) > most) return false;
    for (auto at = first; at != end; ++at) places.push_back(at->place);
    return true;
}

std::pair<std::size_t, std::size_t> LookupIndex::ranks(double x) const {
    const auto [first, end] = std::equal_range(numbers_.begin(), numbers_.end(), Number{x, 0},
                                               [](const Number& a, const Number& b) { return a.number < b.number; });
    return {first - numbers_.begin(), end - numbers_.begin()};
}

std::size_t LookupIndex::below(double x) const {
    const auto end = std::partition_point(numbers_.begin(), numbers_.end(),
                                          [&](const Number& a) { return a.number < x && !same_number(a.number, x); });
    return static_cast<std::size_t>(end - numbers_.begin());
}

std::size_t LookupIndex::up_to(double x) const {
    const auto end = std::partition_point(numbers_.begin(), numbers_.end(),
                                          [&](const Number& a) { return a.number <= x || same_number(a.number, x); });
    return static_cast<std::size_t>(end - numbers_.begin());
}

} // namespace qx::sheet
