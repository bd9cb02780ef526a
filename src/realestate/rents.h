// The rent of a lease that falls into a period: an initial rent, or a list of rents, then reviews to a market rent
// every so many months up to the break or expiry that ends the lease, and after it the rents of a chain of relets
// (realestate/lease.h).
//
// The market rent grows from the first growth date (Grow), or is a forecast read in steps (fcst). A review takes the
// market rent less RevDisc; it cannot lower the rent where reviews are upward-only (ReviewedRate). RevMos of 0 makes
// reviews that do not recur: one that has a date of its own is made, and its rent holds to the end.
//
// Outside the lease there is no rent, under cash no more than under accruals. A lease in a chain that starts before
// the end of the last one is let to the market rent at its start, payable from the end of its rent-free months.
//
// All throw errlibmin and errlibmax for a DayCount outside 0 to 999, a ProjMode outside 0 to 7, RevMos outside 0 to
// 1000, RevDisc outside -1 to 1 or a forecast base outside 1 to 1000; missinggrowthdate (Growth::check); errlibmaxrevs
// where a lease has 100 reviews or more up to the period.
#pragma once

#include "calendar/time_period.h"
#include "projections/steps.h"
#include "realestate/lease.h"

namespace qx {

/// Reviews to the market.
struct Reviews {
    using takes = Takes<int, double>;
    int RevMos;     ///< months between them, 0 to 1000; 0 if they do not recur
    double RevDisc; ///< discount to the market rent, -1 to 1; below 0 they are upward-only, unless dates say when

    void check(Routine& here) const;
};

/// Entry n of a list with one for each rent or one for all; 0 beyond its end.
inline double one_for_each(View<double> list, int n) {
    if (list.size() == 1) return list(1);
    return n <= list.size() ? list(n) : 0.0;
}

/// The rents below and above which reviews do not go, one for each rent or one for all; zero for no bound.
struct Collars {
    using takes = Takes<Range<double>, Range<double>>;
    View<double> AnnRentCaps, AnnRentFloors;

    /// Rent n within its bounds.
    double collared(double rent, int n) const;
};

// --- One lease -------------------------------------------------------------------------------------------------------

/// InitRent until FirstRev, then reviews. FirstRev of zero, or RevMos or more past the end of the lease, is none.
double RentGrow(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                double MktRent, double InitRent, const Growth& growth, const Reviews& reviews, const Basis& basis,
                View<date> UOTog, int Brk);
double RentFcst(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                double InitRent, const Forecast& forecast, const Reviews& reviews, const Basis& basis, View<date> UOTog,
                int Brk);

/// Given rents only, by to-dates and by from-dates.
double TStepRent(const timeperiod& Time, const date& RentStart, View<date> ReviewDates, View<double> AnnRents,
                 const Basis& basis);
double FStepRent(const timeperiod& Time, View<date> BrksOrExp, View<date> FromDates, View<double> AnnRents,
                 const Basis& basis, int Brk);

/// Rent n up to review date n, then reviews to the market from the last of them on. A rent of zero is the market rent
/// at its start, less the discount but for the first one. Upward-only holds for the given rents too. Without review
/// dates the rent starts at the market.
double TStepRentGrow(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, double MktRent,
                     View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Reviews& reviews,
                     const Basis& basis, View<date> UOTog, int Brk);
double TStepRentFcst(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<date> ReviewDates,
                     View<double> AnnRents, const Forecast& forecast, const Reviews& reviews, const Basis& basis,
                     View<date> UOTog, int Brk);
/// The same with a cap and a floor for each rent but a first one that is given.
double TStepRentGrowCollar(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, double MktRent,
                           View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Collars& collars,
                           const Reviews& reviews, const Basis& basis, View<date> UOTog, int Brk);
double TStepRentFcstCollar(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<date> ReviewDates,
                           View<double> AnnRents, const Forecast& forecast, const Collars& collars,
                           const Reviews& reviews, const Basis& basis, View<date> UOTog, int Brk);

/// Rent n from date n on, then reviews to the market from RevToMkt on; zero for none.
double FStepRentGrow(const timeperiod& Time, View<date> BrksOrExp, double MktRent, View<date> FromDates,
                     View<double> AnnRents, const Growth& growth, const date& RevToMkt, const Reviews& reviews,
                     const Basis& basis, View<date> UOTog, int Brk);
double FStepRentFcst(const timeperiod& Time, View<date> BrksOrExp, View<date> FromDates, View<double> AnnRents,
                     const Forecast& forecast, const date& RevToMkt, const Reviews& reviews, const Basis& basis,
                     View<date> UOTog, int Brk);
double FStepRentFcstCollar(const timeperiod& Time, View<date> BrksOrExp, View<date> FromDates, View<double> AnnRents,
                           const Forecast& forecast, const Collars& collars, const date& RevToMkt,
                           const Reviews& reviews, const Basis& basis, View<date> UOTog, int Brk);

/// Older forms, with a period in years, reviews in years, and DownRev: 0 for upward-only reviews, 1 for others. Throw
/// errlibbadnum for any other DownRev.
double RentG(double Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev, double MktRent,
             double InitRent, const Growth& growth, double RevYears, int DownRev, double BaseYrs, const Basis& basis);
double StepRentG(double Time, const date& RentStart, View<date> BrksOrExp, double MktRent, View<date> ReviewDates,
                 View<double> AnnRents, const Growth& growth, double RevYears, int DownRev, double BaseYrs,
                 const Basis& basis);

// --- A lease and its relets ------------------------------------------------------------------------------------------
// AbFin, unless zero, ends the lease or relet that it falls into, and with it the chain. MktRent_s has the market rent
// of the lease, then of each relet, as at the first growth date.

double RentGrowR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                 View<double> MktRent_s, double InitRent, const Growth& growth, const Reviews& reviews,
                 const Relets& relets, const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts, int Brk);
double RentFcstR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                 double InitRent, const Forecast& forecast, const Reviews& reviews, const Relets& relets,
                 const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts, int Brk);
double TStepRentGrowR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                      View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Reviews& reviews,
                      const Relets& relets, const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts,
                      int Brk);
double TStepRentFcstR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<date> ReviewDates,
                      View<double> AnnRents, const Forecast& forecast, const Reviews& reviews, const Relets& relets,
                      const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts, int Brk);
double FStepRentGrowR(const timeperiod& Time, View<date> BrksOrExp, View<double> MktRent_s, View<date> FromDates,
                      View<double> AnnRents, const Growth& growth, const date& RevToMkt, const Reviews& reviews,
                      const Relets& relets, const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts,
                      int Brk);
double FStepRentFcstR(const timeperiod& Time, View<date> BrksOrExp, View<date> FromDates, View<double> AnnRents,
                      const Forecast& forecast, const date& RevToMkt, const Reviews& reviews, const Relets& relets,
                      const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts, int Brk);

/// TStepRentGrow and TStepRentGrowR with each rent times a weight: weight n is that of given rent n, then one of the
/// reviews that follow, then one of each relet; the last one applies to the rest. The terms have been checked.
double weighted_step_rent(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, double MktRent,
                          View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Reviews& reviews,
                          const Basis& basis, View<date> UOTog, int Brk, View<double> weights);
double weighted_chain_rent(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                           View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Reviews& reviews,
                           const Relets& relets, const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts,
                           int Brk, View<double> weights);

/// The same of what lies between AbsStart and AbsFinish; zero dates bound nothing. A payment counts for the part of
/// what it pays for that lies between them.
double TStepRentGrowSFR(const timeperiod& Time, const date& AbsStart, const date& RentStart, const date& AbsFinish,
                        View<date> BrksOrExp, View<double> MktRent_s, View<date> ReviewDates, View<double> AnnRents,
                        const Growth& growth, const Reviews& reviews, const Relets& relets, const Basis& basis,
                        const date& AbFin, View<date> UOTog, int ROpts, int Brk);
double TStepRentFcstSFR(const timeperiod& Time, const date& AbsStart, const date& RentStart, const date& AbsFinish,
                        View<date> BrksOrExp, View<date> ReviewDates, View<double> AnnRents, const Forecast& forecast,
                        const Reviews& reviews, const Relets& relets, const Basis& basis, const date& AbFin,
                        View<date> UOTog, int ROpts, int Brk);
double FStepRentGrowSFR(const timeperiod& Time, const Life& absolute, View<date> BrksOrExp, View<double> MktRent_s,
                        View<date> FromDates, View<double> AnnRents, const Growth& growth, const date& RevToMkt,
                        const Reviews& reviews, const Relets& relets, const Basis& basis, const date& AbFin,
                        View<date> UOTog, int ROpts, int Brk);
double FStepRentFcstSFR(const timeperiod& Time, const Life& absolute, View<date> BrksOrExp, View<date> FromDates,
                        View<double> AnnRents, const Forecast& forecast, const date& RevToMkt, const Reviews& reviews,
                        const Relets& relets, const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts,
                        int Brk);

} // namespace qx
