#include "addin/menu.h"

#include "addin/excel_operations.h"
#include "addin/host.h"
#include "addin/registration.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

namespace {

constexpr int worksheet_bar = 10;
constexpr int menu_columns = 5; ///< name, command, shortcut, text of the status bar, help topic
constexpr const char* title = "Quexel";

struct Entry {
    const char* name; ///< "-" for a line between groups
    const char* command = nullptr;
};

constexpr Entry entries[] = {
    {"Trace &On", "CPPQX_TraceOn"},
    {"&Show Trace", "CPPQX_TraceShow"},
    {"-"},
    {"&Collect Goal Seeks", "CPPQX_GoalSeekInit"},
    {"Run &Goal Seeks", "CPPQX_GoalSeek"},
    {"-"},
    {"&Find / Replace...", "CPPQX_FindReplace"},
    {"Seed &Random Numbers", "CPPQX_SetSemiRandom"},
    {"Calculation &Monitor On", "CPPQX_CalcMonOn"},
    {"Calculation Monitor O&ff", "CPPQX_CalcMonOff"},
    {"-"},
    {"&Help", "CPPQX_Help"},
    {"Help on This &Cell", "CPPQX_ContextHelp"},
    {"-"},
    {"&Unload Quexel", "CPPQX_xlAutoClose"},
};

/// A table of texts as a cell.
class TextTable {
  public:
    void add_row(std::initializer_list<std::string_view> row) {
        for (const std::string_view text : row) {
            std::string counted(1,
                                static_cast<char>(static_cast<unsigned char>(std::min<std::size_t>(text.size(), 255))));
            texts_.push_back(counted.append(text.substr(0, 255)));
        }
    }
    OPER* cell() {
        cells_.clear();
        for (std::string& text : texts_)
            cells_.push_back({{.str = reinterpret_cast<unsigned char*>(text.data())}, xltypeStr});
        table_ = array_cell(cells_.data(), static_cast<int>(cells_.size()) / menu_columns, menu_columns);
        return &table_;
    }

  private:
    std::vector<std::string> texts_;
    std::vector<OPER> cells_;
    OPER table_ = nil_cell();
};

} // namespace

void add_menu() {
    remove_menu(); // of a session that did not end well
    TextTable menu;
    menu.add_row({title, "", "", "", ""});
    for (const Entry& entry : entries) {
        std::string_view help;
        for (const Command* command = all_commands(); command != nullptr; command = command->next)
            if (entry.command != nullptr && std::string_view(entry.command) == command->name) help = command->help;
        menu.add_row({entry.name, entry.command == nullptr ? "" : entry.command, "", help, ""});
    }
    OPER bar = number_cell(worksheet_bar);
    HostCell position;
    Excel(xlfAddMenu, position.get(), 2, &bar, menu.cell());
}

void remove_menu() {
    OPER bar = number_cell(worksheet_bar);
    HostCell gone;
    Excel(xlfDeleteMenu, gone.get(), 2, &bar, TempStr(title));
}

} // namespace qx
