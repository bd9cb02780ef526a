// What holds for every worksheet function, called as its own examples call it: its time grows no faster than its lists;
// it answers at both ends of every integer argument; its answer does not depend on the calls before; and an array twin
// answers as single calls do.
#include "addin/examples.h"
#include "addin/function.h"
#include "calendar/date.h"
#include "core/range.h"
#include "core/trace.h"
#include "hosts/sheet/text.h"
#include "hosts/sheet/workbook.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iterator>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qx::test {
namespace {

using sheet::Area;
using sheet::CellAddress;
using sheet::Type;
using sheet::Value;

/// A call as an example shows it: the texts of its arguments.
struct Call {
    const Function* function;
    std::vector<std::string> arguments;

    std::string formula() const {
        std::string text = std::string(function->name) + "(";
        for (const std::string& argument : arguments) text += (text.back() == '(' ? "" : ",") + argument;
        return text + ")";
    }
};

/// The call of a function in its first example that is nothing but a call; without arguments if none is.
Call example_call(const Function& function) {
    for (const char* const example : function.examples) {
        if (example == nullptr) continue;
        const Example read = read_example(example);
        auto arguments = call_arguments(read.formula, function.name);
        if (!arguments || read.sign == '!') continue;
        Call call{&function, std::move(*arguments)};
        if (static_cast<int>(call.arguments.size()) <= function.arity()) return call;
    }
    return {&function, {}};
}

template <class Visit>
void each_function(Visit visit) {
    for (const Registered* node = all_functions(); node != nullptr; node = node->next) visit(node->function);
}

class EveryFunction : public testing::Test {
  protected:
    Value result(const std::string& formula) {
        return book.look_up(book.evaluate(book.read(formula), Area(CellAddress{})));
    }
    /// Processor time of the fastest of some calls, in seconds.
    double seconds(const std::string& formula, int calls) {
        const sheet::Formula read = book.read(formula);
        double fastest = 1e9;
        for (int i = 0; i < calls; ++i) {
            const std::clock_t start = std::clock();
            book.evaluate(read, Area(CellAddress{}));
            fastest = std::min(fastest, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
        }
        return fastest;
    }

    sheet::Workbook book;
};

// --- Growth -----------------------------------------------------------------------------------------------------

constexpr int few = 1000, many = 10000;

/// The lists that grow. What each item of another list is compared with stays short: conditions and chosen categories.
bool is_list(const Call& call, std::size_t i) {
    const std::string_view name = call.function->args[i].name;
    return call.function->calls.kinds[i] == Kind::list && name != "Criteria" && !name.starts_with("ChosenCategories");
}
bool is_of_dates(const Argument& argument) {
    const std::string_view name = argument.name;
    return name.find("Date") != std::string_view::npos || name.find("Times") != std::string_view::npos;
}

/// How long lists go on, and how far into them a call reaches.
struct Shape {
    bool going_on, to_the_end;
};
constexpr Shape shapes[] = {{false, true}, {true, true}, {false, false}, {true, false}};

/// Calls whose lists, or one of them, are columns of a workbook, as long as wanted: daily dates from 2005 on, and the
/// values of the example over and over, or going on as they ascend.
class LongLists {
  public:
    static constexpr int all = -1;
    LongLists(sheet::Workbook& book, const Call& call, const Shape& shape, int length, int only = all) : call_(call) {
        const auto [going_on, to_the_end] = shape;
        int date_lists = 0;
        for (std::size_t i = 0; i < call.arguments.size(); ++i) {
            const Argument& argument = call.function->args[i];
            if (to_the_end && call.function->calls.kinds[i] == Kind::period_base) call_.arguments[i] = "480";
            const std::string_view name = argument.name;
            if (to_the_end && (name.starts_with("Finish") || name == "ToDate")) call_.arguments[i] = "2045";
            if (!is_list(call, i) || call.arguments[i].empty()) continue;
            if (only != all && only != static_cast<int>(i)) continue;
            const Value given = book.look_up(book.evaluate(book.read(call.arguments[i]), Area(CellAddress{})));
            std::vector<Value> values;
            if (given.is(Type::array))
                for (std::uint32_t row = 0; row < given.rows(); ++row)
                    for (std::uint32_t column = 0; column < given.columns(); ++column)
                        values.push_back(given.cell(row, column));
            else
                values.push_back(given);
            const bool dates = is_of_dates(argument);
            const int first_date = 38353 + 3650 * (dates ? date_lists++ : 0); // finishes come after starts
            fill(book, static_cast<std::uint16_t>(i), length, values, dates ? first_date : 0, going_on);
            columns_.push_back(i);
        }
    }
    bool any() const { return !columns_.empty(); }
    std::string formula(int length) const {
        Call call = call_;
        for (const std::size_t i : columns_) {
            const std::string column(1, static_cast<char>('A' + i));
            call.arguments[i] = column + "1:" + column + std::to_string(length);
        }
        return call.formula();
    }

  private:
    static void fill(sheet::Workbook& book, std::uint16_t column, int length, const std::vector<Value>& values,
                     int first_date, bool going_on) {
        const bool numbers = values.size() > 1 && values[0].is_number() && values[1].is_number();
        const double first = values[0].is_number() ? values[0].number() : 0.0;
        const double step = numbers ? values[1].number() - first : 0.0;
        for (int row = 0; row < length; ++row) {
            Value value = values[row % values.size()];
            if (first_date > 0 && value.is_number()) value = Value::number(first_date + row);
            if (first_date == 0 && going_on && step > 0.0) value = Value::number(first + step * row);
            book.set_value({static_cast<std::uint32_t>(row), column, 0}, value);
        }
    }

    Call call_;
    std::vector<std::size_t> columns_;
};

/// Functions of which the lists multiply: each stream walks its growth, and a present value walks the streams for each
/// payment, a time-weighted return the flows for each valuation. Each list by itself is none the less read in
/// proportion to its length.
bool multiplies(const Function& function) {
    static constexpr std::string_view names[] = {"AnnGrow",
                                                 "MultiAnnGrow",
                                                 "ConGrow",
                                                 "MultiConGrow",
                                                 "PVAnnGrow",
                                                 "PVConGrow",
                                                 "ServChargeGrowR",
                                                 "VacServChargeGrowR",
                                                 "MkPmtsLagProf",
                                                 "MkPmtsGrowMkt",
                                                 "TWRR",
                                                 "TStepThenGrowRev",
                                                 "FStepThenGrowRev",
                                                 "TStepRevGrow",
                                                 "FStepRevGrow",
                                                 "TStepGrowX",
                                                 "FStepGrowX",
                                                 "TStepRentGrowCollar"};
    return std::find(std::begin(names), std::end(names), function.name) != std::end(names);
}

// Time for 10,000 rows at most 15 times that for 1,000, where all lists grow, and where one does. A quadratic step
// takes 100 times as long; one so short that it ends within a tenth of a second is let pass.
TEST_F(EveryFunction, TakesTimeInProportionToItsLists) {
#ifdef __SANITIZE_ADDRESS__
    constexpr double most = 25.0, too_short_to_tell = 0.2; // the sanitizers' own work grows as well
#else
    constexpr double most = 15.0, too_short_to_tell = 0.1;
#endif
    int functions = 0, called = 0, answered = 0;
    const auto check = [&](const Call& call, int only) {
        book.clear();
        for (const Shape& shape : shapes) {
            const LongLists some(book, call, shape, few, only);
            if (!some.any()) return;
            called += &shape == shapes ? 1 : 0;
            if (result(some.formula(few)).is_error()) continue;
            const LongLists lists(book, call, shape, many, only);
            if (result(lists.formula(many)).is_error()) continue; // it would be timed with the trace on
            ++answered;
            double for_many = seconds(lists.formula(many), 2), for_few = seconds(lists.formula(few), 3);
            for (int again = 0; again < 6 && for_many > too_short_to_tell && for_many > most * for_few; ++again) {
                for_few = std::min(for_few, seconds(lists.formula(few), 5));
                if (for_many > most * for_few) for_many = std::min(for_many, seconds(lists.formula(many), 2));
            }
            EXPECT_TRUE(for_many <= too_short_to_tell || for_many <= most * for_few)
                << lists.formula(many) << ": " << for_many * 1e3 << " ms, and " << for_few * 1e3 << " ms for " << few;
            return;
        }
    };
    each_function([&](const Function& function) {
        // Each date of growth changes these rents, and at each growth is read from its first date on; each share of a
        // charge walks the forecast.
        const std::string_view name = function.name;
        if (name.starts_with("TStepGTurnRentGrow") || name.ends_with("ServChargeFcstR")) return;
        const Call call = example_call(function);
        int lists = 0;
        for (std::size_t i = 0; i < call.arguments.size(); ++i)
            if (is_list(call, i) && !call.arguments[i].empty()) ++lists;
        if (lists == 0) return;
        ++functions;
        if (!multiplies(function)) check(call, LongLists::all);
        for (std::size_t i = 0; i < call.arguments.size() && lists > 1; ++i) check(call, static_cast<int>(i));
    });
    EXPECT_GT(functions, 300);
    EXPECT_GT(answered, called / 2) << "of " << called << ": a call that fails early shows nothing";
}

// --- Both ends of each argument -------------------------------------------------------------------------------------

bool is_finite(const Value& value) {
    if (value.is_number()) return std::isfinite(value.number());
    if (!value.is(Type::array)) return true;
    for (std::uint32_t row = 0; row < value.rows(); ++row)
        for (std::uint32_t column = 0; column < value.columns(); ++column)
            if (!is_finite(value.cell(row, column))) return false;
    return true;
}

/// What an argument of a kind may be at worst; nothing for lists, texts and the like.
std::vector<const char*> ends_of(Kind kind) {
    switch (kind) {
    case Kind::integer:
    case Kind::wide_integer:
        return {"-2147483648",          "2147483647",          "-2147483649", "2147483648", "-1E+18",  "1E+18",
                "-9223372036854775808", "9223372036854775807", "-1E+300",     "1E+300",     "\"nan\"", "\"-inf\""};
    case Kind::number:
    case Kind::number_or_blank:
    case Kind::sequence:
        return {"-2147483649", "1E+300", "-1E+300", "\"nan\""};
    case Kind::date:
    case Kind::date_or_number:
    case Kind::period_start:
    case Kind::period_base:
        return {"2147483648", "1E+300", "3654", "640637", "\"nan\""};
    default:
        return {};
    }
}

#if defined(__SANITIZE_ADDRESS__)
constexpr double slower = 10.0;
#else
constexpr double slower = 1.0;
#endif

// Each answer comes soon: at once, or within a second where a date at an end of the calendar has a walk through
// seventeen centuries follow. One that comes of an integer is no infinity: integers are counts, months and switches.
TEST_F(EveryFunction, AnswersAtBothEndsOfEachArgument) {
    constexpr double soon = 0.05 * slower, walked = 1.0 * slower;
    int swept = 0, integers = 0;
    each_function([&](const Function& function) {
        const Call call = example_call(function);
        if (call.arguments.empty()) return;
        for (int i = 0; i < function.arity(); ++i) {
            const Kind kind = function.calls.kinds[i];
            const bool integer = kind == Kind::integer || kind == Kind::wide_integer;
            integers += integer ? 1 : 0;
            for (const char* const end : ends_of(kind)) {
                Call at_end = call;
                if (static_cast<int>(at_end.arguments.size()) <= i) at_end.arguments.resize(i + 1);
                at_end.arguments[i] = end;
                const std::string formula = at_end.formula();
                ++swept;
                const std::clock_t start = std::clock();
                const Value answer = result(formula);
                double fastest = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
                const double bound = integer ? soon : walked;
                if (fastest > bound) fastest = std::min(fastest, seconds(formula, 2));
                EXPECT_LE(fastest, bound) << formula;
                EXPECT_TRUE(!integer || is_finite(answer)) << formula;
            }
        }
    });
    EXPECT_GT(integers, 100);
    EXPECT_GT(swept, 10000);
}

// --- Order of calls ---------------------------------------------------------------------------------------------

/// A value to the last bit.
std::string bits(const Value& value) {
    char text[40];
    if (value.is_number()) {
        std::snprintf(text, sizeof text, "%a", value.number());
        return text;
    }
    if (!value.is(Type::array)) return sheet::display_text(value);
    std::string all;
    for (std::uint32_t row = 0; row < value.rows(); ++row)
        for (std::uint32_t column = 0; column < value.columns(); ++column) all += bits(value.cell(row, column)) + ";";
    return all;
}

/// True of what is meant to last from call to call, or to differ: variables, random numbers, the time.
bool outlasts_its_call(const Function& function) {
    static constexpr std::string_view lasting[] = {"SetNum", "SetStr", "SV", "GetNum", "GetStr", "GV"};
    return function.is_volatile ||
           std::find(std::begin(lasting), std::end(lasting), function.name) != std::end(lasting) ||
           function.category == Category::SimulationModelling;
}

// What was called before, and whether it failed, leaves no mark on a result.
TEST_F(EveryFunction, AnswersAlikeInWhateverOrder) {
    std::vector<std::string> formulas;
    each_function([&](const Function& function) {
        const Call call = example_call(function);
        if (call.arguments.empty() || outlasts_its_call(function)) return;
        formulas.push_back(call.formula());
        Call failing = call; // a string for the first number, or whatever else stands first
        failing.arguments[0] = "\"no number\"";
        formulas.push_back(failing.formula());
    });
    ASSERT_GT(formulas.size(), 1000u);
    std::vector<std::string> expected;
    for (const std::string& formula : formulas) expected.push_back(bits(result(formula)));

    std::vector<std::size_t> order(formulas.size());
    std::iota(order.begin(), order.end(), 0u);
    std::mt19937 any(1);
    for (int round = 0; round < 3; ++round) {
        if (round == 0)
            std::reverse(order.begin(), order.end());
        else
            std::shuffle(order.begin(), order.end(), any);
        for (const std::size_t i : order) EXPECT_EQ(bits(result(formulas[i])), expected[i]) << formulas[i];
    }
}

// --- Array twins ------------------------------------------------------------------------------------------------

/// Calls that vary those of the examples: other dates, amounts and switches, and some of the arguments omitted.
class Variations {
  public:
    explicit Variations(const Function& function) : any_(static_cast<unsigned>(std::strlen(function.name))) {
        for (const char* const example : function.examples) {
            if (example == nullptr) continue;
            const Example read = read_example(example);
            auto arguments = call_arguments(read.formula, function.name);
            if (arguments && read.sign != '!' && static_cast<int>(arguments->size()) <= function.arity())
                calls_.push_back({&function, std::move(*arguments)});
        }
    }
    const std::vector<Call>& examples() const { return calls_; }
    int below(int n) { return static_cast<int>(any_() % static_cast<unsigned>(n)); }

    Call next() {
        Call call = calls_[static_cast<std::size_t>(below(static_cast<int>(calls_.size())))];
        const Function& function = *call.function;
        for (int i = 0; i < function.arity(); ++i) {
            const std::size_t at = static_cast<std::size_t>(i);
            if (at >= call.arguments.size()) {
                if (below(3) != 0) break;
                call.arguments.emplace_back();
            }
            std::string& text = call.arguments[at];
            if (!text.empty())
                text = below(3) == 0 ? varied(text) : text;
            else if (function.args[i].is_optional() && below(3) == 0)
                text = made_up(function.calls.kinds[i], function.calls.items[i], function.args[i].limits);
        }
        return call;
    }
    /// Ascending dates from 2004 on, sometimes in any order.
    std::vector<double> times(std::size_t n, bool shuffled) {
        static constexpr int months[] = {1, 3, 3, 3, 6, 12};
        const int step = months[below(6)], start = 12 * (2004 + below(8)) + below(12);
        std::vector<double> dates;
        for (std::size_t i = 0; i < n; ++i) {
            const int month = start + static_cast<int>(i) * step;
            dates.push_back(date(month / 12, month % 12 + 1, 1 + below(10) / 9).dtn());
        }
        if (shuffled && below(3) == 0) std::shuffle(dates.begin(), dates.end(), any_);
        return dates;
    }

  private:
    /// Years are moved by up to three years, other numbers scaled.
    std::string varied(const std::string& text) {
        static constexpr double scales[] = {0.0, 0.5, 2.0, 3.0, -1.0};
        const double scale = scales[below(5)], years = below(25) / 4.0 - 3.0;
        std::string changed;
        bool quoted = false;
        for (std::size_t at = 0; at < text.size();) {
            quoted ^= text[at] == '"';
            const bool named = !changed.empty() && (std::isalnum(static_cast<unsigned char>(changed.back())) != 0);
            char* end = nullptr;
            const double number = !quoted && !named && std::isdigit(static_cast<unsigned char>(text[at])) != 0
                                      ? std::strtod(text.c_str() + at, &end)
                                      : 0.0;
            if (end == nullptr) {
                changed += text[at++];
                continue;
            }
            const bool is_year = number >= 1990 && number <= 2100, is_date = number >= 30000 && number <= 60000;
            if (scale < 0.0 && !changed.empty() && changed.back() == '-') changed.back() = ' ';
            changed += sheet::general_text(is_year ? number + years : is_date ? number + 91 * years : number * scale);
            at = static_cast<std::size_t>(end - text.c_str());
        }
        return changed;
    }
    std::string made_up(Kind kind, Kind items, const Limits& limits) {
        const auto year = [&] { return sheet::general_text(2003 + below(60) / 4.0); };
        const auto number = [&] {
            static constexpr double some[] = {0, 0.03, 0.1, 0.5, 1, 2, 3, 6, 12, 60, 100, 1000};
            const double chosen = some[below(12)];
            return sheet::general_text(std::clamp(chosen, std::max(limits.low, -1e9), std::min(limits.high, 1e9)));
        };
        switch (kind == Kind::list ? items : kind) {
        case Kind::date:
        case Kind::date_or_number:
            return kind == Kind::list && below(2) == 0 ? "{2006;2008.5;2011}" : year();
        case Kind::number:
        case Kind::number_or_blank:
            return kind == Kind::list && below(2) == 0 ? "{" + number() + ";" + number() + "}" : number();
        case Kind::integer:
            return sheet::general_text(std::clamp(below(7) - 1.0, limits.low, limits.high));
        case Kind::boolean:
            return below(2) == 0 ? "TRUE" : "FALSE";
        case Kind::sequence: {
            static constexpr const char* some[] = {"1", "2", "4", "12", "-4", "-1"};
            return some[below(6)];
        }
        default:
            return "";
        }
    }

    std::vector<Call> calls_;
    std::mt19937 any_;
};

/// The argument over which a function with an array twin loops: its period, or the first date or number.
std::size_t looped_over(const Function& function) {
    const Kind* const kinds = function.calls.kinds;
    const Kind* const end = kinds + function.arity();
    const Kind* const time = std::find(kinds, end, Kind::period_start);
    const auto is_item = [](Kind kind) { return kind == Kind::date || kind == Kind::number; };
    const Kind* const found = time != end ? time : std::find_if(kinds, end, is_item);
    return found == end ? 0 : static_cast<std::size_t>(found - kinds);
}

// Whatever a twin shares between its items, each has the bits of a single call; and it fails if one of these fails.
TEST_F(EveryFunction, AnswersInATwinAsOneByOne) {
    constexpr std::size_t n = 20;
    constexpr int calls_of_each = 16;
    int twins = 0, called = 0, answered = 0, moving = 0;
    each_function([&](const Function& function) {
        Variations variations(function);
        const std::size_t at = looped_over(function);
        const bool periods = function.calls.kinds[at] == Kind::period_start;
        const auto asking = [&](Call call, const char* items, const char* base) {
            call.arguments[at] = items;
            if (periods) call.arguments[at + 1] = base;
            return call.formula();
        };
        const auto answers = [&](const Call& call, const std::vector<double>& items) -> std::vector<Value> {
            for (std::uint32_t row = 0; row < n; ++row) book.set_value({row, 0, 0}, Value::number(items[row]));
            const Value all = result(asking(call, "A1:A20", "3"));
            std::vector<Value> list;
            if (all.is(Type::array) && all.rows() * all.columns() == n)
                for (std::uint32_t i = 0; i < n; ++i) list.push_back(all.rows() == 1 ? all.cell(0, i) : all.cell(i, 0));
            return list;
        };
        const auto is_twin = [&](const Call& call) {
            if (call.arguments.size() <= at + periods) return false;
            trace().TraceStart(false);
            const bool answered = !answers(call, variations.times(n, false)).empty();
            bool looped = false;
            for (int i = 1; i <= trace().count() && !looped; ++i)
                looped = trace().text(i).starts_with(std::string(function.name) + "AF\t");
            trace().TraceShow();
            return answered && looped;
        };
        const std::vector<Call>& examples = variations.examples();
        if (std::none_of(examples.begin(), examples.end(), is_twin)) return;
        ++twins;
        for (int i = 0; i < calls_of_each; ++i) {
            const std::vector<double> items = variations.times(n, true);
            const Call call = variations.next();
            if (call.arguments.size() <= at + periods) continue;
            SCOPED_TRACE(asking(call, "A1:A20", "3"));
            const std::vector<Value> together = answers(call, items);
            const sheet::Formula single = book.read(asking(call, "B1", "B2"));
            bool some_fail = false, moves = false;
            for (std::size_t item = 0; item + 1 < n; ++item) {
                if (periods && items[item + 1] < items[item]) continue; // backward: no single call asks so
                book.set_value({0, 1, 0}, Value::number(items[item]));
                book.set_value({1, 1, 0}, Value::number(items[item + 1]));
                const Value alone = book.look_up(book.evaluate(single, Area(CellAddress{})));
                some_fail |= alone.is_error();
                if (together.empty()) continue;
                EXPECT_EQ(bits(together[item]), bits(alone)) << "from " << items[item] << " to " << items[item + 1];
                moves |= !together[item].identical(together[0]);
            }
            ++called;
            answered += together.empty() ? 0 : 1;
            moving += moves ? 1 : 0;
            if (some_fail || !together.empty()) continue;
            trace().TraceStart(false); // single calls, those backward among them
            EXPECT_TRUE(answers(call, items).empty());
            trace().TraceShow();
        }
    });
    EXPECT_GT(twins, 290);
    EXPECT_GT(answered, called * 2 / 3) << "of " << called;
    EXPECT_GT(moving, answered / 2) << "an answer that is the same for all shows little";
}

} // namespace
} // namespace qx::test
