#include "projections/payments.h"

#include "core/routine.h"

#include <algorithm>

namespace qx {

double MkPmts(const timeperiod& Time, View<date> PmtDates, View<double> Pmts) {
    Routine here{"MkPmts"};
    here.arguments(QX_NAMED(Time, PmtDates, Pmts));
    if (Time.to() < Time.from()) {
        here.info("End of timeperiod (", Time.to(), ") less than start (", Time.from(), "), returning 0");
        return here.returning(0.0);
    }
    double sum = 0.0;
    for (int n = 1; n <= std::min(PmtDates.size(), Pmts.size()); ++n)
        if (Time.contains(PmtDates.get(n))) sum += Pmts.get(n);
    return here.returning(sum);
}

} // namespace qx
