// Arguments that the functions of service charges, business rates and letting costs share.
#pragma once

#include "addin/rent_arguments.h"

namespace qx {

/// ReletTerms.
constexpr ArgumentGroup relet_terms() {
    return {
        optional("RelVoid_s", "Months of void before each relet; the last one applies to the rest, none if omitted"),
        optional("RelTerm_s", "Term of each relet in years, the last one applying to the rest; 15 if omitted")};
}
/// ChainEnd.
constexpr ArgumentGroup chain_end() {
    return {
        AbFin(),
        optional("ROpts", 0,
                 "Sum of options: 1 dates of relets are counted by the day count and its dates in the year, 2 dates "
                 "are rounded to the nearest of these",
                 "none"),
        Brk()};
}

/// The dates of a landlord's costs.
constexpr Argument StartCost() {
    return {"StartCost", "Date from which the landlord bears the cost; the day itself counts"};
}
constexpr Argument StartLease() {
    return {"StartLease", "Date on which the first lease starts; the day itself counts"};
}

/// ServiceChargeShare.
constexpr ArgumentGroup service_charge_share() {
    return {
        Argument{"SCFromDates", "Dates from which the shares apply, ascending; no charge without any", {Preset::empty}}
            .in_ascending_order(),
        {"SCPercentages",
         "The tenant's share of the total as a fraction (0.12 is 12%), one for each of the dates or one for all",
         {Preset::empty}}};
}

/// RatesDue, but for its value.
constexpr Argument RatesMultiplier() {
    return {"RatesMultiplier",
            "Rates multiplier at next revaluation date  Historic ones up to April 2005 are fixed in the function.  "
            "Recommend: use the latest known muliplier or what you estimate to be the multiplier at next revlautaion."};
}
constexpr ArgumentGroup inflation() {
    return {{"InflationRates",
             "Annual growth rates of the multiplier between revaluations as fractions, one for each of the dates",
             {Preset::empty}},
            Argument{"InflationDates",
                     "Dates from which the inflation rates apply, ascending; the last one applies for ever",
                     {Preset::empty}}
                .in_ascending_order()};
}
/// The basis of rates.
constexpr ArgumentGroup rates_basis() {
    return {DayCount(0.0).renamed("DCRates"),
            sequence("PrdsRates", 4,
                     "Dates in the year on which rates are paid: 1, 2, 4, 12 (13 English quarter days), negative in "
                     "arrears, or a range of mm.dd figures; ten of them are the ten-instalment system"),
            ProjMode()};
}

/// LettingEnd.
constexpr ArgumentGroup letting_end() {
    return {AbFin(), optional("Options", 0, "Sum of options: 1 the last expiry before AbFin costs nothing", "none"),
            Brk()};
}

} // namespace qx
