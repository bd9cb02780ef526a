// Any bytes as an amount: a number comes out, never an error.
#include "core/parse_number.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const double amount = qx::parsenumber(text, 0.0);
    if (std::isnan(amount)) std::abort();
    const int count = qx::parseint(text, 0);
    if (count != 0 && amount != 0.0 && std::signbit(amount) != (count < 0)) std::abort();
    return 0;
}
