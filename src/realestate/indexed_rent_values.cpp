#include "realestate/indexed_rent_values.h"

#include "core/routine.h"
#include "realestate/rent_values.h"

namespace qx {

namespace {

/// The walk of a chain that AbStart starts if ROpts say so.
ChainWalk walk_of(const date& RentStart, View<date> BrksOrExp, int Brk, const Relets& relets, const CashTerms& terms,
                  const AbsoluteDates& absolute, int ROpts, const date& Finish) {
    return {absolute.override_start(ROpts) ? absolute.AbStart : RentStart,
            BrksOrExp,
            Brk,
            absolute.AbFin,
            relets,
            terms,
            ROpts,
            Finish};
}

} // namespace

double PVTStepIdxRentGrowR(const Discount& at, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                           const RentSteps& steps, const Growth& growth, const Growth& index,
                           const GrowthIndexation& indexation, const Relets& relets, const CashTerms& terms,
                           const AbsoluteDates& absolute, int ROpts, int Brk, View<int> IdxLag_s, const date& Finish) {
    Routine here{"PVTStepIdxRentGrowR"};
    here.inputs(at, RentStart, BrksOrExp, MktRent_s, steps, growth, index, indexation, relets, terms, absolute, ROpts,
                Brk, IdxLag_s, Finish);
    terms.check(here, at.DisAER);
    const ChainWalk walk = walk_of(RentStart, BrksOrExp, Brk, relets, terms, absolute, ROpts, Finish);
    return here.returning(present_value(here, walk, at, terms, [&](const timeperiod& period) {
        return TStepIdxRentGrowR(period, RentStart, BrksOrExp, MktRent_s, steps, growth, index, indexation, relets,
                                 terms.cash(), absolute, ROpts, Brk, IdxLag_s);
    }));
}

double PVTStepIdxRentFcstR(const Discount& at, const date& RentStart, View<date> BrksOrExp, const RentSteps& steps,
                           const Forecast& forecast, const Forecast& index, const ForecastIndexation& indexation,
                           const Relets& relets, const CashTerms& terms, const AbsoluteDates& absolute, int ROpts,
                           int Brk, View<int> IdxLag_s) {
    Routine here{"PVTStepIdxRentFcstR"};
    here.inputs(at, RentStart, BrksOrExp, steps, forecast, index, indexation, relets, terms, absolute, ROpts, Brk,
                IdxLag_s);
    terms.check(here, at.DisAER);
    const date no_finish;
    const ChainWalk walk = walk_of(RentStart, BrksOrExp, Brk, relets, terms, absolute, ROpts, no_finish);
    return here.returning(present_value(here, walk, at, terms, [&](const timeperiod& period) {
        return TStepIdxRentFcstR(period, RentStart, BrksOrExp, steps, forecast, index, indexation, relets, terms.cash(),
                                 absolute, ROpts, Brk, IdxLag_s);
    }));
}

} // namespace qx
