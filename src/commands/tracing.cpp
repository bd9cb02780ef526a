// Commands that start and end a trace and the calculation monitor.
#include "addin/registration.h"
#include "core/logs.h"
#include "core/trace.h"

using namespace qx;

QX_COMMAND(TraceOn, "Starts a trace: what is calculated from now on explains itself") {
    trace().TraceStart();
    trace().TraceOn();
    return 0;
}

QX_COMMAND(TraceShow, "Ends the trace and shows it") {
    trace().TraceShow();
    return 0;
}

QX_COMMAND(CalcMonOn, "Starts the calculation monitor, which times every worksheet call in qx_CalcMon.qxl") {
    CalcMonStart();
    return 0;
}

QX_COMMAND(CalcMonOff, "Stops the calculation monitor and closes its file") {
    CalcMonStop();
    return 0;
}
