// Worksheet functions of business rates.
#include "realestate/business_rates.h"
#include "addin/declare.h"
#include "addin/service_charge_arguments.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;

constexpr ArgumentGroup growing_rates() {
    return {RatesMultiplier(),
            {"RateableValue", "Estimate of the annual market rent, as at the first growth date"},
            GrowthDates(),
            GrowthRates()};
}
constexpr ArgumentGroup forecast_rates() {
    return {
        RatesMultiplier(),
        {"StartFcst", "Date from which the first value of the forecast holds; before it the value is 0"},
        Argument{"FcstBase", "Months that each value of the forecast holds, 1 to 1000"}.within(forecast_base_limits),
        {"FcstRateableValues", "Annual market rents, one for each period of the forecast; they are read two years "
                               "before each revaluation"}};
}
constexpr ArgumentGroup liability() {
    return {Start("Date from which rates are due; the day itself counts"),
            Finish("Date up to which rates are due; the day itself does not count")};
}
constexpr Argument StartOfLease() { return Start("Date on which the first lease starts; the day itself counts"); }
constexpr Argument RatesHol_s() {
    return optional("RatesHol_s",
                    "Months without rates at the start of each void: of that before StartLease, then of that "
                    "before each relet; the last one applies to the rest, none if omitted");
}
constexpr Argument EmptyRatesFrac() {
    return optional("EmptyRatesFrac", 1.0, "Fraction of the rates that is due while empty: 0.5 is half of them", "all");
}

} // namespace

constexpr Function UKRatesGrow{
    .name = "UKRatesGrow",
    .category = category,
    .calls = twin<qx::UKRates<GrowingRateableValue>>,
    .help = "Business rates (England) in a period of up to 12 months: a rateable value that grows, fixed two years "
            "before each revaluation, times the multiplier of the year",
    .args = {time_period(), liability(), growing_rates(), inflation(), rates_basis()},
    .examples =
        {"UKRatesGrow(DATE(1998,4,1), 12, 1990, 2020, 0.42, 10000, 1990, 0) ~ 4740 1e-9",
         "UKRatesGrow(DATE(2006,4,1), 12, 1990, 2020, 0.42, 10000, 1993, 0.1, 0.03, 2005) - 10000 * 1.1 ^ 10.25 "
         "* 0.42 * 1.03 ~ 0 1e-9"},
    .see_also = "UKRatesFcst,UKRatesGrowR,UKEmptyRatesGrowR",
};
QX_EXPORT(UKRatesGrow, 13);

constexpr Function UKRatesFcst{
    .name = "UKRatesFcst",
    .category = category,
    .calls = twin<qx::UKRates<ForecastRateableValue>>,
    .help = "Business rates (England) in a period of up to 12 months: a forecast of rateable values, read two years "
            "before each revaluation, times the multiplier of the year",
    .args = {time_period(), liability(), forecast_rates(), inflation(), rates_basis()},
    .examples = {"UKRatesFcst(DATE(2005,4,1), 12, 1990, 2020, 0.42, 1993, 60, {10000;12000;15000}) ~ 6300 1e-9"},
    .see_also = "UKRatesGrow,UKRatesFcstR,UKEmptyRatesFcstR",
};
QX_EXPORT(UKRatesFcst, 13);

constexpr Function UKRatesGrowR{
    .name = "UKRatesGrowR",
    .category = category,
    .calls = twin<qx::UKRatesR<GrowingRateableValue>>,
    .help = "UKRatesGrow of a lease and of the relets after it",
    .args = {time_period(), StartOfLease(), BrksOrExp(), growing_rates(), inflation(), relet_terms(), rates_basis(),
             chain_end()},
    .examples = {"UKRatesGrowR(DATE(1998,4,1), 12, 1995, DATE(1998,7,1), 0.42, 10000, 1990, 0, , , 6, 5) ~ 2370 1e-9"},
    .see_also = "UKRatesGrow,UKRatesFcstR,UKEmptyRatesGrowR",
};
QX_EXPORT(UKRatesGrowR, 18);

constexpr Function UKRatesFcstR{
    .name = "UKRatesFcstR",
    .category = category,
    .calls = twin<qx::UKRatesR<ForecastRateableValue>>,
    .help = "UKRatesFcst of a lease and of the relets after it",
    .args = {time_period(), StartOfLease(), BrksOrExp(), forecast_rates(), inflation(), relet_terms(), rates_basis(),
             chain_end()},
    .examples = {"UKRatesFcstR(DATE(1998,4,1), 12, 1995, DATE(1998,7,1), 0.42, 1990, 60, 10000, , , 6, 5) ~ 2370 1e-9"},
    .see_also = "UKRatesFcst,UKRatesGrowR,UKEmptyRatesFcstR",
};
QX_EXPORT(UKRatesFcstR, 18);

constexpr Function UKEmptyRatesGrowR{
    .name = "UKEmptyRatesGrowR",
    .category = category,
    .calls = twin<qx::UKEmptyRates<GrowingRateableValue>>,
    .help = "Business rates (England) on the voids of a lease and of the relets after it, at a fraction and after a "
            "rate-free holiday; periods are up to 12 months",
    .args = {time_period(), StartCost(), StartLease(), BrksOrExp(), growing_rates(), inflation(), RatesHol_s(),
             relet_terms(), EmptyRatesFrac(), rates_basis(), chain_end()},
    .examples = {"UKEmptyRatesGrowR(DATE(1998,4,1), 12, 1995, 1995, DATE(1998,7,1), 0.42, 10000, 1990, 0, , , 3, 6, 5, "
                 "0.5) ~ 592.5 1e-9"},
    .see_also = "UKRatesGrowR,UKEmptyRatesFcstR,VacServChargeGrowR",
};
QX_EXPORT(UKEmptyRatesGrowR, 21);

constexpr Function UKEmptyRatesFcstR{
    .name = "UKEmptyRatesFcstR",
    .category = category,
    .calls = twin<qx::UKEmptyRates<ForecastRateableValue>>,
    .help = "UKEmptyRatesGrowR with a forecast of rateable values",
    .args = {time_period(), StartCost(), StartLease(), BrksOrExp(), forecast_rates(), inflation(), RatesHol_s(),
             relet_terms(), EmptyRatesFrac(), rates_basis(), chain_end()},
    .examples =
        {"UKEmptyRatesFcstR(DATE(1998,4,1), 12, 1995, 1995, DATE(1998,7,1), 0.42, 1990, 60, 10000, , , 3, 6, 5, "
         "0.5) ~ 592.5 1e-9"},
    .see_also = "UKRatesFcstR,UKEmptyRatesGrowR,VacServChargeFcstR",
};
QX_EXPORT(UKEmptyRatesFcstR, 21);

} // namespace qx::worksheet
