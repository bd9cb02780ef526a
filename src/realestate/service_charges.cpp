#include "realestate/service_charges.h"

#include "projections/growth.h"
#include "projections/stepped_rate.h"

#include <cmath>

namespace qx {

namespace {

/// What the leases of a chain pay of a total in a period.
template <class Total>
double charge_of_chain(const Routine& here, const timeperiod& Time, const date& SCStartDate, View<date> BrksOrExp,
                       const Total& total, const ServiceChargeShare& share, const ReletTerms& relets,
                       const Basis& basis, const ChainEnd& chain) {
    const LeaseCalendar calendar{{basis.DayCount, basis.Periods}, chain.ROpts};
    const date start = calendar.rounded(SCStartDate);
    const date& limit = chain.limit();
    timeperiod period = Time;
    if (share.SCFromDates.empty() || !screen_period(here, period, {start, limit}, basis)) return 0.0;
    double amount = 0.0;
    const auto add = [&](const date& from, const date& to) {
        const Life span{std::max(from, start), to};
        if (span.Start < span.Finish && to >= period.from()) amount += total.charge(period, span, share, calendar);
    };
    const date expiry = chain.expiry(BrksOrExp, calendar);
    add(start, expiry);
    each_relet(here, expiry, relets, calendar, limit, period.to(),
               [&](const Relet& relet, const date&) { add(relet.lease_start, relet.expiry); });
    return amount;
}

} // namespace

void GrowingServiceCharge::check(Routine& here) const {
    check_reviews(here, SCRevMonths, "SCRevMonths");
    growth.check(here);
}

double GrowingServiceCharge::charge(const timeperiod& period, const Life& span, const ServiceChargeShare& share,
                                    const LeaseCalendar& calendar) const {
    return FStepRevGrowSF(period, span, ServChargeTotal, calendar.rounded(FirstSCRevDate), share.SCFromDates,
                          share.SCPercentages, growth, SCRevMonths, calendar.measure);
}

void ForecastServiceCharge::check(Routine& here) const {
    forecast.check(here, "SCFcstBase");
    check_reviews(here, SCRevMonths, "SCRevMonths");
}

double ForecastServiceCharge::charge(const timeperiod& period, const Life& span, const ServiceChargeShare& share,
                                     const LeaseCalendar& calendar) const {
    return FStepRevFcstSF(period, span, calendar.rounded(FirstSCRevDate), share.SCFromDates, share.SCPercentages,
                          forecast, SCRevMonths, calendar.measure);
}

double SteppedServiceCharge::charge(const timeperiod& period, const Life& span, const ServiceChargeShare& share,
                                    const LeaseCalendar& calendar) const {
    return FStepRevSF(period, span, FromDates, ServChargeAnnRates, share.SCFromDates, share.SCPercentages,
                      calendar.measure);
}

double GrownSteppedServiceCharge::charge(const timeperiod& period, const Life& span, const ServiceChargeShare& share,
                                         const LeaseCalendar& calendar) const {
    WorkList<double> grown;
    for (int n = 1; n <= steps.FromDates.size(); ++n)
        grown->append(Grow(steps.FromDates(n), steps.ServChargeAnnRates.single_or(n), growth, 0));
    return SteppedServiceCharge{steps.FromDates, grown}.charge(period, span, share, calendar);
}

void RecoveryBasis::check(Routine& here) const {
    cost().check(here);
    if (DayCountRec.is_given()) here.limit(DayCountRec.value, daycount_limits, "DayCountRec");
}

template <class Total>
double ServCharge(const timeperiod& Time, const date& SCStartDate, View<date> BrksOrExp, const Total& total,
                  const ServiceChargeShare& share, const ReletTerms& relets, const Basis& basis,
                  const ChainEnd& chain) {
    Routine here{Total::names.tenant};
    here.inputs(Time, SCStartDate, BrksOrExp, total, share, relets, basis, chain);
    basis.check(here);
    total.check(here);
    return here.returning(charge_of_chain(here, Time, SCStartDate, BrksOrExp, total, share, relets, basis, chain));
}

template <class Total>
double VacServCharge(const timeperiod& Time, const date& StartCost, const date& StartLease, View<date> BrksOrExp,
                     const Total& total, const ServiceChargeShare& share, const ReletTerms& relets,
                     const RecoveryBasis& basis, const ChainEnd& chain) {
    constexpr double rounding = 1e-12;
    Routine here{Total::names.landlord};
    here.inputs(Time, StartCost, StartLease, BrksOrExp, total, share, relets, basis, chain);
    note_split_start(here);
    here.change_note(175, "See Change in Behaviour 175, Oct-05 :DayCountRec and");
    basis.check(here);
    total.check(here);
    const double whole = charge_of_chain(here, Time, StartCost, {}, total, share, relets, basis.cost(),
                                         {chain.AbFin, chain.ROpts, no_break});
    const double recovered =
        charge_of_chain(here, Time, StartLease, BrksOrExp, total, share, relets, basis.recovery(), chain);
    here.info("The share of the total is ", whole, ", of which ", recovered, " is recovered");
    const double shortfall = whole - recovered;
    return here.returning(std::fabs(shortfall) <= rounding * std::fabs(whole) ? 0.0 : shortfall);
}

#define QX_TENANT_CHARGE_OF(Total)                                                                                     \
    template double ServCharge(const timeperiod&, const date&, View<date>, const Total&, const ServiceChargeShare&,    \
                               const ReletTerms&, const Basis&, const ChainEnd&)
#define QX_CHARGES_OF(Total)                                                                                           \
    QX_TENANT_CHARGE_OF(Total);                                                                                        \
    template double VacServCharge(const timeperiod&, const date&, const date&, View<date>, const Total&,               \
                                  const ServiceChargeShare&, const ReletTerms&, const RecoveryBasis&, const ChainEnd&)
QX_CHARGES_OF(GrowingServiceCharge);
QX_CHARGES_OF(ForecastServiceCharge);
QX_CHARGES_OF(SteppedServiceCharge);
QX_TENANT_CHARGE_OF(GrownSteppedServiceCharge);

} // namespace qx
