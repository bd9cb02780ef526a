#include "projections/interest.h"

#include "core/routine.h"
#include "projections/constant_rate.h"
#include "projections/levels.h"
#include "projections/payments.h"

#include <algorithm>

namespace qx {

namespace {

/// Dated rates and how interest accrues.
struct Accrual {
    const Range<date>& FromDatesInt;
    const Range<double>& IntSimple;
    double AddMargin;
    double DayCount;
    const AnnualSequence& PrdsInt;

    /// The interest in a span on a balance that lives from start to end. `goes_on`: another one of its sign follows.
    double on(const timeperiod& span, const date& start, const date& end, double Balance, bool goes_on) const {
        const double rate = FALevels(span, end, FromDatesInt, IntSimple, level_average, DayCount, PrdsInt) + AddMargin;
        return ConX(span, {start, end}, -Balance * rate, {DayCount, PrdsInt, 0.0}, goes_on);
    }
};

/// True if two balances are both owed or both lent.
bool same_side(double a, double b) { return (a > 0.0 && b > 0.0) || (a < 0.0 && b < 0.0); }

void warn_of_advance(const Routine& here, const AnnualSequence& PrdsInt) {
    if (!PrdsInt.arrears()) here.warning("Warning: Your PrdsInt is in advance.  Interest is usually paid in arrears.");
}

const Range<date>& no_dates() {
    static const Range<date> none;
    return none;
}
const Range<double>& no_amounts() {
    static const Range<double> none;
    return none;
}

/// A list of one.
template <class T>
const Range<T>& single(const T& value) {
    static Range<T> list;
    list.dimension(1);
    list(1) = value;
    return list;
}

} // namespace

double Interest(const timeperiod& Time, double InterestSimple, const date& Start, const date& Finish, double Balance,
                double DayCount, const AnnualSequence& PrdsInt, double ProjMode) {
    Routine here{"Interest"};
    here.arguments(QX_NAMED(Time, InterestSimple, Start, Finish, Balance, DayCount, PrdsInt, ProjMode));
    Basis{DayCount, PrdsInt, ProjMode}.check(here);
    warn_of_advance(here, PrdsInt);
    return here.returning(ConX(Time, {Start, Finish}, -Balance * InterestSimple, {DayCount, PrdsInt, ProjMode}, false));
}

double InterestXX(const timeperiod& Time, const Range<date>& FromDatesInt, const Range<double>& IntSimple,
                  const date& Start, const date& Finish, double Balance, double AddMargin, double DayCount,
                  const AnnualSequence& PrdsInt, double ProjMode) {
    return FInterestM(Time, FromDatesInt, IntSimple, Finish, single(Start), single(Balance), no_dates(), no_amounts(),
                      AddMargin, 0, DayCount, PrdsInt, ProjMode);
}

double InterestX(const timeperiod& Time, const Range<date>& FromDatesInt, const Range<double>& IntSimple,
                 const date& Start, const date& Finish, double Balance, double DayCount, const AnnualSequence& PrdsInt,
                 double ProjMode) {
    Routine here{"InterestX"};
    here.arguments(QX_NAMED(Time, FromDatesInt, IntSimple, Start, Finish, Balance, DayCount, PrdsInt, ProjMode));
    return here.returning(
        InterestXX(Time, FromDatesInt, IntSimple, Start, Finish, Balance, 0.0, DayCount, PrdsInt, ProjMode));
}

double FInterest(const timeperiod& Time, const Range<date>& FromDatesInt, const Range<double>& IntSimple,
                 const date& Finish, const Range<date>& FromDates, const Range<double>& Balances, double DayCount,
                 const AnnualSequence& PrdsInt, double ProjMode) {
    Routine here{"FInterest"};
    here.arguments(QX_NAMED(Time, FromDatesInt, IntSimple, Finish, FromDates, Balances, DayCount, PrdsInt, ProjMode));
    return here.returning(FInterestM(Time, FromDatesInt, IntSimple, Finish, FromDates, Balances, no_dates(),
                                     no_amounts(), 0.0, 0, DayCount, PrdsInt, ProjMode));
}

double TInterest(const timeperiod& Time, const Range<date>& FromDatesInt, const Range<double>& IntSimple,
                 const date& Start, const Range<date>& ToDates, const Range<double>& Balances, double DayCount,
                 const AnnualSequence& PrdsInt, double ProjMode) {
    Routine here{"TInterest"};
    here.arguments(QX_NAMED(Time, FromDatesInt, IntSimple, Start, ToDates, Balances, DayCount, PrdsInt, ProjMode));
    Basis{DayCount, PrdsInt, ProjMode}.check(here);
    const int n = ToDates.size();
    if (n == 0) return here.returning(0.0);
    // A balance holds from the to-date before its own, and none from before Start.
    static Range<date> from_dates;
    from_dates.dimension(n);
    for (int i = 1; i <= n; ++i) from_dates(i) = i == 1 ? Start : std::max(ToDates.get(i - 1), Start);
    return here.returning(FInterest(Time, FromDatesInt, IntSimple, std::max(ToDates.get(n), Start), from_dates,
                                    Balances, DayCount, PrdsInt, ProjMode));
}

double TotInterestSF(const date& Start, const date& Finish, const Range<date>& FromDatesInt,
                     const Range<double>& IntSimple, const Range<date>& FromDates, const Range<double>& Balances,
                     double DayCount, const AnnualSequence& PrdsInt) {
    Routine here{"TotInterestSF"};
    here.arguments(QX_NAMED(Start, Finish, FromDatesInt, IntSimple, FromDates, Balances, DayCount, PrdsInt));
    return here.returning(FInterest(timeperiod(Start, Finish), FromDatesInt, IntSimple, Finish, FromDates, Balances,
                                    DayCount, PrdsInt, 0.0));
}

double FInterestM(const timeperiod& Time, const Range<date>& FromDatesInt, const Range<double>& IntSimple,
                  const date& Finish, const Range<date>& FromDates, const Range<double>& Balances,
                  const Range<date>& IntOverRideDates, const Range<double>& IntOverRide, double AddMargin, int Options,
                  double DayCount, const AnnualSequence& PrdsInt, double ProjMode) {
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
        const double override_amount = MkPmts(Time, IntOverRideDates, IntOverRide);
        if ((Options & zero_is_no_override) == 0 || !iszero(override_amount)) {
            here.info("Applying Interest OverRide of ", override_amount, " at timeperiod ", Time);
            return here.returning(override_amount);
        }
    }

    const date& first = FromDates.get(1);
    timeperiod period = Time;
    if (iscash(ProjMode)) {
        static const date no_start;
        period = (Options & unlimited_cash) != 0 ? CashTime(Time, PrdsInt, no_start, DateCrit, true, ProjMode)
                                                 : CashTime(Time, PrdsInt, first, Finish, true, ProjMode);
    }
    if (period.from() > Finish || period.to() < first) {
        here.info("Timeperiod(", period, ") falls outside Start(", first, ") and Finish(", Finish,
                  ") dates, returning zero.");
        return here.returning(0.0);
    }

    const Accrual accrual{FromDatesInt, IntSimple, AddMargin, DayCount, PrdsInt};
    double sum = 0.0;
    for (int i = 1; i <= n && FromDates.get(i) <= period.to(); ++i) {
        const date& start = FromDates.get(i);
        const bool followed = i < n && FromDates.get(i + 1) < Finish;
        const date& end = followed ? FromDates.get(i + 1) : Finish;
        timeperiod span(start, end);
        span.intersect(period);
        if (span.to() <= span.from()) continue;
        const TraceBlock pass = here.pass(i, "Balance of ", Balances.get(i), " in ", span);
        sum +=
            accrual.on(span, start, end, Balances.get(i), followed && same_side(Balances.get(i), Balances.get(i + 1)));
    }
    return here.returning(sum);
}

} // namespace qx
