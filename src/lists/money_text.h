// Amounts of money in words, as on a cheque.
#pragma once

#include "core/switches.h"

#include <string>

namespace qx {

inline constexpr SwitchValue currency_values[] = {{0, "Dollar"}, {1, "Euro"}, {2, "Pound"}, {3, "Peso"}};
inline constexpr SwitchValue language_values[] = {{0, "English"}, {1, "Spanish"}, {2, "French"}};

/// An amount in words, as "one hundred twenty-three dollars and five cents". Currency: 0 dollar, 1 euro, 2 pound, 3
/// peso. Language: 0 English, 1 Spanish, 2 French. The amount is rounded to the nearest hundredth. Throws outofrange
/// below 0 and above 9,999,999,999,999; errlibmin, errlibmax for a currency or a language that is not listed.
std::string MoneyText(double Amount, int Currency, int Language);

} // namespace qx
