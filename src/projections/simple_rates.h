// Simple rates on dates: discount factors by accrual, and the rates that give them.
//
// Interest accrues under a day count (0 to 999) between the dates of an annual sequence, which must be in arrears
// (unnacceptabledata): simple within each piece between two dates, and joined to the capital at each date. Dated rates
// hold from FromDatesInt on and must be above -0.999999. A factor to an earlier date is the growth from it, above 1 for
// positive rates.
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"
#include "core/range.h"

namespace qx {

double SimpleToDFX(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                   double DayCountDisc, const AnnualSequence& PrdsDisc);
/// With a margin on the rate for the interest on the capital, but not for that on the interest.
double SimpleToDFXX(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                    double DayCountDisc, const AnnualSequence& PrdsDisc, double MarginOpt);
/// At one rate.
double SimpleToDFXS(double InterestSimple, const date& FromDate, const date& ToDate, double DayCountDisc,
                    const AnnualSequence& PrdsDisc);
/// The one simple rate that gives a factor; 0 between equal dates. Throws errlibnotbracketed if there is none.
double DFToSimpleX(double DiscountFactor, const date& FromDate, const date& ToDate, double DayCountDisc,
                   const AnnualSequence& PrdsDisc);
/// Less a margin.
double DFToSimpleXX(double DiscountFactor, const date& FromDate, const date& ToDate, double DayCountDisc,
                    const AnnualSequence& PrdsDisc, double MarginOpt);

double SimpleToAERX(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                    double DayCountDisc, const AnnualSequence& PrdsDisc);
double AERToSimpleX(double InterestAER, const date& FromDate, const date& ToDate, double DayCountDisc,
                    const AnnualSequence& PrdsDisc);
double SimpleToContX(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                     double DayCountDisc, const AnnualSequence& PrdsDisc);
double ContToSimpleX(double InterestCont, const date& FromDate, const date& ToDate, double DayCountDisc,
                     const AnnualSequence& PrdsDisc);
/// Rates under one rule of accrual as the one rate under another.
double SimpleToSimpleX(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                       double DayCountSource, double DayCountTarget, const AnnualSequence& PrdsSource,
                       const AnnualSequence& PrdsTarget);
/// The same with a margin on the rates; the result includes it.
double RateConvert(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                   double DayCountSource, double DayCountTarget, const AnnualSequence& PrdsSource,
                   const AnnualSequence& PrdsTarget, double MarginOpt);
double SimpleToAPRX(View<date> FromDatesInt, View<double> IntSimple, const date& FromDate, const date& ToDate,
                    double DayCountDisc, const AnnualSequence& PrdsDisc);
double APRToSimpleX(double InterestAPR, const date& FromDate, const date& ToDate, double DayCountDisc,
                    const AnnualSequence& PrdsDisc);

/// The present value of dated flows at dated simple rates; StartDCF and FinishDCF as in PVT.
double PVTSFX(const date& NPVDate, View<date> FromDatesInt, View<double> IntSimple, View<date> Dates,
              View<double> Cashflows, double DayCountDisc, const AnnualSequence& PrdsDisc, const date& StartDCF,
              const date& FinishDCF);
/// The present value of one payment.
double PVOneX(const date& NPVDate, View<date> FromDatesInt, View<double> IntSimple, const date& TheDate, double Payment,
              double DayCountDisc, const AnnualSequence& PrdsDisc);

// The present value of all interest on balances, each period's interest being paid at its end (or at Finish) and
// discounted at the same rates. Throw errliboveriterated for more than 2000 periods.
double PVFInterest(const date& NPVDate, View<date> FromDatesInt, View<double> IntSimple, const date& Finish,
                   View<date> FromDates, View<double> Balances, double DayCount, const AnnualSequence& PrdsInt);
double PVInterest(const date& NPVDate, double InterestSimple, const date& Start, const date& Finish, double Balance,
                  double DayCount, const AnnualSequence& PrdsInt);
double PVInterestX(const date& NPVDate, View<date> FromDatesInt, View<double> IntSimple, const date& Start,
                   const date& Finish, double Balance, double DayCount, const AnnualSequence& PrdsInt);

} // namespace qx
