// Charts of rows or columns of a workbook: what to draw, named in a line, and its drawing.
#pragma once

#include "hosts/sheet/workbook.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::files {

struct Series {
    std::string name;
    sheet::Area values;
};

struct Chart {
    std::string title;
    std::vector<Series> series;
    std::optional<sheet::Area> over; ///< what is along the axis, as years

    /// Columns for one series of few values, lines for others.
    bool has_columns() const {
        return series.size() == 1 && series[0].values.rows() * series[0].values.columns() <= 60;
    }
};

/// Reads "Cash flow=B5:Z5 over B1:Z1". What is drawn are ranges, names, or the texts that head a row or a column of
/// numbers, several with commas between them; the title and what it is drawn over may be omitted. Throws FileError.
Chart read_chart(sheet::Workbook& book, std::string_view text);

/// The cells of an area, along it.
std::vector<sheet::CellAddress> cells_of(const sheet::Area& area);

/// The drawing as an SVG element.
std::string svg_of(sheet::Workbook& book, const Chart& chart);

} // namespace qx::files
