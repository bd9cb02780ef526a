// Time inputs, annual sequences from cells, and the array twin of a routine of a time period.
#include "addin/cells.h"
#include "addin/declare.h"
#include "addin/host.h"
#include "calendar/annual_sequence.h"
#include "calendar/time_period.h"
#include "core/parse_number.h"
#include "core/routine.h"
#include "core/twin_run.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

namespace qx {

namespace {

constexpr const char* macro_reference = "A reference type was received, it must be a VBA call of an array function.";

/// The rectangle of the calling formula. Throws functionerror if the caller is no reference.
XLREF caller_rectangle(FunctionContext& context) {
    HostCell caller;
    if (Excel(xlfCaller, caller.get(), 0) == xlretSuccess) {
        if (caller->type() == xltypeSRef) return caller->val.sref.ref;
        if (caller->type() == xltypeRef && caller->val.mref.lpmref != nullptr && caller->val.mref.lpmref->count > 0) {
            if (traced()) trace().warning(macro_reference);
            return caller->val.mref.lpmref->reftbl[0];
        }
    }
    context.setmessage("Array Mode Error: Expected an SRef, got something else, cannot resolve.  Contact Quexel "
                       "support please.  Thanks.");
    throw functionerror(context);
}

/// The number of cells of a time argument: 0 for what is neither a number, a string nor several cells.
long long cells_in(const OPER& cell, FunctionContext& context) {
    switch (cell.type()) {
    case xltypeMulti:
        return cell_count(cell);
    case xltypeNum:
    case xltypeStr:
        return 1;
    case xltypeRef:
    case xltypeSRef: {
        HostCell cells;
        coerce(cells, cell, context);
        return cells->type() == xltypeMulti ? cell_count(*cells) : 1;
    }
    case xltypeErr:
        throw_error_cell(cell, context);
        return 0;
    default:
        return 0;
    }
}

/// A preset sequence by its name: "Quarterly in advance", "4:Quarterly in advance" or just "4", in any case. Returns
/// 0 for an unknown name.
int preset_named(std::string_view name) {
    while (!name.empty() && name.front() == ' ') name.remove_prefix(1);
    while (!name.empty() && name.back() == ' ') name.remove_suffix(1);
    for (const SwitchValue& known : sequence_values) {
        if (known.name == nullptr) continue;
        const std::string number = std::to_string(known.code);
        if (name == number || same_letters(name, known.name) || same_letters(name, number + ":" + known.name))
            return known.code;
    }
    return 0;
}

} // namespace

void Frame::input(timeperiod& slot) {
    static double start, base;
    const char* const name = function.args[argument_].name;
    int level = -1;
    std::string start_name, base_name;
    if (traced()) {
        level = trace().currentlevel();
        trace().variable(name);
        start_name = text_of(name, " Start");
        base_name = text_of(name, " Base");
    }
    input_named(start, start_name.c_str());
    input_named(base, base_name.c_str());
    slot.context() = FunctionContext("AssignTP", name);
    slot.settime(start, base);
    if (traced()) trace().return_value(name, slot, "AssignTP", level);
}

bool Frame::wants_array() {
    const XLREF caller = caller_rectangle(context);
    if (caller.rwLast > caller.rwFirst || caller.colLast > caller.colFirst) {
        if (traced()) trace().info("Array Mode");
        return true;
    }
    return cells_in(next_cell(), context) > 1;
}

void Frame::input(AnnualSequence& slot) {
    const Input in = next("Assignannseq", "AssignannseqOpt");
    const Argument& argument = in.argument;
    const int preset = argument.is_optional() ? static_cast<int>(argument.preset.value) : 0;
    slot.clear(argument.name, argument.sequence);
    switch (in.cell.type()) {
    case xltypeMissing:
    case xltypeNil:
        if (!argument.is_optional()) throw missingarg(context);
        slot.setdefault(preset);
        break;
    case xltypeNum:
        slot.set_figure(in.cell.val.num, preset);
        break;
    case xltypeStr:
        if (const int named = preset_named(text_in(in.cell)); named != 0) {
            slot.setpreset(named);
            break;
        }
        if (tracing) context.setmessage("There is no annual sequence of the name " + text_in(in.cell));
        throw errlibannseq(context);
    case xltypeErr:
        throw_error_cell(in.cell, context);
        break;
    case xltypeMulti:
        input_figures(slot, in.cell);
        break;
    case xltypeRef:
    case xltypeSRef:
        if (traced()) trace().warning(unexpected_reference);
        throw inputerror(context);
    default:
        throw illegalannualsequence(context);
    }
    slot.validate();
    if (traced())
        trace().return_value(argument.name, text_of(argument.name, " had ", slot.size(), " elements"),
                             context.function(), in.level);
}

void Frame::input_figures(AnnualSequence& slot, const OPER& array) {
    const long long count = cell_count(array);
    if (count < 0 || (count > 0 && array.val.array.lparray == nullptr)) throw inputerror(context);
    slot.start_list(static_cast<int>(count));
    for (int i = 1; i <= count; ++i) {
        const OPER& cell = array.val.array.lparray[i - 1];
        if (cell.type() == xltypeNil && i > 1) {
            if (traced()) trace().info("Blank cell encountered during annual sequence, assume data stops here.");
            break;
        }
        switch (cell.type()) {
        case xltypeNum:
            slot.append(cell.val.num);
            break;
        case xltypeStr:
            slot.append(parsenumber(text_in(cell), 0.0));
            break;
        case xltypeNil:
            slot.append(0.0);
            break;
        case xltypeMissing:
            throw missingarg(context);
        case xltypeErr:
            throw_error_cell(cell, context);
            break;
        default:
            if (tracing) context.setmessage(text_of("Illegal range element for a Date Sequence (", i, ")"));
            throw illegalannualsequence(context);
        }
    }
    if (traced())
        trace().info(text_of("Annual sequence set to a specific date sequence (", describe_periods(slot), ")"));
}

namespace declaring {

namespace {

/// The run of a twin over the items that `set` gives.
template <class Item, class Set>
class RunOf final : public TwinRun<Item> {
  public:
    RunOf(const char* routine, int n, Range<double>& answers, Set set)
        : TwinRun<Item>(routine, n, answers), set_(set) {}
    const Item& set(int i) override {
        set_(this->item_, i);
        return this->item_;
    }

  private:
    Set set_;
};

/// The loop of a twin over a list: `set` makes the item of an index, `word` is what the trace puts before it.
template <class Item, class List, class Word, class Set>
const Range<double>& each(const char* name, const List& list, const char* list_name, double (*call)(const Item&),
                          Word word, Set set) {
    const std::string label = traced() ? std::string(name) + "AF" : std::string();
    Routine here{label.c_str(), Routine::array};
    Range<double>& answers = RangePool<double>::get(twin_result_slot);
    const int n = list.size();
    if (n == 0) {
        here.warning("No timeperiods set for this array function");
        here.fail<inputerror>(list_name);
    }
    answers.dimension(n);
    if (!traced()) {
        RunOf<Item, Set> run{name, n, answers, set};
        const Item& item = run.first();
        while (run.go_on(call(item))) {}
        return answers;
    }
    {
        const TraceBlock loop = here.loop("Timeperiod Loop", "Looping over each timeperiod in the array function");
        Item item;
        for (int i = 1; i <= n; ++i) {
            set(item, i);
            const TraceBlock pass = here.pass(i, word(i), item);
            answers(i) = call(item);
        }
    }
    here.returning();
    return answers;
}

} // namespace

const Range<double>& each_of(const char* name, const Range<date>& times, double (*call)(const timeperiod&)) {
    return each<timeperiod>(
        name, times, "Times", call, [](int) { return std::string("TimePeriod "); },
        [times = times.view()](timeperiod& period, int i) { period.setfromtimebase(times, i); });
}

const Range<double>& each_of(const char* name, const Range<date>& dates, double (*call)(const date&)) {
    return each<date>(
        name, dates, dates.name(), call, [](int i) { return text_of("TheDate(", i, ") "); },
        [&dates](date& day, int i) { day = dates.get(i); });
}

const Range<double>& each_of(const char* name, const Range<double>& values, double (*call)(const double&)) {
    return each<double>(
        name, values, values.name(), call, [](int) { return std::string("Value "); },
        [&values](double& value, int i) { value = values.get(i); });
}

} // namespace declaring

} // namespace qx
