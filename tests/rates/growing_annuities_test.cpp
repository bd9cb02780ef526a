// Growing annuities that no worksheet function shows, against the sums that they stand for.
#include "rates/growing_annuities.h"

#include "core/errors.h"
#include "rates/annual_cash_flow.h"
#include "rates/annuities.h"
#include "rates/cash_flow.h"

#include <gtest/gtest.h>

#include <cmath>

namespace qx::test {
namespace {

TEST(LinearGrowth, IsWorthTheSumOfItsSteps) {
    for (const double r : {0.1, 0.0, -0.2})
        for (const double g : {0.05, 0.0, -0.1})
            for (const double p : {-4.0, 4.0, -1.0, 12.0})
                for (const int m : {1, 2, 12}) {
                    double sum = 0.0;
                    for (int k = 0; k < 10 * m; ++k)
                        sum += (1.0 + g * k / m) * annuity_value(1.0, r, 1.0 / m, p) * std::pow(1.0 + r, -1.0 * k / m);
                    EXPECT_NEAR(PVLGAnnM(r, 10.0, p, g, m) / sum, 1.0, 1e-10) << r << " " << g << " " << p << " " << m;
                }
    EXPECT_NEAR(PVLGAnn(0.1, 3.0, 0.5), 1.0 / 1.1 + 1.5 / 1.21 + 2.0 / 1.331, 1e-12);
    EXPECT_NEAR(PVLGAnnM(0.1, 10.0, -4.0, 0.05, 1e6), PVLGAnnM(0.1, 10.0, -4.0, 0.05, 0.0), 1e-4) << "at every moment";
}

TEST(LinearGrowth, ForEverIsWorthThatOfALongTerm) {
    EXPECT_NEAR(PVLGPerp(0.1, 0.5), PVLGAnn(0.1, 500.0, 0.5), 1e-9);
    EXPECT_NEAR(PVLGPerpM(0.1, 4.0, 0.5, 12.0), PVLGAnnM(0.1, 500.0, 4.0, 0.5, 12.0), 1e-9);
    EXPECT_NEAR(PVLGPerpM(0.1, 4.0, 0.5, 0.0), PVLGAnnM(0.1, 500.0, 4.0, 0.5, 0.0), 1e-9);
    EXPECT_THROW(PVLGPerp(0.0, 0.1), errlibinfiniteresult);
}

TEST(EquivalentAnnualCashFlow, IsTheLevelFlowOfTheSameWorth) {
    static Range<double> flows, level;
    flows.dimension(3);
    level.dimension(3);
    const double amounts[] = {-100.0, 30.0, 250.0};
    for (int i = 1; i <= 3; ++i) flows(i) = amounts[i - 1];
    const date valued(2004, 7, 1), first(2005, 1, 1);
    const double worth = PVA(valued, 0.1, flows, first, 5.0, date(), date());
    for (int i = 1; i <= 3; ++i) level(i) = EACF(valued, 0.1, flows, first);
    EXPECT_NEAR(PVA(valued, 0.1, level, first, 5.0, date(), date()), worth, 1e-10);
    for (int i = 1; i <= 3; ++i) level(i) = EACFM(valued, 0.1, flows, first, -4.0);
    EXPECT_NEAR(NPVM(valued, 0.1, level, first, -4.0), worth, 1e-10);
}

TEST(ReviewsToAGrowingMarket, AddUpStepByStep) {
    const double m1 = 120.0 * std::pow(1.1, 0.5); // the market half a year after its base date
    // Half a year at 100 a year, a year at the market of then, half a year at that of a year later.
    EXPECT_NEAR(SumEGStepMktGen(0.1, 24.0, 12.0, 6.0, 0.0, 100.0, 120.0), 50.0 + m1 + 0.5 * 1.1 * m1, 1e-9);
    EXPECT_NEAR(SumEGStepMktGen(0.1, 24.0, 12.0, -6.0, 0.0, 100.0, 120.0), 50.0 + m1 + 0.5 * 1.1 * m1, 1e-9)
        << "a first review in the past";
    EXPECT_EQ(SumEGStepMktGen(0.1, 6.0, 12.0, 6.0, 0.0, 100.0, 120.0), 50.0) << "until the first review";
    EXPECT_EQ(SumEGStepMktGen(0.0, 24.0, 12.0, 6.0, 0.0, 100.0, 120.0), 200.0) << "without growth no review counts";
    EXPECT_NEAR(SumEGStepMktGen(0.1, 18.0, 0.0, 6.0, 0.0, 100.0, 120.0), 50.0 + m1 * 0.1 / std::log(1.1), 1e-9)
        << "at every moment";
    EXPECT_THROW(SumEGStepMktGen(0.1, 24.0, -1.0, 6.0, 0.0, 100.0, 120.0), errlibbadnum);
}

} // namespace
} // namespace qx::test
