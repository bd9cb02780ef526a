#include "projections/stepped_rate.h"

#include "core/routine.h"
#include "projections/constant_rate.h"

#include <algorithm>

namespace qx {

namespace {

/// True if step n has passed before a period, so that it adds nothing: what a long list is skipped by while nobody
/// reads of each step in the trace.
bool passed(const Range<date>& FromDates, int n, const timeperiod& period) {
    return n < FromDates.size() && FromDates.get(n + 1) < period.from() && !traced();
}

} // namespace

double FStep(const timeperiod& Time, const date& Finish, const Range<date>& FromDates, const Range<double>& AnnualRates,
             double DayCount, const AnnualSequence& Periods, double ProjMode) {
    Routine here{"FStep"};
    here.arguments(QX_NAMED(Time, Finish, FromDates, AnnualRates, DayCount, Periods, ProjMode));
    check_projection(here, DayCount, ProjMode);
    const int maxn = FromDates.size();
    timeperiod period = Time;
    if (maxn == 0 || !screen_period(here, period, FromDates.get(1), Finish, Periods, ProjMode))
        return here.returning(0.0);
    const DayCountCodes codes = DayCountCodes::of(DayCount);
    double sum = 0.0;
    for (int n = 1; n <= maxn && FromDates.get(n) <= period.to(); ++n) {
        const date& start = FromDates.get(n);
        const double rate = single_or(AnnualRates, n);
        if (passed(FromDates, n, period)) continue;
        const TraceBlock pass = here.pass(n, "From ", start, " at ", rate, " a year");
        if (n == maxn) {
            sum += ConX(period, start, Finish, rate, codes.with_end(), Periods, 0.0, false);
        } else {
            const date& end = std::min(FromDates.get(n + 1), Finish);
            const double stub_code = n == 1 ? codes.with_start() : codes.core;
            sum += ConX(period, start, end, rate, stub_code, Periods, 0.0, true);
        }
    }
    return here.returning(sum);
}

double FStepTime(const timeperiod& Time, const Range<date>& FromDates, double DayCount, const AnnualSequence& Periods,
                 double ProjMode) {
    Routine here{"FStepTime"};
    here.arguments(QX_NAMED(Time, FromDates, DayCount, Periods, ProjMode));
    check_projection(here, DayCount, ProjMode);
    const int maxn = FromDates.size();
    static const date no_start;
    timeperiod period = Time;
    if (maxn == 0 || !screen_period(here, period, no_start, DateCrit, Periods, ProjMode)) return here.returning(0.0);
    double sum = 0.0;
    for (int n = 1; n <= maxn && FromDates.get(n) <= period.to(); ++n) {
        if (passed(FromDates, n, period)) continue;
        const date& start = n == 1 ? no_start : FromDates.get(n);
        const date& end = n == maxn ? DateCrit : FromDates.get(n + 1);
        sum += ConX(period, start, end, 1.0, DayCount, Periods, 0.0, n < maxn);
    }
    return here.returning(sum);
}

} // namespace qx
