// Laws of growth, forecasts and levels over random lists, dates and periods.
#include "projections/levels.h"

#include "projections/constant_rate.h"
#include "projections/forecast.h"
#include "projections/growth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace qx::test {
namespace {

class Projections : public testing::Test {
  protected:
    static constexpr int rounds = 400;

    /// A day from 2000 to 2019.
    date day() { return date(static_cast<double>(std::uniform_int_distribution(36526, 43830)(random))); }
    double figure(double low, double high) { return std::uniform_real_distribution(low, high)(random); }
    int count() { return std::uniform_int_distribution(1, 6)(random); }
    std::vector<date> days(int n) {
        std::vector<date> list(n);
        for (date& item : list) item = day();
        std::sort(list.begin(), list.end());
        return list;
    }
    std::vector<double> figures(int n, double low, double high) {
        std::vector<double> list(n);
        for (double& item : list) item = figure(low, high);
        return list;
    }
    timeperiod period() {
        const std::vector<date> ends = days(2);
        return {ends[0], ends[1]};
    }
    /// Under day counts by which parts add up: actual/360, actual/365 or decimal months.
    Measure measure() {
        constexpr double codes[] = {2, 3, 5};
        return {codes[std::uniform_int_distribution(0, 2)(random)], quarters};
    }

    template <class T>
    static View<T> view(const std::vector<T>& list) {
        return {list.data(), static_cast<int>(list.size())};
    }

    std::mt19937 random{12};
    const AnnualSequence quarters{4};
};

TEST_F(Projections, GrowthFromDateToDateIsTheProductOfItsParts) {
    for (int round = 0; round < rounds; ++round) {
        const int n = count();
        const auto dates = days(n);
        const auto rates = figures(n, -0.3, 0.4);
        const Growth growth{view(dates), view(rates)};
        const auto part = days(3);
        const auto grown = [&](int from, int to) {
            return GrowFromTo(part[from], part[to], 1.0, growth, growth_exponential, 0, any_measure());
        };
        // Before the first growth date the whole has no growth, and neither have the parts.
        EXPECT_NEAR(grown(0, 1) * grown(1, 2), grown(0, 2), 1e-9 * grown(0, 2));
    }
}

TEST_F(Projections, GrowthWithReviewsIsThatOfTheLastReview) {
    for (int round = 0; round < rounds; ++round) {
        const auto dates = days(2);
        const auto rates = figures(2, -0.3, 0.4);
        const Growth growth{view(dates), view(rates)};
        const int months = count() * 3;
        const date when = day();
        const date review = review_before(when, dates[0], months);
        if (review.iszero()) {
            EXPECT_EQ(Grow(when, 100.0, growth, months), 100.0);
            continue;
        }
        EXPECT_LE(review, when);
        EXPECT_GT(review.plusmonths(months, true), when.plusdays(-2));
        EXPECT_DOUBLE_EQ(Grow(when, 100.0, growth, months), Grow(review, 100.0, growth, 0));
    }
}

TEST_F(Projections, TheSumOfAForecastIsThatOfItsPartsAndOfItsValues) {
    for (int round = 0; round < rounds; ++round) {
        const int n = count();
        const auto values = figures(n, -100, 100);
        const date start = day();
        const Forecast forecast{view(values), start, count()};
        const Measure by = measure();
        const auto part = days(3);
        const double whole = SumFcst(part[0], part[2], forecast, by);
        EXPECT_NEAR(SumFcst(part[0], part[1], forecast, by) + SumFcst(part[1], part[2], forecast, by), whole, 1e-7);
        double by_value = 0.0;
        const timeperiod all{part[0], part[2]};
        for (int i = 1; i <= n; ++i) {
            const date from = forecast.start_of(i), to = i < n ? forecast.start_of(i + 1) : DateCrit;
            by_value += ConX(all, {from, to}, values[i - 1], by, false);
        }
        EXPECT_NEAR(whole, by_value, 1e-7);
    }
}

TEST_F(Projections, LevelsByToDatesMirrorThoseByFromDates) {
    for (int round = 0; round < rounds; ++round) {
        const int n = count();
        const auto from = days(n + 1);
        const std::vector<date> to(from.begin() + 1, from.end());
        const auto levels = figures(n, -10, 10);
        const FromSteps by_from{from.back(), view(from).upto(n)};
        const ToSteps by_to{from.front(), view(to)};
        const timeperiod time = period();
        const Measure by = measure();
        for (const int choice : {1, 2, 3, 4, 5})
            EXPECT_EQ(ALevels(time, by_from, view(levels), choice, by), ALevels(time, by_to, view(levels), choice, by))
                << choice;
    }
}

TEST_F(Projections, AnAverageLiesBetweenTheLeastAndTheGreatest) {
    for (int round = 0; round < rounds; ++round) {
        const int n = count();
        const auto from = days(n);
        const auto levels = figures(n, 1, 10);
        const auto growth_dates = days(n);
        const auto rates = figures(n, -0.3, 0.4);
        const Growth growth{view(growth_dates), view(rates)};
        const FromSteps steps{DateCrit, view(from)};
        const timeperiod time = period();
        const Measure by = measure();
        if (time.to() <= time.from() || time.to() <= from.front()) continue;
        const auto lies_between = [&](auto level) {
            const double average = level(level_average);
            if (average == 0.0) return; // a period without months under this day count
            EXPECT_GE(average, level(level_least) * (1 - 1e-9));
            EXPECT_LE(average, level(level_greatest) * (1 + 1e-9));
        };
        lies_between([&](int choice) { return ALevels(time, steps, view(levels), choice, by); });
        lies_between([&](int choice) {
            return ALevelsGrow<FromSteps>(time, steps.Finish, 5.0, view(from), growth, choice, by);
        });
        lies_between([&](int choice) {
            return ALevelsThenGrow(time, steps, view(levels), growth, choice, 0, {5.0, quarters});
        });
    }
}

TEST_F(Projections, AveragesOfPartsMakeUpThatOfTheWhole) {
    for (int round = 0; round < rounds; ++round) {
        const auto part = days(3);
        const auto life = days(2);
        const Measure by = measure();
        const auto amount = [&](int from, int to) {
            const timeperiod time{part[from], part[to]};
            const double years = time.lenyrs(part[from], part[to], by.DayCount, by.Periods);
            return years * ALevel(time, {life[0], life[1]}, 7.0, level_average, by);
        };
        EXPECT_NEAR(amount(0, 1) + amount(1, 2), amount(0, 2), 1e-7);
    }
}

} // namespace
} // namespace qx::test
