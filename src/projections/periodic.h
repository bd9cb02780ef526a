// What recurs every so many months: streams, spreads and payments.
#pragma once

#include "calendar/date_arithmetic.h"
#include "calendar/recurrence.h"
#include "calendar/time_period.h"
#include "core/routine.h"
#include "projections/constant_rate.h"
#include "projections/terms.h"

namespace qx {

/// No more repetitions than this are looked through from the first one on.
inline constexpr int most_repetitions = 100;

/// Calls `each` with the number and the start of each repetition that a period can hold something of: from First on,
/// every Periodicity months, as long as they start before AbsFinish and before the period's end. Month ends stay month
/// ends. Throws errlibmaxrevs at 100 repetitions.
template <class Each>
void each_repetition(const Routine& here, const timeperiod& Time, const date& First, const date& AbsFinish,
                     int Periodicity, Each each) {
    if (First >= Time.to() || Time.from() >= AbsFinish || First >= AbsFinish) {
        here.info("Start Date outside timeperiod or exceeds Absolute Finish, returning zero");
        return;
    }
    int n = 0;
    for (date start = First; n < most_repetitions && start < AbsFinish && start < Time.to();) {
        const TraceBlock pass = here.pass(++n, "Repetition from ", start);
        each(n, std::as_const(start));
        start = repeated(First, n, Periodicity);
    }
    if (n >= most_repetitions)
        here.fail<errlibmaxrevs>("Periodicity", "There are ", n, " repetitions or more up to ", Time.to());
}

/// The sum over the repetitions of something as long, under the day count, as its first life, by the next of some
/// amounts, of which the last one applies to the rest: `in_period` gives what a life with an amount has in the period.
template <class InPeriod>
double sum_repetitions(const Routine& here, const timeperiod& Time, const Life& life, const date& AbsFinish,
                       View<double> amounts, int Periodicity, const Basis& basis, InPeriod in_period) {
    if (!runs_forward(here, Time)) return 0.0;
    const double months = diffmonths(life.Start, life.Finish, basis.DayCount, basis.Periods);
    double sum = 0.0;
    each_repetition(here, Time, life.Start, AbsFinish, Periodicity, [&](int n, const date& start) {
        const date finish = n == 1 ? life.Finish : plusmonths(start, months, basis.DayCount, basis.Periods);
        sum += in_period(Life{start, finish}, amounts.entry(n));
    });
    return sum;
}

} // namespace qx
