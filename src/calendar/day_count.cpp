#include "calendar/day_count.h"

#include "calendar/holidays.h"
#include "core/routine.h"

#include <algorithm>
#include <cmath>

namespace qx {

namespace {

const char* code_text(int code) {
    return SwitchTable(day_count_values).words(code, "Default: Actual Days/Actual Days In Month ('Decimal Year')");
}

bool february_end(const date& day) { return day.month() == 2 && day.ismonthend(); }

/// How a 30/360 rule treats month ends beside its day 31.
enum class Rule { psa, isda, european, february, month_end };

int days_30_360(const date& from, const date& to, Rule rule) {
    int d1 = from.day();
    int d2 = to.day();
    if (rule == Rule::european) {
        d1 = std::min(d1, 30);
        d2 = std::min(d2, 30);
    } else {
        const bool february = rule != Rule::isda && february_end(from);
        if ((rule == Rule::february && february_end(to)) || (rule == Rule::month_end && february && february_end(to)))
            d2 = 30;
        if (february || d1 == 31) d1 = 30;
        if (d2 == 31 && d1 == 30) d2 = 30;
    }
    return 360 * (to.year() - from.year()) + 30 * (to.month() - from.month()) + d2 - d1;
}

/// The days but for the 29 Februaries up to the 1 March on or before each date.
int days_without_leap_days(const date& from, const date& to) {
    if (!from.isregular() || !to.isregular()) {
        const date first = from.prevanniversary(3, 1, false), last = to.prevanniversary(3, 1, false);
        return days_between(from, to) - (days_between(first, last) - 365 * (last.year() - first.year()));
    }
    const auto leap_days = [](const date& day) {
        const auto year = static_cast<unsigned>(day.month() > 2 ? day.year() : day.year() - 1);
        const unsigned centuries = year / 100;
        return static_cast<int>(year / 4 - centuries + centuries / 4);
    };
    return days_between(from, to) - (leap_days(to) - leap_days(from));
}

double actual_years(const date& day) { return 12.0 * day.dayofyear() / day.daysinyear(); }

double of_year(int days, double year) { return days * 12.0 / year; }

template <class... Pieces>
[[noreturn]] void bad_daycount(const Pieces&... pieces) {
    FunctionContext context("", "DayCount");
    if (tracing) context.setmessage(text_of(pieces...));
    throw errrbaddaycount(context);
}

} // namespace

DayCountCodes DayCountCodes::split(double DayCount) {
    if (DayCount >= 20.0) {
        const int n = whole(DayCount + 0.00005);
        if (n >= 1000) bad_daycount("The daycount ", n, " has more than three digits");
        if (n >= 100) return {n / 100, n / 10 % 10, n % 10};
        return {n / 10, n % 10, n % 10};
    }
    const int n = whole((DayCount + 0.00005) * 10000.0);
    DayCountCodes codes{n / 10000, n / 100 % 100, n % 100};
    if (codes.core > 20 || codes.start_stub > 20 || codes.end_stub > 20)
        bad_daycount("Can't have an individual (single) daycount greater than 20 in the new daycount convention(",
                     codes.start_stub, ",", codes.end_stub, ",", codes.core, ")");
    if (codes.start_stub == 0 && codes.end_stub == 0)
        codes.start_stub = codes.end_stub = codes.core;
    else if (codes.end_stub == 0)
        codes.end_stub = codes.start_stub;
    return codes;
}

bool DayCountCodes::composite(double DayCount) const {
    return core != start_stub || core != end_stub || core == 6 || DayCount >= 20.0;
}

double DayCountCodes::written(int core, int start_stub, int end_stub) {
    if (core == start_stub && core == end_stub) return core;
    if (end_stub == 0 && start_stub != 0) end_stub = 7; // 00 would read as the start stub's code; code 7 is code 0
    return core + start_stub / 100.0 + end_stub / 10000.0;
}

int daycountdays(const date& date1, const date& date2, double DayCount) {
    switch (whole(DayCount)) {
    case 0:
    case 7:
    case 9:
        return days_30_360(date1, date2, Rule::psa);
    case 4:
        return days_30_360(date1, date2, Rule::european);
    case 8:
        return days_without_leap_days(date1, date2);
    case 10:
        return days_30_360(date1, date2, Rule::isda);
    case 11:
        return days_30_360(date1, date2, Rule::february);
    case 12:
        return days_30_360(date1, date2, Rule::month_end);
    case 13:
        return diffbusdays(date1, date2, 1);
    default:
        if (traced())
            trace().info("For any DayCount other than 30/360, A(NL)/365 or 30E/360, DiffD is just the difference in "
                         "days between the dates.");
        return days_between(date1, date2);
    }
}

double daycountmonths(const date& from, const date& to, int code) {
    switch (code) {
    case 0:
    case 7:
        return of_year(days_30_360(from, to, Rule::psa), 360.0);
    case 1:
        return 12.0 * (to.year() - from.year()) + actual_years(to) - actual_years(from);
    case 2:
        return of_year(days_between(from, to), 360.0);
    case 3:
        return of_year(days_between(from, to), 365.0);
    case 4:
        return of_year(days_30_360(from, to, Rule::european), 360.0);
    case 6: {
        FunctionContext context("lenmonthsbasic", "DayCount");
        context.setmessage("Error, ACT/ACT (in period) daycount found in the basic daycount calculation");
        throw errlibillegaldaycount(context);
    }
    case 8:
        return of_year(days_without_leap_days(from, to), 365.0);
    case 9:
        return of_year(days_30_360(from, to, Rule::february), 365.0);
    case 10:
        return of_year(days_30_360(from, to, Rule::isda), 360.0);
    case 11:
        return of_year(days_30_360(from, to, Rule::february), 360.0);
    case 12:
        return of_year(days_30_360(from, to, Rule::month_end), 360.0);
    case 13:
        return of_year(diffbusdays(from, to, 500), 252.0);
    default:
        return to.months() - from.months();
    }
}

std::string daycount_text(double DayCount) {
    const DayCountCodes codes = DayCountCodes::of(DayCount);
    const bool alike = codes.core == codes.start_stub && codes.core == codes.end_stub;
    if (alike && DayCount < 20.0) return code_text(codes.core);
    std::string text = std::string("Main Period:") + code_text(codes.core);
    if (codes.start_stub == codes.end_stub) return text + "Stub Periods:" + code_text(codes.start_stub);
    return text + "Stub Periods 1:" + code_text(codes.start_stub) + ", Stub Periods 2:" + code_text(codes.end_stub);
}

} // namespace qx
