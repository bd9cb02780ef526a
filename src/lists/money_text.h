// Amounts of money in words, as on a cheque.
#pragma once

#include <string>

namespace qx {

/// An amount in words, as "one hundred twenty-three dollars and five cents". Currency: 0 dollar, 1 euro, 2 pound, 3
/// peso. Language: 0 English, 1 Spanish, 2 French. The amount is rounded to the nearest hundredth. Throws outofrange
/// below 0 and above 9,999,999,999,999; errlibmin, errlibmax for a currency or a language that is not listed.
std::string MoneyText(double Amount, int Currency, int Language);

} // namespace qx
