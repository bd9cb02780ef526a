// A worksheet function as it is declared: names, words and presets, beside the core routine that it calls.
//
//     constexpr Function DpD{
//         .name = "DpD",
//         .category = Category::DateAndTime,
//         .calls = core<qx::DpD>,
//         .help = "Date plus a number of days under a day count convention",
//         .args = {{"TheDate", "Date to start from"}, {"Days", "Days to add"}, DayCount(5.0), Periods(4)},
//         .examples = {"DpD(38000, 30) = 38030"},
//     };
//     QX_EXPORT(DpD, 4);
#pragma once

#include "addin/oper.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace qx {

class Frame;

inline constexpr int max_arguments = 29;

enum class Category : std::uint8_t {
    AccountingAndTax,
    TimeValueOfMoney,
    LevelsOverTime,
    DiscountedCashFlow,
    Text,
    Compatibility,
    SpecialDates,
    Miscellaneous,
    ConstantRate,
    ProjectionsNPV,
    DateAndTime,
    PetroleumEconomics,
    Banking,
    InstantaneousLevel,
    RealEstate,
    RangeOperations,
    InterpolatedAndCurveFitted,
    SimulationModelling,
    DiscreteAmount,
    Mathematical,
    SteppedRate,
    DistributedAmount,
};
const char* category_name(Category category); ///< as "QX: Date and Time Calculations"

/// What one cell of an argument list is converted to.
enum class Kind : std::uint8_t {
    none,
    number,
    integer,
    wide_integer,
    boolean,
    date,
    text,
    short_text,
    any,
    date_or_number,
    number_or_blank,
    list, ///< a Range of any of these
    sequence,
    period_start,
    period_base,
    cell,      ///< the cell as it comes, errors included
    reference, ///< the cell as it comes, and references unresolved
};

/// What an optional argument is when it is left out.
struct Preset {
    enum Type : std::uint8_t { required, number, boolean, text, empty, sequence };
    Type type = required;
    double value = 0.0;          ///< number, boolean (0 or 1), date number, or number of a preset sequence
    const char* words = nullptr; ///< the default as text; for the other types what the default means, if told
};

/// One argument of a worksheet function.
struct Argument {
    const char* name = nullptr;
    const char* help = nullptr;
    Preset preset = {};

    constexpr bool is_optional() const { return preset.type != Preset::required; }
};

// Makers of optional arguments: optional("Round", 0.0, "How to round").
constexpr Argument optional(const char* name, double preset, const char* help, const char* words = nullptr) {
    return {name, help, {Preset::number, preset, words}};
}
constexpr Argument optional(const char* name, int preset, const char* help, const char* words = nullptr) {
    return {name, help, {Preset::number, static_cast<double>(preset), words}};
}
constexpr Argument optional(const char* name, bool preset, const char* help) {
    return {name, help, {Preset::boolean, preset ? 1.0 : 0.0, nullptr}};
}
constexpr Argument optional(const char* name, const char* preset, const char* help) {
    return {name, help, {Preset::text, 0.0, preset}};
}
/// An argument that is an empty range, a blank or the zero date when it is left out.
constexpr Argument optional(const char* name, const char* help) { return {name, help, {Preset::empty, 0.0, nullptr}}; }

/// How a worksheet call is carried out: made by core<> and its relatives from the routine's own signature.
struct Calls {
    void (*run)(Frame&) = nullptr;
    int cells = 0;
    Kind kinds[max_arguments] = {};
    bool gives_dates = false; ///< the numbers of the result are dates, for a host that formats its cells
};

struct Function {
    const char* name;
    Category category;
    int topic = 0; ///< number of the help topic; 0 for one given by the function's place in the register
    Calls calls;
    const char* help;
    Argument args[max_arguments] = {};
    const char* examples[6] = {}; ///< cases of the form "MonthEnd(38000) = 38017"
    const char* see_also = "";    ///< names, comma-separated
    bool is_volatile = false;     ///< calculated anew at every recalculation
    bool errors_as_data = false;  ///< takes error values as data: one that escapes shows as #NUM!

    constexpr int arity() const { return calls.cells; }
};

/// A declared function's place in the list of all; made by QX_EXPORT.
struct Registered {
    Registered(const Function& function, const char* symbol);

    const Function& function;
    const char* symbol; ///< the exported name
    Registered* next;
};

/// Carries out a worksheet call on `arity()` cells. Returns the result, valid until the next call, or a null
/// pointer if a precedent is not calculated yet: then calculate it and call again.
OPER* perform(const Function& function, OPER* const* cells);

/// The functions that exist, as a linked list in no particular order.
Registered* all_functions();
/// The function of a worksheet name in any case, or null.
const Function* find_function(std::string_view name);

/// The argument list as the host shows it: "TheDate,Days,[DayCount],[Periods]".
std::string argument_text(const Function& function);
/// The type text of the registration: R, then P or R per argument, and a ! if volatile.
std::string type_text(const Function& function);

} // namespace qx
