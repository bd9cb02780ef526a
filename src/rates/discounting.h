// What the discounted cash flow families share: flows with their times, the search for an internal rate of return,
// averages of times, and the payback date.
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"
#include "core/pools.h"
#include "core/routine.h"
#include "numerics/solver.h"
#include "rates/flow_schedule.h"

#include <utility>

namespace qx {

/// How times are measured and which flows count.
struct DiscountRules {
    const date& NPVDate;
    double DayCount;
    const AnnualSequence& Periods;
    const date& StartDCF;
    const date& FinishDCF;
    int options = 0;
};

/// The zero date, for a limit that is open.
inline constinit const date no_date{};
/// The sequence of functions that take none: the general default of rates, calendar quarters in arrears.
const AnnualSequence& default_periods();

/// Puts the flows of a list that count into a schedule.
void add_flows(FlowSchedule& schedule, const DiscountRules& rules, View<date> Dates, View<double> Cashflows);
/// A schedule of those flows.
WorkSchedule scheduled(const DiscountRules& rules, View<date> Dates, View<double> Cashflows);

/// A rate of return whose equation is a schedule's present value.
class CashFlowSolve : public clsSolveBase {
  public:
    CashFlowSolve() = default;
    explicit CashFlowSolve(WorkSchedule schedule) : schedule_(std::move(schedule)) {}
    double eval(double rate) final;
    void setup() override {}
    /// True if no flow counts.
    virtual bool empty() const { return schedule_->size() == 0; }

  protected:
    /// The present value at a rate above -1.
    virtual double net_present_value(double rate) const { return schedule_->present_value(rate); }
    WorkSchedule schedule_;
};

/// The solve of every internal rate of return; 0 where no flow counts.
double solve_irr(const Routine& here, CashFlowSolve& problem, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt);

/// The average of a schedule's times weighted by present values at a rate, and by the amounts themselves; 0 where the
/// weights sum to zero.
double average_discounted_time(const FlowSchedule& schedule, double rate);
double average_time(const FlowSchedule& schedule);

/// The payback date of flows on dates that ascend.
date payback_date(const Routine& here, View<date> Dates, View<double> Cashflows, double MinPayBack, bool Interpolate,
                  double DayCount, const AnnualSequence& Periods, int PayBackOptions);
/// The flows discounted to the first date.
WorkList<double> discounted_flows(double DisAER, View<date> Dates, View<double> Cashflows, double DayCount,
                                  const AnnualSequence& Periods);

/// Refuses a discount rate at or below -100%.
inline void check_discount_rate(const Routine& here, double rate, const char* variable = "DisAER") {
    if (rate <= -1.0) here.fail<errlibmin>(variable);
}

} // namespace qx
