// What the rate, annuity and cash flow routines share: checks of rates and frequencies, and compound growth.
#pragma once

#include "calendar/date_arithmetic.h"
#include "calendar/day_count.h"
#include "core/routine.h"

#include <cmath>

namespace qx {

inline constexpr double lowest_rate = -0.999999; ///< rates at or below it are refused
inline constexpr double most_payments = 1e6;     ///< a year, in advance or in arrears

inline void check_rate(Routine& here, double rate, const char* variable) {
    if (rate <= lowest_rate) here.fail<errlibmin>(variable);
}
inline void check_daycount(Routine& here, double DayCount, const char* variable = "DayCount") {
    here.limit(DayCount, 0, 999, variable);
}
/// The payments per year, 0 read as -1: annually in arrears.
inline double check_frequency(Routine& here, double PmtsPerYear, const char* variable = "PmtsPerYear") {
    here.limit(PmtsPerYear, -most_payments, most_payments, variable);
    return iszero(PmtsPerYear) ? -1.0 : PmtsPerYear;
}

/// 1 / x, and 0 for zero.
inline double reciprocal(double x) { return safe_divide(1.0, x); }

/// (1 + rate)^exponent - 1, with the special cases of SafePow, and with all digits where the rate is small.
inline double compound_less_one(double rate, double exponent) {
    if (iszero(exponent) || iszero(rate)) return 0.0;
    if (rate <= -1.0 + tolerance) return SafePow(1.0 + rate, exponent) - 1.0;
    return std::expm1(exponent * std::log1p(rate));
}

/// Years from one date to another under a day count, negative if they run backward.
inline double years_between(const date& from, const date& to, double DayCount, const AnnualSequence& Periods) {
    return diffmonths(from, to, DayCount, Periods, true, false) / 12.0;
}

} // namespace qx
