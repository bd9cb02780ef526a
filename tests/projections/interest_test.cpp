// What interest on balances takes beside the worksheet's arguments: margins, overrides, options; and the levels it
// averages.
#include "projections/interest.h"

#include "projections/levels.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace qx::test {
namespace {

void fill(Range<date>& dates, std::initializer_list<double> numbers) {
    dates.dimension(static_cast<int>(numbers.size()));
    int i = 0;
    for (const double number : numbers) dates(++i) = date(number);
}
void fill(Range<double>& amounts, std::initializer_list<double> numbers) {
    amounts.dimension(static_cast<int>(numbers.size()));
    int i = 0;
    for (const double number : numbers) amounts(++i) = number;
}

/// A balance of 1000 from 2005 at 10%.
class OneBalance : public testing::Test {
  protected:
    OneBalance() {
        fill(from, {2005});
        fill(balance, {1000});
        fill(rate_from, {2000});
        fill(rate, {0.1});
        fill(override_dates, {});
        fill(overrides, {});
    }
    double interest(double start, double end, int options = 0, double margin = 0.0, double mode = 0.0) const {
        return FInterestM(timeperiod(date(start), date(end)), rate_from, rate, finish, from, balance, override_dates,
                          overrides, margin, options, 5.0, quarters, mode);
    }

    static inline Range<date> from, rate_from, override_dates;
    static inline Range<double> balance, rate, overrides;
    date finish{2007, 1, 1};
    const AnnualSequence quarters{-4};
};

TEST_F(OneBalance, BearsTheMarginToo) { EXPECT_NEAR(interest(2005, 2006, 0, 0.02), -120.0, 1e-9); }

TEST_F(OneBalance, TakesOverridesBetweenTheirDates) {
    fill(override_dates, {2005, 2006});
    fill(overrides, {-7, 0});
    EXPECT_NEAR(interest(2005, 2006), -7.0, 1e-9);
    EXPECT_NEAR(interest(2005.25, 2005.5), 0.0, 1e-9) << "none falls in the period, and that counts";
    EXPECT_NEAR(interest(2005.25, 2005.5, zero_is_no_override), -25.0, 1e-9);
    EXPECT_NEAR(interest(2005, 2006, zero_is_no_override), -7.0, 1e-9);
    EXPECT_NEAR(interest(2005, 2006, ignore_overrides), -100.0, 1e-9);
    EXPECT_NEAR(interest(2005.75, 2006.25), -50.0, 1e-9) << "beyond the last of them";
}

TEST_F(OneBalance, SettlesItsLastInterestOnTheNextDateIfCashIsUnlimited) {
    finish = date(2005, 12, 1); // 2 months after a date of the sequence
    const double october = 2005.75, december = 2005 + 11.0 / 12.0, january = 2006, february = 2006 + 1.0 / 12.0;
    EXPECT_NEAR(interest(december, january, 0, 0.0, 1.0), -1000 * 0.1 * 2 / 12, 1e-9) << "in the period that ends it";
    EXPECT_NEAR(interest(january, february, 0, 0.0, 1.0), 0.0, 1e-9);
    EXPECT_NEAR(interest(december, january, unlimited_cash, 0.0, 1.0), 0.0, 1e-9);
    EXPECT_NEAR(interest(january, february, unlimited_cash, 0.0, 1.0), -1000 * 0.1 * 2 / 12, 1e-9);
    EXPECT_NEAR(interest(october, december, unlimited_cash, 0.0, 1.0), -25.0, 1e-9) << "July to September";
}

TEST(Levels, BecomeOneNumberBySwitch) {
    static Range<date> from;
    static Range<double> levels;
    fill(from, {2005, 2005.5});
    fill(levels, {10, 30});
    const date finish(2006.5);
    const AnnualSequence quarters(4);
    const auto level = [&](double start, double end, int choice) {
        return ALevels(timeperiod(date(start), date(end)), FromSteps{finish, from}, View<double>(levels), choice,
                       {5.0, quarters});
    };
    EXPECT_NEAR(level(2005, 2006, level_average), 20.0, 1e-12);
    EXPECT_NEAR(level(2005.25, 2005.75, level_of_ends), 20.0, 1e-12);
    EXPECT_EQ(level(2005, 2006, level_at_start), 10.0);
    EXPECT_EQ(level(2005, 2006, level_at_finish), 30.0);
    EXPECT_EQ(level(2005, 2006.5, level_at_finish), 0.0) << "the finish itself is out";
    EXPECT_EQ(level(2005, 2006, level_least), 10.0);
    EXPECT_EQ(level(2005, 2006, level_greatest), 30.0);
    EXPECT_EQ(level(2005.5, 2006, level_least), 30.0);
    EXPECT_EQ(level(2005, 2006, 6), 0.0);
    EXPECT_EQ(level(2005, 2006, -1), 0.0);
    EXPECT_EQ(level(2004, 2004.5, level_average), 0.0) << "before the first";
    EXPECT_NEAR(level(2004.5, 2005.5, level_average), 10.0, 1e-12) << "the time before the first does not count";
    EXPECT_NEAR(level(2006, 2007, level_average), 15.0, 1e-12) << "so does 0 after the finish";
    EXPECT_EQ(level(2007, 2008, level_average), 0.0);
    EXPECT_EQ(Levels(date(2005.5), FromSteps{finish, from}, levels), 30.0);
    EXPECT_EQ(Levels(finish, FromSteps{finish, from}, levels), 0.0);
}

} // namespace
} // namespace qx::test
