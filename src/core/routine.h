// Routine: what every core routine opens with. It gives the routine its entry and return in the trace, its checks
// of bounds and its errors, and costs one branch while the trace is off:
//
//     double DYear(const date& TheDate) {
//         Routine here{"DYear"};
//         here.inputs(TheDate);
//         return here.returning(TheDate.decimal_year());
//     }
#pragma once

#include "core/call_state.h"
#include "core/errors.h"
#include "core/limits.h"
#include "core/maybe.h"
#include "core/pairs.h"
#include "core/repeated.h"
#include "core/takes.h"
#include "core/trace.h"
#include "core/utilities.h"

#include <exception>
#include <type_traits>
#include <utility>

namespace qx {

/// The names of some variables as one text, followed by the variables: arguments(QX_NAMED(Start, Finish)).
#define QX_NAMED(...) #__VA_ARGS__, __VA_ARGS__

/// A block of the trace that ends with its scope: a loop pass or an if clause. Not closed while an error unwinds,
/// so that the error is inside the block in which it arose.
class TraceBlock {
  public:
    TraceBlock() = default;
    explicit TraceBlock(bool open) : open_(open), exceptions_(open ? std::uncaught_exceptions() : 0) {}
    TraceBlock(const TraceBlock&) = delete;
    TraceBlock& operator=(const TraceBlock&) = delete;
    ~TraceBlock() {
        if (open_ && std::uncaught_exceptions() == exceptions_) trace().changelevel(-1);
    }

  private:
    bool open_ = false;
    int exceptions_ = 0;
};

/// How a value goes to the trace: a number by copy, so that the routine can keep it in a register until then.
template <class T>
using Shown = std::conditional_t<std::is_scalar_v<T>, T, const T&>;

/// How many cells an input takes that the trace shows as one item.
template <class T>
inline constexpr int cells_shown_as_one = 1;

class Routine {
  public:
    enum Call { function, internal, array };

    explicit Routine(const char* name, Call call = function) : name_(name) {
        if (--steps_left < 0) fail_after_most_steps();
        if (qx::traced()) enter(call);
    }

    const char* name() const { return name_; }
    bool traced() const { return qx::traced(); }
    int level() const { return level_; }

    /// The inputs of a routine that is a worksheet function, one trace item each, in the order of its arguments and
    /// under the names that its declaration gives them.
    template <class... Values>
    void inputs(const Values&... values) {
        if (qx::traced()) show_inputs<Values...>(values...);
    }
    /// The inputs of any other routine, with their names: arguments(QX_NAMED(...)).
    template <class... Values>
    void arguments(const char* names, const Values&... values) {
        if (qx::traced()) show_arguments<Values...>(names, values...);
    }

    /// Throws errlibmin or errlibmax in the argument's name unless low <= value <= high. NaN passes.
    void limit(double value, Limits limits, const char* variable) { limit(value, limits.low, limits.high, variable); }
    void limit(double value, double low, double high, const char* variable) {
        at_least(value, low, variable);
        at_most(value, high, variable);
    }
    void at_least(double value, double low, const char* variable) {
        if (value < low) fail<errlibmin>(qx::traced() ? variable : "");
    }
    void at_most(double value, double high, const char* variable) {
        if (value > high) fail<errlibmax>(qx::traced() ? variable : "");
    }

    /// The context of this routine, for a variable at work.
    FunctionContext context(std::string_view variable = {}) const { return FunctionContext(name_, variable); }

    /// Throws an error of class E about a variable ("" for none), with a message made of the pieces.
    template <class E, class... Pieces>
    [[noreturn]] void fail(const char* variable, const Pieces&... pieces) const {
        throw_error<E, Pieces...>(variable, pieces...);
    }

    template <class... Pieces>
    void info(const Pieces&... pieces) const {
        if (qx::traced()) show<&clsTrace2::info, Pieces...>(pieces...);
    }
    template <class... Pieces>
    void warning(const Pieces&... pieces) const {
        if (qx::traced()) show<&clsTrace2::warning, Pieces...>(pieces...);
    }
    /// A numbered "Change in Behaviour" note.
    void change_note(int number, const char* text) const {
        if (qx::traced()) trace().change_note(number, text);
    }

    /// The note of an old form that a newer function took the place of.
    void superseded_by(const char* newer) const {
        if (qx::traced())
            trace().change_note(63, text_of("See Change in Behaviour 63, Oct-03 :Function Obsolete, superceded by ",
                                            newer, " (100% compatible)"));
    }

    /// One pass of a loop: the block lasts as long as the object returned.
    template <class... Pieces>
    [[nodiscard]] TraceBlock pass(int index, const Pieces&... pieces) const {
        if (!qx::traced()) return TraceBlock(false);
        show_pass<Pieces...>(index, pieces...);
        return TraceBlock(true);
    }
    /// A branch taken, as a block.
    template <class... Pieces>
    [[nodiscard]] TraceBlock branch(const Pieces&... pieces) const {
        if (!qx::traced()) return TraceBlock(false);
        show<&clsTrace2::if_clause, Pieces...>(pieces...);
        return TraceBlock(true);
    }
    /// A list of passes under one heading, as a block.
    [[nodiscard]] TraceBlock loop(const char* label, const char* text) const {
        if (!qx::traced()) return TraceBlock(false);
        trace().timeperiod_loop(label, text);
        return TraceBlock(true);
    }

    /// The result, with its trace item; the level returns to that of the caller.
    template <class T>
    T returning(T&& value) const {
        if (qx::traced()) show_result<std::remove_cvref_t<T>>(value);
        return std::forward<T>(value);
    }
    /// The same under the result's name.
    template <class T>
    T returning(const char* result, T&& value) const {
        if (qx::traced()) trace().return_value(result, value, name_, level_);
        return std::forward<T>(value);
    }
    /// The end of a routine whose result is shown elsewhere, or that has none.
    void returning() const {
        if (qx::traced()) trace().returning(name_, level_);
    }

  private:
    // What the members above do while traced, and how they fail: out of line, out of the way of the rest.
    template <auto add, class... Pieces>
    [[gnu::cold, gnu::noinline]] static void show(Shown<Pieces>... pieces) {
        if (!trace().full()) (trace().*add)(text_of(pieces...));
    }
    template <class... Pieces>
    [[gnu::cold, gnu::noinline]] static void show_pass(int index, Shown<Pieces>... pieces) {
        if (!trace().full()) trace().loop_pass(index, text_of(pieces...));
    }
    template <class... Values>
    [[gnu::cold, gnu::noinline]] void show_arguments(const char* names, Shown<Values>... values) {
        trace().arguments();
        (argument(names, values), ...);
        trace().changelevel(-1);
    }
    template <class... Values>
    [[gnu::cold, gnu::noinline]] void show_inputs(Shown<Values>... values) {
        trace().arguments();
        int cell = 0;
        (input(cell, values), ...);
        trace().changelevel(-1);
    }
    template <class T>
    [[gnu::cold, gnu::noinline]] void show_result(Shown<T> value) const {
        trace().return_value(value, name_, level_);
    }
    template <class E, class... Pieces>
    [[noreturn, gnu::cold, gnu::noinline]] void throw_error(const char* variable, Shown<Pieces>... pieces) const {
        FunctionContext context(name_, variable);
        if (sizeof...(pieces) > 0 && tracing) context.setmessage(text_of(pieces...));
        throw E(context);
    }

    [[noreturn, gnu::cold, gnu::noinline]] void fail_after_most_steps() const {
        throw_error<errliboveriterated, std::string>(
            "", text_of("The call takes more than ", most_steps, " steps: the lengths of its lists multiply."));
    }

    [[gnu::cold, gnu::noinline]] void enter(Call call) {
        level_ = trace().currentlevel();
        switch (call) {
        case function:
            trace().function_call(name_);
            break;
        case internal:
            trace().internal_call(name_);
            break;
        case array:
            trace().array_call(name_);
            break;
        }
    }

    /// Shows a value under its name.
    template <class T>
    void named_argument(std::string_view name, const T& value) {
        trace().argument(name, value,
                         trace().describe_argument != nullptr ? trace().describe_argument(name_, name)
                                                              : std::string_view{});
    }
    /// Takes the first name off the list and shows the value under it.
    template <class T>
    void argument(const char*& names, const T& value) {
        while (*names == ' ' || *names == ',') ++names;
        const char* const start = names;
        while (*names != '\0' && *names != ',') ++names;
        named_argument(std::string_view(start, static_cast<std::size_t>(names - start)), value);
    }

    // The inputs from a cell on: each under its declared name, and the cell after it.
    template <class T>
    void input(int& cell, const T& value) {
        if constexpr (Composite<T>) {
            visit_members(value, [&](const auto& member) { input(cell, member); });
        } else {
            named_argument(declared_name(cell), value);
            cell += cells_shown_as_one<T>;
        }
    }
    template <class A, class B, int n>
    void input(int& cell, const Pairs<A, B, n>& pairs) {
        for (int i = 0; i < n; ++i) {
            input_if_given(cell, pairs.first[i]);
            input_if_given(cell, pairs.second[i]);
        }
    }
    template <class T, int n>
    void input(int& cell, const Repeated<T, n>& items) {
        for (const T& item : items.items) input_if_given(cell, item);
    }
    template <class T>
    void input_if_given(int& cell, const T& value) {
        bool given = true;
        if constexpr (requires { value.is_missing(); }) given = !value.is_missing();
        if (given) named_argument(declared_name(cell), value);
        ++cell;
    }
    std::string_view declared_name(int cell) const {
        return trace().declared_name != nullptr ? trace().declared_name(name_, cell) : std::string_view{"?"};
    }

    const char* name_;
    int level_ = -1;
};

} // namespace qx
