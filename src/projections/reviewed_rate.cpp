#include "projections/reviewed_rate.h"

#include "core/routine.h"

#include <algorithm>
#include <cmath>

namespace qx {

bool upward_only(double ReviewDiscount, const date& TheDate, View<date> UOTog) {
    bool any = false, on = false;
    for (const date& toggle : UOTog) {
        if (toggle.iszero()) continue;
        any = true;
        if (toggle > TheDate) break;
        on = !on;
    }
    return any ? on : ReviewDiscount < 0.0;
}

double ReviewedRate(double PreviousPassingRate, double MktRate, double ReviewDiscount, const date& TheDate,
                    View<date> UOTog, bool ApplyDiscount) {
    Routine here{"ReviewedRate", Routine::internal};
    here.arguments(QX_NAMED(PreviousPassingRate, MktRate, ReviewDiscount, TheDate, UOTog, ApplyDiscount));
    double rate = MktRate;
    if (ApplyDiscount && !iszero(ReviewDiscount)) {
        rate *= 1.0 - std::fabs(ReviewDiscount);
        here.info("The rate was adjusted using a ReviewDiscount of ", ReviewDiscount);
    }
    if (upward_only(ReviewDiscount, TheDate, UOTog)) {
        here.info("Upwards Only was enforced based on a previous rate of ", PreviousPassingRate);
        rate = std::max(PreviousPassingRate, rate);
    }
    return here.returning(rate);
}

} // namespace qx
