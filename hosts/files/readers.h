// Readers of workbook files, from bytes to a model. A file may come from anywhere: each reader keeps within limits, and
// read_workbook (child.h) runs it in a process of its own.
#pragma once

#include "hosts/files/archive.h"
#include "hosts/files/model.h"

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

/// True if a string begins with the sign, as _x000D_, by which .xlsx files hold a character that XML cannot.
bool is_escape(std::string_view text);

} // namespace qx::files
