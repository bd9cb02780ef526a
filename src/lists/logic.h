// Choices without nested formulas: the result of the first condition that holds, or of the first case that matches.
//
// All inputs are converted before anything is chosen, so an error cell in any of them fails the whole choice.
#pragma once

#include "calendar/anyvalue.h"
#include "core/maybe.h"
#include "core/pairs.h"
#include "core/range.h"

#include <string>

namespace qx {

inline constexpr int most_choices = 12;

template <class Result>
using Conditions = Pairs<Maybe<bool>, Maybe<Result>, most_choices>;
template <class Result>
using Cases = Pairs<Maybe<anyvalue>, Maybe<Result>, most_choices>;

/// The result of the first true condition, or the default. A condition that is omitted is false.
double IfElse(double Default, const Conditions<double>& Choices);
const std::string& IfElseT(const std::string& DefaultText, const Conditions<std::string>& Choices);
/// The same with conditions and results in two lists. Throws inputrangelength2 if they differ in length.
double IfElseR(double Default, View<bool> Conds, View<double> Results);
const std::string& IfElseRT(const std::string& DefaultTxt, View<bool> Conds, View<std::string> ResultsText);

/// The result of the first case equal to the variable, or the default. A number and a string are equal if the text
/// parsed as an amount is that number; a case that is omitted equals nothing.
double Switch(const anyvalue& SwitchVar, double Default, const Cases<double>& Choices);
const std::string& SwitchT(const anyvalue& SwitchVar, const std::string& DefaultText,
                           const Cases<std::string>& Choices);
/// The same with cases and results in two lists. Throws inputrangelength2 if they differ in length.
double SwitchR(const anyvalue& SwitchVar, double Default, View<anyvalue> Cases, View<double> Results);
const std::string& SwitchRT(const anyvalue& SwitchVar, const std::string& DefaultTxt, View<anyvalue> Cases,
                            View<std::string> ResultsText);

/// Whether a case is equal to the variable of a switch.
bool case_matches(const anyvalue& SwitchVar, const anyvalue& Case);

/// True if every option bit of TheOption is set in the sum Options; 0 is no option.
bool OptionPresent(int TheOption, int Options);

/// The version of the library, as "0.1.0".
const std::string& QXVer();

} // namespace qx
