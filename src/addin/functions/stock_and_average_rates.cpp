// Worksheet functions of stock sold in one order or another, and of rates averaged over a period.
#include "accounting/average_rates.h"
#include "accounting/stock.h"
#include "addin/declare.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::AccountingAndTax;

/// StockMovements.
constexpr ArgumentGroup stock_movements() {
    return {Argument{"PurchaseDates", "Dates of the purchases, ascending"}.in_ascending_order(),
            {"PurchaseQtys", "Units bought on each of these dates"},
            {"PurchasePrices", "Price of a unit at each purchase, or a single one for all"},
            Argument{"SaleDates", "Dates of the sales, ascending; what is bought on the same day can be sold on it"}
                .in_ascending_order(),
            Argument{"SaleQtys", "Units sold on each of these dates"}};
}
constexpr Argument CostMethod() {
    return optional(
               "CostMethod", 0,
               "Which units are sold: 0 last in first out, 1 first in first out, 2 each at the average cost of all "
               "in stock",
               "last in first out")
        .within(cost_method_limits);
}

constexpr Argument Rates() { return {"Rates", "The rates, one for each of the dates, or a single one for all"}; }
constexpr Argument YearStart() {
    return sequence("YearStart", 1,
                    "Date on which the year starts, as a figure mm.dd: 4.06 for 6 April; 1 for 1 January, 4 for "
                    "quarters instead of years");
}
constexpr ArgumentGroup rate_measure() { return {DayCount(), Periods()}; }

} // namespace

// --- Stock ----------------------------------------------------------------------------------------------------------

constexpr Function LIFOCalc{
    .name = "LIFOCalc",
    .category = category,
    .calls = twin<qx::LIFOCalc>,
    .help = "Cost in a period of what was sold from stock, or the stock itself: last in first out, first in first out "
            "or at average cost",
    .args = {time_period(), stock_movements(), CostMethod(),
             optional("StockSwitch", 0,
                      "0 cost of what is sold; cost of the stock 1 at start, 2 at end; units in stock 3 at start, 4 at "
                      "end; in the period 5 cost of what is bought, 6 units sold")
                 .within(stock_switch_limits)},
    .examples = {"LIFOCalc(2005, 12, {2005;2005.25}, {100;100}, {10;12}, 2005.5, 150) = 1700",
                 "LIFOCalc(2005, 12, {2005;2005.25}, {100;100}, {10;12}, 2005.5, 150, 1) = 1600",
                 "LIFOCalc(2005, 12, {2005;2005.25}, {100;100}, {10;12}, 2005.5, 150, 1, 2) = 600"},
    .see_also = "LIFOPrice",
};
QX_EXPORT(LIFOCalc, 9);

constexpr Function LIFOPrice{
    .name = "LIFOPrice",
    .category = category,
    .calls = twin<qx::LIFOPrice>,
    .help = "Cost of a unit of what is left in stock at the end of a day: last in first out, first in first out or at "
            "average cost",
    .args = {TheDate(), stock_movements(), CostMethod()},
    .examples = {"LIFOPrice(2006, {2005;2005.25}, {100;100}, {10;12}, 2005.5, 150) = 10",
                 "LIFOPrice(2006, {2005;2005.25}, {100;100}, {10;12}, 2005.5, 150, 2) = 11"},
    .see_also = "LIFOCalc",
};
QX_EXPORT(LIFOPrice, 7);

// --- Average rates --------------------------------------------------------------------------------------------------

constexpr Function FAvRate{
    .name = "FAvRate",
    .category = category,
    .calls = twin<qx::FAvRate>,
    .help = "Average over a period of a rate that changes on from-dates, such as a tax rate, weighted by the time for "
            "which it holds",
    .args = {time_period(), FromDates(), Rates(), rate_measure()},
    .examples = {"FAvRate(2005, 12, {2004;2005.25}, {0.3;0.28}) ~ 0.285 1e-12"},
    .see_also = "FAvRateTD,TAvRate,FALevels",
};
QX_EXPORT(FAvRate, 6);

constexpr Function FAvRateTD{
    .name = "FAvRateTD",
    .category = category,
    .calls = twin<qx::FAvRateTD>,
    .help = "Average over the year to date, up to the end of a period, of a rate that changes on from-dates",
    .args = {time_period(), FromDates(), Rates(), YearStart(), rate_measure()},
    .examples = {"FAvRateTD(2005.25, 3, {2004;2005.25}, {0.3;0.28}) ~ 0.29 1e-12",
                 "FAvRateTD(2005.25, 3, {2004;2005.25}, {0.3;0.28}, 4.01) ~ 0.28 1e-12"},
    .see_also = "FAvRate,TAvRateTD",
};
QX_EXPORT(FAvRateTD, 7);

constexpr Function TAvRate{
    .name = "TAvRate",
    .category = category,
    .calls = twin<qx::TAvRate>,
    .help = "Average over a period of a rate that changes on to-dates, such as a tax rate, weighted by the time for "
            "which it holds",
    .args = {time_period(), ToDates(), Rates(), rate_measure()},
    .examples = {"TAvRate(2005, 12, {2005.25;2010}, {0.3;0.28}) ~ 0.285 1e-12"},
    .see_also = "TAvRateTD,FAvRate,TALevels",
};
QX_EXPORT(TAvRate, 6);

constexpr Function TAvRateTD{
    .name = "TAvRateTD",
    .category = category,
    .calls = twin<qx::TAvRateTD>,
    .help = "Average over the year to date, up to the end of a period, of a rate that changes on to-dates",
    .args = {time_period(), ToDates(), Rates(), YearStart(), rate_measure()},
    .examples = {"TAvRateTD(2005.25, 3, {2005.25;2010}, {0.3;0.28}) ~ 0.29 1e-12"},
    .see_also = "TAvRate,FAvRateTD",
};
QX_EXPORT(TAvRateTD, 7);

} // namespace qx::worksheet
