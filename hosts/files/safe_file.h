// Files read whole, and written so that nothing is lost: a new file takes the place of the old one only when it is
// complete.
#pragma once

#include <string>
#include <string_view>

namespace qx::files {

/// The bytes of a file, or of standard input for "-". Throws FileError.
std::string read_file(const std::string& name);

/// Writes a file beside its place and moves it there; the old one stays as it is if anything fails. "-" is standard
/// output, and what is no plain file, as /dev/stdout, is written to directly. Throws FileError.
void write_file(const std::string& name, std::string_view bytes);

/// True if both names lead to one existing file.
bool same_file(const std::string& a, const std::string& b);

} // namespace qx::files
