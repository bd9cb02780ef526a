#include "core/version.h"

namespace qx {

const char* version() { return QX_VERSION; }

} // namespace qx
