// Dates and periods as the tests show them.
#pragma once

#include "calendar/time_period.h"

#include <ostream>

namespace qx {

inline void PrintTo(const date& day, std::ostream* out) { *out << describe(day) << " (" << day.dtn() << ")"; }
inline void PrintTo(const timeperiod& period, std::ostream* out) { *out << describe(period); }

} // namespace qx
