// A resizable modal dialog of Windows whose controls are made and laid out by code, at any resolution of any monitor.
#pragma once

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <commctrl.h>

#include <string>
#include <string_view>

namespace qx::excel {

/// A string of the library, which is UTF-8 or else in the system's code page, as Windows shows it.
std::wstring wide(std::string_view text);
/// What a user has typed, in the system's code page, as cells hold it.
std::string narrow(std::wstring_view text);

class Dialog {
  public:
    Dialog(const wchar_t* title, int width, int height) : title_(title), width_(width), height_(height) {}
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
    virtual ~Dialog() = default;

    /// Shows the dialog until it is closed. False if there is no screen for it.
    bool show();

  protected:
    virtual void create() = 0;                       ///< makes the controls
    virtual void lay_out(int width, int height) = 0; ///< places them
    virtual void rescaled() {}                       ///< the resolution is another
    virtual void paint(HDC) {}                       ///< the background
    virtual void pressed(int /*button*/) {}          ///< a button, or F1 as IDHELP
    virtual void changed(int /*control*/) {}         ///< a string that the user edits
    virtual LRESULT notified(const NMHDR&) { return 0; }
    virtual void timer() {}

    HWND window() const { return window_; }
    /// Adds a control; it has the dialog's font.
    HWND add(const wchar_t* kind, const wchar_t* text, DWORD style, int number = -1, DWORD extended = 0);
    /// A length at 96 dots an inch, in dots of the monitor.
    int dots(int length) const { return MulDiv(length, resolution_, 96); }
    int resolution() const { return resolution_; }
    HFONT font() const { return font_; }
    void close() { EndDialog(window_, 0); }

  private:
    static INT_PTR CALLBACK handle(HWND window, UINT message, WPARAM w, LPARAM l);
    INT_PTR handle(UINT message, WPARAM w, LPARAM l);
    void open();
    void set_resolution(int resolution);

    const wchar_t* title_;
    int width_, height_; ///< at first and at 96 dots an inch
    HWND window_ = nullptr;
    int resolution_ = 96;
    HFONT font_ = nullptr;
    HBRUSH ground_ = nullptr;
};

/// The colour of the dialogs' ground.
inline constexpr COLORREF ground_colour = 15986158;

/// The module of the add-in, which holds its resources.
HMODULE this_module();

} // namespace qx::excel
