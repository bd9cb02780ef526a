#include "projections/simple_rates.h"

#include "calendar/dated_amounts.h"
#include "numerics/solver.h"
#include "projections/simple_growth.h"
#include "rates/compounding.h"
#include "rates/rate_conversion.h"

#include <algorithm>
#include <limits>

namespace qx {

namespace {

constexpr double solve_tolerance = 1e-10;
constexpr int solve_rounds = 100;
constexpr int most_periods = 2000; ///< of a present value

/// The growth of 1 from one date to a later one.
double growth(const Routine& here, const DatedRates& rates, const date& from, const date& to, double margin) {
    double growth = 1.0;
    int i = 0;
    for_each_piece(from, to, rates.Periods, [&](const timeperiod& piece) {
        const TraceBlock pass = here.pass(++i, piece);
        double interest = rates.interest(piece, 1.0, margin);
        if (growth != 1.0) interest += rates.interest(piece, growth - 1.0);
        growth += interest;
        here.info("Growth=", growth);
    });
    return growth;
}

/// The date of a rate that has always held.
const date always;
View<date> from_the_start() { return View<date>::of(always); }
View<double> one_rate(const double& rate) { return View<double>::of(rate); }

/// Discount factors from one date to many, which share the growth from one date of the sequence to the next.
class SharedFactors {
  public:
    SharedFactors(const date& NPVDate, const DatedRates& rates)
        : NPVDate_(NPVDate), rates_(rates), past_(NPVDate, rates) {
        keep(NPVDate, 1.0);
    }

    double operator()(const date& day) {
        if (day < NPVDate_) return past_(day);
        // On from the last known date on or before the day.
        const date* const later = std::upper_bound(known_dates_.begin(), known_dates_.end(), day);
        const int known = static_cast<int>(later - known_dates_.begin());
        date reached = known_dates_(known);
        double growth = growths_(known);
        for (date next = after(reached); next <= day && next > reached; next = after(reached)) {
            growth *= rates_.growth(reached, next);
            reached = next;
            keep(reached, growth);
        }
        return 1.0 / (day > reached ? growth * rates_.growth(reached, day) : growth);
    }

  private:
    date after(const date& day) const { return rates_.Periods.nextdate(day, false); }

    /// Keeps the growth to a date of the sequence after all known ones; the last place is for the latest.
    void keep(const date& day, double growth) {
        const int n = known_dates_.size();
        if (n > 0 && day <= known_dates_(n)) return;
        if (n < range_capacity) {
            known_dates_->append(day);
            growths_->append(growth);
        } else {
            known_dates_(n) = day;
            growths_(n) = growth;
        }
    }

    /// NPVDate and dates of the sequence after it, ascending, and the growth from NPVDate to each.
    WorkList<date> known_dates_;
    WorkList<double> growths_;
    const date NPVDate_;
    const DatedRates& rates_;
    GrowthTo past_;
};

/// The factor at a flat rate, less the one that is wanted.
class clsSimpIntSolve final : public clsSolveBase {
  public:
    clsSimpIntSolve(double target, const date& FromDate, const date& ToDate, double DayCount,
                    const AnnualSequence& Periods)
        : target_(target), backward_(ToDate < FromDate), from_(std::min(FromDate, ToDate)),
          to_(std::max(FromDate, ToDate)), DayCount_(DayCount), Periods_(Periods) {}
    /// What accrues in each of the pieces at a rate of 1: at a flat rate nothing else counts.
    void setup() override {
        constexpr double whole = 1.0;
        const DatedRates accrual{from_the_start(), one_rate(whole), DayCount_, Periods_};
        pieces_ = 0;
        for_each_piece(from_, to_, Periods_, [&](const timeperiod& piece) {
            if (pieces_ == range_capacity) throw outofrange(FunctionContext("DFToSimpleX", "ToDate"));
            lengths()[pieces_++] = accrual.interest(piece, 1.0);
        });
    }
    double eval(double rate) override {
        double growth = 1.0;
        for (int i = 0; i < pieces_; ++i) {
            const double grown = 1.0 + rate * lengths()[i];
            if (grown <= 0.0) return std::numeric_limits<double>::quiet_NaN(); // more than all is lost
            growth *= grown;
        }
        return (backward_ ? growth : 1.0 / growth) - target_;
    }

  private:
    static double* lengths() {
        static double lengths[range_capacity];
        return lengths;
    }

    double target_;
    bool backward_;
    date from_, to_;
    double DayCount_;
    const AnnualSequence& Periods_;
    int pieces_ = 0;
};

} // namespace

double SimpleToDFXX(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                    double DayCountDisc, const AnnualSequence& PrdsDisc, double MarginOpt) {
    Routine here{"SimpleToDFXX", Routine::internal};
    here.arguments(QX_NAMED(FromDatesInt, IntSimple, FromDate, ToDate, DayCountDisc, PrdsDisc, MarginOpt));
    check_rates(here, IntSimple);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    check_arrears(here, PrdsDisc, "PrdsSource", "PrdsSource MUST be in arrears for this function");
    const DatedRates rates{FromDatesInt, IntSimple, DayCountDisc, PrdsDisc};
    if (ToDate < FromDate) return here.returning(growth(here, rates, ToDate, FromDate, MarginOpt));
    return here.returning(reciprocal(growth(here, rates, FromDate, ToDate, MarginOpt)));
}

double SimpleToDFX(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                   double DayCountDisc, const AnnualSequence& PrdsDisc) {
    Routine here{"SimpleToDFX"};
    here.inputs(FromDatesInt, IntSimple, FromDate, ToDate, DayCountDisc, PrdsDisc);
    return here.returning(SimpleToDFXX(FromDatesInt, IntSimple, FromDate, ToDate, DayCountDisc, PrdsDisc, 0.0));
}

double SimpleToDFXS(double InterestSimple, const date& FromDate, const date& ToDate, double DayCountDisc,
                    const AnnualSequence& PrdsDisc) {
    return SimpleToDFX(from_the_start(), one_rate(InterestSimple), FromDate, ToDate, DayCountDisc, PrdsDisc);
}

double DFToSimpleX(double DiscountFactor, const date& FromDate, const date& ToDate, double DayCountDisc,
                   const AnnualSequence& PrdsDisc) {
    Routine here{"DFToSimpleX"};
    here.inputs(DiscountFactor, FromDate, ToDate, DayCountDisc, PrdsDisc);
    return here.returning(DFToSimpleXX(DiscountFactor, FromDate, ToDate, DayCountDisc, PrdsDisc, 0.0));
}

double DFToSimpleXX(double DiscountFactor, const date& FromDate, const date& ToDate, double DayCountDisc,
                    const AnnualSequence& PrdsDisc, double MarginOpt) {
    Routine here{"DFToSimpleXX", Routine::internal};
    here.arguments(QX_NAMED(DiscountFactor, FromDate, ToDate, DayCountDisc, PrdsDisc, MarginOpt));
    check_daycount(here, DayCountDisc, "DayCountDisc");
    check_arrears(here, PrdsDisc, "PrdsDisc", "PrdsDisc MUST be in arrears for this function");
    if (FromDate == ToDate) return here.returning(-MarginOpt);
    clsSimpIntSolve problem(DiscountFactor, FromDate, ToDate, DayCountDisc, PrdsDisc);
    problem.setup();
    const double rate = problem.solve(-0.99999, 10000.0, solve_tolerance, solve_rounds, rate_of_return, here.context());
    return here.returning(rate - MarginOpt);
}

double SimpleToAERX(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                    double DayCountDisc, const AnnualSequence& PrdsDisc) {
    Routine here{"SimpleToAERX"};
    here.inputs(FromDatesInt, IntSimple, FromDate, ToDate, DayCountDisc, PrdsDisc);
    const double factor = SimpleToDFX(FromDatesInt, IntSimple, FromDate, ToDate, DayCountDisc, PrdsDisc);
    return here.returning(DFToAER(factor, FromDate, ToDate, DayCountDisc, PrdsDisc));
}

double AERToSimpleX(double InterestAER, const date& FromDate, const date& ToDate, double DayCountDisc,
                    const AnnualSequence& PrdsDisc) {
    Routine here{"AERToSimpleX"};
    here.inputs(InterestAER, FromDate, ToDate, DayCountDisc, PrdsDisc);
    const double factor = AERToDF(InterestAER, FromDate, ToDate, DayCountDisc, PrdsDisc);
    return here.returning(DFToSimpleX(factor, FromDate, ToDate, DayCountDisc, PrdsDisc));
}

double SimpleToContX(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                     double DayCountDisc, const AnnualSequence& PrdsDisc) {
    Routine here{"SimpleToContX"};
    here.inputs(FromDatesInt, IntSimple, FromDate, ToDate, DayCountDisc, PrdsDisc);
    const double factor = SimpleToDFX(FromDatesInt, IntSimple, FromDate, ToDate, DayCountDisc, PrdsDisc);
    return here.returning(DFToCont(factor, FromDate, ToDate, DayCountDisc, PrdsDisc));
}

double ContToSimpleX(double InterestCont, const date& FromDate, const date& ToDate, double DayCountDisc,
                     const AnnualSequence& PrdsDisc) {
    Routine here{"ContToSimpleX"};
    here.inputs(InterestCont, FromDate, ToDate, DayCountDisc, PrdsDisc);
    const double factor = ContToDF(InterestCont, FromDate, ToDate, DayCountDisc, PrdsDisc);
    return here.returning(DFToSimpleX(factor, FromDate, ToDate, DayCountDisc, PrdsDisc));
}

double SimpleToSimpleX(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                       double DayCountSource, double DayCountTarget, const AnnualSequence& PrdsSource,
                       const AnnualSequence& PrdsTarget) {
    Routine here{"SimpleToSimpleX"};
    here.inputs(FromDatesInt, IntSimple, FromDate, ToDate, DayCountSource, DayCountTarget, PrdsSource, PrdsTarget);
    check_daycount(here, DayCountSource, "DayCountSource");
    check_daycount(here, DayCountTarget, "DayCountTarget");
    const double factor = SimpleToDFX(FromDatesInt, IntSimple, FromDate, ToDate, DayCountSource, PrdsSource);
    return here.returning(DFToSimpleX(factor, FromDate, ToDate, DayCountTarget, PrdsTarget));
}

double RateConvert(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                   double DayCountSource, double DayCountTarget, const AnnualSequence& PrdsSource,
                   const AnnualSequence& PrdsTarget, double MarginOpt) {
    Routine here{"RateConvert"};
    here.inputs(FromDatesInt, IntSimple, FromDate, ToDate, DayCountSource, DayCountTarget, PrdsSource, PrdsTarget,
                MarginOpt);
    check_daycount(here, DayCountSource, "DayCountSource");
    check_daycount(here, DayCountTarget, "DayCountTarget");
    if (!iszero(MarginOpt)) here.info("If MarginOpt is not zero, then Total interest rate = Interest Rate + Margin.");
    const double factor =
        SimpleToDFXX(FromDatesInt, IntSimple, FromDate, ToDate, DayCountSource, PrdsSource, MarginOpt);
    return here.returning(DFToSimpleXX(factor, FromDate, ToDate, DayCountTarget, PrdsTarget, MarginOpt) + MarginOpt);
}

double SimpleToAPRX(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                    double DayCountDisc, const AnnualSequence& PrdsDisc) {
    Routine here{"SimpleToAPRX"};
    here.inputs(FromDatesInt, IntSimple, FromDate, ToDate, DayCountDisc, PrdsDisc);
    here.info(superseded_apr);
    return here.returning(SimpleToAERX(FromDatesInt, IntSimple, FromDate, ToDate, DayCountDisc, PrdsDisc));
}

double APRToSimpleX(double InterestAPR, const date& FromDate, const date& ToDate, double DayCountDisc,
                    const AnnualSequence& PrdsDisc) {
    Routine here{"APRToSimpleX"};
    here.inputs(InterestAPR, FromDate, ToDate, DayCountDisc, PrdsDisc);
    here.info(superseded_apr);
    return here.returning(AERToSimpleX(InterestAPR, FromDate, ToDate, DayCountDisc, PrdsDisc));
}

// --- Present values ---------------------------------------------------------------------------------------------

double PVTSFX(const date& NPVDate, View<date> FromDatesInt, View<double> IntSimple, View<date> Dates,
              View<double> Cashflows, double DayCountDisc, const AnnualSequence& PrdsDisc, const date& StartDCF,
              const date& FinishDCF) {
    Routine here{"PVTSFX"};
    here.inputs(NPVDate, FromDatesInt, IntSimple, Dates, Cashflows, DayCountDisc, PrdsDisc, StartDCF, FinishDCF);
    check_rates(here, IntSimple);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    check_arrears(here, PrdsDisc, "PrdsDisc", "PrdsDisc MUST be in arrears for this function");
    const DatedAmounts flows(Dates, Cashflows);
    const DatedRates rates{FromDatesInt, IntSimple, DayCountDisc, PrdsDisc};
    SharedFactors factor(NPVDate, rates);
    double sum = 0.0;
    for (int i = 1; i <= flows.size(); ++i) {
        const date& day = flows.Dates()(i);
        const double flow = flows.Amounts()(i);
        if (!FinishDCF.iszero() && day >= FinishDCF) break;
        if (day <= StartDCF || iszero(flow)) continue;
        const TraceBlock pass = here.pass(i, flow, " on ", day);
        const double value = flow * factor(day);
        here.info("PV=", value);
        sum += value;
    }
    return here.returning(sum);
}

double PVOneX(const date& NPVDate, View<date> FromDatesInt, View<double> IntSimple, const date& TheDate, double Payment,
              double DayCountDisc, const AnnualSequence& PrdsDisc) {
    Routine here{"PVOneX"};
    here.arguments(QX_NAMED(NPVDate, FromDatesInt, IntSimple, TheDate, Payment, DayCountDisc, PrdsDisc));
    return here.returning(Payment * SimpleToDFX(FromDatesInt, IntSimple, NPVDate, TheDate, DayCountDisc, PrdsDisc));
}

double PVFInterest(const date& NPVDate, View<date> FromDatesInt, View<double> IntSimple, const date& Finish,
                   View<date> FromDates, View<double> Balances, double DayCount, const AnnualSequence& PrdsInt) {
    Routine here{"PVFInterest"};
    here.inputs(NPVDate, FromDatesInt, IntSimple, Finish, FromDates, Balances, DayCount, PrdsInt);
    check_rates(here, IntSimple);
    check_daycount(here, DayCount);
    check_arrears(here, PrdsInt, "PrdsInt", "PrdsInt MUST be in arrears for this function");
    if (FromDates.size() == 0) return here.returning(0.0);
    const DatedRates rates{FromDatesInt, IntSimple, DayCount, PrdsInt};
    SharedFactors factor(NPVDate, rates);
    const SteppedBalances balances(Finish, FromDates, Balances);
    double sum = 0.0;
    date start = FromDates.get(1);
    for (int i = 1; start < Finish; ++i) {
        if (i > most_periods) here.fail<errliboveriterated>("Finish");
        date end = std::min(PrdsInt.nextdate(start, false), Finish);
        if (end <= start) end = Finish; // the calendar's end
        const TraceBlock pass = here.pass(i, timeperiod(start, end));
        const double paid = balances.interest(timeperiod(start, end), rates.accrual, 0.0);
        const double value = paid * factor(end);
        here.info("PV=", value);
        sum += value;
        start = end;
    }
    return here.returning(sum);
}

double PVInterestX(const date& NPVDate, View<date> FromDatesInt, View<double> IntSimple, const date& Start,
                   const date& Finish, double Balance, double DayCount, const AnnualSequence& PrdsInt) {
    Routine here{"PVInterestX"};
    here.inputs(NPVDate, FromDatesInt, IntSimple, Start, Finish, Balance, DayCount, PrdsInt);
    return here.returning(PVFInterest(NPVDate, FromDatesInt, IntSimple, Finish, View<date>::of(Start),
                                      View<double>::of(Balance), DayCount, PrdsInt));
}

double PVInterest(const date& NPVDate, double InterestSimple, const date& Start, const date& Finish, double Balance,
                  double DayCount, const AnnualSequence& PrdsInt) {
    Routine here{"PVInterest"};
    here.inputs(NPVDate, InterestSimple, Start, Finish, Balance, DayCount, PrdsInt);
    return here.returning(
        PVInterestX(NPVDate, from_the_start(), one_rate(InterestSimple), Start, Finish, Balance, DayCount, PrdsInt));
}

} // namespace qx
