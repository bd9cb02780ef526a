// Tables as a modeller lays them out, in the headless workbook: a rent roll, and streams that grow. The peers beside it
// (peers/tables_numpy.py, peers/tables_libreoffice.py) make the same tables from the same inputs, which
// peers/tables.py has for them; every total is compared.
#include "calendar/date.h"
#include "hosts/sheet/workbook.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace qx::sheet {
namespace {

/// A month counted from year 0, and the date number of its first day.
int month_of(int year, int month = 1) { return 12 * year + month - 1; }
double day_of(int month) { return qx::date(month / 12, month % 12 + 1, 1).dtn(); }

/// "F7" for row 6 of column 5.
std::string cell_name(std::uint32_t row, std::uint16_t column) {
    std::string letters;
    for (int left = column; left >= 0; left = left / 26 - 1)
        letters.insert(letters.begin(), static_cast<char>('A' + left % 26));
    return letters + std::to_string(row + 1);
}

/// A table of rows of inputs, the periods above it to the right, and one more date: the end of the last.
class Table {
  public:
    static constexpr std::uint16_t first_period = 10;

    Table(std::uint32_t rows, std::uint16_t periods, int first_month, int months) : rows_(rows), periods_(periods) {
        for (int i = 0; i <= periods; ++i) put(0, first_period + i, day_of(first_month + i * months));
    }
    void put(std::uint32_t row, int column, double value) {
        book_.set_value({row, static_cast<std::uint16_t>(column), 0}, Value::number(value));
    }
    /// A list below the table; a reference to it.
    std::string list(int column, const std::vector<double>& values) {
        const std::uint32_t first = rows_ + 2;
        for (std::uint32_t i = 0; i < values.size(); ++i) put(first + i, column, values[i]);
        const auto at = [&](std::uint32_t row) {
            const std::string name = cell_name(row, static_cast<std::uint16_t>(column));
            return "$" + name.substr(0, 1) + "$" + name.substr(1);
        };
        return at(first) + ":" + at(first + static_cast<std::uint32_t>(values.size()) - 1);
    }
    /// A row of amounts: `arguments` go after the time and the length of a period. As a twin one formula fills it.
    void fill(std::uint32_t row, const std::string& function, int months, const std::string& arguments, bool twin) {
        const auto formula = [&](const std::string& time) {
            return function + "(" + time + "," + std::to_string(months) + "," + arguments + ")";
        };
        const std::uint16_t end = static_cast<std::uint16_t>(first_period + periods_);
        if (twin)
            return book_.set_formula({row, first_period, 0},
                                     formula(cell_name(0, first_period) + ":" + cell_name(0, end)));
        for (std::uint16_t column = first_period; column < end; ++column)
            book_.set_formula({row, column, 0}, formula(cell_name(0, column)));
    }
    void measure(benchmark::State& state) {
        const CellAddress total{rows_ + 1, 0, 0};
        book_.set_formula(total, "SUM(" + cell_name(1, first_period) + ":" +
                                     cell_name(rows_, static_cast<std::uint16_t>(first_period + periods_ - 1)) + ")");
        for (auto step : state) book_.recalculate_all();
        state.counters["total"] = book_.value(total).number();
    }

  private:
    Workbook book_;
    std::uint32_t rows_;
    std::uint16_t periods_;
};

// --- A rent roll ----------------------------------------------------------------------------------------------------

/// Leases that are reviewed upward every five years and let again after a void, ten years by quarters.
void rent_roll(benchmark::State& state, bool twin) {
    constexpr std::uint32_t leases = 1000;
    Table table(leases, 40, month_of(2005), 3);
    const std::string growth_dates =
        table.list(0, {day_of(month_of(2005)), day_of(month_of(2008)), day_of(month_of(2009, 7))});
    const std::string growth_rates = table.list(1, {0.03, -0.04, 0.05});
    for (std::uint32_t i = 0; i < leases; ++i) {
        const int n = static_cast<int>(i), start = month_of(2001) + 3 * (7 * n % 20);
        const double market = 1000.0 + 13 * (n % 97);
        const double inputs[] = {day_of(start),      day_of(start + 72 + 12 * (n % 5)),
                                 day_of(start + 60), market,
                                 0.9 * market,       3.0 * (n % 4),
                                 3.0 * (n % 3),      4.0 + n % 4};
        for (int column = 0; column < 8; ++column) table.put(i + 1, column, inputs[column]);
        const std::string row = std::to_string(i + 2);
        const auto cells = [&](const char* letters) {
            std::string list;
            for (const char* letter = letters; *letter != '\0'; ++letter)
                list += (list.empty() ? "$" : ",$") + std::string(1, *letter) + row;
            return list;
        };
        table.fill(i + 1, "RentGrowR", 3,
                   cells("ABCDE") + "," + growth_dates + "," + growth_rates + ",60,-1E-12," + cells("FGH"), twin);
    }
    table.measure(state);
}
BENCHMARK_CAPTURE(rent_roll, cells, false)
    ->Name("rent roll of 1,000 leases by 40 quarters: ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(rent_roll, twins, true)
    ->Name("rent roll of 1,000 leases by 40 quarters: ours, a twin a lease")
    ->Unit(benchmark::kMillisecond);

// --- Streams that grow ----------------------------------------------------------------------------------------------

constexpr int streams = 100, months = 360, growth_steps = 10;

/// What a unit becomes under ten dated growth rates, three years apart from 2005 on.
struct GrowthSteps {
    static int month(int step) { return month_of(2005 + 3 * step); }
    static double rate(int step) { return 0.02 + 0.001 * step; }
};

/// Half of the streams step up every third year, half are reviewed every year.
void growth_table(benchmark::State& state, bool twin) {
    Table table(streams, months, month_of(2005), 1);
    std::vector<double> dates, rates;
    for (int i = 0; i < growth_steps; ++i) {
        dates.push_back(day_of(GrowthSteps::month(i)));
        rates.push_back(GrowthSteps::rate(i));
    }
    const std::string growth_dates = table.list(0, dates), growth_rates = table.list(1, rates);
    for (int i = 0; i < streams; ++i) {
        const auto at = static_cast<std::uint32_t>(i + 1);
        table.put(at, 0, day_of(month_of(2025 + i % 10)));
        table.put(at, 1, 1000.0 + i);
        const std::string row = std::to_string(i + 2), growth = growth_dates + "," + growth_rates;
        if (i % 2 == 0)
            table.fill(at, "FStepGrow", 1, "$A" + row + ",$B" + row + "," + growth_dates + "," + growth, twin);
        else
            table.fill(at, "ConGrow", 1, "2005,$A" + row + ",$B" + row + "," + growth + ",12", twin);
    }
    table.measure(state);
}
BENCHMARK_CAPTURE(growth_table, cells, false)
    ->Name("100 streams of 10 growth steps by 360 months: ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(growth_table, twins, true)
    ->Name("100 streams of 10 growth steps by 360 months: ours, a twin a stream")
    ->Unit(benchmark::kMillisecond);

void growth_table_plainly(benchmark::State& state) {
    std::vector<double> table(std::size_t{streams} * months);
    double sum = 0.0;
    for (auto step : state) {
        const int first = month_of(2005);
        std::array<double, months> stepped, reviewed;
        double grown = 1.0;
        for (int month = 0, n = 0; month < months; ++month) {
            if (n + 1 < growth_steps && first + month == GrowthSteps::month(n + 1))
                grown *= std::pow(1.0 + GrowthSteps::rate(n++), 3.0);
            stepped[month] = grown;
            reviewed[month] = grown * std::pow(1.0 + GrowthSteps::rate(n), (month / 12) - 3 * n);
        }
        for (int i = 0; i < streams; ++i)
            for (int month = 0; month < months; ++month)
                table[static_cast<std::size_t>(i * months + month)] =
                    first + month < month_of(2025 + i % 10)
                        ? (1000.0 + i) * (i % 2 == 0 ? stepped : reviewed)[month] / 12.0
                        : 0.0;
        benchmark::DoNotOptimize(table.data());
        benchmark::ClobberMemory();
    }
    for (const double amount : table) sum += amount;
    state.counters["total"] = sum;
}
BENCHMARK(growth_table_plainly)
    ->Name("100 streams of 10 growth steps by 360 months: plain C++")
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace qx::sheet
