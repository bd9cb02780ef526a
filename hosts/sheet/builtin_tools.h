// What the built-in functions share: arguments as tables, the numbers in them, criteria.
#pragma once

#include "hosts/sheet/builtins.h"
#include "hosts/sheet/calculator.h"
#include "hosts/sheet/text.h"
#include "hosts/sheet/workbook.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace qx::sheet::builtin {

using A = const Arguments&;

inline Value na() { return Value::error(xlerrNA); }
inline Value num() { return Value::error(xlerrNum); }
inline Value bad_value() { return Value::error(xlerrValue); }
inline Value bad_reference() { return Value::error(xlerrRef); }
inline Value number(double x) { return number_or_error(x); }
inline Value truth(bool x) { return Value::boolean(x); }
inline Value words(std::string_view text) { return text.size() > longest_text ? bad_value() : Value::text(text); }

template <double (*f)(double)>
Value apply(A a) {
    return number(f(a.number(0)));
}

// --- Ranges and arrays as tables ------------------------------------------------------------------------------------

/// A reference, an array or a single value as rows and columns. Rows that the sheet never used are omitted.
class Table {
  public:
    Table(Calculator& calculator, const Value& value) : book_(calculator.book()), value_(value) {
        if (value.is(Type::area)) {
            const Area& area = value.area();
            const std::uint32_t used = book_.grid(area.sheet).rows();
            rows_ = area.rows();
            columns_ = area.columns();
            used_rows_ = used > area.first_row ? std::min(rows_, used - area.first_row) : 0;
        } else if (value.is(Type::array)) {
            rows_ = used_rows_ = value.rows();
            columns_ = value.columns();
        }
    }

    std::uint32_t rows() const { return rows_; }
    std::uint32_t columns() const { return columns_; }
    std::uint32_t used_rows() const { return used_rows_; }
    /// An index of the list, if it has one.
    const LookupIndex* index() const { return value_.is(Type::area) ? book_.index_of(value_.area()) : nullptr; }
    /// An index of the list or of a longer one that begins in the same cell.
    const LookupIndex* index_over() const { return value_.is(Type::area) ? book_.index_over(value_.area()) : nullptr; }
    /// Drops the places beyond the list, which an index of a longer one gives too.
    void drop_beyond(std::vector<std::uint32_t>& places) const {
        std::erase_if(places, [&](std::uint32_t place) { return place >= size(); });
    }
    bool is_same_range(const Table& other) const {
        return value_.is(Type::area) && other.value_.is(Type::area) && value_.area() == other.value_.area();
    }
    std::uint64_t size() const { return std::uint64_t{rows_} * columns_; }
    /// Items of a list that the sheet uses.
    std::uint64_t used() const { return columns_ == 1 ? used_rows_ : std::uint64_t{used_rows_} * columns_; }
    const Value& at(std::uint32_t row, std::uint32_t column) const {
        if (value_.is(Type::array)) return value_.cell(row, column);
        if (!value_.is(Type::area)) return value_;
        const Area& area = value_.area();
        return book_.read_cell(
            {area.first_row + row, static_cast<std::uint16_t>(area.first_column + column), area.sheet});
    }
    /// A cell that may be past the end: of a reference the one on the sheet, else a blank.
    const Value& beyond(std::uint32_t row, std::uint32_t column) const {
        static const Value blank;
        if (!value_.is(Type::area)) return row < rows_ && column < columns_ ? at(row, column) : blank;
        const Area& area = value_.area();
        return std::uint64_t{area.first_row} + row < max_rows && std::uint64_t{area.first_column} + column < max_columns
                   ? at(row, column)
                   : blank;
    }
    /// Items in reading order.
    const Value& at(std::uint64_t i) const {
        return at(static_cast<std::uint32_t>(i / columns_), static_cast<std::uint32_t>(i % columns_));
    }
    /// The part that begins at a cell, as a reference if it is one.
    Value part(std::uint32_t row, std::uint32_t column, std::uint32_t rows, std::uint32_t columns) const {
        if (value_.is(Type::area)) {
            const Area& area = value_.area();
            const std::uint32_t first_row = area.first_row + row;
            const auto first_column = static_cast<std::uint16_t>(area.first_column + column);
            return Value::reference({area.sheet, first_row, first_column, first_row + rows - 1,
                                     static_cast<std::uint16_t>(first_column + columns - 1)});
        }
        if (rows == 1 && columns == 1) return at(row, column);
        Value result = Value::array(rows, columns);
        for (std::uint32_t i = 0; i < rows; ++i)
            for (std::uint32_t j = 0; j < columns; ++j) result.cell(i, j) = at(row + i, column + j);
        return result;
    }

  private:
    Workbook& book_;
    const Value value_;
    std::uint32_t rows_ = 1, columns_ = 1, used_rows_ = 1;
};

/// Calls visit(value, inside) for each value of an argument: inside a range or an array, or alone. Blank cells of
/// the sheet may be omitted. The callback returns false to stop.
template <class Visit>
void each_value(const Arguments& a, int i, Visit visit) {
    const Value& value = a[i];
    if (value.is(Type::area)) {
        Workbook& book = a.calculator.book();
        book.grid(value.area().sheet).visit(value.area(), [&](std::uint32_t, std::uint32_t, Cell& cell) {
            return visit(book.read_cell(cell), true);
        });
    } else if (value.is(Type::array)) {
        for (std::uint32_t row = 0; row < value.rows(); ++row)
            for (std::uint32_t column = 0; column < value.columns(); ++column)
                if (!visit(value.cell(row, column), true)) return;
    } else {
        visit(value, false);
    }
}

/// Calls add(x) for the numbers of all arguments from one on: inside ranges numbers only, alone whatever reads as
/// a number. Gives the first error met, or a blank.
template <class Add>
Value each_number(const Arguments& a, Add add, int from = 0) {
    Value error;
    for (int i = from; i < a.count && !error.is_error(); ++i)
        each_value(a, i, [&](const Value& value, bool inside) {
            double x = 0.0;
            if (value.is_number())
                add(value.number());
            else if (value.is_error())
                error = value;
            else if (!inside && to_number(value, x, error))
                add(x);
            return !error.is_error();
        });
    return error;
}

/// A number worked out from all numbers of the arguments.
template <class Start, class Add, class Finish>
Value over_numbers(const Arguments& a, Start total, Add add, Finish finish) {
    const Value error = each_number(a, [&](double x) { add(total, x); });
    return error.is_error() ? error : finish(total);
}

inline Value all_numbers(const Arguments& a, std::vector<double>& numbers, int from = 0) {
    return each_number(
        a, [&](double x) { numbers.push_back(x); }, from);
}

// --- Criteria -------------------------------------------------------------------------------------------------------

/// What COUNTIF and its relatives look for: a value, or a comparison as text.
class Criterion {
  public:
    explicit Criterion(const Value& wanted) : wanted_(wanted) {
        if (!wanted.is_text()) {
            if (wanted.is_blank()) wanted_ = Value::number(0.0);
            return;
        }
        std::string_view text = wanted.text();
        for (const auto& [sign, code] : {std::pair{"<=", Code::at_most},
                                         {">=", Code::at_least},
                                         {"<>", Code::unequal},
                                         {"=", Code::equal},
                                         {"<", Code::less},
                                         {">", Code::greater}})
            if (text.starts_with(sign)) {
                code_ = code;
                text.remove_prefix(std::string_view(sign).size());
                break;
            }
        std::uint16_t error = 0;
        if (text.empty() && text.size() < wanted.text().size() && (code_ == Code::equal || code_ == Code::unequal))
            wanted_ = Value(); // an empty cell
        else if (const auto number = read_number(text))
            wanted_ = Value::number(number->value);
        else if (equal_ignoring_case(text, "TRUE") || equal_ignoring_case(text, "FALSE"))
            wanted_ = Value::boolean(equal_ignoring_case(text, "TRUE"));
        else if (!text.empty() && match_error(text, error) == text.size())
            wanted_ = Value::error(error);
        else
            wanted_ = Value::text(text);
    }

    bool meets(const Value& value) const {
        if (code_ == Code::equal) return equals(value, true);
        if (code_ == Code::unequal) return !equals(value, false);
        if (value.is_blank() || value.is_error() || value.type() != wanted_.type()) return false;
        const int order = compare(value, wanted_);
        switch (code_) {
        case Code::less:
            return order < 0;
        case Code::at_most:
            return order <= 0;
        case Code::greater:
            return order > 0;
        default:
            return order >= 0;
        }
    }

    /// Finds the places by an index among which all are that meet the criterion, in no order. False if that cannot
    /// tell, or not before it has looked at more than so many.
    bool find(const LookupIndex& index, std::size_t most, std::vector<std::uint32_t>& places) const {
        if (code_ != Code::equal) return false;
        if (wanted_.is_number()) {
            index.find(wanted_.number(), true, places);
            return true;
        }
        if (!wanted_.is_text()) return false;
        const std::string_view text = wanted_.text(), beginning = text.substr(0, text.find_first_of("*?~"));
        if (beginning.empty()) return false;
        if (beginning.size() < text.size()) return index.find_beginning(beginning, most, places);
        index.find(text, places);
        return true;
    }
    /// Narrows ranks of numbers to those that a comparison with a number allows. False for other criteria.
    bool narrow(const LookupIndex& index, std::size_t& first_rank, std::size_t& end_rank) const {
        if (!wanted_.is_number() || code_ == Code::equal || code_ == Code::unequal) return false;
        const double x = wanted_.number();
        if (code_ == Code::less || code_ == Code::at_most)
            end_rank = std::min(end_rank, code_ == Code::less ? index.below(x) : index.up_to(x));
        else
            first_rank = std::max(first_rank, code_ == Code::greater ? index.up_to(x) : index.below(x));
        return true;
    }
    /// Counts the cells of a list that meet the criterion by an index of it or of a longer one. False if that cannot
    /// tell.
    bool count(const LookupIndex& index, const Table& list, double& count) const {
        std::vector<std::uint32_t> places;
        std::size_t first = 0, end = index.numbers();
        if (narrow(index, first, end)) {
            if (index.size() > list.size()) {
                index.find(first, end, places);
                list.drop_beyond(places);
                end = first + places.size();
            }
            count = static_cast<double>(end - first);
            return true;
        }
        if (code_ == Code::unequal && wanted_.is_number()) { // a string that reads as it differs from it too
            index.find(wanted_.number(), false, places);
            list.drop_beyond(places);
            count = static_cast<double>(list.size() - places.size());
            return true;
        }
        if (!find(index, list.size(), places)) return false;
        list.drop_beyond(places);
        count = static_cast<double>(
            std::count_if(places.begin(), places.end(), [&](std::uint32_t place) { return meets(list.at(place)); }));
        return true;
    }

  private:
    /// A string that reads as a number equals that number, but does not fail to differ from it.
    bool equals(const Value& value, bool reading) const {
        if (wanted_.is_blank()) return value.is_blank();
        if (wanted_.is_text()) {
            if (value.is_blank()) return wanted_.text().empty();
            return value.is_text() && matches_wildcards(wanted_.text(), value.text());
        }
        if (wanted_.is_number() && value.is_text()) {
            if (!reading) return false;
            const auto number = read_number(value.text());
            return number && number->value == wanted_.number();
        }
        return value.type() == wanted_.type() &&
               (wanted_.is_error() ? value.error() == wanted_.error() : compare(value, wanted_) == 0);
    }

    Value wanted_;
    Code code_ = Code::equal;
};

/// Calls add(row, column) for the places where all pairs of range and criterion from an argument on agree.
template <class Add>
Value each_match(const Arguments& a, int from, Add add) {
    if ((a.count - from) % 2 != 0) return bad_value();
    std::vector<Table> tables;
    std::vector<Criterion> criteria;
    for (int i = from; i < a.count; i += 2) {
        tables.emplace_back(a.calculator, a[i]);
        criteria.emplace_back(a[i + 1]);
        if (tables.back().rows() != tables[0].rows() || tables.back().columns() != tables[0].columns())
            return bad_value();
    }
    const auto meets_all = [&](std::uint32_t row, std::uint32_t column) {
        for (std::size_t i = 0; i < tables.size(); ++i)
            if (!criteria[i].meets(tables[i].at(row, column))) return false;
        return true;
    };
    // The fewest places among which all matches are, as an index of one of the lists knows them. Comparisons with one
    // list, such as from a date and before another, go together.
    std::vector<std::uint32_t> places, others;
    bool narrowed = false;
    for (std::size_t i = 0; i < tables.size(); ++i) {
        const LookupIndex* const index = tables[i].index_over();
        if (index == nullptr) continue;
        others.clear();
        const std::size_t most = narrowed ? places.size() : tables[i].size() / 8; // else a walk is as fast
        if (criteria[i].find(*index, most, others)) {
            tables[i].drop_beyond(others);
            if (!narrowed || others.size() < places.size()) places.swap(others);
            narrowed = true;
            continue;
        }
        std::size_t first = 0, end = index->numbers();
        bool compared = false;
        for (std::size_t j = 0; j < tables.size(); ++j)
            if (tables[j].is_same_range(tables[i])) compared = criteria[j].narrow(*index, first, end) || compared;
        if (!compared || (first < end && end - first >= most)) continue;
        places.clear();
        index->find(first, end, places);
        tables[i].drop_beyond(places);
        narrowed = true;
    }
    if (narrowed) {
        std::sort(places.begin(), places.end());
        const bool across = tables[0].rows() == 1;
        for (const std::uint32_t place : places) {
            const std::uint32_t row = across ? 0 : place, column = across ? place : 0;
            if (meets_all(row, column) && !add(row, column)) break;
        }
        return {};
    }
    std::uint32_t rows = 0;
    for (const Table& table : tables) rows = std::max(rows, table.used_rows());
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::uint32_t column = 0; column < tables[0].columns(); ++column)
            if (meets_all(row, column) && !add(row, column)) return {};
    return {};
}

} // namespace qx::sheet::builtin
