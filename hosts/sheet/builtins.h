// The workbook's own functions: the everyday ones of every spreadsheet.
//
// Tables; each row says with letters what its arguments are, and the calculator converts them before the body runs:
// n a number, t a string, b a truth value, v any single value, e any single value or error, r as it comes (a reference,
// an array or a value). An argument left empty is 0, "" or FALSE; for N and B it takes the preset. Optional ones are
// after |, and * repeats the last letters from the slash before it. A function of single values is applied to each
// element of an array.
#pragma once

#include "hosts/sheet/value.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace qx::sheet {

class Calculator;

/// The arguments of one call, converted.
struct Arguments {
    Calculator& calculator;
    const Value* values;
    int count;

    bool has(int i) const { return i < count && !values[i].is(Type::missing); }
    double number(int i) const { return values[i].number(); }
    double number(int i, double preset) const { return has(i) ? values[i].number() : preset; }
    std::string_view text(int i) const { return values[i].text(); }
    bool truth(int i) const { return values[i].boolean(); }
    const Value& operator[](int i) const { return values[i]; }
};

struct Builtin {
    Builtin(const char* name, const char* kinds, const char* arguments, const char* help,
            Value (*body)(const Arguments&), bool is_volatile = false);

    /// The letter of an argument, counted from 0.
    char kind(int i) const {
        return i < letters_ ? kinds_[i] : kinds_[letters_ - repeated_ + (i - letters_) % repeated_];
    }

    const char* name;
    const char* arguments; ///< their names as help shows them, "rate, nper, [type]"
    const char* help;
    Value (*body)(const Arguments&); ///< null for what the formula language itself does, as IF
    bool is_volatile;
    int least = 0, most = 0; ///< number of arguments

  private:
    char kinds_[8] = {};
    int letters_ = 0, repeated_ = 0;
};

/// The function of a name in any case, or null.
const Builtin* find_builtin(std::string_view name);

/// Functions of one subject, in the order in which help lists them.
struct BuiltinGroup {
    const char* title;
    std::span<const Builtin> functions;
};
std::span<const BuiltinGroup> builtin_groups();

} // namespace qx::sheet
