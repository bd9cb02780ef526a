// Ledgers of the account simulators: dated movements, what they come to in a period, and the interest on them.
//
// A balance owed is positive and bears negative interest. Dates ascend, so that a period costs its own movements only,
// however long the ledger is. Figures are those of a loan with these advances and no repayment date.
#pragma once

#include "banking/loan_terms.h"
#include "projections/interest.h"

namespace qx {

/// The terms on which a ledger bears interest.
struct Charge {
    View<date> FromDates; ///< ascending
    View<double> rates;   ///< none for no interest
    double DayCount;
    const AnnualSequence& Periods;
    int Options = 0;               ///< InterestOption
    View<date> OverRideDates = {}; ///< ascending
    View<double> OverRides = {};
};

/// What a ledger comes to in a period.
struct LedgerFigures {
    double principal, interest, opening, average, closing;

    LedgerFigures& operator+=(const LedgerFigures& other);
};

/// The item of a list that holds on a date: that of the last date on or before it; 0 before the first date.
double level_on(const date& day, View<date> dates, View<double> levels);
/// The sum of the amounts whose dates lie in a period.
double sum_in(const timeperiod& Time, View<date> dates, View<double> amounts);

class Ledger {
  public:
    void clear();
    bool full() const { return dates_.size() == range_capacity; }
    bool empty() const { return dates_.size() == 0; }
    /// A movement, on or after the date of the one before.
    void move(const date& day, double amount);
    /// The sum of the movements.
    double balance() const { return empty() ? 0.0 : balances_.last(); }
    /// The sum of those in a period.
    double moved(const timeperiod& Time) const { return sum_in(Time, dates_, amounts_); }

    /// The interest in a period; 0 for one that ends before the first movement.
    double interest(const timeperiod& Time, const Charge& charge, const Accrual& accrual, double ProjMode) const;
    LedgerFigures figures(const timeperiod& Time, const Charge& charge, const Accrual& accrual, double ProjMode) const;

  private:
    double average(const timeperiod& Time, const Charge& charge) const;

    Range<date> dates_;
    Range<double> amounts_;
    Range<double> balances_;
};

/// What the loans that run through a whole period have in common there, so that a loan among many costs a
/// multiplication: the same interest and average, to the last bit, as loan by loan.
struct LoanPeriod {
    LoanPeriod(const timeperiod& Time, const Charge& charge, const Accrual& accrual, double ProjMode);

    /// True if the interest of a loan with this life is that of the span.
    bool holds(const date& start, const date& end) const;

    const timeperiod& Time;
    double ProjMode;
    timeperiod span; ///< whose interest the period holds
    date earliest,
        latest;          ///< a loan that starts on or before the one and ends on or after the other is no special case
    bool shared = false; ///< false under a composite day count, which asks for each loan's own dates
    double rate = 0.0;   ///< the average in the span
    double months = 0.0; ///< of the span
    double period_months = 0.0; ///< of the period itself
    double years = 0.0;
};

/// Loans of one lender, in the order of their start dates and so of their ends.
class LoanBook {
  public:
    void clear();
    int size() const { return amounts_.size(); }
    bool full() const { return size() == range_capacity; }
    /// A loan; `fixed_rate` counts where the charge's option says so.
    void lend(const date& start, const date& end, double amount, double fixed_rate);
    const date& start(int i) const { return starts_(i); }
    const date& end(int i) const { return ends_(i); }
    double amount(int i) const { return amounts_(i); }

    /// The interest on loan i in a period.
    double interest(int i, const LoanPeriod& period, const Charge& charge, const Accrual& accrual) const;
    LedgerFigures figures(int i, const LoanPeriod& period, const Charge& charge, const Accrual& accrual) const;

  private:
    double average(int i, const LoanPeriod& period, const Charge& charge) const;

    Range<date> starts_, ends_;
    Range<double> amounts_, fixed_rates_;
};

/// Option of a charge on loans: each bears the rate ruling on its start (as InterestOption unlimited_cash, which has no
/// meaning for a loan of its own dates).
inline constexpr int fixed_rate_loans = 1;

} // namespace qx
