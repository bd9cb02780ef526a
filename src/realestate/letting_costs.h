// What lettings cost: at each expiry, and at the start of the relet that follows.
//
// Cost i is that of the expiry before relet i, or of its start; the last of a series applies to the rest. What would be
// on AbFin or later costs nothing.
#pragma once

#include "calendar/time_period.h"
#include "projections/payments.h"
#include "realestate/relet_terms.h"

namespace qx {

/// Costs that are laid out from the date on which they arise, as a general spread does (GSpread): months from it to the
/// last of them, a reserved code, and the shape in between. Without months they are paid on their date.
struct SpreadCosts {
    using takes = Takes<Range<double>, Range<double>, Range<double>, Range<double>>;
    View<double> costs, months, curves, shapes;

    /// The amount in a period of cost n, which arises on a date and is grown to it.
    double in(const timeperiod& Time, int n, const date& day, const Growth& growth) const;
};

/// Options of letting costs, as bits of a sum.
enum LettingOption : int {
    without_last_expiry = 1 ///< no cost at the last expiry before AbFin
};

/// How a chain ends whose dates are plain months apart.
struct LettingEnd {
    using takes = Takes<date, int, int>;
    const date& AbFin;
    int Options; ///< LettingOptions
    int Brk;
};

/// The costs of a period: given payments of the lease, then costs at expiries and relets, each grown to its date.
/// Throw missinggrowthdate (Growth::check). LeaseStartDate has no effect: the payments have dates of their own.
double LetCostRQ(const timeperiod& Time, const date& LeaseStartDate, View<date> BrksOrExp, const Payments& payments,
                 View<double> ExpCost_s, View<double> RelCost_s, const Growth& growth, const ReletTerms& relets,
                 const LettingEnd& end);
/// The same with costs spread over time. Throws what GSpread throws.
double LetCostR(const timeperiod& Time, const date& LeaseStartDate, View<date> BrksOrExp, const Payments& payments,
                const SpreadCosts& expiry_costs, const SpreadCosts& relet_costs, const Growth& growth,
                const ReletTerms& relets, const LettingEnd& end);

} // namespace qx
