// Readers of workbook files, from bytes to a model. A file may come from anywhere: each reader keeps within limits, and
// read_workbook (child.h) runs it in a process of its own.
#pragma once

#include "hosts/files/archive.h"
#include "hosts/files/model.h"

#include <functional>
#include <string>
#include <string_view>

namespace qx::files {

enum class FileType { csv, xlsx, ods };

/// What the bytes are, whatever the file is called. Throws FileError for a file of a type that is not read, with what
/// to do about it.
FileType type_of(std::string_view bytes);

/// The workbook in a file's bytes, an .xlsx or .ods file. Throws FileError.
Model read_model(std::string_view bytes);
Model read_xlsx(Archive& archive);
Model read_ods(Archive& archive);

/// True if a text begins with the sign, as _x000D_, by which .xlsx files hold a character that XML cannot.
bool is_escape(std::string_view text);

/// The calculated value of a formula's cell, or what a changed cell now holds; false to leave the cell as it is.
using Results = std::function<bool(std::size_t sheet, sheet::CellAddress cell, Cell& value, std::string& text)>;

/// The .xlsx file with the values of its cells replaced and everything else as it was; empty if the
/// file counts days from 1904, so that its numbers are others. Throws FileError.
std::string with_results(std::string_view bytes, const Results& results);

} // namespace qx::files
