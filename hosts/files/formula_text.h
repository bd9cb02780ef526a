// Formulas as files write them, and as a person does.
//
// Files put marks before the names of functions that came later than the format or from elsewhere (_xlfn., _xll., a
// service's name); OpenDocument writes references as [.A1:.B2] and separates arguments by semicolons.
#pragma once

#include <string>
#include <string_view>

namespace qx::files {

/// A formula of an .xlsx file without the equals sign, as a person writes it.
std::string from_xlsx(std::string_view formula);
/// The opposite: our own functions get the mark of an add-in's, later ones that of a later version.
std::string to_xlsx(std::string_view formula);

/// A formula of an .ods file, as "of:=SUM([.A1:.A3];2)", as a person writes it, without the equals sign.
std::string from_openformula(std::string_view formula);

} // namespace qx::files
