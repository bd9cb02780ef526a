#include "projections/terms.h"

#include "calendar/time_period.h"

namespace qx {

bool Basis::cash() const { return iscash(ProjMode); }

void Growth::check(const Routine& here) const {
    if (dates.size() == 1 && dates.first().iszero() && !rates.empty() && !iszero(rates.first()))
        here.fail<missinggrowthdate>("GrowthDates",
                                     "You had only one growth date, it was zero, and yet you had a growth rate - that "
                                     "doesn't make sense!");
}

int Streams::count(const Routine& here) const {
    const int n = std::max({starts.size(), finishes.size(), amounts.size()});
    for (const int size : {starts.size(), finishes.size(), amounts.size()})
        if (size != 1 && size != n)
            here.fail<errlibbadrangematching>("",
                                              "Amounts, Starts and Finishes should either have a range length of one or "
                                              "a range length equal to the maximum of Totals, Starts and Finishes");
    return n;
}

} // namespace qx
