// Named variables that live from one cell's calculation to another's, until the process ends.
#pragma once

#include <string>

namespace qx {

/// Keeps a number, or a string, under a name, the empty one included, and returns it. Throws variablebufferfull for a
/// new name when there are 1000.
double SetNum(double Value, const std::string& VarName);
const std::string& SetStr(const std::string& Textstring, const std::string& VarName);

/// The number, or the text, kept under a name. Throws uncalc if there is none yet: the cell that sets it is still to
/// be calculated.
double GetNum(const std::string& VarName);
const std::string& GetStr(const std::string& VarName);

} // namespace qx
