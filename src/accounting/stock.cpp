#include "accounting/stock.h"

#include "core/pools.h"
#include "core/routine.h"
#include "core/view.h"

#include <algorithm>
#include <cmath>

namespace qx {

namespace {

/// What is in stock: layers of units bought at one price each.
class Stock {
  public:
    explicit Stock(int method) : method_(method) {}

    void buy(double units, double price) {
        if (units <= 0.0) return;
        quantity_ += units;
        cost_ += units * price;
        if (method_ == average_cost) return;
        units_->append(units);
        prices_->append(price);
    }

    /// Takes units out and gives what they cost; `missing` is how many there were not.
    double sell(double units, double& missing) {
        // What is left of decimal quantities that ought to cancel is nothing.
        const bool all = std::fabs(units - quantity_) <= tolerance * std::max(1.0, quantity_);
        missing = all ? 0.0 : std::max(units - quantity_, 0.0);
        const double cost = all                       ? cost_
                            : method_ == average_cost ? safe_divide(cost_, quantity_) * units
                                                      : take_layers(units);
        quantity_ -= units;
        cost_ -= cost;
        if (all) {
            quantity_ = cost_ = 0.0;
            units_->dimension(0);
            prices_->dimension(0);
            first_ = 1;
        }
        return cost;
    }

    double quantity() const { return quantity_; }
    double cost() const { return cost_; }

  private:
    double take_layers(double units) {
        double cost = 0.0;
        while (units > 0.0 && first_ <= units_.size()) {
            const int layer = method_ == first_in_first_out ? first_ : units_.size();
            const double taken = std::min(units, units_(layer));
            cost += taken * prices_(layer);
            units -= taken;
            units_(layer) -= taken;
            if (units_(layer) > 0.0) break;
            if (method_ == first_in_first_out) {
                ++first_;
            } else {
                units_->dimension(layer - 1);
                prices_->dimension(layer - 1);
            }
        }
        return cost;
    }

    int method_;
    double quantity_ = 0.0, cost_ = 0.0;
    WorkList<double> units_, prices_;
    int first_ = 1; ///< the oldest layer of which there is something left
};

/// The movements in the order of their dates, up to a day that is not counted.
class Ledger {
  public:
    Ledger(Routine& here, const StockMovements& movements, int method)
        : here_(here), movements_(movements), stock_(method),
          purchases_(std::min(movements.PurchaseDates.size(), movements.PurchaseQtys.size())),
          sales_(std::min(movements.SaleDates.size(), movements.SaleQtys.size())) {
        here.limit(method, cost_method_limits, "CostMethod");
        for (const double units : movements.PurchaseQtys) here.at_least(units, 0.0, "PurchaseQtys");
        for (const double units : movements.SaleQtys) here.at_least(units, 0.0, "SaleQtys");
    }

    void move_up_to(const date& end) {
        for (;;) {
            const bool buys = bought_ < purchases_ && movements_.PurchaseDates(bought_ + 1) < end;
            const bool sells = sold_ < sales_ && movements_.SaleDates(sold_ + 1) < end;
            if (buys && (!sells || movements_.PurchaseDates(bought_ + 1) <= movements_.SaleDates(sold_ + 1)))
                buy(++bought_);
            else if (sells)
                sell(++sold_);
            else
                return;
        }
    }

    const Stock& stock() const { return stock_; }
    double cost_of_purchases() const { return cost_of_purchases_; }
    double cost_of_sales() const { return cost_of_sales_; }
    double units_sold() const { return units_sold_; }
    /// Begins the sums anew.
    void open_period() { cost_of_purchases_ = cost_of_sales_ = units_sold_ = 0.0; }

  private:
    void buy(int i) {
        const double units = movements_.PurchaseQtys(i), price = movements_.PurchasePrices.single_or(i);
        here_.info(movements_.PurchaseDates(i), ": bought ", units, " at ", price);
        stock_.buy(units, price);
        cost_of_purchases_ += units * price;
    }
    void sell(int i) {
        const double units = movements_.SaleQtys(i), there = stock_.quantity();
        double missing = 0.0;
        const double cost = stock_.sell(units, missing);
        if (missing > 0.0)
            here_.fail<errlibnovalidanswer>("SaleQtys", "On ", movements_.SaleDates(i), " there are ", there,
                                            " in stock and ", units, " are sold");
        here_.info(movements_.SaleDates(i), ": sold ", units, ", which cost ", cost);
        cost_of_sales_ += cost;
        units_sold_ += units;
    }

    const Routine& here_;
    const StockMovements& movements_;
    Stock stock_;
    const int purchases_, sales_;
    int bought_ = 0, sold_ = 0;
    double cost_of_purchases_ = 0.0, cost_of_sales_ = 0.0, units_sold_ = 0.0;
};

} // namespace

double LIFOCalc(const timeperiod& Time, const StockMovements& movements, int CostMethod, int StockSwitch) {
    Routine here{"LIFOCalc"};
    here.inputs(Time, movements, CostMethod, StockSwitch);
    Ledger ledger(here, movements, CostMethod);
    here.limit(StockSwitch, stock_switch_limits, "StockSwitch");
    ledger.move_up_to(Time.from());
    if (StockSwitch == stock_cost_at_start) return here.returning(ledger.stock().cost());
    if (StockSwitch == stock_quantity_at_start) return here.returning(ledger.stock().quantity());
    ledger.open_period();
    ledger.move_up_to(Time.to());
    switch (StockSwitch) {
    case stock_cost_at_finish:
        return here.returning(ledger.stock().cost());
    case stock_quantity_at_finish:
        return here.returning(ledger.stock().quantity());
    case stock_cost_of_purchases:
        return here.returning(ledger.cost_of_purchases());
    case stock_quantity_sold:
        return here.returning(ledger.units_sold());
    default:
        return here.returning(ledger.cost_of_sales());
    }
}

double LIFOPrice(const date& TheDate, const StockMovements& movements, int CostMethod) {
    Routine here{"LIFOPrice"};
    here.inputs(TheDate, movements, CostMethod);
    Ledger ledger(here, movements, CostMethod);
    ledger.move_up_to(TheDate.plusdays(1));
    return here.returning(safe_divide(ledger.stock().cost(), ledger.stock().quantity()));
}

} // namespace qx
