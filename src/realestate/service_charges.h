// Service charges: what a tenant pays of the total that a building or an estate costs to run, by the tenant's share of
// it, and what the landlord is left with while nobody pays.
//
// The share runs from its dates on and follows the chain of leases: the lease, then the relets, with nothing in the
// voids. Without dates there is no share, and no charge. The landlord's cost is the share of the total from StartCost
// on, less what the leases from StartLease on recover of it.
//
// All throw errlibmin and errlibmax for a DayCount outside 0 to 999, a ProjMode outside 0 to 7, months between reviews
// outside 0 to 1000 or a forecast base outside 1 to 1000; those that grow throw missinggrowthdate (Growth::check).
#pragma once

#include "calendar/time_period.h"
#include "core/maybe.h"
#include "realestate/relet_terms.h"

namespace qx {

/// A tenant's share of the total, as fractions from dates on; the last one goes on.
struct ServiceChargeShare {
    using takes = Takes<Range<date>, Range<double>>;
    View<date> SCFromDates;
    View<double> SCPercentages;
};

/// The names of the worksheet functions of a kind of total: the tenant's charge and the landlord's cost.
struct ServiceChargeNames {
    const char* tenant;
    const char* landlord = nullptr;
};

/// A total that grows, and is taken up every SCRevMonths months from FirstSCRevDate on; the zero date for never.
struct GrowingServiceCharge {
    using takes = Takes<date, double, Growth, int>;
    const date& FirstSCRevDate;
    double ServChargeTotal;
    Growth growth;
    int SCRevMonths;

    static constexpr ServiceChargeNames names{"ServChargeGrowR", "VacServChargeGrowR"};
};

/// A total that is a forecast, read at the start of each share and then at reviews.
struct ForecastServiceCharge {
    using takes = Takes<date, Forecast, int>;
    const date& FirstSCRevDate;
    Forecast forecast;
    int SCRevMonths;

    static constexpr ServiceChargeNames names{"ServChargeFcstR", "VacServChargeFcstR"};
};

/// Totals from dates on.
struct SteppedServiceCharge {
    using takes = Takes<Range<date>, Range<double>>;
    View<date> FromDates;
    View<double> ServChargeAnnRates;

    static constexpr ServiceChargeNames names{"FServChargeR", "FVacServChargeR"};
};

/// The same with each total grown to its date.
struct GrownSteppedServiceCharge {
    using takes = Takes<SteppedServiceCharge, Growth>;
    SteppedServiceCharge steps;
    Growth growth;

    static constexpr ServiceChargeNames names{"FServChargeGrowR"};
};

/// The basis of a cost, with a day count and payment dates of its own for what is recovered of it.
struct RecoveryBasis {
    using takes = Takes<double, AnnualSequence, Maybe<double>, AnnualSequence, double>;
    double DayCount;
    const AnnualSequence& Periods;
    const Maybe<double>& DayCountRec; ///< DayCount unless given
    const AnnualSequence& PeriodsRec; ///< Periods if it has no entries
    double ProjMode;

    Basis cost() const { return {DayCount, Periods, ProjMode}; }
    Basis recovery() const {
        return {DayCountRec.is_given() ? DayCountRec.value : DayCount, PeriodsRec.size() == 0 ? Periods : PeriodsRec,
                ProjMode};
    }
    void check(Routine& here) const;
};

/// The tenants' charge in a period, from SCStartDate on.
template <class Total>
double ServCharge(const timeperiod& Time, const date& SCStartDate, View<date> BrksOrExp, const Total& total,
                  const ServiceChargeShare& share, const ReletTerms& relets, const Basis& basis, const ChainEnd& chain);
/// The landlord's cost in a period. It is negative where more is recovered than it costs, as before StartCost.
template <class Total>
double VacServCharge(const timeperiod& Time, const date& StartCost, const date& StartLease, View<date> BrksOrExp,
                     const Total& total, const ServiceChargeShare& share, const ReletTerms& relets,
                     const RecoveryBasis& basis, const ChainEnd& chain);

} // namespace qx
