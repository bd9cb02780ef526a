#include "support/cases.h"

#include "addin/examples.h"
#include "addin/frame.h"
#include "addin/function.h"
#include "core/trace.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>

namespace qx::test {

using sheet::Area;
using sheet::Formula;
using sheet::Type;
using sheet::Value;

namespace {

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") + 1 - first);
}

std::string_view without_remark(std::string_view line) {
    std::size_t end = line.size();
    each_outside_texts(line, [&](std::size_t at, int depth) {
        if (depth == 0 && end == line.size() && line.substr(at, 4) == "  # ") end = at;
    });
    return line.substr(0, end);
}

bool near(double a, double b, double tolerance) { return std::fabs(a - b) <= tolerance * std::max(1.0, std::fabs(b)); }

bool agree(const Value& result, const Value& wanted, double tolerance, bool in_array = false) {
    if (in_array && result.is_blank() && wanted.is_text() && wanted.text().empty()) return true;
    if (result.type() != wanted.type()) return false;
    if (result.is_number()) return near(result.number(), wanted.number(), tolerance);
    if (!result.is(Type::array)) return result.identical(wanted);
    if (result.rows() != wanted.rows() || result.columns() != wanted.columns()) return false;
    for (std::uint32_t row = 0; row < wanted.rows(); ++row)
        for (std::uint32_t column = 0; column < wanted.columns(); ++column)
            if (!agree(result.cell(row, column), wanted.cell(row, column), tolerance, true)) return false;
    return true;
}

/// A value as it fills the cells of an array formula.
Value spread(const Value& value, const Area& cells, bool repeat) {
    Value filled = Value::array(cells.rows(), cells.columns());
    const bool many = value.is(Type::array);
    const std::uint32_t rows = many ? value.rows() : 1, columns = many ? value.columns() : 1;
    for (std::uint32_t row = 0; row < cells.rows(); ++row)
        for (std::uint32_t column = 0; column < cells.columns(); ++column) {
            const std::uint32_t i = repeat && rows == 1 ? 0 : row, j = repeat && columns == 1 ? 0 : column;
            if (i < rows && j < columns)
                filled.cell(row, column) = many ? value.cell(i, j) : value;
            else if (repeat)
                filled.cell(row, column) = Value::error(xlerrNA);
        }
    return filled;
}

} // namespace

std::string shown(const Value& value) {
    switch (value.type()) {
    case Type::blank:
        return "empty";
    case Type::uncalculated:
        return "uncalculated";
    case Type::number:
        return sheet::shortest_text(value.number());
    case Type::text:
        return "\"" + sheet::valid_utf8(value.text()) + "\"";
    case Type::array: {
        std::string text = "{";
        for (std::uint32_t row = 0; row < value.rows(); ++row)
            for (std::uint32_t column = 0; column < value.columns(); ++column)
                text += (column > 0 ? "," : row > 0 ? ";" : "") + shown(value.cell(row, column));
        return text + "}";
    }
    default:
        return sheet::display_text(value);
    }
}

std::optional<std::string> Cases::run(std::string_view line) {
    line = trimmed(line);
    if (line.empty() || line.front() == '#') return {};
    line = trimmed(without_remark(line));
    try {
        return line.front() == '@' ? set_up(trimmed(line.substr(1))) : check(line);
    } catch (const sheet::FormulaError& error) {
        return "character " + std::to_string(error.column) + ": " + error.what();
    }
}

std::optional<std::string> Cases::set_up(std::string_view line) {
    if (line == "reset") {
        book_.clear();
        return {};
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return "expected \"@ cell = value\" or \"@ reset\"";
    const std::string_view target = trimmed(line.substr(0, equals)), text = trimmed(line.substr(equals + 1));
    if (target.starts_with("name ")) {
        book_.define_name(trimmed(target.substr(5)), text);
        return {};
    }
    Area area;
    if (!sheet::read_area(target, 0, area)) return "\"" + std::string(target) + "\" is no cell";
    if (text.starts_with('=')) {
        if (area.is_cell())
            book_.set_formula(area.first(), text);
        else
            book_.set_array_formula(area, text);
        return {};
    }
    const Value value = text == "empty" ? Value() : evaluate(text, Area(area.first()));
    const Value cells = spread(value, area, true);
    for (std::uint32_t row = 0; row < area.rows(); ++row)
        for (std::uint32_t column = 0; column < area.columns(); ++column)
            book_.set_value({area.first_row + row, static_cast<std::uint16_t>(area.first_column + column), area.sheet},
                            cells.cell(row, column));
    return {};
}

Value Cases::evaluate(std::string_view text, const Area& caller) {
    return book_.look_up(book_.evaluate(book_.read(text), caller));
}

std::optional<std::string> Cases::check(std::string_view line) {
    ++count_;
    Area caller{sheet::CellAddress{}};
    bool fills = false;
    if (const std::size_t end = line.find("] "); line.front() == '[' && end != std::string_view::npos) {
        if (!sheet::read_area(line.substr(1, end - 1), 0, caller))
            return "expected the cells of an array formula as [A1:A5]";
        fills = true;
        line = trimmed(line.substr(end + 1));
    }
    const std::size_t at = joint_of(line);
    if (at == std::string_view::npos) return "expected \" = \", \" ~ \" or \" ! \" and what comes out";
    const char sign = line[at + 1];
    std::string_view promise = trimmed(line.substr(at + 3));

    const Formula formula = book_.read(line.substr(0, at));
    const Value result = book_.look_up(book_.evaluate(formula, caller));
    const ErrorClass* const error = last_error();
    const auto got = [&] {
        const bool failed = result.is_error() && error != nullptr;
        return "got " + shown(result) + (failed ? std::string(" ") + error->name : "");
    };

    if (sign == '!') {
        const std::string_view value = promise.substr(0, promise.find(' '));
        const std::string_view kind = trimmed(promise.substr(value.size()));
        std::uint16_t code = 0;
        if (sheet::match_error(value, code) != value.size()) return "\"" + std::string(value) + "\" is no error value";
        if (!result.is_error() || result.error() != code) return got();
        if (!kind.empty() && (error == nullptr || kind != error->name)) return got();
        return retrace(formula, caller, result);
    }
    double tolerance = 1e-12;
    if (sign == '~') {
        const std::size_t blank = promise.rfind(' ');
        const std::string_view text = blank == std::string_view::npos ? "" : promise.substr(blank + 1);
        const auto read = std::from_chars(text.data(), text.data() + text.size(), tolerance);
        if (text.empty() || read.ptr != text.data() + text.size()) return "expected a value and a tolerance";
        promise = trimmed(promise.substr(0, blank));
    }
    Value wanted;
    if (promise == "uncalculated")
        wanted = Value::uncalculated();
    else if (promise != "empty")
        wanted = evaluate(promise, Area(sheet::CellAddress{}));
    const bool holds = fills ? agree(spread(result, caller, true), spread(wanted, caller, false), tolerance)
                             : agree(result, wanted, tolerance);
    if (!holds) return got();
    return retrace(formula, caller, result);
}

namespace {

/// What is missing in the trace of a call that got its inputs: the function records its arguments first.
std::optional<std::string> unrecorded_arguments() {
    const auto starts = [](int item, std::string_view words) { return trace().text(item).starts_with(words); };
    for (int item = 2; item + 2 <= trace().count(); ++item)
        if (starts(item, "Inputs concluded for ") && !starts(item - 1, "Inputs\t") &&
            trace().text(item + 1).ends_with("\t\tFunction Call.") && !starts(item + 2, "Arguments\t"))
            return "the trace tells no arguments of " + std::string(trace().text(item + 1));
    return {};
}

/// What is wrong with the names of the arguments that a worksheet function's routine shows: they are those of its
/// declaration, in their order. Base is shown with Time, and of a repeated argument only what is given.
std::optional<std::string> misnamed_arguments() {
    const auto name_in = [](int item) { return trace().text(item).substr(0, trace().text(item).find('\t')); };
    for (int item = 2; item + 2 <= trace().count(); ++item) {
        if (!trace().text(item).starts_with("Inputs concluded for ") ||
            !trace().text(item + 2).starts_with("Arguments\t"))
            continue;
        const Function* const function = find_function(name_in(item + 1));
        if (function == nullptr) continue;
        int next = 0;
        const auto may_be_hidden = [&](int i) {
            return function->calls.kinds[i] == Kind::period_base ||
                   std::isdigit(static_cast<unsigned char>(std::string_view(function->args[i].name).back()));
        };
        const int level = trace().level(item + 2); // of an item is that of the next one
        for (int shown = item + 3; shown <= trace().count() && trace().level(shown - 1) == level; ++shown) {
            const std::string_view name = name_in(shown);
            while (next < function->arity() && name != function->args[next].name && may_be_hidden(next)) ++next;
            if (next == function->arity() || name != function->args[next].name)
                return std::string(function->name) + " shows an argument \"" + std::string(name) + "\" where it has " +
                       (next == function->arity() ? "none" : function->args[next].name);
            ++next;
        }
        while (next < function->arity() && may_be_hidden(next)) ++next;
        if (next < function->arity())
            return std::string(function->name) + " does not show its argument " + function->args[next].name;
    }
    return {};
}

/// What is wrong where the trace of a call that has one value ends: whatever ended the calculation, its blocks are
/// closed.
std::optional<std::string> open_block() {
    const int last = trace().count();
    if (last < 2 || !trace().text(last).starts_with("Return Value\t") || trace().level(last - 1) == 1) return {};
    return "the trace leaves a block open or closes one twice at " + std::string(trace().text(last - 1));
}

} // namespace

std::optional<std::string> Cases::retrace(const Formula& formula, const Area& caller, const Value& result) {
    if (formula.is_volatile || formula.functions.empty()) return {};
    trace().TraceStart();
    const Value traced = book_.look_up(book_.evaluate(formula, caller));
    std::optional<std::string> fault = unrecorded_arguments();
    if (!fault) fault = misnamed_arguments();
    if (!fault) fault = open_block();
    trace().TraceShow();
    if (fault) return fault;
    if (traced.identical(result)) return {};
    return "with the trace on " + shown(traced) + ", with it off " + shown(result);
}

} // namespace qx::test
