// Worksheet functions of index-linked bonds.
#include "addin/declare.h"
#include "addin/loan_arguments.h"
#include "banking/indexed_bond.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Banking;

constexpr ArgumentGroup coupons() {
    return {Argument{"CouponRateFromDates", "Dates from which the coupon rates hold, ascending"}.in_ascending_order(),
            {"CouponRatespa", "Coupon a year as a fraction of the uplifted nominal, one for each date or one for all"}};
}
constexpr ArgumentGroup settlement() {
    return {{"SettlementDate", "Date on which the bond is bought"},
            {"SettlementPrice", "Price paid for the nominal at settlement"},
            {"MaturityDate", "Date on which the bond is redeemed with its uplifts"}};
}
constexpr Argument IdxReg() {
    return optional("IdxReg", 12, "Months between index reviews; 0 is read as 12", "annually")
        .within(review_months_limits);
}
constexpr ArgumentGroup indexing() {
    return {optional("FirstIdxDate", "Date of the first index review; IdxReg months after the settlement if omitted"),
            optional("IdxLag", 0, "Months by which the index is read before a review").within(index_lag_limits)};
}
constexpr Argument BondOutput() {
    return optional(
        "BondOutput", 0,
        "0 and 2 price paid and redemption; otherwise as LoanOutput: 1 coupons; balance: 3 at the start, 4 average, 5 "
        "at the end; coupon accrued: 9 at the start, 10 at the end; 13 nominal and uplifts",
        "price and redemption");
}
constexpr ArgumentGroup bond_basis() { return {DayCountInt(), PrdsInt(), ProjMode()}; }

} // namespace

constexpr Function IdxBondGrow{
    .name = "IdxBondGrow",
    .category = category,
    .calls = twin<qx::IdxBondGrow>,
    .help = "Price, redemption, coupon or balance in a period of a bond whose capital is linked to an index that grows",
    .args = {time_period(), coupons(), settlement(), IdxReg(),
             ArgumentGroup{Argument{"IdxGrowDates", "Dates from which the growth rates of the index apply, ascending"}
                               .in_ascending_order(),
                           {"IdxGrowRates", "Growth of the index a year, one for each date: 0.03 is 3%"}},
             Argument{"IdxBaseDate", "Date at which the index is the base; 0 or blank for the settlement"}, indexing(),
             BondOutput(), bond_basis()},
    .examples = {"IdxBondGrow(2027, 12, 2025, 0.02, 2025, 1, 2027, 12, 2025, 0.1, 0) ~ -1.21 1e-12",
                 "IdxBondGrow(2026, 12, 2025, 0.02, 2025, 1, 2027, 12, 2025, 0.1, 0, , , 1) ~ -0.022 1e-12"},
    .see_also = "IdxBondFcst,Loan,GrowFromTo",
};
QX_EXPORT(IdxBondGrow, 17);

constexpr Function IdxBondFcst{
    .name = "IdxBondFcst",
    .category = category,
    .calls = twin<qx::IdxBondFcst>,
    .help = "Price, redemption, coupon or balance in a period of a bond whose capital is linked to an index forecast",
    .args = {time_period(), coupons(), settlement(), forecast("IdxFcstVals", "IdxStartFcst", "IdxFcstBase"), IdxReg(),
             optional("BaseDateOrIdx", 0.0,
                      "Date at which the index is the base, or its value there; the settlement if "
                      "0 or omitted"),
             indexing(), BondOutput(), bond_basis()},
    .examples = {"IdxBondFcst(2027, 12, 2025, 0.02, 2025, 1, 2027, {100;110;121}, 2025, 12) ~ -1.21 1e-12"},
    .see_also = "IdxBondGrow,Loan,IdxFromTo",
};
QX_EXPORT(IdxBondFcst, 18);

} // namespace qx::worksheet
