// Laws of discounting that cases of single values do not reach.
#include "rates/cash_flow.h"

#include "calendar/day_count.h"
#include "core/trace.h"
#include "projections/simple_rates.h"
#include "rates/discounting.h"
#include "rates/powers.h"
#include "support/traced.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <utility>

namespace qx::test {
namespace {

TEST(PowersOf, AreThoseOfALongerFormat) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> log_base(-2.0, 3.0), exponent(-60.0, 60.0);
    for (int i = 0; i < 100000; ++i) {
        const double base = std::pow(10.0, log_base(random)), y = exponent(random);
        const PowersOf powers(base);
        const long double exact = std::pow(static_cast<long double>(base), static_cast<long double>(y));
        ASSERT_NEAR(static_cast<double>(powers(y) / exact - 1.0L), 0.0, 2.0e-16) << base << "^" << y;
    }
    // Small rates over a thousand years.
    for (int i = 0; i < 100000; ++i) {
        const double rate = std::copysign(std::pow(10.0, -1.0 - std::fabs(exponent(random)) / 8.0), exponent(random));
        const double y = 20.0 * exponent(random);
        const double base = 1.0 + rate;
        const long double exact = std::pow(static_cast<long double>(base), static_cast<long double>(y));
        ASSERT_NEAR(static_cast<double>(PowersOf(base)(y) / exact - 1.0L), 0.0, 6.0e-16) << base << "^" << y;
    }
    EXPECT_EQ(PowersOf(1.1)(0.0), 1.0);
    EXPECT_EQ(PowersOf(1.0)(1e9), 1.0);
    EXPECT_EQ(PowersOf(0.0)(2.0), 0.0);
    EXPECT_EQ(PowersOf(2.0)(1e6), HUGE_VAL) << "beyond what the pairs serve";
}

struct RandomFlows {
    Range<date> dates;
    Range<double> flows;

    void draw(std::mt19937_64& random, int n) {
        std::uniform_int_distribution<int> day(36526, 47483);
        std::uniform_real_distribution<double> amount(-1000.0, 1000.0);
        dates.dimension(n);
        flows.dimension(n);
        for (int i = 1; i <= n; ++i) {
            dates(i) = date(static_cast<double>(day(random)));
            flows(i) = amount(random);
        }
    }
};

class CashFlow : public testing::Test {
  protected:
    std::mt19937_64 random{7};
    static inline RandomFlows cash;
};

TEST_F(CashFlow, IsWorthTheSameToTheBitWithTheTraceOn) {
    for (int n = 40; n >= 1; --n) { // each list shorter than the one before, whose end must not count
        cash.draw(random, n);
        // At a rate of 1e12 the powers overflow for some dates and not for others.
        for (const auto& [rate, options] : {std::pair{0.07, 0}, {1e12, 0}, {0.07, +flows_received_evenly}}) {
            const date origin(36500.0);
            const auto worth = [&] {
                return PVT(origin, rate, cash.dates, cash.flows, 4, default_periods(), no_date, no_date, options);
            };
            const double plain = worth();
            trace().TraceStart();
            const double traced = worth();
            trace().TraceShow();
            ASSERT_EQ(plain, traced) << n << " flows, options " << options << ", rate " << rate;
        }
    }
}

TEST_F(CashFlow, IsTheSumOfItsFlowsInAnyOrder) {
    for (int n = 1; n <= 100; ++n) {
        cash.draw(random, n);
        const date origin(42000.0);
        long double sum = 0.0L;
        for (int i = 1; i <= n; ++i)
            sum += cash.flows.get(i) * std::pow(1.083L, (42000.0L - cash.dates.get(i).dtn()) / 365.0L);
        ASSERT_NEAR(PVT(origin, 0.083, cash.dates, cash.flows, 3, default_periods(), no_date, no_date, 0),
                    static_cast<double>(sum), 1e-9);
    }
}

// An outlay first and receipts after it have one rate of return; halving finds it too.
TEST_F(CashFlow, OfOneChangeOfSignHasTheRateThatHalvingFinds) {
    for (int n = 2; n <= 60; ++n) {
        cash.draw(random, n);
        cash.dates(1) = date(36525.0);
        for (int i = 2; i <= n; ++i) cash.flows(i) = std::fabs(cash.flows.get(i));
        cash.flows(1) = -1000.0 * n / 4.0;
        const double found = IRRT(cash.dates, cash.flows, irr_min, irr_max, irr_accuracy, 3, default_periods(), 0);
        double low = -0.999, high = 1000.0;
        for (int round = 0; round < 200; ++round) {
            const double middle = (low + high) / 2.0;
            double worth = 0.0;
            for (int i = 1; i <= n; ++i)
                worth += cash.flows.get(i) * std::pow(1.0 + middle, (36525 - cash.dates.get(i).dtn()) / 365.0);
            (worth > 0.0 ? low : high) = middle;
        }
        ASSERT_NEAR(found, low, 1e-9) << n << " flows";
    }
}

// The growth that flows share from one date of the sequence to the next is that of each flow for itself.
TEST_F(CashFlow, AtSimpleRatesSharesItsGrowth) {
    static Range<date> from;
    static Range<double> rates;
    from.dimension(3);
    rates.dimension(3);
    for (int i = 1; i <= 3; ++i) {
        from(i) = date(30000.0 + 5000.0 * i);
        rates(i) = 0.03 + 0.02 * i;
    }
    const AnnualSequence quarters(-4, "PrdsDisc");
    const date origin(41000.0);
    cash.draw(random, 30);
    double sum = 0.0;
    for (int i = 1; i <= 30; ++i)
        sum += cash.flows.get(i) * SimpleToDFX(from, rates, origin, cash.dates.get(i), 3, quarters);
    EXPECT_NEAR(PVTSFX(origin, from, rates, cash.dates, cash.flows, 3, quarters, no_date, no_date), sum, 1e-7);
}

TEST_F(Traced, OptionsAndChangesOfACashFlowAreTold) {
    static Range<date> dates;
    static Range<double> flows;
    dates.dimension(3);
    flows.dimension(3);
    for (int i = 1; i <= 3; ++i) dates(i) = date(2004 + i, 1, 1);
    flows(1) = -100.0;
    flows(2) = flows(3) = 60.0;
    const auto told = [](const char* text) {
        for (const std::string& line : trace_lines())
            if (line.find(text) != std::string::npos) return true;
        return false;
    };
    const AnnualSequence quarters(-4);
    IRRT(dates, flows, -0.99999, 10000.0, 1e-10, 5.0, quarters, 0);
    EXPECT_TRUE(told("PECB\t53\tSee Change in Behaviour 53, Oct-03 :Change of variable order: IRRMinOpt, IRRMaxOpt and "
                     "IRRAcc inserted before Daycount"));
    const char* const rezeros =
        "Payback Options: Payback accumulator rezeros if cashflow goes from positive to negative";
    PayBackT(dates, flows, 0.0, false, 5.0, quarters, 0);
    EXPECT_FALSE(told(rezeros));
    PayBackT(dates, flows, 0.0, false, 5.0, quarters, payback_rezeros);
    EXPECT_TRUE(told(rezeros));
}

} // namespace
} // namespace qx::test
