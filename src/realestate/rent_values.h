// Present values of rents: what a lease, or a lease and its relets, pays on the dates of CashBasis from the rent start
// to the end, discounted. Each takes the terms of the rent that it values (rents.h), and agrees with that rent laid out
// over the dates of its walk (projections/present_value.h).
//
// Beside the errors of the rent, all throw errlibmin and errlibmax for a DayCount or DayCountDisc outside 0 to 999,
// errlibmin for a DisAER below -0.999999, and errliboveriterated for 2000 payment dates or more, as of a lease that
// never ends.
#pragma once

#include "projections/present_value.h"
#include "realestate/rents.h"

namespace qx {

// --- One lease, up to the break or expiry that ends it ---------------------------------------------------------------

double PVRentGrow(const Discount& at, const date& RentStart, View<date> BrksOrExp, const date& FirstRev, double MktRent,
                  double InitRent, const Growth& growth, const Reviews& reviews, const CashTerms& terms,
                  View<date> UOTog, int Brk);
double PVRentFcst(const Discount& at, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                  double InitRent, const Forecast& forecast, const Reviews& reviews, const CashTerms& terms,
                  View<date> UOTog, int Brk);
double PVTStepRent(const Discount& at, const date& RentStart, View<date> ReviewDates, View<double> AnnRents,
                   const CashTerms& terms);
double PVTStepRentGrow(const Discount& at, const date& RentStart, View<date> BrksOrExp, double MktRent,
                       View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Reviews& reviews,
                       const CashTerms& terms, View<date> UOTog, int Brk);
double PVTStepRentFcst(const Discount& at, const date& RentStart, View<date> BrksOrExp, View<date> ReviewDates,
                       View<double> AnnRents, const Forecast& forecast, const Reviews& reviews, const CashTerms& terms,
                       View<date> UOTog, int Brk);
/// With a discount rate for each rent: rate n for what given rent n pays, then one for the reviews that follow; the
/// last one applies to the rest.
double PVTStepRentGrowIC(const date& NPVDate, View<double> DisAER, const date& RentStart, View<date> BrksOrExp,
                         double MktRent, View<date> ReviewDates, View<double> AnnRents, const Growth& growth,
                         const Reviews& reviews, const CashTerms& terms, View<date> UOTog, int Brk);

/// The discount rate at which PVRentGrow is Outlay. Throws errlibnotbracketed where none is found.
double IRRRentGrow(const date& NPVDate, double Outlay, const date& RentStart, View<date> BrksOrExp,
                   const date& FirstRev, double MktRent, double InitRent, const Growth& growth, const Reviews& reviews,
                   const CashTerms& terms, View<date> UOTog, int Brk);

// --- A lease and its relets ------------------------------------------------------------------------------------------
// The walk ends on Finish; if that is zero on AbFin, and without either with the last relet of the chain.

double PVTStepRentGrowR(const Discount& at, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                        View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Reviews& reviews,
                        const Relets& relets, const CashTerms& terms, const date& AbFin, View<date> UOTog, int ROpts,
                        int Brk, const date& Finish);
double PVTStepRentFcstR(const Discount& at, const date& RentStart, View<date> BrksOrExp, View<date> ReviewDates,
                        View<double> AnnRents, const Forecast& forecast, const Reviews& reviews, const Relets& relets,
                        const CashTerms& terms, const date& AbFin, View<date> UOTog, int ROpts, int Brk,
                        const date& Finish);
/// With discount rates as PVTStepRentGrowIC has them, and after them one for each relet.
double PVTStepRentGrowRIC(const date& NPVDate, View<double> DisAER, const date& RentStart, View<date> BrksOrExp,
                          View<double> MktRent_s, View<date> ReviewDates, View<double> AnnRents, const Growth& growth,
                          const Reviews& reviews, const Relets& relets, const CashTerms& terms, const date& AbFin,
                          View<date> UOTog, int ROpts, int Brk, const date& Finish);

/// The dates between which the rents of a chain are paid: its rent start and the end of its walk.
class ChainWalk {
  public:
    ChainWalk(const date& RentStart, View<date> BrksOrExp, int Brk, const date& AbFin, const Relets& relets,
              const CashTerms& terms, int ROpts, const date& Finish);
    operator Life() const { return {start_, end_}; }

  private:
    date start_, end_;
};

} // namespace qx
