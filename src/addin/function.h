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
#include "calendar/default_sequence.h"
#include "core/limits.h"
#include "core/switches.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace qx {

class Frame;

inline constexpr int max_arguments = 29;
/// The most characters of a string of the registration.
inline constexpr std::size_t longest_help = 255;

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

/// What an optional argument is when it is omitted.
struct Preset {
    enum Type : std::uint8_t { required, number, boolean, text, empty, sequence };
    Type type = required;
    double value = 0.0;          ///< number, boolean (0 or 1), date number, or number of a preset sequence
    const char* words = nullptr; ///< the default as text; for the other types what the default means, if given
};

/// What a list of dates or numbers must be like.
enum class Order : std::uint8_t {
    any,
    ascending, ///< blank rows at the end are dropped; a date before the one above it is refused (notascending)
};

/// One argument of a worksheet function.
struct Argument {
    const char* name = nullptr;
    const char* help = nullptr;
    Preset preset = {};
    Limits limits = {}; ///< what the routine allows, in units of the argument
    Order order = Order::any;
    DefaultSequence sequence = DefaultSequence::in_advance; ///< of an annual sequence
    SwitchTable values = {};                                ///< of a switch: what it may be

    constexpr bool is_optional() const { return preset.type != Preset::required; }
    /// The same argument with limits, with another name, in ascending order, as a switch.
    constexpr Argument within(Limits allowed) const {
        Argument changed = *this;
        changed.limits = allowed;
        return changed;
    }
    constexpr Argument renamed(const char* other) const {
        Argument changed = *this;
        changed.name = other;
        return changed;
    }
    constexpr Argument of(const SwitchTable& table) const {
        Argument changed = *this;
        changed.values = table;
        return changed;
    }
    constexpr Argument in_ascending_order() const {
        Argument changed = *this;
        changed.order = Order::ascending;
        return changed;
    }
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
/// An argument that is an empty range, a blank or the zero date when it is omitted.
constexpr Argument optional(const char* name, const char* help) { return {name, help, {Preset::empty, 0.0, nullptr}}; }

/// The arguments of a composite parameter: one or several, side by side in a list.
struct ArgumentGroup {
    static constexpr int most = 8;
    Argument items[most] = {};
    int count = 0;

    constexpr ArgumentGroup(const Argument& argument) : items{argument}, count(1) {}
    constexpr ArgumentGroup(const char* name, const char* help, const Preset& preset = {})
        : ArgumentGroup(Argument{name, help, preset}) {}
    constexpr ArgumentGroup(std::initializer_list<Argument> arguments) {
        for (const Argument& argument : arguments) items[count++] = argument;
    }
};

/// The arguments of a function, as a list of arguments and groups of them: {Time(), Base(), growth(), basis()}.
struct Arguments {
    Argument items[max_arguments] = {};

    constexpr Arguments() = default;
    constexpr Arguments(std::initializer_list<ArgumentGroup> groups) {
        int n = 0;
        for (const ArgumentGroup& group : groups)
            for (int i = 0; i < group.count; ++i) items[n++] = group.items[i];
    }
    constexpr const Argument& operator[](int i) const { return items[i]; }
    constexpr Argument& operator[](int i) { return items[i]; }
};

/// How a worksheet call is carried out: made by core<> and its relatives from the routine's own signature.
struct Calls {
    void (*run)(Frame&) = nullptr;
    int cells = 0;
    Kind kinds[max_arguments] = {};
    bool gives_dates = false;       ///< the numbers of the result are dates, for a host that formats its cells
    Kind items[max_arguments] = {}; ///< of an argument that is a list: what its cells are converted to
    Kind gives = Kind::none;        ///< what is returned; none for a cell as the routine makes it
    Kind gives_items = Kind::none;  ///< of a list that is returned
};

/// A numbered note of a change in behaviour.
struct ChangeNote {
    int number = 0;
    const char* text = nullptr;
    const char* newer = nullptr; ///< the function to use instead
};

struct Function {
    const char* name;
    Category category;
    int topic = 0; ///< number of the help topic; 0 for one given by the function's place in the register
    Calls calls;
    const char* help;
    Arguments args = {};
    const char* examples[6] = {}; ///< cases of the form "MonthEnd(38000) = 38017"
    const char* see_also = "";    ///< names, comma-separated
    ChangeNote change = {};       ///< why the function is kept beside a newer one; shown in the trace at each call
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
/// pointer if a precedent is not calculated yet: then calculate it and call again. Hosts of several threads hold a
/// CalculationLock (frame.h) until they have read it.
OPER* perform(const Function& function, OPER* const* cells);

/// The functions that exist, as a linked list in no particular order.
Registered* all_functions();
/// The function of a worksheet name in any case, or null.
const Function* find_function(std::string_view name);

/// The argument list as the host shows it: "TheDate,Days,[DayCount],[Periods]". A host takes 255 characters: a list
/// that is longer goes without the brackets, and if need be with "..." in place of its last names.
std::string argument_text(const Function& function);
/// The type text of the registration: R, then P or R per argument, and a ! if volatile.
std::string type_text(const Function& function);

} // namespace qx
