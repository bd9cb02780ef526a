// Day counts: two dates to a number of days or of months.
//
// Every length of time is in months, 12 to the year, so that years of different conventions compare. A DayCount is
// one code, or a composite of a code for the whole periods (the core) and one each for the stubs at the start and at
// the end: 2.03 is core 2 with stubs 3, 1.0306 core 1 with a start stub 3 and an end stub 6. The older form of a
// composite is an integer of three digits (core, start, end) or two (core, both stubs) from 20 up.
//
// | code | convention                    | also known as                                      |
// |    0 | 30/360 (PSA)                  | 30/360 SIA without the rule for the second February |
// |    1 | Actual/Actual (365 or 366)    | each part by the length of its own calendar year   |
// |    2 | Actual/360                    | money market, French                               |
// |    3 | Actual/365                    | Actual/365 Fixed, English                          |
// |    4 | 30/360 (European)             | 30E/360, Eurobond                                  |
// |    5 | Actual/Actual days in month   | "decimal year"; the general default                |
// |    6 | Actual/Actual (within period) | each period of the sequence counts alike           |
// |    7 | as 0                          |                                                    |
// |    8 | Actual (no leap days)/365     | NL/365                                             |
// |    9 | 30/365                        |                                                    |
// |   10 | 30/360 (ISDA)                 | bond basis, 30A/360                                |
// |   11 | 30/360 (February adjusted)    |                                                    |
// |   12 | 30/360 (month ends)           | 30/360 US                                          |
// |   13 | Business days/252             | the Brazilian year                                 |
#pragma once

#include "calendar/date.h"
#include "core/switches.h"
#include "core/utilities.h"

#include <string>

namespace qx {

inline constexpr double default_daycount = 5.0;

/// The codes of a DayCount.
inline constexpr SwitchValue day_count_values[] = {
    {0, "30/360 PSA", "30/360 (PSA)"},
    {1, "ACT/ACT", "Actual/Actual (365 or 366)"},
    {2, "ACT/360", "Actual Days/360"},
    {3, "ACT/365", "Actual Days/365"},
    {4, "30E/360", "30/360 (European)"},
    {5, "Decimal Year (ACTM/12)", "Actual Days/Actual Days In Month ('Decimal Year')"},
    {6, "ACT/ACT in period", "Actual/Actual (Within Period)"},
    {7, "30/360 PSA", "30/360 (PSA)"},
    {8, "ACT NonLeap/365", "Actual Days (NL)/365"},
    {9, "30/365"},
    {10, "30/360 ISDA", "30/360 (ISDA)"},
    {11, "30/360 ISDA+FebAdj", "30/360 (Feb Adj)"},
    {12, "30/360 ISDA+FebAdj+EOMAdj\t", "30/360 (ISDA EOM)"},
    {13, nullptr, "Actual Days/252"},
};

/// The three codes of a DayCount.
struct DayCountCodes {
    int core, start_stub, end_stub;

    /// Splits a DayCount. Throws errrbaddaycount for a code above 20 and for an integer form of 1000 or more.
    static DayCountCodes of(double DayCount) {
        if (const int code = whole(DayCount); code == DayCount && code < 20) return {code, code, code};
        return split(DayCount);
    }
    /// True of one code that needs no periods, found without a split: of all but composite DayCounts.
    static bool single(double DayCount) {
        const int code = whole(DayCount);
        return code == DayCount && code < 20 && code != 6;
    }
    /// True if the stubs have codes of their own, or the core goes by the periods of a sequence.
    bool composite(double DayCount) const;

    /// The DayCount of a stretch with this start stub and no end stub of its own, and of one with this end stub only.
    double with_start() const { return written(core, start_stub, core); }
    double with_end() const { return written(core, core, end_stub); }

  private:
    static DayCountCodes split(double DayCount);
    static double written(int core, int start_stub, int end_stub);
};

/// Days from one date to another by the whole part of a DayCount: 30/360 under 0, 4, 7 and 9 to 12, without leap
/// days under 8, otherwise the actual days.
int daycountdays(const date& date1, const date& date2, double DayCount);
/// Months from one date to a later one by a single code. Throws errlibillegaldaycount for code 6.
double daycountmonths(const date& from, const date& to, int code);

/// A DayCount in words.
std::string daycount_text(double DayCount);

} // namespace qx
