// Seasonal amounts and merged rates.
#include "calendar/merge_rates.h"
#include "calendar/seasons.h"
#include "support/calendar.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <utility>
#include <vector>

namespace qx::test {
namespace {

template <class T>
void fill(Range<T>& range, std::initializer_list<T> values) {
    range.dimension(static_cast<int>(values.size()));
    int i = 0;
    for (const T& value : values) range(++i) = value;
}

class Seasons : public testing::Test {
  protected:
    Seasons() {
        seasons_.clear("SeasonSeq", DefaultSequence::none);
        for (const double figure : {1.01, 4.01, 7.01, 10.01}) seasons_.append(figure);
        fill<double>(factors_, {1, 2, 3, 2});
    }
    double amount(const date& from, const date& to, const date& Start, const date& Finish) const {
        timeperiod period;
        period.setends(from, to);
        return seasonal_amount(period, Start, Finish, 800.0, factors_, seasons_, 5, AnnualSequence(4));
    }
    double even(const date& from, const date& to, const date& Start, const date& Finish) const {
        timeperiod period;
        period.setends(from, to);
        return even_seasonal_amount(period, Start, Finish, 800.0, factors_, 5, AnnualSequence(4));
    }

    AnnualSequence seasons_;
    static Range<double> factors_;
};
Range<double> Seasons::factors_;

TEST_F(Seasons, AYearGetsItsRateAndAQuarterItsShare) {
    const date start(2005, 1, 1), finish(2006, 1, 1);
    EXPECT_NEAR(amount(start, finish, start, finish), 800.0, 1e-9);
    EXPECT_NEAR(amount(start, finish, date(2005, 7, 1), date(2005, 10, 1)), 300.0, 1e-9);
    EXPECT_NEAR(amount(start, finish, date(2005, 4, 1), date(2005, 10, 1)), 500.0, 1e-9);
    EXPECT_NEAR(amount(date(2000, 1, 1), date(2020, 1, 1), date(2005, 7, 1), date(2008, 4, 1)), 500 + 1600 + 100, 1e-9);
    EXPECT_NEAR(even(start, finish, date(2005, 7, 1), date(2005, 10, 1)), 300.0, 1e-9);
    EXPECT_NEAR(even(date(2000, 1, 1), date(2020, 1, 1), date(2005, 7, 1), date(2008, 4, 1)), 2200.0, 1e-9);
}

TEST_F(Seasons, EdgesAndErrors) {
    const date start(2005, 1, 1), finish(2006, 1, 1);
    EXPECT_EQ(amount(start, finish, finish, start), 0.0);
    EXPECT_EQ(amount(finish, start, start, finish), 0.0) << "a period that runs backward";
    fill<double>(factors_, {5});
    EXPECT_NEAR(amount(start, finish, start, date(2005, 7, 1)), 400.0, 1e-9) << "one factor: no seasons";
    seasons_.clear("SeasonSeq", DefaultSequence::none);
    EXPECT_EQ(amount(start, finish, start, finish), 0.0);
    seasons_.append(2.01);
    EXPECT_THROW(amount(start, finish, start, finish), errlibseas);
}

using Steps = std::vector<std::pair<date, double>>;

Steps merged(CombineSwitch combine, const Steps& first, const Steps& second, const Steps& third = {}) {
    static Range<date> dates[3], merged_dates;
    static Range<double> rates[3], merged_rates;
    const Steps* const steps[] = {&first, &second, &third};
    for (int i = 0; i < 3; ++i) {
        dates[i].dimension(static_cast<int>(steps[i]->size()));
        rates[i].dimension(static_cast<int>(steps[i]->size()));
        for (int j = 1; j <= dates[i].size(); ++j) {
            dates[i](j) = (*steps[i])[j - 1].first;
            rates[i](j) = (*steps[i])[j - 1].second;
        }
    }
    const SteppedRates lists[] = {{dates[0], rates[0]}, {dates[1], rates[1]}, {dates[2], rates[2]}};
    merge_rates(lists, 3, combine, merged_dates, merged_rates);
    Steps result;
    for (int i = 1; i <= merged_dates.size(); ++i) result.emplace_back(merged_dates(i), merged_rates(i));
    return result;
}

TEST(MergeRates, CombinesWhatIsInForce) {
    const date jan(2005, 1, 1), apr(2005, 4, 1), jul(2005, 7, 1);
    const Steps rent = {{jan, 10.0}, {jul, 20.0}}, factor = {{apr, 3.0}, {jul, 0.0}};
    const auto rates = [&](CombineSwitch combine) {
        std::vector<double> all;
        for (const auto& [day, rate] : merged(combine, rent, factor)) all.push_back(rate);
        return all;
    };
    EXPECT_EQ(rates(CombineSwitch::multiply), (std::vector<double>{10, 30, 0})) << "a list not begun does not count";
    EXPECT_EQ(rates(CombineSwitch::add), (std::vector<double>{10, 13, 20}));
    EXPECT_EQ(rates(CombineSwitch::subtraction), (std::vector<double>{10, 7, 20}));
    EXPECT_EQ(rates(CombineSwitch::division), (std::vector<double>{10, 10 / 3.0, 0}));
    EXPECT_EQ(rates(CombineSwitch::maximum), (std::vector<double>{10, 10, 20}));
    EXPECT_EQ(rates(CombineSwitch::minimum), (std::vector<double>{10, 3, 0}));
    EXPECT_EQ(rates(CombineSwitch::minimum_nonzero), (std::vector<double>{10, 3, 20}));
    EXPECT_EQ(merged(CombineSwitch::add, rent, factor)[1].first, apr);
    EXPECT_TRUE(merged(CombineSwitch::add, {}, {}).empty());
    Steps many;
    for (int i = 0; i < 1000; ++i) many.emplace_back(jan.plusdays(i), 1.0);
    EXPECT_THROW(merged(CombineSwitch::add, many, {}), errliboveriterated);
    many.pop_back();
    EXPECT_EQ(merged(CombineSwitch::add, many, {}).size(), 999u);
}

} // namespace
} // namespace qx::test
