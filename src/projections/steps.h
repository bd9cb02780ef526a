// Steps: a stream or a level that is one thing, then another, with the dates of change given. There are two mirror
// images: by from-dates step n runs from date n to date n + 1, the last one to Finish; by to-dates step n runs up to
// date n, the first one from Start. A routine over steps is a template of its side, and both worksheet functions are
// that routine.
#pragma once

#include "projections/constant_rate.h"
#include "projections/terms.h"

namespace qx {

/// Steps by from-dates.
struct FromSteps {
    using takes = Takes<date, Range<date>>;
    const date& Finish;
    View<date> FromDates;

    static constexpr bool by_from_dates = true;
    int count() const { return FromDates.size(); }
    /// The whole of the steps; only where there are some.
    Life extent() const { return {FromDates.first(), Finish}; }
    /// Step n. It ends with the whole, so that it may be empty.
    Life operator()(int n) const { return {FromDates(n), n < count() ? std::min(FromDates(n + 1), Finish) : Finish}; }
    /// The date at which what the step is worth is read: its beginning.
    const date& date_of(int n) const { return FromDates(n); }
    /// True of the step with which the whole begins.
    bool opens(int n) const { return n == 1; }
    /// True of a step that the end of the whole cuts off.
    bool cut_off(int n) const { return n < count() && Finish <= FromDates(n + 1); }
};

/// Steps by to-dates.
struct ToSteps {
    using takes = Takes<date, Range<date>>;
    const date& Start;
    View<date> ToDates;

    static constexpr bool by_from_dates = false;
    int count() const { return ToDates.size(); }
    Life extent() const { return {Start, ToDates.last()}; }
    Life operator()(int n) const { return {n > 1 ? std::max(ToDates(n - 1), Start) : Start, ToDates(n)}; }
    /// Its end; the beginning of a step that has none.
    const date& date_of(int n) const { return ToDates(n) < DateCrit ? ToDates(n) : (*this)(n).Start; }
    bool opens(int n) const { return n == 1; }
    bool cut_off(int) const { return false; }
};

/// What of some steps lies between overall dates.
template <class Steps>
struct StepsWithin {
    const Steps& steps;
    const Life& overall;

    static constexpr bool by_from_dates = Steps::by_from_dates;
    int count() const { return steps.count(); }
    Life extent() const { return steps.extent().within(overall.Start, overall.Finish); }
    Life operator()(int n) const { return steps(n).within(overall.Start, overall.Finish); }
    const date& date_of(int n) const { return steps.date_of(n); }
    bool opens(int n) const {
        return steps(n).Start <= overall.Start ? steps(n).Finish > overall.Start : steps.opens(n);
    }
    bool cut_off(int n) const { return steps.cut_off(n); }
};

/// Steps by to-dates with one more after the last to-date that never ends.
struct OpenToSteps {
    const ToSteps& steps;

    static constexpr bool by_from_dates = false;
    int count() const { return steps.count() + 1; }
    Life extent() const { return {steps.Start, DateCrit}; }
    Life operator()(int n) const {
        return n <= steps.count() ? steps(n)
                                  : Life{n > 1 ? std::max(steps.ToDates.last(), steps.Start) : steps.Start, DateCrit};
    }
    bool opens(int n) const { return n == 1; }
    bool cut_off(int) const { return false; }
};

/// Steps of which the last one is another thing than those before it: by from-dates the last of those given, by
/// to-dates one that follows them.
inline const FromSteps& then_steps(const FromSteps& steps) { return steps; }
inline OpenToSteps then_steps(const ToSteps& steps) { return {steps}; }

/// The name of a routine over steps, by its side.
template <class Steps>
constexpr const char* by_side(const char* from_dates, const char* to_dates) {
    return Steps::by_from_dates ? from_dates : to_dates;
}

/// The notes of the change that growth is read at the dates of the steps.
template <class Steps>
void note_where_growth_is_read(const Routine& here) {
    if constexpr (Steps::by_from_dates)
        here.change_note(16, "See Change in Behaviour 16, Sep-02 :Bugfix: Growth should occur from changes in rate ie "
                             "FromDates, not a Growth Date");
    else
        here.change_note(15, "See Change in Behaviour 15, Sep-02 :Bugfix: Growth should occur up until changes in rate "
                             "ie ToDates, not a Growth Date");
}

/// Which step of a stream by from-dates is its last one, measured as the end of the stream.
enum class LastStep {
    given,       ///< that of the last date
    cut_off_too, ///< also one that Finish cuts off
};

/// The number of the first step that ends on a date or later; that of the last one if none does.
template <class Steps>
int first_step_to(const Steps& steps, const date& day) {
    int low = 1, high = steps.count();
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (steps(middle).Finish < day)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

/// The sum over the steps that a period can hold something of, each measured as its place in the whole asks: the first
/// with the start stub of a composite day count, the last with its end stub, and each but the last as a part of a
/// longer stream. `amount` takes the number of the step, its life, how to measure it, and whether it is such a part.
template <class Steps, class Amount>
double sum_steps(const Routine& here, const timeperiod& period, const Steps& steps, const Basis& basis, Amount amount,
                 LastStep last_step = LastStep::given) {
    const DayCountCodes codes = DayCountCodes::of(basis.DayCount);
    const int maxn = steps.count();
    double sum = 0.0;
    for (int n = first_step_to(steps, period.from()); n <= maxn; ++n) { // those before it would measure zero
        const Life step = steps(n);
        if (step.Start > period.to()) break;
        const TraceBlock pass = here.pass(n, "From ", step.Start, " to ", step.Finish);
        const bool last = n == maxn || (last_step == LastStep::cut_off_too && steps.cut_off(n));
        const double stub = last ? codes.with_end() : steps.opens(n) ? codes.with_start() : codes.core;
        sum += amount(n, step, basis.under(stub), !last);
    }
    return sum;
}

} // namespace qx
