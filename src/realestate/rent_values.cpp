#include "realestate/rent_values.h"

#include "rates/cash_flow.h"
#include "rates/discounting.h"

namespace qx {

namespace {

/// DisAER is one rate, or one for each step.
template <class Rates, class Source>
void check_all(Routine& here, const CashTerms& terms, const Rates& DisAER, const Reviews& reviews,
               const Source& source) {
    terms.check(here, DisAER);
    reviews.check(here);
    source.check(here);
}

/// The present value of a lease from its rent start to its end: `rent` gives the rent of a period.
template <class Source, class Rent>
double value_of_lease(Routine& here, const Discount& at, const date& RentStart, View<date> BrksOrExp, int Brk,
                      const Source& source, const Reviews& reviews, const CashTerms& terms, Rent rent) {
    check_all(here, terms, at.DisAER, reviews, source);
    const date expiry = lease_end(BrksOrExp, Brk);
    return here.returning(present_value(here, {RentStart, expiry}, at, terms, rent));
}

/// The present value of steps that are discounted at rates of their own: `rent` gives the rent of a period, each step
/// of it times its discount factor.
template <class Rent>
double value_by_step(const Routine& here, const Life& life, const date& NPVDate, View<double> DisAER,
                     const CashTerms& terms, Rent rent) {
    WorkList<double> factors(DisAER.size());
    const auto discounted_rent = [&](const timeperiod& period, double years) {
        for (int n = 1; n <= factors.size(); ++n) factors(n) = 1.0 / SafePow(1.0 + DisAER(n), years);
        return rent(period, factors);
    };
    return here.returning(present_value_by_step(here, life, NPVDate, terms, discounted_rent));
}

} // namespace

ChainWalk::ChainWalk(const date& RentStart, View<date> BrksOrExp, int Brk, const date& AbFin, const Relets& relets,
                     const CashTerms& terms, int ROpts, const date& Finish) {
    const LeaseCalendar calendar{{terms.DayCount, terms.CashBasis}, ROpts};
    start_ = calendar.rounded(RentStart);
    end_ = !Finish.iszero()  ? Finish
           : !AbFin.iszero() ? AbFin
                             : end_of_chain(calendar.rounded(lease_end(BrksOrExp, Brk)), relets, calendar);
}

// --- One lease -------------------------------------------------------------------------------------------------------

double PVRentGrow(const Discount& at, const date& RentStart, View<date> BrksOrExp, const date& FirstRev, double MktRent,
                  double InitRent, const Growth& growth, const Reviews& reviews, const CashTerms& terms,
                  View<date> UOTog, int Brk) {
    Routine here{"PVRentGrow"};
    here.inputs(at, RentStart, BrksOrExp, FirstRev, MktRent, InitRent, growth, reviews, terms, UOTog, Brk);
    return value_of_lease(here, at, RentStart, BrksOrExp, Brk, growth, reviews, terms, [&](const timeperiod& period) {
        return RentGrow(period, RentStart, BrksOrExp, FirstRev, MktRent, InitRent, growth, reviews, terms.cash(), UOTog,
                        Brk);
    });
}

double PVRentFcst(const Discount& at, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                  double InitRent, const Forecast& forecast, const Reviews& reviews, const CashTerms& terms,
                  View<date> UOTog, int Brk) {
    Routine here{"PVRentFcst"};
    here.inputs(at, RentStart, BrksOrExp, FirstRev, InitRent, forecast, reviews, terms, UOTog, Brk);
    return value_of_lease(here, at, RentStart, BrksOrExp, Brk, forecast, reviews, terms, [&](const timeperiod& period) {
        return RentFcst(period, RentStart, BrksOrExp, FirstRev, InitRent, forecast, reviews, terms.cash(), UOTog, Brk);
    });
}

double PVTStepRent(const Discount& at, const date& RentStart, View<date> ReviewDates, View<double> AnnRents,
                   const CashTerms& terms) {
    Routine here{"PVTStepRent"};
    here.inputs(at, RentStart, ReviewDates, AnnRents, terms);
    terms.check(here, at.DisAER);
    return here.returning(
        present_value(here, whole_extent(ToSteps{RentStart, ReviewDates}), at, terms, [&](const timeperiod& period) {
            return TStepRent(period, RentStart, ReviewDates, AnnRents, terms.cash());
        }));
}

double PVTStepRentGrow(const Discount& at, const date& RentStart, View<date> BrksOrExp, double MktRent,
                       View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Reviews& reviews,
                       const CashTerms& terms, View<date> UOTog, int Brk) {
    Routine here{"PVTStepRentGrow"};
    here.inputs(at, RentStart, BrksOrExp, MktRent, ReviewDates, AnnRents, growth, reviews, terms, UOTog, Brk);
    return value_of_lease(here, at, RentStart, BrksOrExp, Brk, growth, reviews, terms, [&](const timeperiod& period) {
        return TStepRentGrow(period, RentStart, BrksOrExp, MktRent, ReviewDates, AnnRents, growth, reviews,
                             terms.cash(), UOTog, Brk);
    });
}

double PVTStepRentFcst(const Discount& at, const date& RentStart, View<date> BrksOrExp, View<date> ReviewDates,
                       View<double> AnnRents, const Forecast& forecast, const Reviews& reviews, const CashTerms& terms,
                       View<date> UOTog, int Brk) {
    Routine here{"PVTStepRentFcst"};
    here.inputs(at, RentStart, BrksOrExp, ReviewDates, AnnRents, forecast, reviews, terms, UOTog, Brk);
    return value_of_lease(here, at, RentStart, BrksOrExp, Brk, forecast, reviews, terms, [&](const timeperiod& period) {
        return TStepRentFcst(period, RentStart, BrksOrExp, ReviewDates, AnnRents, forecast, reviews, terms.cash(),
                             UOTog, Brk);
    });
}

double PVTStepRentGrowIC(const date& NPVDate, View<double> DisAER, const date& RentStart, View<date> BrksOrExp,
                         double MktRent, View<date> ReviewDates, View<double> AnnRents, const Growth& growth,
                         const Reviews& reviews, const CashTerms& terms, View<date> UOTog, int Brk) {
    Routine here{"PVTStepRentGrowIC"};
    here.inputs(NPVDate, DisAER, RentStart, BrksOrExp, MktRent, ReviewDates, AnnRents, growth, reviews, terms, UOTog,
                Brk);
    check_all(here, terms, DisAER, reviews, growth);
    const date expiry = lease_end(BrksOrExp, Brk);
    return value_by_step(here, {RentStart, expiry}, NPVDate, DisAER, terms,
                         [&](const timeperiod& period, View<double> factors) {
                             return weighted_step_rent(period, RentStart, BrksOrExp, MktRent, ReviewDates, AnnRents,
                                                       growth, reviews, terms.cash(), UOTog, Brk, factors);
                         });
}

double IRRRentGrow(const date& NPVDate, double Outlay, const date& RentStart, View<date> BrksOrExp,
                   const date& FirstRev, double MktRent, double InitRent, const Growth& growth, const Reviews& reviews,
                   const CashTerms& terms, View<date> UOTog, int Brk) {
    Routine here{"IRRRentGrow"};
    here.inputs(NPVDate, Outlay, RentStart, BrksOrExp, FirstRev, MktRent, InitRent, growth, reviews, terms, UOTog, Brk);
    terms.check(here);
    reviews.check(here);
    growth.check(here);
    const date expiry = lease_end(BrksOrExp, Brk);
    WorkSchedule flows;
    flows->add(-Outlay, 0.0);
    each_payment_period(here, {RentStart, expiry}, terms, [&](const timeperiod& period) {
        const double rent = RentGrow(period, RentStart, BrksOrExp, FirstRev, MktRent, InitRent, growth, reviews,
                                     terms.cash(), UOTog, Brk);
        if (rent != 0.0) flows->add(rent, terms.years(NPVDate, period.from()));
    });
    CashFlowSolve problem(std::move(flows));
    return here.returning(solve_irr(here, problem, irr_min, irr_max, irr_accuracy));
}

// --- A lease and its relets ------------------------------------------------------------------------------------------

double PVTStepRentGrowR(const Discount& at, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                        View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Reviews& reviews,
                        const Relets& relets, const CashTerms& terms, const date& AbFin, View<date> UOTog, int ROpts,
                        int Brk, const date& Finish) {
    Routine here{"PVTStepRentGrowR"};
    here.inputs(at, RentStart, BrksOrExp, MktRent_s, ReviewDates, AnnRents, growth, reviews, relets, terms, AbFin,
                UOTog, ROpts, Brk, Finish);
    check_all(here, terms, at.DisAER, reviews, growth);
    const ChainWalk walk(RentStart, BrksOrExp, Brk, AbFin, relets, terms, ROpts, Finish);
    return here.returning(present_value(here, walk, at, terms, [&](const timeperiod& period) {
        return TStepRentGrowR(period, RentStart, BrksOrExp, MktRent_s, ReviewDates, AnnRents, growth, reviews, relets,
                              terms.cash(), AbFin, UOTog, ROpts, Brk);
    }));
}

double PVTStepRentFcstR(const Discount& at, const date& RentStart, View<date> BrksOrExp, View<date> ReviewDates,
                        View<double> AnnRents, const Forecast& forecast, const Reviews& reviews, const Relets& relets,
                        const CashTerms& terms, const date& AbFin, View<date> UOTog, int ROpts, int Brk,
                        const date& Finish) {
    Routine here{"PVTStepRentFcstR"};
    here.inputs(at, RentStart, BrksOrExp, ReviewDates, AnnRents, forecast, reviews, relets, terms, AbFin, UOTog, ROpts,
                Brk, Finish);
    check_all(here, terms, at.DisAER, reviews, forecast);
    const ChainWalk walk(RentStart, BrksOrExp, Brk, AbFin, relets, terms, ROpts, Finish);
    return here.returning(present_value(here, walk, at, terms, [&](const timeperiod& period) {
        return TStepRentFcstR(period, RentStart, BrksOrExp, ReviewDates, AnnRents, forecast, reviews, relets,
                              terms.cash(), AbFin, UOTog, ROpts, Brk);
    }));
}

double PVTStepRentGrowRIC(const date& NPVDate, View<double> DisAER, const date& RentStart, View<date> BrksOrExp,
                          View<double> MktRent_s, View<date> ReviewDates, View<double> AnnRents, const Growth& growth,
                          const Reviews& reviews, const Relets& relets, const CashTerms& terms, const date& AbFin,
                          View<date> UOTog, int ROpts, int Brk, const date& Finish) {
    Routine here{"PVTStepRentGrowRIC"};
    here.inputs(NPVDate, DisAER, RentStart, BrksOrExp, MktRent_s, ReviewDates, AnnRents, growth, reviews, relets, terms,
                AbFin, UOTog, ROpts, Brk, Finish);
    check_all(here, terms, DisAER, reviews, growth);
    const ChainWalk walk(RentStart, BrksOrExp, Brk, AbFin, relets, terms, ROpts, Finish);
    return value_by_step(here, walk, NPVDate, DisAER, terms, [&](const timeperiod& period, View<double> factors) {
        return weighted_chain_rent(period, RentStart, BrksOrExp, MktRent_s, ReviewDates, AnnRents, growth, reviews,
                                   relets, terms.cash(), AbFin, UOTog, ROpts, Brk, factors);
    });
}

} // namespace qx
