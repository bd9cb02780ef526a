// Time periods: how they are set, what they hold, and what is paid for in them.
#include "calendar/date_arithmetic.h"
#include "calendar/time_period.h"
#include "support/calendar.h"
#include "support/traced.h"

#include <gtest/gtest.h>

#include <vector>

namespace qx::test {
namespace {

timeperiod period(double Time, double Base) {
    timeperiod set;
    set.settime(Time, Base);
    return set;
}

timeperiod months(const date& from, int n) {
    timeperiod set;
    set.settime(from, n);
    return set;
}

TEST(TimePeriod, IsSetFromTimeAndBase) {
    const double january_end = date(2004, 1, 31).dtn();
    EXPECT_EQ(period(january_end, 12).to(), date(2005, 1, 31));
    EXPECT_EQ(period(january_end, 1).to(), date(2004, 2, 29)) << "month ends are kept";
    EXPECT_EQ(period(2005, 0).lendays(), 0);
    EXPECT_EQ(period(2005, 2006.5).to(), date(2006, 7, 1));
    EXPECT_EQ(period(2005, 38400).lendays(), 38400 - 38353);
    EXPECT_EQ(period(2005, 2004).lendays(), 0) << "an end before the start";
    EXPECT_EQ(period(2005, 1899).lenyears(), 1899 / 12.0);
    for (const double bad : {-1.0, 0.5, 2.5, 1e-13, 1899.5, -1e300})
        EXPECT_THROW(period(2005, bad), errlibbadbase) << bad;
    EXPECT_THROW(period(2005, 1900), errlibmindate);
    EXPECT_THROW(period(2005, 700000), outofrange);
    EXPECT_THROW(period(1909, 1), errlibmindate);
}

TEST(TimePeriod, HoldsItsStartAndNotItsEnd) {
    const timeperiod year = period(2005, 12);
    EXPECT_TRUE(year.contains(date(2005, 1, 1)));
    EXPECT_TRUE(year.contains(date(2005, 12, 31)));
    EXPECT_FALSE(year.contains(date(2006, 1, 1)));
    timeperiod cut = year;
    cut.intersect(period(2005.5, 12));
    EXPECT_EQ(cut, period(2005.5, 6));
    cut.intersect(period(2007, 12));
    EXPECT_EQ(cut.from(), date(2007, 1, 1));
    EXPECT_EQ(cut.lendays(), 0);
    EXPECT_TRUE(period(2004, 12) < year);
    EXPECT_FALSE(period(2004, 24) < year) << "both ends must be before";
    EXPECT_EQ(describe(period(2005, 3)), "1Jan2005 to 1Apr2005");
}

TEST(TimePeriod, OfATimeBase) {
    static Range<date> base;
    base.dimension(3);
    base(1) = date(2005, 1, 1);
    base(2) = date(2006, 1, 1);
    base(3) = date(2007, 7, 1);
    timeperiod each;
    each.setfromtimebase(base, 2);
    EXPECT_EQ(describe(each), "1Jan2006 to 1Jul2007");
    each.setfromtimebase(base, 3);
    EXPECT_EQ(each.to(), date(2008, 7, 1)) << "2007 less 2006.0: one year, though the one before is a year and a half";
    each = timebase_period(base, 3);
    EXPECT_EQ(each.to(), date(2009, 1, 1)) << "as long as the one before";
    EXPECT_THROW(each.setfromtimebase(base, 4), outofrange);
    base.dimension(1);
    each.setfromtimebase(base, 1);
    EXPECT_EQ(each, period(2005, 12));
    each = timebase_period(base, 1);
    EXPECT_EQ(each, period(2005, 12));
}

TEST(TimePeriod, MeasuresTheOverlap) {
    const AnnualSequence quarters(4);
    const timeperiod year = period(2005, 12);
    EXPECT_EQ(year.lenmonths(date(2004, 1, 1), date(2008, 1, 1), 5, quarters), 12.0);
    EXPECT_EQ(year.lenmonths(date(2005, 10, 1), date(2008, 1, 1), 5, quarters), 3.0);
    EXPECT_EQ(year.lenmonths(date(2006, 1, 1), date(2008, 1, 1), 5, quarters), 0.0);
    EXPECT_EQ(year.lenmonths(date(2004, 1, 1), date(2005, 1, 1), 5, quarters), 0.0);
    EXPECT_EQ(year.lenmonths(date(2005, 5, 1), date(2005, 2, 1), 5, quarters), 0.0);
    EXPECT_EQ(year.lenyrs(date(2004, 1, 1), date(2005, 7, 1), 4.03, quarters), 0.5);
    timeperiod backward;
    backward.setends(date(2006, 1, 1), date(2005, 1, 1));
    EXPECT_EQ(backward.lenmonths(date(2004, 1, 1), date(2008, 1, 1), 5, quarters), 0.0);
    EXPECT_EQ(backward.lenmonths(date(2004, 1, 1), date(2008, 1, 1), 5, quarters, true), -12.0);
    EXPECT_THROW(year.lenmonthsbasic(date(2005, 1, 1), date(2006, 1, 1), 6), errlibillegaldaycount);
}

// A stream paid quarterly in arrears in a monthly time row: each payment settles the quarter before it.
TEST(CashTime, InArrears) {
    const AnnualSequence quarters(-4);
    const date start(2005, 1, 1), finish(2005, 12, 31);
    const auto span = [&](int month) {
        return describe(CashTime(months(date(2005, month, 1), 1), quarters, start, finish, true, 1));
    };
    EXPECT_EQ(span(4), "1Jan2005 to 1Apr2005");
    EXPECT_EQ(span(5), "1Apr2005 to 1Apr2005") << "no payment, no length";
    EXPECT_EQ(span(12), "1Oct2005 to 1Jan2006") << "the last period stretches to the last payment";
    EXPECT_EQ(CashTime(months(date(2005, 11, 1), 1), quarters, start, date(2005, 11, 15), true, 1).to(),
              date(2006, 1, 1));
    EXPECT_TRUE(CashTime(months(date(2006, 1, 1), 1), quarters, start, finish, true, 1).iszero());
    EXPECT_EQ(describe(CashTime(months(date(2006, 1, 1), 1), quarters, start, finish, false, 1)),
              "1Oct2005 to 1Jan2006");
}

TEST(CashTime, InAdvance) {
    const AnnualSequence quarters(4);
    const date start(2005, 2, 15), finish(2005, 12, 31);
    const auto span = [&](int year, int month, double mode = 1) {
        return describe(CashTime(months(date(year, month, 1), 1), quarters, start, finish, true, mode));
    };
    EXPECT_EQ(span(2005, 1), "1Jan1900 to 1Jan1900") << "before the start";
    EXPECT_EQ(span(2005, 2), "1Jan2005 to 1Apr2005") << "the first period reaches back";
    EXPECT_EQ(span(2005, 3), "1Apr2005 to 1Apr2005");
    EXPECT_EQ(span(2005, 4), "1Apr2005 to 1Jul2005");
    EXPECT_EQ(span(2005, 4, 1.10), "1Apr2005 to 1Jul2005") << "due on the 1st, received on the 11th";
    EXPECT_EQ(span(2005, 2, 1.20), "1Jan1900 to 1Jan1900") << "start and 20 days is in March";
    EXPECT_EQ(span(2005, 3, 1.20), "1Jan2005 to 1Apr2005") << "the first period, now March";
}

// Whatever the sequence, the spans of a time row cover the stream once.
TEST(CashTime, PaysForTheWholeStreamOnce) {
    for (const int preset : {1, 4, 12, 13, -1, -4, -12, -13})
        for (const int length : {1, 3, 12}) {
            const AnnualSequence sequence(preset);
            const date start(2005, 2, 15), finish(2009, 11, 3);
            double paid = 0.0;
            for (date from(2003, 1, 1); from.year() < 2013; from.addmonths(length, true))
                paid += CashTime(months(from, length), sequence, start, finish, true, 1)
                            .lenmonths(start, finish, 5, sequence);
            EXPECT_NEAR(paid, finish.months() - start.months(), 1e-9) << preset << " by " << length << " months";
        }
}

TEST(ProjMode, HasADelayInItsBits) {
    EXPECT_EQ(payment_delay(1.05), 5);
    EXPECT_EQ(payment_delay(1.15), 114 % 100) << "1.15 is a little less than itself";
    EXPECT_EQ(payment_delay(0.3), 30);
    EXPECT_TRUE(iscash(1.05) && iscash(3) && iscash(-1));
    EXPECT_FALSE(iscash(0) || iscash(2) || iscash(4) || iscash(5));
    EXPECT_EQ(projmode_text(5), "Warning: Unknown ProjMode, type ");
}

} // namespace
} // namespace qx::test
