// Worksheet functions of rents under the names of older workbooks, whose period is a date and a length in years.
#include "addin/declare.h"
#include "addin/rent_arguments.h"
#include "realestate/rents.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Compatibility;

constexpr Argument StartOfTime() {
    return {"Time", "Start of the time period, as a date, a date number or a (decimal) year"};
}
constexpr Argument RevYears() {
    return optional("RevYears", 0.0, "Years between reviews, in whole months; 0 for reviews that do not recur", "none");
}
constexpr Argument DownRev() {
    return optional("DownRev", 0, "0 reviews are upward-only, 1 the rent may fall", "upward-only");
}
constexpr Argument BaseYrs() {
    return {"BaseYrs", "Length of the time period in years, in whole months: 0.25 is a quarter; from 1900 on its end"};
}

} // namespace

constexpr Function RentG{
    .name = "RentG",
    .category = category,
    .calls = twin<qx::RentG>,
    .help = "Rent in a period of a lease with regular reviews to a market rent that grows. New workbooks use RentGrow",
    .args = {StartOfTime(), lease(), FirstRev(), MktRent(), InitRent(), growth(), RevYears(), DownRev(), BaseYrs(),
             basis()},
    .examples = {"RentG(2010, 2005, 2020, 2010, 1000, 900, 2005, 0.1, 5, 0, 1) ~ 1610.51 1e-9"},
    .see_also = "RentGrow",
};
QX_EXPORT(RentG, 14);

constexpr Function StepRentG{
    .name = "StepRentG",
    .category = category,
    .calls = twin<qx::StepRentG>,
    .help = "Rent in a period of a lease with rents up to given dates, then regular reviews to a market rent that "
            "grows. New workbooks use TStepRentGrow",
    .args = {StartOfTime(), lease(), MktRent(), rents_to_dates(), growth(), RevYears(), DownRev(), BaseYrs(), basis()},
    .examples = {"StepRentG(2009, 2005, 2020, 1000, 2010, 900, 2005, 0.1, 5, 0, 2) ~ 2510.51 1e-9"},
    .see_also = "TStepRentGrow",
};
QX_EXPORT(StepRentG, 14);

} // namespace qx::worksheet
