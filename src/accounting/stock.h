// Stock: what was sold cost and what is left is worth, when units bought at different prices are used in one order or
// another. Movements count on their dates (a perpetual inventory): a sale takes from what there is on its day,
// purchases of the same day included. Sales entered on the last day of a period, in one sum, give the figures of a
// periodic inventory.
//
// Lists of dates ascend. Of dates and their figures the shorter list governs; one price serves for all. All throw
// errlibmin for a negative quantity, errlibmin and errlibmax for an unknown switch, and errlibnovalidanswer
// where more is sold than there is.
#pragma once

#include "calendar/time_period.h"
#include "core/takes.h"

namespace qx {

inline constexpr Limits cost_method_limits{0, 2};
inline constexpr Limits stock_switch_limits{0, 6};

/// Which units a sale takes.
enum CostMethod : int {
    last_in_first_out = 0,
    first_in_first_out = 1,
    average_cost = 2, ///< each at the average cost of all that are there (moving average)
};

/// Which figure is returned.
enum StockSwitch : int {
    stock_cost_of_sales = 0,     ///< what was sold in the period cost
    stock_cost_at_start = 1,     ///< what the stock at its start cost
    stock_cost_at_finish = 2,    ///< and at its end
    stock_quantity_at_start = 3, ///< units in stock at its start
    stock_quantity_at_finish = 4,
    stock_cost_of_purchases = 5, ///< what was bought in the period cost
    stock_quantity_sold = 6,     ///< units sold in the period
};

/// Purchases and sales of one kind of unit.
struct StockMovements {
    using takes = Takes<Range<date>, Range<double>, Range<double>, Range<date>, Range<double>>;
    View<date> PurchaseDates;
    View<double> PurchaseQtys;
    View<double> PurchasePrices; ///< of a unit
    View<date> SaleDates;
    View<double> SaleQtys;
};

/// The cost of what was sold in a period, or another figure of the stock. Stock at a date is that before its movements,
/// so that cost at start + purchases - cost of sales = cost at the end.
double LIFOCalc(const timeperiod& Time, const StockMovements& movements, int CostMethod, int StockSwitch);
/// The average cost of a unit of what is left at the end of a day; 0 if nothing is.
double LIFOPrice(const date& TheDate, const StockMovements& movements, int CostMethod);

} // namespace qx
