// Worksheet functions of one date: what they return of it is described in date.h.
#pragma once

#include "calendar/date.h"

#include <string>

namespace qx {

/// Days in the date's month, 28 to 31.
int DaysInMonth(const date& TheDate);
/// The first and the last day of the date's month.
date MonthStart(const date& TheDate);
date MonthEnd(const date& TheDate);
/// True if the date's year has a 29 February.
bool IsLeap(const date& TheDate);
/// The date as a decimal year, and as a decimal count of months.
double DYear(const date& TheDate);
double DMonth(const date& TheDate);
/// The date itself: shows a number or a decimal year as a date number.
date DateNum(const date& TheDate);
/// "Sunday" to "Saturday", and "Jan" to "Dec".
std::string DayName(const date& TheDate);
std::string MonthName(const date& TheDate);
/// Month and day as the mm.dd figure of an annual sequence: 3.25 for 25 March.
double DateSeqNum(const date& TheDate);
/// The date of a year (1000 to 3000), month (1 to 12) and day (1 to 31). Throws errlibmin or errlibmax
/// outside these and errlibconstructorerror for a day past its month's end.
date DateYMD(int Yr, int Mnth, int Day);

} // namespace qx
