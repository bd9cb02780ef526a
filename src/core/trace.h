// The trace: one calculation explained step by step, as items with a level that make a tree.
//
// Items are stored in memory for the viewer and written to qx_Trace.qxl as they come. Nesting is the level of the
// last item: an item that opens a block raises it, and a routine's Return Value brings it back to what the routine
// saved on entry. Callers test traced() before they build any text:
//
//     if (traced()) trace().info("The list is empty");
#pragma once

#include "core/context.h"
#include "core/logs.h"
#include "core/utilities.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

/// The kind of an item, which is also the number of its icon.
enum class TraceKind : int {
    error = 0,
    function_call = 1,
    info = 2,
    return_value = 3,
    elapsed = 4,
    warning = 6,
    variable = 7,
    arguments = 8,
    range_screening = 9,
    external_call = 10,
    returning = 11,
    internal_call = 13,
    argument = 15,
    timeperiod_loop = 17,
    array_call = 18,
    if_clause = 19,
    loop_pass = 21,
    element = 23,
};

/// A string as the file has it, and with all digits of its numbers if that is another.
struct TraceText {
    std::string_view text, full;

    TraceText(const char* text) : text(text) {}
    TraceText(std::string_view text) : text(text) {}
    TraceText(const std::string& text) : text(text) {}
    TraceText(const Wording& wording) : text(wording), full(wording.full) {}
    std::string_view in_full() const { return full.empty() ? text : full; }
};

class clsTrace2 {
  public:
    static constexpr int maxitems = 1'000'000;      ///< items kept in memory
    static constexpr int maxfileitems = 10'000'000; ///< items written to the file

    clsTrace2() = default;
    clsTrace2(const clsTrace2&) = delete;
    clsTrace2& operator=(const clsTrace2&) = delete;

    void TraceOn() { tracing = true; }
    void TraceOff() { tracing = false; }
    bool ison() const { return tracing; }
    /// Empties the store, opens the file qx_Trace.qxl unless only the store is wanted, and switches the trace on.
    /// Nothing while muted.
    void TraceStart(bool with_file = true);
    /// Ends a running trace: closes the file, shows the viewer if there is one, then empties the store.
    void TraceShow();

    int currentlevel() const { return level(count_); }
    /// Stores one item. A level of at least 1 in absolutelevel is taken as it is; otherwise the level is that of
    /// the last item plus levelchange. Returns the item's level.
    int additem(TraceText text, TraceKind kind, int levelchange, int absolutelevel = -1);
    /// Adds to the level of the last item: closes a block without an item of its own.
    void changelevel(int delta);
    /// Sets the level of the last item to a saved one, unless that is -1.
    void setlevel(int saved);

    // The named adders. Each returns the level of its item, or -1 with nothing stored while not traced().
    int error(std::string_view label, std::string_view message);
    int info(TraceText text);
    int warning(TraceText text);
    int change_note(int number, std::string_view text); ///< a "Change in Behaviour" note
    int elapsed_msecs(std::string_view text);
    int external_call(std::string_view function);
    int inputs();
    int inputs_concluded(std::string_view function);
    int variable(std::string_view name);
    int function_call(std::string_view function);
    int internal_call(std::string_view function);
    int array_call(std::string_view function);
    int arguments();
    int range_screening();
    int if_block(TraceText text);
    int if_clause(TraceText text);
    int timeperiod_loop(std::string_view label, TraceText text);
    int loop_pass(int index, TraceText text);
    int returning(std::string_view function, int savedlevel = -1);
    int return_values();

    template <class T>
    int argument(std::string_view name, const T& value, std::string_view description = {}) {
        return traced() ? add_argument(name, text_of(value), description) : -1;
    }
    /// The value that a routine returns under a name, bringing the level back to the saved one.
    template <class T>
    int return_value(std::string_view name, const T& value, std::string_view function, int savedlevel = -1,
                     std::string_view text = {}) {
        return traced() ? add_return_value(name, text_of(value), function, savedlevel, text) : -1;
    }
    template <class T>
    int return_value(const T& value, std::string_view function, int savedlevel = -1) {
        return traced() ? add_return_value({}, text_of(value), function, savedlevel, {}) : -1;
    }
    /// The result of a worksheet call.
    template <class T>
    int result(const T& value) {
        return traced() ? add_return_value({}, text_of(value), {}, -1, {}) : -1;
    }
    /// One element of a returned list.
    template <class T>
    int element(int index, const T& value) {
        return traced() ? add_element(index, text_of(value)) : -1;
    }

    // The store, for viewers and tests: items 1 to count(), of which the first maxitems have text.
    int count() const { return count_; }
    /// Nothing more is stored or written, so that texts for it need not be made.
    bool full() const { return file_full_; }
    std::string_view text(int item) const;
    std::string_view full_text(int item) const; ///< with all digits of its numbers
    int level(int item) const;
    TraceKind kind(int item) const;
    const std::string& summary() const { return summary_; }
    bool atfunctionstart = false;
    bool stackflag = false; ///< tracing met a stack that ran low
    /// The file of the last trace, and true if all its items are in there. Final once the viewer is shown.
    const std::string& file_name() const { return file_.name(); }
    bool file_begun() const { return file_begun_; }
    bool file_complete() const { return file_.complete(); }

    /// Shows the tree; called by TraceShow while the store is still full.
    using Viewer = void (*)(clsTrace2&);
    Viewer viewer = nullptr;

    /// What the viewer does first: an empty store gets its "Nothing To Report" item, and the summary is made.
    void prepare_viewing();

    /// The description of an argument of a routine, set by whoever knows the worksheet functions.
    using Describer = std::string_view (*)(std::string_view function, std::string_view argument);
    Describer describe_argument = nullptr;
    /// The name of argument number `cell` (from 0) of a worksheet function, by the same.
    using Namer = std::string_view (*)(std::string_view function, int cell);
    Namer declared_name = nullptr;

  private:
    struct Item {
        const char* text;
        std::uint32_t length;
        std::uint32_t full_length; ///< of the text with all digits, which follows; 0 if it is the same
        std::int32_t level;
        TraceKind kind;
    };

    int add_argument(std::string_view name, TraceText value, std::string_view description);
    int add_return_value(std::string_view name, TraceText value, std::string_view function, int savedlevel,
                         std::string_view text);
    int add_element(int index, TraceText value);
    int add(TraceKind kind, int levelchange, int absolutelevel, std::initializer_list<TraceText> pieces);
    int opening(std::string_view name, TraceText description, TraceKind kind);
    void store(TraceText text, TraceKind kind, int level);
    char* keep(std::size_t length);

    int count_ = 0;
    bool file_full_ = false;
    bool file_begun_ = false;       ///< the file could be opened
    bool file_warning_ = false;     ///< it could not, and no item says so yet
    std::unique_ptr<Item[]> items_; ///< made by the first trace; index 0 is not used
    std::vector<std::unique_ptr<char[]>> chunks_;
    std::size_t chunk_left_ = 0;
    char* chunk_at_ = nullptr;
    std::string scratch_, full_scratch_;
    std::string summary_;
    LogFile file_;
    clsTimer timer_; ///< since the trace began; TraceTimer() is of the call at work
};

/// The one trace of the process.
clsTrace2& trace();

} // namespace qx
