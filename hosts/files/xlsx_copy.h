// A copy of an .xlsx file with other values in its cells and everything else as it was.
#pragma once

#include "hosts/files/model.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::files {

/// What a copy puts into a cell.
struct CellContent {
    Cell value;
    std::string text;      ///< of a string
    bool is_date = false;  ///< a number that is shown as a date
    bool is_array = false; ///< the formula is an array formula, of all the cells that it fills
    bool entered = false;  ///< it takes the place of a formula that the file has there
    std::string formula;   ///< that was entered, as the file writes it, without the equals sign
    std::string own;       ///< the formula that a cell has which shares one with others, if one of them may change
    sheet::Area filled;    ///< by the formula that fills the cell
};

// Sheets count from 0, as the file's worksheets come.
struct Changes {
    /// The content of a cell; false to leave it as the file has it.
    std::function<bool(sheet::CellAddress cell, CellContent& content)> content;
    /// Cells that the copy has to have also where the file has none, in the order of sheets, rows and columns.
    std::vector<sheet::CellAddress> wanted;
};

/// The copy; empty, with the reason in words, if the file's own form does not allow it. Throws FileError.
std::string with_changes(std::string_view bytes, const Changes& changes, std::string& why);

} // namespace qx::files
