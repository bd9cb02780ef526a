// What a recalculation of the headless workbook costs.
#include "hosts/sheet/csv.h"

#include <benchmark/benchmark.h>

namespace qx::sheet {
namespace {

CellAddress at(std::uint32_t row, std::uint16_t column) { return {row, column, 0}; }

/// 5000 periods of ten cells, such as a cash flow has: dates and labels of the library, flags, amounts, running
/// totals and lookups.
void fill(Workbook& book) {
    constexpr std::uint32_t periods = 5000;
    book.set_value(at(0, 12), Value::number(0.05));
    book.set_value(at(1, 12), Value::number(1250.0));
    for (std::uint32_t row = 0; row < periods; ++row) {
        const std::string here = std::to_string(row + 1), before = std::to_string(row);
        if (row == 0)
            book.set_value(at(0, 0), Value::number(36526));
        else
            book.set_formula(at(row, 0), "MonthEnd(A" + before + "+15)");
        book.set_formula(at(row, 1), "DaysInMonth(A" + here + ")");
        book.set_formula(at(row, 2), "DayName(A" + here + ")");
        book.set_formula(at(row, 3), "AND(A" + here + ">=40000,B" + here + "=31)");
        book.set_formula(at(row, 4), "IF(D" + here + ",$M$2*(1+$M$1/12)^2,0)");
        book.set_formula(at(row, 5), row == 0 ? "E1" : "F" + before + "+E" + here);
        book.set_formula(at(row, 6), "ROUND(E" + here + "*B" + here + "/365,2)");
        book.set_formula(at(row, 7), "SUM(E" + here + ":G" + here + ")");
        book.set_formula(at(row, 8), "DYear(A" + here + ")-INT(DYear(A" + here + "))");
        book.set_formula(at(row, 9), "C" + here + "&\" \"&MonthName(A" + here + ")");
    }
}

void fifty_thousand_cells(benchmark::State& state) {
    Workbook book;
    fill(book);
    for (auto step : state) book.recalculate_all();
    state.counters["cells"] = static_cast<double>(book.formula_count());
}
BENCHMARK(fifty_thousand_cells)->Name("50,000 mixed cells recalculated: ours")->Unit(benchmark::kMillisecond);

void one_input_changed(benchmark::State& state) {
    Workbook book;
    fill(book);
    book.recalculate();
    double rent = 1000.0;
    for (auto step : state) {
        book.set_value(at(1, 12), Value::number(rent += 1.0));
        book.recalculate();
    }
}
BENCHMARK(one_input_changed)->Name("one input of 50,000 cells changed: ours")->Unit(benchmark::kMillisecond);

/// An input with a hundred dependents beside these cells: its column of charges.
void hundred_dependents_changed(benchmark::State& state) {
    Workbook book;
    fill(book);
    for (std::uint32_t row = 0; row < 100; ++row) book.set_formula(at(row, 10), "$N$1*G" + std::to_string(row + 1));
    book.set_value(at(0, 13), Value::number(0.1));
    book.recalculate();
    double charge = 0.1;
    for (auto step : state) {
        book.set_value(at(0, 13), Value::number(charge += 0.001));
        book.recalculate();
    }
}
BENCHMARK(hundred_dependents_changed)
    ->Name("one input with 100 dependents changed: ours")
    ->Unit(benchmark::kMicrosecond);

void formulas_read(benchmark::State& state) {
    for (auto step : state) {
        Workbook book;
        fill(book);
        benchmark::DoNotOptimize(book.formula_count());
    }
}
BENCHMARK(formulas_read)->Name("50,000 formulas read: ours")->Unit(benchmark::kMillisecond);

/// Sums from the top down to each row: every one of them depends on the first cell.
void running_sums_changed(benchmark::State& state) {
    Workbook book;
    const auto rows = static_cast<std::uint32_t>(state.range(0));
    for (std::uint32_t row = 0; row < rows; ++row) {
        book.set_value(at(row, 0), Value::number(row));
        book.set_formula(at(row, 1), "SUM(A$1:A" + std::to_string(row + 1) + ")");
    }
    book.recalculate();
    double last = 1.0;
    for (auto step : state) { // the last cell has one dependent
        book.set_value(at(rows - 1, 0), Value::number(last += 1.0));
        benchmark::DoNotOptimize(book.value(at(rows - 1, 1)));
    }
}
BENCHMARK(running_sums_changed)->Name("last of running sums changed: ours")->Arg(50000)->Unit(benchmark::kMicrosecond);

/// One input with one dependent among very many cells.
void one_dependent_changed(benchmark::State& state) {
    Workbook book;
    const auto rows = static_cast<std::uint32_t>(state.range(0));
    for (std::uint32_t row = 0; row < rows; ++row) {
        book.set_value(at(row, 0), Value::number(row));
        book.set_formula(at(row, 1), "A" + std::to_string(row + 1) + "*2");
    }
    book.recalculate();
    double input = 0.5;
    for (auto step : state) {
        book.set_value(at(rows / 2, 0), Value::number(input += 1.0));
        book.recalculate();
    }
}
BENCHMARK(one_dependent_changed)
    ->Name("one input with one dependent changed: ours")
    ->Arg(50000)
    ->Unit(benchmark::kMicrosecond);

/// As many lookups as the list has rows.
void lookups(benchmark::State& state, const char* formula) {
    Workbook book;
    constexpr std::uint32_t rows = 20000;
    for (std::uint32_t row = 0; row < rows; ++row) {
        book.set_value(at(row, 0), Value::number(row * 7919 % rows));
        std::string text = formula;
        for (std::size_t place; (place = text.find('%')) != text.npos;) text.replace(place, 1, std::to_string(row));
        book.set_formula(at(row, 1), text);
    }
    for (auto step : state) book.recalculate_all();
}
BENCHMARK_CAPTURE(lookups, match, "MATCH(%,A$1:A$20000,0)")
    ->Name("20,000 MATCH in 20,000 rows: ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(lookups, window, "SUMIFS(A$1:A$20000,A$1:A$20000,\">=%\",A$1:A$20000,\"<=%\")")
    ->Name("20,000 SUMIFS of a window in 20,000 rows: ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(lookups, sumif, "SUMIF(A$1:A$20000,%)")
    ->Name("20,000 SUMIF in 20,000 rows: ours")
    ->Unit(benchmark::kMillisecond);

/// The cost of a cell as a workbook grows: chains of everyday formulas.
void growing_workbook(benchmark::State& state) {
    Workbook book;
    const auto rows = static_cast<std::uint32_t>(state.range(0)) / 4;
    for (std::uint32_t row = 0; row < rows; ++row) {
        const std::string here = std::to_string(row + 1), before = std::to_string(row);
        book.set_formula(at(row, 0), row == 0 ? "1" : "A" + before + "+1");
        book.set_formula(at(row, 1), "A" + here + "*1.05");
        book.set_formula(at(row, 2), "IF(A" + here + ">100,B" + here + ",0)");
        book.set_formula(at(row, 3), "SUM(A" + here + ":C" + here + ")");
    }
    for (auto step : state) book.recalculate_all();
    state.counters["per cell"] = benchmark::Counter(
        static_cast<double>(rows) * 4.0, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(growing_workbook)
    ->Name("everyday cells recalculated: ours")
    ->Arg(10000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace qx::sheet
