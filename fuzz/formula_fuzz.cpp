// Any text as a formula: read and calculated, or refused with a message and a column.
#include "hosts/sheet/workbook.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qx::sheet;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Workbook book;
    book.set_value({0, 0, 0}, Value::number(38000));
    try {
        const Formula formula = book.read(text);
        book.look_up(book.evaluate(formula, Area{}));
    } catch (const FormulaError& error) {
        if (error.column < 1 || error.column > size + 1) std::abort();
    }
    return 0;
}
