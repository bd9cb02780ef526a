// Conditions that users write: "?>5", ">=10", "Office". A condition becomes a formula for the evaluator of the host.
#pragma once

#include "calendar/anyvalue.h"
#include "core/range.h"
#include "core/switches.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace qx {

/// What the host's evaluator makes of a formula.
enum class Evaluated : std::uint8_t {
    yes,
    no,
    null_error,
    division_by_zero,
    value_error,
    reference_error,
    name_error,
    number_error,
    not_available,
    other,        ///< neither true nor false nor an error value
    failed,       ///< the evaluator did not take it
    uncalculated, ///< a cell that it reads is not calculated yet
};

/// Evaluates a formula. Set by whoever knows the host; without one every formula fails.
using FormulaEvaluator = Evaluated (*)(const std::string& formula);
inline FormulaEvaluator evaluate_formula = nullptr;

/// True if a value meets a criterion. The criterion is a number, for equality; a string with "?" in place of the value;
/// a string that begins with =, < or >, for the value to be put in front; or any other text, for equality. Throws
/// errinput if either is blank, invalidcriteria if the criterion cannot be evaluated or has its ? in quotes, uncalc.
bool MeetsCriteria(const anyvalue& value, const anyvalue& criterion, const FunctionContext& context);

enum CritOption : int { all_criteria = 1 };
inline constexpr SwitchValue criteria_option_values[] = {{0, "Condition is OR"}, {all_criteria, "Condition is AND"}};

/// True if a value meets one of the criteria, or with the option all_criteria all of them.
bool meets_criteria(const anyvalue& value, View<anyvalue> Criteria, int CritOpts, const FunctionContext& context);
/// The same for a value as written in a formula.
bool meets_criteria(const std::string& value, View<anyvalue> Criteria, int CritOpts, const FunctionContext& context);

// Values as written in a formula: a number in full, a string in quotes.
void append_to_formula(std::string& formula, double number);
void append_to_formula(std::string& formula, std::string_view text);

} // namespace qx
