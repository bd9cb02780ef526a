#include "rates/quoted_rates.h"

#include "numerics/solver.h"
#include "rates/annuities.h"
#include "rates/compounding.h"

#include <limits>

namespace qx {

namespace {

constexpr double solve_tolerance = 1e-10;
constexpr int solve_rounds = 100;

/// The loan of both problems.
struct FeeLoan {
    double LoanAmount, Fees, TermYrs, p;

    /// The value of level payments of 1 a year at a simple rate.
    double annuity(double rate) const {
        if (1.0 - rate / p <= 0.0) return std::numeric_limits<double>::quiet_NaN(); // more than all is lost
        return annuity_value(1.0, compound_less_one(-rate / p, -p), TermYrs, p);
    }
    /// The net amount less the present value at one rate of the payments that repay the loan at another.
    double excess(double rate, double quoted) const {
        return LoanAmount - Fees - LoanAmount / annuity(quoted) * annuity(rate);
    }
};

class clsAPRsolve final : public clsSolveBase {
  public:
    clsAPRsolve(const FeeLoan& loan, double quoted) : loan_(loan), quoted_(quoted) {}
    double eval(double rate) override { return loan_.excess(rate, quoted_); }
    void setup() override {}

  private:
    const FeeLoan& loan_;
    double quoted_;
};

class clsAPRsolveSimp final : public clsSolveBase {
  public:
    clsAPRsolveSimp(const FeeLoan& loan, double rate) : loan_(loan), rate_(rate) {}
    double eval(double quoted) override { return loan_.excess(rate_, quoted); }
    void setup() override {}

  private:
    const FeeLoan& loan_;
    double rate_;
};

double check_arrears(Routine& here, double PmtsPerYear) {
    const double p = check_frequency(here, PmtsPerYear);
    if (p > 0.0) here.fail<errlibnonsenseinputs>("PmtsPerYear", "The payments must be in arrears");
    return p;
}
void check_term(const Routine& here, double TermYrs) {
    if (TermYrs <= 0.0) here.fail<errlibmin>("TermYrs");
}

double solved(const Routine& here, clsSolveBase& problem) {
    problem.setup();
    return here.returning(
        problem.solve(-0.99999, 10000.0, solve_tolerance, solve_rounds, rate_of_return, here.context()));
}

} // namespace

double QuotedToAPR(double LoanAmount, double Fees, double TermYrs, double QuotedRate, double PmtsPerYear) {
    Routine here{"QuotedToAPR"};
    here.inputs(LoanAmount, Fees, TermYrs, QuotedRate, PmtsPerYear);
    check_term(here, TermYrs);
    check_rate(here, QuotedRate, "QuotedRate");
    const FeeLoan loan{LoanAmount, Fees, TermYrs, check_arrears(here, PmtsPerYear)};
    clsAPRsolve problem(loan, QuotedRate);
    return solved(here, problem);
}

double APRToQuoted(double LoanAmount, double Fees, double USAPR, double TermYrs, double PmtsPerYear) {
    Routine here{"APRToQuoted"};
    here.inputs(LoanAmount, Fees, USAPR, TermYrs, PmtsPerYear);
    check_rate(here, USAPR, "USAPR");
    check_term(here, TermYrs);
    const FeeLoan loan{LoanAmount, Fees, TermYrs, check_arrears(here, PmtsPerYear)};
    clsAPRsolveSimp problem(loan, USAPR);
    return solved(here, problem);
}

} // namespace qx
