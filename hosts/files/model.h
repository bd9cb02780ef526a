// A workbook as a file holds it: what the readers give and the writers take, without a calculation.
#pragma once

#include "hosts/sheet/value.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qx::files {

/// A file that cannot be read or written, in words for its user.
struct FileError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

enum class Kind : std::uint8_t { blank, number, boolean, error, text };

/// A cell: a value that was entered, or a formula with the last value that the file knows of it.
struct Cell {
    std::uint32_t row = 0;
    std::uint16_t column = 0;
    std::uint16_t format = 0;  ///< in Model::formats
    std::uint32_t formula = 0; ///< in Model::texts; 0 for none
    std::uint32_t text = 0;    ///< in Model::texts, of a string
    double number = 0.0;       ///< a number, 0 or 1 for a truth value, the code of an error
    Kind kind = Kind::blank;
    bool spills = false;  ///< the formula fills as many cells as its result has
    bool covered = false; ///< shows a part of the array formula of another cell
};

/// One formula over a rectangle.
struct ArrayFormula {
    sheet::Area area;
    std::uint32_t formula = 0;
};

struct ColumnWidth {
    std::uint16_t first = 0, last = 0;
    double characters = 0.0;
};

struct SheetModel {
    std::string name;
    bool hidden = false;
    std::vector<Cell> cells; ///< row by row
    std::vector<ArrayFormula> arrays;
    std::vector<ColumnWidth> widths;
};

struct NameModel {
    std::string name, formula;
    int sheet = -1; ///< the sheet on which the name is known, -1 for all
};

struct Note {
    std::string where; ///< "Sheet1!B7", a name or a sheet; empty for what is no fault but worth knowing
    std::string message;
};

struct Model {
    std::vector<SheetModel> sheets;
    std::vector<NameModel> names;
    std::vector<std::string> texts{""};          ///< shared by cells; the first is empty
    std::vector<std::string> formats{"General"}; ///< codes such as "0.0%"
    std::vector<Note> notes;                     ///< what was not understood
    std::vector<std::string> not_kept;           ///< what the file holds beside cells, as "charts"
};

/// What a number format shows.
enum class FormatKind : std::uint8_t { general, number, percent, date, time, text };
FormatKind kind_of_format(std::string_view code);

/// "Sheet1!B7", the name of the sheet in quotes where a formula needs them.
std::string place(std::string_view sheet, sheet::CellAddress cell);
std::string quoted_sheet(std::string_view name);

// More than these no model of a person needs; a file that asks for more is refused.
inline constexpr std::size_t most_cells = 16u << 20;
inline constexpr std::size_t most_text = 256u << 20; ///< bytes of texts and formulas
inline constexpr std::size_t most_formats = 65000;
inline constexpr std::size_t most_sheets = 1024;
inline constexpr std::size_t most_notes = 1000;
inline constexpr std::size_t longest_text = 32767; ///< characters in a cell; more bytes than 4 of each are cut

/// Builds a model within these limits. Throws FileError beyond them.
class ModelBuilder {
  public:
    Model model;

    SheetModel& add_sheet(std::string_view name);
    SheetModel& sheet() { return model.sheets.back(); }
    std::uint32_t text(std::string_view bytes);    ///< short ones are shared
    std::uint32_t formula(std::string_view bytes); ///< of one cell
    std::uint16_t format(std::string_view code);
    void add(const Cell& cell);
    void note(sheet::CellAddress cell, std::string message); ///< about a cell of the last sheet
    void note_sheet(std::string message);                    ///< about the last sheet
    void note(std::string message);                          ///< for information only
    void not_kept(std::string_view what);

  private:
    std::uint32_t keep(std::string text);

    std::size_t cells_ = 0, bytes_ = 0;
    std::unordered_map<std::string, std::uint32_t> short_texts_;
    std::unordered_map<std::string, std::uint16_t> formats_;
};

} // namespace qx::files
