// Worksheet functions of arithmetic that does not fail, and of whole numbers.
#include "addin/declare.h"
#include "core/safe_arithmetic.h"
#include "lists/number_theory.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Miscellaneous;

constexpr Argument Multiple() {
    return {"Multiple", "The step between the points to round to; its sign does not matter"};
}
constexpr Argument Origin() { return optional("Origin", 0.0, "A point to count the steps from"); }

} // namespace

constexpr Function SCeiling{
    .name = "SCeiling",
    .category = category,
    .calls = core<qx::SCeiling>,
    .help = "A number rounded up to a whole count of multiples; a multiple of zero leaves it as it is",
    .args = {{"Number", "The number to round"}, Multiple(), Origin()},
    .examples = {"SCeiling(7.2, 2.5) = 7.5", "SCeiling(0.3, 0.1) = 0.3", "SCeiling(7.2, 0) = 7.2"},
    .see_also = "SFloor,SRound",
};
QX_EXPORT(SCeiling, 3);

constexpr Function SFloor{
    .name = "SFloor",
    .category = category,
    .calls = core<qx::SFloor>,
    .help = "A number rounded down to a whole count of multiples; a multiple of zero leaves it as it is",
    .args = {{"Number", "The number to round"}, Multiple(), Origin()},
    .examples = {"SFloor(7.2, 2.5) = 5", "SFloor(-7.2, 2.5) = -7.5", "SFloor(38000, 7, 2) = 37998"},
    .see_also = "SCeiling,SRound",
};
QX_EXPORT(SFloor, 3);

constexpr Function SRound{
    .name = "SRound",
    .category = category,
    .calls = core<qx::SRound>,
    .help = "A number rounded to the nearest count of multiples; halfway goes away from the origin",
    .args = {{"Number", "The number to round"}, Multiple(), Origin()},
    .examples = {"SRound(7.2, 2.5) = 7.5", "SRound(1.25, 0.5) = 1.5", "SRound(-1.25, 0.5) = -1.5"},
    .see_also = "SCeiling,SFloor",
};
QX_EXPORT(SRound, 3);

constexpr Function SDiv{
    .name = "SDiv",
    .category = category,
    .calls = core<qx::SDiv>,
    .help = "One number divided by another, or 0 if either is zero",
    .args = {{"Numerator", "The number to divide"}, {"Denominator", "The number to divide by"}},
    .examples = {"SDiv(6, 4) = 1.5", "SDiv(6, 0) = 0"},
    .see_also = "SPow",
};
QX_EXPORT(SDiv, 2);

constexpr Function SPow{
    .name = "SPow",
    .category = category,
    .calls = core<qx::SPow>,
    .help = "One number raised to the power of another: 1 for a power of zero, otherwise 0 for a number of zero",
    .args = {{"Number", "The number to raise"}, {"Exponent", "The power to raise it to"}},
    .examples = {"SPow(2, 10) = 1024", "SPow(0, 0) = 1", "SPow(0, -1) = 0", "SPow(-8, 1/3) ! #NUM!"},
    .see_also = "SDiv",
};
QX_EXPORT(SPow, 2);

constexpr Function StdEq{
    .name = "StdEq",
    .category = category,
    .calls = core<qx::StdEq>,
    .help = "True if two numbers are equal within 1e-12, as all functions of the library see it",
    .args = {{"Number1", "The first number"}, {"Number2", "The second number"}},
    .examples = {"StdEq(0.1 + 0.2, 0.3) = TRUE", "StdEq(1, 1.0001) = FALSE"},
};
QX_EXPORT(StdEq, 2);

constexpr Function ExtEuclid{
    .name = "ExtEuclid",
    .category = category,
    .calls = core<qx::ExtEuclid>,
    .help = "The greatest common divisor g of two whole numbers, and x and y with u*x + v*y = g",
    .args = {{"u", "A whole number"}, {"v", "A whole number"}},
    .examples = {"ExtEuclid(240, 46) = {2,-9,47}"},
    .see_also = "RelPrime,uvmodn",
};
QX_EXPORT(ExtEuclid, 2);

constexpr Function PrimeNum{
    .name = "PrimeNum",
    .category = category,
    .calls = core<qx::PrimeNum>,
    .help = "The prime number of a place in their order: 2, 3, 5, 7, 11 and so on",
    .args = {{"WhichOne", "Which prime number, 1 to 1,000,000"}},
    .examples = {"PrimeNum(1) = 2", "PrimeNum(100) = 541"},
    .see_also = "RelPrime",
};
QX_EXPORT(PrimeNum, 1);

constexpr Function RelPrime{
    .name = "RelPrime",
    .category = category,
    .calls = core<qx::RelPrime>,
    .help = "True if two whole numbers have no divisor in common but 1",
    .args = {{"u", "A whole number"}, {"v", "A whole number"}},
    .examples = {"RelPrime(14, 15) = TRUE", "RelPrime(14, 21) = FALSE"},
    .see_also = "ExtEuclid,PrimeNum",
};
QX_EXPORT(RelPrime, 2);

constexpr Function uvmodn{
    .name = "uvmodn",
    .category = category,
    .calls = core<qx::uvmodn>,
    .help = "The remainder of the product of two whole numbers divided by a third, from 0 to n - 1, however large the "
            "product",
    .args = {{"u", "A whole number"}, {"v", "A whole number"}, {"n", "The whole number to divide by, at least 1"}},
    .examples = {"uvmodn(7, 8, 10) = 6", "uvmodn(-7, 8, 10) = 4"},
    .see_also = "ExtEuclid,RelPrime",
};
QX_EXPORT(uvmodn, 3);

} // namespace qx::worksheet
