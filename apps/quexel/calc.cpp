#include "apps/quexel/commands.h"
#include "apps/quexel/output.h"
#include "apps/quexel/tracing.h"

#include "commands/goal_seek.h"
#include "core/logs.h"
#include "hosts/sheet/csv.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <unistd.h>

namespace qx::app {

using sheet::CellAddress;
using sheet::Problem;

namespace {

bool read_file(const std::string& name, std::string& text) {
    if (name == "-") {
        text.assign(std::istreambuf_iterator<char>(std::cin), {});
        return true;
    }
    errno = 0;
    std::ifstream file(name, std::ios::binary);
    std::ostringstream content;
    if (file) content << file.rdbuf();
    // An empty file leaves the stream without a byte, which is no failure.
    if (!file.is_open() || file.bad() || errno == EISDIR) {
        std::cerr << name << ": cannot be read: " << std::strerror(errno == 0 ? EIO : errno) << '\n';
        return false;
    }
    text = content.str();
    return true;
}

bool write_file(const std::string& name, const std::string& text) {
    if (name == "-") {
        std::cout << text;
        return true;
    }
    std::ofstream file(name, std::ios::binary);
    file << text;
    file.close();
    if (file) return true;
    std::cerr << name << ": cannot be written: " << std::strerror(errno) << '\n';
    return false;
}

void tell(const std::string& file, const std::vector<Problem>& problems) {
    for (const Problem& problem : problems)
        std::cerr << file << ": " << sheet::address_text(problem.cell) << ": " << problem.message << '\n';
}

/// Shows how far a long calculation is, on a terminal only.
class Progress {
  public:
    explicit Progress(sheet::Workbook& book) : book_(book) {
        if (!isatty(STDERR_FILENO)) return;
        book_.progress = [this](std::size_t done, std::size_t all) {
            const auto now = std::chrono::steady_clock::now();
            if (now - last_ < std::chrono::milliseconds(300)) return;
            last_ = now;
            shown_ = true;
            std::fprintf(stderr, "\r%zu of %zu formulas", done, all);
        };
    }
    ~Progress() {
        book_.progress = nullptr;
        if (shown_) std::fputs("\r\033[K", stderr);
    }

  private:
    sheet::Workbook& book_;
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
    bool shown_ = false;
};

void print_sheet(sheet::Workbook& book, bool dates) {
    constexpr int digits = 10; // what a column on a screen has room for
    std::vector<std::vector<Field>> rows;
    const std::uint32_t columns = book.grid(0).columns();
    for (std::uint32_t row = 0; row < book.grid(0).rows(); ++row) {
        rows.emplace_back();
        for (std::uint32_t column = 0; column < columns; ++column)
            rows.back().push_back(field_of(book.value({row, static_cast<std::uint16_t>(column), 0}), dates, digits));
    }
    print_table(std::cout, rows);
}

/// Switches the monitor on. False, with a message, if its file cannot be written.
bool start_monitor() {
    CalcMonStart();
    if (CalcMonLog().isopen()) return true;
    std::cerr << CalcMonLog().name() << ": cannot be written\n";
    return false;
}

/// Switches the monitor off. False, with a message, if its file could be begun but lacks lines.
bool stop_monitor() {
    const bool begun = CalcMonLog().isopen();
    CalcMonStop();
    if (!begun || CalcMonLog().complete()) return true;
    std::cerr << CalcMonLog().name() << ": not complete: the disk is full or failed\n";
    return false;
}

/// Runs the goal seeks that the cells ask for.
void seek_goals(sheet::Workbook& book) {
    book.run(CPPQX_GoalSeekInit);
    book.recalculate_all();
    book.run(CPPQX_GoalSeek);
    book.recalculate_all();
}

/// Writes the report of the goal seeks without the line end that it begins with.
void print_report(std::ostream& out) {
    std::string report = goal_seek_report();
    report.erase(0, report.find_first_not_of("\r\n"));
    report.erase(std::remove(report.begin(), report.end(), '\r'), report.end());
    out << (report.empty() ? "No goal seek in this model" : report) << '\n';
}

} // namespace

int calc(const CalcOptions& options) {
    std::string text;
    if (!read_file(options.file, text)) return 1;
    sheet::Area traced_cell;
    if (!options.trace.empty() && (!sheet::read_area(options.trace, 0, traced_cell) || !traced_cell.is_cell())) {
        std::cerr << "\"" << options.trace << "\" is no cell; give its address, as B7\n";
        return 1;
    }
    sheet::Workbook book;
    std::vector<Problem> problems = load_csv(book, 0, text);
    bool monitored = true;
    {
        const Progress progress(book);
        if (options.monitor) monitored = start_monitor();
        if (options.seek)
            seek_goals(book);
        else
            book.recalculate();
        if (options.monitor && !stop_monitor()) monitored = false;
    }
    const std::vector<Problem> of_formulas = book.problems();
    problems.insert(problems.end(), of_formulas.begin(), of_formulas.end());
    tell(options.file, problems);

    int status = problems.empty() && monitored && (!options.seek || goal_seek_failures() == 0) ? 0 : 1;
    if (!options.trace.empty()) {
        if (book.formula(traced_cell.first()) == nullptr) {
            std::cerr << options.trace << " holds no formula\n";
            return 1;
        }
        const TraceTree tree = traced([&] {
            book.mark_dirty(traced_cell.first());
            book.value(traced_cell.first());
        });
        if (show(tree, options.trace + " = " + book.formula(traced_cell.first())->text, options.html) != 0) status = 1;
        if (options.out.empty()) return status;
    }
    if (options.out.empty())
        print_sheet(book, options.dates);
    else if (!write_file(options.out, save_csv(book, 0, options.dates)))
        status = 1;
    if (options.seek) {
        if (options.out.empty()) std::cout << '\n';
        print_report(options.out == "-" ? std::cerr : std::cout);
    }
    return status;
}

} // namespace qx::app
