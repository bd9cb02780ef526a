// Annual sequences: how figures become dates, how dates are found and rolled, and the lengths between them.
#include "calendar/annual_sequence.h"
#include "calendar/holidays.h"
#include "support/calendar.h"
#include "support/traced.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

namespace qx::test {
namespace {

struct Sequence : AnnualSequence {
    explicit Sequence(std::initializer_list<double> figures, int BusDaySwitch = 0) {
        clear();
        start_list(static_cast<int>(figures.size()));
        for (const double figure : figures) append(figure);
        validate();
        setrolling(BusDaySwitch, 0);
    }
};

std::vector<double> figures(const AnnualSequence& sequence) {
    std::vector<double> all;
    for (int i = 1; i <= sequence.size(); ++i) all.push_back(sequence.figure(i));
    return all;
}

std::string set_to(double figure, int preset = 4, DefaultSequence default_sequence = DefaultSequence::in_advance) {
    AnnualSequence sequence;
    sequence.clear("Periods", default_sequence);
    try {
        sequence.set_figure(figure, preset);
        sequence.validate();
    } catch (const cls_exception& error) {
        return error.kind().name;
    }
    std::string text = std::to_string(sequence.preset()) + ":";
    for (const double each : figures(sequence)) text += " " + describe(each);
    if (sequence.BusDaySwitch() != 0)
        text +=
            " switch " + std::to_string(sequence.BusDaySwitch()) + "," + std::to_string(sequence.rolling_convention());
    return text;
}

TEST(AnnualSequence, OneFigureIsClassified) {
    EXPECT_EQ(set_to(0), "4: 1.010 4.010 7.010 10.010");
    EXPECT_EQ(set_to(2), "2: 1.010 7.010");
    EXPECT_EQ(set_to(-13), "-13: -3.250 6.240 9.290 12.250");
    EXPECT_EQ(set_to(15), "15: 1.010 4.010 5.010 6.010 7.010 8.010 9.010 10.010 11.010 12.010");
    EXPECT_EQ(set_to(14), "14: 1.010 4.010 7.010 10.010") << "no entries of its own: the general default";
    EXPECT_EQ(set_to(19), "19: 1.010 4.010 7.010 10.010");
    EXPECT_EQ(set_to(3.25), "1000: 3.250");
    EXPECT_EQ(set_to(-12.31), "1000: -12.310");
    EXPECT_EQ(set_to(2.30), "1000: 2.290");
    EXPECT_EQ(set_to(100.02), "4: 1.010 4.010 7.010 10.010 switch 100,2");
    EXPECT_EQ(set_to(1000), "4: 1.010 4.010 7.010 10.010 switch 1000,0");
    for (const double bad : {20.0, 3.0, -3.0, 0.5, -14.0, 12.32, 1000.5, -20.5, 1.32, 1e300, -1e300})
        EXPECT_EQ(set_to(bad), "errlibannseq") << bad;
}

TEST(AnnualSequence, ADefaultGoesByTheNameOfTheVariable) {
    EXPECT_EQ(set_to(0, 999, DefaultSequence::none), "999:");
    EXPECT_EQ(set_to(0, 999, DefaultSequence::none_if_omitted), "999:");
    EXPECT_EQ(set_to(0, 999, DefaultSequence::in_arrears), "999: -1.010 4.010 7.010 10.010");
    EXPECT_EQ(set_to(0, 999), "999: 1.010 4.010 7.010 10.010");
    EXPECT_EQ(set_to(0, -4), "-4: -1.010 4.010 7.010 10.010");
    AnnualSequence fixed(12);
    fixed.setpreset(4);
    EXPECT_EQ(fixed.preset(), 12) << "a preset once set stays";
    fixed.setpreset(AnnualSequence::own_list);
    EXPECT_EQ(fixed.preset(), AnnualSequence::own_list);
    EXPECT_EQ(fixed.size(), 12);
}

TEST(AnnualSequence, AListIsChecked) {
    EXPECT_EQ(figures(Sequence{2.30, 4.31}), (std::vector<double>{2.29, 4.30}));
    EXPECT_EQ(figures(Sequence{-1.01, 7.01}), (std::vector<double>{-1.01, 7.01}));
    EXPECT_EQ(figures(Sequence{1.01, -7.01}), (std::vector<double>{1.01, 7.01})) << "only the first sign counts";
    EXPECT_NEAR(Sequence{13.25}.get(1), 1.25, 1e-12);
    EXPECT_THROW((Sequence{12.25, 3.25}), errlibannseq);
    EXPECT_THROW((Sequence{3.25, 3.25}), errlibannseq);
    EXPECT_THROW((Sequence{1.32}), errlibannseq);
    EXPECT_THROW((Sequence{0.0}), errlibannseq);
    EXPECT_THROW((Sequence{24.0}), errlibannseq) << "rectified to month 0";
    EXPECT_THROW((Sequence{366.5}), errlibmax);
    EXPECT_THROW((Sequence{-12.32}), errlibmin);
    EXPECT_THROW(AnnualSequence().start_list(101), outofrange);
}

TEST(AnnualSequence, GeneratedFromOneDate) {
    const auto generated = [](double first, int n, bool month_end) {
        AnnualSequence sequence;
        sequence.generate(first, n, month_end);
        return figures(sequence);
    };
    const std::vector<double> ends = {1.31, 4.30, 7.31, 10.31};
    EXPECT_EQ(generated(1.31, 4, true), ends);
    EXPECT_EQ(generated(1.31, 4, false), ends);
    EXPECT_EQ(generated(10.31, 4, true), ends) << "sorted";
    EXPECT_EQ(generated(4.30, 4, true), ends);
    EXPECT_EQ(generated(4.30, 4, false), (std::vector<double>{1.30, 4.30, 7.30, 10.30}));
    EXPECT_EQ(generated(2.28, 4, true), (std::vector<double>{2.28, 5.28, 8.28, 11.28})) << "February has 29";
    EXPECT_EQ(generated(-6.24, 2, false), (std::vector<double>{-6.24, 12.24}));
    EXPECT_EQ(generated(18.24, 2, false), (std::vector<double>{6.24, 12.24}));
    EXPECT_EQ(generated(1.01, 13, false), (std::vector<double>{3.25, 6.24, 9.29, 12.25}));
    EXPECT_THROW(generated(1.01, 5, false), errlibillegalswitch);
    EXPECT_THROW(generated(0.5, 4, false), errlibannseq);
}

TEST(AnnualSequence, FindsDates) {
    const Sequence quarters{1.01, 4.01, 7.01, 10.01};
    EXPECT_EQ(quarters.nextdate(date(2005, 4, 1), true), date(2005, 4, 1));
    EXPECT_EQ(quarters.nextdate(date(2005, 4, 1), false), date(2005, 7, 1));
    EXPECT_EQ(quarters.nextdate(date(2005, 10, 1), false), date(2006, 1, 1));
    EXPECT_EQ(quarters.prevdate(date(2005, 4, 1), false), date(2005, 4, 1));
    EXPECT_EQ(quarters.prevdate(date(2005, 1, 1), true), date(2004, 10, 1));
    const Sequence yearly{6.24};
    EXPECT_EQ(yearly.prevdate(date(2005, 6, 24), true), date(2004, 6, 24));
    EXPECT_EQ(yearly.nextdate(date(2005, 6, 24), false), date(2006, 6, 24));
    EXPECT_EQ(yearly.nextdateshift(date(2005, 6, 24), true, true), date(2005, 6, 24));
    EXPECT_EQ(Sequence{-6.24}.prevdateshift(date(2005, 6, 24), false, true), date(2005, 6, 25));
    EXPECT_THROW(AnnualSequence().nextdate(date(2005, 1, 1), true), errlibannseq);
}

TEST(AnnualSequence, AnEntryOf29FebruaryIsTheLastDayOfFebruary) {
    const Sequence last{2.29}, twenty_eighth{2.28};
    for (int year = 1995; year <= 2105; ++year) {
        const date end = date(year, 2, 1).monthend();
        EXPECT_EQ(last.nextdate(date(year, 1, 1), true), end);
        EXPECT_EQ(last.nextdate(date(year - 1, 12, 1), true), end);
        EXPECT_EQ(last.prevdate(date(year, 3, 5), true), end);
        EXPECT_EQ(last.prevdate(date(year + 1, 1, 5), true), end);
        EXPECT_TRUE(last.isdate(end));
        EXPECT_EQ(twenty_eighth.prevdate(date(year, 3, 5), true), date(year, 2, 28));
    }
}

// Next and previous undo each other, and number the dates without gaps.
TEST(AnnualSequence, NextAndPreviousAreInverse) {
    for (const int preset : {1, 2, 4, 12, 13, 15}) {
        const AnnualSequence sequence(preset);
        date day(1999, 1, 1);
        int number = sequence.seqnumber(day, false);
        for (int i = 0; i < 300; ++i) {
            const AnnualSequence::Found next = sequence.findnext(day, false);
            EXPECT_EQ(next.number, ++number) << preset << " " << describe(day);
            EXPECT_EQ(sequence.prevdate(next.when, true), sequence.prevdate(day, false));
            EXPECT_EQ(sequence.nextdate(next.when, true), next.when);
            day = next.when;
        }
        EXPECT_EQ(sequence.dateplusperiods(sequence.dateplusperiods(day, 98), -98), day);
        EXPECT_THROW(sequence.dateplusperiods(day, 99), errliboveriterated);
        EXPECT_THROW(sequence.dateplusperiods(day, -99), errliboveriterated);
    }
}

// Dates crowded into a few months, against the days of three years one by one.
TEST(AnnualSequence, FindsDatesThatAreSpreadUnevenly) {
    const Sequence sequences[] = {Sequence{1.01, 1.02, 1.31, 2.29, 12.31}, Sequence{11.05, 11.06, 12.01},
                                  Sequence{1.01, 1.02, 1.03, 1.04}, Sequence{2.28, 2.29, 3.01, 6.15, 6.16, 6.17, 6.30}};
    for (const AnnualSequence& sequence : sequences) {
        const auto recurs = [&](const date& day) {
            for (int i = 1; i <= sequence.size(); ++i) {
                const auto [month, of_month] = AnnualSequence::month_day(sequence(i));
                if (day.month() == month && day.day() == std::min(of_month, day.daysinmonth())) return true;
            }
            return false;
        };
        date last;
        for (date day(2003, 1, 1); day < date(2006, 1, 1); day.adddays(1)) {
            const bool hit = recurs(day);
            if (!last.iszero()) {
                EXPECT_EQ(sequence.prevdate(day, true), last) << describe(day);
                EXPECT_EQ(sequence.prevdate(day, false), hit ? day : last) << describe(day);
                if (hit) {
                    EXPECT_EQ(sequence.nextdate(last, false), day);
                    EXPECT_EQ(sequence.nextdate(last.plusdays(1), true), day);
                }
            }
            if (hit) last = day;
        }
    }
}

// A cursor answers as its sequence does, wherever it has been, also around the calendar's ends.
TEST(SequenceCursor, AnswersAsItsSequence) {
    std::mt19937 random(1);
    const auto one_of = [&](int from, int to) { return std::uniform_int_distribution<>(from, to)(random); };
    for (const AnnualSequence& sequence :
         {Sequence{1.01, 4.01, 7.01, 10.01}, Sequence{-2.28, -2.29, -3.01}, Sequence{12.31},
          Sequence{1.31, 2.29, 3.31, 4.30, 5.31, 6.30, 7.31, 8.31, 9.30, 10.31, 11.30, 12.31},
          Sequence({1.01, 4.01, 7.01, 10.01}, 100)}) {
        SequenceCursor cursor(sequence);
        for (const int begin : {2, 3600, 38000, 73050, 639500}) {
            for (int i = 0, day = begin; i < 400; ++i, day = std::clamp(day + one_of(-20, 45), 2, 640637)) {
                if (one_of(0, 30) == 0) day = begin + one_of(0, 700);
                const date from = date::from_dtn(day);
                const bool strict = one_of(0, 1) == 0;
                if (one_of(0, 1) == 0)
                    ASSERT_EQ(cursor.prevdate(from, strict), sequence.prevdate(from, strict)) << describe(from);
                else
                    ASSERT_EQ(cursor.nextdate(from, strict), sequence.nextdate(from, strict)) << describe(from);
            }
        }
    }
    const AnnualSequence none;
    EXPECT_THROW(SequenceCursor(none).nextdate(date(2005, 1, 1), true), errlibannseq);
}

TEST(AnnualSequence, RollsToBusinessDays) {
    const Sequence quarters({1.01, 4.01, 7.01, 10.01}, 100);
    EXPECT_EQ(quarters.prevdate(date(2005, 1, 2), false), date(2004, 10, 1)) << "1 January stands at 4 January 2005";
    EXPECT_EQ(quarters.prevdate(date(2005, 1, 4), false), date(2005, 1, 4));
    EXPECT_EQ(quarters.prevdate(date(2005, 1, 4), true), date(2004, 10, 1));
    EXPECT_EQ(quarters.nextdate(date(2005, 1, 2), false), date(2005, 1, 4)) << "carried past the given date";
    EXPECT_EQ(quarters.nextdate(date(2005, 1, 4), true), date(2005, 1, 4));
    EXPECT_EQ(quarters.nextdate(date(2005, 1, 4), false), date(2005, 4, 1));
    EXPECT_EQ(quarters.findprev(date(2005, 1, 4), false).number, 2005 * 4 + 1);
    // every date found is a business day, and the walk neither stops nor skips
    date day(2000, 1, 1);
    for (int i = 1; i <= 200; ++i) {
        const date next = quarters.nextdate(day, false);
        EXPECT_TRUE(isbd(next, 100));
        EXPECT_GT(next, day);
        EXPECT_EQ(quarters.prevdate(next, true), i == 1 ? date(1999, 10, 1) : day);
        day = next;
    }
    EXPECT_EQ(day.year(), 2049);
}

TEST(AnnualSequence, PeriodsBetween) {
    const AnnualSequence quarters(4);
    EXPECT_EQ(quarters.periodsbetween(date(2005, 1, 1), date(2005, 4, 1)), 1.0);
    EXPECT_EQ(quarters.periodsbetween(date(2005, 1, 1), date(2055, 1, 1)), 200.0);
    EXPECT_DOUBLE_EQ(quarters.periodsbetween(date(2005, 2, 15), date(2005, 8, 15)), 45.0 / 90 + 1 + 45.0 / 92);
    EXPECT_DOUBLE_EQ(quarters.periodsbetween(date(2005, 4, 11), date(2005, 5, 1)), 20.0 / 91) << "within one period";
    EXPECT_EQ(quarters.periodsbetween(date(2005, 4, 1), date(2005, 1, 1)), 0.0);
    EXPECT_EQ(quarters.monthsbetween(date(2005, 1, 1), date(2005, 7, 1)), 6.0);
    EXPECT_EQ(quarters.yearsbetween(date(2005, 1, 1), date(2005, 7, 1)), 0.5);
    // what a date divides adds up
    const AnnualSequence quarter_days(13);
    const date from(2005, 1, 7), to(2007, 11, 2);
    for (date cut = from; cut <= to; cut.adddays(13))
        ASSERT_NEAR(quarter_days.periodsbetween(from, cut) + quarter_days.periodsbetween(cut, to),
                    quarter_days.periodsbetween(from, to), 1e-12)
            << describe(cut);
}

TEST(AnnualSequence, InWords) {
    EXPECT_EQ(describe_periods(AnnualSequence(4)), " periods commencing quarterly (1Jan,1Apr,1Jul,1Oct) ");
    EXPECT_EQ(describe(AnnualSequence(-1)), " in arrear, annually (1 Jan payment of Jul-Dec accrual) ");
    EXPECT_EQ(describe_periods(Sequence{-3.25, 9.29}), "2 periods up to and including 25Mar,29Sep");
    EXPECT_EQ(preset_text(16), "Don't recognise this type of annual sequence ");
    EXPECT_EQ(describe(Sequence({6.24}, 101)), "1 in advance, 24Jun UK Business Days (English and Wales)");
}

} // namespace
} // namespace qx::test
