#include "realestate/service_charges.h"

#include "projections/forecast_rate.h"
#include "projections/grown_rate.h"
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

/// The charges of a total in the periods of a routine, each under accruals for what lies between two dates.
template <class Total>
class Charge;

template <>
class Charge<GrowingServiceCharge> {
  public:
    Charge(const Routine& here, const GrowingServiceCharge& total)
        : total_(total), walk_(total.growth), first_review_(here, 1), price_(here, 1) {}
    double in(const timeperiod& period, const Life& span, const ServiceChargeShare& share,
              const LeaseCalendar& calendar) {
        const date& first_review = first_review_(1, [&] { return calendar.rounded(total_.FirstSCRevDate); });
        GrownRate& price = price_(1, [&] {
            const double charge = total_.ServChargeTotal;
            return GrownRate{walk_, charge, charge, total_.SCRevMonths, &first_review};
        });
        return FStepRevGrowSF(period, span, price, share.SCFromDates, share.SCPercentages, calendar.measure);
    }

  private:
    const GrowingServiceCharge& total_;
    GrowthWalk walk_;
    Kept<date> first_review_;
    Kept<GrownRate> price_;
};

template <>
class Charge<ForecastServiceCharge> {
  public:
    Charge(const Routine& here, const ForecastServiceCharge& total)
        : total_(total), first_review_(here, 1), price_(here, 1) {}
    double in(const timeperiod& period, const Life& span, const ServiceChargeShare& share,
              const LeaseCalendar& calendar) {
        const date& first_review = first_review_(1, [&] { return calendar.rounded(total_.FirstSCRevDate); });
        ForecastRate& price = price_(1, [&] {
            return ForecastRate{first_review, total_.forecast, total_.SCRevMonths};
        });
        return FStepRevFcstSF(period, span, price, share.SCFromDates, share.SCPercentages, calendar.measure);
    }

  private:
    const ForecastServiceCharge& total_;
    Kept<date> first_review_;
    Kept<ForecastRate> price_;
};

template <>
class Charge<SteppedServiceCharge> {
  public:
    Charge(const Routine& here, const SteppedServiceCharge& total) : total_(total), revenue_(here, 1) {}
    double in(const timeperiod& period, const Life& span, const ServiceChargeShare& share,
              const LeaseCalendar& calendar) {
        return of(total_.ServChargeAnnRates, period, span, share, calendar);
    }
    /// That of other rates from the same dates on.
    double of(View<double> rates, const timeperiod& period, const Life& span, const ServiceChargeShare& share,
              const LeaseCalendar& calendar) {
        return FStepRevSF(period, span, {total_.FromDates, rates}, {share.SCFromDates, share.SCPercentages}, revenue_,
                          calendar.measure);
    }

  private:
    const SteppedServiceCharge& total_;
    Kept<SteppedRevenue<FromSteps>> revenue_;
};

template <>
class Charge<GrownSteppedServiceCharge> {
  public:
    Charge(const Routine& here, const GrownSteppedServiceCharge& total)
        : total_(total), grown_(here, 1), steps_(here, total.steps) {}
    double in(const timeperiod& period, const Life& span, const ServiceChargeShare& share,
              const LeaseCalendar& calendar) {
        const WorkList<double>& rates = grown_(1, [&] {
            const auto& [dates, rates] = total_.steps;
            GrownAmounts growth(total_.growth);
            WorkList<double> grown;
            for (int n = 1; n <= dates.size(); ++n) grown->append(growth(dates(n), rates.single_or(n)));
            return grown;
        });
        return steps_.of(rates, period, span, share, calendar);
    }

  private:
    const GrownSteppedServiceCharge& total_;
    Kept<WorkList<double>> grown_;
    Charge<SteppedServiceCharge> steps_;
};

/// What the leases of a chain pay of a total.
template <class Total>
class ChargeOfChain {
  public:
    ChargeOfChain(const Routine& here, const date& SCStartDate, View<date> BrksOrExp, const Total& total,
                  const ServiceChargeShare& share, const ReletTerms& relets, const Basis& basis, const ChainEnd& chain)
        : charge_(here, total), share_(share), basis_(basis), calendar_{{basis.DayCount, basis.Periods}, chain.ROpts},
          limit_(chain.limit()), start_(calendar_.rounded(SCStartDate)), BrksOrExp_(BrksOrExp), chain_(chain),
          end_of_first_(here, 1), walk_(relet_walk(here, relets.relets(), calendar_, limit_)) {}

    double in(const Routine& here, const timeperiod& Time) {
        timeperiod period = Time;
        if (share_.SCFromDates.empty() || !screen_period(here, period, {start_, limit_}, basis_)) return 0.0;
        double amount = 0.0;
        const auto add = [&](const date& from, const date& to) {
            const Life span{std::max(from, start_), to};
            if (span.Start < span.Finish && to >= period.from()) amount += charge_.in(period, span, share_, calendar_);
        };
        const date& expiry = end_of_first_(1, [&] { return chain_.expiry(BrksOrExp_, calendar_); });
        add(start_, expiry);
        each_relet(here, expiry, walk_, period.from(), period.to(),
                   [&](const Relet& relet, const date&) { add(relet.lease_start, relet.expiry); });
        return amount;
    }

  private:
    Charge<Total> charge_;
    const ServiceChargeShare& share_;
    Basis basis_;
    LeaseCalendar calendar_;
    const date& limit_;
    date start_;
    View<date> BrksOrExp_;
    ChainEnd chain_;
    Kept<date> end_of_first_;
    ReletWalk walk_;
};

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
    ChargeOfChain<Total> tenant{here, SCStartDate, BrksOrExp, total, share, relets, basis, chain};
    return here.returning(over(here, Time, [&](const timeperiod& period) { return tenant.in(here, period); }));
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
    ChargeOfChain<Total> landlord{here,  StartCost, {},           total,
                                  share, relets,    basis.cost(), {chain.AbFin, chain.ROpts, no_break}};
    ChargeOfChain<Total> tenant{here, StartLease, BrksOrExp, total, share, relets, basis.recovery(), chain};
    return here.returning(over(here, Time, [&](const timeperiod& period) {
        const double whole = landlord.in(here, period), recovered = tenant.in(here, period);
        here.info("The share of the total is ", whole, ", of which ", recovered, " is recovered");
        const double shortfall = whole - recovered;
        return std::fabs(shortfall) <= rounding * std::fabs(whole) ? 0.0 : shortfall;
    }));
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
