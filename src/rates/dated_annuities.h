// Level payments on dates: a loan drawn on DrawDate and repaid on the next NumPmts dates of the sequence PrdsInt, at a
// simple rate that accrues under a day count, simple within a period and compounded at each payment. With t(i) the
// years of period i and d(i) = 1 / ((1 + rate t(1)) ... (1 + rate t(i))):
//
//     PresentValue + Pmt (d(1) + ... + d(N)) - FVOpt d(N) = 0
//
// Each function solves this for one of its letters. DayCount 0 to 999, NumPmts 1 to 10000, InterestSimple above
// -0.999999; otherwise errlibmin or errlibmax.
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"

namespace qx {

/// The level payment.
double PMTX(double PresentValue, const date& DrawDate, int NumPmts, double InterestSimple, double FVOpt,
            double DayCount, const AnnualSequence& PrdsInt);
double PMTQX(double PresentValue, const date& DrawDate, int NumPmts, double InterestSimple, double FVOpt,
             double DayCount, const AnnualSequence& PrdsInt);
double PVQX(double InterestSimple, const date& DrawDate, int NumPmts, double Pmt, double FVOpt, double DayCount,
            const AnnualSequence& PrdsInt);
double PVQXX(double InterestSimple, const date& DrawDate, int NumPmts, double Pmt, double FVOpt, double DayCount,
             const AnnualSequence& PrdsInt);
double FVQX(double PresentValue, const date& DrawDate, int NumPmts, double InterestSimple, double Pmt, double DayCount,
            const AnnualSequence& PrdsInt);
/// The simple rate. Throws errlibnotbracketed if there is none.
double RateQX(double PresentValue, const date& DrawDate, int NumPmts, double Pmt, double FVOpt, double DayCount,
              const AnnualSequence& PrdsInt);
double IntRateX(double PresentValue, const date& DrawDate, int NumPmts, double Pmt, double FVOpt, double DayCount,
                const AnnualSequence& PrdsInt);
/// How many payments repay the loan, the last perhaps in part. Throws errliboveriterated if 10000 do not.
double NPerQX(double PresentValue, const date& DrawDate, double Pmt, double InterestSimple, double FVOpt,
              double DayCount, const AnnualSequence& PrdsInt);

} // namespace qx
