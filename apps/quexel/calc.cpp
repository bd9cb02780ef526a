#include "apps/quexel/commands.h"
#include "apps/quexel/output.h"
#include "apps/quexel/report.h"
#include "apps/quexel/tracing.h"
#include "apps/quexel/what_if.h"

#include "core/logs.h"
#include "hosts/files/document.h"
#include "hosts/files/json.h"
#include "hosts/files/safe_file.h"
#include "hosts/sheet/csv.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <optional>
#include <unistd.h>
#include <unordered_set>

namespace qx::app {

using files::Document;
using files::FileError;
using sheet::Area;
using sheet::CellAddress;

namespace {

/// Shows how far a long calculation is, on a terminal only.
class Progress {
  public:
    explicit Progress(sheet::Workbook& book) : book_(book) {
        if (!isatty(STDERR_FILENO)) return;
        book_.progress = [this](std::size_t done, std::size_t all) {
            const auto now = std::chrono::steady_clock::now();
            if (now - last_ < std::chrono::milliseconds(300)) return;
            last_ = now;
            shown_ = true;
            std::fprintf(stderr, "\r%zu of %zu formulas", done, all);
        };
    }
    ~Progress() {
        book_.progress = nullptr;
        if (shown_) std::fputs("\r\033[K", stderr);
    }

  private:
    sheet::Workbook& book_;
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
    bool shown_ = false;
};

/// Says on a terminal what takes a while, for as long as it does.
class Stage {
  public:
    Stage(const char* doing, const std::string& name, std::size_t size) {
        constexpr std::size_t takes_a_while = 2u << 20;
        if (size < takes_a_while || !isatty(STDERR_FILENO)) return;
        std::fprintf(stderr, "\r%s %s", doing, name.c_str());
        shown_ = true;
    }
    ~Stage() {
        if (shown_) std::fputs("\r\033[K", stderr);
    }
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

  private:
    bool shown_ = false;
};

/// Switches the monitor on. False, with a message, if its file cannot be written.
bool start_monitor() {
    CalcMonStart();
    if (CalcMonLog().isopen()) return true;
    std::cerr << CalcMonLog().name() << ": cannot be written\n";
    return false;
}

/// Switches the monitor off. False, with a message, if its file could be begun but lacks lines.
bool stop_monitor() {
    const bool begun = CalcMonLog().isopen();
    CalcMonStop();
    if (!begun || CalcMonLog().complete()) return true;
    std::cerr << CalcMonLog().name() << ": not complete: the disk is full or failed\n";
    return false;
}

/// No file that is read may be written to, but for the model itself with --in-place.
void check_files(const CalcOptions& options) {
    std::vector<std::string> read{options.file};
    if (!options.scenarios.empty()) read.push_back(options.scenarios);
    for (const std::string& setting : options.set)
        if (const std::size_t at = setting.find("=@"); at != std::string::npos) read.push_back(setting.substr(at + 2));
    const std::pair<const char*, std::string> written[] = {
        {"--out", options.out}, {"--html", options.html}, {"--report", options.report}};
    for (const auto& [option, name] : written) {
        if (name.empty()) continue;
        for (const std::string& input : read)
            if (files::same_file(name, input))
                throw FileError(std::string(option) + " would write over " + input + ", which is read" +
                                (input == options.file ? "; --in-place puts the results into the model itself" : ""));
        for (const auto& [other, other_name] : written)
            if (option != other && name != "-" && name == other_name)
                throw FileError(std::string(option) + " and " + other + " name the same file");
    }
    if (options.in_place && options.file == "-") throw FileError("standard input cannot be changed in place");
    const std::string ending = files::ending_of(options.out);
    for (const char* const other : {"ods", "xls", "xlsb", "pdf", "numbers"})
        if (ending == other) throw FileError("no ." + ending + " file can be written; .xlsx, .csv and .json can");
}

std::uint16_t chosen_sheet(Document& document, const std::string& name) {
    if (name.empty()) return 0;
    const int number = document.book.sheet_number(name);
    if (number < 0) {
        std::string names;
        for (std::uint16_t i = 0; i < document.book.sheet_count(); ++i)
            names += (i > 0 ? ", " : "") + document.book.sheet_name(i);
        throw FileError("there is no sheet \"" + name + "\"; there are: " + names);
    }
    return static_cast<std::uint16_t>(number);
}

Rows rows_of(Document& document, const Area& area, bool dates, int digits) {
    Rows rows(area.rows());
    for (const CellAddress cell : files::cells_of(area))
        rows[cell.row - area.first_row].push_back(field_of(document.book, cell, dates, digits));
    return rows;
}

void print_sheet(Document& document, std::uint16_t number, const CalcOptions& options) {
    const std::optional<Area> used = document.book.used_area(number);
    if (!used) return;
    if (options.output == Output::csv) {
        std::cout << sheet::save_csv(document.book, number, options.dates);
        return;
    }
    constexpr int digits = 10; // what a column on a screen has room for
    const Area all(number, 0, 0, used->last_row, used->last_column);
    print_rows(std::cout, rows_of(document, all, options.dates, digits), options.output, options.wide);
}

void print_sheets(Document& document, const CalcOptions& options) {
    if (options.output == Output::json) {
        std::cout << as_json(document, options.dates_asked);
        return;
    }
    if (!options.sheet.empty() || document.book.sheet_count() == 1)
        return print_sheet(document, chosen_sheet(document, options.sheet), options);
    bool first = true;
    for (std::uint16_t number = 0; number < document.book.sheet_count(); ++number) {
        if (!document.book.used_area(number)) continue;
        const std::string title = sheet::valid_utf8(document.book.sheet_name(number));
        if (!first) std::cout << '\n';
        first = false;
        if (options.output == Output::markdown)
            std::cout << "## " << title << "\n\n";
        else
            std::cout << title << '\n' << std::string(sheet::character_count(title), '=') << '\n';
        print_sheet(document, number, options);
    }
}

/// The cells, ranges and names that were asked for.
void print_chosen(Document& document, const CalcOptions& options) {
    constexpr int digits = 15;
    if (options.output == Output::json) {
        std::string text = "{";
        for (const std::string& what : options.get) {
            const Area area = document.area(what);
            const sheet::Value value = document.book.look_up(sheet::Value::reference(area));
            text += (text.size() > 1 ? "," : "") + files::json_string(what) + ":" +
                    files::json_text(value, options.dates_asked);
        }
        std::cout << text << "}\n";
        return;
    }
    Rows rows;
    for (const std::string& what : options.get)
        for (std::vector<Field>& row : rows_of(document, document.area(what), options.dates, digits)) {
            if (options.get.size() > 1) row.insert(row.begin(), Field{what});
            rows.push_back(std::move(row));
        }
    print_rows(std::cout, rows, options.output, options.wide);
}

void tell(const Document& document, std::size_t from = 0) {
    const std::size_t all = document.notes.size(), end = std::min(all, from + most_messages);
    for (std::size_t i = from; i < end; ++i) {
        const files::Note& note = document.notes[i];
        std::cerr << document.name << ": " << (note.where.empty() ? "" : note.where + ": ") << note.message << '\n';
    }
    if (all > end) std::cerr << document.name << ": and " << all - end << " more messages\n";
}

/// The list of the cells that show errors: cell, error, reason, and where it came from. Those in the notes are not
/// reported again.
void tell_errors(Document& document) {
    std::unordered_set<std::string> reported;
    for (const files::Note& note : document.notes) reported.insert(note.where);
    std::vector<sheet::CellError> errors = document.book.errors();
    std::erase_if(errors, [&](const sheet::CellError& error) {
        return error.origin == error.cell && reported.contains(document.place(error.cell));
    });
    for (std::size_t i = 0; i < std::min(errors.size(), most_messages); ++i) {
        const sheet::CellError& error = errors[i];
        std::cerr << document.name << ": " << document.place(error.cell) << ": " << sheet::error_text(error.code)
                  << ": " << sheet::valid_utf8(error.reason);
        if (error.origin != error.cell) std::cerr << ", from " << document.place(error.origin);
        std::cerr << '\n';
    }
    if (errors.size() > most_messages)
        std::cerr << document.name << ": and " << errors.size() - most_messages << " more errors\n";
}

std::string list_of(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) text += (text.empty() ? "" : ", ") + item;
    return text;
}

/// Writes the results to where they are to go.
void write_results(Document& document, const std::vector<files::Chart>& charts, const CalcOptions& options) {
    if (options.in_place) {
        std::string bytes, why;
        if (document.type() == files::FileType::csv) {
            bytes = as_same_csv(document);
        } else if (document.type() == files::FileType::ods) {
            throw FileError("an .ods file cannot be changed in place; --out FILE.xlsx writes a new one");
        } else if (!charts.empty()) {
            throw FileError("charts are drawn in a new file; give --out FILE.xlsx");
        } else if (!as_same_xlsx(document, bytes, why)) {
            throw FileError(why + "; --out FILE.xlsx writes a new workbook");
        }
        return files::write_file(options.file, bytes);
    }
    const std::string ending = files::ending_of(options.out);
    const std::vector<std::string>& not_kept = document.not_kept();
    const bool has_macros = std::find(not_kept.begin(), not_kept.end(), "macros") != not_kept.end();
    if (ending == "xlsx" || ending == "xlsm") {
        std::string bytes, why;
        // A workbook's own file with new values keeps what no writer of ours knows.
        if (document.type() == files::FileType::xlsx && charts.empty() && has_macros == (ending == "xlsm") &&
            as_same_xlsx(document, bytes, why))
            return files::write_file(options.out, bytes);
        if (ending == "xlsm")
            throw FileError("an .xlsm file can only be the copy of another one; give --out FILE.xlsx");
        if (!not_kept.empty())
            std::cerr << options.out << ": not carried over from " << document.name << ": " << list_of(not_kept)
                      << '\n';
        return files::write_file(options.out, as_xlsx(document, charts));
    }
    if (ending == "json" || options.output == Output::json)
        return files::write_file(options.out, as_json(document, options.dates_asked));
    const std::uint16_t number = chosen_sheet(document, options.sheet);
    if (document.book.sheet_count() > 1 && options.sheet.empty())
        std::cerr << options.out << ": holds only the sheet \"" << document.book.sheet_name(number)
                  << "\"; --sheet chooses another\n";
    files::write_file(options.out, sheet::save_csv(document.book, number, options.dates));
}

/// Explains a cell. Returns the exit status.
int explain(Document& document, const CalcOptions& options) {
    const CellAddress cell = document.area(options.trace).first();
    if (document.book.formula(cell) == nullptr) {
        std::cerr << options.trace << " holds no formula\n";
        return 1;
    }
    const TraceTree tree = traced([&] {
        document.book.mark_dirty(cell);
        document.book.value(cell);
    });
    return show(tree, options.trace + " = " + document.book.formula(cell)->text, options.html);
}

int calculate(const CalcOptions& options) {
    check_files(options);
    std::string bytes = files::read_file(options.file);
    std::optional<Document> opened;
    try {
        const Stage reading("Reading", options.file, bytes.size());
        opened.emplace(options.file, std::move(bytes), options.keep_values);
    } catch (const FileError& error) {
        throw FileError(options.file + ": " + error.what());
    }
    Document& document = *opened;
    const auto is_wrong = [&] {
        return std::any_of(document.notes.begin(), document.notes.end(),
                           [](const files::Note& note) { return !note.where.empty(); });
    };
    if (!options.trace.empty()) {
        // Found out before a long calculation.
        try {
            if (!document.area(options.trace).is_cell()) throw FileError("");
        } catch (const FileError&) {
            std::cerr << "\"" << sheet::valid_utf8(options.trace) << "\" is not a cell; give its address, such as B7\n";
            return 1;
        }
    }
    for (const std::string& setting : options.set) set(document, setting);

    if (!options.scenarios.empty()) {
        const int status = run_scenarios(document, options);
        tell(document);
        return is_wrong() ? 1 : status;
    }
    bool good = true;
    std::vector<Found> found;
    {
        const Progress progress(document.book);
        if (options.monitor) good = start_monitor();
        if (options.seek)
            found = seek_goals(document);
        else
            document.book.recalculate();
        if (options.monitor && !stop_monitor()) good = false;
    }
    for (const sheet::Problem& problem : document.book.problems())
        document.notes.push_back({document.place(problem.cell), problem.message});
    const bool wrong = is_wrong();
    if (options.keep_values && wrong) {
        const std::vector<CellAddress> kept = document.keep_values();
        document.book.recalculate();
        for (const CellAddress cell : kept)
            document.notes.push_back({document.place(cell), "the value of the file is kept"});
        tell(document);
    } else {
        tell(document);
    }
    if (options.seek && goal_seek_failed()) good = false;
    std::vector<files::Chart> charts;
    for (const std::string& chart : options.charts) charts.push_back(files::read_chart(document.book, chart));

    int status = wrong || !good ? 1 : 0;
    if (!options.trace.empty()) {
        status = std::max(status, explain(document, options));
        if (options.out.empty() && !options.in_place && options.report.empty()) return status;
    }
    if (!options.report.empty()) files::write_file(options.report, report_page(document, charts, found));
    if (!options.out.empty() || options.in_place) {
        const Stage writing("Writing", options.in_place ? options.file : options.out, document.bytes().size());
        const std::size_t reported = document.notes.size();
        write_results(document, charts, options);
        tell(document, reported);
    }
    if (!options.get.empty())
        print_chosen(document, options);
    else if (options.out.empty() && !options.in_place && options.report.empty())
        print_sheets(document, options);
    if (options.seek) {
        const bool to_errors = options.out == "-" || options.output != Output::table || !options.get.empty();
        if (options.out.empty() && !to_errors) std::cout << '\n';
        print_found(to_errors ? std::cerr : std::cout, document, found, options.dates);
    }
    std::cout.flush();
    tell_errors(document);
    return status;
}

} // namespace

int calc(const CalcOptions& options) {
    try {
        return calculate(options);
    } catch (const FileError& error) {
        std::cout.flush();
        std::cerr << error.what() << '\n';
        return 1;
    }
}

} // namespace qx::app
