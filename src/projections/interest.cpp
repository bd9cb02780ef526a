#include "projections/interest.h"

#include "core/routine.h"
#include "projections/constant_rate.h"
#include "projections/payments.h"
#include "projections/stepped_rate.h"

#include <algorithm>

namespace qx {

namespace {

/// The first step that holds on a date or later, 1 to n: where a walk over the steps of a period begins.
inline int first_step(const View<date>& FromDates, bool ascending, const date& from) {
    if (!ascending || FromDates.size() < 2) return 1;
    return static_cast<int>(std::lower_bound(FromDates.begin() + 1, FromDates.end(), from) - FromDates.begin());
}

/// True if two balances are both owed or both lent.
bool same_side(double a, double b) { return (a > 0.0 && b > 0.0) || (a < 0.0 && b < 0.0); }

void warn_of_advance(const Routine& here, const AnnualSequence& PrdsInt) {
    if (!PrdsInt.arrears()) here.warning("Warning: Your PrdsInt is in advance.  Interest is usually paid in arrears.");
}

} // namespace

Accrual::Accrual(View<date> FromDatesInt, View<double> IntSimple, double DayCount, const AnnualSequence& PrdsInt)
    : FromDatesInt_(FromDatesInt), IntSimple_(IntSimple), DayCount_(DayCount), PrdsInt_(PrdsInt),
      ascending_(std::is_sorted(FromDatesInt.begin(), FromDatesInt.end())) {}

double Accrual::average(const Routine& here, const Life& span, const Life& life, bool goes_on, int first) const {
    const int n = FromDatesInt_.size();
    const auto months = [&](const date& from, const date& to) {
        return timeperiod::lenmonths(from, to, life.Start, life.Finish, DayCount_, PrdsInt_, goes_on);
    };
    double of_rates = 0.0, of_time = 0.0;
    for (int i = first; i <= n && FromDatesInt_.get(i) <= span.Finish; ++i) {
        const date& from = std::max(FromDatesInt_.get(i), span.Start);
        const date& to = i < n ? std::min(FromDatesInt_.get(i + 1), span.Finish) : span.Finish;
        const double rate = IntSimple_.single_or(i);
        const double held = months(from, to);
        const bool starts_late = i == 1 && span.Start < from; // the time before counts, at a rate of 0
        of_rates += rate * held / 12.0;
        of_time += (starts_late ? months(span.Start, to) : held) / 12.0;
        here.info(rate, " from ", from, " to ", to, ": ", held, " months");
    }
    return safe_divide(of_rates, of_time);
}

double Accrual::rate(const Life& span, const Life& life, bool goes_on) const {
    Routine here{"AverageRate", Routine::internal};
    here.arguments(QX_NAMED(span));
    const int n = FromDatesInt_.size();
    const int first = first_step(FromDatesInt_, ascending_, span.Start);
    if (ascending_ && first <= n && FromDatesInt_.get(first) <= span.Start &&
        (first == n || FromDatesInt_.get(first + 1) >= span.Finish))
        return here.returning(double{IntSimple_.single_or(first)}); // one rate holds throughout
    return here.returning(average(here, span, life, goes_on, first));
}

double Accrual::interest(const Life& span, const Life& life, double Balance, double AddMargin, bool goes_on) const {
    if (IntSimple_.size() == 0) return 0.0;
    const double average = rate(span, life, goes_on) + AddMargin;
    return ConX(span, life, -Balance * average, Measure{DayCount_, PrdsInt_}, goes_on);
}

bool find_interest_span(const Routine& here, timeperiod& period, const Life& life, const AnnualSequence& PrdsInt,
                        double ProjMode, bool unlimited) {
    if (iscash(ProjMode)) {
        static const date no_start;
        period = unlimited ? CashTime(period, PrdsInt, no_start, DateCrit, true, ProjMode)
                           : CashTime(period, PrdsInt, life.Start, life.Finish, true, ProjMode);
    }
    if (period.from() <= life.Finish && period.to() >= life.Start) return true;
    here.info("Timeperiod(", period, ") falls outside Start(", life.Start, ") and Finish(", life.Finish,
              ") dates, returning zero.");
    return false;
}

SteppedBalances::SteppedBalances(const date& Finish, const View<date>& FromDates, const View<double>& Balances)
    : SteppedBalances(Finish, FromDates, Balances, std::is_sorted(FromDates.begin(), FromDates.end())) {}

double SteppedBalances::interest(const timeperiod& period, const Accrual& accrual, double AddMargin) const {
    Routine here{"InterestOnBalances", Routine::internal};
    const int n = FromDates_.size();
    double sum = 0.0;
    for (int i = first_step(FromDates_, ascending_, period.from()); i <= n && FromDates_.get(i) < period.to(); ++i) {
        const bool followed = i < n && FromDates_.get(i + 1) < Finish_;
        const Life life{FromDates_.get(i), followed ? FromDates_.get(i + 1) : Finish_};
        const Life span = life.within(period.from(), period.to());
        if (span.Finish <= span.Start) continue;
        const TraceBlock pass = here.pass(i, "Balance of ", Balances_.get(i), " in ", span);
        const bool goes_on = followed && same_side(Balances_.get(i), Balances_.get(i + 1));
        sum += accrual.interest(span, life, Balances_.get(i), AddMargin, goes_on);
    }
    return here.returning(sum);
}

double Interest(const timeperiod& Time, double InterestSimple, const date& Start, const date& Finish, double Balance,
                double DayCount, const AnnualSequence& PrdsInt, double ProjMode) {
    Routine here{"Interest"};
    here.inputs(Time, InterestSimple, Start, Finish, Balance, DayCount, PrdsInt, ProjMode);
    Basis{DayCount, PrdsInt, ProjMode}.check(here);
    warn_of_advance(here, PrdsInt);
    return here.returning(ConX(Time, {Start, Finish}, -Balance * InterestSimple, {DayCount, PrdsInt, ProjMode}, false));
}

double InterestXX(const timeperiod& Time, View<date> FromDatesInt, View<double> IntSimple, const date& Start,
                  const date& Finish, double Balance, double AddMargin, double DayCount, const AnnualSequence& PrdsInt,
                  double ProjMode) {
    return FInterestM(Time, FromDatesInt, IntSimple, Finish, View<date>::of(Start), View<double>::of(Balance), {}, {},
                      AddMargin, 0, DayCount, PrdsInt, ProjMode);
}

double InterestX(const timeperiod& Time, View<date> FromDatesInt, View<double> IntSimple, const date& Start,
                 const date& Finish, double Balance, double DayCount, const AnnualSequence& PrdsInt, double ProjMode) {
    Routine here{"InterestX"};
    here.inputs(Time, FromDatesInt, IntSimple, Start, Finish, Balance, DayCount, PrdsInt, ProjMode);
    return here.returning(
        InterestXX(Time, FromDatesInt, IntSimple, Start, Finish, Balance, 0.0, DayCount, PrdsInt, ProjMode));
}

double FInterest(const timeperiod& Time, View<date> FromDatesInt, View<double> IntSimple, const date& Finish,
                 View<date> FromDates, View<double> Balances, double DayCount, const AnnualSequence& PrdsInt,
                 double ProjMode) {
    Routine here{"FInterest"};
    here.inputs(Time, FromDatesInt, IntSimple, Finish, FromDates, Balances, DayCount, PrdsInt, ProjMode);
    return here.returning(FInterestM(Time, FromDatesInt, IntSimple, Finish, FromDates, Balances, {}, {}, 0.0, 0,
                                     DayCount, PrdsInt, ProjMode));
}

double TInterest(const timeperiod& Time, View<date> FromDatesInt, View<double> IntSimple, const date& Start,
                 View<date> ToDates, View<double> Balances, double DayCount, const AnnualSequence& PrdsInt,
                 double ProjMode) {
    Routine here{"TInterest"};
    here.inputs(Time, FromDatesInt, IntSimple, Start, ToDates, Balances, DayCount, PrdsInt, ProjMode);
    Basis{DayCount, PrdsInt, ProjMode}.check(here);
    const int n = ToDates.size();
    if (n == 0) return here.returning(0.0);
    // A balance holds from the to-date before its own, and none from before Start.
    WorkList<date> from_dates;
    from_dates->dimension(n);
    for (int i = 1; i <= n; ++i) from_dates(i) = i == 1 ? Start : std::max(ToDates.get(i - 1), Start);
    return here.returning(FInterest(Time, FromDatesInt, IntSimple, std::max(ToDates.get(n), Start), from_dates,
                                    Balances, DayCount, PrdsInt, ProjMode));
}

double TotInterestSF(const date& Start, const date& Finish, View<date> FromDatesInt, View<double> IntSimple,
                     View<date> FromDates, View<double> Balances, double DayCount, const AnnualSequence& PrdsInt) {
    Routine here{"TotInterestSF"};
    here.inputs(Start, Finish, FromDatesInt, IntSimple, FromDates, Balances, DayCount, PrdsInt);
    return here.returning(FInterest(timeperiod(Start, Finish), FromDatesInt, IntSimple, Finish, FromDates, Balances,
                                    DayCount, PrdsInt, 0.0));
}

double FInterestM(const timeperiod& Time, View<date> FromDatesInt, View<double> IntSimple, const date& Finish,
                  View<date> FromDates, View<double> Balances, View<date> IntOverRideDates, View<double> IntOverRide,
                  double AddMargin, int Options, double DayCount, const AnnualSequence& PrdsInt, double ProjMode) {
    Routine here{"FInterestM", Routine::internal};
    here.arguments(QX_NAMED(Time, FromDatesInt, IntSimple, Finish, FromDates, Balances, IntOverRideDates, IntOverRide,
                            AddMargin, Options, DayCount, PrdsInt, ProjMode));
    Basis{DayCount, PrdsInt, ProjMode}.check(here);
    const int n = FromDates.size();
    if (IntSimple.size() == 0 || n == 0) return here.returning(0.0);
    warn_of_advance(here, PrdsInt);
    if (Time.to() < Time.from()) {
        here.info("End of timeperiod (", Time.to(), ") less than start (", Time.from(), "), returning 0");
        return here.returning(0.0);
    }

    if ((Options & ignore_overrides) == 0 && IntOverRideDates.size() > 0 && Time.from() >= IntOverRideDates.get(1) &&
        Time.to() <= IntOverRideDates.last()) {
        const double override_amount = MkPmts(Time, {IntOverRideDates, IntOverRide});
        if ((Options & zero_is_no_override) == 0 || !iszero(override_amount)) {
            here.info("Applying Interest OverRide of ", override_amount, " at timeperiod ", Time);
            return here.returning(override_amount);
        }
    }

    timeperiod period = Time;
    if (!find_interest_span(here, period, {FromDates.get(1), Finish}, PrdsInt, ProjMode,
                            (Options & unlimited_cash) != 0))
        return here.returning(0.0);

    const Accrual accrual(FromDatesInt, IntSimple, DayCount, PrdsInt);
    return here.returning(SteppedBalances(Finish, FromDates, Balances).interest(period, accrual, AddMargin));
}

} // namespace qx
