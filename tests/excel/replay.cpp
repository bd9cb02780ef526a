// A small Excel: loads the add-in, opens it, compares what it registers with the golden register, repeats the worksheet
// calls of a transcript, and closes it.
//
//     replay QuexelLb.xll registration.tsv transcript
//
// Dates, integers, texts and errors must come out as in the transcript to the bit, other numbers within 1e-12 of it.
#include "addin/excel_operations.h"
#include "excel/transcript.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iostream>
#include <map>
#include <set>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

using namespace qx;

extern "C" {
using Callback = int (*)(int xlfn, OPER* result, int count, OPER* const* arguments);
__declspec(dllimport) void set_callback(Callback callback);
}

namespace {

int passed = 0, failed = 0;

void check(bool good, const std::string& what) {
    ++(good ? passed : failed);
    if (!good && failed <= 50) std::cout << "FAILED: " << what << '\n';
}

std::string text_of(const OPER& cell) {
    return cell.type() == xltypeStr ? std::string(reinterpret_cast<const char*>(cell.val.str + 1), cell.val.str[0])
                                    : "";
}

std::vector<std::string> split(const std::string& line, char separator) {
    std::vector<std::string> parts(1);
    for (const char c : line) {
        if (c == separator)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

// --- What the add-in may ask
// ------------------------------------------------------------------------------------------

const std::string addin_path = "C:\\Models\\QuexelLb.xll";

struct {
    std::vector<std::vector<std::string>> rows; ///< of xlfRegister
    std::vector<std::string> forgotten;         ///< of xlfSetName
    std::vector<std::string> alerts;
    int unregistered = 0;
    std::set<const void*> lent;      ///< payloads that have to be given back
    std::vector<std::string> script; ///< questions of the transcript's present call, and the answers
    std::size_t asked = 0;
    std::string call; ///< the present call, for messages
} excel;

test::CellReader& cells() {
    static test::CellReader reader;
    return reader;
}

bool alike(double a, double b) {
    if (std::memcmp(&a, &b, sizeof a) == 0 || a == b) return true;
    if (std::trunc(a) == a && std::trunc(b) == b) return false; // dates and integers
    return std::fabs(a - b) <= 1e-12 * std::fmax(std::fabs(a), std::fabs(b));
}

bool alike(const OPER& a, const OPER& b) {
    if (a.type() != b.type()) return false;
    if (a.type() == xltypeNum) return alike(a.val.num, b.val.num);
    if (a.type() != xltypeMulti) return test::written(a) == test::written(b);
    if (a.val.array.rows != b.val.array.rows || a.val.array.columns != b.val.array.columns) return false;
    for (int i = 0; i < a.val.array.rows * a.val.array.columns; ++i)
        if (!alike(a.val.array.lparray[i], b.val.array.lparray[i])) return false;
    return true;
}

/// A cell as a person reads it.
std::string shown(const OPER& cell) {
    if (cell.type() == xltypeNum) {
        char text[40];
        std::snprintf(text, sizeof text, "%.17g", cell.val.num);
        return text;
    }
    return cell.type() == xltypeStr ? '"' + text_of(cell) + '"' : test::written(cell);
}

/// Answers a question of a worksheet call as the transcript does.
int answer(int xlfn, OPER* result, int count, OPER* const* arguments) {
    if (excel.asked >= excel.script.size()) {
        check(false, excel.call + ": asks " + std::to_string(xlfn) + ", which the transcript does not");
        return xlretFailed;
    }
    const std::string& line = excel.script[excel.asked++];
    const std::size_t arrow = line.find(" -> ");
    const std::vector<std::string> question = split(line.substr(0, arrow), ' ');
    bool same = question.size() == static_cast<std::size_t>(count) + 2 && question[1] == std::to_string(xlfn);
    for (int i = 0; same && i < count; ++i) {
        std::string_view text = question[2 + i];
        same = alike(*arguments[i], cells().read(text));
    }
    check(same, excel.call + ": asks " + std::to_string(xlfn) + " in place of " + line);
    const std::vector<std::string> reply = split(line.substr(arrow + 4), ' ');
    const int code = std::stoi(reply[0]);
    if (code == xlretSuccess && result != nullptr) {
        std::string_view text = reply[1];
        *result = cells().read(text);
        if (result->type() == xltypeMulti || result->type() == xltypeStr || result->type() == xltypeRef) {
            excel.lent.insert(result->val.str); // any of the pointers
            result->xltype |= xlbitXLFree;
        }
    }
    return code;
}

OPER counted(const std::string& text) {
    static const char digits[] = "0123456789abcdef";
    std::string cell = "s";
    for (const unsigned char c : text) cell += {digits[c >> 4], digits[c & 15]};
    std::string_view rest = cell;
    return cells().read(rest);
}

int serve(int xlfn, OPER* result, int count, OPER* const* arguments) {
    switch (xlfn) {
    case xlFree:
        for (int i = 0; i < count; ++i)
            if (arguments[i]->xltype & xlbitXLFree) excel.lent.erase(arguments[i]->val.str);
        return xlretSuccess;
    case xlStack:
        *result = int_cell(32000);
        return xlretSuccess;
    case xlGetName:
        if (!excel.call.empty()) break;
        *result = counted(addin_path);
        return xlretSuccess;
    case xlfRegister: {
        std::vector<std::string>& row = excel.rows.emplace_back();
        for (int i = 0; i < count; ++i) row.push_back(text_of(*arguments[i]));
        *result = number_cell(static_cast<double>(excel.rows.size()));
        return xlretSuccess;
    }
    case xlfRegisterId:
        *result = number_cell(1.0);
        return xlretSuccess;
    case xlfUnregister:
        ++excel.unregistered;
        return xlretSuccess;
    case xlfSetName:
        excel.forgotten.push_back(text_of(*arguments[0]));
        return xlretSuccess;
    case xlcAlert:
        excel.alerts.push_back(text_of(*arguments[0]));
        return xlretSuccess;
    case xlfAddMenu:
    case xlfDeleteMenu:
        return xlretFailed; // no menus
    case xlCoerce:
        if (!excel.call.empty()) break;
        *result = int_cell(static_cast<int>(arguments[0]->val.num));
        return xlretSuccess;
    default:
        break;
    }
    return answer(xlfn, result, count, arguments);
}

// --- The steps
// ---------------------------------------------------------------------------------------------------------

std::set<std::string> exports_of(HMODULE module) {
    const auto* const base = reinterpret_cast<const unsigned char*>(module);
    const auto* const headers =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const auto* const table = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(
        base + headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
    const auto* const names = reinterpret_cast<const DWORD*>(base + table->AddressOfNames);
    std::set<std::string> found;
    for (DWORD i = 0; i < table->NumberOfNames; ++i) found.insert(reinterpret_cast<const char*>(base + names[i]));
    return found;
}

class Addin {
  public:
    explicit Addin(const char* file) : module_(LoadLibraryA(file)) {
        if (module_ == nullptr) throw std::runtime_error("cannot load " + std::string(file));
    }
    ~Addin() { FreeLibrary(module_); }
    HMODULE module() const { return module_; }

    template <class Routine>
    Routine* find(const std::string& name) const {
        void* const address = reinterpret_cast<void*>(GetProcAddress(module_, name.c_str()));
        if (address == nullptr) throw std::runtime_error("the add-in does not export " + name);
        return reinterpret_cast<Routine*>(address);
    }
    int run(const std::string& entry) const { return find<int()>(entry)(); }

    /// A worksheet call. A routine does not mind cells beyond those that it takes.
    const OPER* call(const std::string& function, std::vector<OPER>& arguments) const {
        OPER* c[29] = {};
        for (std::size_t i = 0; i < arguments.size(); ++i) c[i] = &arguments[i];
        using P = OPER*;
        return find<P(P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P)>(
            "XL" + function)(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], c[8], c[9], c[10], c[11], c[12], c[13],
                             c[14], c[15], c[16], c[17], c[18], c[19], c[20], c[21], c[22], c[23], c[24], c[25], c[26],
                             c[27], c[28]);
    }

  private:
    HMODULE module_;
};

std::vector<std::vector<std::string>> read_golden(const char* file) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream golden(file);
    for (std::string line; std::getline(golden, line);) {
        if (line.ends_with('\r')) line.pop_back();
        rows.push_back(split(line, '\t'));
    }
    return rows;
}

void compare_register(const std::vector<std::vector<std::string>>& golden) {
    constexpr std::size_t topic = 7, longest = 200, columns = 29;
    check(!golden.empty() && excel.rows.size() == golden.size(), std::to_string(excel.rows.size()) +
                                                                     " rows are registered, the golden register has " +
                                                                     std::to_string(golden.size()));
    for (std::size_t i = 0; i < std::min(golden.size(), excel.rows.size()); ++i) {
        std::vector<std::string> expected(golden[i].begin(), golden[i].begin() + columns);
        expected[topic].insert(0, "C:\\Models\\\\Help\\Quexel.chm");
        for (std::string& text : expected) text = text.substr(0, longest);
        expected.insert(expected.begin(), addin_path);
        check(excel.rows[i] == expected, "the registered row of " + golden[i][0]);
    }
}

void replay(const Addin& addin, const char* file) {
    std::ifstream transcript(file);
    std::vector<OPER> arguments;
    std::vector<std::string> call;
    int calls = 0;
    for (std::string line; std::getline(transcript, line);) {
        if (line.ends_with('\r')) line.pop_back();
        if (line.starts_with("call ") || line.starts_with("traced ")) {
            call = split(line, ' ');
            excel.script.clear();
        } else if (line.starts_with("ask ")) {
            excel.script.push_back(line);
        } else if (line.starts_with("result ")) {
            ++calls;
            arguments.clear();
            excel.call = call[1] + "(";
            for (std::size_t i = 2; i < call.size(); ++i) {
                std::string_view text = call[i];
                arguments.push_back(cells().read(text));
                excel.call += (i > 2 ? ", " : "") + shown(arguments.back());
            }
            excel.call += ")";
            excel.asked = 0;
            const bool traced = call[0] == "traced";
            if (traced) addin.run("CPPQX_TraceOn");
            const OPER* const result = addin.call(call[1], arguments);
            if (traced) addin.run("CPPQX_TraceShow");
            const std::string expected = line.substr(7);
            if (expected == "uncalculated" || result == nullptr) {
                check(expected == "uncalculated" && result == nullptr, excel.call + " waits, or should");
            } else {
                std::string_view text = expected;
                const OPER wanted = cells().read(text);
                check(alike(*result, wanted), excel.call + " = " + shown(*result) + ", should be " + shown(wanted));
            }
            check(excel.asked == excel.script.size(), excel.call + " asks less than the transcript");
            check(excel.lent.empty(), excel.call + " does not give back what the host has lent");
            excel.lent.clear();
            cells() = {};
        }
    }
    excel.call.clear();
    check(calls > 0, "the transcript has calls");
    std::cout << calls << " calls\n";
}

/// Lets no window of this thread be made: nobody is there to close one.
LRESULT CALLBACK refuse_windows(int code, WPARAM w, LPARAM l) {
    return code == HCBT_CREATEWND ? 1 : CallNextHookEx(nullptr, code, w, l);
}

void run(const char* library, const char* golden_file, const char* transcript) {
    SetWindowsHookExW(WH_CBT, &refuse_windows, nullptr, GetCurrentThreadId());
    set_callback(&serve);
    const auto golden = read_golden(golden_file);
    const Addin addin(library);

    std::set<std::string> expected = {"xlAutoOpen", "xlAutoClose", "xlAutoRemove", "xlAddInManagerInfo"};
    for (const auto& row : golden) expected.insert(row[0]);
    check(exports_of(addin.module()) == expected, "the exports are the functions, the commands and the entry points");

    OPER action = number_cell(1.0);
    auto* const manager_info = addin.find<OPER*(OPER*)>("xlAddInManagerInfo");
    check(text_of(*manager_info(&action)) == "Quexel", "the title");
    action = number_cell(2.0);
    check(manager_info(&action)->type() == xltypeErr, "no title for another action");

    check(addin.run("xlAutoOpen") == 1, "xlAutoOpen");
    compare_register(golden);
    replay(addin, transcript);

    for (const char* const command : {"CPPQX_CalcMonOn", "CPPQX_CalcMonOff", "CPPQX_GoalSeekInit", "CPPQX_GoalSeek"})
        check(addin.run(command) == 0, command);
    check(addin.run("xlAutoClose") == 1 && excel.forgotten.size() == golden.size(), "xlAutoClose forgets every name");
    check(addin.run("CPPQX_xlAutoClose") == 0 && excel.unregistered == static_cast<int>(golden.size()),
          "CPPQX_xlAutoClose takes out every row");
    check(addin.run("xlAutoRemove") == 1 && excel.alerts.size() == 1, "xlAutoRemove tells the user");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "replay QuexelLb.xll registration.tsv transcript\n";
        return 2;
    }
    try {
        run(argv[1], argv[2], argv[3]);
    } catch (const std::exception& error) {
        check(false, error.what());
    }
    std::cout << passed << " passed, " << failed << " failed\n";
    return failed == 0 ? 0 : 1;
}
