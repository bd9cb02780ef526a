#include "calendar/merge_rates.h"

#include "core/routine.h"

#include <algorithm>

namespace qx {

namespace {

constexpr int most_lists = 4;
constexpr int most_passes = 999;

constexpr const char* names[] = {
    "Multiply",
    "Division",
    "Add",
    "Subtraction",
    "Maximum",
    "Minimum",
    "Maximum (but non-zero)",
    "Minimum (but non-zero)",
};

/// Takes a further rate into the combination of those before it.
double combined(double so_far, double rate, CombineSwitch combine) {
    switch (combine) {
    case CombineSwitch::multiply:
        return so_far * rate;
    case CombineSwitch::division:
        return safe_divide(so_far, rate);
    case CombineSwitch::add:
        return so_far + rate;
    case CombineSwitch::subtraction:
        return so_far - rate;
    case CombineSwitch::maximum:
        return std::max(so_far, rate);
    case CombineSwitch::minimum:
        return std::min(so_far, rate);
    case CombineSwitch::maximum_nonzero:
    case CombineSwitch::minimum_nonzero:
        break;
    }
    if (iszero(so_far)) return rate;
    if (iszero(rate)) return so_far;
    return combine == CombineSwitch::maximum_nonzero ? std::max(so_far, rate) : std::min(so_far, rate);
}

} // namespace

const char* combine_switch_name(int combine_switch) {
    return combine_switch >= 0 && combine_switch < static_cast<int>(std::size(names)) ? names[combine_switch] : "";
}

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
        here.info("Combine the rates (", rate, ") using CombineSwitch ", names[static_cast<int>(combine)]);
        dates.dimension(dates.size() + 1);
        rates.dimension(rates.size() + 1);
        dates(dates.size()) = next;
        rates(rates.size()) = rate;
    }
    here.returning();
}

} // namespace qx
