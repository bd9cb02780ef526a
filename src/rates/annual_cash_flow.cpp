#include "rates/annual_cash_flow.h"

#include "rates/annuities.h"
#include "rates/cash_flow.h"
#include "rates/compounding.h"
#include "rates/discounting.h"

namespace qx {

namespace {

// --- The dates of even cash flows -------------------------------------------------------------------------------

/// A year apart from a start on. Throws errlibmax for more flows than the calendar has years, 1910 to 3653.
WorkList<date> annual_dates(const Routine& here, const date& StartAnnDate, int n) {
    constexpr int years = date::maxyear - 1910 + 1;
    if (n > years)
        here.fail<errlibmax>("AnnualCashFlows", n, " annual cash flows, and the calendar has ", years, " years");
    WorkList<date> dates(n);
    for (int i = 1; i <= n; ++i) dates(i) = StartAnnDate.plusyears(i - 1, false);
    return dates;
}
WorkList<date> even_dates(const date& EvenTimeStart, double EvenTimeInterval, int n) {
    WorkList<date> dates(n);
    for (int i = 1; i <= n; ++i) dates(i) = EvenTimeStart.plusmonths((i - 1) * EvenTimeInterval);
    return dates;
}

WorkSchedule scheduled(const date& origin, double DayCount, View<date> dates, View<double> flows) {
    return scheduled({origin, DayCount, default_periods(), no_date, no_date}, dates, flows);
}

// --- Internal rates of return -----------------------------------------------------------------------------------

/// Flows some years apart, the first at time 0.
class EvenSolve : public CashFlowSolve {
  public:
    EvenSolve(View<double> flows, double years_apart) : flows_(flows), years_apart_(years_apart) {}
    void setup() override {
        schedule_->clear();
        for (int i = 1; i <= flows_.size(); ++i)
            if (!iszero(flows_.get(i))) schedule_->add(flows_.get(i), (i - 1) * years_apart_);
    }

  private:
    View<double> flows_;
    double years_apart_;
};

class clsAnnualDCFSolve final : public EvenSolve {
  public:
    explicit clsAnnualDCFSolve(View<double> flows) : EvenSolve(flows, 1.0) {}
};

class clsEvenDCFSolve final : public EvenSolve {
  public:
    clsEvenDCFSolve(View<double> flows, double months_apart) : EvenSolve(flows, months_apart / 12.0) {}
};

/// Annual flows that are each received several times in the year.
class clsDCFDispersedAnnualSolve final : public EvenSolve {
  public:
    clsDCFDispersedAnnualSolve(View<double> flows, double p) : EvenSolve(flows, 1.0), frequency_(p) {}

  private:
    double net_present_value(double rate) const override {
        return spread_correction(rate, frequency_) * schedule_->present_value(rate);
    }
    double frequency_;
};

double solved(const Routine& here, CashFlowSolve& problem, View<double> flows, double IRRMinOpt, double IRRMaxOpt,
              double IRRAccOpt) {
    if (flows.size() == 0) return here.returning(0.0);
    problem.setup();
    return here.returning("IRRAER", solve_irr(here, problem, IRRMinOpt, IRRMaxOpt, IRRAccOpt));
}

} // namespace

// --- Annual -----------------------------------------------------------------------------------------------------

double PVA(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate,
           double DCountDisc, const date& StartDCF, const date& FinishDCF) {
    Routine here{"PVA"};
    here.inputs(NPVDate, DisAER, AnnualCashFlows, StartAnnDate, DCountDisc, StartDCF, FinishDCF);
    check_discount_rate(here, DisAER);
    check_daycount(here, DCountDisc, "DCountDisc");
    return here.returning(pvt(DisAER, NPVDate, annual_dates(here, StartAnnDate, AnnualCashFlows.size()),
                              AnnualCashFlows, DCountDisc, default_periods(), StartDCF, FinishDCF, 0));
}

double IRRA(View<double> AnnualCashFlows, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt) {
    Routine here{"IRRA"};
    here.inputs(AnnualCashFlows, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
    clsAnnualDCFSolve problem(AnnualCashFlows);
    return solved(here, problem, AnnualCashFlows, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
}

double IRRAX(View<double> AnnualCashFlows, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt) {
    Routine here{"IRRAX"};
    here.inputs(AnnualCashFlows, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
    return here.returning(IRRA(AnnualCashFlows, IRRMinOpt, IRRMaxOpt, IRRAccOpt));
}

double DurationA(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate,
                 double DCountDisc) {
    Routine here{"DurationA"};
    here.inputs(NPVDate, DisAER, AnnualCashFlows, StartAnnDate, DCountDisc);
    check_discount_rate(here, DisAER);
    check_daycount(here, DCountDisc, "DCountDisc");
    const WorkList<date> dates = annual_dates(here, StartAnnDate, AnnualCashFlows.size());
    return here.returning("Duration",
                          average_discounted_time(scheduled(NPVDate, DCountDisc, dates, AnnualCashFlows), DisAER));
}

double AvLifeA(const date& Start, View<double> AnnualCashFlows, const date& StartAnnDate, double DCountDisc) {
    Routine here{"AvLifeA"};
    here.inputs(Start, AnnualCashFlows, StartAnnDate, DCountDisc);
    check_daycount(here, DCountDisc, "DCountDisc");
    const WorkList<date> dates = annual_dates(here, StartAnnDate, AnnualCashFlows.size());
    return here.returning("AverageLife", average_time(scheduled(Start, DCountDisc, dates, AnnualCashFlows)));
}

date PayBackA(View<double> AnnualCashFlows, const date& StartAnnDate, double MinPayBack, bool Interpolate,
              double DCount, int PayBackOptions) {
    Routine here{"PayBackA"};
    here.inputs(AnnualCashFlows, StartAnnDate, MinPayBack, Interpolate, DCount, PayBackOptions);
    check_daycount(here, DCount, "DCount");
    const WorkList<date> dates = annual_dates(here, StartAnnDate, AnnualCashFlows.size());
    return here.returning("PayBackDate", payback_date(here, dates, AnnualCashFlows, MinPayBack, Interpolate, DCount,
                                                      default_periods(), PayBackOptions));
}

date PayBackDiscA(double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate, double MinPayBack,
                  bool Interpolate, double DCountDisc, int PayBackOptions) {
    Routine here{"PayBackDiscA"};
    here.inputs(DisAER, AnnualCashFlows, StartAnnDate, MinPayBack, Interpolate, DCountDisc, PayBackOptions);
    check_discount_rate(here, DisAER);
    check_daycount(here, DCountDisc, "DCountDisc");
    const WorkList<date> dates = annual_dates(here, StartAnnDate, AnnualCashFlows.size());
    const WorkList<double> discounted = discounted_flows(DisAER, dates, AnnualCashFlows, DCountDisc, default_periods());
    return here.returning("PayBackDate", payback_date(here, dates, discounted, MinPayBack, Interpolate, DCountDisc,
                                                      default_periods(), PayBackOptions));
}

// --- Spread over the year ---------------------------------------------------------------------------------------

double NPVM(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate,
            double PmtsPerYear) {
    Routine here{"NPVM"};
    here.inputs(NPVDate, DisAER, AnnualCashFlows, StartAnnDate, PmtsPerYear);
    check_discount_rate(here, DisAER);
    const double p = check_frequency(here, PmtsPerYear);
    const double annual = PVA(NPVDate, DisAER, AnnualCashFlows, StartAnnDate, default_daycount, no_date, no_date);
    return here.returning(annual * CorrectionM(DisAER, p));
}

double NPVMB(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate,
             double PmtsPerYear) {
    Routine here{"NPVMB"};
    here.inputs(NPVDate, DisAER, AnnualCashFlows, StartAnnDate, PmtsPerYear);
    return here.returning(NPVM(NPVDate, DisAER, AnnualCashFlows, StartAnnDate, PmtsPerYear));
}

double IRRM(View<double> AnnualCashFlows, double PmtsPerYear, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt) {
    Routine here{"IRRM"};
    here.inputs(AnnualCashFlows, PmtsPerYear, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
    const double p = check_frequency(here, PmtsPerYear);
    clsDCFDispersedAnnualSolve problem(AnnualCashFlows, p);
    return solved(here, problem, AnnualCashFlows, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
}

double IRRMX(View<double> AnnualCashFlows, double PmtsPerYear, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt) {
    Routine here{"IRRMX"};
    here.inputs(AnnualCashFlows, PmtsPerYear, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
    return here.returning(IRRM(AnnualCashFlows, PmtsPerYear, IRRMinOpt, IRRMaxOpt, IRRAccOpt));
}

double DurationM(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate,
                 double PmtsPerYear) {
    Routine here{"DurationM"};
    here.inputs(NPVDate, DisAER, AnnualCashFlows, StartAnnDate, PmtsPerYear);
    check_discount_rate(here, DisAER);
    const double p = check_frequency(here, PmtsPerYear);
    const WorkList<date> dates = annual_dates(here, StartAnnDate, AnnualCashFlows.size());
    const WorkSchedule schedule = scheduled(NPVDate, default_daycount, dates, AnnualCashFlows);
    if (schedule->size() == 0) return here.returning(0.0);
    // The payments of a flow lie in the year up to its date.
    return here.returning("Duration", average_discounted_time(schedule, DisAER) + spread_time(DisAER, p) - 1.0);
}

double AvLifeM(const date& Start, View<double> AnnualCashFlows, const date& StartAnnDate, double PmtsPerYear) {
    Routine here{"AvLifeM"};
    here.inputs(Start, AnnualCashFlows, StartAnnDate, PmtsPerYear);
    const double p = check_frequency(here, PmtsPerYear);
    const WorkList<date> dates = annual_dates(here, StartAnnDate, AnnualCashFlows.size());
    const WorkSchedule schedule = scheduled(Start, default_daycount, dates, AnnualCashFlows);
    if (schedule->size() == 0) return here.returning(0.0);
    return here.returning("AverageLife", average_time(schedule) + spread_time(0.0, p) - 1.0);
}

// --- Even intervals ---------------------------------------------------------------------------------------------

double PVE(const date& NPVDate, double DisAER, View<double> EvenCashFlows, const date& EvenTimeStart,
           double EvenTimeInterval, const date& StartDCF, const date& FinishDCF) {
    Routine here{"PVE"};
    here.inputs(NPVDate, DisAER, EvenCashFlows, EvenTimeStart, EvenTimeInterval, StartDCF, FinishDCF);
    check_discount_rate(here, DisAER);
    return here.returning(pvt(DisAER, NPVDate, even_dates(EvenTimeStart, EvenTimeInterval, EvenCashFlows.size()),
                              EvenCashFlows, default_daycount, default_periods(), StartDCF, FinishDCF, 0));
}

double IRRE(View<double> EvenCashFlows, double EvenTimeInterval, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt) {
    Routine here{"IRRE"};
    here.inputs(EvenCashFlows, EvenTimeInterval, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
    clsEvenDCFSolve problem(EvenCashFlows, EvenTimeInterval);
    return solved(here, problem, EvenCashFlows, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
}

double IRREX(View<double> EvenCashFlows, double EvenTimeInterval, double IRRMinOpt, double IRRMaxOpt,
             double IRRAccOpt) {
    Routine here{"IRREX"};
    here.inputs(EvenCashFlows, EvenTimeInterval, IRRMinOpt, IRRMaxOpt, IRRAccOpt);
    return here.returning(IRRE(EvenCashFlows, EvenTimeInterval, IRRMinOpt, IRRMaxOpt, IRRAccOpt));
}

double DurationE(const date& NPVDate, double DisAER, View<double> EvenCashFlows, const date& EvenTimeStart,
                 double EvenTimeInterval) {
    Routine here{"DurationE"};
    here.inputs(NPVDate, DisAER, EvenCashFlows, EvenTimeStart, EvenTimeInterval);
    check_discount_rate(here, DisAER);
    const WorkList<date> dates = even_dates(EvenTimeStart, EvenTimeInterval, EvenCashFlows.size());
    return here.returning("Duration",
                          average_discounted_time(scheduled(NPVDate, default_daycount, dates, EvenCashFlows), DisAER));
}

double AvLifeE(const date& Start, View<double> EvenCashFlows, const date& EvenTimeStart, double EvenTimeInterval) {
    Routine here{"AvLifeE"};
    here.inputs(Start, EvenCashFlows, EvenTimeStart, EvenTimeInterval);
    const WorkList<date> dates = even_dates(EvenTimeStart, EvenTimeInterval, EvenCashFlows.size());
    return here.returning("AverageLife", average_time(scheduled(Start, default_daycount, dates, EvenCashFlows)));
}

date PaybackE(View<double> EvenCashFlows, const date& EvenTimeStart, double EvenTimeInterval, double MinPayBack,
              bool Interpolate, int PayBackOptions) {
    Routine here{"PaybackE"};
    here.inputs(EvenCashFlows, EvenTimeStart, EvenTimeInterval, MinPayBack, Interpolate, PayBackOptions);
    const WorkList<date> dates = even_dates(EvenTimeStart, EvenTimeInterval, EvenCashFlows.size());
    return here.returning("PayBackDate", payback_date(here, dates, EvenCashFlows, MinPayBack, Interpolate,
                                                      default_daycount, default_periods(), PayBackOptions));
}

date PayBackDiscE(double DisAER, View<double> EvenCashFlows, const date& EvenTimeStart, double EvenTimeInterval,
                  double MinPayBack, bool Interpolate, int PayBackOptions) {
    Routine here{"PayBackDiscE"};
    here.inputs(DisAER, EvenCashFlows, EvenTimeStart, EvenTimeInterval, MinPayBack, Interpolate, PayBackOptions);
    check_discount_rate(here, DisAER);
    const WorkList<date> dates = even_dates(EvenTimeStart, EvenTimeInterval, EvenCashFlows.size());
    const WorkList<double> discounted =
        discounted_flows(DisAER, dates, EvenCashFlows, default_daycount, default_periods());
    return here.returning("PayBackDate", payback_date(here, dates, discounted, MinPayBack, Interpolate,
                                                      default_daycount, default_periods(), PayBackOptions));
}

// --- Equivalent annual cash flow --------------------------------------------------------------------------------

namespace {

/// A level flow of 1 on each of the dates of a list.
WorkList<double> ones(int n) {
    WorkList<double> ones(n);
    for (double& one : *ones) one = 1.0;
    return ones;
}

} // namespace

double EACF(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate) {
    Routine here{"EACF"};
    here.arguments(QX_NAMED(NPVDate, DisAER, AnnualCashFlows, StartAnnDate));
    const auto worth = [&](View<double> flows) {
        return PVA(NPVDate, DisAER, flows, StartAnnDate, default_daycount, no_date, no_date);
    };
    return here.returning(safe_divide(worth(AnnualCashFlows), worth(ones(AnnualCashFlows.size()))));
}

double EACFM(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate,
             double PmtsPerYear) {
    Routine here{"EACFM"};
    here.arguments(QX_NAMED(NPVDate, DisAER, AnnualCashFlows, StartAnnDate, PmtsPerYear));
    const double annual = PVA(NPVDate, DisAER, AnnualCashFlows, StartAnnDate, default_daycount, no_date, no_date);
    return here.returning(
        safe_divide(annual, NPVM(NPVDate, DisAER, ones(AnnualCashFlows.size()), StartAnnDate, PmtsPerYear)));
}

} // namespace qx
