// A file with the workbook that it holds: opened, calculated, and given back.
//
//     Document document("model.xlsx", read_file("model.xlsx"));
//     document.book.recalculate();
//     write_file("result.xlsx", as_xlsx(document));
#pragma once

#include "hosts/files/chart.h"
#include "hosts/files/model.h"
#include "hosts/files/readers.h"
#include "hosts/sheet/workbook.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace qx::files {

class Document {
  public:
    /// Reads a workbook of the type that its bytes show. Throws FileError if they are none, or if the name says that
    /// they are something else.
    Document(std::string name, std::string bytes, bool with_last_values = false);

    sheet::Workbook book;
    const std::string name;
    const std::string& bytes() const { return bytes_; }
    FileType type() const { return type_; }

    /// What was not understood, in the order of the cells.
    std::vector<Note> notes;
    /// What the file holds beside cells, as "charts".
    const std::vector<std::string>& not_kept() const { return model_.not_kept; }

    /// Puts the file's own last values into the cells that cannot be calculated, if it was read with them. Returns
    /// these cells.
    std::vector<sheet::CellAddress> keep_values();
    /// Puts what a user enters, "5e6" or "=B2*2", into a cell. Throws sheet::FormulaError.
    void enter(sheet::CellAddress cell, std::string_view text);
    void set_number(sheet::CellAddress cell, double x);
    /// What a user sees who edits a cell, "5000000" or "=B2*2"; empty for a cell that another one's formula fills.
    std::string content(sheet::CellAddress cell);
    /// Puts another content into a cell that has one. Text stays text, and an array formula keeps its cells. Throws
    /// sheet::FormulaError and FileError.
    void replace_content(sheet::CellAddress cell, const std::string& text);
    /// True for a cell whose content was changed since the file was read.
    bool is_changed(sheet::CellAddress cell) const { return changed_.contains(key(cell)); }

    /// The code of the number format of a cell, "General" if it has none.
    const std::string& format_code(sheet::CellAddress cell);
    // Of a sheet that was not in the file: no widths, and shown.
    const std::vector<ColumnWidth>& widths(std::uint16_t sheet) const {
        static const std::vector<ColumnWidth> none;
        return sheet < model_.sheets.size() ? model_.sheets[sheet].widths : none;
    }
    bool is_hidden(std::uint16_t sheet) const { return sheet < model_.sheets.size() && model_.sheets[sheet].hidden; }

    /// "B7", with the name of the sheet if there are several.
    std::string place(sheet::CellAddress cell) const;
    /// The cells that a string names: "B7", "Sheet2!A1:B3" or a name. Throws FileError.
    sheet::Area area(std::string_view text);

  private:
    void load_csv();
    void load_model(bool with_last_values);
    void load(std::uint16_t sheet, const SheetModel& from, std::vector<sheet::Value>& texts);
    sheet::Value value_of(const Cell& cell, std::vector<sheet::Value>& texts) const;
    void note_change(sheet::CellAddress cell); ///< called before the change
    void note_problem(sheet::CellAddress cell, std::string message);
    static std::uint64_t key(sheet::CellAddress cell) {
        return (std::uint64_t{cell.sheet} << 48) | (std::uint64_t{cell.column} << 32) | cell.row;
    }

    std::string bytes_;
    FileType type_;
    Model model_;
    std::unordered_map<std::uint64_t, std::uint16_t> formats_; ///< of the cells that have one
    std::unordered_set<std::uint64_t> changed_;
    std::vector<sheet::CellAddress> unread_; ///< whose formulas cannot be read
};

/// The name of a file's type by its ending, in small letters without the point; empty if it has none.
std::string ending_of(std::string_view name);

/// The workbook with its results as a new .xlsx file, with charts on a sheet of their own. Throws FileError.
std::string as_xlsx(Document& document, const std::vector<Chart>& charts = {});
/// The workbook's own .xlsx file with the new results and inputs, all else as it was. False, with the reason in words,
/// if that cannot be. Throws FileError.
bool as_same_xlsx(Document& document, std::string& bytes, std::string& why);
/// A .csv model with the inputs that were changed, its formulas as they were.
std::string as_same_csv(Document& document);
/// The values of all sheets, the errors and the notes as JSON; dates as texts if asked.
std::string as_json(Document& document, bool dates);

} // namespace qx::files
