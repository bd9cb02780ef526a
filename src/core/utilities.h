// Tolerance tests, arithmetic that cannot go wrong silently, and values as text.
#pragma once

#include "core/context.h"
#include "core/ministring.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace qx {

/// Two numbers within this distance are equal, and a number within it of zero is zero, in the whole library.
inline constexpr double tolerance = 1e-12;

/// True if |x| is at most the tolerance. False for NaN.
inline bool iszero(double x) { return std::fabs(x) <= tolerance; }
/// True if a and b differ by at most the tolerance. False if either is NaN.
inline bool isequal(double a, double b) { return std::fabs(a - b) <= tolerance; }
/// x minus its truncation to an integer; it has the sign of x.
inline double fraction(double x) { return x - std::trunc(x); }

/// dividend / divisor, or 0 if either is zero (iszero).
inline double safe_divide(double dividend, double divisor) {
    return iszero(dividend) || iszero(divisor) ? 0.0 : dividend / divisor;
}

/// base raised to exponent: 1 for a zero exponent, even of a zero base; 0 for any other power of a zero base.
/// Throws errlibbadexponentiation for a negative base with a fractional exponent.
double SafePow(double base, double exponent);
double SafePow(double base, int n);

/// A letter of the English alphabet in lower case; any other character as it is.
constexpr char small_letter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
/// True for texts that differ only in the case of letters.
constexpr bool same_letters(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (small_letter(a[i]) != small_letter(b[i])) return false;
    return true;
}

/// The whole part of x, held to the ends of a 32-bit integer; 0 for NaN.
inline int whole(double x) {
    if (!(x > -2147483648.0)) return std::isnan(x) ? 0 : INT32_MIN;
    return x >= 2147483647.0 ? INT32_MAX : static_cast<int>(x);
}

// Values as text, for the trace and for messages. Each value type adds its own overload beside its declaration.
std::string describe(double value); ///< three decimals, as 1234.500
std::string describe(int value);
std::string describe(long value);
std::string describe(long long value);
std::string describe(bool value); ///< "true" or "false"
inline std::string describe(const std::string& value) { return value; }
inline std::string describe(std::string_view value) { return std::string(value); }
inline std::string describe(const char* value) { return value; }
inline std::string describe(const ministring& value) { return value.str(); }

/// While one lives, numbers are described with the 15 digits that a cell shows, and not with three decimals.
class AllDigits {
  public:
    AllDigits();
    AllDigits(const AllDigits&) = delete;
    AllDigits& operator=(const AllDigits&) = delete;
    ~AllDigits();
};

/// A string and, while a trace runs, the same text with all digits of its numbers: empty if it is no other.
struct Wording : std::string {
    std::string full;
};

/// Whether the text of a value depends on the digits shown.
template <class T>
inline constexpr bool has_digits =
    !std::is_integral_v<T> && !std::is_convertible_v<T, std::string_view> && !std::is_same_v<T, ministring>;

/// The texts of several values in a row.
template <class... Values>
Wording text_of(const Values&... values) {
    Wording text;
    ((text += describe(values)), ...);
    if constexpr ((has_digits<Values> || ...)) {
        if (tracing) {
            const AllDigits digits;
            ((text.full += describe(values)), ...);
            if (text.full == text) text.full.clear();
        }
    }
    return text;
}

} // namespace qx
