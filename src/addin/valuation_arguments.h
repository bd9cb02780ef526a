// Arguments that the functions of valuation share.
#pragma once

#include "addin/arguments.h"
#include "realestate/years_purchase.h"

namespace qx {

constexpr Argument Yield(const char* help = "Yield as a fraction, 0.07 is 7%: true (annual equivalent), or nominal "
                                            "under YieldTypeOpt 1") {
    return {"Yield", help};
}
constexpr Argument CapYield() {
    return Yield("Equivalent yield as a fraction, 0.07 is 7%: true (annual equivalent), or nominal under CapOptions 1");
}
constexpr Argument Valuation() { return {"Valuation", "Price, net of the purchaser's costs"}; }
constexpr Argument ValuationDate() {
    return {"ValuationDate", "Date of the valuation, from which deferrals are counted in decimal years"};
}
constexpr Argument positive_DisAER() {
    return {"DisAER", "Discount rate, an annual equivalent rate as a fraction, above zero: 0.09 is 9%"};
}
constexpr Argument GrowthRatePA() {
    return {"GrowthRatePA", "Growth of market rents a year as a fraction, -1 (-100%) or more: 0.03 is 3%"};
}
constexpr Argument MonthsDeferred() {
    return optional("MonthsDeferred", 0.0, "Months until the rent starts", "it starts now");
}
constexpr Argument RevMonths(const char* name = "RevMonths") {
    return optional(name, 12.0, "Months from one rent review to the next, above zero", "annual reviews");
}
constexpr Argument PmtsPerYearOpt() {
    return optional("PmtsPerYearOpt", 1.0,
                    "Number of payments Per Year (eg +4 = qtrly in advance, -4 = qtrly in arrear), not zero",
                    "annually in advance");
}
constexpr Argument payments_a_year() {
    return {"PmtsPerYear", "Number of payments Per Year (eg +4 = qtrly in advance, -4 = qtrly in arrear), not zero"};
}
constexpr Argument YieldTypeOpt() {
    return optional("YieldTypeOpt", 0, "0 true yield (annual equivalent), 1 nominal yield", "true yield")
        .within({0, 1})
        .of(yield_type_values);
}
/// YieldTerms and CapTerms.
constexpr ArgumentGroup yield_terms() { return {PmtsPerYearOpt(), YieldTypeOpt()}; }
constexpr ArgumentGroup cap_terms() {
    return {PmtsPerYearOpt(),
            optional("CapOptions", 0,
                     "Sum of options: 1 the yield is nominal, 2 the last rent becomes the greatest of all (upward-only "
                     "reversion)",
                     "none")};
}
constexpr Argument CostsPerc() {
    return optional("CostsPerc", 0.0, "Costs of the purchase as a fraction of the value, above -1: 0.0575 is 5.75%",
                    "no costs");
}
constexpr ArgumentGroup two_rents() {
    return {{"MktRent", "Market rent a year, today"},
            {"PassingAnnRent", "Rent a year that is paid now, until the next review"},
            {"MonthsNextRev", "Months until the next review, at which the market rent is paid"},
            optional("RentFreeMonths", 0.0, "Months without rent, from now on", "none")};
}
constexpr ArgumentGroup rent_list(const char* rents = "Rents a year, one for each deferral or one for all") {
    return {{"AnnRents", rents}, {"DeferralMonths", "Months until each rent starts, one for each rent"}};
}
constexpr ArgumentGroup
dated_rents(const char* rents = "Rents a year, one for each of the dates or one for all; zero for none") {
    return {Argument{"FromDates", "Dates from which the rents are paid, ascending"}.in_ascending_order(),
            {"AnnRents", rents}};
}
constexpr const char* market_rents =
    "Rents a year, one for each of the dates or one for all; zero for the market rent of the date";
constexpr const char* market_rent_last =
    "Rents a year, one for each of the dates or one for all; the last one is the market rent of today";
constexpr const char* deferred_market_rent_last =
    "Rents a year, one for each deferral or one for all; the last one is the market rent of today";

} // namespace qx
