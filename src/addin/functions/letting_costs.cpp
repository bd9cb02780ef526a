// Worksheet functions of the costs of lettings and of the fees on them.
#include "realestate/letting_costs.h"
#include "addin/amount_arguments.h"
#include "addin/declare.h"
#include "addin/service_charge_arguments.h"
#include "realestate/leasing_fees.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;

constexpr ArgumentGroup first_lease_payments() {
    return {optional("PmtDatesOpt", "Dates of payments for the first letting, in any order"),
            optional("PmtsOpt", "These payments, one for each date; of two lists the shorter governs")};
}
constexpr Argument LeaseStartOfCosts() {
    return {"LeaseStartDate", "Date on which the first lease starts. It has no effect: the payments for the first "
                              "letting have dates of their own"};
}
constexpr Argument ExpCost_s() {
    return {"ExpCost_s", "Cost at each expiry, the original lease's first, as at the first growth date; the last one "
                         "applies to the rest"};
}
constexpr Argument RelCost_s() {
    return {"RelCost_s",
            "Cost at the start of each relet, as at the first growth date; the last one applies to the rest"};
}
/// SpreadCosts.
constexpr ArgumentGroup spread(const Argument& cost, const char* months, const char* curve, const char* shape) {
    return {
        cost,
        optional(months, "Months over which each of these costs is spread, from its date on; 0 to pay it on the day"),
        optional(curve, "Reserved"),
        optional(shape, "Shape of each of these costs over its months, as in GSpread; even if omitted")};
}
constexpr Argument FeePerc_s() {
    return {"FeePerc_s", "Fees as fractions of a year's rent (0.1 is 10%): of the lease, then of each relet, of which "
                         "the last one applies to the rest"};
}
constexpr Argument LeaseStartDate() { return {"LeaseStartDate", "Date on which the lease starts, and its fee is due"}; }

} // namespace

constexpr Function LetCostRQ{
    .name = "LetCostRQ",
    .category = category,
    .calls = twin<qx::LetCostRQ>,
    .help = "Costs of letting in a period: payments for the first lease, then costs at each expiry and relet, grown to "
            "their dates",
    .args = {time_period(), LeaseStartOfCosts(), BrksOrExp(), first_lease_payments(), ExpCost_s(), RelCost_s(),
             growth(), relet_terms(), letting_end()},
    .examples = {"LetCostRQ(2010, 12, 2005, 2010, , , 500, 800, 2005, 0, 6, 5) ~ 1300 1e-9",
                 "LetCostRQ(2005, 12, 2005, 2010, 2005, 300, 500, 800, 2005, 0, 6, 5) = 300"},
    .see_also = "LetCostR,LeasingFeeGrowR,MkPmts",
};
QX_EXPORT(LetCostRQ, 15);

constexpr Function LetCostR{
    .name = "LetCostR",
    .category = category,
    .calls = twin<qx::LetCostR>,
    .help = "LetCostRQ with the costs spread over months from each expiry and each relet on",
    .args = {time_period(), LeaseStartOfCosts(), BrksOrExp(), first_lease_payments(),
             spread(ExpCost_s(), "ExpDur_s", "ExpCurve_s", "ExpShape_s"),
             spread(RelCost_s(), "RelDur_s", "RelCurve_s", "RelShape_s"), growth(), relet_terms(), letting_end()},
    .examples = {"LetCostR(2010, 3, 2005, 2010, , , 600, 6, , , 800, 0, , , 2005, 0, 6, 5) ~ 300 1e-9"},
    .see_also = "LetCostRQ,LeasingFeeGrowR,GSpread",
};
QX_EXPORT(LetCostR, 21);

constexpr Function LeasingFeeGrowR{
    .name = "LeasingFeeGrowR",
    .category = category,
    .calls = twin<qx::LeasingFeeGrowR>,
    .help = "Fees on lettings in a period: of the first rent at the start of a lease, then of the market rent, which "
            "grows, at the start of each relet",
    .args = {time_period(), FeePerc_s(), LeaseStartDate(), BrksOrExp(), MktRent_s(), InitRent(), growth(),
             relet_terms(), AbFin(), Brk()},
    .examples = {"LeasingFeeGrowR(2005, 12, 0.1, 2005, 2010, 1000, 900, 2005, 0.1) ~ 90 1e-9",
                 "LeasingFeeGrowR(2010, 12, 0.1, 2005, 2010, 1000, 900, 2005, 0.1) ~ 161.051 1e-9"},
    .see_also = "LeasingFeeFcstR,LetCostR,RentGrowR",
};
QX_EXPORT(LeasingFeeGrowR, 13);

constexpr Function LeasingFeeFcstR{
    .name = "LeasingFeeFcstR",
    .category = category,
    .calls = twin<qx::LeasingFeeFcstR>,
    .help = "Fees on lettings in a period: of the first rent at the start of a lease, then of the forecast of the "
            "market rent at the start of each relet",
    .args = {time_period(), FeePerc_s(), LeaseStartDate(), BrksOrExp(), InitRent(), rent_forecast(), relet_terms(),
             AbFin(), Brk()},
    .examples = {"LeasingFeeFcstR(2010, 12, {0.1;0.15}, 2005, 2010, 900, {1000;1200;1500}, 2005, 60) ~ 180 1e-9"},
    .see_also = "LeasingFeeGrowR,LetCostR,RentFcstR",
};
QX_EXPORT(LeasingFeeFcstR, 13);

} // namespace qx::worksheet
