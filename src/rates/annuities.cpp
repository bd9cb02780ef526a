#include "rates/annuities.h"

#include "numerics/solver.h"
#include "rates/compounding.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qx {

namespace {

constexpr double solve_tolerance = 1e-10;
constexpr int solve_rounds = 100;
constexpr double guessed_term = 10.0; ///< years
constexpr double nearest_to_total_loss = -1.0 + 1e-11;

/// What the payments and the future value are worth at the start: the present value that balances them, less its sign.
double present_worth(double AnnPmt, double r, double n, double p, double FVOpt) {
    return annuity_value(AnnPmt, r, n, p) + discounted_future_value(FVOpt, r, n);
}

class clsTermMSolve final : public clsSolveBase {
  public:
    clsTermMSolve(double AnnPmt, double PresentValue, double r, double p, double FVOpt)
        : payment_(AnnPmt), target_(PresentValue), rate_(r), frequency_(p), future_(FVOpt) {}
    double eval(double term) override { return target_ + present_worth(payment_, rate_, term, frequency_, future_); }
    void setup() override {}

  private:
    double payment_, target_, rate_, frequency_, future_;
};

class clsIntRateMSolve final : public clsSolveBase {
  public:
    clsIntRateMSolve(double AnnPmt, double PresentValue, double n, double p, double FVOpt)
        : payment_(AnnPmt), target_(PresentValue), term_(n), frequency_(p), future_(FVOpt) {}
    double eval(double rate) override {
        if (rate < -1.0) return std::numeric_limits<double>::quiet_NaN(); // no present value there
        return target_ + present_worth(payment_, std::max(rate, nearest_to_total_loss), term_, frequency_, future_);
    }
    void setup() override {}

  private:
    double payment_, target_, term_, frequency_, future_;
};

} // namespace

double annuity_value(double P, double r, double n, double p) {
    if (iszero(P) || iszero(n)) return 0.0;
    if (iszero(r)) return P * n;
    return compound_less_one(r, -n) / compound_less_one(r, -1.0 / p) * (P / p);
}

double discounted_future_value(double amount, double r, double n) {
    if (iszero(amount)) return 0.0;
    if (iszero(r) || iszero(n)) return amount;
    return amount / SafePow(1.0 + r, n);
}

double PVM(double AnnPmt, double InterestAER, double TermYrs, double PmtsPerYear, double FVOpt) {
    Routine here{"PVM"};
    here.inputs(AnnPmt, InterestAER, TermYrs, PmtsPerYear, FVOpt);
    check_rate(here, InterestAER, "InterestAER");
    const double p = check_frequency(here, PmtsPerYear);
    return here.returning(-annuity_value(AnnPmt, InterestAER, TermYrs, p) -
                          discounted_future_value(FVOpt, InterestAER, TermYrs));
}

double PmtM(double PresentValue, double InterestAER, double TermYrs, double PmtsPerYear, double FVOpt) {
    Routine here{"PmtM"};
    here.inputs(PresentValue, InterestAER, TermYrs, PmtsPerYear, FVOpt);
    check_rate(here, InterestAER, "InterestAER");
    const double p = check_frequency(here, PmtsPerYear);
    if (iszero(TermYrs))
        here.fail<errlibinfiniteresult>(
            "TermYrs", "Annuity routine.  Tried to determine required annuity payment for a zero term");
    const double worth = PresentValue + discounted_future_value(FVOpt, InterestAER, TermYrs);
    return here.returning(-worth / annuity_value(1.0, InterestAER, TermYrs, p));
}

double FVM(double AnnPmt, double PresentValue, double InterestAER, double TermYrs, double PmtsPerYear) {
    Routine here{"FVM"};
    here.inputs(AnnPmt, PresentValue, InterestAER, TermYrs, PmtsPerYear);
    check_rate(here, InterestAER, "InterestAER");
    const double p = check_frequency(here, PmtsPerYear);
    const double worth = -(PresentValue + annuity_value(AnnPmt, InterestAER, TermYrs, p));
    return here.returning(worth * SafePow(1.0 + InterestAER, TermYrs));
}

double TermM(double AnnPmt, double PresentValue, double InterestAER, double PmtsPerYear, double FVOpt) {
    Routine here{"TermM"};
    here.inputs(AnnPmt, PresentValue, InterestAER, PmtsPerYear, FVOpt);
    check_rate(here, InterestAER, "InterestAER");
    const double p = check_frequency(here, PmtsPerYear);
    clsTermMSolve problem(AnnPmt, PresentValue, InterestAER, p, FVOpt);
    problem.setup();
    return here.returning(
        problem.solve(guessed_term, guessed_term, solve_tolerance, solve_rounds, guess_positive, here.context()));
}

double IntRateM(double AnnPmt, double PresentValue, double TermYrs, double PmtsPerYear, double FVOpt) {
    Routine here{"IntRateM"};
    here.inputs(AnnPmt, PresentValue, TermYrs, PmtsPerYear, FVOpt);
    const double p = check_frequency(here, PmtsPerYear);
    clsIntRateMSolve problem(AnnPmt, PresentValue, TermYrs, p, FVOpt);
    problem.setup();
    return here.returning(
        problem.solve(-0.99999, 10000.0, solve_tolerance, solve_rounds, rate_of_return, here.context()));
}

double PVMB(double AnnPmt, double InterestAER, double TermYrs, double PmtsPerYear, double FVOpt) {
    Routine here{"PVMB"};
    here.inputs(AnnPmt, InterestAER, TermYrs, PmtsPerYear, FVOpt);
    return here.returning(-PVM(AnnPmt, InterestAER, TermYrs, PmtsPerYear, FVOpt));
}

double PmtMB(double PresentValue, double InterestAER, double TermYrs, double PmtsPerYear, double FVOpt) {
    Routine here{"PmtMB"};
    here.inputs(PresentValue, InterestAER, TermYrs, PmtsPerYear, FVOpt);
    return here.returning(PmtM(-PresentValue, InterestAER, TermYrs, PmtsPerYear, FVOpt));
}

// --- Corrections ------------------------------------------------------------------------------------------------

double spread_correction(double r, double p) {
    if (iszero(r)) return 1.0;
    return -r / (compound_less_one(r, -1.0 / p) * p);
}

double spread_time(double r, double p) {
    const double payments = std::fabs(p);
    const double first = p > 0.0 ? 0.0 : 1.0 / payments; // time of the first payment
    // The payments, numbered from 0, are a geometric series; -k is the logarithm of its ratio. Their average number is
    // 1 / (e^k - 1) - N / (e^(N k) - 1), which loses its digits where k is small.
    const double k = std::log1p(r) / payments;
    const double number = std::fabs(k * payments) < 1e-4
                              ? (payments - 1.0) / 2.0 - (payments * payments - 1.0) / 12.0 * k
                              : 1.0 / std::expm1(k) - payments / std::expm1(payments * k);
    return first + number / payments;
}

double CorrectionM(double DisAER, double PmtsPerYear) {
    Routine here{"CorrectionM"};
    here.inputs(DisAER, PmtsPerYear);
    if (DisAER <= -1.0) here.fail<errlibmin>("DisAER");
    const double p = check_frequency(here, PmtsPerYear);
    return here.returning("AdjustmentFactor", spread_correction(DisAER, p));
}

double CorrectionCont(double DisAER) {
    Routine here{"CorrectionCont"};
    here.inputs(DisAER);
    if (isequal(DisAER, -1.0))
        here.fail<errlibinfiniteresult>("DisAER", "PV undefined when Discount rate = -100% p.a.");
    if (DisAER < -1.0) here.fail<errlibmin>("DisAER");
    if (iszero(DisAER)) return here.returning(1.0);
    return here.returning("AdjustmentFactor", DisAER / std::log1p(DisAER));
}

double CorrectionDC(const date& NPVDate, double DisAER, double DayCount, const AnnualSequence& CashBasis) {
    Routine here{"CorrectionDC"};
    here.inputs(NPVDate, DisAER, DayCount, CashBasis);
    if (DisAER <= -1.0) here.fail<errlibmin>("DisAER");
    check_daycount(here, DayCount);
    const bool advance = !CashBasis.arrears();
    const date year_end = NPVDate.plusyears(1.0, false);
    double worth = 0.0;
    int payments = 0;
    date last = NPVDate;
    for (date day = CashBasis.nextdate(NPVDate, advance); advance ? day < year_end : day <= year_end;
         day = CashBasis.nextdate(day, false)) {
        if (payments > 0 && day <= last) break; // the calendar's end
        const double y = years_between(NPVDate, day, DayCount, CashBasis);
        const TraceBlock pass = here.pass(++payments, day, " at time ", y, " years");
        worth += SafePow(1.0 + DisAER, -y);
        last = day;
    }
    return here.returning("AdjustmentFactor", (1.0 + DisAER) * safe_divide(worth, payments));
}

double LCorrectionM(double GrowthRatePA, double GrowRevsPerYrOpt) {
    Routine here{"LCorrectionM"};
    here.inputs(GrowthRatePA, GrowRevsPerYrOpt);
    here.limit(GrowRevsPerYrOpt, 0, most_payments, "GrowRevsPerYrOpt");
    return here.returning("AdjustmentFactor", 1.0 + GrowthRatePA * (1.0 - reciprocal(GrowRevsPerYrOpt)) / 2.0);
}

double EffTimeM(double DisAER, double PmtsPerYear) {
    Routine here{"EffTimeM"};
    here.inputs(DisAER, PmtsPerYear);
    if (DisAER <= -1.0) here.fail<errlibmin>("DisAER");
    const double p = check_frequency(here, PmtsPerYear);
    const double force = std::log1p(DisAER);
    const double time = std::fabs(force) < 1e-3 // by its series, which ends before the closed form loses its digits
                            ? 0.5 - 0.5 / p - (1.0 - 1.0 / (p * p)) * force / 24.0
                            : 1.0 - std::log(spread_correction(DisAER, p)) / force;
    return here.returning("EffectiveTime", time);
}

} // namespace qx
