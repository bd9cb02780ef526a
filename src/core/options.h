// Option numbers: switches that are a sum of option bits 1, 2, 4, 8 and so on.
#pragma once

namespace qx {

/// True if every bit of an option is set in a sum of options; 0 is no option and never present.
constexpr bool option_present(int option, int options) { return option != 0 && (options & option) == option; }

} // namespace qx
