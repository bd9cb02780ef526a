// Level annuities: a payment of AnnPmt a year, received PmtsPerYear times a year (positive in advance, negative in
// arrears, 0 read as -1; at most 1e6 either way) at an annual equivalent rate above -0.999999, over a term in years.
//
// Money received and money paid have opposite signs: the present value of positive payments is negative. FVOpt is a
// single amount at the end of the term, of the same sign as the payments. Five letters, one equation:
//
//     PresentValue + A(AnnPmt) + FVOpt / (1 + InterestAER)^TermYrs = 0
//
// and corrections that turn the present value of a year's income received at its end into that of income received in
// the course of the year.
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"

namespace qx {

/// The value at its start of an annuity of P a year for n years at rate r, paid p (not 0) times a year.
double annuity_value(double P, double r, double n, double p);
/// An amount n years off, at rate r.
double discounted_future_value(double amount, double r, double n);

double PVM(double AnnPmt, double InterestAER, double TermYrs, double PmtsPerYear, double FVOpt);
/// Throws errlibinfiniteresult for a zero term.
double PmtM(double PresentValue, double InterestAER, double TermYrs, double PmtsPerYear, double FVOpt);
double FVM(double AnnPmt, double PresentValue, double InterestAER, double TermYrs, double PmtsPerYear);
/// The term in years. Throws errlibnotbracketed if no term pays for the present value.
double TermM(double AnnPmt, double PresentValue, double InterestAER, double PmtsPerYear, double FVOpt);
/// The annual equivalent rate. Throws errlibnotbracketed if there is none.
double IntRateM(double AnnPmt, double PresentValue, double TermYrs, double PmtsPerYear, double FVOpt);

// The older sign convention: payments and present value bear the same sign.
double PVMB(double AnnPmt, double InterestAER, double TermYrs, double PmtsPerYear, double FVOpt);
double PmtMB(double PresentValue, double InterestAER, double TermYrs, double PmtsPerYear, double FVOpt);

/// A year's income received p (not 0) times in the year, over the same received at its end.
double spread_correction(double r, double p);
/// The average time in the year, in years from its start, of p (not 0) payments weighted by their present values.
double spread_time(double r, double p);

double CorrectionM(double DisAER, double PmtsPerYear);
/// Throws errlibinfiniteresult at -100%.
double CorrectionCont(double DisAER);
double CorrectionDC(const date& NPVDate, double DisAER, double DayCount, const AnnualSequence& CashBasis);
/// The average over a year of income that grows linearly in steps, over the same growing at the year's end only.
/// GrowRevsPerYrOpt: steps a year, 0 for continuous growth.
double LCorrectionM(double GrowthRatePA, double GrowRevsPerYrOpt);
/// The time in the year, in years from its start, at which the year's income could be received at once.
double EffTimeM(double DisAER, double PmtsPerYear);

} // namespace qx
