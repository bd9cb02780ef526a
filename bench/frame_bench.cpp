// What the worksheet boundary costs: conversion of four arguments, the locked frame, the reply.
#include "addin/declare.h"

#include <benchmark/benchmark.h>

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

} // namespace
} // namespace qx
