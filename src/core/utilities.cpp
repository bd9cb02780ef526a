#include "core/utilities.h"

#include "core/errors.h"
#include "core/trace.h"

#include <cstdio>

namespace qx {

namespace {

/// What the float and the integer power share: the value of the special cases, or the library's power.
double power(double base, double exponent) {
    if (iszero(exponent)) return 1.0;
    if (base == 0.0) return 0.0;
    if (isequal(base, 1.0)) return 1.0;
    if (std::fabs(base) < tolerance) {
        if (traced()) trace().info("Warning: Small Number rounded to zero in power routine.");
        return 0.0;
    }
    if (base < 0.0 && !iszero(fraction(exponent))) {
        FunctionContext context("Utilities Module", "");
        if (tracing)
            context.setmessage(text_of("SafePow routine.  Can't have a fractional exponent with a negative "
                                       "number, number=",
                                       base, ", exponent=", exponent));
        throw errlibbadexponentiation(context);
    }
    if (base < 0.0) exponent = std::trunc(exponent); // whole but for the tolerance: std::pow would give NaN
    if (exponent == 1.0) return base;                // the bits of the library, without its logarithm
    return std::pow(base, exponent);
}

} // namespace

double SafePow(double base, double exponent) { return power(base, exponent); }
double SafePow(double base, int n) { return power(base, n); }

static bool all_digits = false;
AllDigits::AllDigits() { all_digits = true; }
AllDigits::~AllDigits() { all_digits = false; }

std::string describe(double value) {
    if (all_digits) {
        char text[32];
        std::snprintf(text, sizeof text, "%.15g", value + 0.0);
        return text;
    }
    // The least width is the number of whole digits. Below 0.1 it turns negative, which pads on the right: it shows
    // from 1e-7 down.
    const int width = iszero(value) || !std::isfinite(value) ? 0 : whole(std::log10(std::fabs(value)) + 1.0);
    char text[352]; // 1.8e308 has 309 digits before the point
    const int length = std::snprintf(text, sizeof text, "%*.3f", width, value + 0.0) /* no -0.000 */;
    return std::string(text, static_cast<std::size_t>(length));
}

std::string describe(int value) { return std::to_string(value); }
std::string describe(long value) { return std::to_string(value); }
std::string describe(long long value) { return std::to_string(value); }
std::string describe(bool value) { return value ? "true" : "false"; }

} // namespace qx
