#include "hosts/sheet/calculator.h"

#include "addin/frame.h"
#include "core/errors.h"
#include "hosts/sheet/text.h"
#include "hosts/sheet/workbook.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace qx::sheet {

namespace {

constexpr std::size_t stack_budget = 512 * 1024;
/// The most cells of a reference that become an array in memory.
constexpr std::uint64_t largest_array = 4'000'000;
/// A list of so many cells is not handed to a function of the library, nor one of more rows.
constexpr std::uint64_t too_many_cells = 1'000'000;
constexpr std::uint32_t largest_argument_side = 65535;

/// True if an array of this shape is more than a formula may work on.
bool too_large(std::uint32_t rows, std::uint32_t columns) { return std::uint64_t{rows} * columns > largest_array; }

/// True if a list of this shape is refused before it is copied for a function of the library.
bool is_refused(std::uint32_t rows, std::uint32_t columns) {
    return rows > largest_argument_side || std::uint64_t{rows} * columns >= too_many_cells;
}

std::uint32_t height(const Value& value) { return value.is(Type::array) ? value.rows() : 1; }
std::uint32_t width(const Value& value) { return value.is(Type::array) ? value.columns() : 1; }

/// The values of the stack of one formula, destroyed with it.
class Stack {
  public:
    Stack(Arena& arena, std::size_t depth) : bottom_(arena.take<Value>(depth)), top_(bottom_) {}
    Stack(const Stack&) = delete;
    Stack& operator=(const Stack&) = delete;
    ~Stack() { std::destroy(bottom_, top_); }

    void push(Value value) { new (top_++) Value(std::move(value)); }
    /// Pushes what make() returns, made in its place: a value written in parts and at once copied whole is slow.
    template <class Make>
    void push_made(Make make) {
        new (top_++) Value(make());
    }
    void drop(int count = 1) {
        std::destroy(top_ - count, top_);
        top_ -= count;
    }
    /// Replaces the topmost values by one.
    void reduce(int count, Value value) {
        drop(count);
        push(std::move(value));
    }
    Value& top(int below = 0) { return top_[-1 - below]; }
    Value* last(int count) { return top_ - count; }
    Value& at(std::uint32_t place) { return bottom_[place]; }

  private:
    Value* bottom_;
    Value* top_;
};

} // namespace

// --- Coercions ------------------------------------------------------------------------------------------------------

namespace {

/// A string for a message, cut if it is long.
std::string quoted(std::string_view text) {
    constexpr std::size_t most = 40;
    const std::size_t end = character_offset(text, most);
    return '"' + valid_utf8(text.substr(0, end)) + (end < text.size() ? "...\"" : "\"");
}

} // namespace

bool to_number(const Value& value, double& number, Value& error) {
    switch (value.type()) {
    case Type::number:
        number = value.number();
        return true;
    case Type::boolean:
        number = value.boolean() ? 1.0 : 0.0;
        return true;
    case Type::blank:
    case Type::missing:
        number = 0.0;
        return true;
    case Type::text:
        if (const auto read = read_number(value.text())) {
            number = read->value;
            return true;
        }
        break;
    case Type::error:
        error = value;
        return false;
    default:
        break;
    }
    error = value.is_text() ? Value::error(xlerrValue, quoted(value.text()) + " is not a number")
                            : Value::error(xlerrValue, "a single value is expected, not an array");
    return false;
}

bool to_truth(const Value& value, bool& truth, Value& error) {
    if (value.is(Type::boolean)) {
        truth = value.boolean();
        return true;
    }
    if (value.is_text()) {
        truth = equal_ignoring_case(value.text(), "TRUE");
        if (truth || equal_ignoring_case(value.text(), "FALSE")) return true;
        error = Value::error(xlerrValue, quoted(value.text()) + " is neither TRUE nor FALSE");
        return false;
    }
    double number = 0.0;
    if (!to_number(value, number, error)) return false;
    truth = number != 0.0;
    return true;
}

Value to_text(const Value& value) { return value.is_text() ? value : Value::text(display_text(value)); }

namespace {

int rank(const Value& value) { return value.is(Type::boolean) ? 3 : value.is_text() ? 2 : 1; }

} // namespace

int compare(const Value& a, const Value& b) {
    if (a.is_blank() && b.is_blank()) return 0;
    const int left = a.is_blank() ? rank(b) : rank(a);
    const int right = b.is_blank() ? left : rank(b);
    if (left != right) return left < right ? -1 : 1;
    switch (left) {
    case 1: {
        const double x = a.is_blank() ? 0.0 : a.number(), y = b.is_blank() ? 0.0 : b.number();
        return same_number(x, y) ? 0 : x < y ? -1 : 1;
    }
    case 2:
        return compare_ignoring_case(a.is_blank() ? std::string_view() : a.text(),
                                     b.is_blank() ? std::string_view() : b.text());
    default:
        return (!a.is_blank() && a.boolean()) - (!b.is_blank() && b.boolean());
    }
}

const Value& Calculator::operand(const Value& value) {
    return value.is(Type::area) && value.area().is_cell() ? book_.read_cell(value.area().first()) : value;
}

Value Calculator::single(const Value& value) {
    if (value.is(Type::area) && value.area().is_cell()) return book_.read_cell(value.area().first());
    return value;
}

Value Calculator::looked_up(const Value& value) {
    if (!value.is(Type::area)) return value;
    const Area& area = value.area();
    if (area.is_cell()) return book_.read_cell(area.first());
    if (too_large(area.rows(), area.columns())) return Value::error(xlerrNum);
    Value array = Value::array(area.rows(), area.columns());
    book_.grid(area.sheet).visit(area, [&](std::uint32_t row, std::uint32_t column, Cell& cell) {
        array.cell(row - area.first_row, column - area.first_column) = book_.read_cell(cell);
        return true;
    });
    return array;
}

Value Calculator::element(const Value& value, std::uint32_t row, std::uint32_t column) {
    if (!value.is(Type::array)) return value;
    if (value.rows() == 1) row = 0;
    if (value.columns() == 1) column = 0;
    if (row >= value.rows() || column >= value.columns()) return Value::error(xlerrNA);
    return value.cell(row, column);
}

// --- Operators ------------------------------------------------------------------------------------------------------

namespace {

/// A date and a number of days make a date. A date minus a number that comes out before 1910, the first year of the
/// library's dates, is the days from a date that was entered as a number.
bool makes_date(Code code, const Value& a, const Value& b, double result) {
    constexpr double first_date = 3654.0;
    if (code == Code::add) return a.is_date() != b.is_date();
    return code == Code::subtract && a.is_date() && !b.is_date() && result >= first_date;
}

Value arithmetic(Code code, double a, double b) {
    switch (code) {
    case Code::add:
        return number_or_error(a + b);
    case Code::subtract:
        return number_or_error(a - b);
    case Code::multiply:
        return number_or_error(a * b);
    case Code::divide:
        return b == 0.0 ? Value::error(xlerrDiv0, "division by zero") : number_or_error(a / b);
    default:
        return raised(a, b);
    }
}

} // namespace

Value raised(double base, double exponent) {
    if (base == 0.0 && exponent == 0.0) return Value::error(xlerrNum);
    if (base == 0.0 && exponent < 0.0) return Value::error(xlerrDiv0);
    return number_or_error(std::pow(base, exponent));
}

Value Calculator::apply_single(Code code, const Value& a, const Value& b) {
    if (code <= Code::power) { // the error of the left one comes first, also that of not being a number
        double x = 0.0, y = 0.0;
        Value error;
        if (!to_number(a, x, error) || !to_number(b, y, error)) return error;
        const Value result = arithmetic(code, x, y);
        return result.is_number() && makes_date(code, a, b, result.number()) ? Value::date(result.number()) : result;
    }
    if (a.is_error()) return a;
    if (b.is_error()) return b;
    switch (code) {
    case Code::equal:
        return Value::boolean(compare(a, b) == 0);
    case Code::unequal:
        return Value::boolean(compare(a, b) != 0);
    case Code::less:
        return Value::boolean(compare(a, b) < 0);
    case Code::at_most:
        return Value::boolean(compare(a, b) <= 0);
    case Code::greater:
        return Value::boolean(compare(a, b) > 0);
    case Code::at_least:
        return Value::boolean(compare(a, b) >= 0);
    default: {
        std::string text(to_text(a).text());
        text += to_text(b).text();
        return text.size() > longest_text ? Value::error(xlerrValue, "the text is too long") : Value::text(text);
    }
    }
}

Value Calculator::apply(Code code, const Value& a, const Value& b) {
    if (!a.is_many() && !b.is_many()) return apply_single(code, single(a), single(b));
    Value left = looked_up(a), right = looked_up(b);
    if (left.is_error()) return left;
    if (right.is_error()) return right;
    const std::uint32_t rows = std::max(height(left), height(right)), columns = std::max(width(left), width(right));
    if (too_large(rows, columns)) return Value::error(xlerrNum);
    Value result = Value::array(rows, columns);
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::uint32_t column = 0; column < columns; ++column)
            result.cell(row, column) = apply_single(code, element(left, row, column), element(right, row, column));
    return result;
}

Value Calculator::sign(Code code, const Value& value) {
    if (code == Code::plus) return value;
    return code == Code::percent ? apply(Code::divide, value, Value::number(100.0))
                                 : apply(Code::multiply, value, Value::number(-1.0));
}

Value Calculator::range_between(const Value& a, const Value& b) {
    if (a.is_error()) return a;
    if (b.is_error()) return b;
    if (!a.is(Type::area) || !b.is(Type::area) || a.area().sheet != b.area().sheet) return Value::error(xlerrRef);
    const Area &p = a.area(), &q = b.area();
    return Value::reference({p.sheet, std::min(p.first_row, q.first_row), std::min(p.first_column, q.first_column),
                             std::max(p.last_row, q.last_row), std::max(p.last_column, q.last_column)});
}

/// Of a range the cell in the row or the column of a cell, and of an array, if wanted, the first item.
Value Calculator::intersected(const Value& value, CellAddress cell, bool arrays) {
    if (value.is(Type::array)) return arrays ? value.cell(0, 0) : value;
    if (!value.is(Type::area)) return value;
    const Area& area = value.area();
    const bool in_row = cell.row >= area.first_row && cell.row <= area.last_row;
    const bool in_column = cell.column >= area.first_column && cell.column <= area.last_column;
    if (area.is_cell()) return value;
    if (area.rows() > 1 && area.columns() == 1 && in_row)
        return Value::reference(Area(CellAddress{cell.row, area.first_column, area.sheet}));
    if (area.columns() > 1 && area.rows() == 1 && in_column)
        return Value::reference(Area(CellAddress{area.first_row, cell.column, area.sheet}));
    if (in_row && in_column) return Value::reference(Area(CellAddress{cell.row, cell.column, area.sheet}));
    return Value::error(xlerrValue, "the formula is beside no cell of " + address_text(area));
}

Value Calculator::spilled(const Value& value) {
    if (value.is_error()) return value;
    if (!value.is(Type::area) || !value.area().is_cell()) return Value::error(xlerrRef, "# stands after one cell");
    const CellAddress cell = value.area().first();
    const Value& shown = book_.read_cell(cell); // calculated, so that its extent is known
    if (shown.is_error() && shown.error() == error_spill) return shown;
    const Area area = book_.filled_by(cell);
    if (book_.formula(cell) == nullptr || !(area.first() == cell))
        return Value::error(xlerrRef, address_text(cell) + " fills no other cells");
    return Value::reference(area);
}

Value Calculator::choose(const Value& condition, const Value& yes, const Value& no) {
    const Value tests = looked_up(condition), left = looked_up(yes), right = looked_up(no);
    const std::uint32_t rows = std::max({height(tests), height(left), height(right)});
    const std::uint32_t columns = std::max({width(tests), width(left), width(right)});
    if (too_large(rows, columns)) return Value::error(xlerrNum);
    Value result = Value::array(rows, columns);
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::uint32_t column = 0; column < columns; ++column) {
            bool truth = false;
            Value& cell = result.cell(row, column);
            if (to_truth(element(tests, row, column), truth, cell)) cell = element(truth ? left : right, row, column);
        }
    return result;
}

Value Calculator::replace_errors(const Value& value, const Value& instead, bool only_na) {
    const Value left = looked_up(value), right = looked_up(instead);
    const std::uint32_t rows = std::max(height(left), height(right)), columns = std::max(width(left), width(right));
    if (too_large(rows, columns)) return Value::error(xlerrNum);
    Value result = Value::array(rows, columns);
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::uint32_t column = 0; column < columns; ++column) {
            Value& cell = result.cell(row, column);
            cell = element(left, row, column);
            if (cell.is_error() && (!only_na || cell.error() == xlerrNA)) cell = element(right, row, column);
        }
    return result;
}

// --- The run of a formula -------------------------------------------------------------------------------------------

Calculator::Entry::Entry(Calculator& calculator)
    : calculator_(calculator), former_base_(calculator.stack_base_), former_host_(set_host(&calculator.host_)) {
    if (former_base_ == nullptr) calculator.stack_base_ = reinterpret_cast<const char*>(this);
}

Calculator::Entry::~Entry() {
    calculator_.stack_base_ = former_base_;
    set_host(former_host_);
}

std::size_t Calculator::stack_used() const {
    const char here = 0;
    const std::ptrdiff_t used = stack_base_ - &here;
    return static_cast<std::size_t>(used < 0 ? -used : used);
}

void Calculator::check_stack(Node& node) {
    if (stack_used() > stack_budget) throw TooDeep{&node};
}

int Calculator::stack_left(int most) const {
    constexpr std::size_t smallest_stack = 1 << 20; // what a thread has at least, as a rule
    const std::size_t used = stack_used();
    return used >= smallest_stack
               ? 0
               : static_cast<int>(std::min<std::size_t>(smallest_stack - used, static_cast<std::size_t>(most)));
}

namespace {

/// The everyday case: two numbers, neither of them a date, and a finite result.
inline bool both_numbers(Code code, const Value& a, const Value& b, double& result) {
    if (!a.is_number() || !b.is_number() || a.is_date() || b.is_date()) return false;
    const double x = a.number(), y = b.number();
    switch (code) {
    case Code::add:
        result = x + y;
        break;
    case Code::subtract:
        result = x - y;
        break;
    case Code::multiply:
        result = x * y;
        break;
    case Code::divide:
        if (y == 0.0) return false;
        result = x / y;
        break;
    case Code::equal:
        result = same_number(x, y);
        return true;
    case Code::unequal:
        result = !same_number(x, y);
        return true;
    case Code::less:
        result = x < y && !same_number(x, y);
        return true;
    case Code::at_most:
        result = x <= y || same_number(x, y);
        return true;
    case Code::greater:
        result = x > y && !same_number(x, y);
        return true;
    case Code::at_least:
        result = x >= y || same_number(x, y);
        return true;
    default:
        return false;
    }
    return result - result == 0.0;
}

} // namespace

Value Calculator::run(const Formula& formula, const Area& caller) {
    Arena::Scope scope(arena_);
    Stack stack(arena_, formula.depth);
    char* const arrays = arena_.take<char>(formula.choices); // of each open choice: whether both branches are taken
    int open = -1;
    Stack locals(arena_, formula.locals);
    for (std::uint32_t i = 0; i < formula.locals; ++i) locals.push({});
    struct Caller { // of this formula, and then of the one that asked for it again
        const Area*& current;
        const Area* const former;
        ~Caller() { current = former; }
    } restored{caller_, std::exchange(caller_, &caller)};

    const Step* const steps = formula.steps.data();
    const std::size_t end = formula.steps.size();
    for (std::size_t at = 0; at < end; ++at) {
        const Step& step = steps[at];
        switch (step.code) {
        case Code::constant:
            stack.push_made([&] { return formula.constants[step.index]; });
            break;
        case Code::reference:
            stack.push_made([&] { return Value::reference(formula.areas[step.index]); });
            break;
        case Code::name:
            stack.push(book_.read_name(step.index));
            break;
        case Code::plus:
        case Code::minus:
        case Code::percent:
            stack.reduce(1, sign(step.code, stack.top()));
            break;
        case Code::add:
        case Code::subtract:
        case Code::multiply:
        case Code::divide:
        case Code::power:
        case Code::concatenate:
        case Code::equal:
        case Code::unequal:
        case Code::less:
        case Code::at_most:
        case Code::greater:
        case Code::at_least: {
            const Value &left = operand(stack.top(1)), &right = operand(stack.top());
            double result = 0.0;
            if (both_numbers(step.code, left, right, result)) {
                stack.drop(2);
                if (step.code <= Code::power)
                    stack.push_made([&] { return Value::number(result); });
                else
                    stack.push_made([&] { return Value::boolean(result != 0.0); });
            } else {
                stack.reduce(2, apply(step.code, stack.top(1), stack.top()));
            }
            break;
        }
        case Code::set_local:
            locals.at(step.index) = std::move(stack.top());
            stack.drop();
            break;
        case Code::local:
            stack.push(locals.at(step.index));
            break;
        case Code::intersect:
            if (stack.top().is_many()) stack.reduce(1, intersected(stack.top(), caller.first(), step.count == 0));
            break;
        case Code::spill:
            stack.reduce(1, spilled(stack.top()));
            break;
        case Code::range:
            stack.reduce(2, range_between(stack.top(1), stack.top()));
            break;
        case Code::builtin:
            stack.reduce(step.count, call(*formula.builtins[step.index], stack.last(step.count), step.count));
            break;
        case Code::function:
            stack.reduce(step.count, call(*formula.functions[step.index], stack.last(step.count), step.count));
            break;
        case Code::unknown:
            stack.reduce(step.count, Value::error(xlerrName, formula.unknown[step.index]));
            break;
        case Code::if_then: {
            arrays[++open] = stack.top().is_many();
            if (arrays[open]) break;
            const Value condition = single(stack.top());
            stack.drop();
            bool truth = false;
            Value error;
            if (!to_truth(condition, truth, error)) {
                stack.push(error);
                at = steps[step.index - 1].index - 1; // the if_end
            } else if (!truth) {
                at = step.index - 1;
            }
            break;
        }
        case Code::if_else:
            if (!arrays[open]) at = step.index - 1;
            break;
        case Code::if_end:
            if (arrays[open--]) stack.reduce(3, choose(stack.top(2), stack.top(1), stack.top()));
            break;
        case Code::if_error: {
            arrays[++open] = stack.top().is_many();
            if (arrays[open]) break;
            Value value = single(stack.top());
            if (value.is_error() && (step.count == 0 || value.error() == xlerrNA))
                stack.drop();
            else
                at = step.index - 1;
            break;
        }
        case Code::error_end:
            if (arrays[open--]) stack.reduce(2, replace_errors(stack.top(1), stack.top(), step.count != 0));
            break;
        }
    }
    return std::move(stack.top());
}

// --- Built-in functions ---------------------------------------------------------------------------------------------

Value Calculator::call(const Builtin& builtin, Value* arguments, int count) {
    std::uint32_t rows = 0, columns = 0;
    for (int i = 0; i < count; ++i) {
        if (builtin.kind(i) == 'r' || !arguments[i].is_many()) continue;
        arguments[i] = looked_up(arguments[i]);
        if (arguments[i].is_error()) return arguments[i];
        rows = std::max(rows, arguments[i].rows());
        columns = std::max(columns, arguments[i].columns());
    }
    if (rows == 0) return call_single(builtin, arguments, count);

    Arena::Scope scope(arena_);
    Stack elements(arena_, static_cast<std::size_t>(count));
    if (too_large(rows, columns)) return Value::error(xlerrNum);
    Value result = Value::array(rows, columns);
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::uint32_t column = 0; column < columns; ++column) {
            for (int i = 0; i < count; ++i)
                elements.push(builtin.kind(i) == 'r' ? arguments[i] : element(arguments[i], row, column));
            Value cell = call_single(builtin, elements.last(count), count);
            if (cell.is(Type::area)) cell = single(cell);
            if (cell.is_many()) cell = element(looked_up(cell), 0, 0);
            result.cell(row, column) = std::move(cell);
            elements.drop(count);
        }
    return result;
}

Value Calculator::call_single(const Builtin& builtin, Value* arguments, int count) {
    for (int i = 0; i < count; ++i) {
        char kind = builtin.kind(i);
        Value& value = arguments[i];
        if (kind == 'r') continue;
        if (value.is(Type::area)) value = single(value);
        if (kind == 'e') continue;
        if (value.is_error()) return value;
        if (kind == 'N' || kind == 'B') { // an empty argument takes the preset
            if (value.is(Type::missing)) continue;
            kind = kind == 'N' ? 'n' : 'b';
        }
        Value error;
        switch (kind) {
        case 'n': {
            double number = 0.0;
            if (value.is_number()) break;
            if (!to_number(value, number, error)) return error;
            value = Value::number(number);
            break;
        }
        case 't':
            if (!value.is_text()) value = to_text(value);
            break;
        case 'b': {
            bool truth = false;
            if (value.is(Type::boolean)) break;
            if (!to_truth(value, truth, error)) return error;
            value = Value::boolean(truth);
            break;
        }
        default:
            break;
        }
    }
    Value result = builtin.body({*this, arguments, count});
    // An error that a function makes and none of its arguments brings says which function that was.
    if (result.is_error() && result.reason().empty() && !result.has_origin())
        result = Value::error(result.error(), std::string(builtin.name) + ": " + error_meaning(result.error()));
    return result;
}

// --- Functions of the library
// -----------------------------------------------------------------------------------------

namespace {

/// Builds the cell of a number in place, since a copy would wait for its parts to be stored. False for any other value.
inline bool put_number(OPER& cell, const Value& value) {
    if (!value.is_number()) return false;
    ::new (&cell) OPER(number_cell(value.number()));
    return true;
}

} // namespace

void Calculator::to_oper(OPER& cell, const Value& value) {
    if (put_number(cell, value)) return;
    switch (value.type()) {
    case Type::boolean:
        cell = bool_cell(value.boolean());
        return;
    case Type::error:
        cell = error_cell(value.error() <= xlerrNA ? value.error() : xlerrValue);
        return;
    case Type::text:
        cell = nil_cell();
        cell.val.str = value.counted_text();
        cell.xltype = xltypeStr;
        return;
    case Type::missing:
        cell = missing_cell();
        return;
    case Type::area:
        to_oper(cell, value.area());
        return;
    case Type::array: {
        if (is_refused(value.rows(), value.columns())) {
            cell = error_cell(xlerrNum);
            return;
        }
        OPER* const items = arena_.take<OPER>(std::size_t{value.rows()} * value.columns());
        for (std::uint32_t row = 0, i = 0; row < value.rows(); ++row)
            for (std::uint32_t column = 0; column < value.columns(); ++column, ++i) {
                const Value& item = value.cell(row, column);
                if (item.is_many()) // cannot be
                    items[i] = nil_cell();
                else if (!put_number(items[i], item))
                    to_oper(items[i], item);
            }
        cell = array_cell(items, static_cast<int>(value.rows()), static_cast<int>(value.columns()));
        return;
    }
    default:
        cell = nil_cell();
        return;
    }
}

/// Of a whole column or row only what the sheet uses is meant.
Area Calculator::meant(Area area) {
    const Grid& grid = book_.grid(area.sheet);
    if (area.rows() == max_rows) area.last_row = std::max(area.first_row, std::max(grid.rows(), 1u) - 1);
    if (area.columns() == max_columns)
        area.last_column =
            static_cast<std::uint16_t>(std::max<std::uint32_t>(area.first_column, std::max(grid.columns(), 1u) - 1));
    return area;
}

void Calculator::to_oper(OPER& cell, const Area& given) {
    if (given.is_cell()) return to_oper(cell, book_.read_cell(given.first()));
    const Area area = meant(given);
    if (is_refused(area.rows(), area.columns())) {
        cell = error_cell(xlerrNum);
        return;
    }
    const std::size_t cells = std::size_t{area.rows()} * area.columns();
    OPER* const items = arena_.take<OPER>(cells);
    static constexpr OPER nil = nil_cell();
    std::fill_n(items, cells, nil);
    book_.grid(area.sheet).visit(area, [&](std::uint32_t row, std::uint32_t column, Cell& found) {
        OPER& item = items[std::size_t{row - area.first_row} * area.columns() + column - area.first_column];
        const Value& value = book_.read_cell(found);
        if (!put_number(item, value)) to_oper(item, value);
        return true;
    });
    cell = array_cell(items, static_cast<int>(area.rows()), static_cast<int>(area.columns()));
}

bool Calculator::to_reference(OPER& cell, const Area& area) {
    XLREF rectangle;
    if (!to_rectangle(area, rectangle)) {
        cell = error_cell(xlerrRef);
        return false;
    }
    if (area.sheet == caller().sheet) {
        cell = sref_cell(rectangle);
        return true;
    }
    XLMREF* const list = arena_.take<XLMREF>(1);
    list->count = 1;
    list->reftbl[0] = rectangle;
    cell = nil_cell();
    cell.val.mref = {list, std::uintptr_t{area.sheet} + 1};
    cell.xltype = xltypeRef;
    return true;
}

void Calculator::require(const Area& area) {
    book_.grid(area.sheet).visit(area, [&](std::uint32_t, std::uint32_t, Cell& cell) {
        book_.read_cell(cell);
        return true;
    });
}

namespace {

/// The numbers of a result marked as dates.
Value as_dates(Value value) {
    if (value.is_number()) return Value::date(value.number());
    if (!value.is(Type::array)) return value;
    for (std::uint32_t row = 0; row < value.rows(); ++row)
        for (std::uint32_t column = 0; column < value.columns(); ++column)
            if (Value& cell = value.cell(row, column); cell.is_number()) cell = Value::date(cell.number());
    return value;
}

} // namespace

/// The variable at which the last call failed. Only a traced call knows it, so the first failures of a recalculation
/// are called once more, traced into nothing.
std::string Calculator::failed_variable(const Function& function, OPER* const* cells) {
    constexpr int most = 1000;
    constexpr long long longest = 200; // cells of a list: the trace of a long one takes longer than its name is worth
    if (!tracing) {
        for (int i = 0; i < function.arity(); ++i)
            if (cells[i]->type() == xltypeMulti &&
                static_cast<long long>(cells[i]->val.array.rows) * cells[i]->val.array.columns > longest)
                return {};
        if (function.is_volatile || CalcMonOn || explanations_ == most) return {};
        ++explanations_;
        clsTrace2& the_trace = trace();
        const clsTrace2::Viewer viewer = the_trace.viewer;
        the_trace.viewer = nullptr;
        the_trace.TraceOn();
        in_function_ = true;
        perform(function, cells);
        in_function_ = false;
        the_trace.TraceShow(); // ends it and empties the store
        the_trace.viewer = viewer;
        if (last_error() == nullptr) return {};
    }
    return last_error_context().variable();
}

/// The error in which a function of the library ended, with its cause: an error among the arguments, else the words
/// of the error's class with the variable, if that is known, or the function.
Value Calculator::explained(const Function& function, std::uint16_t code, OPER* const* cells, const Value* arguments,
                            int count) {
    const ErrorClass* const kind = last_error();
    const auto refused = [&](const Value& list) {
        if (list.is(Type::array)) return is_refused(list.rows(), list.columns());
        const Area area = meant(list.area());
        return is_refused(area.rows(), area.columns());
    };
    Value cause;
    for (int i = 0; i < count && !cause.is_error(); ++i) {
        const Value& value = arguments[i];
        if (value.is_error()) {
            cause = value;
        } else if (code == xlerrNum && value.is_many() && function.calls.kinds[i] != Kind::reference &&
                   refused(value)) {
            return Value::error(code, "a list of a million cells or of more than 65,535 rows (" +
                                          std::string(function.args[i].name) + ")");
        } else if (value.is(Type::area)) {
            book_.grid(value.area().sheet).visit(value.area(), [&](std::uint32_t, std::uint32_t, Cell& cell) {
                if (const Value* const known = book_.peek(cell); known != nullptr && known->is_error()) cause = *known;
                return !cause.is_error();
            });
        } else if (value.is(Type::array)) {
            for (std::uint32_t row = 0; row < value.rows() && !cause.is_error(); ++row)
                for (std::uint32_t column = 0; column < value.columns() && !cause.is_error(); ++column)
                    cause = value.cell(row, column);
        }
    }
    if (cause.is_error() && cause.error() == code) return cause;
    if (kind == nullptr) return Value::error(code, std::string(function.name) + ": " + error_meaning(code));
    std::string_view words = kind->text;
    if (const std::size_t colon = words.find(": "); words.starts_with("Error ") && colon != std::string_view::npos)
        words.remove_prefix(colon + 2);
    while (words.ends_with(' ')) words.remove_suffix(1);
    const std::string variable = failed_variable(function, cells);
    Value error = Value::error(code, std::string(words) + " (" + (variable.empty() ? function.name : variable) + ")");
    if (cause.is_error() && cause.has_origin()) error.set_origin(cause.origin());
    return error;
}

Value Calculator::call(const Function& function, const Value* arguments, int count) {
    if (in_function_)
        return Value::error(xlerrValue, "a function's own formula cannot call another function of the library");
    Arena::Scope scope(arena_);
    const int arity = function.arity();
    OPER* const cells = arena_.take<OPER>(static_cast<std::size_t>(arity));
    OPER** const pointers = arena_.take<OPER*>(static_cast<std::size_t>(arity));
    for (int i = 0; i < arity; ++i) {
        pointers[i] = &cells[i];
        if (i >= count)
            cells[i] = missing_cell();
        else if (function.calls.kinds[i] == Kind::reference && arguments[i].is(Type::area))
            to_reference(cells[i], arguments[i].area());
        else
            to_oper(cells[i], arguments[i]);
    }
    Area last;
    for (bool again = false;; again = true) {
        has_uncalculated_ = false;
        {
            const CalculationLock lock; // until the result has been read
            in_function_ = true;
            const OPER* const result = perform(function, pointers);
            in_function_ = false;
            if (result != nullptr) {
                if (result->type() == xltypeErr)
                    return explained(function, result->val.err, pointers, arguments, count);
                return function.calls.gives_dates ? as_dates(from_oper(*result, book_)) : from_oper(*result, book_);
            }
        }
        if (!has_uncalculated_ || (again && uncalculated_ == last)) book_.not_ready();
        last = uncalculated_;
        require(last);
    }
}

Value from_oper(const OPER& cell, const Workbook& book) {
    switch (cell.type()) {
    case xltypeNum:
        return number_or_error(cell.val.num);
    case xltypeInt:
        return Value::number(cell.val.w);
    case xltypeBool:
        return Value::boolean(cell.val.xbool != 0);
    case xltypeErr:
        return Value::error(cell.val.err);
    case xltypeStr:
        if (cell.val.str == nullptr) return {};
        return Value::text({reinterpret_cast<const char*>(cell.val.str) + 1, cell.val.str[0]});
    case xltypeMulti: {
        const std::uint32_t rows = cell.val.array.rows, columns = cell.val.array.columns;
        if (rows == 0 || columns == 0 || cell.val.array.lparray == nullptr) return {};
        Value array = Value::array(rows, columns);
        for (std::uint32_t row = 0; row < rows; ++row)
            for (std::uint32_t column = 0; column < columns; ++column) {
                const OPER& item = cell.val.array.lparray[std::size_t{row} * columns + column];
                Value* const blank = &array.cell(row, column); // holds nothing that would need a destructor
                if (item.type() == xltypeNum)
                    ::new (blank) Value(number_or_error(item.val.num));
                else if (item.type() != xltypeMulti)
                    ::new (blank) Value(from_oper(item, book));
            }
        return array;
    }
    case xltypeSRef:
    case xltypeRef: {
        const bool here = cell.type() == xltypeSRef;
        if (!here && (cell.val.mref.lpmref == nullptr || cell.val.mref.lpmref->count < 1 || cell.val.mref.idSheet < 1 ||
                      cell.val.mref.idSheet > book.sheet_count()))
            return Value::error(xlerrRef);
        const XLREF& r = here ? cell.val.sref.ref : cell.val.mref.lpmref->reftbl[0];
        if (r.rwFirst > r.rwLast || r.colFirst > r.colLast) return Value::error(xlerrRef);
        const std::uint16_t sheet = here ? book.caller_sheet() : static_cast<std::uint16_t>(cell.val.mref.idSheet - 1);
        return Value::reference({sheet, r.rwFirst, r.colFirst, r.rwLast, r.colLast});
    }
    default:
        return {};
    }
}

} // namespace qx::sheet
