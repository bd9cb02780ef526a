// The schedules of loans that are built from other inputs, kept from call to call: a model calls a loan function once a
// period and output with the same inputs, and each call but the first finds its schedule made.
//
// All of them are in one store, which the lock around a worksheet call guards (addin/frame.h). A call that fails while
// it builds leaves nothing for the next one.
#pragma once

#include "banking/loan_terms.h"
#include "banking/saved_inputs.h"
#include "projections/interest.h"

namespace qx {

/// Dates and amounts that are built up.
struct Schedule {
    Range<date> dates;
    Range<double> amounts;

    int size() const { return dates.size(); }
    void clear() {
        dates.dimension(0);
        amounts.dimension(0);
    }
    void append(const date& day, double amount) {
        dates.append(day);
        amounts.append(amount);
    }
    operator Payments() const { return {dates, amounts}; }
};

/// Interest that is advanced and not paid, and the same merged with the other advances.
class RolledUpInterest {
  public:
    void build(const Routine& here, const SimpleRates& rates, const Payments& advances, View<double> balances,
               const date& RepaymentDate, const date& RollTo, const Measure& measure);
    Payments rolled() const { return rolled_; }
    Payments all() const { return all_; }

  private:
    void merge(const Routine& here, const Payments& advances);

    Schedule rolled_, all_;
    SavedInputs<View<date>, View<double>, View<date>, View<double>, date, date, double, AnnualSequence> inputs_;
};

/// Advances and repayments in a straight line.
class StraightLine {
  public:
    Payments build(const Routine& here, const Payments& advances, const date& StartRepayments,
                   const date& RepaymentDate, const Measure& principal);

  private:
    /// The rows, with the advances; gives the last row before StartRepayments that is no advance, or the first row.
    int lay_out(const Routine& here, const Payments& advances, const date& StartRepayments, const date& RepaymentDate,
                const AnnualSequence& PrdsPrin);

    Schedule schedule_;
    SavedInputs<View<date>, View<double>, date, date, double, AnnualSequence> inputs_;
};

/// What makes a schedule of debt service.
struct DebtService {
    const SimpleRates& rates;
    const FromSteps& steps;
    View<double> AnnDebtServiceRates;
    const Payments& advances;
    const date& LongStop;
    double DayCountInt;
    const AnnualSequence& PrdsInt;
    const Basis& service; ///< in cash
};
/// Advances and the capital that debt service repays. It is made no further than periods ask, and made on from there.
class DebtServiceSchedule {
  public:
    Payments build(const Routine& here, const DebtService& terms, const date& horizon);
    /// The sum of the schedule up to each of its rows.
    View<double> sums();

  private:
    void extend(const Routine& here, const DebtService& terms, const date& horizon);
    void add_row(const DebtService& terms, SequenceCursor& dates);
    void repay(const Routine& here, const DebtService& terms, const Accrual& accrual, SequenceCursor& service_dates,
               SequenceCursor& interest_dates);
    double interest_in(const timeperiod& Time, const DebtService& terms, const Accrual& accrual,
                       SequenceCursor& dates) const;

    Schedule schedule_;
    Range<double> balances_, sums_;
    date served_to_; ///< the day after the last row; at first the day of the first one
    int advances_taken_ = 0;
    bool complete_ = false;
    SavedInputs<View<date>, View<double>, date, View<date>, View<double>, View<date>, View<double>, date, double,
                AnnualSequence, double, AnnualSequence, double>
        inputs_;
};

/// The level payment of a mortgage.
class LevelService {
  public:
    /// A year's payments.
    double of(const Payment& advance, const date& RepaymentDate, double InterestSimple, const Measure& measure);

  private:
    double annual_ = 0.0;
    SavedInputs<double, date, date, double, double, AnnualSequence> inputs_;
};

/// When the capital of an index-linked bond is uplifted.
struct UpliftDates {
    const date& SettlementDate;
    const date& MaturityDate;
    int interval; ///< months
    const date& FirstIdxDate;
    int IdxLag; ///< months
};
/// The uplifts of one unit of a bond's nominal, the last one at maturity; Index are the inputs of its index.
template <class... Index>
class UpliftedCapital {
  public:
    /// `index` is what one unit at the base has become on a date.
    template <class Growth>
    Payments build(const Routine& here, const UpliftDates& terms, Growth index, const Index&... inputs) {
        const auto& [SettlementDate, MaturityDate, interval, FirstIdxDate, IdxLag] = terms;
        if (SettlementDate.iszero()) here.fail<errlibmindate>("SettlementDate"); // no review would be later
        if (inputs_.are(SettlementDate, MaturityDate, interval, FirstIdxDate, IdxLag, inputs...)) {
            here.info("The uplifts are those of the last calculation");
            return schedule_;
        }
        inputs_.save(SettlementDate, MaturityDate, interval, FirstIdxDate, IdxLag, inputs...);
        schedule_.clear();
        schedule_.append(SettlementDate, 1.0);
        const date& first = FirstIdxDate.iszero() ? SettlementDate : FirstIdxDate;
        double uplifted = 1.0;
        for (int review = FirstIdxDate.iszero() ? 1 : 0; schedule_.size() < range_capacity; ++review) {
            if (schedule_.dates.last() >= MaturityDate) break;
            const date day = std::min(first.plusmonths(review * interval, true), MaturityDate);
            if (day <= SettlementDate) continue;
            const TraceBlock pass = here.pass(review, "Review on ", day);
            const double uplift = index(day.plusmonths(-IdxLag, true)) - uplifted;
            uplifted += uplift;
            schedule_.append(day, uplift);
            here.info("Uplift=", uplift);
        }
        inputs_.finish();
        return schedule_;
    }

  private:
    Schedule schedule_;
    SavedInputs<date, date, int, date, int, Index...> inputs_;
};

/// The debt service paid in a span: what Step gives, with the dates of the basis found by a cursor.
double service_in(const timeperiod& span, const FromSteps& steps, View<double> rates, const Basis& basis,
                  SequenceCursor& dates);

/// The next date of a loan that pays on the dates of a sequence: that of an advance if it comes no later.
struct RowOfLoan {
    date day;
    bool is_advance;
};
RowOfLoan next_row(const date& day, const Payments& advances, int advances_taken, SequenceCursor& dates);

struct LoanSchedules {
    RolledUpInterest rolled_up;
    StraightLine straight_line;
    DebtServiceSchedule debt_service;
    LevelService level_service;
    UpliftedCapital<date, View<date>, View<double>> grown_bond;
    UpliftedCapital<double, View<double>, date, int> forecast_bond;
};
LoanSchedules& loan_schedules();

} // namespace qx
