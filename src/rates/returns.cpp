#include "rates/returns.h"

#include "calendar/date_functions.h"
#include "core/options.h"
#include "core/routine.h"
#include "rates/compounding.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qx {

namespace {

/// Years between two dates.
double decimal_years(const date& from, const date& to) {
    static const AnnualSequence any(1); // decimal years go by no sequence
    return years_between(from, to, default_daycount, any);
}

} // namespace

std::string DescribeReturn(int ReturnSwitch) {
    Routine here{"DescribeReturn"};
    here.inputs(ReturnSwitch);
    return here.returning(
        std::string(SwitchTable(return_values).words(ReturnSwitch, "Don't recognise the return switch supplied.")));
}

// --- Time-weighted rate of return ------------------------------------------------------------------------------------

namespace {

void check_series(const View<date>& dates, const View<double>& series) {
    if (series.size() < dates.size()) dates.checksamesize(series);
}
void check_optional(const View<date>& dates, const View<double>& series) {
    if (!series.empty()) check_series(dates, series);
}
double item_or_zero(const View<double>& series, int i) { return series.empty() ? 0.0 : series(i); }

/// The return from valuation i - 1 to valuation i.
double elemental_return(const Performance& p, int i, int part) {
    if (i == 1) return 0.0;
    const double expenditure = item_or_zero(p.CapExps, i), before = p.CapVals(i - 1);
    const double gain = p.CapVals(i) - before - expenditure + item_or_zero(p.CapRecs, i);
    const double income = item_or_zero(p.NetIncomes, i);
    const double earned = part == twrr_total ? gain + income : part == twrr_capital ? gain : income;
    return safe_divide(earned, expenditure + before);
}

} // namespace

WorkList<double> TWRR(View<date> FromDate_s, View<date> ToDate_s, const Performance& performance, int TWRRSwitch,
                      int TWRROptions) {
    Routine here{"TWRR"};
    here.inputs(FromDate_s, ToDate_s, performance, TWRRSwitch, TWRROptions);
    const View<date>& dates = performance.Dates;
    check_series(dates, performance.CapVals);
    check_optional(dates, performance.NetIncomes);
    check_optional(dates, performance.CapExps);
    check_optional(dates, performance.CapRecs);
    const SwitchValue* const row = SwitchTable(twrr_values).find(TWRRSwitch);
    if (row == nullptr) here.fail<errlibillegalswitch>("TWRRSwitch", "There is no TWRRSwitch ", TWRRSwitch);
    here.info(row->name);
    const bool elemental = TWRRSwitch >= twrr_elemental;
    const int part = elemental ? TWRRSwitch - twrr_elemental : TWRRSwitch;

    WorkList<double> returns;
    for (int i = 1; i <= dates.size(); ++i) {
        returns->append(elemental_return(performance, i, part));
        here.info("Elemental return at ", dates(i), ": ", returns->last());
    }
    WorkList<double> results;
    const int periods = std::max(FromDate_s.size(), ToDate_s.size());
    for (int j = 1; j <= periods; ++j) {
        const date& from = FromDate_s.single_or(j);
        const date& to = ToDate_s.single_or(j);
        const TraceBlock pass = here.pass(j, "Return from ", from, " to ", to);
        double index = 1.0, last = 0.0;
        // With the trace on the walk shows every date that it skips.
        const int first =
            here.traced() ? 1
                          : static_cast<int>(std::lower_bound(dates.begin(), dates.end(), from) - dates.begin()) + 1;
        for (int i = first; i <= dates.size(); ++i) {
            if (dates(i) < from) {
                here.info("Skipping this elemental date because Dates(", i, ") < FromDate_s.gs(", j, ")");
                continue;
            }
            if (dates(i) > to) {
                here.info("The current elemental return date is greater the current ToDate, Return ", j,
                          " calculation complete.");
                break;
            }
            last = returns(i);
            index *= 1.0 + last;
        }
        if (option_present(twrr_annualise, TWRROptions) && !elemental) {
            const double years = decimal_years(from, to);
            here.info("Annualised over ", years, " years");
            if (years > 0.0) index = SafePow(index, 1.0 / years);
        }
        results->append(elemental ? last : index - 1.0);
    }
    return here.returning(std::move(results));
}

// --- Statistics of returns -------------------------------------------------------------------------------------------

namespace {

/// The values that lie in a period: numbers first to last.
struct History {
    int first, last;
    double years;

    static History of(const Routine& here, double HistoryPeriod, const date& CalculationDate, View<date> dates) {
        if (!(HistoryPeriod > 0.0)) here.fail<illegalvalue>("HistoryPeriod", "No History Period");
        const date start = CalculationDate.plusmonths(-HistoryPeriod);
        const int first = static_cast<int>(std::lower_bound(dates.begin(), dates.end(), start) - dates.begin()) + 1;
        const int last =
            static_cast<int>(std::upper_bound(dates.begin(), dates.end(), CalculationDate) - dates.begin());
        if (last <= first)
            here.fail<errlibinsuffrange>("Dates", "There are ", std::max(last - first + 1, 0), " values from ", start,
                                         " to ", CalculationDate, ", at least 2 are needed");
        here.info("Values ", first, " to ", last, " are from ", start, " to ", CalculationDate);
        return {first, last, decimal_years(dates(first), dates(last))};
    }
};

/// A list of returns and what can be said of them.
class ReturnList {
  public:
    explicit ReturnList(double years) : years_(years) {}

    /// The return from one value to the next, with a cash flow and the part of the period before its end for which that
    /// was received.
    void add(const Routine& here, double before, double after, double flow, double early) {
        const double value = safe_divide(after - before + flow, before - early * flow);
        here.info("Return ", values_.size() + 1, ": ", value);
        values_->append(value);
    }

    double statistic(const Routine& here, int which) const {
        switch (which) {
        case annualised_return:
            return years_ > 0.0 ? SafePow(cumulative(), 1.0 / years_) - 1.0 : cumulative() - 1.0;
        case cumulative_return:
            return cumulative() - 1.0;
        case range_of_returns:
            return *std::max_element(values_.begin(), values_.end()) -
                   *std::min_element(values_.begin(), values_.end());
        case minimum_return:
            return *std::min_element(values_.begin(), values_.end());
        case maximum_return:
            return *std::max_element(values_.begin(), values_.end());
        case mean_return:
            return mean();
        case median_return:
            return median();
        case deviation_of_returns:
            return std::sqrt(variance(here));
        case variance_of_returns:
            return variance(here);
        case kurtosis_of_returns:
            return kurtosis(here);
        default:
            return skewness(here);
        }
    }

  private:
    int size() const { return values_.size(); }
    double cumulative() const {
        double index = 1.0;
        for (const double value : values_) index *= 1.0 + value;
        return index;
    }
    double mean() const {
        double sum = 0.0;
        for (const double value : values_) sum += value;
        return sum / size();
    }
    double median() const {
        WorkList<double> sorted;
        for (const double value : values_) sorted->append(value);
        double* const middle = sorted->begin() + size() / 2;
        std::nth_element(sorted->begin(), middle, sorted->end());
        return size() % 2 == 1 ? *middle : (*middle + *std::max_element(sorted->begin(), middle)) / 2.0;
    }
    /// The sum of a power of the deviations from the mean.
    double moment(int power) const {
        const double centre = mean();
        double sum = 0.0;
        for (const double value : values_) sum += std::pow(value - centre, power);
        return sum;
    }
    void needs(const Routine& here, int least) const {
        if (size() < least)
            here.fail<errlibinsuffrange>("Values", "There are ", size(), " returns, at least ", least, " are needed");
    }
    double variance(const Routine& here) const {
        needs(here, 2);
        return moment(2) / (size() - 1);
    }
    double deviation(const Routine& here) const {
        const double deviation = std::sqrt(variance(here));
        const double largest = std::max(std::fabs(*std::max_element(values_.begin(), values_.end())),
                                        std::fabs(*std::min_element(values_.begin(), values_.end())));
        if (deviation <= 1e-14 * largest) here.fail<errlibnovalidanswer>("Values", "The returns are all alike");
        return deviation;
    }
    double skewness(const Routine& here) const {
        needs(here, 3);
        const double n = size();
        return n / ((n - 1.0) * (n - 2.0)) * moment(3) / std::pow(deviation(here), 3);
    }
    double kurtosis(const Routine& here) const {
        needs(here, 4);
        const double n = size();
        const double sum = moment(4) / std::pow(deviation(here), 4);
        return n * (n + 1.0) / ((n - 1.0) * (n - 2.0) * (n - 3.0)) * sum -
               3.0 * (n - 1.0) * (n - 1.0) / ((n - 2.0) * (n - 3.0));
    }

    double years_;
    WorkList<double> values_;
};

/// Walks along the cash flows of one value after the other.
class FlowWalk {
  public:
    FlowWalk(View<date> value_dates, const DatedFlows& flows, int first) : value_dates_(value_dates), flows_(flows) {
        if (flows.dates.empty()) {
            check_optional(value_dates, flows.amounts);
        } else {
            check_series(flows.dates, flows.amounts);
            while (next_ <= flows.dates.size() && flows.dates(next_) <= value_dates(first)) ++next_;
        }
    }
    /// What came after value i - 1 and up to value i; asked in the order of i.
    double up_to(int i) {
        if (flows_.dates.empty()) return item_or_zero(flows_.amounts, i);
        double sum = 0.0;
        for (; next_ <= flows_.dates.size() && flows_.dates(next_) <= value_dates_(i); ++next_)
            sum += flows_.amounts(next_);
        return sum;
    }

  private:
    View<date> value_dates_;
    DatedFlows flows_;
    int next_ = 1;
};

void check_switch(const Routine& here, int ReturnSwitch) {
    const SwitchValue* const row = SwitchTable(return_values).find(ReturnSwitch);
    if (row == nullptr) here.fail<errlibillegalswitch>("ReturnSwitch", "There is no ReturnSwitch ", ReturnSwitch);
    here.info(row->name);
}
void check_first_value(const Routine& here, double value) {
    if (!(value > 0.0)) here.fail<illegalvalue>("Values", "First value mst be positive to return any information");
}

} // namespace

double TotalReturn(double HistoryPeriod, const date& CalculationDate, View<date> Dates, View<double> Values,
                   const DatedFlows& flows, int ReturnSwitch, const IndexSeries& index, View<double> ExchangeRates) {
    Routine here{"TotalReturn"};
    here.inputs(HistoryPeriod, CalculationDate, Dates, Values, flows, ReturnSwitch, index, ExchangeRates);
    check_switch(here, ReturnSwitch);
    check_series(Dates, Values);
    const bool of_index = ReturnSwitch >= index_return;
    if ((of_index || !index.IndexValues.empty()) && index.IndexValues.size() != Values.size())
        here.fail<illegalvalue>("IndexValues", "There must the same number of index items as there are stock Values");
    if (!ExchangeRates.empty() && ExchangeRates.size() != Values.size())
        here.fail<illegalvalue>("ExchangeRates",
                                "There must the same number of exchange rates items as there are stock Values");
    const History history = History::of(here, HistoryPeriod, CalculationDate, Dates);

    const View<double>& values = of_index ? index.IndexValues : Values;
    const auto rate = [&](int i) { return of_index || ExchangeRates.empty() ? 1.0 : ExchangeRates(i); };
    FlowWalk walk(Dates, of_index ? DatedFlows{index.IndexCashDates, index.IndexCashFlows} : flows, history.first);
    double before = values(history.first) * rate(history.first);
    check_first_value(here, before);
    ReturnList returns(history.years);
    for (int i = history.first + 1; i <= history.last; ++i) {
        const double after = values(i) * rate(i);
        returns.add(here, before, after, walk.up_to(i) * rate(i), 0.0);
        before = after;
    }
    return here.returning(returns.statistic(here, of_index ? ReturnSwitch - index_return : ReturnSwitch));
}

double TotalReturnQ(double HistoryPeriod, const date& CalculationDate, View<date> Dates, View<double> Values,
                    View<double> Cash_Flows, double CashFlowTiming, int ReturnSwitch) {
    Routine here{"TotalReturnQ"};
    here.inputs(HistoryPeriod, CalculationDate, Dates, Values, Cash_Flows, CashFlowTiming, ReturnSwitch);
    here.limit(CashFlowTiming, 0.0, 1.0, "CashFlowTiming");
    check_switch(here, ReturnSwitch);
    if (ReturnSwitch >= index_return)
        here.fail<errlibillegalswitch>("ReturnSwitch", "TotalReturnQ has no index, TotalReturn has");
    check_series(Dates, Values);
    check_optional(Dates, Cash_Flows);
    const History history = History::of(here, HistoryPeriod, CalculationDate, Dates);
    check_first_value(here, Values(history.first));
    ReturnList returns(history.years);
    for (int i = history.first + 1; i <= history.last; ++i)
        returns.add(here, Values(i - 1), Values(i), item_or_zero(Cash_Flows, i), CashFlowTiming);
    return here.returning(returns.statistic(here, ReturnSwitch));
}

double BetaReturns(View<double> Returns, View<double> IndexReturns) {
    Routine here{"BetaReturns"};
    here.inputs(Returns, IndexReturns);
    Returns.checksamesize(IndexReturns);
    const int n = Returns.size();
    if (n < 2) here.fail<errlibinsuffrange>("Returns", "There are ", n, " returns, at least 2 are needed");
    double mean = 0.0, index_mean = 0.0;
    for (int i = 1; i <= n; ++i) {
        mean += Returns(i) / n;
        index_mean += IndexReturns(i) / n;
    }
    double covariance = 0.0, variance = 0.0;
    for (int i = 1; i <= n; ++i) {
        const double index_deviation = IndexReturns(i) - index_mean;
        covariance += (Returns(i) - mean) * index_deviation / (n - 1);
        variance += index_deviation * index_deviation / (n - 1);
    }
    here.info("Covariance: ", covariance, ", variance of the index: ", variance);
    if (IndexReturns.allequal() || variance == 0.0)
        here.fail<errlibnovalidanswer>("IndexReturns", "The returns of the index are all alike");
    return here.returning(covariance / variance);
}

double BetaIndex(View<double> Values, View<double> IndexValues) {
    Routine here{"BetaIndex"};
    here.inputs(Values, IndexValues);
    if (IndexValues.size() != Values.size())
        here.fail<illegalvalue>("IndexValues", "There must the same number of index items as there are stock Values");
    WorkList<double> returns, index_returns;
    for (int i = 2; i <= Values.size(); ++i) {
        returns->append(safe_divide(Values(i) - Values(i - 1), Values(i - 1)));
        index_returns->append(safe_divide(IndexValues(i) - IndexValues(i - 1), IndexValues(i - 1)));
    }
    return here.returning(BetaReturns(returns, index_returns));
}

} // namespace qx
