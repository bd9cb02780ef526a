// Business days counted in leaps, against the test of each single day.
#include "calendar/business_days.h"
#include "core/errors.h"

#include <gtest/gtest.h>

#include <random>

namespace qx::test {
namespace {

/// A user's own holidays and weekend.
struct Calendar {
    int BusDaySwitch;
    const AnnualSequence& yearly;
    const Range<date>& once;
    const Range<int>& weekend;

    bool isbd(const date& day) const { return !IsWE(day, weekend) && IsBD(day, BusDaySwitch, yearly, once); }
};

void fill(AnnualSequence& yearly, std::initializer_list<double> figures, int BusDaySwitch) {
    yearly.clear("AnnHols", DefaultSequence::none);
    for (const double figure : figures) yearly.append(figure);
    yearly.setrolling(BusDaySwitch, 0);
}

TEST(BusinessDayCounts, AgreeWithTheTestOfEachDay) {
    static Range<date> once, none;
    static Range<int> weekend;
    static AnnualSequence yearly, rolling, never;
    fill(yearly, {1.01, 2.28, 2.29, 5.01, 12.25, 12.26}, 0); // one day twice in most years
    fill(rolling, {1.01, 12.25, 12.26, 12.31}, 101);         // two that may roll on to one, and into the next year
    fill(never, {}, 0);
    std::mt19937 random(21);
    const auto pick = [&random](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    for (int i = 1; i <= 60; ++i) {
        once.dimension(i);
        once(i) = date::from_dtn(38000 + pick(0, 1200)); // unsorted, with repeats
    }
    for (int trial = 0; trial < 300; ++trial) {
        static constexpr int switches[] = {0, 20, 100, 200, 500, 7};
        weekend.dimension(pick(0, 3));
        for (int i = 1; i <= weekend.size(); ++i) weekend(i) = pick(1, 7);
        const AnnualSequence* const sequences[] = {&never, &yearly, &rolling};
        const Calendar calendar{switches[pick(0, 5)], *sequences[pick(0, 2)], once, weekend};
        const date from = date::from_dtn(38000 + pick(0, 800)), to = from.plusdays(pick(-3, 800));
        int days = 0;
        for (date day = from; day <= to; day.adddays(1)) days += calendar.isbd(day) ? 1 : 0;
        EXPECT_EQ(NetWorkDaysX(from, to, weekend, calendar.yearly, once, calendar.BusDaySwitch), days)
            << from.dtn() << " to " << to.dtn() << " switch " << calendar.BusDaySwitch;
    }
}

TEST(BusinessDayCounts, StepOnAndBackLikeAWalk) {
    static Range<date> once;
    static AnnualSequence yearly;
    fill(yearly, {1.01, 12.25, 12.26}, 0);
    once.dimension(400); // more than a year without a business day
    for (int i = 1; i <= once.size(); ++i) once(i) = date::from_dtn(38400 + i);
    const AnnualSequence quarters(4);
    for (const int BusDaySwitch : {0, 101}) {
        const Holidays holidays{BusDaySwitch, yearly, once};
        for (const int days : {1, 2, 5, 251, -1, -2, -260}) {
            for (const int start : {38000, 38205, 38400, 38550, 38810, 39006}) {
                date walked = date::from_dtn(start);
                for (int left = std::abs(days); left > 0;)
                    if (holidays.isbd(walked.adddays(days < 0 ? -1 : 1))) --left;
                const date leapt = DpDBD(date::from_dtn(start), days, BusDaySwitch, yearly, once, 5.0, quarters, 1);
                EXPECT_EQ(leapt.dtn(), walked.dtn()) << days << " from " << start << " switch " << BusDaySwitch;
            }
        }
    }
    EXPECT_THROW(DpDBD(date::from_dtn(630000), 1e9, 101, yearly, once, 5.0, quarters, 1), errlibdateoutofrange);
    EXPECT_THROW(DpDBD(date::from_dtn(38000), -1e10, 101, yearly, once, 5.0, quarters, 1), errlibdateoutofrange);
}

} // namespace
} // namespace qx::test
