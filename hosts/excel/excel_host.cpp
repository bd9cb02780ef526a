// Excel as the host of the library: forwards each operation to the Excel that has loaded it.
#include "hosts/excel/find_dialog.h"
#include "hosts/excel/trace_dialog.h"

#include "addin/host.h"
#include "commands/find_replace.h"
#include "core/trace.h"

#include <string>

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace qx::excel {

namespace {

/// The address of a function in a library of Windows, or null.
template <class Routine>
Routine find(const char* library, const char* routine) {
    const HMODULE module = LoadLibraryA(library);
    if (module == nullptr) return nullptr;
    return reinterpret_cast<Routine>(reinterpret_cast<void*>(GetProcAddress(module, routine)));
}

class ExcelHost final : public Host {
  public:
    ExcelHost() {
        set_host(this);
        trace().viewer = &show_trace;
        find_replace_dialog = &show_find_replace;
    }

    int call(int xlfn, OPER* result, int count, OPER* const* arguments) override {
        // Looked up at the first call: a library must load no other while it is loaded itself.
        using Callback = int(WINAPI*)(int, OPER*, int, OPER* const*);
        static const Callback Excel4v = find<Callback>("XLCALL32.DLL", "Excel4v");
        return Excel4v == nullptr ? xlretFailed : Excel4v(xlfn, result, count, arguments);
    }

    void debug(std::string_view text) override { OutputDebugStringA(std::string(text).c_str()); }

    void message_box(std::string_view title, std::string_view text) override {
        MessageBoxA(nullptr, std::string(text).c_str(), std::string(title).c_str(), MB_OK | MB_TASKMODAL);
    }

    void show_help(std::string_view file, HelpPage page, std::string_view topic) override {
        using Viewer = HWND(WINAPI*)(HWND, const char*, UINT, DWORD_PTR);
        static const Viewer HtmlHelp = find<Viewer>("hhctrl.ocx", "HtmlHelpA");
        if (HtmlHelp == nullptr) return;
        const DWORD_PTR number = page == HelpPage::topic ? std::strtoul(std::string(topic).c_str(), nullptr, 10) : 0;
        // A caller without a topic, such as the menu, gets the first page: no page has the number 0.
        if (number == 0) page = HelpPage::first;
        HtmlHelp(nullptr, std::string(file).c_str(), static_cast<UINT>(page), number);
    }
};

ExcelHost the_excel;

} // namespace

} // namespace qx::excel
