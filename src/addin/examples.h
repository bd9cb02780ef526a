// The examples of a declaration taken apart: "DYear(38000) ~ 2004.03495 1e-8" is a formula, a sign and a value.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

/// Calls visit(position, depth) for each character outside texts; a bracket belongs to what is inside it.
template <class Visit>
void each_outside_texts(std::string_view text, Visit visit) {
    bool quoted = false;
    int depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '"') quoted = !quoted;
        if (quoted) continue;
        if (c == '(' || c == '{' || c == '[') ++depth;
        visit(at, depth);
        if (c == ')' || c == '}' || c == ']') --depth;
    }
}

/// Position of the last " = ", " ~ " or " ! " outside texts and brackets, which joins a formula to its value; npos if
/// there is none.
std::size_t joint_of(std::string_view text);

struct Example {
    std::string_view cells;    ///< those of an array formula, "A1:A5"; mostly empty
    std::string_view formula;  ///< without an equals sign
    char sign = '=';           ///< '=' the value, '~' the value within a tolerance, '!' an error value
    std::string_view expected; ///< a formula, "empty" or "#NUM!", without tolerance and class of the error
};

Example read_example(std::string_view text);

/// What the formula gives, as a user reads it: "= 38017", "gives #NUM!", "gives an empty cell".
std::string outcome(const Example& example);

/// The texts of the arguments if the formula is a call of the function and nothing else.
std::optional<std::vector<std::string>> call_arguments(std::string_view formula, std::string_view function);

} // namespace qx
