// Present values of projections: of streams at constant and stepped rates, of spreads and of dated payments. Each takes
// the terms of the function whose amounts it values, discounts what falls due on the payment dates of CashBasis, and
// agrees with that function laid out over the dates of its walk (present_value.h). Nothing is worked out in closed
// form.
//
// Beside the errors of the function that they value, all throw errlibmin and errlibmax for a DayCount or DayCountDisc
// outside 0 to 999, errlibmin for a DisAER below -0.999999, and errliboveriterated for a stream of 2000 payment dates
// or more.
#pragma once

#include "projections/curves.h"
#include "projections/payments.h"
#include "projections/present_value.h"
#include "projections/spreads.h"
#include "projections/steps.h"

namespace qx {

// --- Streams ---------------------------------------------------------------------------------------------------------
// Several streams are walked together from the earliest start to the latest finish.

double PVCon(const Discount& at, const Streams& streams, const CashTerms& terms);
double PVConGrow(const Discount& at, const Streams& streams, const Growth& growth, int RevMonthsOpt,
                 const CashTerms& terms);
double PVAnnGrow(const Discount& at, const Streams& streams, const Growth& growth, const CashTerms& terms);
double PVConGrowQ(const Discount& at, const Life& life, double AnnualRate, const date& GrowFrom, double GrowthRatePA,
                  int RevMos, const CashTerms& terms);

/// Of FStep and TStep.
template <class Steps>
double PVStep(const Discount& at, const Steps& steps, View<double> AnnualRates, const CashTerms& terms);
/// The same with a discount rate for each annual rate: what step n pays is discounted at rate n, of which the last one
/// applies to all steps that follow.
template <class Steps>
double PVStepIC(const date& NPVDate, View<double> DisAER, const Steps& steps, View<double> AnnualRates,
                const CashTerms& terms);

// --- Spreads ---------------------------------------------------------------------------------------------------------

double PVUniSpread(const Discount& at, const Streams& streams, const CashTerms& terms);
double PVSCurve(const Discount& at, const Streams& streams, double Skew, double Peakness, const CashTerms& terms);
double PVSCurveGrow(const Discount& at, const CurvedSpread& spread, const Growth& growth, const CashTerms& terms);
/// Of a general, a cumulative, a distributed or a stepped spread.
template <Spread S>
double PVSpread(const Discount& at, const S& spread, const CashTerms& terms);

// --- Dated payments --------------------------------------------------------------------------------------------------
// Each payment is discounted from its own date. DayCount and CashBasis have no say.

double PVMkPmts(const Discount& at, const Payments& payments, const CashTerms& terms);
double PVMkPmtsSF(const Discount& at, const Life& life, const Payments& payments, const CashTerms& terms);
double PVMkPmtsWeighted(const Discount& at, double Total, View<date> PmtDates, View<double> Weights,
                        const CashTerms& terms);

} // namespace qx
