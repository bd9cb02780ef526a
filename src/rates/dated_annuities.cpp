#include "rates/dated_annuities.h"

#include "numerics/solver.h"
#include "rates/compounding.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qx {

namespace {

constexpr double solve_tolerance = 1e-10;
constexpr int solve_rounds = 100;

/// The lengths of the periods that end with each payment, in years.
WorkList<double> period_lengths(const Routine& here, const date& DrawDate, int NumPmts, double DayCount,
                                const AnnualSequence& PrdsInt) {
    WorkList<double> lengths;
    lengths->dimension(NumPmts);
    SequenceCursor dates(PrdsInt);
    date start = DrawDate;
    for (int i = 1; i <= NumPmts; ++i) {
        const date end = dates.nextdate(start, false);
        lengths(i) = years_between(start, end, DayCount, PrdsInt);
        const TraceBlock pass = here.pass(i, "Payment on ", end, " after ", lengths(i), " years");
        start = end;
    }
    return lengths;
}

/// The sum of the factors of all payments, and that of the last one.
struct Factors {
    double sum = 0.0, last = 1.0;

    Factors(View<double> lengths, double rate) {
        for (const double length : lengths) {
            last /= 1.0 + rate * length;
            sum += last;
        }
    }
};

class clsPMTXsolve final : public clsSolveBase {
  public:
    clsPMTXsolve(View<double> lengths, double PresentValue, double rate, double FVOpt)
        : factors_(lengths, rate), present_(PresentValue), future_(FVOpt) {}
    double eval(double payment) override { return -present_ - factors_.sum * payment + future_ * factors_.last; }
    void setup() override {}
    /// No payment is larger, whatever the signs.
    double largest() const {
        return safe_divide(std::fabs(present_) + std::fabs(future_ * factors_.last), std::fabs(factors_.sum));
    }

  private:
    Factors factors_;
    double present_, future_;
};

class clsIntRateXsolve final : public clsSolveBase {
  public:
    clsIntRateXsolve(View<double> lengths, double PresentValue, double Pmt, double FVOpt)
        : lengths_(lengths), present_(PresentValue), payment_(Pmt), future_(FVOpt) {}
    double eval(double rate) override {
        if (1.0 + rate * longest_ <= 0.0) return std::numeric_limits<double>::quiet_NaN(); // more than all is lost
        const Factors factors(lengths_, rate);
        return -present_ - factors.sum * payment_ + future_ * factors.last;
    }
    void setup() override { longest_ = *std::max_element(lengths_.begin(), lengths_.end()); }

  private:
    View<double> lengths_;
    double present_, payment_, future_;
    double longest_ = 0.0;
};

void check_number(Routine& here, int NumPmts) { here.limit(NumPmts, 1, range_capacity, "NumPmts"); }

} // namespace

double PMTQX(double PresentValue, const date& DrawDate, int NumPmts, double InterestSimple, double FVOpt,
             double DayCount, const AnnualSequence& PrdsInt) {
    Routine here{"PMTQX"};
    here.inputs(PresentValue, DrawDate, NumPmts, InterestSimple, FVOpt, DayCount, PrdsInt);
    check_number(here, NumPmts);
    check_rate(here, InterestSimple, "InterestSimple");
    check_daycount(here, DayCount);
    const WorkList<double> lengths = period_lengths(here, DrawDate, NumPmts, DayCount, PrdsInt);
    clsPMTXsolve problem(lengths, PresentValue, InterestSimple, FVOpt);
    problem.setup();
    const double largest = problem.largest();
    if (iszero(largest)) return here.returning(0.0);
    // Twice the largest, so that it lies within; the equation is linear in the payment.
    return here.returning(problem.solve(-2.0 * largest, 2.0 * largest, solve_tolerance * std::max(1.0, largest),
                                        solve_rounds, plain_with_recovery, here.context()));
}

double PMTX(double PresentValue, const date& DrawDate, int NumPmts, double InterestSimple, double FVOpt,
            double DayCount, const AnnualSequence& PrdsInt) {
    Routine here{"PMTX"};
    here.inputs(PresentValue, DrawDate, NumPmts, InterestSimple, FVOpt, DayCount, PrdsInt);
    return here.returning(PMTQX(PresentValue, DrawDate, NumPmts, InterestSimple, FVOpt, DayCount, PrdsInt));
}

double PVQX(double InterestSimple, const date& DrawDate, int NumPmts, double Pmt, double FVOpt, double DayCount,
            const AnnualSequence& PrdsInt) {
    Routine here{"PVQX"};
    here.inputs(InterestSimple, DrawDate, NumPmts, Pmt, FVOpt, DayCount, PrdsInt);
    check_rate(here, InterestSimple, "InterestSimple");
    check_number(here, NumPmts);
    check_daycount(here, DayCount);
    const Factors factors(period_lengths(here, DrawDate, NumPmts, DayCount, PrdsInt), InterestSimple);
    return here.returning(FVOpt * factors.last - Pmt * factors.sum);
}

double PVQXX(double InterestSimple, const date& DrawDate, int NumPmts, double Pmt, double FVOpt, double DayCount,
             const AnnualSequence& PrdsInt) {
    Routine here{"PVQXX"};
    here.inputs(InterestSimple, DrawDate, NumPmts, Pmt, FVOpt, DayCount, PrdsInt);
    return here.returning(PVQX(InterestSimple, DrawDate, NumPmts, Pmt, FVOpt, DayCount, PrdsInt));
}

double FVQX(double PresentValue, const date& DrawDate, int NumPmts, double InterestSimple, double Pmt, double DayCount,
            const AnnualSequence& PrdsInt) {
    Routine here{"FVQX"};
    here.inputs(PresentValue, DrawDate, NumPmts, InterestSimple, Pmt, DayCount, PrdsInt);
    check_number(here, NumPmts);
    check_rate(here, InterestSimple, "InterestSimple");
    check_daycount(here, DayCount);
    const Factors factors(period_lengths(here, DrawDate, NumPmts, DayCount, PrdsInt), InterestSimple);
    return here.returning((PresentValue + Pmt * factors.sum) / factors.last);
}

double RateQX(double PresentValue, const date& DrawDate, int NumPmts, double Pmt, double FVOpt, double DayCount,
              const AnnualSequence& PrdsInt) {
    Routine here{"RateQX"};
    here.inputs(PresentValue, DrawDate, NumPmts, Pmt, FVOpt, DayCount, PrdsInt);
    check_number(here, NumPmts);
    check_daycount(here, DayCount);
    const WorkList<double> lengths = period_lengths(here, DrawDate, NumPmts, DayCount, PrdsInt);
    clsIntRateXsolve problem(lengths, PresentValue, Pmt, FVOpt);
    problem.setup();
    return here.returning(
        problem.solve(-0.99999, 10000.0, solve_tolerance, solve_rounds, rate_of_return, here.context()));
}

double IntRateX(double PresentValue, const date& DrawDate, int NumPmts, double Pmt, double FVOpt, double DayCount,
                const AnnualSequence& PrdsInt) {
    Routine here{"IntRateX"};
    here.inputs(PresentValue, DrawDate, NumPmts, Pmt, FVOpt, DayCount, PrdsInt);
    return here.returning(RateQX(PresentValue, DrawDate, NumPmts, Pmt, FVOpt, DayCount, PrdsInt));
}

double NPerQX(double PresentValue, const date& DrawDate, double Pmt, double InterestSimple, double FVOpt,
              double DayCount, const AnnualSequence& PrdsInt) {
    Routine here{"NPerQX"};
    here.inputs(PresentValue, DrawDate, Pmt, InterestSimple, FVOpt, DayCount, PrdsInt);
    check_rate(here, InterestSimple, "InterestSimple");
    check_daycount(here, DayCount);
    // The present value of what is still owed after each payment; the debt is repaid where it changes sign.
    double factor = 1.0, paid = 0.0;
    double owed = PresentValue - FVOpt;
    if (iszero(owed)) return here.returning(0.0);
    date start = DrawDate;
    double payments = 0.0;
    for (int i = 1; payments == 0.0; ++i) {
        if (i > range_capacity) here.fail<errliboveriterated>("Pmt");
        const date end = PrdsInt.nextdate(start, false);
        factor /= 1.0 + InterestSimple * years_between(start, end, DayCount, PrdsInt);
        paid += Pmt * factor;
        const double left = PresentValue + paid - FVOpt * factor;
        const TraceBlock pass = here.pass(i, "Payment on ", end, ", present value still owed ", left);
        if (iszero(left))
            payments = i;
        else if ((left > 0.0) != (owed > 0.0))
            payments = i - 1 + owed / (owed - left);
        owed = left;
        start = end;
    }
    return here.returning(payments);
}

} // namespace qx
