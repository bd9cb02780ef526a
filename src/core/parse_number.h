// Amounts as people type them: "$1,234.50", "(500)", "GBP 12".
#pragma once

#include <string>

namespace qx {

/// The number in a string, or `otherwise` if it holds none. Currency signs, commas, blanks and brackets are
/// dropped, so an amount in brackets is positive. Never fails.
double parsenumber(const std::string& text, double otherwise);
/// The same as a whole number: digits after a point are not read.
int parseint(const std::string& text, int otherwise);

} // namespace qx
