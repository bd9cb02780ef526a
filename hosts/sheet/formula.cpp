#include "hosts/sheet/formula.h"

#include "addin/cells.h"
#include "hosts/sheet/builtins.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <vector>

namespace qx::sheet {

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_letter(char c) { return static_cast<char>(c | 0x20) >= 'a' && static_cast<char>(c | 0x20) <= 'z'; }
bool begins_word(char c) { return is_letter(c) || c == '_' || c == '\\' || static_cast<unsigned char>(c) >= 0x80; }
bool in_word(char c) { return begins_word(c) || is_digit(c) || c == '.' || c == '?'; }

struct Operator {
    std::string_view sign;
    Code code;
    int rank;
};
// Longer signs first. A higher rank binds tighter; signs in front of a value bind tighter than all of these.
constexpr Operator operators[] = {
    {"<=", Code::at_most, 1}, {">=", Code::at_least, 1}, {"<>", Code::unequal, 1},    {"=", Code::equal, 1},
    {"<", Code::less, 1},     {">", Code::greater, 1},   {"&", Code::concatenate, 2}, {"+", Code::add, 3},
    {"-", Code::subtract, 3}, {"*", Code::multiply, 4},  {"/", Code::divide, 4},      {"^", Code::power, 5},
};

/// One half of a reference: a cell, a column or a row, as far as the text gives them.
struct Corner {
    bool has_column = false, has_row = false;
    bool column_fixed = false, row_fixed = false; ///< with "$"
    std::uint32_t column = 0, row = 0;
    std::size_t length = 0;
};

/// The corner at the start of the text; length 0 if there is none. Letters without a row are a column.
Corner read_corner(std::string_view text) {
    Corner corner;
    std::size_t at = 0;
    std::uint32_t column = 0, row = 0;
    std::size_t letters = 0, figures = 0;
    const bool column_fixed = at < text.size() && text[at] == '$';
    std::size_t start = at + column_fixed;
    while (start + letters < text.size() && is_letter(text[start + letters]) && letters < 4)
        column = column * 26 + static_cast<std::uint32_t>((text[start + letters++] | 0x20) - 'a' + 1);
    if (letters > 0) at = start + letters;
    const bool row_fixed = at < text.size() && text[at] == '$';
    start = at + row_fixed;
    while (start + figures < text.size() && is_digit(text[start + figures]) && figures < 8)
        row = row * 10 + static_cast<std::uint32_t>(text[start + figures++] - '0');
    if (figures > 0) at = start + figures;
    if (letters > 3 || figures > 7 || (letters > 0 && (column > max_columns || column == 0)) ||
        (figures > 0 && (row > max_rows || row == 0)) || (letters == 0 && figures == 0))
        return corner;
    if (at < text.size() && (in_word(text[at]) || text[at] == '$' || text[at] == '(')) return corner;
    corner.has_column = letters > 0;
    corner.has_row = figures > 0;
    corner.column_fixed = column_fixed;
    corner.row_fixed = row_fixed;
    corner.column = column - 1;
    corner.row = row - 1;
    corner.length = at;
    return corner;
}

Area area_between(const Corner& a, const Corner& b, std::uint16_t sheet) {
    Area area;
    area.sheet = sheet;
    if (a.has_row) {
        area.first_row = std::min(a.row, b.row);
        area.last_row = std::max(a.row, b.row);
    } else {
        area.last_row = max_rows - 1;
    }
    if (a.has_column) {
        area.first_column = static_cast<std::uint16_t>(std::min(a.column, b.column));
        area.last_column = static_cast<std::uint16_t>(std::max(a.column, b.column));
    } else {
        area.last_column = static_cast<std::uint16_t>(max_columns - 1);
    }
    return area;
}

/// The reference at the start of the text; returns its length, 0 if there is none.
std::size_t match_area(std::string_view text, std::uint16_t sheet, Area& area) {
    const Corner first = read_corner(text);
    if (first.length == 0) return 0;
    if (first.length < text.size() && text[first.length] == ':') {
        const Corner second = read_corner(text.substr(first.length + 1));
        if (second.length > 0 && second.has_column == first.has_column && second.has_row == first.has_row) {
            area = area_between(first, second, sheet);
            return first.length + 1 + second.length;
        }
    }
    if (!first.has_column || !first.has_row) return 0;
    area = area_between(first, first, sheet);
    return first.length;
}

} // namespace

/// A formula while it is read.
struct FormulaDraft {
    std::vector<Step> steps;
    std::vector<Value> constants;
    std::vector<Area> areas;
    std::vector<const Builtin*> builtins;
    std::vector<const Function*> functions;
    std::vector<std::uint32_t> names;
    std::vector<std::string> unknown;
    std::uint32_t depth = 0, choices = 0, locals = 0;
    bool is_volatile = false;
    Fill fill = Fill::spill;
    std::string_view text;

    void clear() {
        steps.clear();
        constants.clear();
        areas.clear();
        builtins.clear();
        functions.clear();
        names.clear();
        unknown.clear();
        depth = choices = locals = 0;
        is_volatile = false;
    }

    /// The formula in one block: what has the strictest alignment first.
    Formula packed() {
        const auto bytes = [](const auto& list) { return list.size() * sizeof(list[0]); };
        std::size_t offset = 0;
        Formula formula;
        formula.block_ = static_cast<std::byte*>(::operator new(bytes(constants) + bytes(unknown) + bytes(builtins) +
                                                                bytes(functions) + bytes(areas) + bytes(steps) +
                                                                bytes(names) + text.size() + 1));
        const auto put = [&]<class T>(std::vector<T>& list) {
            T* const place = reinterpret_cast<T*>(formula.block_ + offset);
            std::uninitialized_move(list.begin(), list.end(), place);
            offset += bytes(list);
            return place;
        };
        formula.constants = {put(constants), constants.size()};
        formula.unknown = {put(unknown), unknown.size()};
        formula.builtins = {put(builtins), builtins.size()};
        formula.functions = {put(functions), functions.size()};
        formula.areas = {put(areas), areas.size()};
        formula.steps = {put(steps), steps.size()};
        formula.names = {put(names), names.size()};
        char* const characters = reinterpret_cast<char*>(formula.block_ + offset);
        std::copy(text.begin(), text.end(), characters);
        formula.text = std::string_view(characters, text.size());
        formula.depth = depth;
        formula.choices = choices;
        formula.locals = locals;
        formula.is_volatile = is_volatile;
        formula.fill = fill;
        return formula;
    }
};

Formula& Formula::operator=(Formula&& other) noexcept {
    std::swap(steps, other.steps);
    std::swap(constants, other.constants);
    std::swap(areas, other.areas);
    std::swap(builtins, other.builtins);
    std::swap(functions, other.functions);
    std::swap(names, other.names);
    std::swap(unknown, other.unknown);
    std::swap(text, other.text);
    std::swap(depth, other.depth);
    std::swap(choices, other.choices);
    std::swap(locals, other.locals);
    std::swap(is_volatile, other.is_volatile);
    std::swap(fill, other.fill);
    std::swap(block_, other.block_);
    return *this;
}

Formula::~Formula() {
    if (block_ == nullptr) return;
    std::destroy(constants.begin(), constants.end());
    std::destroy(unknown.begin(), unknown.end());
    ::operator delete(block_);
}

namespace {

class Reader {
  public:
    Reader(std::string_view text, Names& names, std::uint16_t sheet, Fill fill)
        : text_(text), names_(names), sheet_(sheet) {
        formula_.clear();
        formula_.fill = fill;
        formula_.text = text;
        const std::size_t equals = text.find_first_not_of(" \t\r\n");
        if (equals != std::string_view::npos && text[equals] == '=') {
            at_ = equals + 1;
            formula_.text = text.substr(at_);
        }
    }

    Formula read() {
        skip_blanks();
        if (at_ == text_.size()) fail("the formula is empty");
        expression(1);
        if (at_ < text_.size()) fail("unexpected " + here() + ", expected an operator or the end");
        return formula_.packed();
    }

  private:
    // --- Text ---------------------------------------------------------------------------------------------------

    char peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
    std::string_view rest() const { return text_.substr(at_); }
    void skip_blanks() {
        while (at_ < text_.size() &&
               (text_[at_] == ' ' || text_[at_] == '\t' || text_[at_] == '\r' || text_[at_] == '\n'))
            ++at_;
    }
    bool take(char c) {
        if (peek() != c || at_ >= text_.size()) return false;
        ++at_;
        skip_blanks();
        return true;
    }

    [[noreturn]] void fail(const std::string& message, std::size_t at) const {
        throw FormulaError(message, character_count(text_.substr(0, at)) + 1);
    }
    [[noreturn]] void fail(const std::string& message) const { fail(message, at_); }

    /// What is at the place where reading stopped, for a message.
    std::string here() const {
        if (at_ >= text_.size()) return "end of the formula";
        const std::size_t length = character_offset(rest(), 1);
        return "\"" + valid_utf8(rest().substr(0, length)) + "\"";
    }

    // --- Steps --------------------------------------------------------------------------------------------------

    std::size_t step(Code code, std::size_t count, std::size_t index, int growth) {
        formula_.steps.push_back({code, static_cast<std::uint16_t>(count), static_cast<std::uint32_t>(index)});
        waiting_ = static_cast<std::uint32_t>(static_cast<int>(waiting_) + growth);
        formula_.depth = std::max(formula_.depth, waiting_);
        return formula_.steps.size() - 1;
    }
    template <class T>
    static std::size_t keep(std::vector<T>& list, T item) {
        list.push_back(std::move(item));
        return list.size() - 1;
    }
    void constant(Value value) { step(Code::constant, 0, keep(formula_.constants, std::move(value)), +1); }
    std::uint32_t next() const { return static_cast<std::uint32_t>(formula_.steps.size()); }

    // --- Grammar ------------------------------------------------------------------------------------------------

    /// Values joined by operators of at least a rank, from left to right.
    void expression(int rank) {
        signed_value();
        for (;;) {
            const Operator* found = nullptr;
            for (const Operator& candidate : operators)
                if (rest().starts_with(candidate.sign)) {
                    found = &candidate;
                    break;
                }
            if (found == nullptr || found->rank < rank) return;
            at_ += found->sign.size();
            skip_blanks();
            intersect_operand();
            expression(found->rank + 1);
            intersect_operand();
            step(found->code, 0, 0, -1);
        }
    }

    /// Signs bind tighter than powers: -2^2 is 4.
    void signed_value() {
        std::size_t minuses = 0, signs = 0;
        for (; peek() == '-' || peek() == '+'; ++signs) {
            minuses += peek() == '-';
            ++at_;
            skip_blanks();
        }
        const bool single = peek() == '@';
        if (single) ++at_;
        skip_blanks();
        spilled_value();
        while (peek() == ':') {
            ++at_;
            skip_blanks();
            spilled_value();
            step(Code::range, 0, 0, -1);
        }
        if (single) step(Code::intersect, 0, 0, 0);
        if (peek() == '%' || signs > 0) intersect_operand();
        while (take('%')) step(Code::percent, 0, 0, 0);
        if (signs > 0 && minuses == 0) step(Code::plus, 0, 0, 0);
        // Two minuses turn a truth value into a number; more of them do no more.
        for (std::size_t i = minuses > 2 ? minuses % 2 + 2 : minuses; i > 0; --i) step(Code::minus, 0, 0, 0);
    }

    /// A value, perhaps with # behind it for the cells that its formula fills.
    void spilled_value() {
        value();
        while (take('#')) step(Code::spill, 0, 0, 0);
    }

    /// Where a formula fills one cell only, of a range the cell beside is meant.
    void intersect_operand() {
        if (formula_.fill != Fill::intersect || in_array_ > 0) return;
        const Step& last = formula_.steps.back();
        const bool may_be_range = last.code == Code::name || last.code == Code::range || last.code == Code::builtin ||
                                  (last.code == Code::reference && !formula_.areas[last.index].is_cell());
        if (may_be_range) step(Code::intersect, 1, 0, 0);
    }

    void value() {
        if (at_ >= text_.size()) fail("the formula ends where a value is expected");
        const char c = peek();
        if (c == '(') {
            nest();
            const std::size_t opened = at_;
            take('(');
            expression(1);
            if (!take(')')) fail_unclosed("bracket", opened);
            --nesting_;
            return;
        }
        if (c == '"') return constant(Value::text(quoted('"', "text")));
        if (c == '{') return array();
        if (c == '#') {
            constant(error_literal());
            return;
        }
        if (is_digit(c) || (c == '.' && is_digit(peek(1)))) {
            Area area; // 3:5 are rows
            if (const std::size_t length = match_area(rest(), sheet_, area); length > 0) return reference(area, length);
            constant(Value::number(number()));
            return;
        }
        if (c == '\'' || c == '!' || c == '[' || c == '$' || begins_word(c)) return named_thing();
        fail("unexpected " + here() + ", expected a value");
    }

    [[noreturn]] void fail_unclosed(const char* what, std::size_t opened) const {
        if (at_ < text_.size()) fail("unexpected " + here() + ", expected an operator or a closing bracket");
        fail(std::string("the ") + what + " opened at character " +
             std::to_string(character_count(text_.substr(0, opened)) + 1) + " is not closed");
    }

    void nest() {
        if (++nesting_ > deepest_nesting)
            fail("nested too deeply (more than " + std::to_string(deepest_nesting) + " levels)");
    }

    /// A string between quotes, of which doubled ones mean one.
    std::string quoted(char quote, const char* what) {
        const std::size_t opened = at_++;
        std::string text;
        for (;; ++at_) {
            if (at_ >= text_.size()) fail(std::string("the ") + what + " is not closed by a quote", opened);
            if (text_[at_] == quote && peek(1) != quote) break;
            if (text_[at_] == quote) ++at_;
            text += text_[at_];
        }
        ++at_;
        if (quote == '"') skip_blanks();
        return text;
    }

    double number() {
        const std::size_t start = at_;
        while (is_digit(peek())) ++at_;
        if (peek() == '.') ++at_;
        while (is_digit(peek())) ++at_;
        if ((peek() | 0x20) == 'e') {
            const std::size_t sign = peek(1) == '+' || peek(1) == '-';
            if (is_digit(peek(1 + sign))) {
                at_ += 1 + sign;
                while (is_digit(peek())) ++at_;
            }
        }
        if (in_word(peek())) fail("unexpected " + here() + " in a number");
        double x = 0.0;
        const std::string_view digits = text_.substr(start, at_ - start);
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), x);
        if (result.ec == std::errc::result_out_of_range) {
            const std::size_t exponent = digits.find_first_of("eE");
            if (exponent == std::string_view::npos || digits[exponent + 1] != '-')
                fail("the number is too large", start);
            x = 0.0;
        }
        skip_blanks();
        return x;
    }

    Value error_literal() {
        std::uint16_t code = 0;
        const std::size_t length = match_error(rest(), code);
        if (length == 0) fail("unknown error value");
        at_ += length;
        skip_blanks();
        return Value::error(code);
    }

    /// {1,2;3,4}: commas go across, semicolons down.
    void array() {
        const std::size_t opened = at_;
        take('{');
        std::vector<Value> cells;
        std::uint32_t rows = 1, columns = 0, width = 0;
        for (;;) {
            cells.push_back(array_item());
            ++width;
            if (take(',')) continue;
            if (columns == 0) columns = width;
            if (width != columns) fail("the rows of the array differ in length");
            if (take('}')) break;
            if (!take(';')) fail_unclosed("array", opened);
            ++rows;
            width = 0;
        }
        if (columns > max_columns || rows > max_rows) fail("the array is too large", opened);
        Value value = Value::array(rows, columns);
        for (std::uint32_t row = 0, i = 0; row < rows; ++row)
            for (std::uint32_t column = 0; column < columns; ++column) value.cell(row, column) = std::move(cells[i++]);
        constant(std::move(value));
    }

    Value array_item() {
        if (peek() == '"') return Value::text(quoted('"', "text"));
        if (peek() == '#') return error_literal();
        bool negative = false;
        if (peek() == '-' || peek() == '+') {
            negative = peek() == '-';
            ++at_;
            skip_blanks();
        } else if (begins_word(peek())) {
            for (const bool truth : {true, false}) {
                const std::string_view word = truth ? "TRUE" : "FALSE";
                if (!equal_ignoring_case(rest().substr(0, word.size()), word) || in_word(peek(word.size()))) continue;
                at_ += word.size();
                skip_blanks();
                return Value::boolean(truth);
            }
        }
        if (!is_digit(peek()) && !(peek() == '.' && is_digit(peek(1))))
            fail("unexpected " + here() + ", expected a number, text, TRUE, FALSE or an error value in the array");
        const double x = number();
        return Value::number(negative ? -x : x);
    }

    void reference(const Area& area, std::size_t length) {
        at_ += length;
        skip_blanks();
        step(Code::reference, 0, keep(formula_.areas, area), +1);
    }

    std::string_view word() {
        const std::size_t start = at_;
        while (at_ < text_.size() && in_word(text_[at_])) ++at_;
        return text_.substr(start, at_ - start);
    }

    /// A reference, name, function or truth value, perhaps on a sheet in front of it with "!".
    void named_thing() {
        const std::size_t start = at_;
        std::uint16_t sheet = sheet_;
        bool on_sheet = false, sheet_exists = true;
        std::string sheet_name;
        if (peek() == '!') { // the current sheet
            on_sheet = true;
            ++at_;
        } else if (peek() == '\'') {
            sheet_name = quoted('\'', "name of the sheet");
            if (peek() != '!') fail("expected \"!\" after the name of a sheet");
            on_sheet = true;
            ++at_;
        } else {
            std::size_t end = at_;
            if (peek() == '[') {
                while (end < text_.size() && text_[end] != ']') ++end;
                if (end == text_.size()) fail("the name of the workbook is not closed by \"]\"");
                ++end;
            }
            while (end < text_.size() && in_word(text_[end])) ++end;
            if (end < text_.size() && text_[end] == '!') {
                sheet_name = text_.substr(at_, end - at_);
                on_sheet = true;
                at_ = end + 1;
            } else if (peek() == '[') {
                fail("expected the name of a sheet and \"!\" after the workbook");
            }
        }
        if (!sheet_name.empty()) {
            const int number = names_.sheet_number(sheet_name);
            sheet_exists = number >= 0;
            if (sheet_exists)
                sheet = static_cast<std::uint16_t>(number);
            else
                formula_.unknown.push_back("there is no sheet \"" + valid_utf8(sheet_name) + "\"");
        }
        Area area;
        if (const std::size_t length = match_area(rest(), sheet, area); length > 0) {
            if (sheet_exists) return reference(area, length);
            at_ += length;
            skip_blanks();
            return constant(Value::error(xlerrRef, formula_.unknown.back()));
        }
        if (on_sheet && peek() == '#') return constant(error_literal());
        if (!begins_word(peek())) fail("unexpected " + here() + ", expected a reference");
        const std::size_t word_start = at_;
        const std::string_view name = word();
        skip_blanks();
        if (peek() == '(' && !on_sheet) return call(name, start);
        if (const std::size_t local = on_sheet ? locals_.size() : find_local(name); local < locals_.size()) {
            step(Code::local, 0, locals_[local].second, +1);
            return;
        }
        if (!on_sheet && equal_ignoring_case(name, "TRUE")) return constant(Value::boolean(true));
        if (!on_sheet && equal_ignoring_case(name, "FALSE")) return constant(Value::boolean(false));
        if (!sheet_exists) return constant(Value::error(xlerrRef));
        if (peek() == '(') fail("a function has no sheet", word_start);
        const std::uint32_t number = names_.name_number(name, sheet);
        if (std::find(formula_.names.begin(), formula_.names.end(), number) == formula_.names.end())
            formula_.names.push_back(number);
        step(Code::name, 0, number, +1);
    }

    // --- Functions ----------------------------------------------------------------------------------------------

    /// The name of a function without what files put in front of it.
    static std::string_view bare(std::string_view name) {
        for (bool found = true; found;) {
            found = false;
            for (const std::string_view prefix : {"_xlfn.", "_xlws.", "_xll.", "_xludf.", "_xlpm."})
                if (equal_ignoring_case(name.substr(0, prefix.size()), prefix)) {
                    name.remove_prefix(prefix.size());
                    found = true;
                }
        }
        return name;
    }

    void call(std::string_view name, std::size_t start) {
        nest();
        const std::size_t opened = at_;
        take('(');
        // A name that both have is the library's, unless a file says that it means the spreadsheet's own.
        const bool own = equal_ignoring_case(name.substr(0, 6), "_xlfn.");
        name = bare(name);
        // A service may be in front: "com.example.Functions.DpD".
        const std::size_t dot = name.rfind('.');
        const std::string_view last = dot == std::string_view::npos ? name : name.substr(dot + 1);
        const Function* const library = own && find_builtin(name) != nullptr ? nullptr : find_function(name);
        if (equal_ignoring_case(name, "IF")) {
            choice(start, opened);
        } else if (equal_ignoring_case(name, "IFS")) {
            conditions(start, opened);
        } else if (library == nullptr && equal_ignoring_case(name, "SWITCH")) {
            cases(start, opened);
        } else if (equal_ignoring_case(name, "LET")) {
            let(start, opened);
        } else if (equal_ignoring_case(name, "IFERROR")) {
            catch_errors(false, start, opened);
        } else if (equal_ignoring_case(name, "IFNA")) {
            catch_errors(true, start, opened);
        } else if (equal_ignoring_case(name, "SINGLE") || equal_ignoring_case(name, "ANCHORARRAY")) {
            const std::size_t count = arguments(opened); // how files write @ and #
            if (count != 1) fail(std::string(name) + " needs 1 argument", start);
            step((name[0] | 0x20) == 's' ? Code::intersect : Code::spill, 0, 0, 0);
        } else if (library != nullptr) {
            library_call(*library, start, opened);
        } else if (const Builtin* const builtin = find_builtin(name)) {
            const bool of_arrays = equal_ignoring_case(name, "SUMPRODUCT") || equal_ignoring_case(name, "MMULT") ||
                                   equal_ignoring_case(name, "LOOKUP");
            in_array_ += of_arrays;
            const std::size_t count = arguments(opened, builtin);
            in_array_ -= of_arrays;
            if (count < static_cast<std::size_t>(builtin->least))
                fail(std::string(builtin->name) + " needs " + std::to_string(builtin->least) + " argument" +
                         (builtin->least == 1 ? "" : "s"),
                     start);
            if (count > static_cast<std::size_t>(builtin->most))
                too_many(builtin->name, static_cast<std::size_t>(builtin->most), start);
            if (builtin->is_volatile) formula_.is_volatile = true;
            step(Code::builtin, count, keep(formula_.builtins, builtin), 1 - static_cast<int>(count));
        } else if (const Function* const served = dot == std::string_view::npos ? nullptr : find_function(last)) {
            library_call(*served, start, opened);
        } else {
            formula_.unknown.push_back("unknown function \"" + valid_utf8(name) + "\"");
            const std::size_t message = formula_.unknown.size() - 1;
            const std::size_t count = arguments(opened);
            step(Code::unknown, count, message, 1 - static_cast<int>(count));
        }
        --nesting_;
    }

    void library_call(const Function& function, std::size_t start, std::size_t opened) {
        const std::size_t count = arguments(opened);
        if (count > static_cast<std::size_t>(function.arity()))
            too_many(function.name, static_cast<std::size_t>(function.arity()), start);
        if (function.is_volatile) formula_.is_volatile = true;
        step(Code::function, count, keep(formula_.functions, &function), 1 - static_cast<int>(count));
    }

    [[noreturn]] void too_many(std::string_view name, std::size_t most, std::size_t start) const {
        fail(std::string(name) + " takes " + (most == 0 ? "no" : "at most " + std::to_string(most)) + " argument" +
                 (most == 1 ? "" : "s"),
             start);
    }

    /// One argument; one that is omitted pushes a missing value.
    void argument() {
        if (peek() == ',' || peek() == ')')
            constant(Value::missing());
        else
            expression(1);
    }

    /// A branch of a choice; an empty one is 0.
    void branch() {
        if (peek() == ',' || peek() == ')')
            constant(Value::number(0.0));
        else
            expression(1);
    }

    /// The arguments up to the closing bracket. Returns how many there are.
    std::size_t arguments(std::size_t opened, const Builtin* builtin = nullptr) {
        if (take(')')) return 0;
        std::size_t count = 0;
        for (;;) {
            argument();
            if (builtin != nullptr && static_cast<int>(count) < builtin->most &&
                builtin->kind(static_cast<int>(count)) != 'r')
                intersect_operand();
            if (++count > 255) fail("more than 255 arguments");
            if (take(')')) return count;
            if (!take(',')) fail_unclosed("bracket", opened);
        }
    }

    /// The next of the arguments of a choice, if there is one.
    bool another(std::size_t opened) {
        if (take(',')) return true;
        if (peek() != ')') fail_unclosed("bracket", opened);
        return false;
    }

    void open_choice() { formula_.choices = std::max(formula_.choices, ++choices_); }

    /// IF(condition, then, [else])
    void choice(std::size_t start, std::size_t opened) {
        argument();
        intersect_operand();
        open_choice();
        const std::size_t then = step(Code::if_then, 0, 0, 0);
        if (!another(opened)) fail("IF needs 2 arguments", start);
        const std::size_t otherwise = first_branch(then);
        if (another(opened)) {
            branch();
            if (another(opened)) too_many("IF", 3, start);
        } else {
            constant(Value::boolean(false));
        }
        close_choice(otherwise);
        take(')');
    }

    /// The branch for TRUE of the choice that begins with a step; returns the step that ends the branch.
    std::size_t first_branch(std::size_t then) {
        branch();
        const std::size_t otherwise = step(Code::if_else, 0, 0, 0);
        formula_.steps[then].index = next();
        return otherwise;
    }
    void close_choice(std::size_t otherwise) {
        formula_.steps[otherwise].index = next();
        step(Code::if_end, 0, 0, -2);
        --choices_;
    }

    /// IFS(condition, value, ...): a choice in the last branch of a choice.
    void conditions(std::size_t start, std::size_t opened) {
        std::vector<std::size_t> open;
        do {
            nest();
            argument();
            intersect_operand();
            open_choice();
            const std::size_t then = step(Code::if_then, 0, 0, 0);
            if (!another(opened)) fail("IFS needs a value after each condition", start);
            open.push_back(first_branch(then));
        } while (another(opened));
        constant(Value::error(xlerrNA, "no condition of IFS is TRUE"));
        close_choices(open);
        take(')');
    }
    void close_choices(const std::vector<std::size_t>& open) {
        for (std::size_t i = open.size(); i-- > 0; --nesting_) close_choice(open[i]);
    }

    /// SWITCH(value, case, result, ..., [else])
    void cases(std::size_t start, std::size_t opened) {
        argument();
        intersect_operand();
        const std::size_t value = formula_.locals++;
        step(Code::set_local, 0, value, -1);
        std::vector<std::size_t> open;
        bool has_else = false;
        if (!another(opened)) fail("SWITCH needs 3 arguments", start);
        do {
            argument(); // a case, or what else to give
            if (!another(opened)) {
                has_else = true;
                break;
            }
            nest();
            step(Code::local, 0, value, +1);
            step(Code::equal, 0, 0, -1);
            open_choice();
            open.push_back(first_branch(step(Code::if_then, 0, 0, 0)));
        } while (another(opened));
        if (open.empty()) fail("SWITCH needs 3 arguments", start);
        if (!has_else) constant(Value::error(xlerrNA, "no case of SWITCH equals the value"));
        close_choices(open);
        take(')');
    }

    /// LET(name, value, ..., result)
    void let(std::size_t start, std::size_t opened) {
        const std::size_t outer = locals_.size();
        for (;;) {
            const std::size_t before = at_;
            const std::string_view name = bare(word());
            skip_blanks();
            if (name.empty() || peek() != ',') {
                at_ = before;
                break;
            }
            if (!is_name(name)) fail("LET needs a name", before);
            take(',');
            argument();
            const std::size_t index = formula_.locals++;
            step(Code::set_local, 0, index, -1);
            locals_.emplace_back(upper_case(name), index);
            if (!another(opened)) fail("LET needs a result after the last value", start);
        }
        if (locals_.size() == outer) fail("LET needs a name and its value", start);
        argument();
        if (!take(')')) fail_unclosed("bracket", opened);
        locals_.resize(outer);
    }

    /// The place of a name among those of LET; past the end if it is none.
    std::size_t find_local(std::string_view name) const {
        if (locals_.empty()) return 0;
        const std::string capitals = upper_case(bare(name));
        for (std::size_t i = locals_.size(); i-- > 0;)
            if (locals_[i].first == capitals) return i;
        return locals_.size();
    }

    void catch_errors(bool only_na, std::size_t start, std::size_t opened) {
        const char* const name = only_na ? "IFNA" : "IFERROR";
        open_choice();
        argument();
        intersect_operand();
        const std::size_t test = step(Code::if_error, only_na, 0, 0);
        if (!another(opened)) fail(std::string(name) + " needs 2 arguments", start);
        branch();
        if (another(opened)) too_many(name, 2, start);
        formula_.steps[test].index = next();
        step(Code::error_end, only_na, 0, -1);
        take(')');
        --choices_;
    }

    std::string_view text_;
    Names& names_;
    std::uint16_t sheet_;
    std::size_t at_ = 0;
    static thread_local FormulaDraft draft_; // its memory serves one formula after the other
    FormulaDraft& formula_ = draft_;
    std::uint32_t waiting_ = 0;
    std::uint32_t choices_ = 0;
    std::vector<std::pair<std::string, std::size_t>> locals_; ///< the names of LET that are known here
    int nesting_ = 0;
    int in_array_ = 0; ///< inside functions that take whole arrays
};

thread_local FormulaDraft Reader::draft_;

} // namespace

Formula read_formula(std::string_view text, Names& names, std::uint16_t sheet, Fill fill) {
    return Reader(text, names, sheet, fill).read();
}

namespace {

/// A corner shifted, as text; false if that leaves the sheet.
bool move_corner(const Corner& corner, std::int64_t rows, std::int64_t columns, std::string& text) {
    if (corner.has_column) {
        const std::int64_t column = corner.column + (corner.column_fixed ? 0 : columns);
        if (column < 0 || column >= max_columns) return false;
        text += (corner.column_fixed ? "$" : "") + column_text(static_cast<int>(column));
    }
    if (corner.has_row) {
        const std::int64_t row = corner.row + (corner.row_fixed ? 0 : rows);
        if (row < 0 || row >= max_rows) return false;
        text += (corner.row_fixed ? "$" : "") + std::to_string(row + 1);
    }
    return true;
}

} // namespace

std::string moved_formula(std::string_view text, std::int64_t rows, std::int64_t columns) {
    std::string moved;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (c == '"' || c == '\'') { // a string or the name of a sheet
            const std::size_t end = text.find(c, at + 1);
            const std::size_t length = end == std::string_view::npos ? text.size() - at : end + 1 - at;
            moved += text.substr(at, length);
            at += length;
            continue;
        }
        if (c == '[') { // a workbook
            const std::size_t end = std::min(text.find(']', at), text.size() - 1);
            moved += text.substr(at, end + 1 - at);
            at = end + 1;
            continue;
        }
        const Corner first = read_corner(text.substr(at));
        const std::size_t after = at + first.length;
        if (first.length > 0 && !(after < text.size() && text[after] == '!')) {
            Corner second;
            if (after < text.size() && text[after] == ':') second = read_corner(text.substr(after + 1));
            const bool paired =
                second.length > 0 && second.has_column == first.has_column && second.has_row == first.has_row;
            if (paired || (first.has_column && first.has_row)) {
                std::string reference;
                bool inside = move_corner(first, rows, columns, reference);
                if (paired) {
                    reference += ':';
                    inside = move_corner(second, rows, columns, reference) && inside;
                }
                moved += inside ? reference : "#REF!";
                at = after + (paired ? 1 + second.length : 0);
                continue;
            }
        }
        std::size_t end = at + 1; // a word, a number or a single sign
        if (in_word(c))
            while (end < text.size() && in_word(text[end])) ++end;
        moved += text.substr(at, end - at);
        at = end;
    }
    return moved;
}

bool read_area(std::string_view text, std::uint16_t sheet, Area& area) {
    return !text.empty() && match_area(text, sheet, area) == text.size();
}

namespace {

/// Reads "R7", "R[-1]" or "R" as a row, counted from 0, or the same for a column. False if that is off the sheet.
bool read_r1c1_part(std::string_view& text, std::int64_t here, std::int64_t end, std::uint32_t& place) {
    text.remove_prefix(1);
    const bool relative = text.starts_with('[');
    if (relative) text.remove_prefix(1);
    std::int64_t number = 0;
    const auto [after, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto length = static_cast<std::size_t>(after - text.data());
    if (relative && (problem != std::errc{} || length >= text.size() || text[length] != ']')) return false;
    if (!relative && length > 0 && (problem != std::errc{} || number < 1)) return false;
    const bool same = !relative && (length == 0 || problem == std::errc::invalid_argument);
    text.remove_prefix(same ? 0 : length + relative);
    const std::int64_t wanted = same ? here : relative ? here + number : number - 1;
    if (wanted < 0 || wanted >= end) return false;
    place = static_cast<std::uint32_t>(wanted);
    return true;
}

/// A cell, a row or a column in R1C1 style at the start of a string, as an area.
bool read_r1c1_corner(std::string_view& text, CellAddress cell, Area& area) {
    const auto begins = [&](char letter) { return !text.empty() && static_cast<char>(text[0] | 0x20) == letter; };
    area = Area(cell.sheet, 0, 0, max_rows - 1, static_cast<std::uint16_t>(max_columns - 1));
    std::uint32_t place = 0;
    const bool has_row = begins('r');
    if (has_row) {
        if (!read_r1c1_part(text, cell.row, max_rows, place)) return false;
        area.first_row = area.last_row = place;
    }
    const bool has_column = begins('c');
    if (has_column) {
        if (!read_r1c1_part(text, cell.column, max_columns, place)) return false;
        area.first_column = area.last_column = static_cast<std::uint16_t>(place);
    }
    return has_row || has_column;
}

} // namespace

bool read_r1c1_area(std::string_view text, CellAddress cell, std::uint16_t sheet, Area& area) {
    Area first;
    if (!read_r1c1_corner(text, cell, first)) return false;
    Area last = first;
    if (text.starts_with(':')) {
        text.remove_prefix(1);
        if (!read_r1c1_corner(text, cell, last)) return false;
    }
    area = Area(sheet, std::min(first.first_row, last.first_row), std::min(first.first_column, last.first_column),
                std::max(first.last_row, last.last_row), std::max(first.last_column, last.last_column));
    return text.empty();
}

bool is_name(std::string_view text) {
    if (text.empty() || text.size() > 255 || !begins_word(text[0])) return false;
    Area area;
    return std::all_of(text.begin(), text.end(), in_word) && !read_area(text, 0, area) &&
           !equal_ignoring_case(text, "TRUE") && !equal_ignoring_case(text, "FALSE");
}

} // namespace qx::sheet
