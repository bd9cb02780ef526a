// A host of the library: looks up functions by name, hands them cells, and reads the cell that comes back.
#include "addin/cells.h"
#include "addin/frame.h"
#include "addin/function.h"
#include "addin/host.h"

#include <cstddef>
#include <initializer_list>
#include <iostream>
#include <string_view>
#include <vector>

namespace {

using namespace qx;

/// What the library asks of its surroundings. A spreadsheet serves cells here; this host has none, but answers a
/// function that asks where its result goes: to one cell.
class Console final : public Host {
    int call(int operation, OPER* result, int, OPER* const*) override {
        if (operation != xlfCaller) return xlretFailed;
        *result = sref_cell({0, 0, 0, 0});
        return xlretSuccess;
    }
    void message_box(std::string_view title, std::string_view text) override {
        std::cerr << title << ": " << text << '\n';
    }
};

/// Calls a function on as many cells as are given, the rest omitted, and prints its result.
void show(std::string_view name, std::initializer_list<OPER> given) {
    const Function* const function = find_function(name);
    if (function == nullptr) {
        std::cerr << "no function " << name << '\n';
        return;
    }
    std::vector<OPER> cells = given;
    cells.resize(static_cast<std::size_t>(function->arity()), missing_cell());
    std::vector<OPER*> pointers;
    for (OPER& cell : cells) pointers.push_back(&cell);

    const CalculationLock lock; // held until the result is read: it is the library's own
    const OPER& result = *perform(*function, pointers.data());
    std::cout << name << " = ";
    if (result.type() == xltypeNum)
        std::cout << result.val.num << '\n';
    else if (last_error() != nullptr)
        std::cout << describe(result) << ", " << last_error()->text << '\n';
    else
        std::cout << describe(result) << '\n'; // as the trace shows a cell
}

} // namespace

int main() {
    Console console;
    set_host(&console);
    std::cout.precision(10);

    OPER dates[] = {number_cell(46023), number_cell(46388), number_cell(46753)}; // 1 January 2026, 2027 and 2028
    OPER flows[] = {number_cell(-1000), number_cell(60), number_cell(1060)};
    show("MonthEnd", {dates[0]});
    show("IRRT", {array_cell(dates, 3, 1), array_cell(flows, 3, 1)});
    // The rent of 2026, of 100 a year and from 1 July on of 120. A list is an array of cells, here of one.
    OPER expiry[] = {number_cell(48214)};
    show("RentGrow", {dates[0], number_cell(12), number_cell(44562), array_cell(expiry, 1, 1), number_cell(46204),
                      number_cell(120), number_cell(100)});
    show("MonthEnd", {number_cell(-1)}); // no date: an error value
}
