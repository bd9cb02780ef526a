#include "calendar/merge_rates.h"

#include "core/routine.h"

#include <algorithm>

namespace qx {

namespace {

constexpr int most_lists = 4;
constexpr int most_passes = 999;

} // namespace

void merge_rates(const SteppedRates* lists, int count, CombineSwitch combine, Range<date>& dates,
                 Range<double>& rates) {
    Routine here{"CombineSteps", Routine::internal};
    int reached[most_lists] = {};
    count = std::min(count, most_lists);
    dates.dimension(0);
    rates.dimension(0);
    for (int pass = 1;; ++pass) {
        const TraceBlock block = here.pass(pass, "Phase 1: find the minimum next date");
        date next = DateCrit;
        bool left = false;
        for (int i = 0; i < count; ++i)
            if (reached[i] < lists[i].dates.size()) {
                left = true;
                next = std::min(next, lists[i].dates.get(reached[i] + 1));
            }
        if (!left) break;
        if (pass > most_passes) here.fail<errliboveriterated>("", "More than ", most_passes, " dates to merge");

        here.info("Phase 2: assign the rates associated with this date");
        bool begun = false, moved = false;
        double rate = 0.0;
        for (int i = 0; i < count; ++i) {
            while (reached[i] < lists[i].dates.size() && lists[i].dates.get(reached[i] + 1) <= next) {
                ++reached[i];
                moved = true;
            }
            if (reached[i] == 0) continue;
            const double current = lists[i].rates.get(reached[i]);
            rate = begun ? combined(rate, current, combine) : current;
            begun = true;
        }
        if (!moved) break; // what is left lies beyond the calendar
        here.info("Combine the rates (", rate, ") using CombineSwitch ",
                  combine_switch_name(static_cast<int>(combine)));
        dates.dimension(dates.size() + 1);
        rates.dimension(rates.size() + 1);
        dates(dates.size()) = next;
        rates(rates.size()) = rate;
    }
    here.returning();
}

} // namespace qx
