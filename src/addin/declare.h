// What a declaration of a worksheet function is made with: core<>, twin<> and QX_EXPORT. See function.h for
// an example. Types come from the core routine's signature; what could disagree is compared by the compiler.
#pragma once

#include "addin/api.h"
#include "addin/arguments.h"
#include "addin/export_lists.h"
#include "addin/frame.h"
#include "core/routine.h"

#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace qx {

namespace declaring {

// --- What a routine's parameter takes from the cells -----------------------------------------------------------------

template <class T>
inline constexpr Kind kind_of = Kind::none;
template <>
inline constexpr Kind kind_of<double> = Kind::number;
template <>
inline constexpr Kind kind_of<int> = Kind::integer;
template <>
inline constexpr Kind kind_of<long long> = Kind::wide_integer;
template <>
inline constexpr Kind kind_of<bool> = Kind::boolean;
template <>
inline constexpr Kind kind_of<date> = Kind::date;
template <>
inline constexpr Kind kind_of<std::string> = Kind::text;
template <>
inline constexpr Kind kind_of<ministring> = Kind::short_text;
template <>
inline constexpr Kind kind_of<anyvalue> = Kind::any;
template <>
inline constexpr Kind kind_of<dateorfloat> = Kind::date_or_number;
template <>
inline constexpr Kind kind_of<floatblank> = Kind::number_or_blank;
template <>
inline constexpr Kind kind_of<AnnualSequence> = Kind::sequence;
template <>
inline constexpr Kind kind_of<timeperiod> = Kind::period_start;
template <>
inline constexpr Kind kind_of<Cell> = Kind::cell;
template <>
inline constexpr Kind kind_of<Reference> = Kind::reference;
template <class T>
inline constexpr Kind kind_of<Range<T>> = Kind::list;
template <class T>
inline constexpr Kind kind_of<Maybe<T>> = kind_of<T>;

template <class A, class B, int n>
inline constexpr Kind kind_of<Pairs<A, B, n>> = kind_of<A>;
template <class T, int n>
inline constexpr Kind kind_of<Repeated<T, n>> = kind_of<T>;

template <class T>
inline constexpr int cells_of = std::is_same_v<T, timeperiod> ? 2 : 1;
template <class A, class B, int n>
inline constexpr int cells_of<Pairs<A, B, n>> = 2 * n;
template <class T, int n>
inline constexpr int cells_of<Repeated<T, n>> = n;

/// The kind of a parameter's last cell, where it takes several.
template <class T>
inline constexpr Kind last_kind_of = std::is_same_v<T, timeperiod> ? Kind::period_base : kind_of<T>;
template <class A, class B, int n>
inline constexpr Kind last_kind_of<Pairs<A, B, n>> = kind_of<B>;

/// What the cells of a list are converted to.
template <class T>
inline constexpr Kind item_kind_of = Kind::none;
template <class T>
inline constexpr Kind item_kind_of<Range<T>> = kind_of<T>;
template <class T>
inline constexpr Kind item_kind_of<WorkList<T>> = kind_of<T>;
template <class T>
inline constexpr Kind kind_of<WorkList<T>> = Kind::list;
template <class A, class B, int n>
inline constexpr Kind item_kind_of<Pairs<A, B, n>> = item_kind_of<A>;
template <class T, int n>
inline constexpr Kind item_kind_of<Repeated<T, n>> = item_kind_of<T>;

/// The same calls, with what their routine returns.
template <class R>
constexpr Calls giving(Calls calls) {
    calls.gives = kind_of<std::remove_cvref_t<R>>;
    calls.gives_items = item_kind_of<std::remove_cvref_t<R>>;
    return calls;
}

// --- Parameters of several cells -------------------------------------------------------------------------------------

template <class... T>
struct TypeList {};
template <class... L>
struct Joined;
template <>
struct Joined<> {
    using type = TypeList<>;
};
template <class... A>
struct Joined<TypeList<A...>> {
    using type = TypeList<A...>;
};
template <class... A, class... B, class... Rest>
struct Joined<TypeList<A...>, TypeList<B...>, Rest...> : Joined<TypeList<A..., B...>, Rest...> {};

/// What a parameter is made of: itself, the range behind a view, or the members of a composite.
template <class P>
struct PartsOf {
    using type = TypeList<P>;
};
template <class T>
struct PartsOf<View<T>> {
    using type = TypeList<Range<T>>;
};
template <class L>
struct PartsOfTakes;
template <class... T>
struct PartsOfTakes<Takes<T...>> : Joined<typename PartsOf<T>::type...> {};
template <Composite P>
struct PartsOf<P> : PartsOfTakes<typename P::takes> {};
template <class... P>
using Parts = typename Joined<typename PartsOf<std::remove_cvref_t<P>>::type...>::type;

template <class L>
inline constexpr int parts_in = 0;
template <class... T>
inline constexpr int parts_in<TypeList<T...>> = sizeof...(T);

/// The slot of a number in the pool of a type.
template <class T>
struct Slots {
    static constexpr int last = VarPool<T>::slots - 1;
    static T& get(int slot) { return VarPool<T>::get(slot); }
};
template <class T>
struct Slots<Range<T>> {
    static constexpr int last = RangePool<T>::slots;
    static Range<T>& get(int slot) { return RangePool<T>::get(slot); }
};

/// The inputs of a call, part by part: P are no composites.
template <class Parts>
struct Parameters;
template <class... P>
struct Parameters<TypeList<P...>> {
    static constexpr int count = sizeof...(P);
    static constexpr int cells = (0 + ... + cells_of<P>);
    static_assert(cells <= max_arguments, "a worksheet function takes at most 29 cells");
    static_assert(((kind_of<P> != Kind::none) && ...), "a parameter of a type that no cell converts to");

    template <class T>
    static constexpr int alike = (0 + ... + (std::is_same_v<T, P> ? 1 : 0));
    static_assert(((alike<P> <= Slots<P>::last) && ...), "more parameters of one type than its pool has slots");

    static constexpr Calls calls(void (*run)(Frame&), bool gives_dates) {
        Calls calls{.run = run, .cells = cells, .gives_dates = gives_dates};
        int cell = 0;
        [[maybe_unused]] const auto add = [&](int count, Kind first, Kind last, Kind items) {
            for (int i = 0; i < count; ++i) {
                calls.kinds[cell] = i % 2 == 0 ? first : last;
                calls.items[cell++] = items;
            }
        };
        (add(cells_of<P>, kind_of<P>, last_kind_of<P>, item_kind_of<P>), ...);
        return calls;
    }

    template <std::size_t I>
    using Part = std::tuple_element_t<I, std::tuple<std::type_identity<P>...>>::type;

    /// The slot of part I. Slots are given out per type, in the order of the arguments.
    template <std::size_t I>
    static Part<I>& slot() {
        constexpr int number = [] {
            int n = 1;
            std::size_t i = 0;
            ((n += (i++ < I && std::is_same_v<P, Part<I>>) ? 1 : 0), ...);
            return n;
        }();
        return Slots<Part<I>>::get(number);
    }
    /// Converts the cells into the slots from part `first` on, from left to right.
    template <std::size_t first, std::size_t past = count>
    static void input(Frame& frame) {
        [&]<std::size_t... I>(std::index_sequence<I...>) { (frame.input(slot<first + I>()), ...); }
        (std::make_index_sequence<past - first>{});
    }
    /// The parameter of type A whose first part is number I.
    template <class A, std::size_t I>
    static decltype(auto) make() {
        if constexpr (Composite<A>)
            return compose<A, I>(typename A::takes{});
        else
            return slot<I>();
    }

  private:
    template <class A, std::size_t I, class... T>
    static A compose(Takes<T...>) {
        return [&]<std::size_t... J>(std::index_sequence<J...>) { return A{make<T, I + offset<J, T...>>()...}; }
        (std::index_sequence_for<T...>{});
    }

  public:
    /// How many parts come before parameter J of A.
    template <std::size_t J, class... A>
    static constexpr std::size_t offset = [] {
        std::size_t before = 0, j = 0;
        ((before += j++ < J ? parts_in<qx::declaring::Parts<A>> : 0), ...);
        return before;
    }();
};

template <auto routine>
struct Thunk;

template <class R>
inline constexpr bool gives_dates =
    std::is_same_v<std::remove_cvref_t<R>, date> || std::is_same_v<std::remove_cvref_t<R>, WorkList<date>>;

template <class R, class... A, R (*routine)(A...)>
struct Thunk<routine> {
    using Inputs = Parameters<Parts<A...>>;
    static constexpr Calls calls() { return giving<R>(Inputs::calls(&run, gives_dates<R>)); }
    static void run(Frame& frame) {
        Inputs::template input<0>(frame);
        frame.inputs_concluded();
        [&]<std::size_t... I>(std::index_sequence<I...>) {
            frame.reply(routine(Inputs::template make<std::remove_cvref_t<A>, Inputs::template offset<I, A...>>()...));
        }
        (std::index_sequence_for<A...>{});
    }
};

/// A function that another took the place of: it shows its inputs and the note of the change, and calls the other.
template <auto routine>
struct AliasThunk;

template <class R, class... A, R (*routine)(A...)>
struct AliasThunk<routine> {
    static R call(const A&... inputs) {
        const Function& function = *Frame::at_work();
        Routine here{function.name};
        here.inputs(inputs...);
        here.change_note(function.change.number, function.change.text);
        if constexpr (std::is_same_v<R, date>)
            return here.returning("DateResult", routine(inputs...));
        else
            return here.returning(routine(inputs...));
    }
};

// --- The array twin --------------------------------------------------------------------------------------------------

/// Where a twin keeps its answers and what it loops over: slots that no scalar argument uses.
inline constexpr int twin_times_slot = range_slots<date>;
inline constexpr int twin_result_slot = range_slots<double>;
inline constexpr int twin_values_slot = range_slots<double> - 1;

/// The one loop of all array twins: a routine called for each period of a time base, or for each of a list of dates or
/// numbers.
const Range<double>& each_of(const char* name, const Range<date>& times, double (*call)(const timeperiod&));
const Range<double>& each_of(const char* name, const Range<date>& dates, double (*call)(const date&));
const Range<double>& each_of(const char* name, const Range<double>& values, double (*call)(const double&));

/// What a twin loops over, by the routine's first parameter.
template <class First>
struct Leading;
template <>
struct Leading<timeperiod> {
    using Many = Range<date>;
    static constexpr int slot = twin_times_slot;
    static void input(Frame& frame, Many& times) { frame.input_times(times); }
};
template <>
struct Leading<date> {
    using Many = Range<date>;
    static constexpr int slot = twin_times_slot;
    static void input(Frame& frame, Many& dates) { frame.input(dates); }
};
template <>
struct Leading<double> {
    using Many = Range<double>;
    static constexpr int slot = twin_values_slot;
    static void input(Frame& frame, Many& values) { frame.input(values); }
};

/// A routine with a twin, which loops over parameter number `at`.
template <auto routine, std::size_t at>
struct TwinThunk;

template <class... P, double (*routine)(P...), std::size_t at>
struct TwinThunk<routine, at> {
    template <std::size_t I>
    using Parameter = std::remove_cvref_t<std::tuple_element_t<I, std::tuple<P...>>>;
    using One = Parameter<at>;
    using Many = typename Leading<One>::Many;
    using Inputs = Parameters<Parts<P...>>;
    static constexpr std::size_t part = Inputs::template offset<at, P...>;

    static void run(Frame& frame) {
        Inputs::template input<0, part>(frame);
        const bool array = frame.wants_array();
        One& one = Inputs::template slot<part>();
        Many& many = RangePool<typename Many::value_type>::get(Leading<One>::slot);
        if (array)
            Leading<One>::input(frame, many);
        else
            frame.input(one);
        Inputs::template input<part + 1>(frame);
        frame.inputs_concluded();
        if (array)
            frame.reply(each_of(frame.function.name, many, call));
        else
            frame.reply(call(one));
    }

  private:
    static double call(const One& one) {
        return [&]<std::size_t... I>(std::index_sequence<I...>) { return routine(parameter<I>(one)...); }
        (std::index_sequence_for<P...>{});
    }
    template <std::size_t I>
    static decltype(auto) parameter(const One& one) {
        if constexpr (I == at)
            return (one);
        else
            return Inputs::template make<Parameter<I>, Inputs::template offset<I, P...>>();
    }
};

} // namespace declaring

/// The calls of a core routine, whatever its parameters.
template <auto routine>
inline constexpr Calls core = declaring::Thunk<routine>::calls();

/// The calls of a routine of a time period, a date or a number that has an array twin; `at` says which of the
/// parameters that is.
template <auto routine, std::size_t at = 0>
inline constexpr Calls twin = declaring::giving<double>(
    declaring::TwinThunk<routine, at>::Inputs::calls(&declaring::TwinThunk<routine, at>::run, false));

/// The calls of a function that only calls a newer one, which takes the same arguments: after its `.change` note in
/// the trace. `twin_alias_of` for one with an array twin.
template <auto routine>
inline constexpr Calls alias_of = core<declaring::AliasThunk<routine>::call>;
template <auto routine>
inline constexpr Calls twin_alias_of = twin<declaring::AliasThunk<routine>::call>;

// --- The soundness of a declaration ----------------------------------------------------------------------------------

namespace declaring {

constexpr bool preset_suits(Preset::Type preset, Kind kind) {
    switch (kind) {
    case Kind::number:
    case Kind::integer:
    case Kind::wide_integer:
        return preset == Preset::number;
    case Kind::boolean:
        return preset == Preset::boolean;
    case Kind::date:
        return preset == Preset::number || preset == Preset::empty;
    case Kind::text:
    case Kind::short_text:
        return preset == Preset::text || preset == Preset::empty;
    case Kind::any:
        return preset == Preset::number || preset == Preset::text || preset == Preset::empty;
    case Kind::date_or_number:
    case Kind::number_or_blank:
        return preset == Preset::number || preset == Preset::empty;
    case Kind::list:
    case Kind::cell:
    case Kind::reference:
        return preset == Preset::empty;
    case Kind::sequence:
        return preset == Preset::sequence;
    default:
        return false;
    }
}

/// Never defined: a call of it stops the compiler with the fault in its name.
void fault(const char* what);

constexpr std::string_view words(const char* text) { return text == nullptr ? std::string_view{} : text; }

/// Checks a declaration while it is compiled.
consteval bool sound(const Function& function) {
    if (words(function.name).empty()) fault("the function has no name");
    if (words(function.help).empty()) fault("the function has no help");
    if (words(function.help).size() > longest_help) fault("the function's help is longer than 255 characters");
    if (words(function.examples[0]).empty()) fault("the function has no example");
    for (int i = 0; i < max_arguments; ++i) {
        const Argument& argument = function.args[i];
        const std::string_view name = words(argument.name);
        if (i >= function.arity()) {
            if (!name.empty()) fault("more arguments than the routine takes cells");
            continue;
        }
        if (name.empty()) fault("fewer arguments than the routine takes cells");
        if (words(argument.help).empty()) fault("an argument has no help");
        if (words(argument.help).size() > longest_help) fault("an argument's help is longer than 255 characters");
        for (int j = 0; j < i; ++j)
            if (name == words(function.args[j].name)) fault("two arguments have the same name");
        if (argument.is_optional() && !preset_suits(argument.preset.type, function.calls.kinds[i]))
            fault("an argument's preset is of another kind than the routine's parameter");
    }
    return true;
}

} // namespace declaring

/// Exports a declared function of `count` cells as XL + its name and registers it. Stands in the namespace of
/// the declaration.
#define QX_EXPORT(function_, count_)                                                                                   \
    static_assert(::qx::declaring::sound(function_), "the declaration of " #function_);                                \
    static_assert(function_.arity() == count_, "the number of cells of " #function_);                                  \
    static_assert(std::string_view(function_.name) == #function_, "the name of " #function_);                          \
    extern "C" QX_API ::qx::OPER* XL##function_(QX_PARAMETERS_##count_) {                                              \
        ::qx::OPER* const cells[] = {QX_CELLS_##count_ nullptr};                                                       \
        return ::qx::perform(function_, cells);                                                                        \
    }                                                                                                                  \
    static const ::qx::Registered registered_##function_(function_, "XL" #function_)

} // namespace qx
