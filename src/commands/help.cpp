// Commands that open the help.
#include "addin/cells.h"
#include "addin/lifecycle.h"
#include "addin/registration.h"

using namespace qx;

namespace {

/// The mark of a caller that is no cell: a row of four numbers that begins with 9, 10 and 0.
bool has_no_topic(const OPER& caller) {
    if (caller.type() != xltypeMulti || caller.val.array.rows != 1 || caller.val.array.columns != 4) return false;
    const OPER* const cells = caller.val.array.lparray;
    for (int i = 0; i < 4; ++i)
        if (cells[i].type() != xltypeNum) return false;
    return cells[0].val.num == 9.0 && cells[1].val.num == 10.0 && cells[2].val.num == 0.0;
}

std::string topic_of_caller() {
    HostCell caller;
    if (Excel(xlfCaller, caller.get(), 0) != xlretSuccess || has_no_topic(*caller)) return {};
    HostCell text;
    if (Excel(xlCoerce, text.get(), 2, caller.get(), TempInt(xltypeStr)) != xlretSuccess || text->type() != xltypeStr)
        return {};
    return text_in(*text);
}

} // namespace

QX_COMMAND(Help, "Opens the help") {
    try {
        show_help(help_file(), HelpPage::first, {});
    } catch (...) {} // a help that does not open is the platform's to report
    return 0;
}

QX_COMMAND(ContextHelp, "Opens the help at the topic that the calling cell holds") {
    try {
        show_help(help_file(), HelpPage::topic, topic_of_caller());
    } catch (...) {}
    return 0;
}
