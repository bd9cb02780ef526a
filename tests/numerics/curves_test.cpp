// Laws of curves: they go through their points, do not break, and their amounts add up.
#include "calendar/date_arithmetic.h"
#include "numerics/interpolation.h"
#include "projections/curve_projections.h"

#include <gtest/gtest.h>

#include <cmath>

namespace qx {
namespace {

void fill(Range<double>& list, std::initializer_list<double> items) {
    list.dimension(static_cast<int>(items.size()));
    std::copy(items.begin(), items.end(), list.begin());
}

TEST(Curves, GoThroughTheirPointsWithoutABreak) {
    static Range<double> x, y;
    fill(x, {0, 1, 3, 3.5, 7});
    fill(y, {5, 9, 2, 4, 3});
    for (int type = by_line; type <= by_growth; ++type)
        for (const double tension : {-1.0, 0.0, 0.6})
            for (const double bias : {0.0, 0.8}) {
                const auto at = [&](double place) {
                    return Interpolate(x, y, place, type, no_XMin, no_XMax, tension, bias);
                };
                for (int i = 1; i <= x.size(); ++i) {
                    EXPECT_EQ(at(x(i)), y(i));
                    EXPECT_NEAR(at(x(i) - 1e-7), y(i), 1e-4) << type;
                    EXPECT_NEAR(at(x(i) + 1e-7), y(i), 1e-4) << type;
                    if (type == by_cubic) { // and without a corner
                        const double h = 1e-5;
                        EXPECT_NEAR((at(x(i)) - at(x(i) - h)) / h, (at(x(i) + h) - at(x(i))) / h, 2e-3) << x(i);
                    }
                }
            }
}

TEST(Curves, AFallingTableIsTheSameCurve) {
    static Range<double> x, y, x_back, y_back;
    fill(x, {0, 1, 3, 3.5, 7});
    fill(y, {5, 9, 2, 4, 3});
    fill(x_back, {7, 3.5, 3, 1, 0});
    fill(y_back, {3, 4, 2, 9, 5});
    for (int type = by_step; type <= by_growth; ++type)
        for (double place = -1; place <= 8; place += 0.37)
            EXPECT_EQ(Interpolate(x, y, place, type, no_XMin, no_XMax, 0.2, 0.3),
                      Interpolate(x_back, y_back, place, type, no_XMin, no_XMax, 0.2, 0.3));
}

// Periods of a month, under every basis, sum to the whole of a stream.
TEST(Curves, AmountsOfConsecutivePeriodsAddUp) {
    static Range<date> dates;
    static Range<floatblank> rates;
    dates.dimension(4);
    rates.dimension(4);
    for (int i = 1; i <= 4; ++i) {
        dates(i) = 2000.0 + i;
        rates(i).setnumber(10.0 * i * i);
    }
    const date Start(2001, 2, 17), Finish(2003, 11, 5);
    for (const int preset : {4, -4, 12, 13})
        for (const double DayCount : {0.0, 1.0, 3.0, 5.0})
            for (const double ProjMode : {0.0, 1.0}) {
                AnnualSequence Periods(preset);
                const auto ramp = [&](const timeperiod& period) {
                    return Ramp(period, Start, Finish, 100, 700, DayCount, Periods, ProjMode);
                };
                const auto fitted = [&](const timeperiod& period, double mode) {
                    return FittedRate(period, Start, Finish, dates, rates, 2, DayCount, Periods, mode);
                };
                double ramps = 0.0, fits = 0.0;
                for (date day(2000, 1, 1); day < date(2005, 1, 1); day.addmonths(1, true)) {
                    const timeperiod month(day, day.plusmonths(1, true));
                    ramps += ramp(month);
                    fits += fitted(month, ProjMode);
                }
                const double years = diffmonths(Start, Finish, DayCount, Periods) / 12.0;
                EXPECT_NEAR(ramps, 400 * years, 1e-9) << preset << ' ' << DayCount << ' ' << ProjMode;
                EXPECT_NEAR(fits, fitted(timeperiod(Start, Finish), 0), 1e-9) << preset << ' ' << DayCount;
            }
}

} // namespace
} // namespace qx
