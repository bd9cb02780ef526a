// The cost of a present value grows with the payments that it walks, and no faster.
#include "projections/projection_values.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

namespace qx::test {
namespace {

/// Processor time of a stream of some years paid monthly, the fastest of several runs.
double seconds_for(int years) {
    const date start(1910, 1, 1), finish(1910 + years, 1, 1), none;
    const double rate = 1000.0, growth_rate = 0.03;
    const AnnualSequence months(12);
    const Streams stream{View<date>::of(start), View<date>::of(finish), View<double>::of(rate)};
    const Growth growth{View<date>::of(start), View<double>::of(growth_rate)};
    double fastest = 1e9;
    for (int run = 0; run < 5; ++run) {
        const std::clock_t begin = std::clock();
        for (int i = 0; i < 4; ++i)
            PVConGrow({start, 0.08}, stream, growth, 12, {0.0, months, 5.0, months, none, none});
        fastest = std::min(fastest, static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
    }
    return fastest;
}

TEST(PresentValues, CostGrowsWithThePayments) {
    EXPECT_LT(seconds_for(160), 8.0 * seconds_for(40)) << "four times the payments";
}

} // namespace
} // namespace qx::test
