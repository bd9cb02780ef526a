#include "banking/loan.h"

#include "banking/loan_schedules.h"
#include "calendar/one_date.h"
#include "core/routine.h"
#include "projections/interest.h"
#include "projections/levels.h"
#include "rates/compounding.h"

#include <algorithm>
#include <cmath>

namespace qx {

namespace {

constexpr int default_term_months = 60;  ///< of a mortgage after its debt service
constexpr int quarter_days = 13;         ///< the number of the English quarter days
constexpr int months_beyond_period = 12; ///< for which a schedule of debt service is made

/// The checks that all loans share. False for a period that runs backward.
bool opens(Routine& here, const timeperiod& Time, int LoanOutput, double DayCount, double ProjMode) {
    here.limit(DayCount, daycount_limits, "DayCount");
    here.limit(LoanOutput, loan_output_limits, "LoanOutput");
    here.limit(ProjMode, projmode_limits, "ProjMode");
    return runs_forward(here, Time);
}
bool opens(Routine& here, const timeperiod& Time, int LoanOutput, const Basis& basis) {
    return opens(here, Time, LoanOutput, basis.DayCount, basis.ProjMode);
}

/// True if a period comes before the first advance or after the repayment.
bool out_of_reach(const timeperiod& Time, const date& first_advance, const date& RepaymentDate) {
    return Time.from() > RepaymentDate || Time.to() < first_advance;
}

bool none(View<date> dates) { return dates_given(dates).empty(); }

/// The balance from each advance on.
WorkList<double> running_balances(const Payments& advances) {
    const int n = advances.PmtDates.size();
    WorkList<double> balances(n);
    double balance = 0.0;
    for (int i = 1; i <= n; ++i) balances(i) = balance += advances.Pmts(i);
    return balances;
}
/// The first advance date after the repayment; 0 if there is none.
int advance_after(View<date> dates, const date& RepaymentDate) {
    for (int i = 1; i <= dates.size(); ++i)
        if (dates(i) > RepaymentDate) return i;
    return 0;
}

/// A loan that is read off a list of advances.
struct ListedLoan {
    const SimpleRates& rates;
    const Payments& advances;
    View<double> balances;
    const Payments& overrides;
    const date& RepaymentDate;
    double AddMargin;
    int Options;
    Measure measure;

    static constexpr const char* kind = "Loan function";
    FromSteps steps() const { return {RepaymentDate, advances.PmtDates}; }
    double advanced(const timeperiod& Time) const { return MkPmts(Time, advances); }
    double repaid(const timeperiod& Time) const { return payment_in(Time, RepaymentDate, balances.last()); }
    double interest(const timeperiod& Time, double ProjMode) const {
        return FInterestM(Time, rates.FromDatesInt, rates.IntSimple, RepaymentDate, advances.PmtDates, balances,
                          overrides.PmtDates, overrides.Pmts, AddMargin, Options, measure.DayCount, measure.Periods,
                          ProjMode);
    }
    double balance(const date& day) const { return Levels(day, steps(), balances); }
    double average(const timeperiod& Time) const { return ALevels(Time, steps(), balances, level_average, measure); }
};

/// A loan of one advance.
struct SingleLoan {
    const SimpleRates& rates;
    const Payment& advance;
    const date& RepaymentDate;
    double AddMargin;
    int Options;
    Measure measure;

    static constexpr const char* kind = "LoanQ Function";
    Life life() const { return {advance.PmtDate, RepaymentDate}; }
    double advanced(const timeperiod& Time) const { return payment_in(Time, advance.PmtDate, advance.Pmt); }
    double repaid(const timeperiod& Time) const { return payment_in(Time, RepaymentDate, advance.Pmt); }
    double interest(const timeperiod& Time, double ProjMode) const {
        if ((Options & fixed_rate) == 0)
            return InterestXX(Time, rates.FromDatesInt, rates.IntSimple, advance.PmtDate, RepaymentDate, advance.Pmt,
                              AddMargin, measure.DayCount, measure.Periods, ProjMode);
        const double rate =
            Levels(advance.PmtDate, FromSteps{RepaymentDate, rates.FromDatesInt}, rates.IntSimple) + AddMargin;
        return Interest(Time, rate, advance.PmtDate, RepaymentDate, advance.Pmt, measure.DayCount, measure.Periods,
                        ProjMode);
    }
    double balance(const date& day) const { return Level(day, life(), advance.Pmt); }
    double average(const timeperiod& Time) const { return ALevel(Time, life(), advance.Pmt, level_average, measure); }
};

/// What a loan does in a period. `rolled` is the interest rolled up of which the advances hold what covers it.
template <class AnyLoan>
double read_off(const Routine& here, const timeperiod& Time, const AnyLoan& loan, int LoanOutput, const Basis& basis,
                const Payments& rolled = {}) {
    const auto principal = [&] { return loan.advanced(Time) - loan.repaid(Time); };
    const auto interest = [&] { return loan.interest(Time, basis.ProjMode); };
    const auto rolled_up = [&] { return basis.cash() ? MkPmts(Time, rolled) : 0.0; };
    const auto accrued = [&](const date& day) {
        return loan.interest(timeperiod(basis.Periods.prevdate(day, false), day), 0.0);
    };
    switch (LoanOutput) {
    case loan_principal:
        return without_dust(principal() - rolled_up());
    case loan_interest:
        return without_dust(interest() + rolled_up());
    case loan_principal_and_interest:
    case loan_all_flows:
        return without_dust(principal() + interest());
    case loan_opening_balance:
        return without_dust(loan.balance(Time.from().plusdays(-1)));
    case loan_average_balance:
        return without_dust(loan.average(Time));
    case loan_closing_balance:
        return without_dust(loan.balance(Time.to().plusdays(-1)));
    case loan_all_principal:
        return without_dust(principal());
    case loan_all_interest:
        return without_dust(interest());
    case loan_accrued_at_start:
        return without_dust(accrued(Time.from()));
    case loan_accrued_at_end:
        return without_dust(accrued(Time.to()));
    case loan_final_repayment:
        return without_dust(loan.repaid(Time));
    case loan_advances:
        return without_dust(loan.advanced(Time));
    default:
        here.fail<errlibillegalswitch>("LoanOutput", "LoanOutput ", LoanOutput, " is invalid in the ", AnyLoan::kind);
    }
}

/// LoanM for advances of which some cover interest that was rolled up; `running` gives their running balances.
template <class Balances>
double loan(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const Payments& overrides,
            const Payments& rolled, const date& RepaymentDate, double AddMargin, int Options, int LoanOutput,
            const Basis& basis, Balances running) {
    Routine here{"LoanM", Routine::internal};
    here.arguments("Time,FromDatesInt,IntSimple,AdvanceDates,NetAdvances,IntOverRideDates,IntOverRide,RepaymentDate,"
                   "AddMargin,Options,LoanOutput,DayCount,PrdsInt,ProjMode",
                   Time, rates.FromDatesInt, rates.IntSimple, advances.PmtDates, advances.Pmts, overrides.PmtDates,
                   overrides.Pmts, RepaymentDate, AddMargin, Options, LoanOutput, basis.DayCount, basis.Periods,
                   basis.ProjMode);
    if (!opens(here, Time, LoanOutput, basis)) return here.returning(0.0);
    const View<date> dates = advances.PmtDates;
    if (none(dates) || out_of_reach(Time, dates.first(), RepaymentDate)) return here.returning(0.0);
    if (const int late = advance_after(dates, RepaymentDate); late > 0)
        here.fail<errlibnovalidanswer>("AdvanceDates", "An AdvanceDate (", dates(late),
                                       ") cannot be after the Repayment date (", RepaymentDate, ")");
    const auto balances = running();
    const ListedLoan listed{rates,         advances,  balances, overrides,
                            RepaymentDate, AddMargin, Options,  {basis.DayCount, basis.Periods}};
    return here.returning(read_off(here, Time, listed, LoanOutput, basis, rolled));
}

/// Loan of advances whose running balances `running` gives.
template <class Balances>
double plain_loan(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const date& RepaymentDate,
                  int LoanOutput, const Basis& basis, Balances running) {
    Routine here{"Loan"};
    here.inputs(Time, rates, advances, RepaymentDate, LoanOutput, basis);
    return here.returning(loan(Time, rates, advances, {}, {}, RepaymentDate, 0.0, 0, LoanOutput, basis, running));
}

} // namespace

double LoanM(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const Payments& overrides,
             const date& RepaymentDate, double AddMargin, int Options, int LoanOutput, const Basis& basis) {
    return loan(Time, rates, advances, overrides, {}, RepaymentDate, AddMargin, Options, LoanOutput, basis,
                [&] { return running_balances(advances); });
}

double Loan(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const date& RepaymentDate,
            int LoanOutput, const Basis& basis) {
    return plain_loan(Time, rates, advances, RepaymentDate, LoanOutput, basis,
                      [&] { return running_balances(advances); });
}

double LoanX(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const date& RepaymentDate,
             const date& RollTo, int LoanOutput, const Basis& basis) {
    Routine here{"LoanX"};
    here.inputs(Time, rates, advances, RepaymentDate, RollTo, LoanOutput, basis);
    if (!opens(here, Time, LoanOutput, basis)) return here.returning(0.0);
    if (RollTo.iszero()) return here.returning(Loan(Time, rates, advances, RepaymentDate, LoanOutput, basis));
    const View<date> dates = advances.PmtDates;
    if (none(dates) || out_of_reach(Time, dates.first(), RepaymentDate)) return here.returning(0.0);
    if (advance_after(dates, RepaymentDate) > 0)
        here.fail<errlibnovalidanswer>("AdvanceDates", "An AdvanceDate cannot be after the StartRepayments date");

    RolledUpInterest& interest = loan_schedules().rolled_up;
    interest.build(here, rates, advances, running_balances(advances), RepaymentDate, RollTo,
                   {basis.DayCount, basis.Periods});
    const Payments rolled = interest.rolled();
    if (LoanOutput == loan_rolled_up_interest) return here.returning(MkPmts(Time, rolled));
    const Payments all = interest.all();
    return here.returning(loan(Time, rates, all, {}, rolled, RepaymentDate, 0.0, 0, LoanOutput, basis,
                               [&] { return running_balances(all); }));
}

namespace {

/// The checks of the loans that are repaid in a straight line, and their schedule. None for a period that gives 0.
Payments straight_line(Routine& here, const timeperiod& Time, const Payments& advances, const date& StartRepayments,
                       const date& RepaymentDate, int LoanOutput, const Measure& interest, const Measure& principal,
                       double ProjMode) {
    here.limit(interest.DayCount, daycount_limits, "DayCountInt");
    here.limit(principal.DayCount, daycount_limits, "DayCountPrin");
    if (!opens(here, Time, LoanOutput, interest.DayCount, ProjMode) || none(advances.PmtDates)) return {};
    return loan_schedules().straight_line.build(here, advances, StartRepayments, RepaymentDate, principal);
}

} // namespace

double LoanLin(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const date& StartRepayments,
               const date& RepaymentDate, int LoanOutput, const Measure& interest, const Measure& principal,
               double ProjMode) {
    Routine here{"LoanLin"};
    here.inputs(Time, rates, advances, StartRepayments, RepaymentDate, LoanOutput, interest, principal, ProjMode);
    const Payments schedule =
        straight_line(here, Time, advances, StartRepayments, RepaymentDate, LoanOutput, interest, principal, ProjMode);
    if (schedule.PmtDates.empty()) return here.returning(0.0);
    return here.returning(
        Loan(Time, rates, schedule, RepaymentDate, LoanOutput, {interest.DayCount, interest.Periods, ProjMode}));
}

double LoanLinX(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const date& StartRepayments,
                const date& RepaymentDate, const date& RollTo, int LoanOutput, const Measure& interest,
                const Measure& principal, double ProjMode) {
    Routine here{"LoanLinX"};
    here.inputs(Time, rates, advances, StartRepayments, RepaymentDate, RollTo, LoanOutput, interest, principal,
                ProjMode);
    const Payments schedule =
        straight_line(here, Time, advances, StartRepayments, RepaymentDate, LoanOutput, interest, principal, ProjMode);
    if (schedule.PmtDates.empty()) return here.returning(0.0);
    return here.returning(LoanX(Time, rates, schedule, RepaymentDate, RollTo, LoanOutput,
                                {interest.DayCount, interest.Periods, ProjMode}));
}

double LoanRep(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const date& StartRepayments,
               const date& RepaymentDate, int RepType, const date& RollTo, int LoanOutput, double DayCount,
               const AnnualSequence& PrdsRep, const AnnualSequence& PrdsInt, double ProjMode) {
    Routine here{"LoanRep"};
    here.inputs(Time, rates, advances, StartRepayments, RepaymentDate, RepType, RollTo, LoanOutput, DayCount, PrdsRep,
                PrdsInt, ProjMode);
    opens(here, Time, LoanOutput, DayCount, ProjMode);
    return here.returning(0.0);
}

double LoanQ(const timeperiod& Time, const SimpleRates& rates, const Payment& advance, const date& RepaymentDate,
             double AddMargin, int Options, int LoanOutput, const Basis& basis) {
    Routine here{"LoanQ"};
    here.inputs(Time, rates, advance, RepaymentDate, AddMargin, Options, LoanOutput, basis);
    if (!opens(here, Time, LoanOutput, basis) || out_of_reach(Time, advance.PmtDate, RepaymentDate))
        return here.returning(0.0);
    if (advance.PmtDate > RepaymentDate)
        here.fail<errlibnovalidanswer>("AdvanceDate", "The AdvanceDate cannot be after the Repayment date");
    const SingleLoan single{rates, advance, RepaymentDate, AddMargin, Options, {basis.DayCount, basis.Periods}};
    return here.returning(read_off(here, Time, single, LoanOutput, basis));
}

namespace {

/// The rates that hold in the life of a loan.
SimpleRates rates_within(const SimpleRates& rates, const Life& life) {
    const View<date> dates = rates.FromDatesInt;
    if (dates.size() < 2 || (rates.IntSimple.size() != 1 && rates.IntSimple.size() != dates.size())) return rates;
    const auto* const begins = std::upper_bound(dates.begin() + 1, dates.end(), life.Start) - 1;
    const auto* const ends = std::upper_bound(begins + 1, dates.end(), life.Finish);
    const int first = static_cast<int>(begins - dates.begin()) + 1, count = static_cast<int>(ends - begins);
    if (rates.IntSimple.size() == 1) return {dates.from(first).upto(count), rates.IntSimple};
    return {dates.from(first).upto(count), rates.IntSimple.from(first).upto(count)};
}

} // namespace

double LoanPool(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const PoolTerms& terms,
                int Options, int LoanOutput, double DayCount, double ProjMode) {
    Routine here{"LoanPool"};
    here.inputs(Time, rates, advances, terms, Options, LoanOutput, DayCount, ProjMode);
    if (!opens(here, Time, LoanOutput, DayCount, ProjMode)) return here.returning(0.0);
    const auto of_loan = [](View<double> list, int i) { return list.empty() ? 0.0 : list.entry(i); };
    AnnualSequence sequence;
    double figure = 0.0, payments = 0.0; // of the sequence
    double sum = 0.0;
    for (int i = 1; i <= advances.PmtDates.size(); ++i) {
        const Payment advance{advances.PmtDates(i), advances.Pmts(i)};
        if (advance.PmtDate > Time.to()) break;
        if (iszero(advance.Pmt)) continue;
        const TraceBlock pass = here.pass(i, "Loan of ", advance.Pmt, " on ", advance.PmtDate);
        const date repayment = advance.PmtDate.plusyears(of_loan(terms.Term_s, i), true);
        const double starting = of_loan(terms.StartingSeqNum_s, i);
        const double first = iszero(starting) ? -DateSeqNum(advance.PmtDate) : -std::fabs(starting);
        const double a_year = of_loan(terms.PmtsPerYr_s, i);
        if (first != figure || a_year != payments) {
            sequence.clear("PmtsPerYr_s");
            if (whole(a_year) == quarter_days)
                sequence.setpreset(-quarter_days);
            else
                sequence.generate(first, whole(a_year), false);
            figure = first;
            payments = a_year;
        }
        sum += LoanQ(Time, rates_within(rates, {advance.PmtDate, repayment}), advance, repayment,
                     of_loan(terms.AddMargin_s, i), Options, LoanOutput, {DayCount, sequence, ProjMode});
    }
    return here.returning(sum);
}

double Mortgage(const timeperiod& Time, const SimpleRates& rates, const FromSteps& service,
                View<double> AnnDebtServiceRates, const Payments& advances, const date& LongStopRepDate, int LoanOutput,
                double DayCount, double DayCountInt, const AnnualSequence& Periods, const AnnualSequence& PrdsInt,
                double ProjMode) {
    Routine here{"Mortgage"};
    here.inputs(Time, rates, service, AnnDebtServiceRates, advances, LongStopRepDate, LoanOutput, DayCount, DayCountInt,
                Periods, PrdsInt, ProjMode);
    here.limit(DayCountInt, daycount_limits, "DayCountInt");
    if (!opens(here, Time, LoanOutput, DayCount, ProjMode)) return here.returning(0.0);
    if (none(service.FromDates)) here.fail<errlibinsuffrange>("FromDates");
    if (none(advances.PmtDates)) return here.returning(0.0);

    const bool accruals = whole(ProjMode) % 2 == 0;
    const Basis in_cash{DayCount, Periods, accruals ? ProjMode + 1.0 : ProjMode};
    const date LongStop =
        LongStopRepDate.iszero() ? service.Finish.plusmonths(default_term_months, true) : LongStopRepDate;
    DebtServiceSchedule& debt_service = loan_schedules().debt_service;
    const Payments schedule = debt_service.build(
        here, {rates, service, AnnDebtServiceRates, advances, LongStop, DayCountInt, PrdsInt, in_cash},
        Time.to().plusmonths(months_beyond_period, true));
    return here.returning(plain_loan(Time, rates, schedule, LongStop, LoanOutput, {DayCountInt, PrdsInt, ProjMode},
                                     [&] { return debt_service.sums(); }));
}

double MortgageQ(const timeperiod& Time, double InterestSimple, const Payment& advance, const date& RepaymentDate,
                 const date& EarlyRepDate, int LoanOutput, const Basis& basis) {
    Routine here{"MortgageQ"};
    here.inputs(Time, InterestSimple, advance, RepaymentDate, EarlyRepDate, LoanOutput, basis);
    check_rate(here, InterestSimple, "InterestSimple");
    if (!opens(here, Time, LoanOutput, basis)) return here.returning(0.0);
    const double service =
        loan_schedules().level_service.of(advance, RepaymentDate, InterestSimple, {basis.DayCount, basis.Periods});
    here.info("Annual debt service=", service);
    const View<date> day = View<date>::of(advance.PmtDate);
    const bool early = !EarlyRepDate.iszero() && EarlyRepDate < RepaymentDate;
    return here.returning(Mortgage(Time, {day, View<double>::of(InterestSimple)}, {DateCrit, day},
                                   View<double>::of(service), {day, View<double>::of(advance.Pmt)},
                                   early ? EarlyRepDate : RepaymentDate, LoanOutput, basis.DayCount, basis.DayCount,
                                   basis.Periods, basis.Periods, basis.ProjMode));
}

std::string DescribeLoanOutput(int LoanOutput) {
    Routine here{"DescribeLoanOutput"};
    here.inputs(LoanOutput);
    const char* const text = SwitchTable(loan_output_values).words(LoanOutput, nullptr);
    return here.returning(text != nullptr ? std::string(text) : text_of("Illegal switch(", LoanOutput, ")"));
}

} // namespace qx
