// Writes tests/cases/banking/QuantLib.cases: what QuantLib makes of inputs of ours, each as a case with its formula.
#include <ql/cashflows/cashflows.hpp>
#include <ql/cashflows/fixedratecoupon.hpp>
#include <ql/cashflows/simplecashflow.hpp>
#include <ql/exercise.hpp>
#include <ql/instruments/bonds/amortizingfixedratebond.hpp>
#include <ql/instruments/bonds/fixedratebond.hpp>
#include <ql/instruments/vanillaoption.hpp>
#include <ql/math/interpolations/loginterpolation.hpp>
#include <ql/math/statistics/generalstatistics.hpp>
#include <ql/math/statistics/sequencestatistics.hpp>
#include <ql/pricingengines/bond/bondfunctions.hpp>
#include <ql/pricingengines/vanilla/analyticeuropeanengine.hpp>
#include <ql/pricingengines/vanilla/qdfpamericanengine.hpp>
#include <ql/processes/blackscholesprocess.hpp>
#include <ql/quotes/simplequote.hpp>
#include <ql/settings.hpp>
#include <ql/termstructures/volatility/equityfx/blackconstantvol.hpp>
#include <ql/termstructures/yield/bondhelpers.hpp>
#include <ql/termstructures/yield/flatforward.hpp>
#include <ql/termstructures/yield/piecewiseyieldcurve.hpp>
#include <ql/time/calendars/nullcalendar.hpp>
#include <ql/time/daycounters/actual365fixed.hpp>
#include <ql/time/daycounters/actualactual.hpp>
#include <ql/time/daycounters/simpledaycounter.hpp>
#include <ql/time/daycounters/thirty360.hpp>
#include <ql/time/schedule.hpp>
#include <ql/version.hpp>

#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <vector>

namespace {

using namespace QuantLib;

std::string text(double number) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.15g", number);
    return digits;
}
std::string text(bool truth) { return truth ? "TRUE" : "FALSE"; }
std::string text(const std::string& words) { return words; }
std::string text(const char* words) { return words; }
std::string text(const Date& day) { return std::to_string(day.serialNumber()); }
template <class Item>
std::string text(const std::vector<Item>& list) {
    std::string column;
    for (const Item& item : list) column += (column.empty() ? "{" : ";") + text(item);
    return column + "}";
}

/// A call of a worksheet function.
template <class... Arguments>
std::string call(const char* function, const Arguments&... arguments) {
    std::string list;
    ((list += (list.empty() ? "" : ", ") + text(arguments)), ...);
    return std::string(function) + "(" + list + ")";
}
void heading(const char* words) { std::printf("# %s\n", words); }
void expect(const std::string& formula, double value, const char* tolerance = "1e-9") {
    std::printf("%s ~ %.15g %s  # QuantLib\n", formula.c_str(), value, tolerance);
}

/// A column of results, from row 1 on.
void expect_column(const std::string& formula, const std::vector<double>& values, const char* tolerance = "1e-9") {
    std::printf("[A1:A%zu] %s ~ %s %s  # QuantLib\n", values.size(), formula.c_str(), text(values).c_str(), tolerance);
}
/// Puts a list into a column of the sheet and gives its address.
template <class Item>
std::string put(char column, const std::vector<Item>& list) {
    const std::string address = {column, '1', ':', column};
    const std::string cells = address + std::to_string(list.size());
    std::printf("@ %s = %s\n", cells.c_str(), text(list).c_str());
    return cells;
}

// --- Options ----------------------------------------------------------------------------------------------------

struct OptionInputs {
    double spot, strike;
    int months;
    double interest, volatility, dividend;
    bool put;
};
constexpr OptionInputs options[] = {
    {42.0, 40.0, 6, 0.1, 0.2, 0.0, false},       {42.0, 40.0, 6, 0.1, 0.2, 0.0, true},
    {100.0, 110.0, 27, 0.03, 0.35, 0.05, false}, {100.0, 110.0, 27, 0.03, 0.35, 0.05, true},
    {36.0, 40.0, 12, 0.06, 0.2, 0.0, true},      {1.2, 1.1, 3, -0.005, 0.09, 0.02, false},
};

class Valued {
  public:
    explicit Valued(const OptionInputs& inputs) {
        const Date today(1, January, 2025);
        const SimpleDayCounter years;
        Settings::instance().evaluationDate() = today;
        end_ = today + inputs.months * Months;
        payoff_ = ext::make_shared<PlainVanillaPayoff>(inputs.put ? Option::Put : Option::Call, inputs.strike);
        process_ = ext::make_shared<BlackScholesMertonProcess>(
            Handle<Quote>(ext::make_shared<SimpleQuote>(inputs.spot)),
            Handle<YieldTermStructure>(ext::make_shared<FlatForward>(today, inputs.dividend, years)),
            Handle<YieldTermStructure>(ext::make_shared<FlatForward>(today, inputs.interest, years)),
            Handle<BlackVolTermStructure>(
                ext::make_shared<BlackConstantVol>(today, NullCalendar(), inputs.volatility, years)));
    }
    VanillaOption european() const {
        VanillaOption option(payoff_, ext::make_shared<EuropeanExercise>(end_));
        option.setPricingEngine(ext::make_shared<AnalyticEuropeanEngine>(process_));
        return option;
    }
    VanillaOption american() const {
        VanillaOption option(payoff_, ext::make_shared<AmericanExercise>(Date(1, January, 2025), end_));
        option.setPricingEngine(
            ext::make_shared<QdFpAmericanEngine>(process_, QdFpAmericanEngine::highPrecisionScheme()));
        return option;
    }

  private:
    Date end_;
    ext::shared_ptr<StrikedTypePayoff> payoff_;
    ext::shared_ptr<GeneralizedBlackScholesProcess> process_;
};

void write_options() {
    heading("European options: price, delta, gamma, vega, theta, rho, and the sensitivity to the dividend yield.");
    for (const OptionInputs& each : options) {
        const VanillaOption option = Valued(each).european();
        const double results[] = {option.NPV(),   option.delta(), option.gamma(),      option.vega(),
                                  option.theta(), option.rho(),   option.dividendRho()};
        int output = 0;
        for (const double result : results)
            expect(call("OptionBS", each.spot, each.strike, each.months / 12.0, each.interest, each.volatility,
                        each.dividend, each.put, double(output++)),
                   result, "1e-8");
    }
    heading("A tree of 2,000 steps comes near both exercises: Black and Scholes, and Andersen's American options.");
    for (const OptionInputs& each : options) {
        const auto tree = [&](bool american) {
            return call("OptionBinom", each.spot, each.strike, each.months / 12.0, each.interest, each.volatility,
                        each.dividend, each.put, american, 2000.0);
        };
        expect(tree(false), Valued(each).european().NPV(), "2e-4");
        expect(tree(true), Valued(each).american().NPV(), "2e-4");
    }
}

/// The periods of a bond counted back from its maturity, month ends to month ends, from that of the settlement on.
Schedule whole_periods(const Date& settlement, const Date& maturity, Frequency a_year) {
    const auto counted_back = [&](const Date& first) {
        return Schedule(first, maturity, Period(a_year), NullCalendar(), Unadjusted, Unadjusted,
                        DateGeneration::Backward, true);
    };
    const int periods = static_cast<int>(counted_back(settlement).size()) - 1;
    return counted_back(NullCalendar().advance(maturity, -periods * Period(a_year), Unadjusted, true));
}

// --- Spot rates -------------------------------------------------------------------------------------------------

void write_spot_rates() {
    const Date today(10, February, 2025);
    const Actual365Fixed years;
    Settings::instance().evaluationDate() = today;
    const std::vector<Date> maturities{Date(7, June, 2025),  Date(7, March, 2026),     Date(31, January, 2028),
                                       Date(22, July, 2030), Date(29, February, 2036), Date(7, December, 2046)};
    const std::vector<double> coupons{0.05, 0.006, 0.04375, 0.00375, 0.0425, 0.0425};
    const std::vector<double> prices{1.0123, 0.9675, 1.0101, 0.8321, 0.9821, 0.9187};

    heading("Spot rates by bootstrap, the logarithm of the discount factor linear between dates.");
    const std::string days = put('A', maturities), paid = put('B', coupons), worth = put('C', prices);
    for (const int a_year : {1, 4, 2}) {
        std::vector<ext::shared_ptr<RateHelper>> bonds;
        for (std::size_t i = 0; i < maturities.size(); ++i) {
            const Schedule whole = whole_periods(today, maturities[i], Frequency(a_year));
            bonds.push_back(ext::make_shared<FixedRateBondHelper>(
                Handle<Quote>(ext::make_shared<SimpleQuote>(100.0 * prices[i])), 0, 100.0, whole,
                std::vector<Rate>{coupons[i]}, SimpleDayCounter(), Unadjusted, 100.0, Date(), Calendar(), Period(),
                Calendar(), Unadjusted, false, Bond::Price::Dirty));
        }
        const PiecewiseYieldCurve<Discount, LogLinear> curve(today, bonds, years);
        std::vector<double> factors;
        for (const Date& day : maturities) factors.push_back(curve.discount(day));
        expect_column(call("ZeroCoupon", today, days, paid, worth, double(a_year), 2.0, 3.0), factors);
        if (a_year != 2) continue;
        heading("Forward rates of this curve.");
        const std::string spot_rates = call("ZeroCoupon", today, days, paid, worth, 2.0, 0.0, 3.0);
        const std::pair<Date, Date> spans[] = {{today, Date(1, April, 2025)},
                                               {Date(1, April, 2025), Date(7, June, 2025)},
                                               {Date(1, January, 2026), Date(1, January, 2029)},
                                               {Date(22, July, 2030), Date(29, February, 2036)},
                                               {Date(1, May, 2031), Date(2, May, 2031)},
                                               {Date(3, March, 2029), Date(7, December, 2046)}};
        for (const auto& [from, to] : spans)
            expect(call("SpotToSpot", from, to, today, days, spot_rates, 3.0),
                   curve.forwardRate(from, to, years, Compounded, Annual), "1e-8");
    }

    heading("Discount factors from a strip of futures, each to the third Wednesday of a quarter.");
    const Date start(19, March, 2025);
    const std::vector<Date> ends{Date(18, June, 2025), Date(17, September, 2025), Date(17, December, 2025),
                                 Date(18, March, 2026)};
    const std::vector<double> quotes{95.52, 95.83, 96.07, 96.15};
    std::vector<double> factors;
    for (std::size_t i = 0; i < ends.size(); ++i) {
        const InterestRate forward((100.0 - quotes[i]) / 100.0, years, Simple, Once);
        const double of_span = forward.discountFactor(i == 0 ? start : ends[i - 1], ends[i]);
        factors.push_back(i == 0 ? of_span : factors.back() * of_span);
    }
    expect_column(call("FutureToSpot", start, ends, quotes, 1.0, 0.0, 2.0, 3.0), factors);
}

// --- Bonds and cash flows ---------------------------------------------------------------------------------------

void write_gilts() {
    struct Gilt {
        double coupon;
        Date settlement, maturity;
        double yield; ///< half-yearly
    };
    const Gilt gilts[] = {{0.05, Date(10, February, 2025), Date(7, September, 2028), 0.0412},
                          {0.0425, Date(7, June, 2025), Date(7, December, 2033), 0.0505},
                          {0.00125, Date(30, August, 2024), Date(31, January, 2028), 0.0377}};
    heading("Gilts: the price with accrued interest, the yield back from it, and the duration; each half-year counts "
            "alike.");
    for (const Gilt& gilt : gilts) {
        Settings::instance().evaluationDate() = gilt.settlement;
        const Schedule schedule = whole_periods(gilt.settlement, gilt.maturity, Semiannual);
        const ActualActual in_period(ActualActual::ISMA, schedule);
        const FixedRateBond bond(0, 100.0, schedule, {gilt.coupon}, in_period);
        const double price =
            BondFunctions::dirtyPrice(bond, gilt.yield, in_period, Compounded, Semiannual, gilt.settlement);
        std::vector<Date> days;
        std::vector<double> amounts;
        for (std::size_t i = 1; i < schedule.size(); ++i) {
            if (schedule[i] <= gilt.settlement) continue;
            days.push_back(schedule[i]);
            amounts.push_back(50.0 * gilt.coupon + (schedule[i] == gilt.maturity ? 100.0 : 0.0));
        }
        const double annual = std::pow(1.0 + gilt.yield / 2.0, 2.0) - 1.0;
        const std::string rate = "(1+" + text(gilt.yield) + "/2)^2-1";
        // The half-years, by the days of the year on which they begin.
        const bool in_order = schedule[0].month() < schedule[1].month();
        const Date first = schedule[in_order ? 0 : 1], second = schedule[in_order ? 1 : 0];
        char halves[64];
        std::snprintf(halves, sizeof halves, "{%d.%02d;%d.%02d}", int(first.month()), first.dayOfMonth(),
                      int(second.month()), second.dayOfMonth());
        days.insert(days.begin(), gilt.settlement);
        amounts.insert(amounts.begin(), -price);
        const std::string when = put('A', days), flows = put('B', amounts);
        const std::string last = std::to_string(days.size());
        expect(call("PVT", gilt.settlement, rate, "A2:A" + last, "B2:B" + last, 6.0, halves), price, "1e-7");
        expect(call("IRRT", when, flows, "", "", "", 6.0, halves), annual, "1e-8");
        expect(call("DurationT", gilt.settlement, rate, "A2:A" + last, "B2:B" + last, 6.0, halves),
               BondFunctions::duration(bond, gilt.yield, in_period, Compounded, Semiannual, Duration::Macaulay,
                                       gilt.settlement),
               "1e-7");
    }
}

void write_flows() {
    heading("Yields of flows on irregular dates under several day counts.");
    const Date start(14, January, 2004);
    Settings::instance().evaluationDate() = start;
    const std::vector<int> days{0, 75, 183, 366, 411, 777, 1200, 3653};
    const std::vector<double> amounts{-1000.0, 40.0, -55.0, 120.0, 90.0, 300.0, 250.0, 880.0};
    Leg flows;
    std::vector<Date> dates;
    for (std::size_t i = 0; i < days.size(); ++i) {
        dates.push_back(start + days[i]);
        if (i > 0) flows.push_back(ext::make_shared<SimpleCashFlow>(amounts[i], dates[i]));
    }
    const std::pair<double, DayCounter> counts[] = {{1.0, ActualActual(ActualActual::ISDA)},
                                                    {3.0, Actual365Fixed()},
                                                    {4.0, Thirty360(Thirty360::European)},
                                                    {8.0, Actual365Fixed(Actual365Fixed::NoLeap)},
                                                    {10.0, Thirty360(Thirty360::BondBasis)}};
    for (const auto& [code, count] : counts) {
        expect(call("IRRT", dates, amounts, "", "", "", code),
               CashFlows::yield(flows, 1000.0, count, Compounded, Annual, false, start, start, 1e-13, 1000, 0.1),
               "1e-9");
        expect(call("PVT", start, 0.07, dates, amounts, code),
               CashFlows::npv(flows, InterestRate(0.07, count, Compounded, Annual), false, start, start) - 1000.0,
               "1e-7");
    }

    heading("A loan repaid by level payments: what is owed after some months.");
    for (const double rate : {0.03, 0.06, 0.11}) {
        const std::vector<double> owed = sinkingNotionals(Period(300, Months), Monthly, rate, 100000.0);
        for (const int month : {1, 60, 299}) {
            const Date end = Date(1, January, 2025) + month * Months;
            expect(call("MortgageQ", Date(1, January, 2025), end + 1 * Days, rate, Date(1, January, 2025), 100000.0,
                        Date(1, January, 2050), "", 5.0, 5.0, -12.0, 1.0),
                   owed[month], "1e-6");
        }
    }
}

void write_statistics() {
    heading("Statistics of the returns 10%, -5%, 20%, 2%, -12% and 7.5%, and beta against an index.");
    const double returns[] = {0.1, -0.05, 0.2, 0.02, -0.12, 0.075}, of_index[] = {0.06, -0.02, 0.11, 0.03, -0.09, 0.01};
    GeneralStatistics statistics;
    SequenceStatistics pairs(2);
    std::vector<double> values{100.0}, index{1000.0};
    std::vector<Date> days{Date(1, January, 2005)};
    for (int i = 0; i < 6; ++i) {
        statistics.add(returns[i]);
        pairs.add(std::vector<Real>{returns[i], of_index[i]});
        values.push_back(values.back() * (1.0 + returns[i]));
        index.push_back(index.back() * (1.0 + of_index[i]));
        days.push_back(days.back() + 1 * Years);
    }
    const auto total_return = [&](double what) {
        return call("TotalReturn", 72.0, days.back(), days, values, "", "", what);
    };
    expect(total_return(4.0), statistics.mean());
    expect(total_return(6.0), statistics.standardDeviation());
    expect(total_return(7.0), statistics.variance());
    expect(total_return(8.0), statistics.kurtosis(), "1e-7");
    expect(total_return(9.0), statistics.skewness(), "1e-7");
    const Matrix covariance = pairs.covariance();
    expect(call("BetaIndex", values, index), covariance[0][1] / covariance[1][1], "1e-8");
}

} // namespace

int main() {
    std::printf("# Values of QuantLib %s, written by bench/peers/references.\n", QL_VERSION);
    write_options();
    write_spot_rates();
    write_gilts();
    write_flows();
    write_statistics();
}
