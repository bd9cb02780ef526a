#include "banking/loan_schedules.h"

#include "projections/interest.h"
#include "projections/spreads.h"
#include "projections/stepped_rate.h"
#include "rates/dated_annuities.h"

#include "calendar/date_functions.h"

#include <algorithm>

namespace qx {

namespace {

constexpr int most_rolled = 1000; ///< dates of rolled-up interest, and rows of the list with it
constexpr double cash = 1.0;

} // namespace

LoanSchedules& loan_schedules() {
    static LoanSchedules schedules;
    return schedules;
}

// --- Interest that rolls up -----------------------------------------------------------------------------------------

void RolledUpInterest::build(const Routine& here, const SimpleRates& rates, const Payments& advances,
                             View<double> balances, const date& RepaymentDate, const date& RollTo,
                             const Measure& measure) {
    const auto [DayCount, PrdsInt] = measure;
    const auto& [FromDatesInt, IntSimple] = rates;
    const auto& [dates, amounts] = advances;
    if (inputs_.are(FromDatesInt, IntSimple, dates, amounts, RepaymentDate, RollTo, DayCount, PrdsInt)) {
        here.info("The interest rolled up is that of the last calculation");
        return;
    }
    inputs_.save(FromDatesInt, IntSimple, dates, amounts, RepaymentDate, RollTo, DayCount, PrdsInt);
    rolled_.clear();
    double rolled_balance = 0.0; // negative, as the interest is
    date from = PrdsInt.prevdate(dates.first(), false);
    for (int i = 1; i <= most_rolled && from <= RollTo; ++i) {
        const date next = PrdsInt.nextdate(from, false);
        if (next <= from) break; // the calendar's end
        const timeperiod span(from, next);
        const TraceBlock pass = here.pass(i, span);
        const double on_advances =
            FInterest(span, FromDatesInt, IntSimple, RepaymentDate, dates, balances, DayCount, PrdsInt, cash);
        const double on_rolled = -InterestX(span, FromDatesInt, IntSimple, dates.first(), RepaymentDate, rolled_balance,
                                            DayCount, PrdsInt, cash);
        rolled_balance += on_advances + on_rolled;
        rolled_.append(from, -(on_advances + on_rolled));
        here.info("Interest rolled up=", -(on_advances + on_rolled));
        from = next;
    }
    merge(here, advances);
    inputs_.finish();
}

void RolledUpInterest::merge(const Routine& here, const Payments& advances) {
    const int listed = advances.PmtDates.size();
    const int rolled = rolled_.size();
    if (listed + rolled > most_rolled)
        here.fail<outofrange>("AdvanceDates", "There are ", listed + rolled, " advances with the interest rolled up, ",
                              "more than ", most_rolled);
    all_.clear();
    for (int i = 1, j = 1; i <= listed || j <= rolled;) {
        // On one date the listed advance comes first.
        if (j > rolled || (i <= listed && advances.PmtDates(i) <= rolled_.dates(j))) {
            all_.append(advances.PmtDates(i), advances.Pmts(i));
            ++i;
        } else {
            all_.append(rolled_.dates(j), rolled_.amounts(j));
            ++j;
        }
    }
}

// --- A straight line ------------------------------------------------------------------------------------------------

namespace {

/// The straight lines of advances from their own dates on, or from StartRepayments. Under one day count what a line has
/// in a span in which it runs throughout depends on its rate alone: such lines are one stream.
class StraightLines {
  public:
    StraightLines(const Routine& here, const Payments& advances, const date& StartRepayments, const date& RepaymentDate,
                  const Basis& basis)
        : here_(here), RepaymentDate_(RepaymentDate), basis_(basis) {
        for (int k = 1; k <= advances.PmtDates.size(); ++k) {
            const date& start = std::max(advances.PmtDates(k), StartRepayments);
            if (starts_.size() > 0 && starts_(starts_.size()) == start) {
                amounts_(starts_.size()) += advances.Pmts(k);
            } else {
                starts_->append(start);
                amounts_->append(advances.Pmts(k));
            }
        }
    }
    /// What they repay in the next span, in cash.
    double in(const timeperiod& span) {
        if (span.to() <= starts_(1)) return 0.0;
        const timeperiod paid = CashTime(span, basis_.Periods, starts_(1), RepaymentDate_, true, basis_.ProjMode);
        const bool one_day_count = DayCountCodes::single(basis_.DayCount);
        for (; one_day_count && running_ < starts_.size(); ++running_) {
            const date& start = starts_(running_ + 1);
            if (start >= span.from() || start > paid.from() || start >= RepaymentDate_) break;
            const Life life{start, RepaymentDate_};
            rate_ += safe_divide(amounts_(running_ + 1), con({start, RepaymentDate_}, life, 1.0, basis_.accruals()));
        }
        double repaid = running_ > 0 ? con(paid, {starts_(1), RepaymentDate_}, rate_, basis_.accruals()) : 0.0;
        for (int k = running_ + 1; k <= starts_.size() && starts_(k) <= span.to(); ++k)
            repaid += UniformSpread{starts_.get(k), RepaymentDate_, amounts_(k)}.in(here_, span, basis_);
        return repaid;
    }

  private:
    const Routine& here_;
    const date& RepaymentDate_;
    const Basis& basis_;
    WorkList<date> starts_;
    WorkList<double> amounts_;
    int running_ = 0;   ///< of them run throughout
    double rate_ = 0.0; ///< a year, of those
};

} // namespace

Payments StraightLine::build(const Routine& here, const Payments& advances, const date& StartRepayments,
                             const date& RepaymentDate, const Measure& principal) {
    const auto& [dates, amounts] = advances;
    if (inputs_.are(dates, amounts, StartRepayments, RepaymentDate, principal.DayCount, principal.Periods)) {
        here.info("The schedule is that of the last calculation");
        return schedule_;
    }
    inputs_.save(dates, amounts, StartRepayments, RepaymentDate, principal.DayCount, principal.Periods);
    const int before_repayments = lay_out(here, advances, StartRepayments, RepaymentDate, principal.Periods);

    const Basis basis{principal.DayCount, principal.Periods, cash};
    const bool no_overlays = !dates.last().iszero() && dates.last() < StartRepayments;
    if (no_overlays) here.info("Simple case of no loan overlays");
    StraightLines lines(here, advances, StartRepayments, RepaymentDate, basis);
    double total = 0.0;
    for (const double advance : schedule_.amounts) total += advance;
    // The first advance is no repayment; any other row from the last one before StartRepayments on is.
    for (int t = std::max(before_repayments, 2); t <= schedule_.size(); ++t) {
        const date& day = schedule_.dates(t);
        const timeperiod span(t > before_repayments ? schedule_.dates(t - 1) : dates.first(), day);
        if (no_overlays) {
            schedule_.amounts(t) = -UniformSpread{StartRepayments, RepaymentDate, total}.in(here, span, basis);
        } else {
            schedule_.amounts(t) -= lines.in(span);
        }
        here.info("MyAdvances(", t, ")=", schedule_.amounts(t), " MyAdvanceDates(", t, ")=", day);
    }
    here.info("Net Advance and Repayment schedule finalised successfully");
    inputs_.finish();
    return schedule_;
}

int StraightLine::lay_out(const Routine& here, const Payments& advances, const date& StartRepayments,
                          const date& RepaymentDate, const AnnualSequence& PrdsPrin) {
    const TraceBlock loop = here.loop("Establishing timebase ...", "Advances and dates of repayment");
    const auto& [dates, amounts] = advances;
    int before_repayments = 1;
    schedule_.clear();
    schedule_.append(dates.first(), amounts(1));
    for (int i = 2, taken = 1; i < range_capacity; ++i) {
        const TraceBlock pass = here.pass(i, "Row");
        const date next = PrdsPrin.nextdate(schedule_.dates(i - 1), false);
        const bool advance = taken < dates.size() && (dates(taken + 1) < next || dates(taken + 1) < StartRepayments);
        if (advance) ++taken;
        const date& day = advance ? dates(taken) : next;
        if (!advance && day < StartRepayments) before_repayments = i;
        schedule_.append(std::min(day, RepaymentDate), advance ? amounts(taken) : 0.0);
        here.info("MyAdvances(", i, ")=", schedule_.amounts(i), " MyAdvanceDates(", i, ")=", schedule_.dates(i));
        if (day >= RepaymentDate) break;
    }
    return before_repayments;
}

// --- Debt service ---------------------------------------------------------------------------------------------------

double service_in(const timeperiod& span, const FromSteps& steps, View<double> rates, const Basis& basis,
                  SequenceCursor& dates) {
    if (!basis.cash()) return Step(span, steps, rates, basis);
    Routine here{"DebtService", Routine::internal};
    here.arguments("Time,Finish,FromDates,AnnualRates,DayCount,Periods,ProjMode", span, steps.Finish, steps.FromDates,
                   rates, basis.DayCount, basis.Periods, basis.ProjMode);
    basis.check(here);
    if (steps.count() == 0 || !runs_forward(here, span)) return here.returning(0.0);
    const timeperiod paid = CashTime(span, dates, steps.extent().Start, steps.Finish, true, basis.ProjMode);
    return here.returning(
        sum_steps(here, paid, steps, basis, [&](int n, const Life& step, const Measure& stub, bool ComponentPart) {
            return ConX(Life{paid.from(), paid.to()}, step, rates.single_or(n), stub, ComponentPart);
        }));
}

RowOfLoan next_row(const date& day, const Payments& advances, int advances_taken, SequenceCursor& dates) {
    RowOfLoan next{dates.nextdate(day, false), false};
    if (advances_taken < advances.PmtDates.size() && advances.PmtDates(advances_taken + 1) <= next.day)
        next = {advances.PmtDates(advances_taken + 1), true};
    return next;
}

Payments DebtServiceSchedule::build(const Routine& here, const DebtService& terms, const date& horizon) {
    const auto& [FromDatesInt, IntSimple] = terms.rates;
    const auto& [dates, amounts] = terms.advances;
    const auto& [DayCount, Periods, ProjMode] = terms.service;
    if (!inputs_.are(FromDatesInt, IntSimple, terms.steps.Finish, terms.steps.FromDates, terms.AnnDebtServiceRates,
                     dates, amounts, terms.LongStop, DayCount, Periods, terms.DayCountInt, terms.PrdsInt, ProjMode)) {
        inputs_.save(FromDatesInt, IntSimple, terms.steps.Finish, terms.steps.FromDates, terms.AnnDebtServiceRates,
                     dates, amounts, terms.LongStop, DayCount, Periods, terms.DayCountInt, terms.PrdsInt, ProjMode);
        schedule_.clear();
        served_to_ = std::min(dates.first(), terms.LongStop);
        balances_.dimension(0);
        sums_.dimension(0);
        advances_taken_ = 0;
        complete_ = false;
    }
    inputs_.begin();
    if (!complete_) extend(here, terms, horizon);
    inputs_.finish();
    return schedule_;
}

void DebtServiceSchedule::extend(const Routine& here, const DebtService& terms, const date& horizon) {
    const auto& [FromDatesInt, IntSimple] = terms.rates;
    const Accrual accrual(FromDatesInt, IntSimple, terms.DayCountInt, terms.PrdsInt);
    SequenceCursor interest_dates(terms.PrdsInt), other_dates(terms.service.Periods);
    SequenceCursor& service_dates = terms.service.Periods.same_as(terms.PrdsInt) ? interest_dates : other_dates;
    while (!complete_) {
        if (schedule_.size() > 0 && schedule_.dates.last() > horizon) {
            here.info("In interests of efficiency, the function is not analysing cashflows after the timeperiod end "
                      "date");
            break;
        }
        add_row(terms, interest_dates);
        repay(here, terms, accrual, service_dates, interest_dates);
    }
}

void DebtServiceSchedule::add_row(const DebtService& terms, SequenceCursor& interest_dates) {
    const int rows = schedule_.size();
    const auto& [dates, amounts] = terms.advances;
    const RowOfLoan row = rows == 0 ? RowOfLoan{dates.first(), true}
                                    : next_row(schedule_.dates(rows), terms.advances, advances_taken_, interest_dates);
    double advanced = 0.0; // all of a day in one row, so that the day's interest is charged once, on its last balance
    while (advances_taken_ < dates.size() && dates(advances_taken_ + 1) == row.day)
        advanced += amounts(++advances_taken_);
    schedule_.append(std::min(row.day, terms.LongStop), advanced);
    complete_ = row.day >= terms.LongStop || rows + 1 == range_capacity;
}

/// The interest paid in a period, on the balances since the payment date before.
double DebtServiceSchedule::interest_in(const timeperiod& Time, const DebtService& terms, const Accrual& accrual,
                                        SequenceCursor& interest_dates) const {
    const View<date> dates = schedule_.dates;
    const timeperiod period = CashTime(Time, interest_dates, dates.first(), terms.LongStop, true, cash);
    if (period.from() > terms.LongStop || period.to() < dates.first()) return 0.0;
    int first = dates.size(); // near the row wanted
    while (first > 1 && dates(first) > period.from()) --first;
    return SteppedBalances(terms.LongStop, dates.from(first), balances_.view().from(first))
        .interest(period, accrual, 0.0);
}

void DebtServiceSchedule::repay(const Routine& here, const DebtService& terms, const Accrual& accrual,
                                SequenceCursor& service_dates, SequenceCursor& interest_dates) {
    const int i = schedule_.size();
    const TraceBlock pass = here.pass(i, "Row of ", schedule_.dates(i));
    const date& day = schedule_.dates(i);
    timeperiod span(served_to_, day.plusdays(1));
    balances_.append((i > 1 ? balances_(i - 1) : 0.0) + schedule_.amounts(i));

    const double service = service_in(span, terms.steps, terms.AnnDebtServiceRates, terms.service, service_dates);
    span.setfrom(day);
    const double interest = interest_in(span, terms, accrual, interest_dates);
    const double capital = service + interest;
    served_to_ = span.to();
    balances_(i) -= capital;
    schedule_.amounts(i) -= capital;
    if (balances_(i) < 0.0) {
        schedule_.amounts(i) -= balances_(i);
        balances_(i) = 0.0;
        complete_ = true;
        here.info("The loan is repaid");
    }
    here.info("Service=", service, " Interest=", interest, " Balance=", balances_(i));
}

View<double> DebtServiceSchedule::sums() {
    const int known = sums_.size();
    double sum = known > 0 ? sums_.last() : 0.0;
    sums_.dimension(schedule_.size());
    for (int i = known + 1; i <= schedule_.size(); ++i) sums_(i) = sum += schedule_.amounts(i);
    return sums_;
}

double LevelService::of(const Payment& advance, const date& RepaymentDate, double InterestSimple,
                        const Measure& measure) {
    const auto& [AdvanceDate, NetAdvance] = advance;
    const auto& [DayCount, PrdsInt] = measure;
    if (!inputs_.are(NetAdvance, AdvanceDate, RepaymentDate, InterestSimple, DayCount, PrdsInt)) {
        inputs_.save(NetAdvance, AdvanceDate, RepaymentDate, InterestSimple, DayCount, PrdsInt);
        constexpr double rounding = 1e-9; // a whole number of payments that came out a little short
        const int a_year = PrdsInt.size();
        const double years = DiffY(AdvanceDate, RepaymentDate, DayCount, PrdsInt);
        const int payments = whole(years * a_year + rounding);
        annual_ = -PMTQX(NetAdvance, AdvanceDate, payments, InterestSimple, 0.0, DayCount, PrdsInt) * a_year;
        inputs_.finish();
    }
    return annual_;
}

} // namespace qx
