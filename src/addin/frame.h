// The frame of a worksheet call: the cells on their way in, the typed inputs in their pool slots, and the
// result.
//
// perform() makes a Frame, and the function's thunk (declare.h) runs on it: input() once per argument from
// left to right, inputs_concluded(), the core routine, reply(). Everything here is compiled once; a function
// adds only its thunk.
#pragma once

#include "addin/function.h"
#include "calendar/anyvalue.h"
#include "calendar/date.h"
#include "core/maybe.h"
#include "core/pairs.h"
#include "core/pools.h"
#include "core/repeated.h"

#include <string>

namespace qx {

class AnnualSequence;
class timeperiod;

/// An argument that arrives as the cell is, error values and all.
struct Cell {
    const OPER* oper;
    bool is_missing() const { return oper->type() == xltypeMissing; }
};
std::string describe(const Cell& cell);
/// The same for an argument that must keep an unresolved reference.
struct Reference {
    const OPER* oper;
};
std::string describe(const Reference& reference);
class Frame {
  public:
    Frame(const Function& function, OPER* const* cells) : function(function), cells_(cells) { at_work_ = &function; }

    // Conversions of the next argument into its slot. A required argument follows AssignCell, AssignRange,
    // Assignannseq; an optional one the Opt form. Each throws what the cell deserves.
    void input(double& slot);
    void input(int& slot);
    void input(long long& slot);
    void input(bool& slot);
    void input(date& slot);
    void input(std::string& slot);
    void input(ministring& slot);
    void input(anyvalue& slot);
    void input(dateorfloat& slot);
    void input(floatblank& slot);
    void input(Range<double>& slot);
    void input(Range<int>& slot);
    void input(Range<bool>& slot);
    void input(Range<date>& slot);
    void input(Range<std::string>& slot);
    void input(Range<ministring>& slot);
    void input(Range<anyvalue>& slot);
    void input(Range<dateorfloat>& slot);
    void input(Range<floatblank>& slot);
    void input(AnnualSequence& slot);
    void input(timeperiod& slot); ///< the cells of Time and Base
    void input(Cell& slot);
    void input(Reference& slot);
    template <class T>
    void input(Maybe<T>& slot) {
        slot.state = state_of_next();
        input(slot.value);
    }
    template <class A, class B, int n>
    void input(Pairs<A, B, n>& slot) {
        for (int i = 0; i < n; ++i) {
            input(slot.first[i]);
            input(slot.second[i]);
        }
    }
    template <class T, int n>
    void input(Repeated<T, n>& slot) {
        for (T& item : slot.items) input(item);
    }

    void start();
    void inputs_concluded();
    void end();

    // Results: each writes the one static result cell.
    void reply(double value);
    void reply(int value) { reply_integer(value); }
    void reply(long long value) { reply_integer(value); }
    void reply(bool value);
    void reply(const std::string& text);
    void reply(const date& day);
    void reply(const anyvalue& value);
    void reply(const Range<double>& list);
    void reply(const Range<int>& list);
    void reply(const Range<bool>& list);
    void reply(const Range<date>& list);
    void reply(const Range<std::string>& list);
    void reply(const Range<ministring>& list);
    void reply(const Range<anyvalue>& list);
    void reply(const Range<dateorfloat>& list);
    void reply(const Range<floatblank>& list);
    template <class T>
    void reply(const WorkList<T>& list) {
        reply(*list);
    }
    void reply(const AnnualSequence& sequence);
    /// A cell made by a function that handles cells as they come; copied with its text or array.
    void reply(const OPER& cell);

    /// True if the caller's formula spans cells, or the next argument does: the call wants an array twin.
    bool wants_array();
    /// The next two cells as the dates of a time base, for an array twin.
    void input_times(Range<date>& slot);

    /// The function of the call at work.
    static const Function* at_work() { return at_work_; }

    const Function& function;
    FunctionContext context;

  private:
    /// One argument on its way in.
    struct Input {
        const OPER& cell;
        const Argument& argument;
        const char* name; ///< what the trace calls it
        int level;        ///< of the trace before the argument
    };

    const OPER& next_cell() const;
    /// The next argument, under its own name or another.
    Input next(const char* conversion, const char* optional_conversion, const char* name = nullptr);
    int announce(const char* conversion, const char* name); ///< an argument, to the trace; its level before that
    State state_of_next() const;
    void reply_integer(long long value);
    void note(double value) const; ///< a result to the trace, and one that is large to the watch
    template <class T>
    void input_cell(T& slot, const char* name = nullptr);
    template <class T>
    void input_range(Range<T>& slot, const char* name = nullptr);
    void input_named(double& slot, const char* name);
    void input_figures(AnnualSequence& slot, const OPER& array);
    template <class T, int N>
    void reply_range(const Range<T, N>& list);

    static inline const Function* at_work_ = nullptr;

    OPER* const* cells_;
    int argument_ = 0; ///< the next argument
};

/// One calculation at a time: slots, pools, the trace and the result are the process's own. perform() holds the lock
/// for its call, and its result lasts until the next call, so whoever calls from several threads holds one of these
/// from before the call until the result, and last_error(), have been read. A thread may hold several.
class [[nodiscard]] CalculationLock {
  public:
    CalculationLock();
    ~CalculationLock();
    CalculationLock(const CalculationLock&) = delete;
    CalculationLock& operator=(const CalculationLock&) = delete;
};

/// The static result cell: what perform() returns a pointer to.
OPER& ResultOper();

/// The class of the error that the last call of perform() ended in, or null if it succeeded.
const ErrorClass* last_error();
/// The variable and message of that error; empty unless the trace was on.
const FunctionContext& last_error_context();

} // namespace qx
