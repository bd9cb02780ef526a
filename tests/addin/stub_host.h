// A host for tests: answers as a test asks, and remembers what it was asked.
#pragma once

#include "addin/frame.h"
#include "addin/host.h"

#include <cstring>
#include <deque>
#include <initializer_list>
#include <string>
#include <vector>

namespace qx::test {

class StubHost : public Host {
  public:
    StubHost() : former_(set_host(this)) {}
    ~StubHost() override { set_host(former_); }

    OPER caller = sref_cell({4, 4, 2, 2}); ///< one cell
    OPER coerced = nil_cell();
    int coerce_code = xlretSuccess;
    bool fail_all = false;
    int freed = 0;
    int stack_left = 30000; ///< bytes
    std::string boxed;      ///< what message boxes have shown
    std::vector<int> asked;
    std::string debugged;

    int call(int xlfn, OPER* result, int, OPER* const*) override {
        asked.push_back(xlfn);
        if (fail_all) return xlretFailed;
        switch (xlfn) {
        case xlfCaller:
            *result = caller;
            return xlretSuccess;
        case xlCoerce:
            if (coerce_code == xlretSuccess) *result = coerced;
            return coerce_code;
        case xlStack:
            *result = int_cell(stack_left);
            return xlretSuccess;
        case xlFree:
            ++freed;
            return xlretSuccess;
        default:
            return xlretInvXlfn;
        }
    }
    void debug(std::string_view text) override { debugged += text; }
    void message_box(std::string_view title, std::string_view text) override {
        boxed.append(title).append(": ").append(text);
    }

  private:
    Host* former_;
};

/// Cells whose texts and arrays live as long as the object.
class Cells {
  public:
    OPER text(std::string_view text) {
        std::string& kept = texts_.emplace_back();
        kept += static_cast<char>(static_cast<unsigned char>(text.size()));
        kept += text;
        return {{.str = reinterpret_cast<unsigned char*>(kept.data())}, xltypeStr};
    }
    OPER array(int rows, int columns, std::initializer_list<OPER> cells) {
        std::vector<OPER>& kept = arrays_.emplace_back(cells);
        return array_cell(kept.data(), rows, columns);
    }
    OPER numbers(int rows, int columns, double value) {
        std::vector<OPER>& kept = arrays_.emplace_back(static_cast<std::size_t>(rows) * columns, number_cell(value));
        return array_cell(kept.data(), rows, columns);
    }

  private:
    std::deque<std::string> texts_;
    std::deque<std::vector<OPER>> arrays_;
};

/// A function that only a test declares.
inline Function test_function(const char* name, Calls calls, std::initializer_list<Argument> arguments) {
    Function function{.name = name, .category = Category::Miscellaneous, .calls = calls, .help = "For a test"};
    int i = 0;
    for (const Argument& argument : arguments) function.args[i++] = argument;
    return function;
}

inline OPER* call(const Function& function, std::initializer_list<OPER> arguments) {
    static OPER cells[max_arguments];
    static OPER* pointers[max_arguments + 1];
    int i = 0;
    for (const OPER& argument : arguments) {
        cells[i] = argument;
        pointers[i] = &cells[i];
        ++i;
    }
    return perform(function, pointers);
}

/// A cell as text: 12.5, "abc", TRUE, #N/A, empty, {1,2;3,4}; "uncalculated" for a null pointer.
inline std::string shown(const OPER* cell) {
    if (cell == nullptr) return "uncalculated";
    switch (cell->type()) {
    case xltypeNum: {
        std::string text = std::to_string(cell->val.num);
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
        return text;
    }
    case xltypeStr:
        return '"' + std::string(reinterpret_cast<const char*>(cell->val.str + 1), cell->val.str[0]) + '"';
    case xltypeBool:
        return cell->val.xbool ? "TRUE" : "FALSE";
    case xltypeErr:
        switch (cell->val.err) {
        case xlerrDiv0:
            return "#DIV/0!";
        case xlerrValue:
            return "#VALUE!";
        case xlerrRef:
            return "#REF!";
        case xlerrName:
            return "#NAME?";
        case xlerrNum:
            return "#NUM!";
        case xlerrNA:
            return "#N/A";
        default:
            return "#NULL!";
        }
    case xltypeNil:
        return "empty";
    case xltypeMulti: {
        std::string text = "{";
        for (int row = 0; row < cell->val.array.rows; ++row)
            for (int column = 0; column < cell->val.array.columns; ++column) {
                if (column > 0) text += ',';
                if (row > 0 && column == 0) text += ';';
                text += shown(&cell->val.array.lparray[row * cell->val.array.columns + column]);
            }
        return text + "}";
    }
    default:
        return "type " + std::to_string(cell->xltype);
    }
}

/// The name of the class of the last error, or "".
inline std::string last_class() { return last_error() == nullptr ? "" : last_error()->name; }

} // namespace qx::test
