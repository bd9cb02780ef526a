// Rent reviews on, between and before review dates.
#include "calendar/reviews.h"
#include "support/calendar.h"

#include <gtest/gtest.h>

namespace qx::test {
namespace {

const date first(2005, 6, 24);

TEST(Reviews, OnAReviewDateRoundDownDecides) {
    EXPECT_EQ(LastReview(first, first, 60, false), first);
    EXPECT_TRUE(LastReview(first, first, 60, true).iszero());
    EXPECT_EQ(NextReview(first, first, 60, false), date(2010, 6, 24));
    EXPECT_EQ(NextReview(first, first, 60, true), first);
    EXPECT_EQ(LastReview(date(2015, 6, 24), first, 60, false), date(2015, 6, 24));
    EXPECT_EQ(LastReview(date(2015, 6, 24), first, 60, true), date(2010, 6, 24));
    EXPECT_EQ(NextReview(date(2015, 6, 24), first, 60, false), date(2020, 6, 24));
    EXPECT_EQ(NextReview(date(2015, 6, 24), first, 60, true), date(2015, 6, 24));
}

TEST(Reviews, BetweenAndBefore) {
    EXPECT_EQ(LastReview(date(2013, 1, 1), first, 60, true), date(2010, 6, 24));
    EXPECT_EQ(NextReview(date(2013, 1, 1), first, 60, true), date(2015, 6, 24));
    EXPECT_TRUE(LastReview(date(2005, 6, 23), first, 60, false).iszero());
    EXPECT_EQ(NextReview(date(2001, 1, 1), first, 60, false), first);
    EXPECT_EQ(NextReview(date(2013, 1, 1), first, 0, false), date(2013, 1, 1)) << "no further reviews";
    EXPECT_EQ(LastReview(date(2013, 1, 1), first, 0, false), date(2013, 1, 1));
    EXPECT_THROW(NextReview(first, first, 1001, false), errlibmax);
    EXPECT_THROW(LastReview(first, first, -1, false), errlibmin);
}

// The days of 30 years lie between the review before and the one after, which are an interval apart. Months have 30
// days here, so that a day 31 counts as the next month's first; so late starts are passed over.
TEST(Reviews, NextFollowsLast) {
    for (const int day_of_month : {1, 15, 24})
        for (const int interval : {1, 3, 12, 60}) {
            const date start(2003, 12, day_of_month);
            for (date day = start; day.year() < 2034; day.adddays(7)) {
                if (day.day() == 31) continue;
                const date last = LastReview(day, start, interval, false);
                const date next = NextReview(day, start, interval, false);
                ASSERT_LE(last, day) << describe(start) << " " << interval;
                ASSERT_GT(next, day) << describe(start) << " " << interval;
                ASSERT_EQ(NextReview(last, start, interval, false), next)
                    << describe(start) << " " << interval << describe(day);
            }
        }
}

TEST(Reviews, CountTheirIntervals) {
    EXPECT_EQ(last_review(date(2016, 1, 1), first, 60, false).intervals, 2);
    EXPECT_EQ(last_review(date(2016, 1, 1), first, 60, false, 1).when, date(2010, 6, 24)) << "a step earlier";
    EXPECT_EQ(next_review(date(2016, 1, 1), first, 60, false, 1).when, date(2025, 6, 24)) << "a step later";
}

} // namespace
} // namespace qx::test
