#include "addin/function.h"
#include "core/trace.h"
#include "core/utilities.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace qx {

namespace {

Registered* first_registered = nullptr;

std::string lower(std::string_view name) {
    std::string text(name);
    std::transform(text.begin(), text.end(), text.begin(), small_letter);
    return text;
}

} // namespace

Registered::Registered(const Function& function, const char* symbol)
    : function(function), symbol(symbol), next(first_registered) {
    first_registered = this;
}

Registered* all_functions() { return first_registered; }

const Function* find_function(std::string_view name) {
    static std::unordered_map<std::string, const Function*> by_name;
    static const Registered* known = nullptr;
    if (known != first_registered) { // more functions came since
        known = first_registered;
        for (const Registered* node = first_registered; node != nullptr; node = node->next)
            by_name.emplace(lower(node->function.name), &node->function);
    }
    const auto found = by_name.find(lower(name));
    return found == by_name.end() ? nullptr : found->second;
}

namespace {

/// What the trace says of an argument of a worksheet function's routine: its help.
std::string_view help_of(std::string_view function, std::string_view argument) {
    const Function* const found = find_function(function);
    if (found == nullptr) return {};
    const Argument* const begin = &found->args[0];
    const Argument* const end = begin + found->arity();
    const Argument* const same =
        std::find_if(begin, end, [argument](const Argument& known) { return known.name == argument; });
    return same == end ? std::string_view{} : same->help;
}

/// What the trace calls an argument of a worksheet function's routine: its declared name.
std::string_view name_of(std::string_view function, int cell) {
    const Function* const found = find_function(function);
    return found == nullptr || cell >= found->arity() ? std::string_view{"?"} : found->args[cell].name;
}

[[maybe_unused]] const bool connected = (trace().describe_argument = help_of, trace().declared_name = name_of, true);

} // namespace

std::string argument_text(const Function& function) {
    std::string text, names;
    for (int i = 0; i < function.arity(); ++i) {
        const Argument& argument = function.args[i];
        const char* const comma = i > 0 ? "," : "";
        text += comma + (argument.is_optional() ? "[" + std::string(argument.name) + "]" : argument.name);
        names.append(comma).append(argument.name);
    }
    if (text.size() <= longest_help) return text;
    if (names.size() <= longest_help) return names;
    constexpr std::string_view more = ",...";
    return names.substr(0, names.rfind(',', longest_help - more.size())).append(more);
}

std::string type_text(const Function& function) {
    std::string text = "R";
    for (int i = 0; i < function.arity(); ++i) text += function.calls.kinds[i] == Kind::reference ? 'R' : 'P';
    if (function.is_volatile) text += '!';
    return text;
}

const char* category_name(Category category) {
    static constexpr const char* names[] = {
        "QX: Accounting And Tax",
        "QX: Time Value Of Money Analysis",
        "QX: Levels Over Time Projections",
        "QX: Discounted Cash Flow",
        "QX: Text",
        "QX: Compatibility",
        "QX: Special Dates",
        "QX: Miscellaneous",
        "QX: Constant Rate Projections",
        "QX: Projections NPV",
        "QX: Date and Time Calculations",
        "QX: Petroleum Economics",
        "QX: Banking",
        "QX: Instantaneous Level Projections",
        "QX: Real Estate",
        "QX: Range Operations",
        "QX: Interpolated and Curve-Fitted Projections",
        "QX: Simulation Modelling",
        "QX: Discrete Amount Projections",
        "QX: Mathematical Calculations",
        "QX: Stepped Rate Projections",
        "QX: Distributed Amount Projections",
    };
    return names[static_cast<int>(category)];
}

} // namespace qx
