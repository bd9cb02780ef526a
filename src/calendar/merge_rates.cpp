#include "calendar/merge_rates.h"

#include "core/routine.h"

#include <algorithm>

namespace qx {

namespace {

constexpr int most_lists = 4;

} // namespace

void merge_rates(const SteppedRates* lists, int count, CombineSwitch combine, Range<date>& dates, Range<double>& rates,
                 const Merging& how) {
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
            if (const View<date>& list = lists[i].dates; reached[i] < list.size()) {
                left = true;
                next = std::min(next, list(reached[i] + 1));
            }
        if (!left) break;
        if (pass > how.most) here.fail<errliboveriterated>("", "More than ", how.most, " dates to merge");

        here.info("Phase 2: assign the rates associated with this date");
        int in_force = 0;
        bool moved = false;
        double rate = 0.0;
        for (int i = 0; i < count; ++i) {
            const auto& [list, list_rates] = lists[i];
            int step = reached[i] < list.size() ? reached[i] + 1 : 0; // by to-dates the one that has not ended
            while (reached[i] < list.size() && list(reached[i] + 1) <= next) {
                ++reached[i];
                moved = true;
            }
            if (!how.by_to_dates) step = reached[i];
            if (step == 0) continue;
            const double current = list_rates.single_or(step);
            rate = in_force > 0 ? combined(rate, current, combine) : current;
            ++in_force;
        }
        if (!moved) break; // what is left lies beyond the calendar
        if (how.missing_is_zero && in_force < count) rate = 0.0;
        here.info("Combine the rates (", rate, ") using CombineSwitch ",
                  combine_switch_name(static_cast<int>(combine)));
        dates.append(next);
        rates.append(rate);
    }
    here.returning();
}

} // namespace qx
