#include "calendar/date_arithmetic.h"

#include "core/routine.h"

#include <algorithm>
#include <cmath>

namespace qx {

namespace {

constexpr int rounds = 100;                ///< at which an adjustment gives up
constexpr double exact_match = 0.00138889; ///< months; half a day of a 30-day month is 0.0167
constexpr double near_match = 0.05;

/// diffmonths by a DayCount with stubs or periods of a sequence; apart, since what it needs would slow the others.
[[gnu::noinline]] double diffmonths_composite(const date& date1, const date& date2, double DayCount,
                                              const AnnualSequence& Periods, bool AllowNeg, bool ComponentPart) {
    if (date1 > date2) return -diffmonths_composite(date2, date1, DayCount, Periods, false, ComponentPart);
    return timeperiod(date1, date2).lenmonths(date1, date2, DayCount, Periods, AllowNeg, ComponentPart);
}

} // namespace

double diffmonths(const date& date1, const date& date2, double DayCount, const AnnualSequence& Periods, bool AllowNeg,
                  bool ComponentPart) {
    if (date1 == date2 || (!AllowNeg && date1 > date2)) return 0.0;
    if (!DayCountCodes::single(DayCount))
        return diffmonths_composite(date1, date2, DayCount, Periods, AllowNeg, ComponentPart);
    const int code = whole(DayCount);
    // Actual days are the same either way round. For the others, which date is first is looked up and not branched on:
    // lists come in any order.
    if (code == 2) return days_between(date1, date2) * 12.0 / 360.0;
    if (code == 3) return days_between(date1, date2) * 12.0 / 365.0;
    const date* const dates[] = {&date1, &date2};
    constexpr double signs[] = {1.0, -1.0};
    const int backward = date1 > date2 ? 1 : 0;
    return signs[backward] * daycountmonths(*dates[backward], *dates[1 - backward], code);
}

date plusdays(const date& from, double days, double DayCount) {
    if (from.iszero()) return from;
    const double n = std::trunc(days);
    date day = from.plusdays(whole(n));
    AdjustToDayCountDays(day, n, from, DayCount);
    return day;
}

date plusmonths(const date& from, double months, double DayCount, const AnnualSequence& Periods) {
    if (from.iszero()) return from;
    date day = from.plusmonths(months);
    AdjustToDayCountMonths(day, months, from, DayCount, Periods);
    return day;
}

void AdjustToDayCountDays(date& day, double days, const date& date1, double DayCount) {
    Routine here{"AdjustToDayCountDays", Routine::internal};
    double error = days - daycountdays(date1, day, DayCount);
    if (iszero(error)) {
        here.info("Zero error, returning, this date=", day);
        return here.returning();
    }
    date trial = day;
    for (int round = 1;; ++round) {
        const TraceBlock pass = here.pass(round, "This date=", day, ", error=", error);
        if (round == rounds) here.fail<errliboveriterated>("days", "No date has ", days, " days from ", date1);
        trial.adddays(error > 1.0 || error < -1.0 ? whole(error) : error > 0.0 ? 1 : -1);
        const double trial_error = days - daycountdays(date1, trial, DayCount);
        if (iszero(trial_error)) {
            day = trial;
            here.info("This date assigned to new (error-free) date = ", day);
            break;
        }
        if (std::fabs(error) <= std::fabs(trial_error)) {
            here.info("Error increasing, go with what we have got =", day);
            break;
        }
        day = trial;
        error = trial_error;
    }
    here.returning();
}

void AdjustToDayCountMonths(date& day, double months, const date& date1, double DayCount,
                            const AnnualSequence& Periods) {
    Routine here{"AdjustToDayCountMonths", Routine::internal};
    date previous = day;
    double previous_error = 0.0;
    for (int round = 1;; ++round) {
        const TraceBlock pass = here.pass(round, "This date=", day);
        if (round == rounds) here.fail<errliboveriterated>("months", "No date is ", months, " months from ", date1);
        const double error = months - diffmonths(date1, day, DayCount, Periods);
        const double size = std::fabs(error), previous_size = std::fabs(previous_error);
        if (size <= exact_match) break;
        if (round > 1) {
            const bool opposite = error * previous_error < 0.0;
            if (std::fabs(size - previous_size) <= exact_match && opposite && size <= near_match &&
                previous_size <= near_match) {
                here.info("The target lies between ", previous, " and ", day);
                if (previous.day() == date1.day())
                    day = previous;
                else if (day.day() != date1.day())
                    day = std::min(previous, day);
                break;
            }
            if (!(size < previous_size)) {
                day = previous;
                break;
            }
        }
        previous = day;
        previous_error = error;
        day.adddays(error > 0.0 ? 1 : -1);
    }
    here.returning();
}

date midpoint(const date& date1, const date& date2, double DayCount, const AnnualSequence& Periods) {
    const date& earlier = std::min(date1, date2);
    const date& later = std::max(date1, date2);
    return plusmonths(earlier, diffmonths(earlier, later, DayCount, Periods) / 2.0, DayCount, Periods);
}

double ChooseRightDC(double DCCore, double DCStart, double DCFinish, const date& Start, const date& Finish,
                     const timeperiod& ThisTimePeriod) {
    Routine here{"ChooseRightDC", Routine::internal};
    if (ThisTimePeriod.contains(Start)) {
        here.info("The timeperiod contains the start date");
        return here.returning(DCStart);
    }
    if (ThisTimePeriod.contains(Finish)) {
        here.info("The timeperiod contains the finish date");
        return here.returning(DCFinish);
    }
    here.info("The timeperiod contains neither the start date nor the finish date");
    return here.returning(DCCore);
}

double ChooseRightDC(double DayCount, const date& Start, const date& Finish, const timeperiod& ThisTimePeriod) {
    const DayCountCodes codes = DayCountCodes::of(DayCount);
    return ChooseRightDC(codes.core, codes.with_start(), codes.with_end(), Start, Finish, ThisTimePeriod);
}

timeperiod timebase_period(View<date> timebase, int i) {
    static const AnnualSequence quarters(4);
    timeperiod period;
    period.setfromtimebase(timebase, i);
    if (i != timebase.size() || i < 2) return period;
    const double months = diffmonths(timebase.get(i - 1), period.from(), default_daycount, quarters, false);
    period.setto(plusmonths(period.from(), months, default_daycount, quarters));
    return period;
}

} // namespace qx
