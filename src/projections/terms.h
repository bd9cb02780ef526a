// The terms of a projection: what travels together in its arguments. Each is one type that takes its cells, so that a
// signature reads as the sentence that describes it:
//
//     double ConGrow(const timeperiod& Time, const Life& life, double AnnualRate, const Growth& growth,
//                    int RevMonthsOpt, const Basis& basis);
//
// Lists are views; dates and sequences are references that last as long as the call. The words of their arguments are
// in addin/arguments.h.
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"
#include "calendar/day_count.h"
#include "calendar/time_period.h"
#include "core/limits.h"
#include "core/pools.h"
#include "core/routine.h"
#include "core/takes.h"

#include <algorithm>

namespace qx {

/// The dates between which a stream runs: from Start (counted) to Finish (not counted).
struct Life {
    using takes = Takes<date, date>;
    const date& Start;
    const date& Finish;

    /// The part of it between two other dates.
    Life within(const date& from, const date& to) const { return {std::max(Start, from), std::min(Finish, to)}; }
};
/// As a period: "1Jan2005 to 1Apr2005".
std::string describe(const Life& life);

struct Measure;

/// How time is measured and when money counts: as it accrues or when it is paid.
struct Basis {
    using takes = Takes<double, AnnualSequence, double>;
    double DayCount; ///< 0 to 999
    const AnnualSequence& Periods;
    double ProjMode; ///< 0 to 7

    bool cash() const { return ProjMode != 0.0 && iscash(ProjMode); }
    /// The same day count without cash timing: what a piece of a stream is measured with once the period was adjusted.
    Basis accruals() const { return {DayCount, Periods, 0.0}; }
    /// Accruals under another day count.
    Measure under(double day_count) const;
    void check(Routine& here) const {
        here.limit(DayCount, daycount_limits, "DayCount");
        here.limit(ProjMode, projmode_limits, "ProjMode");
    }
};

/// How time is measured where there is no cash timing.
struct Measure {
    using takes = Takes<double, AnnualSequence>;
    double DayCount; ///< 0 to 999
    const AnnualSequence& Periods;

    operator Basis() const { return {DayCount, Periods, 0.0}; }
    void check(Routine& here) const { here.limit(DayCount, daycount_limits, "DayCount"); }
};

inline Measure Basis::under(double day_count) const { return {day_count, Periods}; }

/// 30/360 and calendar quarters, for what is the same under any measure.
Measure any_measure();

/// Growth by dated annual rates: rate n (0.1 is 10% a year) from date n to date n + 1, the last one for ever.
struct Growth {
    using takes = Takes<Range<date>, Range<double>>;
    View<date> dates;
    View<double> rates;

    bool none() const { return dates.empty(); }
    /// The first growth date, or another date where there is none.
    const date& first_or(const date& other) const { return none() ? other : dates.first(); }
    /// How many growth rates there are. Zero rates at the end that have no date are blank cells of a longer selection
    /// and do not count.
    int count() const;
    /// Throws missinggrowthdate for a rate whose only date is zero, and if only one of the two lists is given.
    void check(const Routine& here) const;
};

/// An even forecast: value i covers `base` months from `start` + (i - 1) x `base` months on.
struct Forecast {
    using takes = Takes<Range<double>, date, int>;
    View<double> values;
    const date& start;
    int base; ///< months, 1 to 1000

    bool none() const { return values.empty(); }
    /// The first date of value i, or of what follows the last one.
    date start_of(int i) const { return start.plusmonths((i - 1) * base, true); }
    void check(Routine& here, const char* name = "FcstBase") const { here.limit(base, forecast_base_limits, name); }
};

/// Weights of the seasons of a year.
struct Seasons {
    using takes = Takes<Range<double>, AnnualSequence>;
    View<double> factors;
    const AnnualSequence& sequence;
};

/// One or several streams side by side: a list of one item serves for all of them.
struct Streams {
    using takes = Takes<Range<date>, Range<date>, Range<double>>;
    View<date> starts, finishes;
    View<double> amounts;

    /// How many there are. Throws errlibbadrangematching unless each list has one item or as many as the longest.
    int count(const Routine& here) const;
    bool single() const { return starts.size() == 1 && finishes.size() == 1 && amounts.size() == 1; }
    Life life(int i) const { return {starts.single_or(i), finishes.single_or(i)}; }
    double amount(int i) const { return amounts.single_or(i); }
    /// The sum over the streams, from the first on.
    template <class Each>
    double sum(const Routine& here, Each each) const {
        const int n = count(here);
        double total = 0.0;
        for (int i = 1; i <= n; ++i) total += each(life(i), amount(i));
        return total;
    }
};

} // namespace qx
