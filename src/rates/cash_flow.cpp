#include "rates/cash_flow.h"

#include "calendar/dated_amounts.h"
#include "rates/compounding.h"
#include "rates/discounting.h"

#include <algorithm>

namespace qx {

namespace {

/// Dates and flows tied together, as one block of the trace.
DatedAmounts screened(View<date> Dates, View<double> Cashflows) {
    if (traced()) trace().range_screening();
    const TraceBlock block(traced());
    return {Dates, Cashflows};
}

/// Up to four lists that make up one cash flow.
struct FlowLists {
    DatedAmounts lists[4];

    explicit FlowLists(View<date> Dates, View<double> Cashflows, View<date> Dates2 = {}, View<double> Cashflows2 = {},
                       View<date> Dates3 = {}, View<double> Cashflows3 = {}, View<date> Dates4 = {},
                       View<double> Cashflows4 = {})
        : lists{given(Dates, Cashflows), given(Dates2, Cashflows2), given(Dates3, Cashflows3),
                given(Dates4, Cashflows4)} {}

    /// The first date of the first list that has one, or the zero date.
    const date& first_date() const {
        for (const DatedAmounts& list : lists)
            for (const date& day : list.Dates())
                if (!day.iszero()) return day;
        return no_date;
    }
    bool empty() const {
        return std::all_of(std::begin(lists), std::end(lists), [](const auto& list) { return list.size() == 0; });
    }
    void add_to(FlowSchedule& schedule, const DiscountRules& rules) const {
        for (const DatedAmounts& list : lists) add_flows(schedule, rules, list.Dates(), list.Amounts());
    }

  private:
    static DatedAmounts given(View<date> Dates, View<double> Cashflows) {
        return Dates.empty() && Cashflows.empty() ? DatedAmounts() : screened(Dates, Cashflows);
    }
};

// --- Capital return ---------------------------------------------------------------------------------------------

/// The capital value on FinishDCF: what the flows from that date on are worth then.
class CapitalReturn {
  public:
    /// With no FinishDCF there is none.
    CapitalReturn(const Routine& here, const FlowLists& flows, const DiscountRules& rules, double CapRateAER,
                  double CapOption)
        : rate_(CapRateAER), exists_(!rules.FinishDCF.iszero()) {
        if (!exists_) return;
        if (iszero(CapRateAER)) here.info("CapRateAER is zero and therefore assumed to be the same as the IRR");
        years_ = years_between(rules.NPVDate, rules.FinishDCF, rules.DayCount, rules.Periods);
        // Flows on the finish date belong to the capital value, those on the start date to nothing.
        const date day_before = rules.FinishDCF.plusdays(-1);
        flows.add_to(*schedule_, {rules.FinishDCF, rules.DayCount, rules.Periods, std::max(day_before, rules.StartDCF),
                                  no_date, rules.options});
        if (CapOption > 0.0) cap_ = CapOption * income_of_last_year(here, flows, rules.FinishDCF);
        capped_ = CapOption > 0.0;
    }

    bool empty() const { return !exists_ || schedule_->size() == 0; }
    /// What it is worth at NPVDate.
    double present_value(double rate) const {
        if (!exists_) return 0.0;
        double value = schedule_->present_value(iszero(rate_) ? rate : rate_);
        if (traced()) trace().info(text_of("Capital value=", value));
        if (capped_ && value > cap_) {
            value = cap_;
            if (traced()) trace().info(text_of("Capital value limited to ", value));
        }
        return value / PowersOf(1.0 + rate)(years_);
    }

  private:
    static double income_of_last_year(const Routine& here, const FlowLists& flows, const date& finish) {
        const date start = finish.plusmonths(-12, true);
        double income = 0.0;
        for (const auto& list : flows.lists)
            for (int i = 1; i <= list.size(); ++i)
                if (list.Dates()(i) >= start && list.Dates()(i) < finish) income += list.Amounts()(i);
        here.info("Cashflows of the twelve months before FinishDCF=", income);
        return std::max(income, 0.0);
    }

    WorkSchedule schedule_;
    double rate_;
    bool exists_;
    bool capped_ = false;
    double years_ = 0.0;
    double cap_ = 0.0;
};

// --- Internal rates of return -----------------------------------------------------------------------------------

class clsSpecificDCFSolve : public CashFlowSolve {
  public:
    clsSpecificDCFSolve(const FlowLists& flows, const DiscountRules& rules) : flows_(flows), rules_(rules) {}
    void setup() override {
        schedule_->clear();
        flows_.add_to(*schedule_, rules_);
    }

  protected:
    const FlowLists& flows_;
    const DiscountRules& rules_;
};

using clsSpecificDCFSolveX = clsSpecificDCFSolve;

/// With a capital return; clsSpecificDCFSolveIC adds an outlay.
class clsSpecificDCFSolveCX : public clsSpecificDCFSolve {
  public:
    clsSpecificDCFSolveCX(const FlowLists& flows, const DiscountRules& rules, const CapitalReturn& capital)
        : clsSpecificDCFSolve(flows, rules), capital_(capital) {}
    bool empty() const override { return schedule_->size() == 0 && capital_.empty(); }

  protected:
    double net_present_value(double rate) const override {
        return schedule_->present_value(rate) + capital_.present_value(rate);
    }

  private:
    const CapitalReturn& capital_;
};

/// An amount on a date beside the lists.
struct SingleFlow {
    date when;
    double amount;

    void add_to(FlowSchedule& schedule, const DiscountRules& rules) const {
        if (!iszero(amount)) schedule.add(amount, years_between(rules.NPVDate, when, rules.DayCount, rules.Periods));
    }
};

class clsSpecificDCFSolveIC final : public clsSpecificDCFSolveCX {
  public:
    clsSpecificDCFSolveIC(const FlowLists& flows, const DiscountRules& rules, const CapitalReturn& capital,
                          const SingleFlow& outlay)
        : clsSpecificDCFSolveCX(flows, rules, capital), outlay_(outlay) {}
    void setup() override {
        clsSpecificDCFSolve::setup();
        outlay_.add_to(*schedule_, rules_);
    }

  private:
    const SingleFlow& outlay_;
};

class clsSpecificDCFSolveR final : public clsSpecificDCFSolve {
  public:
    clsSpecificDCFSolveR(const FlowLists& flows, const DiscountRules& rules, const SingleFlow& realisation)
        : clsSpecificDCFSolve(flows, rules), realisation_(realisation) {}
    void setup() override {
        clsSpecificDCFSolve::setup();
        realisation_.add_to(*schedule_, rules_);
    }

  private:
    const SingleFlow& realisation_;
};

double solved(const Routine& here, CashFlowSolve& problem, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt) {
    problem.setup();
    return here.returning("IRRAER", solve_irr(here, problem, IRRMinOpt, IRRMaxOpt, IRRAccOpt));
}

// --- Realisation ------------------------------------------------------------------------------------------------

/// The amount realised: the level in force on the date, if the date counts.
SingleFlow realised(const Routine& here, const date& RealisationDate, View<date> Dates, View<double> RealisationLevels,
                    const date& StartDCF, const date& FinishDCF) {
    SingleFlow realisation{RealisationDate, 0.0};
    if (RealisationDate.iszero() || RealisationLevels.size() == 0) return realisation;
    if (RealisationDate <= StartDCF && !StartDCF.iszero()) return realisation;
    if (RealisationDate >= FinishDCF && !FinishDCF.iszero()) return realisation;
    if (RealisationLevels.size() == 1) {
        realisation.amount = RealisationLevels.get(1);
    } else {
        const int n = std::min(Dates.size(), RealisationLevels.size());
        for (int i = 1; i <= n && Dates.get(i) <= RealisationDate; ++i) realisation.amount = RealisationLevels.get(i);
    }
    here.info("Realisation of ", realisation.amount, " on ", RealisationDate);
    return realisation;
}

/// The earlier of the two ends that are set.
const date& earlier_end(const date& RealisationDate, const date& FinishDCF) {
    if (RealisationDate.iszero()) return FinishDCF;
    return FinishDCF.iszero() ? RealisationDate : std::min(RealisationDate, FinishDCF);
}

SingleFlow invested(const date& InvDate, double InvAmt, const date& otherwise) {
    return {InvDate.iszero() ? otherwise : InvDate, -std::fabs(InvAmt)};
}

} // namespace

// --- Present values ---------------------------------------------------------------------------------------------

double pvt(double rate, const date& NPVDate, View<date> Dates, View<double> Cashflows, double DayCount,
           const AnnualSequence& Periods, const date& StartDCF, const date& FinishDCF, int options) {
    Routine here{"pvt", Routine::internal};
    here.arguments(QX_NAMED(rate, NPVDate, StartDCF, FinishDCF));
    const WorkSchedule schedule =
        scheduled({NPVDate, DayCount, Periods, StartDCF, FinishDCF, options}, Dates, Cashflows);
    return here.returning(schedule->present_value(rate));
}

double PVT(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows, double DayCountDisc,
           const AnnualSequence& PrdsDisc, const date& StartDCF, const date& FinishDCF, int PVTOptions) {
    Routine here{"PVT"};
    here.inputs(NPVDate, DisAER, Dates, Cashflows, DayCountDisc, PrdsDisc, StartDCF, FinishDCF, PVTOptions);
    check_discount_rate(here, DisAER);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    const DatedAmounts flows = screened(Dates, Cashflows);
    return here.returning(
        pvt(DisAER, NPVDate, flows.Dates(), flows.Amounts(), DayCountDisc, PrdsDisc, StartDCF, FinishDCF, PVTOptions));
}

double PVTX(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows, double DayCountDisc,
            const AnnualSequence& PrdsDisc, const date& StartDCF, const date& FinishDCF, int PVTOptions,
            View<date> Dates2, View<double> Cashflows2, View<date> Dates3, View<double> Cashflows3, View<date> Dates4,
            View<double> Cashflows4) {
    Routine here{"PVTX"};
    here.inputs(NPVDate, DisAER, Dates, Cashflows, DayCountDisc, PrdsDisc, StartDCF, FinishDCF, PVTOptions, Dates2,
                Cashflows2, Dates3, Cashflows3, Dates4, Cashflows4);
    check_discount_rate(here, DisAER);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    const FlowLists flows(Dates, Cashflows, Dates2, Cashflows2, Dates3, Cashflows3, Dates4, Cashflows4);
    double sum = 0.0;
    for (const auto& list : flows.lists)
        sum +=
            pvt(DisAER, NPVDate, list.Dates(), list.Amounts(), DayCountDisc, PrdsDisc, StartDCF, FinishDCF, PVTOptions);
    return here.returning(sum);
}

double PVTIC(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows, double DayCountDisc,
             const AnnualSequence& PrdsDisc, const date& InvDate, double InvAmt, double CapRateAER,
             const date& StartDCF, const date& FinishDCF, double CapOption, int PVTOptions) {
    Routine here{"PVTIC"};
    here.inputs(NPVDate, DisAER, Dates, Cashflows, DayCountDisc, PrdsDisc, InvDate, InvAmt, CapRateAER, StartDCF,
                FinishDCF, CapOption, PVTOptions);
    check_discount_rate(here, DisAER);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    check_discount_rate(here, CapRateAER, "CapRateAER");
    const FlowLists flows(Dates, Cashflows);
    const DiscountRules rules{NPVDate, DayCountDisc, PrdsDisc, StartDCF, FinishDCF, PVTOptions};
    const CapitalReturn capital(here, flows, rules, CapRateAER, CapOption);
    WorkSchedule schedule;
    flows.add_to(*schedule, rules);
    invested(InvDate, InvAmt, NPVDate).add_to(*schedule, rules);
    return here.returning(schedule->present_value(DisAER) + capital.present_value(DisAER));
}

double PVTCX(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows, double IRRMinOpt,
             double IRRMaxOpt, double IRRAccOpt, double DayCountDisc, const AnnualSequence& PrdsDisc, double CapRateAER,
             const date& StartDCF, const date& FinishDCF, double CapOption, int PVTOptions, View<date> Dates2,
             View<double> Cashflows2, View<date> Dates3, View<double> Cashflows3, View<date> Dates4,
             View<double> Cashflows4) {
    Routine here{"PVTCX"};
    here.inputs(NPVDate, DisAER, Dates, Cashflows, IRRMinOpt, IRRMaxOpt, IRRAccOpt, DayCountDisc, PrdsDisc, CapRateAER,
                StartDCF, FinishDCF, CapOption, PVTOptions, Dates2, Cashflows2, Dates3, Cashflows3, Dates4, Cashflows4);
    check_discount_rate(here, DisAER);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    check_discount_rate(here, CapRateAER, "CapRateAER");
    const FlowLists flows(Dates, Cashflows, Dates2, Cashflows2, Dates3, Cashflows3, Dates4, Cashflows4);
    const DiscountRules rules{NPVDate, DayCountDisc, PrdsDisc, StartDCF, FinishDCF, PVTOptions};
    const CapitalReturn capital(here, flows, rules, CapRateAER, CapOption);
    WorkSchedule schedule;
    flows.add_to(*schedule, rules);
    return here.returning(schedule->present_value(DisAER) + capital.present_value(DisAER));
}

double PVTR(const date& NPVDate, double DisAER, const date& RealisationDate, View<date> Dates, View<double> Cashflows,
            View<double> RealisationLevels, double DayCountDisc, const AnnualSequence& PrdsDisc, const date& StartDCF,
            const date& FinishDCF, int PVTOptions) {
    Routine here{"PVTR"};
    here.inputs(NPVDate, DisAER, RealisationDate, Dates, Cashflows, RealisationLevels, DayCountDisc, PrdsDisc, StartDCF,
                FinishDCF, PVTOptions);
    check_discount_rate(here, DisAER);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    const SingleFlow realisation = realised(here, RealisationDate, Dates, RealisationLevels, StartDCF, FinishDCF);
    const DatedAmounts flows = screened(Dates, Cashflows);
    const date& end = earlier_end(RealisationDate, FinishDCF);
    const DiscountRules rules{NPVDate, DayCountDisc, PrdsDisc, StartDCF, end, PVTOptions};
    WorkSchedule schedule = scheduled(rules, flows.Dates(), flows.Amounts());
    realisation.add_to(*schedule, rules);
    return here.returning(schedule->present_value(DisAER));
}

double NPVR(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows) {
    Routine here{"NPVR"};
    here.inputs(NPVDate, DisAER, Dates, Cashflows);
    return here.returning(
        PVT(NPVDate, DisAER, Dates, Cashflows, default_daycount, default_periods(), no_date, no_date, 0));
}

// --- Internal rates of return -----------------------------------------------------------------------------------

double IRRT(View<date> Dates, View<double> Cashflows, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt,
            double DayCountDisc, const AnnualSequence& PrdsDisc, int PVTOptions) {
    Routine here{"IRRT"};
    here.inputs(Dates, Cashflows, IRRMinOpt, IRRMaxOpt, IRRAccOpt, DayCountDisc, PrdsDisc, PVTOptions);
    here.change_note(53, "See Change in Behaviour 53, Oct-03 :Change of variable order: IRRMinOpt, IRRMaxOpt and "
                         "IRRAcc inserted before Daycount");
    check_daycount(here, DayCountDisc, "DayCountDisc");
    const FlowLists flows(Dates, Cashflows);
    if (flows.empty()) return here.returning(0.0);
    const DiscountRules rules{flows.first_date(), DayCountDisc, PrdsDisc, no_date, no_date, PVTOptions};
    clsSpecificDCFSolve problem(flows, rules);
    return solved(here, problem, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
}

double IRRTX(View<date> Dates, View<double> Cashflows, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt,
             double DayCountDisc, const AnnualSequence& PrdsDisc, const date& StartDCF, const date& FinishDCF,
             int PVTOptions, View<date> Dates2, View<double> Cashflows2, View<date> Dates3, View<double> Cashflows3,
             View<date> Dates4, View<double> Cashflows4) {
    Routine here{"IRRTX"};
    here.inputs(Dates, Cashflows, IRRMinOpt, IRRMaxOpt, IRRAccOpt, DayCountDisc, PrdsDisc, StartDCF, FinishDCF,
                PVTOptions, Dates2, Cashflows2, Dates3, Cashflows3, Dates4, Cashflows4);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    const FlowLists flows(Dates, Cashflows, Dates2, Cashflows2, Dates3, Cashflows3, Dates4, Cashflows4);
    if (flows.empty()) return here.returning(0.0);
    const DiscountRules rules{flows.first_date(), DayCountDisc, PrdsDisc, StartDCF, FinishDCF, PVTOptions};
    clsSpecificDCFSolveX problem(flows, rules);
    return solved(here, problem, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
}

double IRRTIC(View<date> Dates, View<double> Cashflows, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt,
              double DayCountDisc, const AnnualSequence& PrdsDisc, const date& InvDate, double InvAmt,
              double CapRateAER, const date& StartDCF, const date& FinishDCF, double CapOption, int PVTOptions) {
    Routine here{"IRRTIC"};
    here.inputs(Dates, Cashflows, IRRMinOpt, IRRMaxOpt, IRRAccOpt, DayCountDisc, PrdsDisc, InvDate, InvAmt, CapRateAER,
                StartDCF, FinishDCF, CapOption, PVTOptions);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    check_discount_rate(here, CapRateAER, "CapRateAER");
    const FlowLists flows(Dates, Cashflows);
    if (flows.empty()) return here.returning(0.0);
    const DiscountRules rules{flows.first_date(), DayCountDisc, PrdsDisc, StartDCF, FinishDCF, PVTOptions};
    const CapitalReturn capital(here, flows, rules, CapRateAER, CapOption);
    const SingleFlow outlay = invested(InvDate, InvAmt, rules.NPVDate);
    clsSpecificDCFSolveIC problem(flows, rules, capital, outlay);
    return solved(here, problem, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
}

double IRRTCX(View<date> Dates, View<double> Cashflows, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt,
              double DayCountDisc, const AnnualSequence& PrdsDisc, double CapRateAER, const date& StartDCF,
              const date& FinishDCF, double CapOption, int PVTOptions, View<date> Dates2, View<double> Cashflows2,
              View<date> Dates3, View<double> Cashflows3, View<date> Dates4, View<double> Cashflows4) {
    Routine here{"IRRTCX"};
    here.inputs(Dates, Cashflows, IRRMinOpt, IRRMaxOpt, IRRAccOpt, DayCountDisc, PrdsDisc, CapRateAER, StartDCF,
                FinishDCF, CapOption, PVTOptions, Dates2, Cashflows2, Dates3, Cashflows3, Dates4, Cashflows4);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    check_discount_rate(here, CapRateAER, "CapRateAER");
    const FlowLists flows(Dates, Cashflows, Dates2, Cashflows2, Dates3, Cashflows3, Dates4, Cashflows4);
    if (flows.empty()) return here.returning(0.0);
    const DiscountRules rules{flows.first_date(), DayCountDisc, PrdsDisc, StartDCF, FinishDCF, PVTOptions};
    const CapitalReturn capital(here, flows, rules, CapRateAER, CapOption);
    clsSpecificDCFSolveCX problem(flows, rules, capital);
    return solved(here, problem, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
}

double IRRTR(const date& RealisationDate, View<date> Dates, View<double> Cashflows, View<double> RealisationLevels,
             double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt, double DayCountDisc, const AnnualSequence& PrdsDisc,
             const date& StartDCF, const date& FinishDCF, int PVTOptions) {
    Routine here{"IRRTR"};
    here.inputs(RealisationDate, Dates, Cashflows, RealisationLevels, IRRMinOpt, IRRMaxOpt, IRRAccOpt, DayCountDisc,
                PrdsDisc, StartDCF, FinishDCF, PVTOptions);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    const SingleFlow realisation = realised(here, RealisationDate, Dates, RealisationLevels, StartDCF, FinishDCF);
    const FlowLists flows(Dates, Cashflows);
    if (flows.empty()) return here.returning(0.0);
    const date& end = earlier_end(RealisationDate, FinishDCF);
    const DiscountRules rules{flows.first_date(), DayCountDisc, PrdsDisc, StartDCF, end, PVTOptions};
    clsSpecificDCFSolveR problem(flows, rules, realisation);
    return solved(here, problem, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
}

// --- Times ------------------------------------------------------------------------------------------------------

double DurationT(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows, double DayCountDisc,
                 const AnnualSequence& PrdsDisc) {
    Routine here{"DurationT"};
    here.inputs(NPVDate, DisAER, Dates, Cashflows, DayCountDisc, PrdsDisc);
    check_discount_rate(here, DisAER);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    const DatedAmounts flows = screened(Dates, Cashflows);
    const WorkSchedule schedule =
        scheduled({NPVDate, DayCountDisc, PrdsDisc, no_date, no_date}, flows.Dates(), flows.Amounts());
    return here.returning("Duration", average_discounted_time(schedule, DisAER));
}

double AvLifeT(const date& Start, View<date> Dates, View<double> Cashflows, double DayCountDisc,
               const AnnualSequence& PrdsDisc) {
    Routine here{"AvLifeT"};
    here.inputs(Start, Dates, Cashflows, DayCountDisc, PrdsDisc);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    const DatedAmounts flows = screened(Dates, Cashflows);
    const WorkSchedule schedule =
        scheduled({Start, DayCountDisc, PrdsDisc, no_date, no_date}, flows.Dates(), flows.Amounts());
    return here.returning("AverageLife", average_time(schedule));
}

date PayBackT(View<date> Dates, View<double> Cashflows, double MinPayBack, bool Interpolate, double DayCount,
              const AnnualSequence& Periods, int PayBackOptions) {
    Routine here{"PayBackT"};
    here.inputs(Dates, Cashflows, MinPayBack, Interpolate, DayCount, Periods, PayBackOptions);
    check_daycount(here, DayCount);
    const DatedAmounts flows = screened(Dates, Cashflows);
    return here.returning("PayBackDate", payback_date(here, flows.Dates(), flows.Amounts(), MinPayBack, Interpolate,
                                                      DayCount, Periods, PayBackOptions));
}

date PayBackDiscT(double DisAER, View<date> Dates, View<double> Cashflows, double MinPayBack, bool Interpolate,
                  double DayCountDisc, const AnnualSequence& PrdsDisc, int PayBackOptions) {
    Routine here{"PayBackDiscT"};
    here.inputs(DisAER, Dates, Cashflows, MinPayBack, Interpolate, DayCountDisc, PrdsDisc, PayBackOptions);
    check_discount_rate(here, DisAER);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    const DatedAmounts flows = screened(Dates, Cashflows);
    const WorkList<double> discounted =
        discounted_flows(DisAER, flows.Dates(), flows.Amounts(), DayCountDisc, PrdsDisc);
    return here.returning("PayBackDate", payback_date(here, flows.Dates(), discounted, MinPayBack, Interpolate,
                                                      DayCountDisc, PrdsDisc, PayBackOptions));
}

// --- A single payment -------------------------------------------------------------------------------------------

double PVOne(const date& TheDate, const date& NPVDate, double DisAER, double DayCountDisc,
             const AnnualSequence& PrdsDisc) {
    Routine here{"PVOne"};
    here.inputs(TheDate, NPVDate, DisAER, DayCountDisc, PrdsDisc);
    check_discount_rate(here, DisAER);
    check_daycount(here, DayCountDisc, "DayCountDisc");
    return here.returning(1.0 / SafePow(1.0 + DisAER, years_between(NPVDate, TheDate, DayCountDisc, PrdsDisc)));
}

double PVOneQ(const date& TheDate, const date& NPVDate, double DisAER) {
    Routine here{"PVOneQ"};
    here.inputs(TheDate, NPVDate, DisAER);
    check_discount_rate(here, DisAER);
    return here.returning(1.0 / SafePow(1.0 + DisAER, (TheDate.months() - NPVDate.months()) / 12.0));
}

double NPVOne(const date& TheDate, const date& NPVDate, double DisAER) {
    Routine here{"NPVOne"};
    here.inputs(TheDate, NPVDate, DisAER);
    return here.returning(PVOne(TheDate, NPVDate, DisAER, default_daycount, default_periods()));
}

namespace {

/// The factor from one date to another at rates that change at dates. The first rate also serves the time before the
/// first from-date, the last one the time after the last to-date.
double stepped_factor(Routine& here, const date& TheDate, const date& NPVDate, View<double> DiscRatesAER,
                      View<date> Dates, bool to_dates, double DayCountDisc, const AnnualSequence& PrdsDisc) {
    check_daycount(here, DayCountDisc, "DayCountDisc");
    int n = Dates.size();
    while (n > 0 && Dates.get(n).iszero()) --n;
    if (n == 0) return 1.0;
    const auto rate_of = [&](int i) {
        const double rate = DiscRatesAER.size() == 1 ? DiscRatesAER.get(1) : DiscRatesAER.get(i);
        check_discount_rate(here, rate, "DiscRatesAER");
        return rate;
    };
    const date& from = std::min(TheDate, NPVDate);
    const date& to = std::max(TheDate, NPVDate);
    double growth = 1.0;
    date start = from;
    for (int i = 1; i <= n && start < to; ++i) {
        // Rate i ends with its own to-date, or where the next from-date begins; the last one never.
        const date end = i == n ? to : std::clamp(Dates.get(to_dates ? i : i + 1), start, to);
        if (end <= start) continue;
        const double rate = rate_of(i);
        const double years = years_between(start, end, DayCountDisc, PrdsDisc);
        const TraceBlock pass = here.pass(i, years, " years at a rate of ", rate);
        growth *= SafePow(1.0 + rate, years);
        start = end;
    }
    return TheDate < NPVDate ? growth : 1.0 / growth;
}

} // namespace

double FPVOne(const date& TheDate, const date& NPVDate, View<double> DiscRatesAER, View<date> FromDates,
              double DayCountDisc, const AnnualSequence& PrdsDisc) {
    Routine here{"FPVOne"};
    here.inputs(TheDate, NPVDate, DiscRatesAER, FromDates, DayCountDisc, PrdsDisc);
    return here.returning(
        stepped_factor(here, TheDate, NPVDate, DiscRatesAER, FromDates, false, DayCountDisc, PrdsDisc));
}

double TPVOne(const date& TheDate, const date& NPVDate, View<double> DiscRatesAER, View<date> ToDates,
              double DayCountDisc, const AnnualSequence& PrdsDisc) {
    Routine here{"TPVOne"};
    here.inputs(TheDate, NPVDate, DiscRatesAER, ToDates, DayCountDisc, PrdsDisc);
    return here.returning(stepped_factor(here, TheDate, NPVDate, DiscRatesAER, ToDates, true, DayCountDisc, PrdsDisc));
}

double EACFT(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows) {
    Routine here{"EACFT"};
    here.arguments(QX_NAMED(NPVDate, DisAER, Dates, Cashflows));
    here.info("Function Not yet implemented -");
    return here.returning(0.0);
}

} // namespace qx
