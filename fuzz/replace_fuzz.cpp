// Any expression and any replacement on any text: replaced within bounds, or refused with a message.
#include "commands/find_replace.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The first two lines are the expression and the replacement, the rest is the text.
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    const auto line = [&rest] {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view taken = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        return std::string(taken);
    };
    const std::string expression = line(), replacement = line(), text(rest);
    qx::XLREF area;
    if (qx::read_rectangle(replacement, area) && (area.rwFirst > area.rwLast || area.colFirst > area.colLast))
        std::abort();
    try {
        const qx::Replacer itself(expression, "$&"); // each match in its own place
        if (itself(text) != text) std::abort();
        qx::Replacer(expression, replacement)(text);
    } catch (const std::runtime_error&) {}
    return 0;
}
