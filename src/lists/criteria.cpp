#include "lists/criteria.h"

#include "core/routine.h"

#include <charconv>

namespace qx {

namespace {

constexpr char placeholder = '?';
constexpr std::string_view quoted_placeholder = "\"?\"";

template <class E, class... Pieces>
[[noreturn]] void fail(FunctionContext context, const Pieces&... pieces) {
    if (tracing) context.setmessage(text_of(pieces...));
    throw E(context);
}

std::string_view without_outer_blanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Adds an expression without its blanks, other than those between quotes, and with the value in place of each "?".
void append_expression(std::string& formula, std::string_view expression, const std::string& value) {
    bool quoted = false;
    for (const char c : expression) {
        if (c == '"') quoted = !quoted;
        if (c == placeholder)
            formula += value;
        else if (c != ' ' || quoted)
            formula += c;
    }
}

/// Sets the formula that says whether a value meets a criterion.
void set_formula(std::string& formula, const std::string& value, const anyvalue& criterion,
                 const FunctionContext& context) {
    formula.clear();
    const std::string_view text = without_outer_blanks(criterion.text());
    if (text.find(quoted_placeholder) != std::string_view::npos)
        fail<invalidcriteria>(context, "You wrapped the ? with quotes (as in ", quoted_placeholder,
                              ").  You shouldnt do this if you are testing against text, its unnecessary and is an "
                              "error: ",
                              text);
    if (text.find(placeholder) != std::string_view::npos) return append_expression(formula, text, value);
    formula += value;
    if (!text.empty() && std::string_view("=<>").find(text.front()) != std::string_view::npos)
        return append_expression(formula, text, value);
    formula += '=';
    if (criterion.isnumber())
        append_to_formula(formula, criterion.number());
    else
        append_to_formula(formula, text);
}

/// Whether an answer of the evaluator meets the criterion.
bool is_met(Evaluated answer, const std::string& formula, const FunctionContext& context) {
    const auto assume_not = [&formula](const char* error) {
        if (traced())
            trace().info(text_of("An ", error, " error was returned from your test, assuming test not met:", formula));
        return false;
    };
    const auto refuse = [&](const char* error) {
        fail<invalidcriteria>(context, "An ", error, "error value was returned after evaluating: ", formula);
    };
    switch (answer) {
    case Evaluated::yes:
        return true;
    case Evaluated::no:
        return false;
    case Evaluated::value_error:
        return assume_not("#VALUE!");
    case Evaluated::not_available:
        return assume_not("NA");
    case Evaluated::null_error:
        refuse("NULL ");
        break;
    case Evaluated::division_by_zero:
        refuse("DIVIDE BY ZERO ");
        break;
    case Evaluated::reference_error:
        refuse("#REF! ");
        break;
    case Evaluated::name_error:
        refuse("#NAME? ");
        break;
    case Evaluated::number_error:
        refuse("#NUM! ");
        break;
    case Evaluated::other:
        refuse("");
        break;
    case Evaluated::failed:
        fail<invalidcriteria>(context, "An error was thrown whilst evaluating: ", formula);
    case Evaluated::uncalculated:
        throw uncalc(context);
    }
    return false;
}

bool meets(const std::string& value, const anyvalue& criterion, const FunctionContext& context) {
    constexpr int steps_of_an_evaluation = 20;
    if (criterion.isblank()) fail<errinput>(context, "Criteria Missing when one is required.");
    if ((steps_left -= steps_of_an_evaluation) < 0)
        fail<errliboveriterated>(context, "The call takes too long: it tests every value against every criterion.");
    static std::string formula;
    set_formula(formula, value, criterion, context);
    if (traced())
        trace().argument("Criteria Test", formula,
                         "This is the formula string given to the Excel parser for evaluation");
    return is_met(evaluate_formula == nullptr ? Evaluated::failed : evaluate_formula(formula), formula, context);
}

/// A value as written in a formula; valid until the next call.
const std::string& rendered(const anyvalue& value, const FunctionContext& context) {
    if (value.isblank()) fail<errinput>(context, "Value Missing when one is required.");
    static std::string text;
    text.clear();
    if (value.isnumber())
        append_to_formula(text, value.number());
    else
        append_to_formula(text, value.text());
    return text;
}

} // namespace

void append_to_formula(std::string& formula, double number) {
    char digits[32];
    formula.append(std::begin(digits), std::to_chars(std::begin(digits), std::end(digits), number).ptr);
}

void append_to_formula(std::string& formula, std::string_view text) {
    formula += '"';
    for (const char c : text) formula.append(c == '"' ? 2 : 1, c);
    formula += '"';
}

bool MeetsCriteria(const anyvalue& value, const anyvalue& criterion, const FunctionContext& context) {
    if (criterion.isblank()) fail<errinput>(context, "Criteria Missing when one is required.");
    return meets(rendered(value, context), criterion, context);
}

bool meets_criteria(const anyvalue& value, View<anyvalue> Criteria, int CritOpts, const FunctionContext& context) {
    return meets_criteria(rendered(value, context), Criteria, CritOpts, context);
}

bool meets_criteria(const std::string& value, View<anyvalue> Criteria, int CritOpts, const FunctionContext& context) {
    const bool all = (CritOpts & all_criteria) != 0;
    for (const anyvalue& criterion : Criteria) {
        const bool met = meets(value, criterion, context);
        if (met == all) continue;
        if (all && traced()) trace().info(text_of("Set of AND conditions failed with: ", criterion));
        return met;
    }
    return all;
}

} // namespace qx
