// Stands in for Excel's XLCALL32.DLL: passes each call on to the program that has loaded it.
#include "addin/oper.h"

extern "C" {

using Callback = int (*)(int xlfn, qx::OPER* result, int count, qx::OPER* const* arguments);

static Callback the_callback = nullptr;

__declspec(dllexport) void set_callback(Callback callback) { the_callback = callback; }

__declspec(dllexport) int Excel4v(int xlfn, qx::OPER* result, int count, qx::OPER* const* arguments) {
    return the_callback == nullptr ? qx::xlretFailed : the_callback(xlfn, result, count, arguments);
}
}
