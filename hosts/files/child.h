// A workbook file read in a process of its own, so that nothing in it can harm this one: what it does to its reader,
// too much memory, time or a crash, becomes a message.
#pragma once

#include "hosts/files/model.h"

#include <string>
#include <string_view>

namespace qx::files {

struct Limits {
    std::size_t memory = std::size_t{2} << 30; ///< bytes
    int seconds = 60;                          ///< of work
};

/// The workbook in the bytes of an .xlsx or .ods file. Throws FileError.
Model read_workbook(std::string_view bytes, const Limits& limits = {});

/// A model as bytes, and back. The bytes may be anything: FileError if they are no model.
std::string packed(const Model& model);
Model unpacked(std::string_view bytes);

} // namespace qx::files
