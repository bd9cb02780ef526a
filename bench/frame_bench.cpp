// What the worksheet boundary costs: conversion of four arguments, the locked frame, the reply.
// Then the calls that leave something behind: a large result, a variable, a line of the monitor, a random number.
#include "addin/declare.h"
#include "core/logs.h"

#include <benchmark/benchmark.h>

#include <cstdio>

namespace qx {
namespace {

double plus(const date& TheDate, double Days, double DayCount, double Factor) {
    return TheDate.dtn() + Days * Factor + DayCount;
}
double sum(Range<double>& Values) {
    double sum = 0.0;
    for (const double value : Values) sum += value;
    return sum;
}

constexpr Function four_arguments{
    .name = "Plus",
    .category = Category::Miscellaneous,
    .calls = core<plus>,
    .help = "A date and three numbers in, a number out",
    .args = {{"TheDate", ""}, {"Days", ""}, optional("DayCount", 0.0, ""), optional("Factor", 1.0, "")},
};
constexpr Function one_range{
    .name = "Sum",
    .category = Category::Miscellaneous,
    .calls = core<sum>,
    .help = "A range in, a number out",
    .args = {{"Values", ""}},
};

void frame_of_four_arguments(benchmark::State& state) {
    OPER cells[] = {number_cell(38000), number_cell(30), missing_cell(), missing_cell()};
    OPER* const arguments[] = {&cells[0], &cells[1], &cells[2], &cells[3]};
    for (auto _ : state) benchmark::DoNotOptimize(perform(four_arguments, arguments)->val.num);
}
BENCHMARK(frame_of_four_arguments)->Name("frame and conversion of four arguments: ours");

void range_of_10000_cells(benchmark::State& state) {
    static OPER numbers[10000];
    for (OPER& cell : numbers) cell = number_cell(1.5);
    OPER range = array_cell(numbers, 10000, 1);
    OPER* const arguments[] = {&range};
    for (auto _ : state) benchmark::DoNotOptimize(perform(one_range, arguments)->val.num);
    state.SetItemsProcessed(state.iterations() * 10000);
}
BENCHMARK(range_of_10000_cells)->Name("range of 10,000 cells summed: ours");

void large_result(benchmark::State& state, bool in_turn) {
    static constexpr Function other = [] {
        Function function = four_arguments;
        function.name = "Other";
        return function;
    }();
    OPER cells[] = {number_cell(38000), number_cell(1e12), missing_cell(), missing_cell()};
    OPER* const arguments[] = {&cells[0], &cells[1], &cells[2], &cells[3]};
    bool turn = false;
    for (auto _ : state) {
        benchmark::DoNotOptimize(perform(turn ? other : four_arguments, arguments)->val.num);
        turn = in_turn && !turn;
    }
    large_number_watch().close();
    std::remove("qx_flout.txt");
}
BENCHMARK_CAPTURE(large_result, of_one, false)->Name("call with a result above 1e10: ours");
BENCHMARK_CAPTURE(large_result, in_turn, true)->Name("calls of two functions in turn with results above 1e10: ours");

void variable_set(benchmark::State& state) {
    const Function& function = *find_function("SetNum");
    unsigned char name[] = "\004Rent"; // counted
    OPER cells[] = {number_cell(1e6), {{.str = name}, xltypeStr}};
    OPER* const arguments[] = {&cells[0], &cells[1]};
    for (auto _ : state) benchmark::DoNotOptimize(perform(function, arguments)->val.num);
}
BENCHMARK(variable_set)->Name("named variable set: ours");

void random_number(benchmark::State& state) {
    const Function& function = *find_function("RandNum");
    OPER* const none[] = {nullptr};
    for (auto _ : state) benchmark::DoNotOptimize(perform(function, none)->val.num);
}
BENCHMARK(random_number)->Name("random number drawn: ours");

void monitored(benchmark::State& state) {
    OPER cells[] = {number_cell(38000), number_cell(30), missing_cell(), missing_cell()};
    OPER* const arguments[] = {&cells[0], &cells[1], &cells[2], &cells[3]};
    CalcMonStart();
    for (auto _ : state) benchmark::DoNotOptimize(perform(four_arguments, arguments)->val.num);
    CalcMonStop();
    std::remove("qx_CalcMon.qxl");
}
BENCHMARK(monitored)->Name("call with the calculation monitor on: ours");

} // namespace
} // namespace qx
