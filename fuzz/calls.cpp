#include "calls.h"

#include "addin/examples.h"
#include "hosts/sheet/sheet_host.h"
#include "hosts/sheet/workbook.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <limits>
#include <string_view>

namespace qx::fuzz {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double first_of_2005 = 38353;
constexpr double last_number = 640637; ///< of the regular dates

bool is_number(const OPER& cell) { return cell.type() == xltypeNum; }

/// The cells of an argument, of which one that is no array is the only one.
struct Cells {
    const OPER* first;
    int count;
    explicit Cells(const OPER& cell) : first(&cell), count(1) {
        if (cell.type() != xltypeMulti) return;
        first = cell.val.array.lparray;
        count = cell.val.array.rows * cell.val.array.columns;
    }
    const OPER& operator[](int i) const { return first[i % count]; }
};

} // namespace

std::string formula_text(const OPER& cell) {
    switch (cell.type()) {
    case xltypeNum: {
        char text[40];
        std::snprintf(text, sizeof text, "%.17g", cell.val.num);
        return text;
    }
    case xltypeStr: {
        std::string text = "\"";
        for (int i = 1; i <= cell.val.str[0]; ++i) {
            char byte[8];
            const unsigned char c = cell.val.str[i];
            std::snprintf(byte, sizeof byte, c < ' ' || c > '~' ? "\\x%02X" : "%c", c);
            text += byte;
        }
        return text + '"';
    }
    case xltypeBool:
        return cell.val.xbool ? "TRUE" : "FALSE";
    case xltypeErr:
        return "error " + std::to_string(cell.val.err);
    case xltypeMissing:
        return "";
    case xltypeNil:
        return "blank";
    case xltypeSRef:
        return "reference";
    case xltypeMulti: {
        const int rows = static_cast<std::int16_t>(cell.val.array.rows);
        const int columns = static_cast<std::int16_t>(cell.val.array.columns);
        std::string text = "{" + std::to_string(rows) + "x" + std::to_string(columns) + ":";
        for (int i = 0; cell.val.array.lparray != nullptr && i < std::min(rows * columns, 20); ++i)
            text += (i ? "," : " ") + formula_text(cell.val.array.lparray[i]);
        return text + "}";
    }
    default:
        return "type " + std::to_string(cell.xltype);
    }
}

std::vector<Example> examples_of(const Function& function) {
    sheet::Workbook book;
    std::vector<Example> found;
    for (const char* const text : function.examples) {
        if (text == nullptr) continue;
        const qx::Example example = read_example(text);
        const auto arguments = call_arguments(example.formula, function.name);
        if (!arguments || example.sign == '!' || static_cast<int>(arguments->size()) > function.arity()) continue;
        Example cells(static_cast<std::size_t>(function.arity()), missing_cell());
        for (std::size_t i = 0; i < arguments->size(); ++i)
            if (const std::string& argument = (*arguments)[i]; !argument.empty())
                sheet::copy_to_oper(
                    cells[i], book.look_up(book.evaluate(book.read(argument), sheet::Area(sheet::CellAddress{}))));
        found.push_back(std::move(cells));
    }
    return found;
}

std::vector<OPER> Generator::arguments(const Function& function, const std::vector<Example>& examples, Manner manner) {
    const auto any = [&](int i) { return cell(function.calls.kinds[i], function.args[i].is_optional()); };
    std::vector<OPER> cells;
    if (manner == Manner::any || examples.empty()) {
        for (int i = 0; i < function.arity(); ++i) cells.push_back(any(i));
        return cells;
    }
    cells = examples[static_cast<std::size_t>(below(static_cast<int>(examples.size())))];
    if (manner == Manner::near) {
        for (int changes = below(4); changes > 0 && !cells.empty(); --changes) {
            const int i = below(function.arity());
            cells[static_cast<std::size_t>(i)] = any(i);
        }
        return cells;
    }

    const bool well_formed = chance(50); // or each list as it comes
    const bool to_the_end = chance(70);
    const int length = chance(90) ? 10000 : std::array{1000, 5000, 9999, 10001}[below(4)];
    for (int i = 0; i < function.arity(); ++i) {
        OPER& cell = cells[static_cast<std::size_t>(i)];
        const std::string_view name = function.args[i].name;
        const Kind kind = function.calls.kinds[i];
        const bool missing = cell.type() == xltypeMissing;
        if (kind == Kind::list) {
            if ((missing && chance(60)) || (!well_formed && chance(15))) continue;
            const Cells given(cell);
            const Kind items = function.calls.items[i];
            cell = items == Kind::date
                       ? long_dates(length, given.count > 0 && is_number(given[0]) ? given[0].val.num : first_of_2005,
                                    well_formed)
                       : long_values(length, cell, well_formed);
        } else if (to_the_end && kind == Kind::period_base && !missing) {
            cell = number_cell(chance(50) ? 480 : last_number);
        } else if (to_the_end && kind == Kind::date && !missing &&
                   (name.starts_with("Finish") || name.starts_with("To") || name.starts_with("End"))) {
            cell = number_cell(chance(50) ? 2045 : last_number);
        } else if (chance(missing ? 10 : 4)) {
            cell = any(i);
        }
    }
    return cells;
}

OPER Generator::long_dates(int length, double first, bool well_formed) {
    std::vector<OPER>& cells = arrays_.emplace_back();
    if (!(first >= 1910.0 && first < last_number)) first = first_of_2005;
    if (first < 3654.0) first = 3654.0 + std::floor((first - 1910.0) * 365.25);
    const int flavour = below(well_formed ? 5 : 9);
    for (int i = 0; i < length; ++i) {
        double day = first;
        switch (flavour) {
        case 0:
        case 1:
            day += i;
            break;
        case 2:
            day += 7 * i;
            break;
        case 3:
            day += 30 * i;
            break;
        case 4:
            day = (i == 0 ? first : cells.back().val.num) + below(60);
            break;
        case 5: // all equal
            break;
        case 6: // descending
            day += length - i;
            break;
        case 7:
            day += below(14600);
            break;
        default: // two on each day
            day += i / 2;
        }
        cells.push_back(number_cell(std::min(day, last_number)));
    }
    return array_cell(cells.data(), length, 1);
}

OPER Generator::long_values(int length, const OPER& like, bool well_formed) {
    std::vector<OPER>& cells = arrays_.emplace_back();
    const Cells given(like);
    const bool numbers = given.count > 0 && is_number(given[0]);
    const double first = numbers ? given[0].val.num : 1.0;
    const double step = given.count > 1 && is_number(given[1]) ? given[1].val.num - first : 1.0;
    const bool as_given = given.count > 0 && given[0].type() != xltypeMissing;
    const int flavour = as_given && !numbers ? 0 : below(well_formed ? 3 : 10);
    const double base = amount();
    for (int i = 0; i < length; ++i) {
        double value = first;
        switch (flavour) {
        case 0:
            if (as_given) {
                cells.push_back(given[i]);
                continue;
            }
            break;
        case 1: // going on
            value += step * i;
            break;
        case 2: // all equal
            break;
        case 3: // descending
            value += step * (length - i);
            break;
        case 4: // of one sign, so without a root
            value = uniform(1.0, 1000.0);
            break;
        case 5:
            value = i % 2 == 0 ? first : -first;
            break;
        case 6:
            value = 0.0;
            break;
        case 7:
            value = std::ldexp(first, below(200) - 100);
            break;
        case 8:
            value = base;
            break;
        default:
            value = uniform(-1000.0, 1000.0);
        }
        cells.push_back(number_cell(value));
    }
    return array_cell(cells.data(), length, 1);
}

/// A cell that suits the argument, most of the time.
OPER Generator::cell(Kind kind, bool optional) {
    if (optional && chance(45)) return missing_cell();
    if (chance(12)) return wild(true);
    switch (kind) {
    case Kind::boolean:
        return bool_cell(chance(50));
    case Kind::text:
    case Kind::short_text:
        return text();
    case Kind::date:
    case Kind::period_start:
        return number_cell(day());
    case Kind::period_base:
        return number_cell(chance(70) ? 1 + below(24) : day());
    case Kind::integer:
    case Kind::wide_integer:
        return number_cell(below(14) - 1);
    case Kind::sequence:
        return sequence();
    case Kind::list:
    case Kind::any:
        return list();
    case Kind::reference:
        return chance(70) ? sref_cell({0, static_cast<std::uint16_t>(below(4)), 0, 0}) : list();
    case Kind::cell:
        return chance(50) ? wild(true) : list();
    default:
        return number_cell(amount());
    }
}

OPER Generator::caller() {
    switch (below(8)) {
    case 0:
        return sref_cell({0, static_cast<std::uint16_t>(below(20)), 3, 3});
    case 1:
        return sref_cell({2, 2, 0, static_cast<std::uint8_t>(below(20))});
    case 2:
        return chance(90) ? sref_cell({0, 40, 0, 5}) : wild(false);
    default:
        return sref_cell({5, 5, 5, 5});
    }
}

OPER Generator::wild(bool arrays) {
    switch (below(arrays ? 9 : 7)) {
    case 0:
        return error_cell(static_cast<std::uint16_t>(std::array{0, 7, 15, 23, 29, 36, 42, 99}[below(8)]));
    case 1:
        return nil_cell();
    case 2:
        return bool_cell(chance(50));
    case 3:
        return text();
    case 4:
        return missing_cell();
    case 5:
        return sref_cell({1, 1, 1, 1});
    case 6:
        return number_cell(edge());
    case 7: // broken
        return array_cell(nullptr, below(3) - 1, -below(3));
    default:
        return list();
    }
}

double Generator::edge() {
    static constexpr double edges[] = {
        0,         -0.0,         1,     -1,           0.5,           1e-13,    -1e-12, 1e308,  -1e308, nan,    infinity,
        -infinity, 1909.99,      1910,  1e10,         3653.5,        3653.999, 3654,   640637, 641003, 641004, 10000,
        10001,     2147483647.0, 1e18,  4294967296.0, -2147483649.0, 12.31,    -12.31, 13.5,   5.0305, 999,    1000,
        0.1,       2.29,         -1.01, 20,           20.01,         100.02,   1e-300};
    return edges[below(static_cast<int>(std::size(edges)))];
}

double Generator::day() {
    switch (below(10)) {
    case 0:
        return edge();
    case 1:
        return 1990 + below(60) + (chance(50) ? 0.25 * below(4) : 0.0);
    case 2:
        return 3654 + below(636000);
    default:
        return 36526 + below(14600);
    }
}

double Generator::amount() {
    switch (below(8)) {
    case 0:
        return edge();
    case 1:
        return below(14);
    case 2:
        return below(13) + 0.01 * below(13);
    case 3:
        return uniform(-1e6, 1e6);
    case 4:
        return day();
    case 5:
        return below(40) - 20;
    default:
        return uniform(0.0, 0.2);
    }
}

OPER Generator::text() {
    static const char* const words[] = {"",      "abc", "$1,234.50", "(500)", "-5",   "[a-z]+", "(a+)+b", "12-Mar-2005",
                                        "A1:B2", "?>5", "4",         "x",     "TRUE", "=1",     "\"",     "quarterly"};
    std::string& kept = texts_.emplace_back(1, '\0');
    if (chance(80)) {
        kept += words[below(static_cast<int>(std::size(words)))];
    } else {
        const int length = chance(20) ? 255 : below(40);
        for (int i = 0; i < length; ++i) kept += static_cast<char>(below(256));
    }
    kept[0] = static_cast<char>(static_cast<unsigned char>(kept.size() - 1));
    return {{.str = reinterpret_cast<unsigned char*>(kept.data())}, xltypeStr};
}

OPER Generator::sequence() {
    static constexpr double figures[] = {1,   2,  4,  12, 13,   -1,    -2,  -4,     -12,
                                         -13, 14, 15, 0,  3.25, -6.30, 100, 200.01, 2.29};
    if (chance(80)) return number_cell(figures[below(static_cast<int>(std::size(figures)))]);
    std::vector<OPER>& cells = arrays_.emplace_back();
    const int n = 1 + below(chance(95) ? 6 : 101);
    for (int i = 0; i < n; ++i)
        cells.push_back(number_cell((chance(10) ? -1 : 1) * (1 + 12 * i / n + 0.01 * (1 + below(28)))));
    return array_cell(cells.data(), n, 1);
}

OPER Generator::list() {
    std::vector<OPER>& cells = arrays_.emplace_back();
    int rows = 1 + below(8);
    int columns = chance(80) ? 1 : 1 + below(4);
    if (chance(2)) rows = 10000, columns = 1;
    if (chance(1)) rows = 10001, columns = 1;
    const int flavour = below(6);
    double value = flavour < 3 ? 36526 + below(8000) : amount();
    for (int i = 0; i < rows * columns; ++i) {
        switch (flavour) {
        case 0:
        case 1:
        case 2:
            value += below(400);
            break;
        case 3:
            value = uniform(-1000.0, 1000.0);
            break;
        case 4:
            value = below(5);
            break;
        default:
            value = amount();
        }
        cells.push_back(chance(2) && rows < 100 ? wild(false) : number_cell(value));
    }
    return array_cell(cells.data(), rows, columns);
}

} // namespace qx::fuzz
