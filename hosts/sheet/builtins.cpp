#include "hosts/sheet/builtins.h"

#include "hosts/sheet/calculator.h"
#include "hosts/sheet/calendar.h"
#include "hosts/sheet/text.h"
#include "hosts/sheet/workbook.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <numeric>
#include <random>
#include <string>
#include <unordered_map>

namespace qx::sheet {

Builtin::Builtin(const char* name, const char* kinds, Value (*body)(const Arguments&), bool is_volatile)
    : name(name), body(body), is_volatile(is_volatile) {
    bool optional = false;
    int group = 0;
    for (const char* letter = kinds; *letter != '\0'; ++letter) {
        if (*letter == '|') {
            optional = true;
        } else if (*letter == '/') {
            group = letters_;
        } else if (*letter == '*') {
            repeated_ = group > 0 || kinds[0] == '/' ? letters_ - group : 1;
        } else {
            kinds_[letters_++] = *letter;
            if (!optional) ++least;
        }
    }
    most = repeated_ > 0 ? 255 : letters_;
}

namespace {

Value na() { return Value::error(xlerrNA); }
Value num() { return Value::error(xlerrNum); }
Value bad_value() { return Value::error(xlerrValue); }
Value bad_reference() { return Value::error(xlerrRef); }
Value number(double x) { return number_or_error(x); }
Value truth(bool x) { return Value::boolean(x); }
Value words(std::string_view text) { return text.size() > longest_text ? bad_value() : Value::text(text); }

// --- Ranges and arrays as tables ------------------------------------------------------------------------------------

/// A reference, an array or a single value as rows and columns. Rows that the sheet never used are left out.
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
/// the sheet may be left out. The callback returns false to stop.
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

Value all_numbers(const Arguments& a, std::vector<double>& numbers, int from = 0) {
    return each_number(
        a, [&](double x) { numbers.push_back(x); }, from);
}

/// The number that is beyond all others; a date if that number is one.
Value extreme(const Arguments& a, bool (*beyond)(double, double)) {
    Value best = Value::number(0.0), error;
    bool any = false;
    for (int i = 0; i < a.count && !error.is_error(); ++i)
        each_value(a, i, [&](const Value& value, bool inside) {
            double x = 0.0;
            if (value.is_error()) error = value;
            const bool counts = value.is_number() || (!inside && to_number(value, x, error));
            if (!counts || error.is_error()) return !error.is_error();
            const Value number = value.is_number() ? value : Value::number(x);
            if (!any || beyond(number.number(), best.number())) best = number;
            any = true;
            return true;
        });
    return error.is_error() ? error : best;
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
        if (const auto number = read_number(text))
            wanted_ = Value::number(number->value);
        else if (equal_ignoring_case(text, "TRUE") || equal_ignoring_case(text, "FALSE"))
            wanted_ = Value::boolean(equal_ignoring_case(text, "TRUE"));
        else if (!text.empty() && match_error(text, error) == text.size())
            wanted_ = Value::error(error);
        else
            wanted_ = Value::text(text);
    }

    bool meets(const Value& value) const {
        if (code_ == Code::equal) return equals(value);
        if (code_ == Code::unequal) return !equals(value);
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

  private:
    bool equals(const Value& value) const {
        if (wanted_.is_text()) {
            if (value.is_blank()) return wanted_.text().empty();
            return value.is_text() && matches_wildcards(wanted_.text(), value.text());
        }
        if (wanted_.is_number() && value.is_text()) {
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
    std::uint32_t rows = 0;
    for (const Table& table : tables) rows = std::max(rows, table.used_rows());
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::uint32_t column = 0; column < tables[0].columns(); ++column) {
            bool all = true;
            for (std::size_t i = 0; all && i < tables.size(); ++i) all = criteria[i].meets(tables[i].at(row, column));
            if (all && !add(row, column)) return {};
        }
    return {};
}

struct Total {
    double sum = 0.0;
    std::uint64_t count = 0;
};

/// The sum over `values` where the criteria from an argument on are met.
Value total_where(const Arguments& a, const Value& values, int from, Total& total) {
    const Table table(a.calculator, values);
    Value error;
    const Value failure = each_match(a, from, [&](std::uint32_t row, std::uint32_t column) {
        const Value& value = [&]() -> const Value& {
            static const Value outside;
            // The range to add may be given by its first cell only.
            if (values.is(Type::area)) {
                const Area& area = values.area();
                const std::uint64_t r = std::uint64_t{area.first_row} + row,
                                    c = std::uint64_t{area.first_column} + column;
                if (r >= max_rows || c >= max_columns) return outside;
                return a.calculator.book().read_cell(
                    {static_cast<std::uint32_t>(r), static_cast<std::uint16_t>(c), area.sheet});
            }
            return row < table.rows() && column < table.columns() ? table.at(row, column) : outside;
        }();
        if (value.is_error()) {
            error = value;
            return false;
        }
        if (value.is_number()) {
            total.sum += value.number();
            ++total.count;
        }
        return true;
    });
    return failure.is_error() ? failure : error;
}

Value sum_where(const Arguments& a, const Value& values, int from) {
    Total total;
    Value error = total_where(a, values, from, total);
    return error.is_error() ? std::move(error) : number(total.sum);
}

Value average_where(const Arguments& a, const Value& values, int from) {
    Total total;
    Value error = total_where(a, values, from, total);
    if (error.is_error()) return error;
    return total.count == 0 ? Value::error(xlerrDiv0) : number(total.sum / static_cast<double>(total.count));
}

// --- Lookups --------------------------------------------------------------------------------------------------------

bool same_kind(const Value& a, const Value& b) { return a.type() == b.type(); }

/// Position, from 0, of a value in a list of `count` items: type 0 the first equal one, 1 the last not above it in
/// an ascending list, -1 the last not below it in a descending one. Gives false if there is none.
template <class Item>
bool find_item(const Value& wanted, std::uint64_t count, int type, Item item, std::uint64_t& position) {
    bool found = false;
    for (std::uint64_t i = 0; i < count; ++i) {
        const Value& value = item(i);
        if (!same_kind(value, wanted)) continue;
        if (type == 0) {
            if (wanted.is_text() ? !matches_wildcards(wanted.text(), value.text()) : compare(value, wanted) != 0)
                continue;
            position = i;
            return true;
        }
        const int order = compare(value, wanted) * type;
        if (order > 0) break;
        position = i;
        found = true;
    }
    return found;
}

Value lookup(const Arguments& a, bool vertical) {
    const Table table(a.calculator, a[1]);
    const double index = std::trunc(a.number(2));
    if (index < 1.0) return bad_value();
    if (index > (vertical ? table.columns() : table.rows())) return bad_reference();
    const Value wanted = a[0].is_blank() ? Value::number(0.0) : a[0];
    const int type = a.count < 4 || a.truth(3) ? 1 : 0;
    std::uint64_t position = 0;
    const auto item = [&](std::uint64_t i) -> const Value& {
        const auto place = static_cast<std::uint32_t>(i);
        return vertical ? table.at(place, 0) : table.at(0, place);
    };
    if (!find_item(wanted, vertical ? table.used_rows() : table.columns(), type, item, position)) return na();
    const auto place = static_cast<std::uint32_t>(position), other = static_cast<std::uint32_t>(index) - 1;
    return vertical ? table.at(place, other) : table.at(other, place);
}

Value match(const Arguments& a) {
    const Table table(a.calculator, a[1]);
    if (table.rows() > 1 && table.columns() > 1) return na();
    const double given = a.number(2, 1.0);
    const int type = given > 0.0 ? 1 : given < 0.0 ? -1 : 0;
    const Value wanted = a[0].is_blank() ? Value::number(0.0) : a[0];
    std::uint64_t position = 0;
    if (!find_item(
            wanted, table.used(), type, [&](std::uint64_t i) -> const Value& { return table.at(i); }, position))
        return na();
    return number(static_cast<double>(position + 1));
}

Value index(const Arguments& a) {
    const Table table(a.calculator, a[0]);
    if (a[0].is_error()) return a[0];
    double row = std::trunc(a.number(1, 0.0)), column = std::trunc(a.number(2, 0.0));
    if (a.count < 3 && table.rows() == 1 && table.columns() > 1) std::swap(row, column);
    if (row < 0.0 || column < 0.0) return bad_value();
    if (row > table.rows() || column > table.columns()) return bad_reference();
    const auto first_row = static_cast<std::uint32_t>(row > 0.0 ? row - 1.0 : 0.0);
    const auto first_column = static_cast<std::uint32_t>(column > 0.0 ? column - 1.0 : 0.0);
    return table.part(first_row, first_column, row > 0.0 ? 1 : table.rows(), column > 0.0 ? 1 : table.columns());
}

Value choose(const Arguments& a) {
    const double which = std::trunc(a.number(0));
    if (!(which >= 1.0 && which < a.count)) return bad_value();
    const Value& chosen = a[static_cast<int>(which)];
    return chosen.is(Type::missing) ? number(0.0) : chosen;
}

/// Row or column numbers of a reference, or of the caller.
Value places(const Arguments& a, bool of_rows) {
    if (a.has(0) && !a[0].is(Type::area)) return a[0].is_error() ? a[0] : bad_value();
    const Area area = a.has(0) ? a[0].area() : a.calculator.caller();
    const std::uint32_t first = of_rows ? area.first_row : area.first_column;
    const std::uint32_t count = of_rows ? area.rows() : area.columns();
    if (count == 1) return number(first + 1.0);
    Value list = of_rows ? Value::array(count, 1) : Value::array(1, count);
    for (std::uint32_t i = 0; i < count; ++i) (of_rows ? list.cell(i, 0) : list.cell(0, i)) = number(first + i + 1.0);
    return list;
}

Value transpose(const Arguments& a) {
    Value value = a.calculator.looked_up(a[0]);
    if (!value.is(Type::array)) return value;
    if (value.rows() > max_columns) return bad_value();
    Value turned = Value::array(value.columns(), value.rows());
    for (std::uint32_t row = 0; row < value.rows(); ++row)
        for (std::uint32_t column = 0; column < value.columns(); ++column)
            turned.cell(column, row) = value.cell(row, column);
    return turned;
}

Value offset(const Arguments& a) {
    if (!a[0].is(Type::area)) return a[0].is_error() ? a[0] : bad_value();
    const Area& area = a[0].area();
    double row = area.first_row + std::trunc(a.number(1)), column = area.first_column + std::trunc(a.number(2));
    double rows = std::trunc(a.number(3, area.rows())), columns = std::trunc(a.number(4, area.columns()));
    if (rows < 0.0) row += (rows = -rows, 1.0 - rows);
    if (columns < 0.0) column += (columns = -columns, 1.0 - columns);
    if (!(rows >= 1.0 && columns >= 1.0 && row >= 0.0 && column >= 0.0 && row + rows <= max_rows &&
          column + columns <= max_columns))
        return bad_reference();
    return Value::reference({area.sheet, static_cast<std::uint32_t>(row), static_cast<std::uint16_t>(column),
                             static_cast<std::uint32_t>(row + rows - 1.0),
                             static_cast<std::uint16_t>(column + columns - 1.0)});
}

Value indirect(const Arguments& a) {
    Area area;
    std::string_view text = a.text(0);
    std::uint16_t sheet = a.calculator.caller().sheet;
    if (const std::size_t mark = text.rfind('!'); mark != std::string_view::npos) {
        std::string_view name = text.substr(0, mark);
        if (name.size() > 1 && name.front() == '\'' && name.back() == '\'') name = name.substr(1, name.size() - 2);
        const int found = a.calculator.book().sheet_number(name);
        if (found < 0) return bad_reference();
        sheet = static_cast<std::uint16_t>(found);
        text.remove_prefix(mark + 1);
    }
    return read_area(text, sheet, area) ? Value::reference(area) : bad_reference();
}

// --- Logic ----------------------------------------------------------------------------------------------------------

/// The truth values of all arguments joined; texts and blanks inside ranges do not count.
Value joined(const Arguments& a, bool (*join)(bool, bool), bool start) {
    bool result = start, any = false;
    Value error;
    for (int i = 0; i < a.count && !error.is_error(); ++i)
        each_value(a, i, [&](const Value& value, bool inside) {
            if (value.is_error()) {
                error = value;
                return false;
            }
            if (inside && (value.is_text() || value.is_blank())) return true;
            bool one = false;
            if (!to_truth(value, one, error)) return false;
            result = join(result, one);
            any = true;
            return true;
        });
    if (error.is_error()) return error;
    return any ? truth(result) : bad_value();
}

// --- Dates ----------------------------------------------------------------------------------------------------------

Value serial_value(double serial) { return serial >= 0.0 && serial <= last_serial ? Value::date(serial) : num(); }

bool civil(double serial, CivilDate& date) {
    if (!(serial >= 0.0 && serial < last_serial + 1.0)) return false;
    date = civil_of(static_cast<int>(serial));
    return true;
}

Value date_part(const Arguments& a, int CivilDate::*part) {
    CivilDate date{};
    return civil(a.number(0), date) ? number(date.*part) : num();
}

Value date_of(const Arguments& a) {
    const double year = std::trunc(a.number(0)), month = std::trunc(a.number(1)), day = std::trunc(a.number(2));
    if (!(std::fabs(year) < 1e6 && std::fabs(month) < 1e6 && std::fabs(day) < 1e8)) return num();
    const auto full_year = static_cast<long long>(year) + (year >= 0.0 && year < 1900.0 ? 1900 : 0);
    return serial_value(serial_of(full_year, static_cast<long long>(month), static_cast<long long>(day)));
}

/// The date so many months later, on the same day or on the last of that month.
Value months_later(const Arguments& a, bool to_end) {
    CivilDate date{};
    const double months = std::trunc(a.number(1));
    if (!civil(a.number(0), date) || !(std::fabs(months) < 1e5)) return num();
    const int total = date.year * 12 + date.month - 1 + static_cast<int>(months);
    if (total < 1900 * 12 || total >= 10000 * 12) return num();
    const int last = days_in_month(total / 12, total % 12 + 1);
    return serial_value(serial_of(total / 12, total % 12 + 1, to_end ? last : std::min(date.day, last)));
}

Value weekday(const Arguments& a) {
    if (!(a.number(0) >= 0.0 && a.number(0) < last_serial + 1.0)) return num();
    const int from_sunday = weekday_of(static_cast<int>(a.number(0))); // 1 for Sunday
    const int from_monday = (from_sunday + 5) % 7;                     // 0 for Monday
    const double type = std::trunc(a.number(1, 1.0));
    if (type == 1.0) return number(from_sunday);
    if (type == 2.0) return number(from_monday + 1);
    if (type == 3.0) return number(from_monday);
    if (type >= 11.0 && type <= 17.0) return number((from_monday - static_cast<int>(type - 11.0) + 7) % 7 + 1);
    return num();
}

double now() {
    const std::time_t clock = std::time(nullptr);
    std::tm local{};
#if defined(_WIN32)
    localtime_s(&local, &clock);
#else
    localtime_r(&clock, &local);
#endif
    return serial_of(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday) +
           (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec) / 86400.0;
}

int seconds_of(double serial) {
    return static_cast<int>(std::floor((serial - std::floor(serial)) * 86400.0 + 0.5)) % 86400;
}
/// A part of the time of day: seconds divided by `unit`, in a cycle of so many; an error before the first day.
Value part_of_day(double serial, int unit, int cycle) {
    if (serial < 0.0) return num();
    const int part = seconds_of(serial) / unit % cycle;
    return number(part);
}

// --- Texts ----------------------------------------------------------------------------------------------------------

constexpr double most_characters = 1e6;

/// The characters from one, counted from 0, on.
std::string_view characters(std::string_view text, double from, double count) {
    const std::size_t start = character_offset(text, static_cast<std::size_t>(std::min(from, most_characters)));
    text.remove_prefix(start);
    return text.substr(0, character_offset(text, static_cast<std::size_t>(std::min(count, most_characters))));
}

Value find_text(const Arguments& a, bool exact) {
    const double from = std::trunc(a.number(2, 1.0));
    const std::string_view wanted = a.text(0), text = a.text(1);
    const std::size_t length = character_count(text);
    if (!(from >= 1.0 && from <= static_cast<double>(length) + 1.0)) return bad_value();
    const std::string pattern = std::string(wanted) + "*";
    for (std::size_t position = static_cast<std::size_t>(from) - 1; position <= length; ++position) {
        const std::string_view rest = text.substr(character_offset(text, position));
        if (exact ? rest.starts_with(wanted) : matches_wildcards(pattern, rest))
            return number(static_cast<double>(position) + 1.0);
    }
    return bad_value();
}

Value substitute(const Arguments& a) {
    const std::string_view text = a.text(0), old = a.text(1), fresh = a.text(2);
    const double which = std::trunc(a.number(3, 0.0));
    if (a.has(3) && which < 1.0) return bad_value();
    if (old.empty()) return a[0];
    std::string result;
    std::size_t at = 0;
    double occurrence = 0.0;
    for (std::size_t found; (found = text.find(old, at)) != std::string_view::npos;) {
        occurrence += 1.0;
        result += text.substr(at, found - at);
        result += !a.has(3) || occurrence == which ? fresh : old;
        at = found + old.size();
        if (result.size() > longest_text) return bad_value();
    }
    result += text.substr(at);
    return words(result);
}

Value replace(const Arguments& a) {
    const double from = std::trunc(a.number(1)), count = std::trunc(a.number(2));
    if (from < 1.0 || count < 0.0) return bad_value();
    const std::string_view text = a.text(0);
    const std::string_view head = characters(text, 0.0, from - 1.0);
    const std::string_view tail = text.substr(head.size() + characters(text.substr(head.size()), 0.0, count).size());
    return words(std::string(head) + std::string(a.text(3)) + std::string(tail));
}

Value trim(const Arguments& a) {
    std::string result;
    for (const char c : a.text(0))
        if (c != ' ' || (!result.empty() && result.back() != ' ')) result += c;
    if (!result.empty() && result.back() == ' ') result.pop_back();
    return words(result);
}

Value proper(const Arguments& a) {
    std::string text = lower_case(a.text(0));
    bool begins = true;
    for (char& c : text) {
        const bool letter = c >= 'a' && c <= 'z';
        if (letter && begins) c = static_cast<char>(c - 'a' + 'A');
        begins = !letter && static_cast<unsigned char>(c) < 0x80;
    }
    return words(text);
}

Value repeat(const Arguments& a) {
    const double times = std::trunc(a.number(1));
    if (times < 0.0 || times * static_cast<double>(a.text(0).size()) > static_cast<double>(longest_text))
        return bad_value();
    std::string text;
    if (!a.text(0).empty())
        for (int left = static_cast<int>(times); left > 0; --left) text += a.text(0);
    return Value::text(text);
}

Value character(const Arguments& a) {
    const double code = std::trunc(a.number(0));
    if (!(code >= 1.0 && code <= 255.0)) return bad_value();
    const auto c = static_cast<unsigned>(code);
    if (c < 0x80) return Value::text(std::string(1, static_cast<char>(c)));
    return Value::text(std::string{static_cast<char>(0xC0 | (c >> 6)), static_cast<char>(0x80 | (c & 0x3F))});
}

Value code(const Arguments& a) {
    const std::string_view text = a.text(0);
    if (text.empty()) return bad_value();
    const auto first = static_cast<unsigned char>(text[0]);
    if ((first == 0xC2 || first == 0xC3) && text.size() > 1)
        return number(((first & 3u) << 6) | (static_cast<unsigned char>(text[1]) & 0x3Fu));
    return number(first < 0x80 ? first : 63.0); // a character of no 8-bit code reads as a question mark
}

Value joined_text(const Arguments& a, int from, std::string_view between, bool skip_empty) {
    std::string text;
    Value error;
    bool first = true;
    for (int i = from; i < a.count && !error.is_error(); ++i) {
        const Table table(a.calculator, a[i]);
        for (std::uint64_t item = 0; item < table.used(); ++item) {
            const Value& value = table.at(item);
            if (value.is_error()) {
                error = value;
                break;
            }
            const Value piece = to_text(value);
            if (skip_empty && piece.text().empty()) continue;
            if (!first) text += between;
            first = false;
            text += piece.text();
            if (text.size() > longest_text) return bad_value();
        }
    }
    return error.is_error() ? error : Value::text(text);
}

Value text_in_format(const Arguments& a) {
    double x = 0.0;
    Value error;
    if (a[0].is(Type::boolean) || !to_number(a[0], x, error)) return a[0].is_text() ? a[0] : to_text(a[0]);
    const auto text = formatted_text(x, a.text(1));
    return text ? Value::text(*text) : bad_value();
}

Value value_of(const Arguments& a) {
    if (a[0].is_number()) return a[0];
    double x = 0.0;
    Value error;
    return !a[0].is(Type::boolean) && to_number(a[0], x, error) ? number(x) : bad_value();
}

// --- Numbers --------------------------------------------------------------------------------------------------------

int places_of(double places) { return static_cast<int>(std::clamp(std::trunc(places), -400.0, 400.0)); }

/// x rounded to places away from (1) or towards (0) zero.
Value rounded_to(double x, double wanted, bool away) {
    const int places = places_of(wanted);
    const double scale = std::pow(10.0, std::abs(places));
    const double scaled = places >= 0 ? std::fabs(x) * scale : std::fabs(x) / scale;
    if (!(scaled < 4503599627370496.0) || scale > 1e300) return number(places >= 0 ? x : 0.0);
    const double slack = std::min(scaled * 4.5e-16, 0.01); // what reads as whole in fifteen digits is whole
    const double whole = away ? std::ceil(scaled - slack) : std::floor(scaled + slack);
    return number(std::copysign(places >= 0 ? whole / scale : whole * scale, x));
}

Value to_multiple(const Arguments& a, double (*round)(double)) {
    const double x = a.number(0), unit = a.number(1, 1.0);
    if (unit == 0.0 || x == 0.0) return number(0.0);
    if (x > 0.0 && unit < 0.0) return num();
    return number(round(rounded(x / unit, 10)) * unit);
}

Value log_base(const Arguments& a) {
    const double x = a.number(0), base = a.number(1, 10.0);
    if (x <= 0.0 || base <= 0.0) return num();
    if (base == 1.0) return Value::error(xlerrDiv0);
    return number(base == 10.0 ? std::log10(x) : std::log(x) / std::log(base));
}

Value modulo(const Arguments& a) {
    const double x = a.number(0), divisor = a.number(1);
    if (divisor == 0.0) return Value::error(xlerrDiv0);
    const double rest = std::fmod(x, divisor);
    return number(rest != 0.0 && (rest < 0.0) != (divisor < 0.0) ? rest + divisor : rest);
}

Value sum_of_products(const Arguments& a) {
    std::vector<Table> tables;
    for (int i = 0; i < a.count; ++i) {
        tables.emplace_back(a.calculator, a[i]);
        if (tables[0].rows() != tables.back().rows() || tables[0].columns() != tables.back().columns())
            return bad_value();
    }
    std::uint32_t rows = 0;
    for (const Table& table : tables) rows = std::max(rows, table.used_rows());
    double sum = 0.0;
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::uint32_t column = 0; column < tables[0].columns(); ++column) {
            double product = 1.0;
            for (const Table& table : tables) {
                const Value& value = table.at(row, column);
                if (value.is_error()) return value;
                product *= value.is_number() ? value.number() : 0.0;
            }
            sum += product;
        }
    return number(sum);
}

/// Sample variance of the numbers of the arguments.
Value variance(const Arguments& a) {
    std::vector<double> numbers;
    Value error = all_numbers(a, numbers);
    if (error.is_error()) return error;
    if (numbers.size() < 2) return Value::error(xlerrDiv0);
    const double count = static_cast<double>(numbers.size());
    const double mean = std::accumulate(numbers.begin(), numbers.end(), 0.0) / count;
    double squares = 0.0;
    for (const double x : numbers) squares += (x - mean) * (x - mean);
    return number(squares / (count - 1.0));
}

/// The item of a rank, from 1, among the numbers of the first argument in ascending order; from the end if negative.
Value ranked(const Arguments& a, double rank) {
    std::vector<double> numbers;
    Value error = all_numbers({a.calculator, a.values, 1}, numbers);
    if (error.is_error()) return error;
    const double count = static_cast<double>(numbers.size());
    if (rank < 0.0) rank += count + 1.0;
    if (!(rank >= 1.0 && rank <= count)) return num();
    const auto place = numbers.begin() + static_cast<std::ptrdiff_t>(rank) - 1;
    std::nth_element(numbers.begin(), place, numbers.end());
    return number(*place);
}

Value median(const Arguments& a) {
    std::vector<double> numbers;
    Value error = all_numbers(a, numbers);
    if (error.is_error()) return error;
    if (numbers.empty()) return num();
    std::sort(numbers.begin(), numbers.end());
    const std::size_t middle = numbers.size() / 2;
    return number(numbers.size() % 2 == 1 ? numbers[middle] : (numbers[middle - 1] + numbers[middle]) / 2.0);
}

// --- Money over time, with level payments ---------------------------------------------------------------------------

/// rate, number of payments, payment, value at the other end, 1 for payments in advance.
struct Annuity {
    explicit Annuity(const Arguments& a)
        : rate(a.number(0)), periods(a.number(1)), payment(a.number(2)), other(a.number(3, 0.0)),
          growth(std::pow(1.0 + rate, periods)),
          factor(rate == 0.0 ? periods : (1.0 + (a.number(4, 0.0) != 0.0 ? rate : 0.0)) * (growth - 1.0) / rate) {}
    double rate, periods, payment, other, growth, factor;
};

Value present_value_of_flows(const Arguments& a) {
    const double rate = a.number(0);
    if (rate == -1.0) return Value::error(xlerrDiv0);
    double sum = 0.0, discount = 1.0;
    const Value error = each_number(
        a, [&](double x) { sum += x * (discount /= 1.0 + rate); }, 1);
    return error.is_error() ? error : number(sum);
}

// --- The table ------------------------------------------------------------------------------------------------------

using A = const Arguments&;

template <double (*f)(double)>
Value apply(A a) {
    return number(f(a.number(0)));
}

const Builtin table[] = {
    // Logic. IF, IFERROR and IFNA are part of the formula language.
    {"AND", "r*",
     [](A a) {
         return joined(
             a, [](bool x, bool y) { return x && y; }, true);
     }},
    {"OR", "r*",
     [](A a) {
         return joined(
             a, [](bool x, bool y) { return x || y; }, false);
     }},
    {"XOR", "r*",
     [](A a) {
         return joined(
             a, [](bool x, bool y) { return x != y; }, false);
     }},
    {"NOT", "b", [](A a) { return truth(!a.truth(0)); }},
    {"TRUE", "", [](A) { return truth(true); }},
    {"FALSE", "", [](A) { return truth(false); }},
    {"NA", "", [](A) { return na(); }},
    {"ISERROR", "e", [](A a) { return truth(a[0].is_error()); }},
    {"ISERR", "e", [](A a) { return truth(a[0].is_error() && a[0].error() != xlerrNA); }},
    {"ISNA", "e", [](A a) { return truth(a[0].is_error() && a[0].error() == xlerrNA); }},
    {"ISNUMBER", "e", [](A a) { return truth(a[0].is_number()); }},
    {"ISTEXT", "e", [](A a) { return truth(a[0].is_text()); }},
    {"ISNONTEXT", "e", [](A a) { return truth(!a[0].is_text()); }},
    {"ISLOGICAL", "e", [](A a) { return truth(a[0].is(Type::boolean)); }},
    {"ISBLANK", "e", [](A a) { return truth(a[0].is_blank()); }},
    {"ISREF", "r", [](A a) { return truth(a[0].is(Type::area)); }},
    {"ERROR.TYPE", "e",
     [](A a) {
         if (!a[0].is_error()) return na();
         constexpr std::uint16_t order[] = {xlerrNull, xlerrDiv0, xlerrValue, xlerrRef, xlerrName, xlerrNum, xlerrNA};
         return number(static_cast<double>(std::find(std::begin(order), std::end(order), a[0].error()) - order) + 1.0);
     }},
    {"N", "e",
     [](A a) {
         double x = 0.0;
         Value error;
         if (a[0].is_text()) return number(0.0);
         return to_number(a[0], x, error) ? number(x) : error;
     }},
    {"T", "e", [](A a) { return a[0].is_text() || a[0].is_error() ? a[0] : Value::text(""); }},

    // Sums and counts.
    {"SUM", "r*",
     [](A a) {
         return over_numbers(
             a, 0.0, [](double& sum, double x) { sum += x; }, number);
     }},
    {"SUMSQ", "r*",
     [](A a) {
         return over_numbers(
             a, 0.0, [](double& sum, double x) { sum += x * x; }, number);
     }},
    {"PRODUCT", "r*",
     [](A a) {
         return over_numbers(
             a, std::pair{1.0, false},
             [](auto& total, double x) {
                 total = {total.first * x, true};
             },
             [](const auto& total) { return number(total.second ? total.first : 0.0); });
     }},
    {"MIN", "r*", [](A a) { return extreme(a, [](double x, double least) { return x < least; }); }},
    {"MAX", "r*", [](A a) { return extreme(a, [](double x, double most) { return x > most; }); }},
    {"AVERAGE", "r*",
     [](A a) {
         return over_numbers(
             a, Total{},
             [](Total& total, double x) {
                 total = {total.sum + x, total.count + 1};
             },
             [](const Total& total) {
                 return total.count == 0 ? Value::error(xlerrDiv0)
                                         : number(total.sum / static_cast<double>(total.count));
             });
     }},
    {"COUNT", "r*",
     [](A a) {
         double count = 0.0, x = 0.0;
         Value error;
         for (int i = 0; i < a.count; ++i)
             each_value(a, i, [&](const Value& value, bool inside) {
                 if (value.is_number() || (!inside && to_number(value, x, error))) count += 1.0;
                 return true;
             });
         return number(count);
     }},
    {"COUNTA", "r*",
     [](A a) {
         double count = 0.0;
         for (int i = 0; i < a.count; ++i)
             each_value(a, i, [&](const Value& value, bool inside) {
                 if (!inside || !value.is_blank()) count += 1.0;
                 return true;
             });
         return number(count);
     }},
    {"COUNTBLANK", "r",
     [](A a) {
         double filled = 0.0;
         each_value(a, 0, [&](const Value& value, bool) {
             if (!value.is_blank() && !(value.is_text() && value.text().empty())) filled += 1.0;
             return true;
         });
         return number(static_cast<double>(Table(a.calculator, a[0]).size()) - filled);
     }},
    {"COUNTIF", "rv",
     [](A a) {
         double count = 0.0;
         const Criterion criterion(a[1]);
         const Table cells(a.calculator, a[0]);
         for (std::uint64_t i = 0; i < cells.used(); ++i)
             if (criterion.meets(cells.at(i))) count += 1.0;
         if (criterion.meets(Value())) count += static_cast<double>(cells.size() - cells.used());
         return number(count);
     }},
    {"COUNTIFS", "/rv*",
     [](A a) {
         double count = 0.0;
         const Value error = each_match(a, 0, [&](std::uint32_t, std::uint32_t) { return count += 1.0, true; });
         return error.is_error() ? error : number(count);
     }},
    {"SUMIF", "rv|r",
     [](A a) {
         return sum_where({a.calculator, a.values, 2}, a.has(2) ? a[2] : a[0], 0);
     }},
    {"SUMIFS", "r/rv*", [](A a) { return sum_where(a, a[0], 1); }},
    {"AVERAGEIF", "rv|r",
     [](A a) {
         return average_where({a.calculator, a.values, 2}, a.has(2) ? a[2] : a[0], 0);
     }},
    {"AVERAGEIFS", "r/rv*", [](A a) { return average_where(a, a[0], 1); }},
    {"SUMPRODUCT", "r*", sum_of_products},
    {"MEDIAN", "r*", median},
    {"LARGE", "rn", [](A a) { return a.number(1) < 1.0 ? num() : ranked(a, -std::ceil(a.number(1))); }},
    {"SMALL", "rn", [](A a) { return a.number(1) < 1.0 ? num() : ranked(a, std::ceil(a.number(1))); }},
    {"VAR", "r*", variance},
    {"STDEV", "r*",
     [](A a) {
         const Value squares = variance(a);
         return squares.is_error() ? squares : number(std::sqrt(squares.number()));
     }},

    // Numbers.
    {"ABS", "n", apply<std::fabs>},
    {"SIGN", "n", [](A a) { return number((a.number(0) > 0.0) - (a.number(0) < 0.0)); }},
    {"INT", "n", apply<std::floor>},
    {"TRUNC", "n|n", [](A a) { return rounded_to(a.number(0), a.number(1, 0.0), false); }},
    {"ROUND", "nn", [](A a) { return number(rounded(a.number(0), places_of(a.number(1)))); }},
    {"ROUNDUP", "nn", [](A a) { return rounded_to(a.number(0), a.number(1), true); }},
    {"ROUNDDOWN", "nn", [](A a) { return rounded_to(a.number(0), a.number(1), false); }},
    {"CEILING", "n|n", [](A a) { return to_multiple(a, std::ceil); }},
    {"FLOOR", "n|n", [](A a) { return to_multiple(a, std::floor); }},
    {"MROUND", "nn", [](A a) { return to_multiple(a, [](double x) { return rounded(x, 0); }); }},
    {"MOD", "nn", modulo},
    {"QUOTIENT", "nn",
     [](A a) { return a.number(1) == 0.0 ? Value::error(xlerrDiv0) : number(std::trunc(a.number(0) / a.number(1))); }},
    {"SQRT", "n", [](A a) { return number(std::sqrt(a.number(0))); }},
    {"EXP", "n", apply<std::exp>},
    {"LN", "n", [](A a) { return a.number(0) <= 0.0 ? num() : number(std::log(a.number(0))); }},
    {"LOG10", "n", [](A a) { return a.number(0) <= 0.0 ? num() : number(std::log10(a.number(0))); }},
    {"LOG", "n|n", log_base},
    {"POWER", "nn", [](A a) { return raised(a.number(0), a.number(1)); }},
    {"PI", "", [](A) { return number(3.14159265358979323846); }},
    {"SIN", "n", apply<std::sin>},
    {"COS", "n", apply<std::cos>},
    {"TAN", "n", apply<std::tan>},
    {"ATAN", "n", apply<std::atan>},
    {"RAND", "",
     [](A) {
         static std::mt19937_64 generator{std::random_device{}()};
         return number(std::uniform_real_distribution<double>(0.0, 1.0)(generator));
     },
     true},

    // Money.
    {"NPV", "nr*", present_value_of_flows},
    {"PV", "nnn|nn",
     [](A a) {
         const Annuity x(a);
         return number(-(x.other + x.payment * x.factor) / x.growth);
     }},
    {"FV", "nnn|nn",
     [](A a) {
         const Annuity x(a);
         return number(-(x.other * x.growth + x.payment * x.factor));
     }},
    {"PMT", "nnn|nn",
     [](A a) { // the third argument is the present value here
         const Annuity x(a);
         return x.factor == 0.0 ? num() : number(-(x.other + x.payment * x.growth) / x.factor);
     }},

    // Lookups and references.
    {"CHOOSE", "nr*", choose},
    {"INDEX", "r|nn", index},
    {"MATCH", "vr|n", match},
    {"VLOOKUP", "vrn|b", [](A a) { return lookup(a, true); }},
    {"HLOOKUP", "vrn|b", [](A a) { return lookup(a, false); }},
    {"ROW", "|r", [](A a) { return places(a, true); }},
    {"COLUMN", "|r", [](A a) { return places(a, false); }},
    {"ROWS", "r", [](A a) { return a[0].is_error() ? a[0] : number(Table(a.calculator, a[0]).rows()); }},
    {"COLUMNS", "r", [](A a) { return a[0].is_error() ? a[0] : number(Table(a.calculator, a[0]).columns()); }},
    {"TRANSPOSE", "r", transpose},
    {"OFFSET", "rnn|nn", offset, true},
    {"INDIRECT", "t|b", indirect, true},

    // Dates and times.
    {"DATE", "nnn", date_of},
    {"YEAR", "n", [](A a) { return date_part(a, &CivilDate::year); }},
    {"MONTH", "n", [](A a) { return date_part(a, &CivilDate::month); }},
    {"DAY", "n", [](A a) { return date_part(a, &CivilDate::day); }},
    {"WEEKDAY", "n|n", weekday},
    {"EDATE", "nn", [](A a) { return months_later(a, false); }},
    {"EOMONTH", "nn", [](A a) { return months_later(a, true); }},
    {"DAYS", "nn", [](A a) { return number(std::floor(a.number(0)) - std::floor(a.number(1))); }},
    {"DATEVALUE", "t",
     [](A a) {
         const auto read = read_number(a.text(0));
         return read && read->is_date ? Value::date(std::floor(read->value)) : bad_value();
     }},
    {"TIME", "nnn",
     [](A a) {
         const double seconds =
             std::trunc(a.number(0)) * 3600.0 + std::trunc(a.number(1)) * 60.0 + std::trunc(a.number(2));
         return seconds < 0.0 ? num() : number(std::fmod(seconds, 86400.0) / 86400.0);
     }},
    {"HOUR", "n", [](A a) { return part_of_day(a.number(0), 3600, 24); }},
    {"MINUTE", "n", [](A a) { return part_of_day(a.number(0), 60, 60); }},
    {"SECOND", "n", [](A a) { return part_of_day(a.number(0), 1, 60); }},
    {"TODAY", "", [](A) { return Value::date(std::floor(now())); }, true},
    {"NOW", "", [](A) { return Value::date(now()); }, true},

    // Texts.
    {"LEN", "t", [](A a) { return number(static_cast<double>(character_count(a.text(0)))); }},
    {"LEFT", "t|n",
     [](A a) {
         const double count = std::trunc(a.count > 1 ? a.number(1) : 1.0);
         return count < 0.0 ? bad_value() : Value::text(characters(a.text(0), 0.0, count));
     }},
    {"RIGHT", "t|n",
     [](A a) {
         const double count = std::trunc(a.count > 1 ? a.number(1) : 1.0);
         const double length = static_cast<double>(character_count(a.text(0)));
         return count < 0.0 ? bad_value() : Value::text(characters(a.text(0), std::max(0.0, length - count), count));
     }},
    {"MID", "tnn",
     [](A a) {
         const double from = std::trunc(a.number(1)), count = std::trunc(a.number(2));
         return from < 1.0 || count < 0.0 ? bad_value() : Value::text(characters(a.text(0), from - 1.0, count));
     }},
    {"UPPER", "t", [](A a) { return Value::text(upper_case(a.text(0))); }},
    {"LOWER", "t", [](A a) { return Value::text(lower_case(a.text(0))); }},
    {"PROPER", "t", proper},
    {"TRIM", "t", trim},
    {"FIND", "tt|n", [](A a) { return find_text(a, true); }},
    {"SEARCH", "tt|n", [](A a) { return find_text(a, false); }},
    {"SUBSTITUTE", "ttt|n", substitute},
    {"REPLACE", "tnnt", replace},
    {"CONCATENATE", "t*", [](A a) { return joined_text(a, 0, "", false); }},
    {"CONCAT", "r*", [](A a) { return joined_text(a, 0, "", false); }},
    {"TEXTJOIN", "tbr*", [](A a) { return joined_text(a, 2, a.text(0), a.truth(1)); }},
    {"TEXT", "vt", text_in_format},
    {"VALUE", "v", value_of},
    {"CHAR", "n", character},
    {"CODE", "t", code},
    {"REPT", "tn", repeat},
    {"EXACT", "tt", [](A a) { return truth(a.text(0) == a.text(1)); }},
};

} // namespace

std::span<const Builtin> all_builtins() { return table; }

const Builtin* find_builtin(std::string_view name) {
    static const auto by_name = [] {
        std::unordered_map<std::string_view, const Builtin*> names;
        for (const Builtin& builtin : table) names.emplace(builtin.name, &builtin);
        return names;
    }();
    const auto found = by_name.find(upper_case(name));
    return found == by_name.end() ? nullptr : found->second;
}

} // namespace qx::sheet
