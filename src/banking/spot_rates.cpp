#include "banking/spot_rates.h"

#include "numerics/solver.h"
#include "rates/compounding.h"

#include <cmath>

namespace qx {

namespace {

constexpr int months_of_year = 12;

/// Checks the dates of a curve and the list that goes with them.
template <class T>
void check_curve(Routine& here, const date& start, View<date> dates, View<T> with_them, const Measure& measure) {
    measure.check(here);
    if (dates.empty()) here.fail<errlibinsuffrange>("Dates");
    if (with_them.size() != 1) dates.checksamesize(with_them);
    for (int i = 1; i <= dates.size(); ++i)
        if (dates(i) <= (i == 1 ? start : dates(i - 1)))
            here.fail<errlibbadlistprogression>("Dates", dates(i), " does not come after ",
                                                i == 1 ? start : dates(i - 1));
}

/// A curve while it is made: the times in years at which its discount factors are known, and their logarithms.
class Curve {
  public:
    Curve(const date& start, const Measure& measure) : start_(start), measure_(measure) {}

    int size() const { return times_.size(); }
    double years_to(const date& day) const { return years_between(start_, day, measure_.DayCount, measure_.Periods); }
    double last_time() const { return size() == 0 ? 0.0 : times_.get(size()); }
    double last_log() const { return size() == 0 ? 0.0 : logs_.get(size()); }
    void append(const Routine& here, double time, double log_factor) {
        if (!(time > last_time()))
            here.fail<errlibbadlistprogression>("Dates", "A date has no time after the one before");
        times_->append(time);
        logs_->append(log_factor);
    }
    /// The logarithm of the discount factor at a time.
    double log_at(double time) const {
        const auto* const later = std::lower_bound(times_.begin(), times_.end(), time);
        const int i = std::min(static_cast<int>(later - times_.begin()) + 1, size());
        const double t0 = i > 1 ? times_.get(i - 1) : 0.0, log0 = i > 1 ? logs_.get(i - 1) : 0.0;
        return log0 + (logs_.get(i) - log0) * (time - t0) / (times_.get(i) - t0);
    }
    double rate(const Routine& here, double time, double log_factor, int SpotOutput) const {
        switch (SpotOutput) {
        case spot_annual:
            return std::expm1(-log_factor / time);
        case spot_continuous:
            return -log_factor / time;
        case spot_factor:
            return std::exp(log_factor);
        default:
            here.fail<errlibillegalswitch>("SpotOutput", "SpotOutput ", SpotOutput, " is invalid in ", here.name());
        }
    }
    /// The whole curve, in the shape of the list of its dates.
    WorkList<double> rates(const Routine& here, View<date> dates, int SpotOutput) const {
        WorkList<double> rates(size(), dates.getcolumns());
        for (int i = 1; i <= size(); ++i) rates(i) = rate(here, times_.get(i), logs_.get(i), SpotOutput);
        return rates;
    }

  private:
    date start_;
    const Measure& measure_;
    WorkList<double> times_, logs_;
};

/// The price of a bond less the value of its flows, of which those after the curve's end are discounted at a trial rate
/// from there on.
class clsBootstrap final : public clsSolveBase {
  public:
    clsBootstrap(const Curve& curve, const date& settlement, const date& maturity, double coupon, int a_year,
                 double price)
        : last_time_(curve.last_time()), last_log_(curve.last_log()), unexplained_(price) {
        for (int n = 0;; ++n) {
            const date day = a_year == 0 ? maturity : maturity.plusmonths(-n * months_of_year / a_year, true);
            if (day <= settlement) break;
            const double time = curve.years_to(day);
            const double flow = (a_year == 0 ? 0.0 : coupon / a_year) + (n == 0 ? 1.0 : 0.0);
            if (time <= last_time_) {
                unexplained_ -= flow * std::exp(curve.log_at(time));
            } else {
                times_->append(time);
                flows_->append(flow);
            }
            if (a_year == 0) break;
        }
    }
    double eval(double forward) override {
        double value = 0.0;
        for (int i = 1; i <= times_.size(); ++i)
            value += flows_.get(i) * std::exp(last_log_ - forward * (times_.get(i) - last_time_));
        return unexplained_ - value;
    }
    void setup() override {}

  private:
    double last_time_, last_log_;
    double unexplained_;
    WorkList<double> times_, flows_;
};

} // namespace

WorkList<double> ZeroCoupon(const date& SettlementDate, View<date> MaturityDates, View<double> CouponRates,
                            View<double> Prices, int PmtsPerYear, int SpotOutput, const Measure& measure) {
    constexpr double lowest_forward = -1.0, highest_forward = 10.0, tolerance = 1e-14, par = 1.0;
    constexpr int rounds = 200;
    Routine here{"ZeroCoupon"};
    here.inputs(SettlementDate, MaturityDates, CouponRates, Prices, PmtsPerYear, SpotOutput, measure);
    check_curve(here, SettlementDate, MaturityDates, CouponRates, measure);
    if (Prices.size() > 1) MaturityDates.checksamesize(Prices);
    if (PmtsPerYear < 0 || PmtsPerYear > months_of_year || (PmtsPerYear > 0 && months_of_year % PmtsPerYear != 0))
        here.fail<errlibillegalswitch>("PmtsPerYear", "PmtsPerYear is ", PmtsPerYear, ", not 0, 1, 2, 3, 4, 6 or 12");
    Curve curve(SettlementDate, measure);
    for (int i = 1; i <= MaturityDates.size(); ++i) {
        const TraceBlock pass = here.pass(i, "Bond to ", MaturityDates(i));
        const double price = Prices.empty() ? par : Prices.single_or(i);
        clsBootstrap problem(curve, SettlementDate, MaturityDates(i), CouponRates.single_or(i), PmtsPerYear, price);
        const double forward =
            problem.solve(lowest_forward, highest_forward, tolerance, rounds, plain, here.context("Prices"));
        const double time = curve.years_to(MaturityDates(i));
        curve.append(here, time, curve.last_log() - forward * (time - curve.last_time()));
        here.info("Forward rate=", forward, " Factor=", std::exp(curve.last_log()));
    }
    WorkList<double> rates = curve.rates(here, MaturityDates, SpotOutput);
    here.returning();
    return rates;
}

double SpotToSpot(const date& FromDate, const date& ToDate, const date& SpotDate, View<date> SpotDates,
                  View<double> SpotRates, const Measure& measure) {
    Routine here{"SpotToSpot"};
    here.inputs(FromDate, ToDate, SpotDate, SpotDates, SpotRates, measure);
    check_curve(here, SpotDate, SpotDates, SpotRates, measure);
    for (const double rate : SpotRates) check_rate(here, rate, "SpotRates");
    Curve curve(SpotDate, measure);
    for (int i = 1; i <= SpotDates.size(); ++i) {
        const double time = curve.years_to(SpotDates(i));
        curve.append(here, time, -time * std::log1p(SpotRates.single_or(i)));
    }
    const double from = curve.years_to(FromDate), to = curve.years_to(ToDate);
    if (!(to > from)) here.fail<errlibnovalidanswer>("ToDate", ToDate, " is not after ", FromDate);
    return here.returning(std::expm1((curve.log_at(from) - curve.log_at(to)) / (to - from)));
}

WorkList<double> FutureToSpot(const date& SpotDate, View<date> ToDates, View<double> Quotes, int QuoteType,
                              double Volatility, int SpotOutput, const Measure& measure) {
    Routine here{"FutureToSpot"};
    here.inputs(SpotDate, ToDates, Quotes, QuoteType, Volatility, SpotOutput, measure);
    check_curve(here, SpotDate, ToDates, Quotes, measure);
    here.at_least(Volatility, 0.0, "Volatility");
    if (QuoteType != quoted_rate && QuoteType != quoted_price)
        here.fail<errlibillegalswitch>("QuoteType", "QuoteType ", QuoteType, " is invalid in FutureToSpot");
    Curve curve(SpotDate, measure);
    for (int i = 1; i <= ToDates.size(); ++i) {
        const double quote = Quotes.single_or(i);
        const double rate = QuoteType == quoted_price ? 1.0 - quote / 100.0 : quote;
        const double time = curve.years_to(ToDates(i)), start = curve.last_time(), length = time - start;
        if (!(1.0 + rate * length > 0.0)) here.fail<errlibmin>("Quotes");
        const double of_futures = 0.5 * Volatility * Volatility * start * time; // what margins paid daily are worth
        curve.append(here, time, curve.last_log() - std::log1p(rate * length) + of_futures * length);
    }
    WorkList<double> rates = curve.rates(here, ToDates, SpotOutput);
    here.returning();
    return rates;
}

} // namespace qx
