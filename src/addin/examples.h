// The examples of a declaration taken apart: "DYear(38000) ~ 2004.03495 1e-8" is a formula, a sign and a promise.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

struct Example {
    std::string_view cells;    ///< those of an array formula, "A1:A5"; mostly empty
    std::string_view formula;  ///< without an equals sign
    char sign = '=';           ///< '=' the value, '~' the value within a tolerance, '!' an error value
    std::string_view expected; ///< a formula, "empty" or "#NUM!", without tolerance and class of the error
};

Example read_example(std::string_view text);

/// The texts of the arguments if the formula is a call of the function and nothing else.
std::optional<std::vector<std::string>> call_arguments(std::string_view formula, std::string_view function);

} // namespace qx
