// The four forms of an interest rate, and conversions among them:
//
//     an annual equivalent rate (AER)       growth over one year is 1 + AER
//     a continuous rate (Cont)              e^Cont
//     a simple rate (Simple), p times a year (1 - Simple / p)^-p
//     a discount factor (DF)                1 over the growth between two dates
//
// Rates are fractions a year: 0.08 is 8%. PmtsPerYear is positive for payments in advance and negative for payments in
// arrears: -4 is quarterly in arrears; 0 reads as -1; its size is at most 1e6. Rates at or below -0.999999 throw
// errlibmin; so does a DayCount below 0, and one above 999 throws errlibmax.
//
// In the names, APR stands for the same as AER (older workbooks).
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"

namespace qx {

double AERToCont(double InterestAER);
double ContToAER(double InterestCont);
double AERToSimple(double InterestAER, double PmtsPerYear);
double SimpleToAER(double InterestSimple, double PmtsPerYear);
double ContToSimple(double InterestCont, double PmtsPerYear);
/// Throws errlibmax for a rate in advance of 100% or more a period.
double SimpleToCont(double InterestSimple, double PmtsPerYear);
/// A simple rate at one frequency of payment as that of another.
double SimpleToSimple(double InterestSimple, double PmtsPerYrSrce, double PmtsPerYrTarg);
/// The growth over a term in years, less 1.
double TermRate(double InterestAER, double TermYrs);

// Discount factors from one date to another, above 1 if ToDate is before FromDate.
double AERToDF(double InterestAER, const date& FromDate, const date& ToDate, double DayCount,
               const AnnualSequence& Periods);
double ContToDF(double InterestCont, const date& FromDate, const date& ToDate, double DayCount,
                const AnnualSequence& Periods);
/// Throws errlibmax for a rate in advance of 100% or more a period.
double SimpleToDF(double InterestSimple, double PmtsPerYear, const date& FromDate, const date& ToDate, double DayCount,
                  const AnnualSequence& Periods);
// The rates that give a discount factor; 0 between equal dates.
double DFToAER(double DiscountFactor, const date& FromDate, const date& ToDate, double DayCount,
               const AnnualSequence& Periods);
/// Throws errlibmin unless the factor is positive.
double DFToCont(double DiscountFactor, const date& FromDate, const date& ToDate, double DayCount,
                const AnnualSequence& Periods);
double DFToSimple(double DiscountFactor, double PmtsPerYear, const date& FromDate, const date& ToDate, double DayCount,
                  const AnnualSequence& Periods);

double APRToCont(double InterestAPR);
double ContToAPR(double InterestCont);
double APRToSimple(double InterestAPR, double PmtsPerYear);
double SimpleToAPR(double InterestSimple, double PmtsPerYear);
double APRToDF(double InterestAPR, const date& FromDate, const date& ToDate, double DayCount,
               const AnnualSequence& Periods);
double DFToAPR(double DiscountFactor, const date& FromDate, const date& ToDate, double DayCount,
               const AnnualSequence& Periods);

/// What the older APR forms say in the trace and in their help.
inline constexpr const char* superseded_apr =
    "Superceded by AER (annual equivalent rate) equivalent, no change in math";

} // namespace qx
