// Any text as a CSV model: loaded, calculated and saved; what is saved loads without a complaint about its form.
#include "hosts/sheet/csv.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qx::sheet;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Workbook book;
    load_csv(book, 0, text);
    book.recalculate();
    const std::string saved = save_csv(book, 0);
    std::vector<Problem> problems;
    read_csv(saved, problems);
    if (!problems.empty()) std::abort();
    return 0;
}
