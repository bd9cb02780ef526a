// Index-linked bonds: a loan of one unit of nominal whose capital is uplifted by an index at each review, scaled by the
// price paid. Price and index are ratios to the nominal: 1.02 is 102 for 100.
#pragma once

#include "banking/loan_terms.h"
#include "calendar/anyvalue.h"
#include "calendar/time_period.h"

namespace qx {

inline constexpr Limits index_lag_limits{-1000, 1000};

/// When the capital is uplifted.
struct BondIndexing {
    using takes = Takes<date, int>;
    const date& FirstIdxDate; ///< without one, a review's interval after the settlement
    int IdxLag;               ///< months by which the index is read earlier
};

/// The principal (BondOutput 0 or 2), or what Loan gives for a BondOutput, of a bond that holds from SettlementDate to
/// MaturityDate with coupons at CouponRatespa on its uplifted capital. Reviews are IdxReg months apart (0 is 12) and
/// the last uplift is that of maturity. The index grows from IdxBaseDate, or from the settlement without one.
double IdxBondGrow(const timeperiod& Time, const SimpleRates& coupons, const date& SettlementDate,
                   double SettlementPrice, const date& MaturityDate, int IdxReg, const Growth& growth,
                   const date& IdxBaseDate, const BondIndexing& indexing, int BondOutput, const Basis& basis);
/// The same with the index from a forecast; its base is a date, its value there, or the settlement.
/// Both throw errlibmin and errlibmax for an IdxReg outside 0 to 1000 and an IdxLag outside -1000 to 1000.
double IdxBondFcst(const timeperiod& Time, const SimpleRates& coupons, const date& SettlementDate,
                   double SettlementPrice, const date& MaturityDate, const Forecast& index, int IdxReg,
                   const dateorfloat& BaseDateOrIdx, const BondIndexing& indexing, int BondOutput, const Basis& basis);

} // namespace qx
