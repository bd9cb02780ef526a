#include "addin/frame.h"

#include "addin/cells.h"
#include "addin/host.h"
#include "core/call_state.h"
#include "core/logs.h"

#include <mutex>

namespace qx {

namespace {

std::recursive_mutex CalcMutex;

const ErrorClass* the_last_error = nullptr;
FunctionContext the_last_context;

/// What a cell shows for an error: the six input classes carry an error cell through, all others are #NUM!.
std::uint16_t cell_error(const ErrorClass& kind) {
    struct Row {
        const ErrorClass* kind;
        std::uint16_t code;
    };
    static constexpr Row carried[] = {
        {&inputna::error_class, xlerrNA},       {&inputdiv::error_class, xlerrDiv0},
        {&inputname::error_class, xlerrName},   {&inputref::error_class, xlerrRef},
        {&inputvalue::error_class, xlerrValue},
    };
    for (const Row& row : carried)
        if (&kind == row.kind) return row.code;
    return xlerrNum;
}

/// What every failure does first.
void clean_up() {
    steps_left = steps_without_limit;
    TraceMuted = false;
    free_temporary_memory();
}

OPER* fail(std::uint16_t code, std::string_view reason) {
    clean_up();
    if (traced()) trace().error("", reason);
    trace().TraceShow();
    ResultOper() = error_cell(code);
    return &ResultOper();
}

/// A call from within a string that the host evaluates for another call: slots and results are in use, and waiting for
/// the lock would never end. Nothing of the other call is touched.
OPER* refuse_nested(const Function& function) {
    static OPER refused;
    refused = error_cell(xlerrValue);
    if (traced())
        trace().warning(std::string(function.name) +
                        " is in a string that another function evaluates, and only one is calculated at a time.");
    return &refused;
}

bool monitor_line_open = false;

} // namespace

std::string describe(const Cell& cell) { return describe(*cell.oper); }
std::string describe(const Reference& reference) { return describe(*reference.oper); }

const ErrorClass* last_error() { return the_last_error; }
const FunctionContext& last_error_context() { return the_last_context; }

CalculationLock::CalculationLock() { CalcMutex.lock(); }
CalculationLock::~CalculationLock() { CalcMutex.unlock(); }

OPER* perform(const Function& function, OPER* const* cells) {
    if (evaluating_text()) return refuse_nested(function);
    const CalculationLock lock;
    the_last_error = nullptr;
    try {
        const int level = traced() ? trace().currentlevel() : -1;
        Frame frame(function, cells);
        frame.start();
        function.calls.run(frame);
        frame.end();
        if (level != -1) trace().setlevel(level);
        return &ResultOper();
    } catch (const uncalc& e) {
        the_last_error = &e.kind();
        clean_up();
        if (traced()) trace().info(e.description());
        trace().TraceShow();
        return nullptr;
    } catch (const cls_exception& e) {
        the_last_error = &e.kind();
        the_last_context = e.context;
        return fail(function.errors_as_data ? xlerrNum : cell_error(e.kind()), tracing ? e.description() : "");
    } catch (...) {
        the_last_error = &functionerror::error_class;
        return fail(xlerrNum, "Unspecified exception error");
    }
}

void Frame::start() {
    if (tracing) {
        TraceTimer().reset(true);
        context.setnames(function.name, "");
    }
    if (CalcMonOn) {
        if (monitor_line_open) CalcMonLog().write("\n"); // the call before failed
        CalcMonLog().write(function.name);
        monitor_line_open = true;
    }
    if (traced()) {
        trace().external_call(function.name);
        if (!stackok(function.name, false)) {
            trace().stackflag = true;
            trace().TraceShow();
        }
    }
    free_temporary_memory();
    reset_call_state();
    steps_left = most_steps;
    if (CalcMonOn) CalcMonTimer().reset(true);
    if (traced()) trace().inputs();
}

void Frame::inputs_concluded() {
    if (traced()) {
        trace().inputs_concluded(function.name);
        context.setnames(function.name, "");
        context.setmessage("");
    }
    if (CalcMonOn) CalcMonLog().write("," + describe(CalcMonTimer().microseconds() / 1000.0));
}

void Frame::end() {
    reset_call_state();
    free_temporary_memory();
    if (tracing) TraceTimer().stop();
    if (CalcMonOn) {
        CalcMonTimer().stop();
        CalcMonLog().write("," + describe(CalcMonTimer().microseconds() / 1000.0) + "\n");
        monitor_line_open = false;
    }
}

} // namespace qx
