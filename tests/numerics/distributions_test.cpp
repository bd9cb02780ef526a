#include "core/trace.h"
#include "numerics/distributions.h"
#include "numerics/normal.h"
#include "numerics/random.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>

namespace qx {
namespace {

constexpr double draw = -1.0;
constexpr int draws = 100000;

// The mean and variance of a great number of draws lie within four standard errors of those of the distribution.
// The variance's error is that of a normal, doubled for the longer tails of others.
void expect_moments(const char* what, double mean, double variance, const std::function<double()>& next) {
    seed_random(20051);
    double sum = 0.0, squares = 0.0;
    for (int i = 0; i < draws; ++i) {
        const double x = next() - mean;
        sum += x;
        squares += x * x;
    }
    EXPECT_NEAR(sum / draws, 0.0, 4.0 * std::sqrt(variance / draws)) << what;
    EXPECT_NEAR(squares / draws / variance, 1.0, 8.0 * std::sqrt(2.0 / draws)) << what;
    seed_random(default_seed);
}

TEST(Normal, InverseGivesPublishedQuantiles) {
    // R's qnorm and the test values of Wichura's paper.
    EXPECT_NEAR(PPND16(0.975), 1.959963984540054, 1e-15);
    EXPECT_NEAR(PPND16(0.25), -0.6744897501960817, 1e-15);
    EXPECT_NEAR(PPND16(0.001), -3.090232306167814, 1e-14);
    EXPECT_NEAR(PPND16(1e-10), -6.361340902404056, 1e-14);
    EXPECT_NEAR(PPND16(1e-20), -9.262340089798408, 1e-14);
    EXPECT_EQ(PPND16(0.5), 0.0);
    EXPECT_NEAR(PPND7(0.25), -0.6744897501960817, 1e-7);
    EXPECT_NEAR(PPND7(1e-20), -9.262340089798408, 1e-6);
    for (int i = 1; i < 2000; ++i) {
        const double p = i / 2000.0;
        EXPECT_NEAR(normal_probability(PPND16(p)), p, 2e-16) << p;
        EXPECT_NEAR(PPND7(p), PPND16(p), 4e-7) << p;
        EXPECT_NEAR(PPND(p), PPND16(p), 1e-7) << p;
    }
    for (const double p : {0.0, 1.0, -0.1, 1.1}) {
        EXPECT_THROW(PPND16(p), errlibbaddistribution) << p;
        EXPECT_THROW(PPND7(p), errlibbaddistribution) << p;
        EXPECT_THROW(PPND(p), errlibbaddistribution) << p;
    }
}

TEST(Distributions, DrawsHaveTheMomentsOfTheirDistribution) {
    expect_moments("uniform", 20, 400 / 12.0, [] { return Distribution(10, 15, 30, 1, draw); });
    expect_moments("triangular", 310 / 3.0, 1900 / 18.0, [] { return Distribution(80, 100, 130, 2, draw); });
    // Triangles of mean 50/3 and 30 and variance 100/18 and 900/18, half of the probability each.
    const double between = std::pow((30 - 50 / 3.0) / 2, 2);
    expect_moments("double triangular", 70 / 3.0, 1000 / 36.0 + between,
                   [] { return Distribution(10, 20, 50, 3, draw); });
    // A normal held at its 1% and 99% points keeps 0.96424 of its variance.
    const double sd = 10 / normal_99;
    expect_moments("normal", 20, 0.96424 * sd * sd, [] { return Distribution(10, 20, 30, 4, draw); });
    const double log_sd = std::log(2.0) / normal_99;
    expect_moments("lognormal", std::log(100.0), 0.96424 * log_sd * log_sd,
                   [] { return std::log(Distribution(50, 100, 200, 5, draw)); });
    expect_moments("DistNormal", 80, 100, [] { return DistNormal(10, 80, draw); });
    expect_moments("DistLogNormal", 2, 0.25, [] { return std::log(DistLogNormal(0.5, 2, draw)); });
    for (const int order : {1, 3, 6, 7, 20})
        expect_moments("gamma", order, order, [order] { return gamma_deviate(order, draw); });
}

TEST(Distributions, ADrawOfASplitNormalHasTheLowerDeviationOnBothSides) {
    seed_random(77);
    const double lower = 10 / normal_99;
    int below = 0, above = 0;
    for (int i = 0; i < draws; ++i) {
        const double x = Distribution(10, 20, 50, 4, draw);
        below += x < 20 - 1.2815515655 * lower;
        above += x > 20 + 1.2815515655 * lower;
    }
    EXPECT_NEAR(below, draws / 10, 400);
    EXPECT_NEAR(above, draws / 10, 400);
    seed_random(default_seed);
}

TEST(Distributions, AProbabilityDropsTheDeviateKept) {
    seed_random(5);
    DistNormal(1, 0, draw); // keeps the second of its pair
    const int position = random_position();
    DistNormal(1, 0, 0.3);
    DistNormal(1, 0, draw);
    EXPECT_GT(random_position(), position);
    seed_random(default_seed);
}

TEST(Distributions, TheTraceTellsOfASplitNormalOnce) {
    const auto warnings = [](double DistMax) {
        trace().TraceStart();
        Distribution(10, 20, DistMax, normal_distribution, 0.3);
        int count = 0;
        for (int i = 1; i <= trace().count(); ++i)
            count += trace().text(i) ==
                     "Warning\t\tWarning: Your Normal Distribution is not symmetrical, it is being split "
                     "into two half-Normal distributions either side of the mean";
        trace().TraceShow();
        return count;
    };
    EXPECT_EQ(warnings(30.1), 0); // 0.5% off
    EXPECT_EQ(warnings(30.5), 1);
}

TEST(Distributions, ErrorsSayWhatIsWrong) {
    const auto message = [](const std::function<double()>& call) {
        trace().TraceStart();
        std::string text;
        try {
            call();
        } catch (const errlibbaddistribution& error) {
            text = error.context.message();
        }
        trace().TraceShow();
        return text;
    };
    EXPECT_EQ(message([] { return Distribution(2, 1, 3, 1, 0.5); }),
              "DistMin, DistMid and DistMax should be in ascending order");
    EXPECT_EQ(message([] { return DistUniform(2, 1, 0.5); }),
              "DistMin, DistMid and DistMax should be in ascending order");
    EXPECT_EQ(message([] { return Distribution(2, 2, 2, 4, 0.5); }), "Your Normal Distribution needs to be ascending");
    EXPECT_EQ(message([] { return Distribution(0, 1, 2, 5, 0.5); }),
              "One of the min, mid or max points in your lognormal distribution is zero and the distribution cannot, "
              "therefore, be evaluated because log(0) is undefined (infinite)");
    EXPECT_EQ(message([] { return DistNormal(1, 0, 1); }), "Inverse Normal Routine/Hi failed");
    EXPECT_EQ(message([] { return PPND7(1); }), "Inverse Normal Routine/Med failed");
    EXPECT_EQ(message([] { return PPND(1); }), "Inverse Normal Routine/Lo failed");
}

} // namespace
} // namespace qx
