#include "hosts/files/chart.h"

#include "hosts/files/model.h"
#include "hosts/files/xml.h"
#include "hosts/sheet/calendar.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace qx::files {

using sheet::Area;
using sheet::CellAddress;
using sheet::Value;

namespace {

/// The numbers behind or below the cell with a label.
std::optional<Area> labelled(sheet::Workbook& book, std::string_view label) {
    for (std::uint16_t number = 0; number < book.sheet_count(); ++number) {
        const std::optional<Area> used = book.used_area(number);
        if (!used) continue;
        std::optional<Area> found;
        book.grid(number).visit(*used, [&](std::uint32_t row, std::uint32_t column, sheet::Cell&) {
            const auto value = [&](std::uint32_t r, std::uint32_t c) {
                return r <= used->last_row && c <= used->last_column
                           ? book.value({r, static_cast<std::uint16_t>(c), number})
                           : Value();
            };
            const Value head = value(row, column);
            if (!head.is_text() || !sheet::equal_ignoring_case(sheet::trimmed(head.text()), label)) return true;
            std::uint32_t right = column, down = row;
            while (value(row, right + 1).is_number()) ++right;
            while (right == column && value(down + 1, column).is_number()) ++down;
            if (right > column)
                found =
                    Area(number, row, static_cast<std::uint16_t>(column + 1), row, static_cast<std::uint16_t>(right));
            else if (down > row)
                found =
                    Area(number, row + 1, static_cast<std::uint16_t>(column), down, static_cast<std::uint16_t>(column));
            return !found;
        });
        if (found) return found;
    }
    return {};
}

/// What a part of a chart's line stands for.
Series read_series(sheet::Workbook& book, std::string_view text) {
    text = sheet::trimmed(text);
    try {
        const Value value = book.evaluate(book.read(text), Area(CellAddress{}));
        if (value.is(sheet::Type::area)) return {std::string(text), value.area()};
    } catch (const sheet::FormulaError&) {} // a label of several words
    if (const std::optional<Area> area = labelled(book, text)) return {std::string(text), *area};
    throw FileError("\"" + sheet::valid_utf8(text) + "\" is not a range, name or labelled row of numbers to draw");
}

/// The text left of a row of cells, or above a column of them.
std::string heading(sheet::Workbook& book, const Area& area) {
    CellAddress cell = area.first();
    const bool across = area.rows() == 1;
    while (across ? cell.column > 0 : cell.row > 0) {
        if (across)
            --cell.column;
        else
            --cell.row;
        const Value value = book.value(cell);
        if (value.is_text() && !value.text().empty()) return std::string(value.text());
        if (!value.is_blank()) break;
    }
    return {};
}

} // namespace

std::vector<CellAddress> cells_of(const Area& area) {
    std::vector<CellAddress> cells;
    for (std::uint32_t row = area.first_row; row <= area.last_row; ++row)
        for (std::uint32_t column = area.first_column; column <= area.last_column; ++column)
            cells.push_back({row, static_cast<std::uint16_t>(column), area.sheet});
    return cells;
}

Chart read_chart(sheet::Workbook& book, std::string_view text) {
    constexpr std::size_t most_values = 20000;
    Chart chart;
    std::string_view drawn = text;
    if (const std::size_t equals = text.find('='); equals != std::string_view::npos) {
        chart.title = sheet::trimmed(text.substr(0, equals));
        drawn = text.substr(equals + 1);
    }
    if (const std::size_t over = sheet::lower_case(drawn).rfind(" over "); over != std::string_view::npos) {
        chart.over = read_series(book, drawn.substr(over + 6)).values;
        drawn = drawn.substr(0, over);
    }
    bool quoted = false;
    std::size_t start = 0;
    for (std::size_t at = 0; at <= drawn.size(); ++at) {
        if (at < drawn.size() && drawn[at] == '\'') quoted = !quoted;
        if (at < drawn.size() && (drawn[at] != ',' || quoted)) continue;
        Series series = read_series(book, drawn.substr(start, at - start));
        if (std::size_t{series.values.rows()} * series.values.columns() > most_values)
            throw FileError("\"" + sheet::valid_utf8(series.name) + "\" has more than 20,000 cells to draw");
        const std::string head = heading(book, series.values);
        if (!head.empty()) series.name = head;
        chart.series.push_back(std::move(series));
        start = at + 1;
    }
    if (chart.title.empty()) chart.title = chart.series[0].name;
    return chart;
}

// --- The drawing
// ------------------------------------------------------------------------------------------------------

namespace {

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : sheet::valid_utf8(text))
        if (static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\t') append_escaped(result, c);
    return result;
}

std::string coordinate(double x) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", x);
    return text;
}

/// The step of a scale's marks: 1, 2 or 5 times a power of ten.
double step_for(double range, int most_marks) {
    const double rough = range / most_marks;
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= rough * (1 - 1e-9)) return factor * power;
    return 10.0 * power;
}

/// 1234567 as "1.23M".
std::string short_number(double x) {
    for (const auto& [size, letter] : {std::pair{1e9, "bn"}, {1e6, "m"}, {1e3, "k"}})
        if (std::fabs(x) >= size) return sheet::general_text(x / size, 4) + letter;
    return sheet::general_text(x, 4);
}

constexpr const char* colours[] = {"#2f6db5", "#c8553d", "#3d8f5f", "#8a5fb0", "#b08a1e", "#3a9aa8"};

class Drawing {
  public:
    Drawing(sheet::Workbook& book, const Chart& chart) : chart_(chart) {
        for (const Series& series : chart.series) {
            std::vector<std::optional<double>>& numbers = numbers_.emplace_back();
            for (const CellAddress cell : cells_of(series.values)) {
                const Value value = book.value(cell);
                numbers.push_back(value.is_number() ? std::optional(value.number()) : std::nullopt);
                if (!value.is_number()) continue;
                low_ = std::min(low_, value.number());
                high_ = std::max(high_, value.number());
            }
            count_ = std::max(count_, numbers.size());
        }
        if (chart.over)
            for (const CellAddress cell : cells_of(*chart.over)) {
                const Value value = book.value(cell);
                labels_.push_back(value.is_date() ? sheet::date_text(std::floor(value.number()))
                                                  : sheet::valid_utf8(sheet::display_text(value, 6)));
            }
        if (!(high_ > low_)) high_ = low_ + 1.0;
        step_ = step_for(high_ - low_, 6);
        low_ = std::floor(low_ / step_) * step_;
        high_ = std::ceil(high_ / step_) * step_;
    }

    std::string svg() {
        text_ = "<svg class=\"chart\" viewBox=\"0 0 " + coordinate(width) + " " + coordinate(height) +
                "\" role=\"img\" aria-label=\"" + escaped(chart_.title) + "\">\n";
        draw_scale();
        for (std::size_t i = 0; i < numbers_.size(); ++i) chart_.has_columns() ? draw_columns(i) : draw_line(i);
        draw_labels();
        if (numbers_.size() > 1) draw_key();
        return text_ + "</svg>\n";
    }

  private:
    static constexpr double width = 760, height = 300, left = 64, right = 12, top = 14, bottom = 46;

    double y_of(double value) const { return top + (height - top - bottom) * (high_ - value) / (high_ - low_); }
    double x_of(double place) const {
        return left + (width - left - right) * (place + 0.5) / static_cast<double>(std::max<std::size_t>(count_, 1));
    }

    void write(double x, double y, const char* anchor, std::string_view what) {
        text_ += "<text x=\"" + coordinate(x) + "\" y=\"" + coordinate(y) + "\" text-anchor=\"" + anchor + "\">" +
                 escaped(what) + "</text>\n";
    }

    void draw_scale() {
        const int marks = static_cast<int>(std::lround((high_ - low_) / step_));
        for (int i = 0; i <= marks; ++i) {
            const double value = std::fabs(low_ + i * step_) < step_ / 1e6 ? 0.0 : low_ + i * step_;
            const std::string y = coordinate(y_of(value));
            text_ += "<line x1=\"" + coordinate(left) + "\" x2=\"" + coordinate(width - right) + "\" y1=\"" + y +
                     "\" y2=\"" + y + "\" class=\"" + (value == 0.0 ? "zero" : "mark") + "\"/>\n";
            write(left - 6, y_of(value) + 4, "end", short_number(value));
        }
    }

    void draw_columns(std::size_t series) {
        const double space = (width - left - right) / static_cast<double>(std::max<std::size_t>(count_, 1));
        for (std::size_t i = 0; i < numbers_[series].size(); ++i) {
            const std::optional<double> value = numbers_[series][i];
            if (!value) continue;
            const double a = y_of(std::max(0.0, *value)), b = y_of(std::min(0.0, *value));
            text_ += "<rect x=\"" + coordinate(x_of(static_cast<double>(i)) - 0.35 * space) + "\" y=\"" +
                     coordinate(a) + "\" width=\"" + coordinate(0.7 * space) + "\" height=\"" +
                     coordinate(std::max(b - a, 0.5)) + "\" fill=\"" + colours[0] + "\"><title>" + escaped(label(i)) +
                     sheet::general_text(*value, 10) + "</title></rect>\n";
        }
    }

    void draw_line(std::size_t series) {
        std::string points;
        const auto flush = [&] {
            if (!points.empty())
                text_ += "<polyline points=\"" + points + "\" fill=\"none\" stroke-width=\"2\" stroke=\"" +
                         colours[series % std::size(colours)] + "\"/>\n";
            points.clear();
        };
        for (std::size_t i = 0; i < numbers_[series].size(); ++i) {
            if (!numbers_[series][i])
                flush(); // a gap
            else
                points += coordinate(x_of(static_cast<double>(i))) + "," + coordinate(y_of(*numbers_[series][i])) + " ";
        }
        flush();
    }

    std::string label(std::size_t i) const { return i < labels_.size() ? labels_[i] + ": " : std::string(); }

    void draw_labels() {
        const std::size_t every = std::max<std::size_t>(1, (labels_.size() + 9) / 10);
        for (std::size_t i = 0; i < labels_.size() && i < count_; i += every)
            write(x_of(static_cast<double>(i)), height - bottom + 18, "middle", labels_[i]);
    }

    void draw_key() {
        double x = left;
        for (std::size_t i = 0; i < numbers_.size(); ++i) {
            text_ += "<rect x=\"" + coordinate(x) + "\" y=\"" + coordinate(height - 16) +
                     "\" width=\"12\" height=\"4\" fill=\"" + colours[i % std::size(colours)] + "\"/>\n";
            write(x + 17, height - 10, "start", chart_.series[i].name);
            x += 30.0 + 7.0 * static_cast<double>(sheet::character_count(chart_.series[i].name));
        }
    }

    const Chart& chart_;
    std::vector<std::vector<std::optional<double>>> numbers_;
    std::vector<std::string> labels_;
    double low_ = 0.0, high_ = 0.0, step_ = 1.0; // columns begin at 0
    std::size_t count_ = 0;
    std::string text_;
};

} // namespace

std::string svg_of(sheet::Workbook& book, const Chart& chart) { return Drawing(book, chart).svg(); }

} // namespace qx::files
