#include "addin/host.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <thread>

namespace qx {

namespace {

Host* the_host = nullptr;
std::atomic<std::thread::id> evaluator; ///< the thread whose text the host evaluates

constexpr std::size_t arena_size = 8192;
constexpr std::size_t longest_text = 200;

/// Cells and texts of one host call.
struct Arena {
    alignas(OPER) unsigned char memory[arena_size]{};
    std::size_t used = 0;

    void* take(std::size_t size) {
        const std::size_t start = (used + alignof(OPER) - 1) / alignof(OPER) * alignof(OPER);
        if (start + size > arena_size) return nullptr;
        used = start + size;
        return memory + start;
    }
};

constinit thread_local Arena the_arena{};

struct ReturnCode {
    int code;
    const char* debug;
    const char* text;
};

constexpr ReturnCode return_codes[] = {
    {xlretAbort, " Macro Halted\r", "macro halted"},
    {xlretInvXlfn, " Invalid Function Number\r", "invalid function number"},
    {xlretInvCount, " Invalid Number of Arguments\r", "invalid number of arguments"},
    {xlretInvXloper, " Invalid XLOPER\r", "invalid OPER structure"},
    {xlretStackOvfl, " Stack Overflow\r", "stack overflow"},
    {xlretFailed, " Command failed\r", "command failed"},
    {xlretUncalced, " Uncalced cell\r", "uncalced cell"},
};

void debug(std::string_view text) {
    if (the_host != nullptr) the_host->debug(text);
}

void debug_failure(int xlfn, int code) {
    if (the_host == nullptr) return;
    std::string text = "Error! Excel4(";
    if (xlfn & xlCommandBit) text += "xlCommand | ";
    if (xlfn & xlSpecialBit) text += "xlSpecial | ";
    if (xlfn & xlIntlBit) text += "xlIntl | ";
    if (xlfn & xlPromptBit) text += "xlPrompt | ";
    text += std::to_string(xlfn & 0x0fff) + ") callback failed:";
    for (const ReturnCode& known : return_codes)
        if (code & known.code) text += known.debug;
    debug(text);
}

} // namespace

Host* set_host(Host* host) {
    std::swap(the_host, host);
    return host;
}

int excel_call(int xlfn, OPER* result, int count, OPER* const* arguments) {
    int code = xlretFailed;
    if (std::find(arguments, arguments + count, nullptr) != arguments + count) {
        debug("Error! A zero parameter is being passed to Excel. Check memory...\r");
    } else {
        if (the_host != nullptr) code = the_host->call(xlfn, result, count, arguments);
        if (code != xlretSuccess) debug_failure(xlfn, code);
    }
    free_temporary_memory();
    return code;
}

int evaluate_text(OPER* result, std::string_view text) {
    constexpr std::size_t longest = 255;
    if (text.size() > longest) return xlretFailed;
    unsigned char counted[longest + 2];
    counted[0] = static_cast<unsigned char>(text.size());
    *std::copy(text.begin(), text.end(), counted + 1) = '\0';
    OPER formula{{.str = counted}, xltypeStr};
    struct Mark {
        Mark() { evaluator = std::this_thread::get_id(); }
        ~Mark() { evaluator = std::thread::id(); }
    } const mark;
    return Excel(xlfEvaluate, result, 1, &formula);
}

bool evaluating_text() {
    const std::thread::id thread = evaluator.load(std::memory_order_relaxed);
    return thread != std::thread::id() && thread == std::this_thread::get_id();
}

void message_box(std::string_view title, std::string_view text) {
    if (the_host != nullptr) the_host->message_box(title, text);
}

void show_help(std::string_view file, HelpPage page, std::string_view topic) {
    if (the_host != nullptr) the_host->show_help(file, page, topic);
}

bool stackok(std::string_view name, bool quiet) {
    constexpr int enough = 10;
    OPER left = nil_cell();
    if (Excel(xlStack, &left, 0) != xlretSuccess) return true; // a host that does not say
    const double bytes = left.type() == xltypeInt ? left.val.w : left.type() == xltypeNum ? left.val.num : 0.0;
    const int kilobytes = static_cast<int>(bytes / 1000.0);
    if (kilobytes >= enough) return true;
    if (!quiet)
        message_box("Quexel warning", "Stack getting low in " + std::string(name) + "." + std::to_string(kilobytes) +
                                          " kb left out of initial estimate of 44 kb.\n  We suggest you report this "
                                          "error to the Quexel support.");
    return false;
}

const char* host_return_text(int code) {
    if (code == xlretSuccess) return "success";
    for (const ReturnCode& known : return_codes)
        if (code == known.code) return known.text;
    return "unspecified xl code error.";
}

OPER* TempStr(std::string_view text) {
    const std::size_t length = std::min(text.size(), longest_text);
    auto* const cell = static_cast<OPER*>(the_arena.take(sizeof(OPER)));
    auto* const bytes = static_cast<unsigned char*>(the_arena.take(length + 2));
    if (cell == nullptr || bytes == nullptr) return nullptr;
    bytes[0] = static_cast<unsigned char>(length);
    std::memcpy(bytes + 1, text.data(), length);
    bytes[length + 1] = '\0';
    *cell = {{.str = bytes}, xltypeStr};
    return cell;
}

OPER* TempInt(int value) {
    auto* const cell = static_cast<OPER*>(the_arena.take(sizeof(OPER)));
    if (cell != nullptr) *cell = int_cell(value);
    return cell;
}

void free_temporary_memory() { the_arena.used = 0; }
std::size_t temporary_memory_used() { return the_arena.used; }

void HostCell::free() {
    if (cell_.type() == xltypeNil) return;
    OPER* const cell = &cell_;
    Excel(xlFree, nullptr, 1, cell); // a failure is of no consequence
    cell_ = nil_cell();
}

} // namespace qx
