#include "projections/terms.h"

namespace qx {

std::string describe(const Life& life) { return describe(timeperiod(life.Start, life.Finish)); }

Measure any_measure() {
    static const AnnualSequence quarters(4);
    return {0.0, quarters};
}

int Growth::count() const {
    int n = rates.size();
    while (n > dates.size() && iszero(rates(n))) --n;
    return n;
}

void Growth::check(const Routine& here) const {
    if (dates.empty() && count() > 0)
        here.fail<missinggrowthdate>("GrowthDates", "There are growth rates but no dates.");
    if (rates.empty() && !dates.empty())
        here.fail<missinggrowthdate>("GrowthRates", "There are growth dates but no rates.");
    if (dates.size() == 1 && dates.first().iszero() && !rates.empty() && !iszero(rates.first()))
        here.fail<missinggrowthdate>("GrowthDates",
                                     "You had only one growth date, it was zero, and yet you had a growth rate - that "
                                     "doesn't make sense!");
}

int Streams::count(const Routine& here) const {
    const int n = std::max({starts.size(), finishes.size(), amounts.size()});
    for (const int size : {starts.size(), finishes.size(), amounts.size()})
        if (size != 1 && size != n)
            here.fail<errlibbadrangematching>(
                "", "Amounts, Starts and Finishes should either have a range length of one or "
                    "a range length equal to the maximum of Totals, Starts and Finishes");
    return n;
}

} // namespace qx
