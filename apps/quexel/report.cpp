#include "apps/quexel/report.h"

#include "apps/quexel/markdown.h"
#include "apps/quexel/output.h"
#include "apps/quexel/tracing.h"

#include "hosts/sheet/text.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace qx::app {

extern const char report_template[]; // the page, with places for its title, its body and its data

using files::Document;
using sheet::Area;
using sheet::CellAddress;
using sheet::Value;

namespace {

// What a browser shows without delay.
constexpr std::uint32_t most_rows = 2000, most_columns = 200;
constexpr std::size_t most_traced = 2000, most_trace_bytes = 16u << 20;

class Page {
  public:
    Page(Document& document, const std::vector<files::Chart>& charts, const std::vector<Found>& found)
        : document_(document), book_(document.book), charts_(charts), found_(found) {}

    std::string write() {
        for (std::uint16_t number = 0; number < book_.sheet_count(); ++number) add_cells(number);
        book_.recalculate(); // what the traces have marked
        const std::string title = document_.name.substr(document_.name.rfind('/') + 1);
        body_ = "<h1>" + html_escaped(title) +
                "</h1>\n<p class=\"note\">Calculated by Quexel. Click an underlined value to see "
                "how it came about.</p>\n";
        add_charts();
        add_found();
        for (std::uint16_t number = 0; number < book_.sheet_count(); ++number) add_sheet(number);
        add_errors();
        std::string page = report_template;
        // From the end, since what is put in may hold anything.
        put(page, "{{data}}", "{\"texts\":[" + texts_ + "],\n\"cells\":{" + cells_ + "}}");
        put(page, "{{body}}", body_);
        put(page, "{{title}}", html_escaped(title));
        return page;
    }

  private:
    static void put(std::string& page, std::string_view place, const std::string& content) {
        page.replace(page.find(place), place.size(), content);
    }

    /// The data of the calculated cells: formula, value, reason, what is read, and the trace.
    void add_cells(std::uint16_t number) {
        const std::optional<Area> used = book_.used_area(number);
        if (!used) return;
        book_.grid(number).visit(*used, [&](std::uint32_t row, std::uint32_t column, sheet::Cell&) {
            if (row >= most_rows || column >= most_columns) return true;
            const CellAddress cell{row, static_cast<std::uint16_t>(column), number};
            const sheet::Formula* const formula = book_.formula(cell);
            if (formula != nullptr) add_cell(cell, *formula);
            return true;
        });
    }

    void add_cell(CellAddress cell, const sheet::Formula& formula) {
        if (traced_ == most_traced || texts_.size() + cells_.size() > most_trace_bytes) {
            left_out_ = true;
            return;
        }
        ++traced_;
        std::string items;
        if (!formula.functions.empty()) {
            const TraceTree tree = traced([&] {
                book_.mark_dirty(cell);
                book_.value(cell);
            });
            add_items(tree, items);
        }
        const Value value = book_.value(cell);
        std::string reason;
        if (value.is_error()) {
            reason = value.reason();
            if (value.has_origin() && value.origin() != cell) reason += ", from " + document_.place(value.origin());
        }
        std::string reads;
        for (const Area& area : book_.precedents(cell)) {
            if (reads.size() > 400) break;
            reads += (reads.empty() ? "" : ", ") +
                     (area.sheet == cell.sheet
                          ? sheet::address_text(area)
                          : files::quoted_sheet(book_.sheet_name(area.sheet)) + "!" + sheet::address_text(area));
        }
        if (!cells_.empty()) cells_ += ",\n";
        explained_.insert(document_.place(cell));
        cells_ += script_string(document_.place(cell)) + ":[" + script_string(formula.text) + "," +
                  script_string(field_of(book_, cell, true, 15).text) + "," + script_string(reason) + "," +
                  script_string(reads) + ",[" + items + "]]";
    }

    /// The lines of a trace; those deeper than a person follows are omitted.
    void add_items(const TraceTree& tree, std::string& items) {
        constexpr int deepest = 60;
        for (std::size_t i = 0; i < tree.size(); ++i) {
            const TraceNode& node = tree.nodes[i];
            if (node.depth > deepest) continue;
            if (!items.empty()) items += ',';
            items += std::to_string(node.depth) + (node.expanded ? ",1" : ",0");
            const TraceColumns text = tree.columns(i);
            for (const std::string_view column : {text.name, text.value, text.description})
                items += "," + std::to_string(number_of(std::string(column)));
        }
    }

    std::size_t number_of(const std::string& text) {
        const auto [place, is_new] = numbers_.try_emplace(text, numbers_.size());
        if (is_new) texts_ += (texts_.empty() ? "" : ",\n") + script_string(text);
        return place->second;
    }

    void add_charts() {
        for (const files::Chart& chart : charts_)
            body_ += "<figure><figcaption>" + html_escaped(chart.title) + "</figcaption>\n" +
                     files::svg_of(book_, chart) + "</figure>\n";
    }

    void add_found() {
        if (found_.empty()) return;
        body_ += "<h2>Goal seeks</h2>\n<table><tr><th>Cell</th><th>Found</th><th>Was</th><th>Target</th><th>Shows</th>"
                 "<th>Wanted</th></tr>\n";
        for (const Found& seek : found_)
            body_ += "<tr><td>" + html_escaped(document_.place(seek.changing)) + "</td><td class=\"n\">" +
                     sheet::general_text(seek.value) + "</td><td class=\"n\">" + sheet::general_text(seek.was) +
                     "</td><td>" + html_escaped(document_.place(seek.target)) + "</td><td class=\"n\">" +
                     html_escaped(plain_text(seek.shows, true, 15)) + "</td><td class=\"n\">" +
                     sheet::general_text(seek.wanted) + "</td></tr>\n";
        body_ += "</table>\n";
    }

    void add_sheet(std::uint16_t number) {
        const std::optional<Area> used = book_.used_area(number);
        if (!used) return;
        const std::uint32_t rows = std::min(used->last_row + 1, most_rows);
        const std::uint32_t columns = std::min<std::uint32_t>(used->last_column + 1u, most_columns);
        body_ += "<h2>" + html_escaped(book_.sheet_name(number)) + "</h2>\n";
        if (rows <= used->last_row || columns <= used->last_column)
            body_ += "<p class=\"note\">The first " + std::to_string(rows) + " rows and " + std::to_string(columns) +
                     " columns.</p>\n";
        body_ += "<div class=\"scroll\"><table><tr><th></th>";
        for (std::uint32_t column = 0; column < columns; ++column) {
            std::string letters = sheet::address_text({0, static_cast<std::uint16_t>(column), 0});
            letters.pop_back();
            body_ += "<th>" + letters + "</th>";
        }
        body_ += "</tr>\n";
        for (std::uint32_t row = 0; row < rows; ++row) {
            body_ += "<tr><th>" + std::to_string(row + 1) + "</th>";
            for (std::uint32_t column = 0; column < columns; ++column)
                add_field({row, static_cast<std::uint16_t>(column), number});
            body_ += "</tr>\n";
        }
        body_ += "</table></div>\n";
        if (left_out_)
            body_ +=
                "<p class=\"note\">The values that are not underlined are explained by quexel calc --trace CELL.</p>\n";
    }

    void add_field(CellAddress cell) {
        const Field field = field_of(book_, cell, true, 10);
        const Value value = book_.value(cell);
        std::string classes = field.to_the_right ? "n" : value.is_error() ? "e" : "";
        body_ += classes.empty() ? "<td" : "<td class=\"" + classes + "\"";
        if (const std::string place = document_.place(cell); explained_.contains(place))
            body_ +=
                " data-cell=\"" + html_escaped(place) + "\"><button>" + html_escaped(field.text) + "</button></td>";
        else
            body_ += ">" + html_escaped(field.text) + "</td>";
    }

    void add_errors() {
        const std::vector<sheet::CellError> errors = book_.errors();
        if (errors.empty() && document_.notes.empty()) return;
        body_ += "<h2>Errors</h2>\n<table><tr><th>Cell</th><th>Error</th><th>Reason</th><th>From</th></tr>\n";
        for (std::size_t i = 0; i < std::min<std::size_t>(errors.size(), most_rows); ++i)
            body_ += "<tr><td>" + html_escaped(document_.place(errors[i].cell)) + "</td><td class=\"e\">" +
                     sheet::error_text(errors[i].code) + "</td><td>" + html_escaped(errors[i].reason) + "</td><td>" +
                     html_escaped(document_.place(errors[i].origin)) + "</td></tr>\n";
        for (const files::Note& note : document_.notes)
            body_ += "<tr><td>" + html_escaped(note.where) + "</td><td></td><td>" + html_escaped(note.message) +
                     "</td><td></td></tr>\n";
        body_ += "</table>\n";
    }

    Document& document_;
    sheet::Workbook& book_;
    const std::vector<files::Chart>& charts_;
    const std::vector<Found>& found_;
    std::string body_, cells_, texts_;
    std::unordered_map<std::string, std::size_t> numbers_;
    std::unordered_set<std::string> explained_; ///< cells with data
    std::size_t traced_ = 0;
    bool left_out_ = false;
};

} // namespace

std::string report_page(Document& document, const std::vector<files::Chart>& charts, const std::vector<Found>& found) {
    return Page(document, charts, found).write();
}

} // namespace qx::app
