#include "hosts/sheet/builtin_tools.h"

#include <random>

namespace qx::sheet::builtin {

namespace {

int places_of(double places) { return static_cast<int>(std::clamp(std::trunc(places), -400.0, 400.0)); }

/// x rounded to places away from (1) or towards (0) zero.
Value rounded_to(double x, double wanted, bool away) {
    const int places = places_of(wanted);
    const double scale = std::pow(10.0, std::abs(places));
    const double scaled = places >= 0 ? std::fabs(x) * scale : std::fabs(x) / scale;
    if (!(scaled < 4503599627370496.0) || scale > 1e300) return number(places >= 0 ? x : 0.0);
    const double slack = std::min(scaled * 4.5e-16, 0.01); // what reads as whole in fifteen digits is whole
    const double whole = away ? std::ceil(scaled - slack) : std::floor(scaled + slack);
    return number(std::copysign(places >= 0 ? whole / scale : whole * scale, x));
}

Value to_multiple(const Arguments& a, double (*round)(double)) {
    const double x = a.number(0), unit = a.number(1, 1.0);
    if (x == 0.0 || (unit == 0.0 && round != static_cast<double (*)(double)>(std::floor))) return number(0.0);
    if (unit == 0.0) return Value::error(xlerrDiv0, "there are no multiples of 0");
    if (x > 0.0 && unit < 0.0) return num();
    return number(round(rounded(x / unit, 10)) * unit);
}

Value log_base(const Arguments& a) {
    const double x = a.number(0), base = a.number(1, 10.0);
    if (x <= 0.0 || base <= 0.0) return num();
    if (base == 1.0) return Value::error(xlerrDiv0);
    return number(base == 10.0 ? std::log10(x) : std::log(x) / std::log(base));
}

Value modulo(const Arguments& a) {
    const double x = a.number(0), divisor = a.number(1);
    if (divisor == 0.0) return Value::error(xlerrDiv0);
    const double rest = std::fmod(x, divisor);
    return number(rest != 0.0 && (rest < 0.0) != (divisor < 0.0) ? rest + divisor : rest);
}

double random_number() {
    static std::mt19937_64 generator{std::random_device{}()};
    return std::uniform_real_distribution<double>(0.0, 1.0)(generator);
}

/// Rounded to a multiple, up or down. Negative numbers go the other way if a mode is given.
Value to_multiple_math(A a, bool up) {
    const double x = a.number(0), unit = std::fabs(a.number(1, 1.0));
    if (x == 0.0 || unit == 0.0) return number(0.0);
    const bool turned = x < 0.0 && a.number(2, 0.0) != 0.0;
    const double ratio = rounded(x / unit, 10);
    return number((up != turned ? std::ceil(ratio) : std::floor(ratio)) * unit);
}

/// The numbers of all arguments combined two by two: GCD and LCM.
Value combined(A a, double (*combine)(double, double), double start) {
    constexpr double largest = 9007199254740992.0;
    double result = start;
    bool valid = true;
    const Value error = each_number(a, [&](double x) {
        x = std::trunc(x);
        valid = valid && x >= 0.0 && x < largest;
        if (valid) result = combine(result, x);
        valid = valid && result < largest;
    });
    if (error.is_error()) return error;
    return valid ? number(result) : num();
}

double common_divisor(double x, double y) {
    while (y != 0.0) x = std::exchange(y, std::fmod(x, y));
    return x;
}

double common_multiple(double x, double y) { return x == 0.0 || y == 0.0 ? 0.0 : x / common_divisor(x, y) * y; }

Value random_between(A a) {
    const double low = std::ceil(a.number(0)), high = std::floor(a.number(1));
    return low > high ? num() : number(low + std::floor(random_number() * (high - low + 1.0)));
}

const Builtin numbers[] = {
    {"ABS", "n", "number", "The number without its sign", apply<std::fabs>},
    {"SIGN", "n", "number", "1, 0 or -1: the sign of a number",
     [](A a) { return number((a.number(0) > 0.0) - (a.number(0) < 0.0)); }},
    {"INT", "n", "number", "Rounded down to a whole number", apply<std::floor>},
    {"TRUNC", "n|n", "number, [digits]", "Cut off after so many decimals",
     [](A a) { return rounded_to(a.number(0), a.number(1, 0.0), false); }},
    {"ROUND", "nn", "number, digits", "Rounded to so many decimals, halves away from zero",
     [](A a) { return number(rounded(a.number(0), places_of(a.number(1)))); }},
    {"ROUNDUP", "nn", "number, digits", "Rounded away from zero",
     [](A a) { return rounded_to(a.number(0), a.number(1), true); }},
    {"ROUNDDOWN", "nn", "number, digits", "Rounded towards zero",
     [](A a) { return rounded_to(a.number(0), a.number(1), false); }},
    {"CEILING", "n|n", "number, [significance]", "Rounded up to a multiple",
     [](A a) { return to_multiple(a, std::ceil); }},
    {"FLOOR", "n|n", "number, [significance]", "Rounded down to a multiple",
     [](A a) { return to_multiple(a, std::floor); }},
    {"CEILING.MATH", "n|Nn", "number, [significance], [mode]",
     "Rounded up to a multiple; with a mode, negative numbers away from zero",
     [](A a) { return to_multiple_math(a, true); }},
    {"FLOOR.MATH", "n|Nn", "number, [significance], [mode]",
     "Rounded down to a multiple; with a mode, negative numbers towards zero",
     [](A a) { return to_multiple_math(a, false); }},
    {"MROUND", "nn", "number, multiple", "Rounded to the nearest multiple",
     [](A a) { return to_multiple(a, [](double x) { return rounded(x, 0); }); }},
    {"MOD", "nn", "number, divisor", "The remainder, with the sign of the divisor", modulo},
    {"QUOTIENT", "nn", "number, divisor", "The whole part of a division",
     [](A a) { return a.number(1) == 0.0 ? Value::error(xlerrDiv0) : number(std::trunc(a.number(0) / a.number(1))); }},
    {"GCD", "r*", "number, ...", "The greatest common divisor", [](A a) { return combined(a, common_divisor, 0.0); }},
    {"LCM", "r*", "number, ...", "The least common multiple", [](A a) { return combined(a, common_multiple, 1.0); }},
    {"SQRT", "n", "number", "The square root", [](A a) { return number(std::sqrt(a.number(0))); }},
    {"EXP", "n", "number", "e to the power of a number", apply<std::exp>},
    {"LN", "n", "number", "The natural logarithm",
     [](A a) { return a.number(0) <= 0.0 ? num() : number(std::log(a.number(0))); }},
    {"LOG10", "n", "number", "The logarithm to base 10",
     [](A a) { return a.number(0) <= 0.0 ? num() : number(std::log10(a.number(0))); }},
    {"LOG", "n|n", "number, [base]", "The logarithm to a base, 10 unless given", log_base},
    {"POWER", "nn", "number, power", "A number to a power", [](A a) { return raised(a.number(0), a.number(1)); }},
    {"PI", "", "", "3.14159265358979", [](A) { return number(3.14159265358979323846); }},
    {"SIN", "n", "angle", "The sine of an angle in radians", apply<std::sin>},
    {"COS", "n", "angle", "The cosine of an angle in radians", apply<std::cos>},
    {"TAN", "n", "angle", "The tangent of an angle in radians", apply<std::tan>},
    {"ATAN", "n", "number", "The angle in radians whose tangent is the number", apply<std::atan>},
    {"RAND", "", "", "A random number from 0 to 1", [](A) { return number(random_number()); }, true},
    {"RANDBETWEEN", "nn", "low, high", "A random whole number", random_between, true},
};

} // namespace

std::span<const Builtin> numbers_functions() { return numbers; }

} // namespace qx::sheet::builtin
