#include "accounting/years_later.h"

#include "calendar/date_arithmetic.h"

#include <cmath>

namespace qx {

date years_later(const Routine& here, const date& from, double years, const Measure& measure) {
    if (std::isnan(years)) here.fail<errlibnovalidanswer>("", "No date follows from the figures given");
    if (years >= DateCrit.decimal_year() - from.decimal_year()) return DateCrit;
    if (years <= date().decimal_year() - from.decimal_year()) return from;
    return plusmonths(from, years * 12.0, measure.DayCount, measure.Periods);
}

} // namespace qx
