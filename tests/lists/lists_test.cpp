// Laws of the lists and of whole numbers, and what a case cannot reach: a full variable buffer, bounded time.
#include "lists/lists.h"
#include "lists/number_theory.h"
#include "lists/regular_expressions.h"
#include "lists/text.h"
#include "lists/variables.h"
#include "numerics/lookup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numeric>
#include <random>

namespace qx {
namespace {

TEST(RoundList, KeepsItsTotalAndMovesNoItemByAStep) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> amount(-500.0, 500.0);
    static Range<double> values;
    for (const double multiple : {1.0, 0.05, 25.0})
        for (int n = 1; n <= 60; ++n) {
            values.dimension(n);
            for (double& value : values) value = amount(random);
            const double total = std::accumulate(values.begin(), values.end(), 0.0);
            const auto rounded = RoundList(values, multiple, true);
            const double rounded_total = std::accumulate(rounded.begin(), rounded.end(), 0.0);
            EXPECT_NEAR(rounded_total, std::round(total / multiple) * multiple, 1e-9) << n << " items to " << multiple;
            for (int i = 1; i <= n; ++i) {
                EXPECT_LT(std::fabs(rounded.get(i) - values.get(i)), multiple + 1e-9);
                EXPECT_NEAR(std::remainder(rounded.get(i), multiple), 0.0, 1e-9);
            }
        }
}

TEST(Disperse, AddsUpAndIsEven) {
    for (const int total : {-100, -7, 0, 1, 5, 11, 12, 13, 1000, 2147483647})
        for (int start = 1; start <= 4; ++start)
            for (int finish = start; finish <= start + 12; ++finish) {
                const auto amounts = Disperse(total, start, finish);
                EXPECT_EQ(std::accumulate(amounts.begin(), amounts.end(), 0LL), total);
                const auto [least, most] = std::minmax_element(amounts.begin() + (start - 1), amounts.end());
                EXPECT_LE(*most - *least, 1) << total << " over " << start << " to " << finish;
            }
}

TEST(WholeNumbers, ProductsAndFactorsHoldInWiderArithmetic) {
    std::mt19937_64 random(11);
    std::uniform_int_distribution<long long> number(-(1LL << 53), 1LL << 53);
    for (int i = 0; i < 2000; ++i) {
        const long long u = number(random), v = number(random), n = std::llabs(number(random)) + (i == 0);
        __extension__ using wide = __int128;
        const wide product = static_cast<wide>(u) * v % n;
        EXPECT_EQ(uvmodn(u, v, n), static_cast<long long>(product < 0 ? product + n : product));
        const auto& gxy = ExtEuclid(u, v);
        EXPECT_EQ(static_cast<long long>(gxy.get(1)), std::gcd(u, v));
        EXPECT_TRUE(static_cast<wide>(u) * static_cast<long long>(gxy.get(2)) +
                        static_cast<wide>(v) * static_cast<long long>(gxy.get(3)) ==
                    static_cast<wide>(std::gcd(u, v)));
    }
}

TEST(RegularExpressions, ASearchEndsWithinBoundedTime) {
    const std::string text(254, 'a');
    for (const char* expression : {"(a+)+b", "(a|aa)+b", "(a*)*b", "((((a*)*)*)*)*b", "(.*)(.*)(.*)(.*)(.*)(.*)x",
                                   "(?:a?){100}a{254}b", "(a(?1)?)+b", "(((a{1000}){1000}){1000})"}) {
        const auto start = std::chrono::steady_clock::now();
        try {
            EXPECT_EQ(RegNMatches(text, expression, false), 0) << expression;
        } catch (const errlibregexp&) {}
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << expression;
    }
}

TEST(RegularExpressions, MoreExpressionsThanAreKeptComeOutRight) {
    for (int round = 0; round < 3; ++round)
        for (int n = 1; n <= 40; ++n)
            EXPECT_EQ(RegSMatch(std::string(50, 'a'), "^a{" + std::to_string(n) + "}", false).size(),
                      static_cast<std::size_t>(n));
}

TEST(RegularExpressions, KnowTheLettersOfAllLanguages) {
    EXPECT_EQ(RegSMatch("ÉTÉ 2026", "é\\w+", true), "été");
    EXPECT_EQ(RegNMatches("Großjena, Łódź", "\\b[[:alpha:]]+\\b", false), 2);
    EXPECT_EQ(RegReplace("a\U0001F3E2b", "a.b", "$&$&", false), "a\U0001F3E2ba\U0001F3E2b");
    // Bytes that are not UTF-8 are those of a code page: here the pound sign and a small e with an acute accent.
    EXPECT_EQ(RegSMatch("Rent \xA3"
                        "500",
                        "[\xA3$]\\d+", false),
              "\xA3"
              "500");
    EXPECT_EQ(RegReplace("caf\xE9 5", "caf.", "\xE9", false), "\xE9 5");
}

TEST(ExtractNum, TakesPositionsFromOneAndBothEnds) {
    EXPECT_EQ(ExtractNum("Unit 127, Floor 3", 6, 8), 127.0);
    EXPECT_EQ(ExtractNum("Unit 127, Floor 3", 6, 6), 1.0);
    EXPECT_EQ(ExtractNum("12345", -3, 99), 12345.0);
    EXPECT_EQ(ExtractNum("12345", 4, 2), 0.0);
    EXPECT_EQ(ExtractNum("12345", 9, 12), 0.0);
}

TEST(LookupDIndex, FindsDaysAsLookupNIndexFindsTheirNumbers) {
    static Range<date> days;
    static Range<double> numbers;
    constexpr double falling[] = {38400.0, 38000.0, 38000.0, 37000.0};
    days.dimension(4);
    numbers.dimension(4);
    for (int i = 1; i <= 4; ++i) days(i) = date(numbers(i) = falling[i - 1]);
    for (int mode = 0; mode <= 8; ++mode)
        for (const double number : {36999.0, 37000.0, 37600.0, 38000.0, 38300.0, 38500.0})
            for (const double tolerance : {-1.0, 250.0})
                EXPECT_EQ(LookupDIndex(date(number), days, mode, tolerance, 0.0),
                          LookupNIndex(number, numbers, mode, tolerance, 0.0))
                    << number << " by " << mode;
    EXPECT_EQ(LookupDIndex(date(37600.0), days, ascend_greater_or_equal, -1.0, 0.0), 1.0);
    EXPECT_EQ(LookupDIndex(date(38300.0), days, closest, 99.0, 0.0), 0.0);
    EXPECT_EQ(LookupDIndex(date(38300.0), days, closest, 100.0, 0.0), 1.0);
}

/// Fills the buffer of a process of its own, since names stay as long as the process.
void fill_variables() {
    int names = 0;
    try {
        for (; names < 2000; ++names) SetNum(names, "variable " + std::to_string(names));
    } catch (const variablebufferfull&) {}
    bool right = names <= 1000 && names > 900; // other tests have set a few
    for (int i = 0; i < names; ++i) right = right && GetNum("variable " + std::to_string(i)) == i;
    right = right && SetNum(-1.0, "variable 0") == -1.0 && GetNum("variable 0") == -1.0;
    SetStr("texts have a buffer of their own", "one more");
    right = right && GetStr("one more") == "texts have a buffer of their own";
    std::exit(right ? 0 : 1);
}
TEST(Variables, ThousandNamesAndNotOneMore) { EXPECT_EXIT(fill_variables(), testing::ExitedWithCode(0), ""); }

} // namespace
} // namespace qx
