// Opens the windows of the add-in as their user does: reads them, presses their keys and buttons, and lets pictures be
// taken.
//
//     windows QuexelLb.xll FOLDER
//
// A picture is asked for by a file NAME.wanted in the folder, which whoever takes it removes. All is in one process:
// the add-in shows its windows in the first thread, and a second one uses them.
#include "addin/excel_operations.h"
#include "addin/oper.h"

#include <algorithm>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <commctrl.h>

using namespace qx;

extern "C" {
using Callback = int (*)(int xlfn, OPER* result, int count, OPER* const* arguments);
__declspec(dllimport) void set_callback(Callback callback);
}

namespace {

int passed = 0, failed = 0;
std::string folder;

void check(bool good, const std::string& what) {
    ++(good ? passed : failed);
    if (!good) std::cout << "FAILED: " << what << std::endl;
}

// --- A small Excel with a sheet of three cells
// ---------------------------------------------------------------------------

std::map<int, std::string> column_a = {{0, "Rent 2004"}, {1, "=DpD(B2,30)"}, {2, "1200"}};
XLMREF selected{1, {{0, 9, 0, 0}}};
std::vector<std::string> menu; ///< the names in it

std::string text_of(const OPER& cell) {
    return cell.type() == xltypeStr ? std::string(reinterpret_cast<const char*>(cell.val.str + 1), cell.val.str[0])
                                    : "";
}

OPER counted(const std::string& text) {
    static std::vector<std::unique_ptr<std::string>> kept;
    kept.push_back(std::make_unique<std::string>(1, static_cast<char>(text.size())));
    kept.back()->append(text);
    return {{.str = reinterpret_cast<unsigned char*>(kept.back()->data())}, xltypeStr};
}

int serve(int xlfn, OPER* result, int, OPER* const* arguments) {
    const auto row = [](const OPER& cell) { return static_cast<int>(cell.val.mref.lpmref->reftbl[0].rwFirst); };
    switch (xlfn) {
    case xlFree:
        return xlretSuccess;
    case xlStack:
        *result = int_cell(32000);
        return xlretSuccess;
    case xlGetName:
        *result = counted("C:\\Models\\QuexelLb.xll");
        return xlretSuccess;
    case xlfRegister:
    case xlfSetName:
        if (result != nullptr) *result = number_cell(1.0);
        return xlretSuccess;
    case xlfAddMenu: {
        const auto& table = arguments[1]->val.array;
        for (int i = 0; i < table.rows; ++i) menu.push_back(text_of(table.lparray[i * table.columns]));
        return xlretSuccess;
    }
    case xlfDeleteMenu:
        menu.clear();
        return xlretSuccess;
    case xlfSelection:
        result->xltype = xltypeRef;
        result->val.mref = {&selected, 7};
        return xlretSuccess;
    case xlfGetFormula:
        *result = counted(column_a[row(*arguments[0])]);
        return xlretSuccess;
    case xlfFormulaConvert:
        *result = counted(text_of(*arguments[0]));
        return xlretSuccess;
    case xlcFormula:
        column_a[row(*arguments[1])] = text_of(*arguments[0]);
        *result = bool_cell(true);
        return xlretSuccess;
    default:
        return xlretFailed;
    }
}

// --- The user
// ------------------------------------------------------------------------------------------------------------

/// Asks every twentieth of a second until it is so, for at most a quarter of a minute.
bool wait_until(const std::function<bool()>& is_so) {
    for (int i = 0; i < 300; ++i) {
        if (is_so()) return true;
        Sleep(50);
    }
    return is_so();
}

HWND find_window(const wchar_t* title) {
    HWND found = nullptr;
    wait_until([&] {
        found = FindWindowW(nullptr, title);
        return found != nullptr && IsWindowVisible(found);
    });
    check(found != nullptr, "the window is shown");
    return found;
}

std::string text_of(HWND window) {
    wchar_t text[2000];
    const auto length = SendMessageW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    std::string narrow;
    for (LRESULT i = 0; i < length; ++i)
        if (text[i] != L'\r') narrow += static_cast<char>(text[i]);
    return narrow;
}

HWND child(HWND window, const std::string& wanted) {
    struct Search {
        const std::string& text;
        HWND found = nullptr;
    } search{wanted};
    EnumChildWindows(
        window,
        [](HWND control, LPARAM data) -> BOOL {
            auto& searched = *reinterpret_cast<Search*>(data);
            if (text_of(control) == searched.text) searched.found = control;
            return searched.found == nullptr;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void take_picture(const std::string& name) {
    Sleep(300); // until all is painted
    const std::string wanted = folder + "\\" + name + ".wanted";
    CloseHandle(CreateFileA(wanted.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    check(wait_until([&] { return GetFileAttributesA(wanted.c_str()) == INVALID_FILE_ATTRIBUTES; }),
          "a picture of " + name);
}

void press(HWND window, const char* button) {
    const HWND found = child(window, button);
    check(found != nullptr, std::string("there is a button ") + button);
    if (found != nullptr) SendMessageW(found, BM_CLICK, 0, 0);
}

bool wait_closed(const wchar_t* title) {
    return wait_until([&] { return FindWindowW(nullptr, title) == nullptr; });
}

// --- The trace
// -----------------------------------------------------------------------------------------------------------

class Tree {
  public:
    explicit Tree(HWND window) : tree_(FindWindowExW(window, nullptr, WC_TREEVIEWW, nullptr)) {
        check(tree_ != nullptr, "the window has a tree");
    }
    HWND window() const { return tree_; }
    HTREEITEM next(UINT which, HTREEITEM item) const {
        return reinterpret_cast<HTREEITEM>(SendMessageW(tree_, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
    }
    HTREEITEM root() const { return next(TVGN_ROOT, nullptr); }
    HTREEITEM selected() const { return next(TVGN_CARET, nullptr); }
    std::size_t count() const { return static_cast<std::size_t>(SendMessageW(tree_, TVM_GETCOUNT, 0, 0)); }
    std::size_t children(HTREEITEM item) const {
        std::size_t number = 0;
        for (HTREEITEM below = next(TVGN_CHILD, item); below != nullptr; below = next(TVGN_NEXT, below)) ++number;
        return number;
    }
    TVITEMW item(HTREEITEM handle) const {
        static wchar_t text[4000];
        TVITEMW asked{};
        asked.mask = TVIF_TEXT | TVIF_STATE | TVIF_IMAGE | TVIF_CHILDREN;
        asked.stateMask = TVIS_EXPANDED;
        asked.hItem = handle;
        asked.pszText = text;
        asked.cchTextMax = static_cast<int>(std::size(text));
        SendMessageW(tree_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked));
        return asked;
    }
    std::string text(HTREEITEM handle) const {
        const TVITEMW found = item(handle);
        std::string narrow;
        for (const wchar_t* c = found.pszText; *c != L'\0'; ++c) narrow += static_cast<char>(*c);
        return narrow;
    }
    std::string name(HTREEITEM handle) const {
        const std::string line = text(handle);
        return line.substr(0, line.find('\t'));
    }
    bool is_open(HTREEITEM handle) const { return (item(handle).state & TVIS_EXPANDED) != 0; }
    void key(WORD code) const {
        SendMessageW(tree_, WM_KEYDOWN, code, 1);
        SendMessageW(tree_, WM_KEYUP, code, 1);
    }
    /// The open lines, two blanks a level.
    std::string outline() const {
        std::string lines;
        for (HTREEITEM item = root(); item != nullptr; item = next(TVGN_NEXTVISIBLE, item)) {
            for (HTREEITEM above = next(TVGN_PARENT, item); above != nullptr; above = next(TVGN_PARENT, above))
                lines += "  ";
            lines += name(item) + "\n";
        }
        return lines;
    }

  private:
    HWND tree_;
};

constexpr const wchar_t* trace_title = L"Quexel Trace";

void use_trace_of_a_failure() {
    const HWND window = find_window(trace_title);
    const Tree tree(window);
    const HWND header = FindWindowExW(window, nullptr, WC_HEADERW, nullptr);
    const char* const titles[] = {"Function, Variable Name or Message Type", "Value", "Description"};
    const int widths[] = {406, 121, 406};
    check(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0) == 3, "three columns");
    for (int i = 0; i < 3; ++i) {
        wchar_t text[100] = {};
        HDITEMW item{};
        item.mask = HDI_TEXT | HDI_WIDTH;
        item.pszText = text;
        item.cchTextMax = static_cast<int>(std::size(text));
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        check(std::equal(titles[i], titles[i] + std::string_view(titles[i]).size() + 1, text),
              std::string("the column ") + titles[i]);
        check(item.cxy == widths[i], std::string("the width of ") + titles[i]);
    }
    for (const char* const label :
         {"Legend",
          "Error",
          "External Function",
          "Arguments",
          "Variable Value",
          "Loop",
          "Range Screening",
          "Detail",
          "Array Function",
          "Function called internally",
          "Internal function",
          "Return Value",
          "Function Return",
          "Warning",
          "Information",
          "Argument Value",
          "Array Item",
          "Inputs",
          "Input Value",
          "If condition met",
          "Loop Pass",
          "&Close",
          "&Help",
          "&Page",
          "A copy of this output has been written to text file called qx_Trace.qxl, located in current working "
          "directory."})
        check(child(window, label) != nullptr, std::string("shows ") + label);
    const std::string summary = text_of(GetDlgItem(window, 103));
    check(summary.find(" msecs ") != summary.npos && summary.ends_with(" lines "), "the summary: " + summary);

    // The second call has failed on its date: all above the error is open, and the error is selected.
    check(tree.outline() == "DYear\nMonthEnd\n  Inputs\n    TheDate\n      Error\n", "what is open: " + tree.outline());
    check(tree.name(tree.selected()) == "Error", "the error is selected");
    check(tree.item(tree.selected()).iImage == 0 && tree.item(tree.root()).iImage == 10, "the pictures of the kinds");
    check(tree.text(tree.selected()).find("Error LIB40: Date less than minimum allowed value") != std::string::npos,
          "the error's text: " + tree.text(tree.selected()));
    take_picture("trace_error");

    // Only what has been opened is filled; the keys open, close and move.
    const std::size_t before = tree.count();
    tree.key(VK_HOME);
    check(tree.selected() == tree.root(), "Home selects the first line");
    check(tree.children(tree.root()) == 0, "a closed node is not filled");
    tree.key(VK_RIGHT);
    check(tree.is_open(tree.root()) && tree.count() > before, "the right arrow opens and fills");
    tree.key(VK_DOWN);
    check(tree.name(tree.selected()) == "Inputs", "the down arrow moves");
    tree.key(VK_LEFT);
    tree.key(VK_LEFT);
    check(!tree.is_open(tree.root()), "the left arrow closes");
    tree.key(VK_RIGHT);

    // Another size: everything stays within the window.
    for (const auto& [width, height] : {std::pair{1200, 800}, {520, 700}}) {
        SetWindowPos(window, nullptr, 20, 20, width, height, SWP_NOZORDER);
        RECT outer;
        GetWindowRect(window, &outer);
        struct Place {
            RECT outer;
            bool inside = true;
        } place{outer};
        EnumChildWindows(
            window,
            [](HWND control, LPARAM data) -> BOOL {
                RECT at;
                GetWindowRect(control, &at);
                auto& whole = *reinterpret_cast<Place*>(data);
                whole.inside = whole.inside && at.left >= whole.outer.left && at.right <= whole.outer.right &&
                               at.top >= whole.outer.top && at.bottom <= whole.outer.bottom;
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&place));
        check(place.inside, "all controls are inside at a width of " + std::to_string(width));
        take_picture("trace_" + std::to_string(width));
    }
    // A monitor of another resolution.
    const RECT doubled{10, 10, 1210, 810};
    SendMessageW(window, WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&doubled));
    take_picture("trace_144_dots");

    press(window, "&Help"); // no help file is there, and nothing is shown
    check(IsWindow(window), "the window is open after Help");
    press(window, "&Page");
    wchar_t temporary[MAX_PATH + 1];
    GetTempPathW(MAX_PATH, temporary);
    const std::wstring page = std::wstring(temporary) + L"Quexel Trace.html";
    check(wait_until([&] { return GetFileAttributesW(page.c_str()) != INVALID_FILE_ATTRIBUTES; }),
          "the page is written");
    press(window, "&Close");
    check(wait_closed(trace_title), "Close closes the window");
}

/// A list of ten thousand inputs.
void use_long_trace() {
    const HWND window = find_window(trace_title);
    const Tree tree(window);
    const auto below = [&](HTREEITEM item, const std::string& name) {
        for (HTREEITEM child = tree.next(TVGN_CHILD, item); child != nullptr; child = tree.next(TVGN_NEXT, child))
            if (tree.name(child) == name) return child;
        check(false, "there is a line " + name);
        return item;
    };
    check(tree.is_open(tree.root()), "a single root is open");
    const HTREEITEM inputs = below(tree.root(), "Inputs");
    SendMessageW(tree.window(), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(inputs));
    const HTREEITEM values = below(inputs, "Values");
    check(tree.count() < 100, "the tree is filled as it is opened");
    SendMessageW(tree.window(), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(values));
    check(tree.count() < 5000, "a long list does not keep the user waiting");
    check(wait_until([&] { return tree.children(values) > 10'000; }), "the rest follows");
    HTREEITEM item = tree.next(TVGN_CHILD, values);
    bool in_order = true;
    for (int number = 1; number <= 10'000 && item != nullptr; ++number, item = tree.next(TVGN_NEXT, item))
        in_order =
            in_order && (number % 1000 > 1 || tree.text(item).starts_with("Values(" + std::to_string(number) + ")\t"));
    check(in_order, "forwards and in order");
    PostMessageW(window, WM_COMMAND, IDCANCEL, 0); // the Escape key
    check(wait_closed(trace_title), "Escape closes the window");
}

void use_empty_trace() {
    const HWND window = find_window(trace_title);
    const Tree tree(window);
    check(tree.outline() == "Nothing To Report\n", "an empty trace: " + tree.outline());
    press(window, "&Close");
    check(wait_closed(trace_title), "Close closes the window");
}

// --- Find and replace
// ----------------------------------------------------------------------------------------------------

constexpr const wchar_t* find_title = L"Quexel Find / Replace";
constexpr int find_field = 110, replace_field = 111, where_field = 112, change_list = 113, status_field = 114;

void use_find_and_replace() {
    const HWND window = find_window(find_title);
    const auto field = [&](int number) { return GetDlgItem(window, number); };
    const auto type = [&](int number, const wchar_t* text) {
        SendMessageW(field(number), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    };
    const auto lines = [&] { return SendMessageW(field(change_list), LVM_GETITEMCOUNT, 0, 0); };
    check(text_of(field(where_field)) == "WorkSheet", "where it looks at first");
    for (const char* const label : {"Find:", "Replace:", "Where:", "&Find", "&Replace", "&Undo", "&Close"})
        check(child(window, label) != nullptr, std::string("shows ") + label);
    press(window, "&Find");
    check(text_of(field(status_field)) == "Error: Find text must not be the empty string!", "an empty text is refused");
    type(find_field, L"(\\d)0");
    type(replace_field, L"$1_");
    press(window, "&Find");
    check(text_of(field(status_field)) == "Find:(\\d)0\nReplace:$1_\n3 of 3 filled cells would change.",
          "the status: " + text_of(field(status_field)));
    check(lines() == 3, "the changes are listed");
    take_picture("find_replace");
    check(column_a[1] == "=DpD(B2,30)", "nothing is written yet");
    press(window, "&Replace");
    check(column_a[1] == "=DpD(B2,3_)" && column_a[2] == "12_0", "the changes are written");
    check(lines() == 0 && IsWindowEnabled(child(window, "&Undo")), "they can be undone");
    press(window, "&Undo");
    check(column_a[1] == "=DpD(B2,30)" && column_a[2] == "1200", "the former contents are back");
    check(!IsWindowEnabled(child(window, "&Undo")), "once");
    type(find_field, L"(");
    press(window, "&Find");
    check(text_of(field(status_field)).starts_with("Error: "), "a broken expression leaves the window open");
    press(window, "&Close");
    check(wait_closed(find_title), "Close closes the window");
}

// --- The steps
// -----------------------------------------------------------------------------------------------------------

template <class Routine>
Routine* find(HMODULE addin, const char* name) {
    return reinterpret_cast<Routine*>(reinterpret_cast<void*>(GetProcAddress(addin, name)));
}

void run(const char* library) {
    set_callback(&serve);
    const HMODULE addin = LoadLibraryA(library);
    if (addin == nullptr) throw std::runtime_error("cannot load " + std::string(library));
    const auto command = [&](const char* name) { check(find<int()>(addin, name)() == 0, name); };
    const auto call = [&](const char* name, double argument) {
        OPER cell = number_cell(argument);
        return find<OPER*(OPER*)>(addin, name)(&cell);
    };
    const auto used_by = [](void (*user)(), const std::function<void()>& work) {
        std::thread thread(user);
        work();
        thread.join();
    };

    find<int()>(addin, "xlAutoOpen")();
    check(!menu.empty() && menu[0] == "Quexel", "the menu is made");
    used_by(use_trace_of_a_failure, [&] {
        command("CPPQX_TraceOn");
        call("XLDYear", 38000);
        call("XLMonthEnd", -1); // shows the trace
    });
    used_by(use_long_trace, [&] {
        command("CPPQX_TraceOn");
        std::vector<OPER> numbers;
        for (int i = 1; i <= 10'000; ++i) numbers.push_back(number_cell(i));
        OPER list = array_cell(numbers.data(), static_cast<int>(numbers.size()), 1);
        check(find<OPER*(OPER*)>(addin, "XLSumPos")(&list)->val.num == 50'005'000.0, "the sum of 1 to 10,000");
        command("CPPQX_TraceShow");
    });
    used_by(use_empty_trace, [&] {
        command("CPPQX_TraceOn");
        command("CPPQX_TraceShow");
    });
    used_by(use_find_and_replace, [&] { command("CPPQX_FindReplace"); });
    find<int()>(addin, "xlAutoClose")();
    check(menu.empty(), "the menu is gone");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "windows QuexelLb.xll FOLDER\n";
        return 2;
    }
    folder = argv[2];
    try {
        run(argv[1]);
    } catch (const std::exception& error) {
        check(false, error.what());
    }
    std::cout << passed << " passed, " << failed << " failed\n";
    return failed == 0 ? 0 : 1;
}
