#include "banking/loan_solve.h"

#include "banking/loan_schedules.h"
#include "numerics/solver.h"
#include "projections/interest.h"
#include "projections/stepped_rate.h"
#include "rates/compounding.h"

#include <cmath>

namespace qx {

namespace {

constexpr int solve_rounds = 100;
constexpr double cash = 1.0;

/// Where a kind of solve looks, and how closely.
struct Search {
    const char* words;
    double x2;
    double tolerance;
    SolveMode mode;
};
constexpr Search searches[] = {
    {"Solving for Residual at end of loan", 10000.0, 0.001, guess_positive},
    {"Solving for Net Advance", 10000.0, 0.001, guess_positive},
    {"Solving for annual repayment rate", 10000.0, 0.001, guess_positive},
    {"Solving for Interest Rate", 1e9, 1e-10, rate_of_return},
    {"Solving for repayment date", 0.0, 0.0, plain},
};
constexpr double lowest_interest_rate = -100.0; ///< from which an interest rate is sought

/// The inputs of a solve.
struct LoanInputs {
    const SimpleRates& rates;
    const FromSteps& repayments;
    View<double> AnnRepRates;
    const Payments& advances;
    const date& RepDate;
    const date& RollTo;
    double LoanResid;
    double LoanSolveSwitch;
    int Options;
    double DayCount;
    const AnnualSequence& PrdsRep;
    const AnnualSequence& PrdsInt;
};

/// A list as given, with one item to be varied.
class VariedList {
  public:
    VariedList(View<double> list, int item) : list_(list.size()), item_(item) { *list_ = list; }
    operator View<double>() const { return list_; }
    int size() const { return list_.size(); }
    double operator()(int i) const { return list_(i); }
    /// That item alone, as 1: what the whole changes by for each unit of it.
    VariedList unit() const {
        VariedList unit(list_, item_);
        for (double& other : *unit.list_) other = 0.0;
        return unit.with(1.0);
    }
    /// All others: what the whole is without it.
    VariedList rest() const { return VariedList(list_, item_).with(0.0); }

  private:
    VariedList&& with(double value) {
        if (item_ >= 1) list_(item_) = value;
        return std::move(*this);
    }

    WorkList<double> list_;
    int item_;
};

/// Amounts that change in proportion to the trial value.
struct Amounts {
    WorkList<double> fixed, per_x;

    void append(double amount, double amount_per_x) {
        fixed->append(amount);
        per_x->append(amount_per_x);
    }
    double at(int i, double x) const { return fixed(i) + per_x(i) * x; }
    double sum(double x) const {
        double sum = 0.0;
        for (int i = 1; i <= fixed.size(); ++i) sum += at(i, x);
        return sum;
    }
};

/// What is owed, and the interest on it that is not due yet.
struct Debt {
    double balance = 0.0, accrued = 0.0;

    void pay_interest() {
        balance += accrued;
        accrued = 0.0;
    }
};

/// What a loan leaves unexplained at its end when one of its inputs is a trial value.
class clsLoanCalc final : public clsSolveBase {
  public:
    clsLoanCalc(const Routine& here, const LoanInputs& inputs)
        : here_(here), in_(inputs), interest_dates_(inputs.PrdsInt), repayment_dates_(inputs.PrdsRep) {}

    void setup() override;
    double eval(double x) override;
    double solve_it();

  private:
    void check_items() const;
    void lay_out();
    void lay_out_without_interest();
    double guess() const;
    date repayment_date();

    double service(const timeperiod& span, View<double> rates) {
        return service_in(span, in_.repayments, rates, {in_.DayCount, in_.PrdsRep, cash}, repayment_dates_);
    }
    double growth(const timeperiod& span, const Accrual& accrual, bool goes_on) const {
        const Life all{span.from(), span.to()};
        return no_interest_ ? 0.0 : -accrual.interest(all, all, 1.0, 0.0, goes_on);
    }
    double carried(const Amounts& amounts, double x) const;

    const Routine& here_;
    const LoanInputs& in_;
    SequenceCursor interest_dates_, repayment_dates_;
    int kind_ = 0, item_ = 0;
    bool no_interest_ = false;
    date NPVDate_, StartDCF_;
    // Row by row from the first advance to the repayment: what is advanced and repaid, the interest on 1 until the next
    // row, and whether interest falls due.
    Amounts advanced_, repaid_, growth_;
    WorkList<int> due_;
};

/// The tests of an item run on from an advance to a rate of interest to a rate of repayment.
void clsLoanCalc::check_items() const {
    const auto check = [&](int count, const char* item, const char* dates, const char* lists) {
        if (item_ > count)
            here_.fail<outofrange>("LoanSolveSwitch", "The ", item, " you want to solve for (", item_,
                                   ") is greater than the number of ", dates,
                                   " provided - Specify the correct number of ", lists, " (at least ", item_, ")");
    };
    switch (kind_) {
    case solve_advance:
        check(in_.advances.PmtDates.size(), "Advance", "Advance Dates", "Advance Dates");
        [[fallthrough]];
    case solve_interest_rate:
        check(in_.rates.FromDatesInt.size(), "Interest Rate", "Interest From Dates (FromDatesInt)",
              "Interest From Dates");
        [[fallthrough]];
    case solve_repayment_rate:
        check(in_.repayments.FromDates.size(), "annual repayment rate", "From Dates", "From Dates");
        break;
    default:
        break;
    }
}

void clsLoanCalc::setup() {
    kind_ = whole(in_.LoanSolveSwitch);
    item_ = whole(std::round((in_.LoanSolveSwitch - kind_) * 100.0));
    if (kind_ < solve_residual || kind_ > solve_repayment_date)
        here_.fail<errlibillegalswitch>("LoanSolveSwitch", "LoanSolveSwitch ", in_.LoanSolveSwitch,
                                        " is no kind of solve");
    here_.info(searches[kind_].words);
    check_items();
    const View<date> FromDates = in_.repayments.FromDates;
    if (!FromDates.empty() && FromDates.first() < in_.RollTo)
        here_.fail<inputerror>("RollTo", "The RollTo date cannot exceed any of the dates in FromDates");
    no_interest_ = (in_.Options & without_interest) != 0;
    if (!no_interest_ && !in_.PrdsInt.arrears())
        here_.fail<unnacceptabledata>("PrdsInt", "PrdsInt MUST be in arrears for this function");
    NPVDate_ = in_.RepDate.iszero() ? in_.repayments.Finish : in_.RepDate;
    const View<date> dates = in_.advances.PmtDates;
    StartDCF_ = !dates.empty() ? dates.first() : !FromDates.empty() ? FromDates.first() : NPVDate_;
    if (kind_ == solve_repayment_date) return;
    if (no_interest_)
        lay_out_without_interest();
    else
        lay_out();
}

void clsLoanCalc::lay_out_without_interest() {
    const VariedList advances(in_.advances.Pmts.upto(in_.advances.PmtDates.size()), kind_ == solve_advance ? item_ : 0);
    const VariedList rates(in_.AnnRepRates, kind_ == solve_repayment_rate ? item_ : 0);
    const VariedList rest = advances.rest(), unit = advances.unit();
    for (int i = 1; i <= rest.size(); ++i) advanced_.append(rest(i), unit(i));
    if (in_.repayments.count() == 0) return;
    const Basis accruals{in_.DayCount, in_.PrdsRep, 0.0};
    const timeperiod life(in_.repayments.extent().Start, in_.repayments.Finish);
    repaid_.append(Step(life, in_.repayments, rates.rest(), accruals),
                   Step(life, in_.repayments, rates.unit(), accruals));
}

void clsLoanCalc::lay_out() {
    const Payments& listed = in_.advances;
    const VariedList advances(listed.Pmts.upto(listed.PmtDates.size()), kind_ == solve_advance ? item_ : 0);
    const VariedList repayments(in_.AnnRepRates, kind_ == solve_repayment_rate ? item_ : 0);
    const VariedList rates(in_.rates.IntSimple, kind_ == solve_interest_rate ? item_ : 0);
    const VariedList other_advances = advances.rest(), the_advance = advances.unit(),
                     other_repayments = repayments.rest(), the_repayment = repayments.unit(),
                     other_rates = rates.rest(), the_rate = rates.unit();
    const Accrual at_other_rates(in_.rates.FromDatesInt, other_rates, in_.DayCount, in_.PrdsInt);
    const Accrual at_the_rate(in_.rates.FromDatesInt, the_rate, in_.DayCount, in_.PrdsInt);

    int taken = 0;
    date day = StartDCF_;
    timeperiod since(day, day.plusdays(1)); // of which a row takes the repayments
    for (bool is_advance = !listed.PmtDates.empty();;) {
        if (is_advance) ++taken;
        advanced_.append(is_advance ? other_advances(taken) : 0.0,
                         is_advance && kind_ == solve_advance ? the_advance(taken) : 0.0);
        repaid_.append(service(since, other_repayments),
                       kind_ == solve_repayment_rate ? service(since, the_repayment) : 0.0);
        const bool last = day >= NPVDate_ || advanced_.fixed.size() == range_capacity;
        due_->append(last || interest_dates_.isdate(day) ? 1 : 0);
        if (last) break;

        const RowOfLoan next = next_row(day, listed, taken, interest_dates_);
        const date next_day = std::min(next.day, NPVDate_);
        const timeperiod span(day, next_day);
        const bool goes_on = next_day < NPVDate_;
        growth_.append(growth(span, at_other_rates, goes_on),
                       kind_ == solve_interest_rate ? growth(span, at_the_rate, goes_on) : 0.0);
        since.setends(day.plusdays(1), next_day.plusdays(1));
        day = next_day;
        is_advance = next.is_advance;
    }
    growth_.append(0.0, 0.0);
}

/// Amounts on the rows with the interest on them up to the repayment.
double clsLoanCalc::carried(const Amounts& amounts, double x) const {
    if (no_interest_) return amounts.sum(x);
    Debt debt;
    for (int i = 1; i <= amounts.fixed.size(); ++i) {
        debt.balance += amounts.at(i, x);
        if (due_(i) != 0) debt.pay_interest();
        debt.accrued += debt.balance * growth_.at(i, x);
    }
    return debt.balance;
}

double clsLoanCalc::eval(double x) {
    Routine here{"clsLoanCalc", Routine::internal};
    here.arguments("x", x);
    const double pv_advances = carried(advanced_, x);
    const double pv_repayments = carried(repaid_, x);
    const double pv_residual = kind_ == solve_residual ? x : in_.LoanResid;
    constexpr double pv_int = 0.0; // the interest is in what is carried
    const double NPV = pv_advances - pv_repayments - pv_residual - pv_int;
    here.info("NPV", "=pv_advances+pv_repayments+pv_residual+pv_int=", NPV, ": ", pv_advances, ", ", pv_repayments,
              ", ", pv_residual, ", ", pv_int);
    return here.returning(NPV);
}

double clsLoanCalc::guess() const {
    switch (kind_) {
    case solve_residual:
        return in_.LoanResid;
    case solve_advance:
        return item_ < 1 ? 0.0 : in_.advances.Pmts(item_);
    case solve_repayment_rate:
        return item_ < 1 ? 0.0 : in_.AnnRepRates(item_);
    default:
        return lowest_interest_rate;
    }
}

/// The search starts on the day of the last advance, which no repayment comes before.
date clsLoanCalc::repayment_date() {
    constexpr double rounding = 1e-7; // of a balance that is as asked
    const Payments& listed = in_.advances;
    const int advances = listed.PmtDates.size();
    const Accrual accrual(in_.rates.FromDatesInt, in_.rates.IntSimple, in_.DayCount, in_.PrdsInt);
    Debt debt;
    date day = StartDCF_; // of the last row
    int taken = 0;
    if (advances > 0) debt.balance = listed.Pmts(++taken);
    debt.balance -= service(timeperiod(day, day.plusdays(1)), in_.AnnRepRates);

    // What would be owed above the residual if the loan ended on a day.
    const auto excess = [&](const date& end, double advanced) {
        const double interest = debt.accrued + debt.balance * growth(timeperiod(day, end), accrual, false);
        const double repaid = service(timeperiod(day.plusdays(1), end.plusdays(1)), in_.AnnRepRates);
        return debt.balance + interest + advanced - repaid - in_.LoanResid;
    };
    double at_first = debt.balance - in_.LoanResid;
    const auto reached = [&](const date& end, double advanced) {
        return at_first > 0.0 ? excess(end, advanced) <= rounding : excess(end, advanced) >= -rounding;
    };
    // The first day between one on which it is not reached and one on which it is.
    const auto first_between = [&](date before, date at) {
        while (days_between(before, at) > 1) {
            const date middle = before.plusdays(days_between(before, at) / 2);
            (reached(middle, 0.0) ? at : before) = middle;
        }
        return at;
    };
    if (taken >= advances && std::fabs(at_first) <= rounding) return day;
    for (int i = 1; i < range_capacity; ++i) {
        const RowOfLoan next = next_row(day, listed, taken, interest_dates_);
        if (next.day < day || (next.day == day && !next.is_advance)) break; // the calendar's end
        const double advanced = next.is_advance ? listed.Pmts(taken + 1) : 0.0;
        if (taken >= advances) {
            date before = day;
            for (date paid = repayment_dates_.nextdate(day, false); paid < next.day && paid > before;
                 paid = repayment_dates_.nextdate(paid, false)) {
                if (reached(paid, 0.0)) return first_between(before, paid);
                before = paid;
            }
            if (reached(next.day, 0.0)) return first_between(before, next.day);
        }
        if (next.is_advance && taken + 1 == advances) {
            at_first = excess(next.day, advanced);
            if (std::fabs(at_first) <= rounding) return next.day;
        }
        debt.accrued += debt.balance * growth(timeperiod(day, next.day), accrual, true);
        debt.balance += advanced - service(timeperiod(day.plusdays(1), next.day.plusdays(1)), in_.AnnRepRates);
        if (interest_dates_.isdate(next.day)) debt.pay_interest();
        if (next.is_advance) ++taken;
        day = next.day;
    }
    here_.fail<errlibnotbracketed>("RepDate", "There is no day on which ", in_.LoanResid, " is owed");
}

double clsLoanCalc::solve_it() {
    if (kind_ == solve_repayment_date) return repayment_date().dtn();
    const Search& search = searches[kind_];
    return solve(guess(), search.x2, search.tolerance, solve_rounds, search.mode, here_.context());
}

} // namespace

double LoanSolve(const SimpleRates& rates, const FromSteps& repayments, View<double> AnnRepRates,
                 const Payments& advances, const date& RepDate, const date& RollTo, double LoanResid,
                 double LoanSolveSwitch, int Options, double DayCount, const AnnualSequence& PrdsRep,
                 const AnnualSequence& PrdsInt) {
    Routine here{"LoanSolve"};
    here.inputs(rates, repayments, AnnRepRates, advances, RepDate, RollTo, LoanResid, LoanSolveSwitch, Options,
                DayCount, PrdsRep, PrdsInt);
    here.limit(DayCount, daycount_limits, "DayCount");
    for (const double rate : rates.IntSimple) check_rate(here, rate, "IntSimple");
    const LoanInputs inputs{rates,     repayments,      AnnRepRates, advances, RepDate, RollTo,
                            LoanResid, LoanSolveSwitch, Options,     DayCount, PrdsRep, PrdsInt};
    clsLoanCalc problem(here, inputs);
    problem.setup();
    return here.returning(problem.solve_it());
}

} // namespace qx
