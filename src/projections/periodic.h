// What recurs every so many months: streams, spreads and payments.
#pragma once

#include "calendar/time_period.h"
#include "core/routine.h"

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
    for (date start = First; n < most_repetitions && start < AbsFinish && start < Time.to();
         start.addmonths(Periodicity, true)) {
        ++n;
        const TraceBlock pass = here.pass(n, "Repetition from ", start);
        each(n, std::as_const(start));
    }
    if (n >= most_repetitions)
        here.fail<errlibmaxrevs>("Periodicity", "There are ", n, " repetitions or more up to ", Time.to());
}

} // namespace qx
