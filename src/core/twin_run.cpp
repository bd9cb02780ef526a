#include "core/twin_run.h"

namespace qx {

std::byte TwinMemory::bytes_[size];

} // namespace qx
