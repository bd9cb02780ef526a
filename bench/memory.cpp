// What the library takes of the machine's memory, as a table: resident size after opening, after the first calls of
// each category (every example of its functions), and with a full trace.
#include "addin/function.h"
#include "addin/lifecycle.h"
#include "addin/registration.h"
#include "core/trace.h"
#include "hosts/sheet/workbook.h"

#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

using namespace qx;

double resident_megabytes() {
    std::ifstream numbers("/proc/self/statm");
    double size = 0.0, resident = 0.0;
    numbers >> size >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

void row(const std::string& what) {
    static double before = 0.0;
    const double now = resident_megabytes();
    std::printf("| %-60s | %7.1f | %+7.1f |\n", what.c_str(), now, now - before);
    before = now;
}

/// Calculates an example such as "MonthEnd(38000) = 38017": what stands before its sign is the formula.
void calculate(sheet::Workbook& book, std::string_view example) {
    for (std::size_t end = 0; (end = example.find_first_of("=~!", end + 1)) != std::string_view::npos;) {
        try {
            const sheet::Formula formula = book.read(std::string(example.substr(0, end)));
            book.evaluate(formula, {});
            return;
        } catch (const sheet::FormulaError&) { // a sign within the formula
        }
    }
}

} // namespace

int main() {
    std::printf("| %-60s | %7s | %7s |\n|%s|%s|%s|\n", "resident", "MB", "more", std::string(62, '-').c_str(),
                std::string(9, '-').c_str(), std::string(9, '-').c_str());
    row("the program before anything");
    sheet::Workbook book;
    xlAutoOpen();
    row("the library opened");

    const auto& functions = the_register();
    for (std::size_t i = 0; i < functions.size(); ++i) {
        const Function* const function = functions[i].function != nullptr ? &functions[i].function->function : nullptr;
        if (function == nullptr) continue;
        for (const char* const example : function->examples)
            if (example != nullptr) calculate(book, example);
        const Registered* const next = i + 1 < functions.size() ? functions[i + 1].function : nullptr;
        if (next == nullptr || next->function.category != function->category) row(category_name(function->category));
    }

    trace().TraceStart();
    while (trace().count() < clsTrace2::maxitems) trace().info("One item of a long trace, as long as most of them are");
    row("a full trace of 1,000,000 items");
    trace().TraceShow();
    std::remove("qx_Trace.qxl");
    xlAutoClose();
}
