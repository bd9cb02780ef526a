#include "rates/discounting.h"

#include "calendar/date_arithmetic.h"
#include "rates/cash_flow.h"
#include "rates/compounding.h"

#include <algorithm>
#include <limits>

namespace qx {

namespace {

constexpr int solve_rounds = 100;
constexpr double nearest_to_total_loss = -1.0 + 1e-11; ///< stands for -100%, at which nothing can be discounted

/// Years from one date to others under a day count, whose code is read once: what years_between gives. Actual days over
/// a year of fixed length are measured in place, since a call takes longer than they do.
class YearsFrom {
  public:
    YearsFrom(const date& from, double DayCount, const AnnualSequence& Periods)
        : from_(from), DayCount_(DayCount), Periods_(Periods), single_(DayCountCodes::single(DayCount)),
          code_(whole(DayCount)), fixed_year_(!single_     ? 0.0
                                              : code_ == 2 ? 360.0
                                              : code_ == 3 ? 365.0
                                                           : 0.0) {}
    double to(const date& day) const {
        if (fixed_year_ != 0.0) return days_between(from_, day) * 12.0 / fixed_year_ / 12.0;
        if (single_ && day > from_) return daycountmonths(from_, day, code_) / 12.0;
        return years_between(from_, day, DayCount_, Periods_);
    }

  private:
    const date& from_;
    double DayCount_;
    const AnnualSequence& Periods_;
    bool single_;
    int code_;
    double fixed_year_; ///< days; 0 for other day counts
};

/// Years over which flow i of several is received: up to the next date; for the last, as long as since the one before.
double receipt_period(View<date> Dates, int i, int n, const DiscountRules& rules) {
    const int first = i < n ? i : n - 1;
    return years_between(Dates.get(first), Dates.get(first + 1), rules.DayCount, rules.Periods);
}

void warn_of_no_date(View<date> Dates, View<double> Cashflows) {
    for (int i = 1; i <= Dates.size(); ++i)
        if (Dates(i).iszero() && !iszero(Cashflows(i)))
            trace().warning(text_of("The cash flow of ", Cashflows(i), " has no date, ignoring it"));
}

} // namespace

const AnnualSequence& default_periods() {
    static const AnnualSequence quarters(-4, "PrdsDisc");
    return quarters;
}

void add_flows(FlowSchedule& schedule, const DiscountRules& rules, View<date> Dates, View<double> Cashflows) {
    const int n = std::min(Dates.size(), Cashflows.size());
    if (traced()) warn_of_no_date(Dates.upto(n), Cashflows);
    const YearsFrom start(rules.NPVDate, rules.DayCount, rules.Periods);
    const int last_before = rules.StartDCF.dtn(); // with none the zero date: a flow without a date does not count
    const int finish = rules.FinishDCF.iszero() ? std::numeric_limits<int>::max() : rules.FinishDCF.dtn();
    const bool evenly = (rules.options & flows_received_evenly) != 0 && n > 1;
    for (int i = 1; i <= n; ++i) {
        const date& day = Dates.get(i);
        const double flow = Cashflows.get(i);
        if (day.dtn() >= finish) break;
        if (day.dtn() <= last_before || iszero(flow)) continue;
        const double years = start.to(day);
        if (evenly)
            schedule.add_spread(flow, years, receipt_period(Dates, i, n, rules));
        else
            schedule.add(flow, years);
    }
}

WorkSchedule scheduled(const DiscountRules& rules, View<date> Dates, View<double> Cashflows) {
    WorkSchedule schedule;
    add_flows(*schedule, rules, Dates, Cashflows);
    return schedule;
}

double CashFlowSolve::eval(double rate) {
    if (!(rate >= -1.0)) return std::numeric_limits<double>::quiet_NaN();
    Routine here{"pvt", Routine::internal};
    here.arguments(QX_NAMED(rate));
    return here.returning(net_present_value(std::max(rate, nearest_to_total_loss)));
}

double solve_irr(const Routine& here, CashFlowSolve& problem, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt) {
    if (problem.empty()) return 0.0;
    const bool usual = isequal(IRRMinOpt, irr_min) && isequal(IRRMaxOpt, irr_max);
    return problem.solve(IRRMinOpt, IRRMaxOpt, IRRAccOpt, solve_rounds, usual ? rate_of_return : plain_with_recovery,
                         here.context());
}

double average_discounted_time(const FlowSchedule& schedule, double rate) {
    const PowersOf growth(1.0 + rate);
    double weighted = 0.0, total = 0.0;
    for (int i = 0; i < schedule.size(); ++i) {
        const double value = schedule.value(i, growth);
        if (traced())
            trace().info(text_of("PV(", schedule.amount(i), ") at time ", schedule.years(i), " years = ", value));
        weighted += value * schedule.years(i);
        total += value;
    }
    return safe_divide(weighted, total);
}

double average_time(const FlowSchedule& schedule) {
    double weighted = 0.0, total = 0.0;
    for (int i = 0; i < schedule.size(); ++i) {
        weighted += schedule.amount(i) * schedule.years(i);
        total += schedule.amount(i);
    }
    return safe_divide(weighted, total);
}

WorkList<double> discounted_flows(double DisAER, View<date> Dates, View<double> Cashflows, double DayCount,
                                  const AnnualSequence& Periods) {
    WorkList<double> discounted;
    const PowersOf growth(1.0 + DisAER);
    const int n = std::min(Dates.size(), Cashflows.size());
    discounted->dimension(n);
    for (int i = 1; i <= n; ++i)
        discounted(i) = Cashflows.get(i) / growth(years_between(Dates.get(1), Dates.get(i), DayCount, Periods));
    return discounted;
}

date payback_date(const Routine& here, View<date> Dates, View<double> Cashflows, double MinPayBack, bool Interpolate,
                  double DayCount, const AnnualSequence& Periods, int PayBackOptions) {
    const int n = std::min(Dates.size(), Cashflows.size());
    if (n == 0) return date();
    const auto reached = [MinPayBack](double sum) { return sum > MinPayBack || isequal(sum, MinPayBack); };
    const bool rezeros = (PayBackOptions & payback_rezeros) != 0;
    if (rezeros) here.info("Payback Options: Payback accumulator rezeros if cashflow goes from positive to negative");
    double before = 0.0, sum = 0.0;
    for (int i = 1; i <= n; ++i) {
        const double flow = Cashflows.get(i);
        const TraceBlock pass = here.pass(i, Dates.get(i), ": ", flow);
        before = sum;
        if (rezeros && before > 0.0 && flow < 0.0) {
            here.info("The sum restarts: it was ", before);
            before = 0.0;
        }
        sum = before + flow;
        here.info("Sum of the cashflows=", sum);
        if (reached(before) || !reached(sum)) continue;
        if (!Interpolate || i == 1) return Dates.get(i);
        const date& last = Dates.get(i - 1);
        const double part = safe_divide(-before, sum - before);
        here.info("Payback lies at the fraction ", part, " of the time from ", last, " to ", Dates.get(i));
        return plusmonths(last, part * diffmonths(last, Dates.get(i), DayCount, Periods), DayCount, Periods);
    }
    here.fail<errlibnopayback>("Cashflows");
}

} // namespace qx
