#include "banking/indexed_bond.h"

#include "banking/loan.h"
#include "banking/loan_schedules.h"
#include "core/routine.h"
#include "projections/forecast.h"
#include "projections/growth.h"

namespace qx {

namespace {

constexpr int months_of_year = 12;
constexpr int loan_principal_too = loan_principal_and_interest; ///< gives the principal alone

int review_interval(int IdxReg) { return IdxReg == 0 ? months_of_year : IdxReg; }

/// A bond with its capital as a list of uplifts.
double read_off(const timeperiod& Time, const SimpleRates& coupons, const Payments& capital, const date& SettlementDate,
                double SettlementPrice, const date& MaturityDate, int BondOutput, const Basis& basis) {
    if (BondOutput != loan_principal && BondOutput != loan_principal_too)
        return Loan(Time, coupons, capital, MaturityDate, BondOutput, basis) * SettlementPrice;
    double redeemed = 0.0;
    for (const double uplift : capital.Pmts) redeemed += uplift;
    return payment_in(Time, SettlementDate, SettlementPrice) -
           payment_in(Time, MaturityDate, redeemed) * SettlementPrice;
}

} // namespace

double IdxBondGrow(const timeperiod& Time, const SimpleRates& coupons, const date& SettlementDate,
                   double SettlementPrice, const date& MaturityDate, int IdxReg, const Growth& growth,
                   const date& IdxBaseDate, const BondIndexing& indexing, int BondOutput, const Basis& basis) {
    Routine here{"IdxBondGrow"};
    here.inputs(Time, coupons, SettlementDate, SettlementPrice, MaturityDate, IdxReg, growth, IdxBaseDate, indexing,
                BondOutput, basis);
    basis.check(here);
    here.limit(IdxReg, review_months_limits, "IdxReg");
    here.limit(indexing.IdxLag, index_lag_limits, "IdxLag");
    const date& base = IdxBaseDate.iszero() ? SettlementDate : IdxBaseDate;
    const Payments capital = loan_schedules().grown_bond.build(
        here, {SettlementDate, MaturityDate, review_interval(IdxReg), indexing.FirstIdxDate, indexing.IdxLag},
        [&](const date& day) { return GrowFromTo(base, day, 1.0, growth, growth_exponential, 0, any_measure()); }, base,
        growth.dates, growth.rates);
    return here.returning(
        read_off(Time, coupons, capital, SettlementDate, SettlementPrice, MaturityDate, BondOutput, basis));
}

double IdxBondFcst(const timeperiod& Time, const SimpleRates& coupons, const date& SettlementDate,
                   double SettlementPrice, const date& MaturityDate, const Forecast& index, int IdxReg,
                   const dateorfloat& BaseDateOrIdx, const BondIndexing& indexing, int BondOutput, const Basis& basis) {
    Routine here{"IdxBondFcst"};
    here.inputs(Time, coupons, SettlementDate, SettlementPrice, MaturityDate, index, IdxReg, BaseDateOrIdx, indexing,
                BondOutput, basis);
    basis.check(here);
    index.check(here, "IdxFcstBase");
    here.limit(IdxReg, review_months_limits, "IdxReg");
    here.limit(indexing.IdxLag, index_lag_limits, "IdxLag");
    dateorfloat base = BaseDateOrIdx;
    if (!base.isnumber() || iszero(base.number())) base.setnumber(SettlementDate.dtn());
    const Payments capital = loan_schedules().forecast_bond.build(
        here, {SettlementDate, MaturityDate, review_interval(IdxReg), indexing.FirstIdxDate, indexing.IdxLag},
        [&](const date& day) { return IdxFromTo(base, day, index); }, base.number(), index.values, index.start,
        index.base);
    return here.returning(
        read_off(Time, coupons, capital, SettlementDate, SettlementPrice, MaturityDate, BondOutput, basis));
}

} // namespace qx
