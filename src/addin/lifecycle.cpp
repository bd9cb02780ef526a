#include "addin/lifecycle.h"

#include "addin/routines/any_cells.h"

#include "addin/cells.h"
#include "addin/host.h"
#include "addin/menu.h"
#include "addin/registration.h"
#include "addin/routines/goal_seeks.h"
#include "core/logs.h"
#include "core/trace.h"
#include "core/utilities.h"
#include "numerics/random.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace qx {

namespace {

constexpr char title[] = "\006Quexel"; // a counted text
constexpr int alert_information = 2;
constexpr int most_replacements = 100;

std::string the_help_file;

void replace_all(std::string& text, std::string_view from, std::string_view to) {
    std::size_t at = 0;
    for (int i = 0; i < most_replacements && (at = text.find(from, at)) != std::string::npos; ++i) {
        text.replace(at, from.size(), to);
        at += to.size();
    }
}

/// Asks the host for the add-in's full path.
void ask_path(HostCell& path) {
    if (Excel(xlGetName, path.get(), 0) != xlretSuccess || path->type() != xltypeStr)
        throw std::runtime_error("the host does not give the add-in's path");
}

/// Registers one row. Returns 0, or the code that the host gave.
int register_row(OPER* path, const RegisterRow& row, const std::string& help) {
    auto texts = row.columns();
    texts[column_topic].insert(0, help);
    OPER* arguments[1 + passed_columns] = {path};
    for (int i = 0; i < passed_columns; ++i) arguments[1 + i] = TempStr(texts[i]);
    OPER id = nil_cell();
    const int code = excel_call(xlfRegister, &id, 1 + passed_columns, arguments);
    if (code != xlretSuccess) return code;
    return id.type() == xltypeErr ? id.val.err : 0;
}

/// The rows that the host has refused: each is traced, and the user sees them in one box.
class Failures {
  public:
    void add(int number, int code) {
        trace().TraceOn();
        trace().error("REG01", "Error: Failed to register function");
        if (++count_ > shown) return;
        char text[100];
        std::snprintf(text, sizeof text, "xlfRegister failed to register function number %d,255, err = %d", number,
                      code);
        if (count_ > 1) text_ += '\n';
        text_ += text;
    }
    bool any() const { return count_ > 0; }
    void tell() const {
        if (any())
            message_box("Quexel",
                        count_ <= shown ? text_ : text_ + "\nand " + std::to_string(count_ - shown) + " more");
    }

  private:
    static constexpr int shown = 10;
    int count_ = 0;
    std::string text_;
};

/// The log of the start; silent unless asked for.
class StartLog {
  public:
    StartLog(bool wanted, const std::string& addin) {
        if (!wanted) return;
        log_.open("AutoOpen", addin.substr(0, addin.find_last_of("/\\") + 1));
        log_.writeline("Commencing QuexelLB.xll: AutoOpen");
    }
    void write(const std::string& text) { log_.writeline(text); }

  private:
    LogFile log_;
};

void open_steps(bool with_log) {
    HostCell path;
    ask_path(path);
    StartLog log(with_log, text_in(*path));

    GoalSeekRegistering = false;

    log.write("Setting Help File ...");
    HostCell again;
    ask_path(again);
    the_help_file = help_file_of(text_in(*again));

    log.write("Establishing nFuncs ...");
    const auto& rows = the_register();

    log.write("Registering Functions ...");
    Failures failures;
    int number = 0;
    for (const RegisterRow& row : rows) {
        ++number;
        const int code = register_row(path.get(), row, the_help_file);
        if (code == 0) continue;
        failures.add(number, code);
        log.write("Failed to Register Function number " + std::to_string(number));
    }
    path.free();
    failures.tell();
    log.write(failures.any() ? "Warning: Failed to one or more Register Functions"
                             : "Success: " + std::to_string(rows.size()) + " functions registered OK");

    log.write("Initialising QX Random Number Generator ...");
    seed_random(default_seed);

    log.write("Initialising Save Vars ...");
    clear_formula_variables();

    add_menu();

    log.write("All done.  Closing Log File.");
}

} // namespace

std::string help_file_of(std::string_view addin) {
    // Upper-casing also meets folders' names, which no Windows file system minds.
    static constexpr std::string_view replacements[][2] = {
        {".xll", ".XLL"},
        {"quexel", "QUEXEL"},
        {"Quexel", "QUEXEL"},
        {"lb", "LB"},
        {"Lb", "LB"},
        {"lB", "LB"},
        {"QUEXELLB.XLL", "\\Help\\Quexel.chm"},
    };
    std::string path(addin);
    for (const auto& [from, to] : replacements) replace_all(path, from, to);
    return path;
}

const std::string& help_file() { return the_help_file; }

void open_addin(bool with_log) {
    try {
        open_steps(with_log);
    } catch (...) {
        Excel(xlcAlert, nullptr, 2,
              TempStr("Quexel Error: Exception thrown whilst loading functions, we suggest to contact support."),
              TempInt(alert_information));
    }
}

} // namespace qx

using namespace qx;

extern "C" {

int xlAutoOpen() {
    open_addin(false);
    return 1;
}

int xlAutoClose() {
    remove_menu();
    large_number_watch().close();
    for (const RegisterRow& row : the_register()) Excel(xlfSetName, nullptr, 1, TempStr(row.name()));
    return 1;
}

int xlAutoRemove() {
    Excel(xlcAlert, nullptr, 2, TempStr("Quexel removed.  You can reload it using the Tools/Add-Ins menu."),
          TempInt(alert_information));
    return 1;
}

OPER* xlAddInManagerInfo(OPER* action) {
    static unsigned char text[sizeof title];
    static OPER result;
    OPER number = nil_cell();
    if (Excel(xlCoerce, &number, 2, action, TempInt(xltypeInt)) == xlretSuccess && number.type() == xltypeInt &&
        number.val.w == 1) {
        std::copy(std::begin(title), std::end(title), text);
        result = {{.str = text}, xltypeStr};
    } else {
        result = error_cell(xlerrValue);
    }
    return &result;
}

} // extern "C"

QX_COMMAND(xlAutoClose, "Takes every function and command of Quexel out of the host") {
    HostCell path;
    Excel(xlGetName, path.get(), 0);
    for (const RegisterRow& row : the_register()) {
        OPER id = nil_cell();
        if (Excel(xlfRegisterId, &id, 2, path.get(), TempStr(row.procedure())) == xlretSuccess)
            Excel(xlfUnregister, nullptr, 1, &id);
    }
    path.free();
    xlAutoClose();
    return 0;
}
