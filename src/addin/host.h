// The host: everything that the library needs of a spreadsheet goes through one routine, Excel().
//
// A host derives from Host, serves the operations of oper.h and sets itself with set_host(). Without a host every
// operation fails with xlretFailed.
#pragma once

#include "addin/oper.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace qx {

/// What to open of a help file: its first page, or the page of a topic's number. The values are the platform's.
enum class HelpPage { first = 0, topic = 15 };

class Host {
  public:
    virtual ~Host() = default;
    /// One operation: its number, the cell for the result (may be null), the arguments. Returns xlret bits.
    virtual int call(int xlfn, OPER* result, int count, OPER* const* arguments) = 0;
    /// Text for whoever debugs the add-in; dropped unless a host shows it.
    virtual void debug(std::string_view) {}
    /// A message to the user outside any calculation's result; dropped unless a host shows it.
    virtual void message_box(std::string_view /*title*/, std::string_view /*text*/) {}
    /// Opens a help file with the platform's viewer; nothing unless a host has one.
    virtual void show_help(std::string_view /*file*/, HelpPage, std::string_view /*topic*/) {}
};

/// Sets the host of the process and returns the former one. A null pointer sets none.
Host* set_host(Host* host);

/// Calls the host. A null argument fails with xlretFailed before the host is asked; a failure is reported to the
/// debug stream; the temporary memory is emptied whatever the outcome.
int excel_call(int xlfn, OPER* result, int count, OPER* const* arguments);

template <class... Cells>
int Excel(int xlfn, OPER* result, int count, Cells*... cells) {
    OPER* const arguments[] = {cells..., nullptr};
    return excel_call(xlfn, result,
                      count < static_cast<int>(sizeof...(cells)) ? count : static_cast<int>(sizeof...(cells)),
                      arguments);
}

/// Has the host evaluate a string as a formula, for which it may call back functions of the library. A string longer
/// than a cell's fails with xlretFailed.
int evaluate_text(OPER* result, std::string_view text);
/// True within evaluate_text() on the thread that has called it.
bool evaluating_text();

/// The words of a host's return code, as "uncalced cell".
const char* host_return_text(int code);

/// Shows a message box, if the host has any.
void message_box(std::string_view title, std::string_view text);

/// Opens a help file, if the host can.
void show_help(std::string_view file, HelpPage page, std::string_view topic);

/// True if at least 10 kilobytes of stack are left, by the host's word. If not, and unless quiet, the user is informed.
bool stackok(std::string_view name, bool quiet);

// Temporary memory: arguments of one host call, in an arena of the calling thread. Emptied by every host call.
OPER* TempStr(std::string_view text); ///< a counted string, cut at 200 characters
OPER* TempInt(int value);
void free_temporary_memory();
std::size_t temporary_memory_used();

/// A cell that the host filled and owns: freed with xlFree at the end of its scope.
class HostCell {
  public:
    HostCell() = default;
    HostCell(const HostCell&) = delete;
    HostCell& operator=(const HostCell&) = delete;
    ~HostCell() { free(); }
    OPER* get() { return &cell_; }
    OPER& operator*() { return cell_; }
    OPER* operator->() { return &cell_; }
    void free();

  private:
    OPER cell_ = nil_cell();
};

} // namespace qx
