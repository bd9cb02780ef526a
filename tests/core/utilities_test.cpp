// Tolerance, powers, values as text, short texts.
#include "core/utilities.h"
#include "support/traced.h"

#include <limits>

namespace qx::test {
namespace {

using Utilities = Traced;

TEST(Tolerance, IncludesItsEnd) {
    EXPECT_TRUE(iszero(1e-12));
    EXPECT_TRUE(iszero(-1e-12));
    EXPECT_FALSE(iszero(1.1e-12));
    EXPECT_TRUE(isequal(1.0, 1.0 + 5e-13));
    EXPECT_FALSE(isequal(1.0, 1.0 + 3e-12));
    EXPECT_FALSE(iszero(std::nan("")));
    EXPECT_EQ(fraction(-2.75), -0.75);
    EXPECT_EQ(safe_divide(5, 1e-13), 0.0);
    EXPECT_EQ(safe_divide(1e-13, 1e-3), 0.0);
}

TEST_F(Utilities, SafePowTakesTheFirstLineThatApplies) {
    EXPECT_EQ(SafePow(0, 0.0), 1.0);
    EXPECT_EQ(SafePow(0, 2.0), 0.0);
    EXPECT_EQ(SafePow(0, -1.0), 0.0);
    EXPECT_EQ(SafePow(0, -1), 0.0);
    EXPECT_EQ(SafePow(1, 1e9), 1.0);
    EXPECT_EQ(SafePow(-2, 3.0), -8.0);
    EXPECT_EQ(SafePow(-2, 3), -8.0);
    EXPECT_EQ(SafePow(2, -2), 0.25);
    EXPECT_EQ(SafePow(4, 0.5), 2.0);
    EXPECT_EQ(SafePow(1e-12, 2), 1e-24) << "only below the tolerance is a base rounded to zero";
    EXPECT_EQ(trace().count(), 0);
    EXPECT_EQ(SafePow(1e-13, 2.0), 0.0);
    EXPECT_EQ(SafePow(-1e-13, 0.5), 0.0) << "rounding comes before the fractional exponent";
    EXPECT_EQ(trace().text(1), "Info\t\tWarning: Small Number rounded to zero in power routine.");
    EXPECT_EQ(trace().count(), 2);
    EXPECT_EQ(
        failure<errlibbadexponentiation>([] { SafePow(-8, 1.0 / 3); }),
        "Error LIB07: Illegal Exponentiation \nFunction: Utilities Module. \nMessage: SafePow routine.  Can't have "
        "a fractional exponent with a negative number, number=-8.000, exponent=0.333. ");
}

TEST(Describe, NumbersHaveThreeDecimals) {
    EXPECT_EQ(describe(1234.5), "1234.500");
    EXPECT_EQ(describe(0.0), "0.000");
    EXPECT_EQ(describe(-0.0), "0.000");
    EXPECT_EQ(describe(-2.0005001), "-2.001");
    EXPECT_EQ(describe(0.25), "0.250");
    EXPECT_EQ(describe(2e-8), "0.000 ") << "a least width of 6, for log10 is -7.7";
    EXPECT_EQ(describe(1e300).size(), 305u);
    EXPECT_EQ(describe(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(describe(std::nan("")), "nan");
    EXPECT_EQ(describe(-7), "-7");
    EXPECT_EQ(describe(true), "true");
    EXPECT_EQ(text_of("a ", 2, " of ", 1.5), "a 2 of 1.500");
}

TEST(Ministring, KeepsThirtyFourBytes) {
    const std::string digits = "0123456789012345678901234567890123456789";
    const ministring label(digits);
    EXPECT_EQ(label.str(), digits.substr(0, 34));
    EXPECT_EQ(label[33], '3');
    EXPECT_EQ(label[34], '\0');
    EXPECT_EQ(label[-1], '\0');
    EXPECT_EQ(ministring("x").first(), 'x');
    EXPECT_EQ(ministring(std::string("a\0b", 3)).str(), "a");
}

TEST(MinistringDeathTest, ComparingIsAProgrammersError) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH((void)(ministring("a") < ministring("b")), "ministring");
}

} // namespace
} // namespace qx::test
