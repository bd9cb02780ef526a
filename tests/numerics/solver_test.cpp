// The root finder: each search mode, the refinement, and what it throws.
#include "numerics/solver.h"

#include "numerics/date_plus_periods.h"
#include "numerics/random.h"
#include "support/calendar.h"
#include "support/traced.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace qx::test {
namespace {

class Root : public clsSolveBase {
  public:
    explicit Root(std::function<double(double)> function) : function_(std::move(function)) {}
    double eval(double x) override {
        at.push_back(x);
        return function_(x);
    }
    void setup() override {}

    std::vector<double> at; ///< where the function was asked for

  private:
    std::function<double(double)> function_;
};

/// Present value of -100 now and 100 * (1 + rate) in a year.
auto one_year_flow(double rate) {
    return [rate](double x) { return -100.0 + 100.0 * (1.0 + rate) / (1.0 + x); };
}

TEST(Solver, FindsARateWhereRatesAreLookedForFirst) {
    Root ten_percent(one_year_flow(0.1));
    EXPECT_NEAR(ten_percent.solve(-0.99999, 10000, 1e-10, 100), 0.1, 1e-9);
    EXPECT_EQ(ten_percent.iterations(), 1);
    EXPECT_EQ(ten_percent.at[0], 0.000001);
    EXPECT_EQ(ten_percent.at[1], 0.2);

    Root minus_half(one_year_flow(-0.5));
    EXPECT_NEAR(minus_half.solve(-0.99999, 10000, 1e-10, 100), -0.5, 1e-9);
    EXPECT_EQ(minus_half.iterations(), 100 + 9) << "low is -9/17";

    for (const double rate : {-0.99, -0.05, 0.0, 0.07, 3.0, 19.0, 50.0, 5000.0})
        EXPECT_NEAR(Root(one_year_flow(rate)).solve(-0.99999, 10000, 1e-10, 100), rate, 1e-7) << rate;
}

TEST(Solver, BetweenTwoPoints) {
    const auto line = [](double x) { return x - 3.0; };
    EXPECT_NEAR(Root(line).solve(0, 10, 1e-12, 100, plain), 3.0, 1e-9);
    EXPECT_NEAR(Root(line).solve(10, 0, 1e-12, 100, plain), 3.0, 1e-9) << "in either order";
    Root at_once(line);
    EXPECT_EQ(at_once.solve(3, 10, 1e-12, 100, plain), 3.0);
    EXPECT_EQ(at_once.at.size(), 2u) << "no refinement of an exact root";
    Root outside(line);
    EXPECT_THROW(outside.solve(4, 10, 1e-12, 100, plain), errlibnotbracketed);
    EXPECT_EQ(outside.at.size(), 2u);
    const auto beyond = [](double x) { return x - 12.0; };
    EXPECT_NEAR(Root(beyond).solve(4, 10, 1e-12, 100, plain_with_recovery), 12.0, 1e-9) << "by traversing upwards";
}

TEST(Solver, OutwardFromAGuess) {
    const auto cubic = [](double x) { return x * x * x + 1000.0; };
    EXPECT_NEAR(Root(cubic).solve(5, 1, 1e-10, 100, guess_any_sign), -10.0, 1e-8);
    const auto shifted = [](double x) { return std::log(x) - 2.0; };
    Root positive(shifted);
    EXPECT_NEAR(positive.solve(1, 1, 1e-10, 100, guess_positive), std::exp(2.0), 1e-8);
    for (const double x : positive.at) EXPECT_GE(x, 1e-10) << "never below the tolerance";
}

TEST(Solver, EverySmoothFunctionIsRefined) {
    EXPECT_NEAR(Root([](double x) { return std::cos(x) - x; }).solve(0, 1, 1e-12, 100, plain), 0.7390851332151607,
                1e-10);
    EXPECT_NEAR(Root([](double x) { return std::exp(x) - 1e6; }).solve(0, 50, 1e-12, 100, plain), std::log(1e6), 1e-9);
    EXPECT_NEAR(Root([](double x) { return std::pow(x, 9); }).solve(-1, 2, 1e-10, 200, plain), 0.0, 0.1)
        << "flat at its root: a value below 1e-12 is zero";
}

TEST(Solver, GivesUpByName) {
    seed_random(1);
    Root constant([](double) { return 1.0; });
    for (const int mode : {plain, rate_of_return, plain_with_recovery, guess_any_sign, guess_positive, SolveMode(9)})
        EXPECT_THROW(constant.solve(1, 2, 1e-10, 100, mode), errlibnotbracketed) << mode;
    EXPECT_LT(constant.at.size(), 5000u);
    EXPECT_THROW(Root([](double x) { return x - 3.0; }).solve(0, 10, 1e-12, 0, plain), errlibnoconverge);
    EXPECT_THROW(Root([](double) { return std::nan(""); }).solve(0, 10, 1e-12, 100, plain_with_recovery),
                 errlibnotbracketed);
    EXPECT_THROW(Root([](double x) -> double {
                     return x > 4 && x < 6 ? std::nan("") : x - 5.0;
                 }).solve(0, 10, 1e-12, 100, plain),
                 errlibunexpected);
    EXPECT_THROW(Root([](double) -> double { throw errlibdivzero(FunctionContext()); }).solve(0, 1, 1e-9, 9),
                 errlibdivzero)
        << "an error of the function passes through";
}

TEST_F(Traced, ASolveTellsItsSteps) {
    Root(one_year_flow(0.1)).solve(-0.99999, 10000, 1e-10, 100);
    const std::vector<std::string> lines = trace_lines();
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0].substr(0, 25), "0 Info\t\tSolve. Tolerance=");
    EXPECT_NE(lines[2].find("refining ..."), std::string::npos);
    EXPECT_NE(lines[3].find("Solve Successful. Result = 0.100 Iterations Required : Bracketing=1 Polishing= "),
              std::string::npos);
    Root constant([](double) { return 1.0; });
    const FunctionContext caller("IRRT", "Flows");
    EXPECT_EQ(failure<errlibnotbracketed>([&] { constant.solve(1, 2, 1e-10, 100, plain, caller); }),
              "Error LIB05: Root not bracketed  Variable Flows \nFunction: IRRT. \nVariable: Flows. \nMessage: We "
              "tried, but we couldn't find a solution to the problem because we couldn't find a bracketed area in "
              "which to search for a root.  It may well be that there is no root.  We got as far as looking between "
              "1.000 and 2.000. \nClass 'SolveBase'. ");
}

// Periods between the dates found are the periods asked for, to the nearest day.
TEST(DatePlusPeriods, LiesThePeriodsAfter) {
    for (const int preset : {1, 2, 4, 12, 13, -4}) {
        const AnnualSequence sequence(preset);
        for (const double n : {0.25, 1.0, 2.5, 7.0, 40.0, 123.4}) {
            const date from(2005, 2, 14);
            const date to = DpP(from, n, sequence);
            EXPECT_NEAR(sequence.periodsbetween(from, to), n, 1.0 / 28) << preset << " plus " << n;
        }
        EXPECT_EQ(DpP(date(2005, 2, 14), 0, sequence), date(2005, 2, 14));
        EXPECT_THROW(DpP(date(2005, 2, 14), -1, sequence), cls_exception) << "no later date is that far";
    }
    const AnnualSequence quarters(4);
    EXPECT_EQ(DpP(date(2005, 4, 1), 3, quarters), date(2006, 1, 1));
}

} // namespace
} // namespace qx::test
