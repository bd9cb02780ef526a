#include "projections/constant_rate.h"

#include "calendar/date_arithmetic.h"
#include "calendar/seasons.h"
#include "core/twin_run.h"
#include "projections/grown_rate.h"
#include "projections/periodic.h"

#include <cmath>

namespace qx {

timeperiod period_in_years(double Time, double BaseYrs) {
    timeperiod period{FunctionContext("timeperiod", "Time")};
    period.settime_in_years(Time, BaseYrs);
    return period;
}

// --- Screening ------------------------------------------------------------------------------------------------------

void check_reviews(Routine& here, int RevMonths, const char* name) {
    here.limit(RevMonths, review_months_limits, name);
}

bool runs_forward(const Routine& here, const timeperiod& period) {
    return runs_forward(here, Life{period.from(), period.to()});
}

bool screen_cash(const Routine& here, const timeperiod& period, const Life& life) {
    if (!runs_forward(here, period)) return false;
    if (period.to() < life.Start || period.from() > life.Finish)
        here.info("  Timeperiod(", period, ") falls outside Start(", life.Start, ") and Finish(", life.Finish,
                  ") dates, but may produce payment due to timing of cash payment.");
    return true;
}

bool screen_period(const Routine& here, timeperiod& period, const Life& life, const Basis& basis) {
    if (!basis.cash()) return screen_accruals(here, period, life);
    if (!screen_cash(here, period, life)) return false;
    period = CashTime(period, basis.Periods, life.Start, life.Finish, true, basis.ProjMode);
    return true;
}

const date& first_review(const Routine& here, const date& FirstRev) {
    if (!FirstRev.iszero()) return FirstRev;
    here.info("First Review (FirstRev) was zero, resetting it to infinity (", DateCrit, ")");
    return DateCrit;
}

// --- At a constant rate ---------------------------------------------------------------------------------------------

double ConX(const timeperiod& Time, const Life& life, double AnnualRate, const Basis& basis, bool ComponentPart) {
    Routine here{"ConX", Routine::internal};
    here.arguments("Time,Start,Finish,AnnualRate,DayCount,Periods,ProjMode,ComponentPart", Time, life.Start,
                   life.Finish, AnnualRate, basis.DayCount, basis.Periods, basis.ProjMode, ComponentPart);
    basis.check(here);
    return here.returning(in_measured_period(here, Time, life, basis, [&](const timeperiod& period) {
        if (period.to() >= life.Start && period.from() <= life.Finish)
            return amount_in({period.from(), period.to()}, life, AnnualRate, {basis.DayCount, basis.Periods},
                             ComponentPart);
        here.info("Timeperiod outside Start and Finish, returning zero");
        return 0.0;
    }));
}

double Con(const timeperiod& Time, const Streams& streams, const Basis& basis) {
    Routine here{"Con"};
    here.inputs(Time, streams, basis);
    basis.check(here);
    if (!runs_forward(here, Time)) return here.returning(0.0);
    return here.returning(
        streams.sum(here, [&](const Life& life, double AnnualRate) { return con(Time, life, AnnualRate, basis); }));
}

double MultiCon(const timeperiod& Time, const Streams& streams, const Basis& basis) {
    Routine here{"MultiCon"};
    here.inputs(Time, streams, basis);
    here.change_note(93, "See Change in Behaviour 93, Oct-03 :Superceded compatibly by Con");
    return here.returning(Con(Time, streams, basis));
}

double ConSF(const timeperiod& Time, const Streams& streams, const Life& overall, const Basis& basis) {
    Routine here{"ConSF"};
    here.inputs(Time, streams, overall, basis);
    basis.check(here);
    if (!runs_forward(here, Time)) return here.returning(0.0);
    return here.returning(streams.sum(here, [&](const Life& life, double AnnualRate) {
        return con(Time, life.within(overall.Start, overall.Finish), AnnualRate, basis);
    }));
}

double con_seasonal(const timeperiod& Time, const Life& life, double AnnualRate, const Seasons& seasons,
                    const Basis& basis, bool ComponentPart) {
    const Routine here{"ConS", Routine::internal};
    timeperiod period = Time;
    if (!screen_period(here, period, life, basis)) return here.returning(0.0);
    // Whole years count by their length: only what lies in the period may be one.
    const Life counts = seasons.factors.size() < 2 ? life : life.within(period.from(), period.to());
    if (seasons.sequence.size() == 0)
        return here.returning(even_seasonal_amount(period, counts.Start, counts.Finish, AnnualRate, seasons.factors,
                                                   basis.DayCount, basis.Periods, ComponentPart));
    return here.returning(seasonal_amount(period, counts.Start, counts.Finish, AnnualRate, seasons.factors,
                                          seasons.sequence, basis.DayCount, basis.Periods, ComponentPart));
}

double ConS(const timeperiod& Time, const Streams& streams, const Seasons& seasons, const Basis& basis) {
    Routine here{"ConS"};
    here.inputs(Time, streams, seasons, basis);
    basis.check(here);
    if (!runs_forward(here, Time)) return here.returning(0.0);
    return here.returning(streams.sum(here, [&](const Life& life, double AnnualRate) {
        return con_seasonal(Time, life, AnnualRate, seasons, basis, false);
    }));
}

double AnnRate(const timeperiod& Time, const Life& life, double AmountDisbursed, const Basis& basis) {
    constexpr double trial_rate = 1000.0, tolerance = 0.01;
    Routine here{"AnnRate"};
    here.inputs(Time, life, AmountDisbursed, basis);
    basis.check(here);
    const double rate = safe_divide(trial_rate * AmountDisbursed, con(Time, life, trial_rate, basis));
    const double amount = con(Time, life, rate, basis);
    if (!(std::fabs(amount - AmountDisbursed) <= tolerance))
        here.fail<errlibnovalidanswer>("AmountDisbursed", "At ", rate, " a year the period holds ", amount);
    return here.returning(rate);
}

double RePhaseCon(const timeperiod& Time, const Life& from, const Life& to, double AnnualRate, const Basis& basis) {
    Routine here{"RePhaseCon"};
    here.inputs(Time, from, to, AnnualRate, basis);
    basis.check(here);
    const auto months = [&](const Life& life) {
        return diffmonths(life.Start, life.Finish, basis.DayCount, basis.Periods);
    };
    const double rate = safe_divide(months(from), months(to)) * AnnualRate;
    return here.returning(con(Time, to, rate, basis) - con(Time, from, AnnualRate, basis));
}

double ConEvent(const timeperiod& Time, const Life& life) {
    enum Event : int { none = 0, runs = 1, starts = 2, finishes = 3 };
    Routine here{"ConEvent"};
    here.inputs(Time, life);
    if (!runs_forward(here, Time)) return here.returning(0.0);
    const auto event = [&] {
        if (Time.contains(life.Start)) return starts;
        if (Time.contains(life.Finish)) return finishes;
        const bool open_start = life.Start.iszero(), open_finish = life.Finish.iszero();
        if (open_start && open_finish) return none;
        return (open_start || Time.from() >= life.Start) && (open_finish || Time.to() < life.Finish) ? runs : none;
    };
    return here.returning(static_cast<double>(event()));
}

double ConPer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> AnnualRates,
              int Periodicity, const Basis& basis) {
    Routine here{"ConPer"};
    here.inputs(Time, life, AbsFinish, AnnualRates, Periodicity, basis);
    basis.check(here);
    return here.returning(
        sum_repetitions(here, Time, life, AbsFinish, AnnualRates, Periodicity, basis,
                        [&](const Life& piece, double AnnualRate) { return con(Time, piece, AnnualRate, basis); }));
}

double AnnGrowPer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> AnnualRates,
                  const Growth& growth, int Periodicity, const Basis& basis) {
    Routine here{"AnnGrowPer"};
    here.inputs(Time, life, AbsFinish, AnnualRates, growth, Periodicity, basis);
    TwinWait::pass_to("ConGrowPer", here);
    return here.returning(ConGrowPer(Time, life, AbsFinish, AnnualRates, growth, 12, Periodicity, basis));
}

double ConGrowPer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> AnnualRates,
                  const Growth& growth, int RevMos, int Periodicity, const Basis& basis) {
    Routine here{"ConGrowPer"};
    here.inputs(Time, life, AbsFinish, AnnualRates, growth, RevMos, Periodicity, basis);
    basis.check(here);
    check_reviews(here, RevMos, "RevMos");
    GrowthWalk walk(growth);
    Kept<GrownRate> rates{here, AnnualRates.size()};
    return here.returning(over(here, Time, [&](const timeperiod& period) {
        int n = 0;
        return sum_repetitions(here, period, life, AbsFinish, AnnualRates, Periodicity, basis,
                               [&](const Life& piece, double AnnualRate) {
                                   growth.check(here);
                                   GrownRate& rate = rates(std::min(++n, AnnualRates.size()), [&] {
                                       return GrownRate{walk, AnnualRate, AnnualRate, RevMos};
                                   });
                                   return rate.in(period, piece, basis, false);
                               });
    }));
}

// --- Older forms ----------------------------------------------------------------------------------------------------

double PerAnn(double Time, const Streams& streams, double BaseYrs, const Basis& basis) {
    Routine here{"PerAnn"};
    here.inputs(Time, streams, BaseYrs, basis);
    return here.returning(Con(period_in_years(Time, BaseYrs), streams, basis));
}

double MultiPerAnn(double Time, const Streams& streams, double BaseYrs, const Basis& basis) {
    Routine here{"MultiPerAnn"};
    here.inputs(Time, streams, BaseYrs, basis);
    return here.returning(Con(period_in_years(Time, BaseYrs), streams, basis));
}

double AnnGrowB(double Time, const Life& life, double AnnualRate, double GrowthRatePA, const date& GrowFrom,
                double BaseYrs, const Basis& basis) {
    Routine here{"AnnGrowB"};
    here.inputs(Time, life, AnnualRate, GrowthRatePA, GrowFrom, BaseYrs, basis);
    const Streams stream{View<date>::of(life.Start), View<date>::of(life.Finish), View<double>::of(AnnualRate)};
    const Growth growth{View<date>::of(GrowFrom), View<double>::of(GrowthRatePA)};
    return here.returning(AnnGrow(period_in_years(Time, BaseYrs), stream, growth, basis));
}

} // namespace qx
