#include "addin/cells.h"
#include "hosts/sheet/builtin_tools.h"

#include <numeric>

namespace qx::sheet::builtin {

namespace {

bool same_kind(const Value& a, const Value& b) { return a.type() == b.type(); }

/// The first or the last of the places at which a value stands.
bool find_equal(const LookupIndex& index, const Value& wanted, bool last, std::uint64_t& position) {
    std::vector<std::uint32_t> places;
    if (wanted.is_number())
        index.find(wanted.number(), false, places);
    else
        index.find(wanted.text(), places);
    if (places.empty()) return false;
    const auto [first_place, last_place] = std::minmax_element(places.begin(), places.end());
    position = last ? *last_place : *first_place;
    return true;
}

/// Looks a value up as find_item() does. False where the index cannot tell.
bool find_by_index(const LookupIndex& index, const Value& wanted, int type, bool& found, std::uint64_t& position) {
    if (type == 0) {
        if (wanted.is_text() && wanted.text().find_first_of("*?~") != std::string_view::npos) return false;
        found = find_equal(index, wanted, false, position);
        return true;
    }
    if (!wanted.is_number() || !(type > 0 ? index.ascends() : index.descends())) return false;
    const double x = wanted.number();
    if (type > 0) {
        const std::size_t count = index.up_to(x);
        found = count > 0;
        if (found) position = index.place(count - 1);
    } else { // the last in the list of the smallest that are not below
        const std::size_t below = index.below(x);
        found = below < index.numbers();
        if (found) position = index.place(index.ranks(index.number(below)).second - 1);
    }
    return true;
}

/// Position, from 0, of a value in a list of `count` items, which is a table's first row or column: type 0 the first
/// equal one, 1 the last not above it in an ascending list, -1 the last not below it in a descending one. False if
/// there is none.
template <class Item>
bool find_item(const Value& wanted, const Table& table, std::uint64_t count, int type, Item item,
               std::uint64_t& position) {
    bool found = false;
    const LookupIndex* const index = wanted.is_number() || wanted.is_text() ? table.index() : nullptr;
    if (index != nullptr && find_by_index(*index, wanted, type, found, position)) return found;
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

Value not_found(const Value& wanted) {
    return Value::error(xlerrNA, wanted.is_error() ? "not found"
                                                   : "not found: " + std::string(to_text(wanted).text().substr(0, 40)));
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
    const Table list(a.calculator, !a[1].is(Type::area) ? Value()
                                   : vertical           ? table.part(0, 0, table.rows(), 1)
                                                        : table.part(0, 0, 1, table.columns()));
    if (!find_item(wanted, list, vertical ? table.used_rows() : table.columns(), type, item, position))
        return not_found(wanted);
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
            wanted, table, table.used(), type, [&](std::uint64_t i) -> const Value& { return table.at(i); }, position))
        return not_found(wanted);
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

/// The reference that a string spells: in A1 or R1C1 style, or a name.
Value indirect(A a) {
    Area area;
    Workbook& book = a.calculator.book();
    std::string_view text = a.text(0);
    const CellAddress cell = a.calculator.caller().first();
    std::uint16_t sheet = cell.sheet;
    if (const std::size_t mark = text.rfind('!'); mark != std::string_view::npos) {
        std::string_view name = text.substr(0, mark);
        if (name.size() > 1 && name.front() == '\'' && name.back() == '\'') name = name.substr(1, name.size() - 2);
        const int found = book.sheet_number(name);
        if (found < 0) return Value::error(xlerrRef, "there is no sheet \"" + valid_utf8(name) + "\"");
        sheet = static_cast<std::uint16_t>(found);
        text.remove_prefix(mark + 1);
    }
    const bool r1c1 = a.has(1) && !a.truth(1);
    if (r1c1 ? read_r1c1_area(text, cell, sheet, area) : read_area(text, sheet, area)) return Value::reference(area);
    if (book.find_name(text, sheet, area)) return Value::reference(area);
    return Value::error(xlerrRef, '"' + valid_utf8(text) + "\" is not a reference");
}

/// The item of a list, or of the other list, at which a value is in an ascending list: LOOKUP.
Value lookup_in_order(A a) {
    const Table table(a.calculator, a[1]);
    const bool by_rows = table.rows() >= table.columns(); // a table is searched along its longer side
    const Value wanted = a[0].is_blank() ? Value::number(0.0) : a[0];
    std::uint64_t position = 0;
    const auto item = [&](std::uint64_t i) -> const Value& {
        return by_rows ? table.at(static_cast<std::uint32_t>(i), 0) : table.at(0, static_cast<std::uint32_t>(i));
    };
    if (!find_item(wanted, table, by_rows ? table.used_rows() : table.columns(), 1, item, position))
        return not_found(wanted);
    const auto place = static_cast<std::uint32_t>(position);
    if (!a.has(2)) return by_rows ? table.at(place, table.columns() - 1) : table.at(table.rows() - 1, place);
    const Table results(a.calculator, a[2]);
    if (results.rows() > 1 && results.columns() > 1) return na();
    return results.columns() == 1 ? results.beyond(place, 0) : results.beyond(0, place);
}

/// The place of a value in a list as XLOOKUP and XMATCH look for it: mode 0 equal, -1 or the next smaller, 1 or the
/// next larger, 2 with wildcards; search 1 from the start, -1 from the end, 2 and -2 in sorted lists.
bool find_place(const Value& wanted, const Table& table, double mode, double search, std::uint64_t& position) {
    bool found = false;
    const std::uint64_t count = table.size();
    const LookupIndex* const index = wanted.is_number() || (wanted.is_text() && mode == 0.0) ? table.index() : nullptr;
    if (index != nullptr) {
        if (find_equal(*index, wanted, search == -1.0, position)) return true;
        if (mode == 0.0 || mode == 2.0) return false;
        const double x = wanted.number();
        const std::size_t rank = mode < 0.0 ? index->below(x) : index->up_to(x);
        if (mode < 0.0 ? rank == 0 : rank == index->numbers()) return false;
        const double next = index->number(mode < 0.0 ? rank - 1 : rank);
        return find_equal(*index, Value::number(next), search == -1.0, position);
    }
    const Value* best = nullptr;
    for (std::uint64_t step = 0; step < count; ++step) {
        const std::uint64_t i = search == -1.0 ? count - 1 - step : step;
        const Value& value = table.at(i);
        if (mode == 2.0 && wanted.is_text() ? value.is_text() && matches_wildcards(wanted.text(), value.text())
            : wanted.is_blank()             ? value.is_blank()
                                            : same_kind(value, wanted) && compare(value, wanted) == 0) {
            position = i;
            return true;
        }
        if ((mode != 1.0 && mode != -1.0) || !same_kind(value, wanted)) continue;
        const int order = compare(value, wanted);
        if ((order < 0) != (mode < 0.0)) continue;
        if (best != nullptr && compare(value, *best) * (mode < 0.0 ? 1 : -1) <= 0) continue;
        best = &value;
        position = i;
        found = true;
    }
    return found;
}

bool valid_modes(double mode, double search) {
    return (mode == 0.0 || mode == 1.0 || mode == -1.0 || mode == 2.0) &&
           (std::fabs(search) == 1.0 || std::fabs(search) == 2.0);
}

Value extended_lookup(A a) {
    const Table table(a.calculator, a[1]), results(a.calculator, a[2]);
    const double mode = std::trunc(a.number(4, 0.0)), search = std::trunc(a.number(5, 1.0));
    if (!valid_modes(mode, search) || (table.rows() > 1 && table.columns() > 1)) return bad_value();
    const bool down = table.rows() > 1 || (table.columns() == 1 && results.rows() == 1);
    if (down ? results.rows() != table.rows() : results.columns() != table.columns()) return bad_value();
    std::uint64_t position = 0;
    if (!find_place(a[0], table, mode, search, position)) return a.has(3) ? a[3] : not_found(a[0]);
    const auto place = static_cast<std::uint32_t>(position);
    return down ? results.part(place, 0, 1, results.columns()) : results.part(0, place, results.rows(), 1);
}

Value extended_match(A a) {
    const Table table(a.calculator, a[1]);
    const double mode = std::trunc(a.number(2, 0.0)), search = std::trunc(a.number(3, 1.0));
    if (!valid_modes(mode, search) || (table.rows() > 1 && table.columns() > 1)) return bad_value();
    std::uint64_t position = 0;
    return find_place(a[0], table, mode, search, position) ? number(static_cast<double>(position + 1))
                                                           : not_found(a[0]);
}

/// "$A$1" from row and column numbers.
Value address(A a) {
    const double row = std::trunc(a.number(0)), column = std::trunc(a.number(1)), kind = std::trunc(a.number(2, 1.0));
    if (!(row >= 1.0 && row <= max_rows && column >= 1.0 && column <= max_columns && kind >= 1.0 && kind <= 4.0))
        return bad_value();
    const bool fixed_row = kind <= 2.0, fixed_column = kind == 1.0 || kind == 3.0;
    std::string text;
    if (a.has(4)) {
        const std::string_view sheet = a.text(4);
        const bool plain = is_name(sheet);
        if (plain) {
            text = sheet;
        } else {
            text = "'";
            for (const char c : sheet) text.append(c == '\'' ? 2 : 1, c);
            text += "'";
        }
        text += "!";
    }
    const std::string line = std::to_string(static_cast<int>(row)), place = std::to_string(static_cast<int>(column));
    if (a.has(3) && !a.truth(3))
        text += (fixed_row ? "R" + line : "R[" + line + "]") + (fixed_column ? "C" + place : "C[" + place + "]");
    else
        text += (fixed_column ? "$" : "") + column_text(static_cast<int>(column) - 1) + (fixed_row ? "$" : "") + line;
    return Value::text(text);
}

// --- Arrays ---------------------------------------------------------------------------------------------------------

Value no_cells() { return Value::error(error_calc, "the array has no cells"); }

/// Some rows of a table in an order, or columns.
Value picked(const Table& table, const std::vector<std::uint32_t>& places, bool columns) {
    const auto count = static_cast<std::uint32_t>(places.size());
    if (count == 0) return no_cells();
    Value result = columns ? Value::array(table.rows(), count) : Value::array(count, table.columns());
    for (std::uint32_t row = 0; row < result.rows(); ++row)
        for (std::uint32_t column = 0; column < result.columns(); ++column)
            result.cell(row, column) = columns ? table.at(row, places[column]) : table.at(places[row], column);
    return result;
}

/// An order of sorting: numbers, texts, truth values, errors, blanks; blanks at the end either way.
int sorting_order(const Value& a, const Value& b, bool descending) {
    const auto group = [](const Value& value) { return value.is_blank() ? 2 : value.is_error() ? 1 : 0; };
    if (group(a) != group(b) && (group(a) == 2 || group(b) == 2)) return group(a) - group(b);
    const int order = group(a) != group(b) ? group(a) - group(b) : group(a) == 0 ? compare(a, b) : 0;
    return descending ? -order : order;
}

std::vector<std::uint32_t> places_from_0(std::uint32_t count) {
    std::vector<std::uint32_t> places(count);
    std::iota(places.begin(), places.end(), 0u);
    return places;
}

constexpr std::uint64_t largest_table = 4'000'000;
Value too_many_cells() { return Value::error(xlerrNum, "the array is too large"); }

Value sorted(A a) {
    const Table table(a.calculator, a[0]);
    if (a[0].is_error()) return a[0];
    if (table.size() > largest_table) return too_many_cells();
    const bool columns = a.has(3) && a.truth(3);
    const double index = std::trunc(a.number(1, 1.0)), order = a.number(2, 1.0);
    if (!(index >= 1.0 && index <= (columns ? table.rows() : table.columns())) || std::fabs(order) != 1.0)
        return bad_value();
    const auto key = static_cast<std::uint32_t>(index) - 1;
    std::vector<std::uint32_t> places = places_from_0(columns ? table.columns() : table.rows());
    std::stable_sort(places.begin(), places.end(), [&](std::uint32_t x, std::uint32_t y) {
        return sorting_order(columns ? table.at(key, x) : table.at(x, key),
                             columns ? table.at(key, y) : table.at(y, key), order < 0.0) < 0;
    });
    return picked(table, places, columns);
}

Value sorted_by(A a) {
    const Table table(a.calculator, a[0]);
    if (table.size() > largest_table) return too_many_cells();
    struct Key {
        Table list;
        bool descending;
    };
    std::vector<Key> keys;
    bool columns = false;
    for (int i = 1; i < a.count; i += 2) {
        keys.push_back({Table(a.calculator, a[i]), false});
        const Table& list = keys.back().list;
        columns = list.rows() == 1 && table.columns() > 1 && list.columns() == table.columns();
        if (columns ? list.columns() != table.columns() : list.rows() != table.rows() || list.columns() != 1)
            return bad_value();
        if (i + 1 >= a.count || a[i + 1].is(Type::missing)) continue;
        double order = 0.0;
        Value error;
        if (!to_number(a.calculator.single(a[i + 1]), order, error)) return error;
        if (std::fabs(order) != 1.0) return bad_value();
        keys.back().descending = order < 0.0;
    }
    std::vector<std::uint32_t> places = places_from_0(columns ? table.columns() : table.rows());
    std::stable_sort(places.begin(), places.end(), [&](std::uint32_t x, std::uint32_t y) {
        for (const Key& key : keys)
            if (const int order =
                    sorting_order(key.list.at(std::uint64_t{x}), key.list.at(std::uint64_t{y}), key.descending);
                order != 0)
                return order < 0;
        return false;
    });
    return picked(table, places, columns);
}

/// The rows, or columns, for which a list of truth values says so.
Value filtered(A a) {
    const Table table(a.calculator, a[0]), include(a.calculator, a[1]);
    if (a[0].is_error()) return a[0];
    if (table.size() > largest_table) return too_many_cells();
    const bool columns = include.rows() == 1 && include.columns() > 1;
    if (columns ? include.columns() != table.columns() : include.columns() != 1 || include.rows() != table.rows())
        return bad_value();
    std::vector<std::uint32_t> places;
    for (std::uint32_t i = 0; i < include.size(); ++i) {
        bool taken = false;
        Value error;
        if (!to_truth(include.at(std::uint64_t{i}), taken, error)) return error;
        if (taken) places.push_back(i);
    }
    return places.empty() && a.has(2) ? a[2] : picked(table, places, columns);
}

/// The different rows, or columns, in the order in which they first come; or those that come once.
Value unique(A a) {
    const Table table(a.calculator, a[0]);
    if (a[0].is_error()) return a[0];
    if (table.size() > largest_table) return too_many_cells();
    const bool columns = a.has(1) && a.truth(1), only_once = a.has(2) && a.truth(2);
    const std::uint32_t count = columns ? table.columns() : table.rows(),
                        width = columns ? table.rows() : table.columns();
    const auto at = [&](std::uint32_t item, std::uint32_t i) -> const Value& {
        return columns ? table.at(i, item) : table.at(item, i);
    };
    const auto order = [&](std::uint32_t x, std::uint32_t y) {
        for (std::uint32_t i = 0; i < width; ++i) {
            const Value &left = at(x, i), &right = at(y, i);
            int found =
                left.is_error() && right.is_error() ? left.error() - right.error() : sorting_order(left, right, false);
            if (found != 0) return found;
        }
        return 0;
    };
    std::vector<std::uint32_t> by_value = places_from_0(count), places;
    std::sort(by_value.begin(), by_value.end(), [&](std::uint32_t x, std::uint32_t y) {
        const int found = order(x, y);
        return found != 0 ? found < 0 : x < y;
    });
    for (std::size_t i = 0; i < by_value.size();) {
        std::size_t end = i + 1;
        while (end < by_value.size() && order(by_value[i], by_value[end]) == 0) ++end;
        if (!only_once || end == i + 1) places.push_back(by_value[i]);
        i = end;
    }
    std::sort(places.begin(), places.end());
    return picked(table, places, columns);
}

Value sequence(A a) {
    const double rows = std::trunc(a.number(0, 1.0)), columns = std::trunc(a.number(1, 1.0));
    const double start = a.number(2, 1.0), step = a.number(3, 1.0);
    if (rows == 0.0 || columns == 0.0) return no_cells();
    if (!(rows > 0.0 && columns > 0.0 && rows <= max_rows && columns <= max_columns)) return bad_value();
    if (rows * columns > static_cast<double>(largest_table)) return too_many_cells();
    Value result = Value::array(static_cast<std::uint32_t>(rows), static_cast<std::uint32_t>(columns));
    double i = 0.0;
    for (std::uint32_t row = 0; row < result.rows(); ++row)
        for (std::uint32_t column = 0; column < result.columns(); ++column)
            result.cell(row, column) = number(start + step * i++);
    return result;
}

/// The product of two matrices.
Value matrix_product(A a) {
    const Table left(a.calculator, a[0]), right(a.calculator, a[1]);
    const std::uint64_t size = std::uint64_t{left.rows()} * right.columns();
    if (left.columns() != right.rows())
        return Value::error(xlerrValue, "the columns of the first matrix are not as many as the rows of the second");
    if (size > largest_table || size * left.columns() > 1'000'000'000) return too_many_cells();
    const auto numbers = [](const Table& table, std::vector<double>& list, Value& error) {
        for (std::uint64_t i = 0; i < table.size(); ++i) {
            const Value& value = table.at(i);
            if (!value.is_number()) {
                error = value.is_error() ? value
                                         : Value::error(xlerrValue, "a matrix holds something that is not a number");
                return false;
            }
            list.push_back(value.number());
        }
        return true;
    };
    std::vector<double> x, y;
    Value error;
    if (!numbers(left, x, error) || !numbers(right, y, error)) return error;
    Value result = Value::array(left.rows(), right.columns());
    for (std::uint32_t row = 0; row < left.rows(); ++row)
        for (std::uint32_t column = 0; column < right.columns(); ++column) {
            double sum = 0.0;
            for (std::uint32_t i = 0; i < left.columns(); ++i)
                sum += x[std::size_t{row} * left.columns() + i] * y[std::size_t{i} * right.columns() + column];
            result.cell(row, column) = number(sum);
        }
    return result;
}

const Builtin lookups[] = {
    {"CHOOSE", "nr*", "index, value, ...", "The value at a position in the list of arguments", choose},
    {"INDEX", "r|nn", "array, [row], [column]", "The item, row or column at a position", index},
    {"MATCH", "vr|n", "value, list, [type]",
     "The position of a value: type 0 equal, 1 the last not above it, -1 the last not below it", match},
    {"VLOOKUP", "vrn|b", "value, table, column, [sorted]",
     "Finds a value in the first column of a table and returns another column", [](A a) { return lookup(a, true); }},
    {"HLOOKUP", "vrn|b", "value, table, row, [sorted]",
     "Finds a value in the first row of a table and returns another row", [](A a) { return lookup(a, false); }},
    {"LOOKUP", "vr|r", "value, list, [results]",
     "The last item not above a value in an ascending list, or its counterpart in a list of results", lookup_in_order},
    {"XLOOKUP", "vrr|rNN", "value, list, results, [if_not_found], [match], [search]",
     "Finds a value in a list and returns its counterpart: match 0 equal, -1 or next smaller, 1 or next larger, 2 "
     "wildcards",
     extended_lookup},
    {"XMATCH", "vr|NN", "value, list, [match], [search]", "The position of a value in a list, with the same matches",
     extended_match},
    {"ADDRESS", "nn|NBt", "row, column, [fixed], [a1], [sheet]",
     "A reference as text: fixed 1 $A$1, 2 A$1, 3 $A1, 4 A1", address},
    {"ROW", "|r", "[reference]", "The row number of a reference", [](A a) { return places(a, true); }},
    {"COLUMN", "|r", "[reference]", "The column number of a reference", [](A a) { return places(a, false); }},
    {"ROWS", "r", "array", "How many rows an array or a range has",
     [](A a) { return a[0].is_error() ? a[0] : number(Table(a.calculator, a[0]).rows()); }},
    {"COLUMNS", "r", "array", "How many columns an array or a range has",
     [](A a) { return a[0].is_error() ? a[0] : number(Table(a.calculator, a[0]).columns()); }},
    {"TRANSPOSE", "r", "array", "Rows and columns exchanged", transpose},
    {"SORT", "r|NNb", "array, [index], [order], [by_columns]", "The rows of an array in order; order -1 is descending",
     sorted},
    {"SORTBY", "rr|r*", "array, list, [order], ...", "The rows of an array in the order of other lists", sorted_by},
    {"FILTER", "rr|r", "array, include, [if_empty]", "The rows of an array for which a list says TRUE", filtered},
    {"UNIQUE", "r|bb", "array, [by_columns], [once]", "The different rows of an array; or those that come only once",
     unique},
    {"SEQUENCE", "N|NNN", "rows, [columns], [start], [step]", "Numbers in rows and columns", sequence},
    {"MMULT", "rr", "matrix, matrix", "The product of two matrices", matrix_product},
    {"OFFSET", "rnn|NN", "reference, rows, columns, [height], [width]", "A reference moved by rows and columns", offset,
     true},
    {"INDIRECT", "t|b", "text, [a1]", "The reference that text spells, in A1 style, or in R1C1 style if a1 is FALSE",
     indirect, true},
};

} // namespace

std::span<const Builtin> lookups_functions() { return lookups; }

} // namespace qx::sheet::builtin
