// Counts what the test program takes from the heap.
#pragma once

#include <cstddef>

namespace qx::test {

/// Calls of operator new since the program started.
std::size_t allocations();

} // namespace qx::test
