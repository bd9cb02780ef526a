// Ours beside QuantLib's and std::chrono's, on the same dates, in one run.
#include "calendar/annual_sequence.h"
#include "calendar/date.h"
#include "calendar/date_arithmetic.h"
#include "calendar/day_count.h"
#include "calendar/holidays.h"
#include "calendar/time_period.h"

#include <benchmark/benchmark.h>
#include <ql/time/calendars/unitedkingdom.hpp>
#include <ql/time/calendars/unitedstates.hpp>
#include <ql/time/date.hpp>
#include <ql/time/daycounters/actual360.hpp>
#include <ql/time/daycounters/actual365fixed.hpp>
#include <ql/time/daycounters/actualactual.hpp>
#include <ql/time/daycounters/business252.hpp>
#include <ql/time/daycounters/thirty360.hpp>
#include <ql/time/schedule.hpp>

#include <chrono>
#include <random>
#include <vector>

namespace {

namespace ql = QuantLib;

constexpr int how_many = 1024;

/// Date numbers from 2001 to 2040, which both libraries count alike.
const std::vector<int>& serials() {
    static const std::vector<int> numbers = [] {
        std::mt19937 random(1);
        std::uniform_int_distribution<int> day(36892, 51501);
        std::vector<int> made(how_many);
        for (int& number : made) number = day(random);
        return made;
    }();
    return numbers;
}

template <class Date, class Make>
std::vector<Date> dates(Make make) {
    std::vector<Date> made;
    for (const int serial : serials()) made.push_back(make(serial));
    return made;
}
const std::vector<qx::date>& our_dates() {
    static const auto made = dates<qx::date>([](int serial) { return qx::date(static_cast<double>(serial)); });
    return made;
}
const std::vector<ql::Date>& ql_dates() {
    static const auto made = dates<ql::Date>([](int serial) { return ql::Date(serial); });
    return made;
}

/// Calls an operation for each pair of neighbours in turn.
template <class Dates, class Operation>
void each_pair(benchmark::State& state, const Dates& days, Operation operation) {
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(operation(days[i], days[i + 1]));
        i = i == how_many - 2 ? 0 : i + 1;
    }
}

// --- Date numbers ---------------------------------------------------------------------------------------------

void serial_to_ymd_ours(benchmark::State& state) {
    each_pair(state, serials(), [](int serial, int) { return qx::date::from_dtn(serial).day(); });
}
BENCHMARK(serial_to_ymd_ours)->Name("date number to year, month, day: ours");

void serial_to_ymd_quantlib(benchmark::State& state) {
    each_pair(state, serials(), [](int serial, int) {
        const ql::Date day(serial);
        return day.dayOfMonth() + day.month() + day.year();
    });
}
BENCHMARK(serial_to_ymd_quantlib)->Name("date number to year, month, day: QuantLib");

void serial_to_ymd_chrono(benchmark::State& state) {
    constexpr int excel_epoch = 25569;
    each_pair(state, serials(), [](int serial, int) {
        const std::chrono::year_month_day day{std::chrono::sys_days{std::chrono::days{serial - excel_epoch}}};
        return static_cast<unsigned>(day.day()) + static_cast<unsigned>(day.month()) + static_cast<int>(day.year());
    });
}
BENCHMARK(serial_to_ymd_chrono)->Name("date number to year, month, day: std::chrono");

struct Day {
    int year, month, day;
};
const std::vector<Day>& days() {
    static const auto made = dates<Day>([](int serial) {
        const qx::date day(static_cast<double>(serial));
        return Day{day.year(), day.month(), day.day()};
    });
    return made;
}

void ymd_to_serial_ours(benchmark::State& state) {
    each_pair(state, days(),
              [](const Day& day, const Day&) { return qx::date::from_ymd(day.year, day.month, day.day).dtn(); });
}
BENCHMARK(ymd_to_serial_ours)->Name("year, month, day to date number: ours");

void ymd_to_serial_chrono(benchmark::State& state) {
    each_pair(state, days(), [](const Day& day, const Day&) {
        const std::chrono::year_month_day made{std::chrono::year{day.year},
                                               std::chrono::month{static_cast<unsigned>(day.month)},
                                               std::chrono::day{static_cast<unsigned>(day.day)}};
        return std::chrono::sys_days{made}.time_since_epoch();
    });
}
BENCHMARK(ymd_to_serial_chrono)->Name("year, month, day to date number: std::chrono");

void ymd_to_serial_quantlib(benchmark::State& state) {
    each_pair(state, days(), [](const Day& day, const Day&) {
        return ql::Date(day.day, static_cast<ql::Month>(day.month), day.year).serialNumber();
    });
}
BENCHMARK(ymd_to_serial_quantlib)->Name("year, month, day to date number: QuantLib");

// --- Day counts -----------------------------------------------------------------------------------------------

void daycount_ours(benchmark::State& state, double code) {
    const qx::AnnualSequence quarters(4);
    each_pair(state, our_dates(),
              [&](const qx::date& from, const qx::date& to) { return qx::diffmonths(from, to, code, quarters); });
}
void daycount_quantlib(benchmark::State& state, const ql::DayCounter& count) {
    each_pair(state, ql_dates(),
              [&](const ql::Date& from, const ql::Date& to) { return count.yearFraction(from, to); });
}

/// Registers a day count of ours, and one of QuantLib's with the same rule beside it.
void day_count(const std::string& name, double code, const ql::DayCounter* peer = nullptr) {
    benchmark::RegisterBenchmark(("day count " + name + ": ours").c_str(), daycount_ours, code);
    if (peer != nullptr)
        benchmark::RegisterBenchmark(("day count " + name + ": QuantLib").c_str(), daycount_quantlib, *peer);
}

const bool day_counts_registered = [] {
    const ql::Thirty360 european(ql::Thirty360::European), bond_basis(ql::Thirty360::BondBasis);
    const ql::ActualActual actual(ql::ActualActual::ISDA);
    const ql::Actual360 money_market;
    const ql::Actual365Fixed fixed, no_leap(ql::Actual365Fixed::NoLeap);
    const ql::Business252 business;
    day_count("0, 30/360 PSA", 0);
    day_count("1, actual/actual", 1, &actual);
    day_count("2, actual/360", 2, &money_market);
    day_count("3, actual/365", 3, &fixed);
    day_count("4, 30E/360", 4, &european);
    day_count("5, decimal year", 5);
    day_count("6, actual/actual in period", 6);
    day_count("8, actual without leap days/365", 8, &no_leap);
    day_count("9, 30/365", 9);
    day_count("10, 30/360 ISDA", 10, &bond_basis);
    day_count("11, 30/360 with February's end", 11);
    day_count("12, 30/360 ISDA to the month's end", 12);
    day_count("13, business days/252", 13, &business);
    day_count("2.03, actual/360 with actual/365 stubs", 2.03);
    return true;
}();

// --- Business days --------------------------------------------------------------------------------------------

void business_day_ours(benchmark::State& state, int family) {
    each_pair(state, our_dates(), [&](const qx::date& day, const qx::date&) { return qx::isbd(day, family); });
}
BENCHMARK_CAPTURE(business_day_ours, united_kingdom, 101)->Name("business day, UK: ours");
BENCHMARK_CAPTURE(business_day_ours, new_york, 200)->Name("business day, New York: ours");

void business_day_quantlib(benchmark::State& state, const ql::Calendar& calendar) {
    each_pair(state, ql_dates(), [&](const ql::Date& day, const ql::Date&) { return calendar.isBusinessDay(day); });
}
BENCHMARK_CAPTURE(business_day_quantlib, united_kingdom, ql::UnitedKingdom())->Name("business day, UK: QuantLib");
BENCHMARK_CAPTURE(business_day_quantlib, new_york, ql::UnitedStates(ql::UnitedStates::NYSE))
    ->Name("business day, New York: QuantLib");

void next_business_day_ours(benchmark::State& state) {
    each_pair(state, our_dates(), [](const qx::date& day, const qx::date&) { return qx::nextbd(day, 101).dtn(); });
}
BENCHMARK(next_business_day_ours)->Name("next business day, UK: ours");

void next_business_day_quantlib(benchmark::State& state) {
    const ql::UnitedKingdom calendar;
    each_pair(state, ql_dates(),
              [&](const ql::Date& day, const ql::Date&) { return calendar.adjust(day, ql::Following).serialNumber(); });
}
BENCHMARK(next_business_day_quantlib)->Name("next business day, UK: QuantLib");

// --- Schedules: 25 years of quarters, rolled to UK business days ------------------------------------------------

void schedule_ours(benchmark::State& state) {
    qx::AnnualSequence quarters(4);
    quarters.setrolling(101, 0);
    const qx::date end(2030, 1, 2);
    for (auto _ : state) {
        std::vector<qx::date> schedule;
        for (qx::date day(2005, 1, 1); day < end; day = quarters.nextdate(day, false)) schedule.push_back(day);
        benchmark::DoNotOptimize(schedule.data());
    }
}
BENCHMARK(schedule_ours)->Name("schedule of 25 years of quarters: ours");

void schedule_quantlib(benchmark::State& state) {
    for (auto _ : state) {
        const ql::Schedule schedule(ql::Date(1, ql::January, 2005), ql::Date(1, ql::January, 2030),
                                    ql::Period(ql::Quarterly), ql::UnitedKingdom(), ql::Following, ql::Following,
                                    ql::DateGeneration::Forward, false);
        benchmark::DoNotOptimize(schedule.size());
    }
}
BENCHMARK(schedule_quantlib)->Name("schedule of 25 years of quarters: QuantLib");

} // namespace
