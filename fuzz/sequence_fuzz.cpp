// Any figures as an annual sequence: refused, or dates that come in order and that are found both ways.
#include "calendar/annual_sequence.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qx;
    double figures[100];
    std::size_t n = 0;
    for (; n < 100 && (n + 1) * sizeof(double) <= size; ++n)
        std::memcpy(&figures[n], data + n * sizeof(double), sizeof(double));
    if (n == 0) return 0;
    static AnnualSequence sequence;
    try {
        sequence.clear();
        if (n == 1) {
            sequence.set_figure(figures[0], 4);
        } else {
            sequence.start_list(static_cast<int>(n));
            for (std::size_t i = 0; i < n; ++i) sequence.append(figures[i]);
        }
        sequence.validate();
        const bool plain = sequence.BusDaySwitch() == 0;
        date day(38000.0);
        for (int i = 0; i < 20; ++i) {
            const date next = sequence.nextdate(day, false);
            if (!(next > day)) std::abort();
            if (plain && sequence.prevdate(next, false) != next) std::abort();
            day = next;
        }
        if (!(sequence.periodsbetween(date(38000.0), day) >= 0.0)) std::abort();
    } catch (const cls_exception&) {}
    return 0;
}
