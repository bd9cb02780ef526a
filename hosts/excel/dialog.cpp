#include "hosts/excel/dialog.h"

#include <algorithm>

namespace qx::excel {

namespace {

template <class Routine>
Routine user32(const char* name) { // not in every Windows
    return reinterpret_cast<Routine>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

int resolution_of(HWND window) {
    using GetDpiForWindow = UINT(WINAPI*)(HWND);
    static const auto get = user32<GetDpiForWindow>("GetDpiForWindow");
    if (get != nullptr) return static_cast<int>(get(window));
    const HDC screen = GetDC(nullptr);
    const int resolution = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return resolution;
}

/// Windows of this thread mind each monitor's resolution while one lives.
class PerMonitor {
  public:
    PerMonitor() {
        constexpr std::intptr_t per_monitor = -4; // version 2, which also scales frames and messages
        if (set() != nullptr) former_ = set()(reinterpret_cast<void*>(per_monitor));
    }
    PerMonitor(const PerMonitor&) = delete;
    PerMonitor& operator=(const PerMonitor&) = delete;
    ~PerMonitor() {
        if (former_ != nullptr) set()(former_);
    }

  private:
    using SetThreadDpiAwarenessContext = void*(WINAPI*)(void*);
    static SetThreadDpiAwarenessContext set() {
        static const auto routine = user32<SetThreadDpiAwarenessContext>("SetThreadDpiAwarenessContext");
        return routine;
    }
    void* former_ = nullptr;
};

} // namespace

HMODULE this_module() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&this_module), &module);
    return module;
}

std::wstring wide(std::string_view text) {
    for (const auto& [page, flags] : {std::pair<UINT, DWORD>{CP_UTF8, MB_ERR_INVALID_CHARS}, {CP_ACP, 0}}) {
        const int length = MultiByteToWideChar(page, flags, text.data(), static_cast<int>(text.size()), nullptr, 0);
        if (length == 0) continue;
        std::wstring converted(static_cast<std::size_t>(length), L'\0');
        MultiByteToWideChar(page, flags, text.data(), static_cast<int>(text.size()), converted.data(), length);
        return converted;
    }
    return {};
}

std::string narrow(std::wstring_view text) {
    const int length =
        WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
    std::string converted(static_cast<std::size_t>(std::max(length, 0)), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), converted.data(), length, nullptr,
                        nullptr);
    return converted;
}

bool Dialog::show() {
    const INITCOMMONCONTROLSEX wanted{sizeof wanted,
                                      ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&wanted);
    const PerMonitor scaled;
    struct Template { // no controls, no menu, the standard class, no title yet
        DLGTEMPLATE head;
        WORD menu, window_class, title;
    } dialog{};
    dialog.head.style =
        WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX | WS_CLIPCHILDREN | DS_MODALFRAME;
    dialog.head.cx = dialog.head.cy = 100;
    const INT_PTR result = DialogBoxIndirectParamW(this_module(), &dialog.head, GetActiveWindow(), &Dialog::handle,
                                                   reinterpret_cast<LPARAM>(this));
    return result != -1 && window_ != nullptr;
}

HWND Dialog::add(const wchar_t* kind, const wchar_t* text, DWORD style, int number, DWORD extended) {
    const HWND control = CreateWindowExW(extended, kind, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 10, 10, window_,
                                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)), this_module(), nullptr);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
    return control;
}

void Dialog::set_resolution(int resolution) {
    resolution_ = resolution;
    const HFONT former = font_;
    font_ =
        CreateFontW(-MulDiv(9, resolution, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                    OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, VARIABLE_PITCH | FF_SWISS, L"Segoe UI");
    EnumChildWindows(
        window_,
        [](HWND control, LPARAM font) {
            SendMessageW(control, WM_SETFONT, static_cast<WPARAM>(font), TRUE);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(font_));
    if (former != nullptr) DeleteObject(former);
}

void Dialog::open() {
    SetWindowTextW(window_, title_);
    ground_ = CreateSolidBrush(ground_colour);
    set_resolution(resolution_of(window_));
    const HICON icon = LoadIconW(this_module(), MAKEINTRESOURCEW(1));
    SendMessageW(window_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
    SendMessageW(window_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon));
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window_, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& desk = monitor.rcWork;
    const int width = std::min<int>(dots(width_), desk.right - desk.left);
    const int height = std::min<int>(dots(height_), desk.bottom - desk.top);
    create();
    SetWindowPos(window_, nullptr, (desk.left + desk.right - width) / 2, (desk.top + desk.bottom - height) / 2, width,
                 height, SWP_NOZORDER);
}

INT_PTR CALLBACK Dialog::handle(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, l);
        reinterpret_cast<Dialog*>(l)->window_ = window;
    }
    auto* const dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
    if (dialog == nullptr) return FALSE;
    try {
        return dialog->handle(message, w, l);
    } catch (...) { // nothing may pass through Windows
        return FALSE;
    }
}

INT_PTR Dialog::handle(UINT message, WPARAM w, LPARAM l) {
    switch (message) {
    case WM_INITDIALOG:
        open();
        return FALSE; // the dialog has set the focus
    case WM_SIZE:
        lay_out(LOWORD(l), HIWORD(l));
        RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        return TRUE;
    case WM_GETMINMAXINFO: {
        auto& limits = *reinterpret_cast<MINMAXINFO*>(l);
        limits.ptMinTrackSize = {dots(420), dots(360)};
        return TRUE;
    }
    case WM_DPICHANGED: {
        set_resolution(HIWORD(w));
        rescaled();
        const RECT& place = *reinterpret_cast<const RECT*>(l);
        SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        return TRUE;
    }
    case WM_COMMAND:
        if (HIWORD(w) == EN_CHANGE && l != 0)
            changed(LOWORD(w));
        else if (LOWORD(w) == IDCANCEL)
            close();
        else if (HIWORD(w) == BN_CLICKED)
            pressed(LOWORD(w));
        return TRUE;
    case WM_HELP:
        pressed(IDHELP);
        return TRUE;
    case WM_NOTIFY:
        SetWindowLongPtrW(window_, DWLP_MSGRESULT, notified(*reinterpret_cast<const NMHDR*>(l)));
        return TRUE;
    case WM_TIMER:
        timer();
        return TRUE;
    case WM_PAINT: {
        PAINTSTRUCT at;
        const HDC canvas = BeginPaint(window_, &at);
        paint(canvas);
        EndPaint(window_, &at);
        return TRUE;
    }
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
        SetBkColor(reinterpret_cast<HDC>(w), ground_colour);
        return reinterpret_cast<INT_PTR>(ground_);
    case WM_DESTROY:
        if (font_ != nullptr) DeleteObject(font_);
        if (ground_ != nullptr) DeleteObject(ground_);
        font_ = nullptr;
        ground_ = nullptr;
        return FALSE;
    default:
        return FALSE;
    }
}

} // namespace qx::excel
