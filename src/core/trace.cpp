#include "core/trace.h"

#include <algorithm>

namespace qx {

namespace {

constexpr std::size_t chunk_size = 1 << 20;

} // namespace

clsTrace2& trace() {
    static clsTrace2 the_trace;
    return the_trace;
}

void clsTrace2::TraceStart(bool with_file) {
    if (TraceMuted) return;
    timer_.reset(true);
    tracing = false;
    if (with_file)
        file_.open("Trace");
    else
        file_.close();
    if (!items_) items_.reset(new Item[maxitems + 2]);
    if (chunks_.size() > 1) chunks_.resize(1);
    chunk_at_ = chunks_.empty() ? nullptr : chunks_.front().get();
    chunk_left_ = chunks_.empty() ? 0 : chunk_size;
    count_ = 0;
    file_full_ = false;
    atfunctionstart = false;
    stackflag = false;
    file_begun_ = file_.isopen();
    file_warning_ = with_file && !file_begun_;
    FunctionContext::forget_texts();
    tracing = true;
}

void clsTrace2::TraceShow() {
    if (!tracing || TraceMuted) return;
    file_.close();
    tracing = false;
    if (viewer != nullptr) viewer(*this);
    count_ = 0;
}

void clsTrace2::prepare_viewing() {
    if (!items_) items_.reset(new Item[maxitems + 2]);
    if (count_ == 0) {
        count_ = 1;
        store("Nothing To Report\t\tIt may be that there are no Quexel Functions in the cells selected, or that the "
              "function selected has no Trace output to report.  Please make sure that the cursor (the highlighted "
              "rectangle) is over a cell that contains a Quexel Function before calling Trace.",
              TraceKind::info, 1);
    }
    timer_.stop();
    summary_ = stackflag ? "Error: Excel Stack became dangerously low, " + std::to_string(count_) + " items"
                         : std::to_string(timer_.milliseconds()) + " msecs " + std::to_string(count_) + " lines ";
}

std::string_view clsTrace2::text(int item) const {
    if (item < 1 || item > std::min(count_, maxitems)) return {};
    return {items_[item].text, items_[item].length};
}

std::string_view clsTrace2::full_text(int item) const {
    const std::string_view plain = text(item);
    if (plain.empty() || items_[item].full_length == 0) return plain;
    return {plain.data() + plain.size(), items_[item].full_length};
}

int clsTrace2::level(int item) const {
    if (item < 1 || !items_) return 0;
    return items_[std::min(item, maxitems)].level;
}

TraceKind clsTrace2::kind(int item) const {
    return item < 1 || item > std::min(count_, maxitems) ? TraceKind::info : items_[item].kind;
}

char* clsTrace2::keep(std::size_t length) {
    if (length > chunk_left_) {
        const std::size_t size = std::max(chunk_size, length);
        chunks_.push_back(std::make_unique_for_overwrite<char[]>(size));
        chunk_at_ = chunks_.back().get();
        chunk_left_ = size;
    }
    char* const kept = chunk_at_;
    chunk_at_ += length;
    chunk_left_ -= length;
    return kept;
}

void clsTrace2::store(TraceText text, TraceKind kind, int level) {
    char* const kept = keep(text.text.size() + text.full.size());
    text.text.copy(kept, text.text.size());
    text.full.copy(kept + text.text.size(), text.full.size());
    items_[count_] = {kept, static_cast<std::uint32_t>(text.text.size()), static_cast<std::uint32_t>(text.full.size()),
                      level, kind};
}

int clsTrace2::additem(TraceText text, TraceKind kind, int levelchange, int absolutelevel) {
    if (!traced() || text.text.empty()) return currentlevel();
    if (!items_) items_.reset(new Item[maxitems + 2]); // switched on without a start
    if (count_ >= maxfileitems) {
        if (!file_full_) file_.write("Maximum number of lines exceeded (" + std::to_string(maxfileitems) + ")\r\n");
        file_full_ = true;
        return -1;
    }
    if (count_ == maxitems - 1) {
        ++count_;
        store("Max number of lines exceeded (" + std::to_string(maxitems) + ")", TraceKind::warning, 0);
        return 0;
    }
    ++count_;
    if (count_ < maxitems) {
        const int previous = count_ == 1 ? 0 : items_[count_ - 1].level;
        store(text, kind, absolutelevel >= 1 ? absolutelevel : previous + levelchange);
    }
    file_.write(text.text);
    file_.write("\r\n");
    if (file_warning_) { // after the first item, which is the root of the tree
        file_warning_ = false;
        const int level_of_item = currentlevel();
        warning("Failed to open log file:" + file_.name() + "(fail error)");
        return level_of_item;
    }
    return currentlevel();
}

void clsTrace2::changelevel(int delta) {
    if (traced() && count_ >= 1 && count_ < maxitems) items_[count_].level += delta;
}

void clsTrace2::setlevel(int saved) {
    if (saved != -1 && count_ >= 1 && count_ < maxitems) items_[count_].level = saved;
}

int clsTrace2::add(TraceKind kind, int levelchange, int absolutelevel, std::initializer_list<TraceText> pieces) {
    if (!traced()) return -1;
    switch (kind) {
    case TraceKind::external_call:
        atfunctionstart = true;
        break;
    case TraceKind::function_call:
    case TraceKind::array_call:
    case TraceKind::if_clause:
    case TraceKind::loop_pass:
        atfunctionstart = false;
        break;
    default:
        break;
    }
    scratch_.clear();
    full_scratch_.clear();
    bool differs = false;
    for (const TraceText& piece : pieces) {
        scratch_ += piece.text;
        differs = differs || !piece.full.empty();
    }
    TraceText text(scratch_);
    if (differs) {
        for (const TraceText& piece : pieces) full_scratch_ += piece.in_full();
        text.full = full_scratch_;
    }
    return additem(text, kind, levelchange, absolutelevel);
}

int clsTrace2::opening(std::string_view name, TraceText description, TraceKind kind) {
    return add(kind, +1, -1, {name, "\t\t", description});
}

int clsTrace2::error(std::string_view label, std::string_view message) {
    return add(TraceKind::error, 0, -1, {"Error\t", label, "\t", message});
}
int clsTrace2::info(TraceText text) { return text.text.empty() ? -1 : add(TraceKind::info, 0, -1, {"Info\t\t", text}); }
int clsTrace2::warning(TraceText text) {
    return text.text.empty() ? -1 : add(TraceKind::warning, 0, -1, {"Warning\t\t", text});
}
int clsTrace2::change_note(int number, std::string_view text) {
    return traced() ? add(TraceKind::info, 0, -1, {"PECB\t", std::to_string(number), "\t", text}) : -1;
}
int clsTrace2::elapsed_msecs(std::string_view text) {
    if (!traced()) return -1;
    return add(TraceKind::elapsed, 0, -1, {"Elapsed msecs\t", std::to_string(TraceTimer().milliseconds()), "\t", text});
}
int clsTrace2::external_call(std::string_view function) {
    return add(TraceKind::external_call, +1, -1,
               {function, "\t\tExternal Function Call from Excel. Initialization follows, before call of the main ",
                function, " function.  Click the + sign to find out more."});
}
int clsTrace2::inputs() {
    return opening("Inputs",
                   "These are the inputs to the functions as provided by Excel and interpreted by the Quexel "
                   "initialization routine.",
                   TraceKind::arguments);
}
int clsTrace2::inputs_concluded(std::string_view function) {
    return add(TraceKind::returning, -1, -1, {"Inputs concluded for ", function});
}
int clsTrace2::variable(std::string_view name) { return add(TraceKind::variable, +1, -1, {name}); }
int clsTrace2::function_call(std::string_view function) {
    return opening(function, "Function Call.", TraceKind::function_call);
}
int clsTrace2::internal_call(std::string_view function) {
    return opening(function, "Call of an internal function.", TraceKind::internal_call);
}
int clsTrace2::array_call(std::string_view function) {
    return opening(function, "Array Function Call.", TraceKind::array_call);
}
int clsTrace2::arguments() { return opening("Arguments", "The Inputs to the function.", TraceKind::arguments); }
int clsTrace2::range_screening() {
    return opening("Range Screening", "Processing the input ranges to check for validity and consistency.",
                   TraceKind::range_screening);
}
int clsTrace2::if_block(TraceText text) { return opening("If Block", text, TraceKind::if_clause); }
int clsTrace2::if_clause(TraceText text) { return opening("If Clause", text, TraceKind::if_clause); }
int clsTrace2::timeperiod_loop(std::string_view label, TraceText text) {
    return opening(label, text, TraceKind::timeperiod_loop);
}
int clsTrace2::loop_pass(int index, TraceText text) {
    return traced() ? add(TraceKind::loop_pass, +1, -1, {"Loop Pass\t", std::to_string(index), "\t", text}) : -1;
}
int clsTrace2::returning(std::string_view function, int savedlevel) {
    if (traced() && count_ > maxitems) return currentlevel();
    if (function.empty()) return add(TraceKind::returning, -1, savedlevel, {"Returning"});
    return add(TraceKind::returning, -1, savedlevel, {"Returning\t\tReturning from ", function});
}
int clsTrace2::return_values() { return opening("Return Values", "", TraceKind::return_value); }

int clsTrace2::add_argument(std::string_view name, TraceText value, std::string_view description) {
    return add(TraceKind::argument, 0, -1, {name, "\t", value, "\t", description});
}

int clsTrace2::add_return_value(std::string_view name, TraceText value, std::string_view function, int savedlevel,
                                std::string_view text) {
    if (count_ > maxitems) return currentlevel();
    std::string label = name.empty() ? std::string("Return Value") : "Return Value (" + std::string(name) + ")";
    std::string_view from = function.empty() ? "" : "Returning from ";
    std::string_view stop = text.empty() ? "" : ". ";
    return add(TraceKind::return_value, -1, savedlevel, {label, "\t", value, "\t", from, function, stop, text});
}

int clsTrace2::add_element(int index, TraceText value) {
    return add(TraceKind::element, 0, -1, {"Return Value ", std::to_string(index), "\t", value, "\t"});
}

} // namespace qx
