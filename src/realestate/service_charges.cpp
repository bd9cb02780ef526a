#include "realestate/service_charges.h"

#include "projections/growth.h"
#include "projections/stepped_rate.h"

#include <cmath>

namespace qx {

namespace {

void check(Routine& here, const GrowingServiceCharge& total) {
    check_reviews(here, total.SCRevMonths, "SCRevMonths");
    total.growth.check(here);
}
void check(Routine& here, const ForecastServiceCharge& total) {
    total.forecast.check(here, "SCFcstBase");
    check_reviews(here, total.SCRevMonths, "SCRevMonths");
}
void check(Routine&, const SteppedServiceCharge&) {}
void check(Routine& here, const GrownSteppedServiceCharge& total) { total.growth.check(here); }

/// The charge in a period, under accruals, of what lies between two dates.
double charge(const GrowingServiceCharge& total, const timeperiod& period, const Life& span,
              const ServiceChargeShare& share, const LeaseCalendar& calendar) {
    return FStepRevGrowSF(period, span, total.ServChargeTotal, calendar.rounded(total.FirstSCRevDate),
                          share.SCFromDates, share.SCPercentages, total.growth, total.SCRevMonths, calendar.measure);
}
double charge(const ForecastServiceCharge& total, const timeperiod& period, const Life& span,
              const ServiceChargeShare& share, const LeaseCalendar& calendar) {
    return FStepRevFcstSF(period, span, calendar.rounded(total.FirstSCRevDate), share.SCFromDates, share.SCPercentages,
                          total.forecast, total.SCRevMonths, calendar.measure);
}
double charge(const SteppedServiceCharge& total, const timeperiod& period, const Life& span,
              const ServiceChargeShare& share, const LeaseCalendar& calendar) {
    return FStepRevSF(period, span, total.FromDates, total.ServChargeAnnRates, share.SCFromDates, share.SCPercentages,
                      calendar.measure);
}
double charge(const GrownSteppedServiceCharge& total, const timeperiod& period, const Life& span,
              const ServiceChargeShare& share, const LeaseCalendar& calendar) {
    const auto& [dates, rates] = total.steps;
    GrownAmounts growth(total.growth);
    WorkList<double> grown;
    for (int n = 1; n <= dates.size(); ++n) grown->append(growth(dates(n), rates.single_or(n)));
    return charge(SteppedServiceCharge{dates, grown}, period, span, share, calendar);
}

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
        if (span.Start < span.Finish && to >= period.from()) amount += charge(total, period, span, share, calendar);
    };
    const date expiry = chain.expiry(BrksOrExp, calendar);
    add(start, expiry);
    each_relet(here, expiry, relets, calendar, limit, period.to(),
               [&](const Relet& relet, const date&) { add(relet.lease_start, relet.expiry); });
    return amount;
}

} // namespace

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
    check(here, total);
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
    check(here, total);
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
