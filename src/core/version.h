// The version of the library.
#pragma once

namespace qx {

const char* version(); ///< as "0.1.0"

} // namespace qx
