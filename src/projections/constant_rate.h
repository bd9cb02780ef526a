// Streams of money that run at so much a year between two dates: how much of one falls into a time period. Every
// projection cuts its stream into pieces of constant rate and asks ConX for each.
//
// Under accruals a period holds what accrues in it; under cash (ProjMode 1 or 3) what the payment dates of Periods in
// it settle. All throw errlibmin and errlibmax for a DayCount outside 0 to 999, a ProjMode outside 0 to 7, a forecast
// base outside 1 to 1000 or months between reviews outside 0 to 1000; those that take growth throw missinggrowthdate
// (Growth::check). A routine whose name ends in X measures a piece of a longer stream, if its ComponentPart says so.
#pragma once

#include "calendar/anyvalue.h"
#include "calendar/time_period.h"
#include "core/routine.h"
#include "projections/terms.h"

namespace qx {

class ForecastRate;
class GrownRate;

/// Months between reviews: throws errlibmin, errlibmax outside 0 to 1000.
void check_reviews(Routine& here, int RevMonths, const char* name = "RevMonthsOpt");
/// All limits of a stream that is reviewed to a forecast.
void check_forecast(Routine& here, const Basis& basis, const Forecast& forecast, int RevMonthsOpt,
                    const char* base = "FcstBase", const char* months = "RevMonthsOpt");

/// The period of a compatibility function, whose length is in years.
timeperiod period_in_years(double Time, double BaseYrs);
/// False, with a note in the trace, if a period ends before it starts.
inline bool runs_forward(const Routine& here, const Life& period) {
    if (period.Finish >= period.Start) return true;
    here.info("End of timeperiod (", period.Finish, ") less than start (", period.Start, "), returning 0");
    return false;
}
bool runs_forward(const Routine& here, const timeperiod& period);
/// False, with a note, if nothing of a stream can accrue in a period: it ends before it starts, or lies outside.
inline bool screen_accruals(const Routine& here, const Life& period, const Life& life) {
    if (!runs_forward(here, period)) return false;
    if (period.Finish >= life.Start && period.Start <= life.Finish) return true;
    here.info("Timeperiod(", period, ") falls outside Start(", life.Start, ") and Finish(", life.Finish,
              ") dates, returning zero.");
    return false;
}
inline bool screen_accruals(const Routine& here, const timeperiod& period, const Life& life) {
    return screen_accruals(here, Life{period.from(), period.to()}, life);
}
/// False, with a note, if a period ends before it starts; a note, too, if a stream can only be paid in it.
bool screen_cash(const Routine& here, const timeperiod& period, const Life& life);
/// The period in which a stream is measured, in place of a worksheet period: itself under accruals, the span that is
/// paid for in it under cash. False if nothing of the stream can fall into it.
bool screen_period(const Routine& here, timeperiod& period, const Life& life, const Basis& basis);
/// What `amount` makes of the period in which a stream is measured (screen_period); 0 if nothing of it can fall in.
template <class Amount>
double in_measured_period(const Routine& here, const timeperiod& given, const Life& life, const Basis& basis,
                          Amount amount) {
    if (!basis.cash()) return screen_accruals(here, given, life) ? amount(given) : 0.0;
    if (!screen_cash(here, given, life)) return 0.0;
    return amount(CashTime(given, basis.Periods, life.Start, life.Finish, true, basis.ProjMode));
}
/// The first date from which reviews are made: a zero date means that there are none.
const date& first_review(const Routine& here, const date& FirstRev);

/// How many dates of a sequence lie from one date (itself not counted) to another. Only the stubs of a composite day
/// count ask for it: otherwise it is 0.
class PeriodCount {
  public:
    PeriodCount(const Basis& basis, const DayCountCodes& codes)
        : sequence_(codes.composite(basis.DayCount) ? &basis.Periods : nullptr) {}
    int operator()(const date& from, const date& to) const {
        return sequence_ == nullptr ? 0 : sequence_->seqnumber(to, true) - sequence_->seqnumber(from, true);
    }

  private:
    const AnnualSequence* sequence_;
};

// --- At a constant rate ---------------------------------------------------------------------------------------------

/// What a stream accrues in a period.
inline double amount_in(const Life& period, const Life& life, double AnnualRate, const Measure& measure,
                        bool ComponentPart) {
    return AnnualRate *
           timeperiod::lenmonths(period.Start, period.Finish, life.Start, life.Finish, measure.DayCount,
                                 measure.Periods, ComponentPart) /
           12.0;
}
/// The amount of a stream of AnnualRate a year that falls into a period. ComponentPart says that it is a piece of a
/// longer stream, which goes on at the end of its life.
double ConX(const timeperiod& Time, const Life& life, double AnnualRate, const Basis& basis, bool ComponentPart);
/// The same under accruals, of a period that is given by its ends.
inline double ConX(const Life& Time, const Life& life, double AnnualRate, const Measure& measure, bool ComponentPart) {
    Routine here{"ConX", Routine::internal};
    here.arguments("Time,Start,Finish,AnnualRate,DayCount,Periods,ProjMode,ComponentPart", Time, life.Start,
                   life.Finish, AnnualRate, measure.DayCount, measure.Periods, 0.0, ComponentPart);
    measure.check(here);
    if (!screen_accruals(here, Time, life)) return here.returning(0.0);
    return here.returning(amount_in(Time, life, AnnualRate, measure, ComponentPart));
}
/// The same of a whole stream.
inline double con(const timeperiod& Time, const Life& life, double AnnualRate, const Basis& basis) {
    return ConX(Time, life, AnnualRate, basis, false);
}

/// The amounts of one or several streams that fall into a period.
double Con(const timeperiod& Time, const Streams& streams, const Basis& basis);
/// Con under its older name.
double MultiCon(const timeperiod& Time, const Streams& streams, const Basis& basis);
/// Con of what lies between two overall dates.
double ConSF(const timeperiod& Time, const Streams& streams, const Life& overall, const Basis& basis);
/// The amount of a stream whose annual rate is spread over the year by seasons, even ones without a sequence of dates.
double con_seasonal(const timeperiod& Time, const Life& life, double AnnualRate, const Seasons& seasons,
                    const Basis& basis, bool ComponentPart);
double ConS(const timeperiod& Time, const Streams& streams, const Seasons& seasons, const Basis& basis);

/// The annual rate of a stream that amounts to AmountDisbursed in a period. Throws errlibnovalidanswer if none does
/// within 0.01, as where nothing of the stream falls into the period.
double AnnRate(const timeperiod& Time, const Life& life, double AmountDisbursed, const Basis& basis);
/// What a period gains by moving a stream to other dates with its total kept: the amount there less the amount here.
double RePhaseCon(const timeperiod& Time, const Life& from, const Life& to, double AnnualRate, const Basis& basis);
/// What happens to a stream in a period: 2 it starts, 3 it finishes, 1 it runs all through, 0 none of these. A zero
/// date is an open end.
double ConEvent(const timeperiod& Time, const Life& life);

/// A stream that recurs every Periodicity months until it would start on or after AbsFinish, each time as long as
/// the first time, at the next of AnnualRates, of which the last one applies to the rest. Throws errlibmaxrevs if it
/// recurs a hundred times by the end of the period.
double ConPer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> AnnualRates,
              int Periodicity, const Basis& basis);
/// The same growing: with a step of growth once a year, or every RevMos months.
double AnnGrowPer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> AnnualRates,
                  const Growth& growth, int Periodicity, const Basis& basis);
double ConGrowPer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> AnnualRates,
                  const Growth& growth, int RevMos, int Periodicity, const Basis& basis);

// --- Reviewed to a growing rate -------------------------------------------------------------------------------------

/// The amount of a stream that runs at InitialAnnRate until FirstRev and then at a market rate, taken up every
/// RevMonthsOpt months (0: continuously). MktAnnRate is the market rate at GrowthBaseDate; growth dates are
/// GrowthLag months later than given.
double ConGrowMktX(const timeperiod& Time, const Life& life, const date& FirstRev, double MktAnnRate,
                   double InitialAnnRate, const Growth& growth, const date& GrowthBaseDate, int RevMonthsOpt,
                   const Basis& basis, bool ComponentPart, int GrowthLag);
/// The same with the market rate as at the first growth date. A section of no growth is at the rate that it starts
/// with.
double ConGrowMkt(const timeperiod& Time, const Life& life, const date& FirstRev, double MktAnnRate,
                  double InitialAnnRate, const Growth& growth, int RevMonthsOpt, const Basis& basis);
/// A market rate with one growth rate from one date on, reviewed from Start on.
double ConGrowMktQ(const timeperiod& Time, const Life& life, double MktAnnRate, double InitialAnnRate,
                   const date& GrowFrom, double GrowthRatePA, int RevMos, const Basis& basis);

/// The amount of a stream whose rate grows from the first growth date on, in steps every RevMonthsOpt months.
double con_grow(const timeperiod& Time, const Life& life, double AnnualRate, const Growth& growth, int RevMonthsOpt,
                const Basis& basis);
double ConGrow(const timeperiod& Time, const Streams& streams, const Growth& growth, int RevMonthsOpt,
               const Basis& basis);
double MultiConGrow(const timeperiod& Time, const Streams& streams, const Growth& growth, int RevMos,
                    const Basis& basis);
/// The same once a year.
double AnnGrow(const timeperiod& Time, const Streams& streams, const Growth& growth, const Basis& basis);
double MultiAnnGrow(const timeperiod& Time, const Streams& streams, const Growth& growth, const Basis& basis);
/// One growth rate from one date on. Steps count from GrowFrom, continuous growth from Start. Throws errlibbadnum
/// for negative RevMos.
double ConGrowQ(const timeperiod& Time, const Life& life, double AnnualRate, const date& GrowFrom, double GrowthRatePA,
                int RevMos, const Basis& basis);

// --- Reviewed to a forecast -----------------------------------------------------------------------------------------

/// The period over which a forecast that is read at reviews gives one rate: from the last review on or before a date,
/// zero before the first one, to the next review that sees another value of the forecast. With StepOverBoundary a
/// period that would end on the date itself is taken from the day after.
timeperiod ReviewPeriodFcst(const date& TheDate, const date& FirstRev, int RevMonths, const date& StartFcst,
                            int FcstBase, bool StepOverBoundary);

/// The amount of a stream that runs at InitialAnnRate until FirstRev and then at the forecast's value at each review
/// (RevMonthsOpt 0: continuously). A review before the forecast starts keeps the initial rate. At most 1000 reviews.
double ConFcstMktX(const timeperiod& Time, const Life& life, const date& FirstRev, double InitialAnnRate,
                   const Forecast& forecast, int RevMonthsOpt, const Basis& basis, bool ComponentPart);
double ConFcstMkt(const timeperiod& Time, const Life& life, const date& FirstRev, double InitialAnnRate,
                  const Forecast& forecast, int RevMonthsOpt, const Basis& basis);
/// The same scaled by what growth makes of a stream of 1 in the period.
double ConFcstGrowMkt(const timeperiod& Time, const Life& life, const date& FirstRev, double InitialAnnRate,
                      const Forecast& forecast, const Growth& growth, int RevMos, const Basis& basis);

/// The amount of a stream whose rate follows an index from FirstIdxDate (zero: where stream and index have both
/// started) on, taken up every IdxReg months. BaseDateOrIdx is the date of the index at which InitialAnnRate holds,
/// Start if zero, or the level of the index below 1910. IdxReg 0 adds an approximation: the sum of the index by a
/// stream at the starting rate. Throws illegalvalue for a base level without an index.
double ConIdx(const timeperiod& Time, const Life& life, double InitialAnnRate, const Forecast& index, int IdxReg,
              const dateorfloat& BaseDateOrIdx, const date& FirstIdxDate, const Basis& basis);

// --- Price and quantity ---------------------------------------------------------------------------------------------

/// How a price and a rate make one annual rate; any other code multiplies.
enum RateOperator : int {
    price_times_rate = 0,
    price_by_rate = 1, ///< 0 if either is zero, as for the next
    rate_by_price = 2,
    price_plus_rate = 3,
    price_less_rate = 4,
    rate_less_price = 5,
    greater_of_both = 6,
    smaller_of_both = 7,
};

/// The amount of a stream whose annual rate combines two forecasts, each held between its own dates. Throws
/// illegalvalue for a base below 1, errlibunexpectedcase if the period needs more than 100 mini-periods.
double ConFcstCombine(const timeperiod& Time, const Life& life, const Forecast& prices, View<double> FcstAnnRates,
                      int FcstRatesBase, const date& StartFcstRates, int Operator, const Basis& basis);
/// The same of a price and a rate that grow, read at the reviews of either. Throws illegalvalue if neither is reviewed.
double ConGrowCombine(const timeperiod& Time, const Life& life, double MktPrice, const Growth& price_growth,
                      int GrowPriceEvery, double AnnualRate, const Growth& growth, int RevMonthsOpt, int Operator,
                      const Basis& basis);

/// Revenue: a quantity of AnnualRate a year at a price. A period outside the stream gives 0 even under cash.
double ConRev(const timeperiod& Time, const Life& life, double MktPrice, double AnnualRate, const Basis& basis);
/// The price grows and is taken up from FirstRev on every RevMonthsOpt months.
double ConRevGrow(const timeperiod& Time, const Life& life, double MktPrice, const date& FirstRev, double AnnualRate,
                  const Growth& growth, int RevMonthsOpt, const Basis& basis);
double ConRevGrowX(const timeperiod& Time, const Life& life, GrownRate& price, double AnnualRate, const Basis& basis,
                   bool ComponentPart);
/// The price is the forecast at Start, and from FirstRev on at each review.
double ConRevFcst(const timeperiod& Time, const Life& life, const date& FirstRev, double AnnualRate,
                  const Forecast& forecast, int RevMonthsOpt, const Basis& basis);
double ConRevFcstX(const timeperiod& Time, const Life& life, ForecastRate& price, double AnnualRate, const Basis& basis,
                   bool ComponentPart);
/// Price and quantity both grow: between two reviews of the quantity, its amount at the average price. Reviews are at
/// least a month apart. Throws errliboveriterated at 100 reviews in a period.
double ConRevGrow2(const timeperiod& Time, const Life& life, double MktPrice, const date& FirstRev, double AnnualRate,
                   const Growth& growth, const Growth& rate_growth, int RevMonthsOpt, int RevMonthsAnnRateOpt,
                   const Basis& basis);
double ConRevGrow2X(const timeperiod& Time, const Life& life, double MktPrice, const date& FirstRev, double AnnualRate,
                    const Growth& growth, const Growth& rate_growth, int RevMonthsOpt, int RevMonthsAnnRateOpt,
                    const Basis& basis, bool ComponentPart);

// --- Older forms, whose period is a date and a length in years
// -----------------------------------------------------------

double PerAnn(double Time, const Streams& streams, double BaseYrs, const Basis& basis);
double MultiPerAnn(double Time, const Streams& streams, double BaseYrs, const Basis& basis);
double AnnGrowB(double Time, const Life& life, double AnnualRate, double GrowthRatePA, const date& GrowFrom,
                double BaseYrs, const Basis& basis);

} // namespace qx
