// Help on a function, for the terminal and for its page: taken from its declaration, and for examples and errors from
// calls of the function itself.
#pragma once

#include "addin/function.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qx::app {

struct ArgumentHelp {
    std::string name;
    std::string text;
    std::string what;                                ///< "A number", "A list of dates"
    std::string topic;                               ///< the topic that explains it, "day-counts"; mostly empty
    std::string range;                               ///< "0 to 999"; empty for any
    std::string preset;                              ///< what it is when omitted; empty if it must be given
    std::vector<std::pair<int, std::string>> values; ///< of a switch
};

struct ExampleHelp {
    std::string formula; ///< as a user types it, with the equals sign
    std::string cells;   ///< into which it goes as an array formula; empty for one cell
    std::string result;  ///< "= 38017" or "gives #NUM!"
    std::string note;    ///< the date of a date number, the reason of an error
    std::string line() const;
};

/// What makes the function show an error.
struct ErrorHelp {
    std::string cause; ///< "DayCount below 0"
    std::string shows; ///< "#NUM!"
    std::string reason;
};

struct FunctionHelp {
    std::string syntax;
    std::vector<ArgumentHelp> arguments;
    std::string result; ///< what comes back, and in which shape
    std::vector<ErrorHelp> errors;
    std::vector<ExampleHelp> examples;
    std::vector<const Function*> related;
    std::string note; ///< what else a user should know; mostly empty
};

FunctionHelp help_of(const Function& function);

/// Those functions that exist of a list of names, "DateSeq, NextDateSeq".
std::vector<const Function*> functions_named(const std::string& names);
/// The declared functions in the order of their names.
std::vector<const Function*> declared_functions();
/// The name of a category without the mark that all have.
std::string_view short_category(Category category);
/// What the functions of a category are for, in a sentence or two.
const char* overview(Category category);
/// The topics that explain the arguments of a function.
std::vector<std::string> concepts_of(const Function& function);

} // namespace qx::app
