#include "apps/quexel/function_help.h"

#include "addin/examples.h"
#include "apps/quexel/output.h"
#include "hosts/sheet/text.h"
#include "hosts/sheet/workbook.h"

#include <algorithm>
#include <sstream>

namespace qx::app {

using sheet::Value;

namespace {

/// One of a kind, as help says it.
const char* one(Kind kind) {
    switch (kind) {
    case Kind::number:
        return "a number";
    case Kind::integer:
    case Kind::wide_integer:
        return "a whole number";
    case Kind::boolean:
        return "TRUE or FALSE";
    case Kind::date:
        return "a date";
    case Kind::text:
    case Kind::short_text:
        return "text";
    case Kind::date_or_number:
        return "a date or a number";
    case Kind::number_or_blank:
        return "a number or an empty cell";
    case Kind::list:
        return "a list";
    case Kind::sequence:
        return "an annual sequence";
    case Kind::period_start:
        return "the start of a time period";
    case Kind::period_base:
        return "the length or the end of a time period";
    case Kind::reference:
        return "a reference to cells";
    case Kind::none:
    case Kind::any:
    case Kind::cell:
        return "any value";
    }
    return "any value";
}

/// Several of them.
std::string list_of(Kind items) {
    switch (items) {
    case Kind::number:
        return "a list of numbers";
    case Kind::integer:
    case Kind::wide_integer:
        return "a list of whole numbers";
    case Kind::boolean:
        return "a list of truth values";
    case Kind::date:
        return "a list of dates";
    case Kind::text:
    case Kind::short_text:
        return "a list of strings";
    default:
        return "a list of any values";
    }
}

std::string capital(std::string text) {
    if (!text.empty()) text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    return text;
}

std::string range_text(const Limits& limits) {
    if (!limits.any()) return {};
    if (!limits.has_high()) return "from " + sheet::general_text(limits.low) + " on";
    if (!limits.has_low()) return "up to " + sheet::general_text(limits.high);
    return sheet::general_text(limits.low) + " to " + sheet::general_text(limits.high);
}

std::string preset_text(const Preset& preset) {
    switch (preset.type) {
    case Preset::required:
        return {};
    case Preset::sequence:
        if (preset.value == 999) return "none";
        [[fallthrough]];
    case Preset::number: {
        const std::string number = sheet::general_text(preset.value);
        const bool adds_nothing = preset.words == nullptr || std::string_view(preset.words).ends_with(number);
        return adds_nothing ? number : number + ", " + preset.words; // not "0, Defaulted to 0"
    }
    case Preset::boolean:
        return preset.value != 0.0 ? "TRUE" : "FALSE";
    case Preset::text:
        return preset.words == nullptr || *preset.words == '\0' ? "empty" : "\"" + std::string(preset.words) + "\"";
    case Preset::empty:
        return "none";
    }
    return {};
}

/// The topic that explains an argument.
std::string topic_of_argument(const Argument& argument, Kind kind) {
    const std::string_view name = argument.name;
    if (kind == Kind::period_start || kind == Kind::period_base) return "time-periods";
    if (name.starts_with("DayCount")) return "day-counts";
    if (kind == Kind::sequence) return "sequences";
    if (name.starts_with("Growth")) return "growth";
    if (name == "ProjMode") return "projection-modes";
    if (name.starts_with("Fcst") || name.starts_with("StartFcst")) return "forecasts";
    if (name.starts_with("FirstRev") || name.starts_with("RevMo") || name == "RevDisc" || name == "UOTog")
        return "reviews";
    return {};
}

ArgumentHelp argument_help(const Function& function, int i) {
    const Argument& argument = function.args[i];
    const Kind kind = function.calls.kinds[i];
    ArgumentHelp help;
    help.name = argument.name;
    help.text = argument.help;
    help.what = capital(kind == Kind::list ? list_of(function.calls.items[i]) : one(kind));
    if (argument.order == Order::ascending) help.what += ", ascending";
    help.topic = topic_of_argument(argument, kind);
    help.range = range_text(argument.limits);
    if (argument.is_optional()) help.preset = preset_text(argument.preset);
    for (const SwitchValue& value : argument.values)
        if (value.name != nullptr) {
            const std::string name = value.name;
            help.values.emplace_back(value.code, name.substr(0, name.find_last_not_of("\t ") + 1));
        }
    return help;
}

std::string syntax_of(const Function& function) {
    std::string text = std::string(function.name) + "(";
    for (int i = 0; i < function.arity(); ++i) {
        const Argument& argument = function.args[i];
        if (i > 0) text += ", ";
        text += argument.is_optional() ? "[" + std::string(argument.name) + "]" : std::string(argument.name);
    }
    return text + ")";
}

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += (i == 0 ? "" : i + 1 == names.size() ? " or " : ", ") + names[i];
    return text;
}

/// Calls the function as its examples do, in a workbook of their own.
class Calls {
  public:
    explicit Calls(const Function& function) : function_(function) {}

    Value result(std::string_view formula) {
        return book_.look_up(book_.evaluate(book_.read(formula), sheet::Area(sheet::CellAddress{})));
    }

    ExampleHelp example(std::string_view text) {
        const Example read = read_example(text);
        ExampleHelp help;
        help.formula = "=" + std::string(read.formula);
        help.cells = read.cells;
        help.result = outcome(read);
        if (read.sign == '!') {
            help.note = result(read.formula).reason();
        } else if (function_.calls.gives_dates && sheet::read_number(read.expected)) {
            const Value value = result(read.formula);
            if (!value.is(sheet::Type::array) && call_arguments(read.formula, function_.name))
                help.note = plain_text(value, true, 15);
        }
        return help;
    }

    /// What comes back and in which shape: as declared, otherwise as the first example has it.
    std::string shape() {
        const Value value = first_value();
        const bool array = value.is(sheet::Type::array);
        const Kind gives = function_.calls.gives;
        if (gives == Kind::list || (array && value.rows() * value.columns() > 1)) {
            const std::string what = gives == Kind::list ? list_of(function_.calls.gives_items) : "a list";
            std::string text = capital(function_.calls.gives_dates ? "a list of dates" : what);
            text += ". It fills the cells of an array formula, or spills where the spreadsheet lets it";
            if (array)
                text += "; the first example's is " + counted(value.rows(), "row") + " by " +
                        counted(value.columns(), "column");
            return text + ".";
        }
        if (function_.calls.gives_dates) return "A date number in one cell; format it as a date.";
        if (gives != Kind::none && gives != Kind::any && gives != Kind::cell)
            return capital(one(gives)) + " in one cell.";
        if (value.is_text()) return "Text in one cell, in the first example.";
        if (value.is(sheet::Type::boolean)) return "TRUE or FALSE in one cell, in the first example.";
        if (value.is(sheet::Type::number)) return "A number in one cell, in the first example.";
        return "One cell; what it holds depends on the arguments.";
    }

    /// Breaks one argument at a time of a call that works, and notes what the function says.
    std::vector<ErrorHelp> errors() {
        const std::vector<std::string> good = working_call();
        struct Cause {
            std::string before, after;
            std::vector<std::string> names;
            std::string shows, reason;
        };
        std::vector<Cause> causes;
        const auto probe = [&](int i, const std::string& given, const std::string& before, const std::string& after) {
            std::vector<std::string> arguments = good;
            if (i >= static_cast<int>(arguments.size())) arguments.resize(i + 1);
            arguments[i] = given;
            std::string formula = std::string(function_.name) + "(";
            for (std::size_t k = 0; k < arguments.size(); ++k) formula += (k > 0 ? "," : "") + arguments[k];
            const Value value = result(formula + ")");
            if (!value.is_error()) return;
            const std::string name = function_.args[i].name;
            const std::string shows = sheet::error_text(value.error());
            std::string reason(value.reason());
            if (reason.ends_with(" (" + name + ")")) reason.resize(reason.size() - name.size() - 3);
            for (Cause& cause : causes)
                if (cause.before == before && cause.after == after && cause.shows == shows && cause.reason == reason) {
                    cause.names.push_back(name);
                    return;
                }
            causes.push_back({before, after, {name}, shows, reason});
        };
        if (good.empty() && function_.arity() > 0) return {};
        for (int i = 0; i < function_.arity(); ++i)
            if (!function_.args[i].is_optional() && i < static_cast<int>(good.size())) probe(i, "", "", " omitted");
        for (int i = 0; i < function_.arity(); ++i) {
            const Limits& limits = function_.args[i].limits;
            if (limits.has_low())
                probe(i, sheet::general_text(limits.low - 1), "", " below " + sheet::general_text(limits.low));
            if (limits.has_high())
                probe(i, sheet::general_text(limits.high + 1), "", " above " + sheet::general_text(limits.high));
        }
        for (int i = 0; i < function_.arity(); ++i) switch (function_.calls.kinds[i]) {
            case Kind::number:
            case Kind::integer:
                probe(i, "\"text\"", "text for ", "");
                break;
            case Kind::list:
                if (function_.args[i].order == Order::ascending) probe(i, "{2006;2005}", "", " in descending order");
                break;
            default:
                break;
            }
        std::vector<ErrorHelp> list;
        for (const Cause& cause : causes)
            list.push_back({capital(cause.before + joined(cause.names) + cause.after), cause.shows, cause.reason});
        return list;
    }

  private:
    static std::string counted(std::uint32_t n, const char* what) {
        return std::to_string(n) + ' ' + what + (n == 1 ? "" : "s");
    }

    Value first_value() {
        for (const char* const example : function_.examples)
            if (example != nullptr && read_example(example).sign != '!') return result(read_example(example).formula);
        return {};
    }

    /// The arguments of the first example that is a call and gives no error.
    std::vector<std::string> working_call() {
        for (const char* const text : function_.examples) {
            if (text == nullptr) continue;
            const Example example = read_example(text);
            if (example.sign == '!') continue;
            const auto arguments = call_arguments(example.formula, function_.name);
            if (arguments && static_cast<int>(arguments->size()) <= function_.arity() &&
                !result(example.formula).is_error())
                return *arguments;
        }
        return {};
    }

    const Function& function_;
    sheet::Workbook book_;
};

/// What a user of a spreadsheet with a function of the same name should know.
std::string note_of(const Function& function) {
    if (function.change.newer != nullptr)
        return "Kept for older workbooks; " + std::string(function.change.newer) + " takes its place.";
    for (const char* const name : {"Switch", "Unique"})
        if (sheet::equal_ignoring_case(function.name, name))
            return "Newer versions of Excel have a function " + sheet::upper_case(name) +
                   " of their own, and a formula there gets Excel's. To get this one, call it from a macro: "
                   "Application.Run(\"" +
                   name + "\", ...). In quexel and its workbooks the name is this function's.";
    return {};
}

} // namespace

std::string ExampleHelp::line() const {
    std::string text = formula + "  " + result;
    if (!note.empty()) text += result.starts_with("gives") ? ": " + note : ", " + note;
    if (!cells.empty()) text += "  (array formula in " + cells + ")";
    return text;
}

FunctionHelp help_of(const Function& function) {
    FunctionHelp help;
    help.syntax = syntax_of(function);
    for (int i = 0; i < function.arity(); ++i) help.arguments.push_back(argument_help(function, i));
    Calls calls(function);
    for (const char* const example : function.examples)
        if (example != nullptr) help.examples.push_back(calls.example(example));
    help.result = calls.shape();
    help.errors = calls.errors();
    help.related = functions_named(function.see_also);
    help.note = note_of(function);
    return help;
}

std::vector<std::string> concepts_of(const Function& function) {
    std::vector<std::string> topics;
    for (int i = 0; i < function.arity(); ++i)
        if (std::string topic = topic_of_argument(function.args[i], function.calls.kinds[i]); !topic.empty())
            topics.push_back(std::move(topic));
    return topics;
}

std::vector<const Function*> functions_named(const std::string& names) {
    std::stringstream stream(names);
    std::vector<const Function*> list;
    for (std::string name; std::getline(stream, name, ',');) {
        name.erase(0, name.find_first_not_of(' '));
        if (const Function* const function = find_function(name)) list.push_back(function);
    }
    return list;
}

std::vector<const Function*> declared_functions() {
    std::vector<const Function*> list;
    for (const Registered* node = all_functions(); node != nullptr; node = node->next) list.push_back(&node->function);
    std::sort(list.begin(), list.end(),
              [](const Function* a, const Function* b) { return sheet::compare_ignoring_case(a->name, b->name) < 0; });
    return list;
}

std::string_view short_category(Category category) {
    const std::string_view name = category_name(category);
    return name.starts_with("QX: ") ? name.substr(4) : name;
}

const char* overview(Category category) {
    switch (category) {
    case Category::AccountingAndTax:
        return "Depreciation, accounts of cash and debt, and other functions for statements and tax.";
    case Category::TimeValueOfMoney:
        return "Conversion between forms of interest rates and discount factors; annuities, level and growing; loans "
               "with level payments.";
    case Category::LevelsOverTime:
        return "How high something is on average over a period: stocks, prices and rates that grow, step or follow a "
               "forecast.";
    case Category::DiscountedCashFlow:
        return "Present values and internal rates of return of dated cash flows, payback, duration and measures of "
               "return.";
    case Category::Text:
        return "Text taken apart, put together, searched and formatted; numbers and money in words.";
    case Category::Compatibility:
        return "Functions kept for older workbooks. The page of each names the one that takes its place, where there "
               "is one.";
    case Category::SpecialDates:
        return "Holidays, business days, anniversaries and dates given by their place in a month.";
    case Category::Miscellaneous:
        return "Conditions, choices, variables, references and descriptions of what switches mean.";
    case Category::ConstantRate:
        return "Amounts in a period of streams at a constant annual rate: plain, growing, reviewed to a market or "
               "forecast.";
    case Category::ProjectionsNPV:
        return "Present values of projections, without the projection laid out in cells.";
    case Category::DateAndTime:
        return "Dates built and taken apart, differences and sums under day counts, sequences and lists of dates, time "
               "bases.";
    case Category::PetroleumEconomics:
        return "Production that declines: rates, volumes and reserves.";
    case Category::Banking:
        return "Loans: principal, interest and balances of a period, repayment schedules, pools and the sizing of "
               "debt.";
    case Category::InstantaneousLevel:
        return "How high something is on one date: growth, forecasts, indices and steps read at a moment.";
    case Category::RealEstate:
        return "Rents and leases with reviews, breaks, voids and relets; valuation, yields, service charges and "
               "letting costs.";
    case Category::RangeOperations:
        return "Lists sorted, joined, filtered, summed and looked up.";
    case Category::InterpolatedAndCurveFitted:
        return "Values read off curves: between points, along fitted lines and polynomials.";
    case Category::SimulationModelling:
        return "Random figures from distributions, for simulation.";
    case Category::DiscreteAmount:
        return "Single payments and lists of dated payments in the period they fall in: plain, growing, forecast.";
    case Category::Mathematical:
        return "Rounding, powers, polynomials and other arithmetic.";
    case Category::SteppedRate:
        return "Amounts in a period of streams whose annual rate changes on dates.";
    case Category::DistributedAmount:
        return "A total spread over time: evenly, along a curve, or by weights.";
    }
    return "";
}

} // namespace qx::app
