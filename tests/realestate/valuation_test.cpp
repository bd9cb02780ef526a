// Equivalent yields as the inverses of capital values, over properties of all kinds, and the words for a price that has
// no yield.
#include "realestate/valuation.h"
#include "support/traced.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

namespace qx::test {
namespace {

constexpr double accuracy = 1e-9; ///< of the price
constexpr int properties = 2000;

/// Properties at random: rents of any scale, reviews within 20 years, yields from a tenth of a per cent to 200%.
class Random {
  public:
    double between(double low, double high) { return std::uniform_real_distribution<>(low, high)(generator_); }
    double scaled(double low, double high) { return std::exp(between(std::log(low), std::log(high))); }
    double payments() { return std::array{1.0, 4.0, 12.0, -1.0, -4.0}[generator_() % 5]; }
    int type() { return static_cast<int>(generator_() % 2); }

  private:
    std::mt19937 generator_{20261122};
};

TEST(EquivalentYield, HasThePriceByTermAndReversion) {
    Random random;
    for (int i = 0; i < properties; ++i) {
        const YieldTerms terms{random.payments(), random.type()};
        const bool in_advance = terms.nominal() && terms.PmtsPerYearOpt > 0.0;
        const double yield = random.scaled(0.001, in_advance ? 0.9 : 2.0), scale = random.scaled(1e-6, 1e9);
        const double market = scale * random.between(0.1, 2.0), passing = scale * random.between(0.0, 2.0);
        const double review = random.between(0.0, 240.0), free = random.between(0.0, review);
        const double price = CapValue(yield, market, passing, review, free, 0.05, terms);
        const double found = EqYield(price, market, passing, review, free, 0.05, terms);
        EXPECT_NEAR(CapValue(found, market, passing, review, free, 0.05, terms) / price, 1.0, accuracy)
            << yield << " of " << market << " and " << passing << " in " << review << " months, "
            << terms.PmtsPerYearOpt << " payments, type " << terms.YieldTypeOpt;
        EXPECT_NEAR(found, yield, 1e-8 * yield);
    }
}

TEST(EquivalentYield, HasThePriceByDiscountedCashFlow) {
    Random random;
    for (int i = 0; i < properties; ++i) {
        const YieldTerms terms{random.payments(), random.type()};
        const double discount = random.between(0.01, 0.3), interval = random.between(1.0, 250.0);
        const double highest = ReviewedMarket(Routine{"test"}, discount, interval, terms).highest_yield();
        const double yield = random.scaled(0.001, 0.99 * highest);
        const double market = random.between(0.1, 2.0), passing = random.between(0.0, 2.0);
        const double review = random.between(0.0, 240.0);
        const double price = CapValueDCF(yield, discount, market, passing, review, 0.0, 0.0, interval, terms);
        const double found = EqYieldDCF(price, discount, market, passing, review, 0.0, 0.0, interval, terms);
        EXPECT_NEAR(CapValueDCF(found, discount, market, passing, review, 0.0, 0.0, interval, terms) / price, 1.0,
                    accuracy)
            << yield << " at " << discount << ", reviews every " << interval << " months from " << review;
    }
}

TEST(EquivalentYield, OfATermGoesBelowZero) {
    Random random;
    for (int i = 0; i < properties; ++i) {
        const YieldTerms terms{random.payments(), true_yield};
        const double months = random.between(1.0, 240.0), yield = random.between(-0.6, 0.6);
        const double price = CapValue(yield, 0.0, 1.0, months, 0.0, 0.0, terms);
        const double found = EqYield(price, 0.0, 1.0, months, 0.0, 0.0, terms);
        EXPECT_NEAR(CapValue(found, 0.0, 1.0, months, 0.0, 0.0, terms) / price, 1.0, accuracy) << yield << months;
    }
}

class PriceWithoutYield : public Traced {};

TEST_F(PriceWithoutYield, SaysWhy) {
    const auto complaint = [](double price) {
        return failure<errlibnotbracketed>([price] {
            EqYield(price, 1000.0, 1000.0, 24.0, 0.0, 0.0, {-1.0, true_yield});
        });
    };
    EXPECT_NE(complaint(0.05).find("below 0.100, the value at the highest yield tried, 10000.000"), std::string::npos)
        << complaint(0.05);
    EXPECT_NE(complaint(2e9).find("above 1000000000.000, the value at the lowest yield tried"), std::string::npos)
        << complaint(2e9);
    EXPECT_EQ(complaint(20000.0), "no error");
}

} // namespace
} // namespace qx::test
