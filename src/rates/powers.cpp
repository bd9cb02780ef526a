#include "rates/powers.h"

#include <bit>
#include <cstdint>

namespace qx {

namespace {

constexpr int mantissa_bits = 52;
constexpr int part_bits = 7;
constexpr std::int64_t lowest = 0x3fe6a00000000000; ///< the bits of 0.70703125

/// The numbers from 0.707 up to twice that in 128 parts, each with a reciprocal of few bits, which is exactly 1 for the
/// numbers next to 1, and the binary logarithm of one over that as two parts.
struct Parts {
    struct Part {
        double reciprocal, log_high, log_low;
    };
    Part parts[1 << part_bits];

    constexpr Parts() : parts{} {
        for (std::int64_t i = 0; i < 1 << part_bits; ++i) {
            const auto start = [](std::int64_t part) {
                return std::bit_cast<double>(lowest + (part << (mantissa_bits - part_bits)));
            };
            const double reciprocal = static_cast<int>(256.0 / (start(i) + start(i + 1)) + 0.5) / 128.0;
            const long double log = -log2_of(reciprocal);
            const double high = static_cast<float>(log);
            parts[i] = {reciprocal, high, static_cast<double>(log - high)};
        }
    }
    /// By the series of the inverse hyperbolic tangent, for numbers near 1.
    static constexpr long double log2_of(long double x) {
        const long double ratio = (x - 1.0L) / (x + 1.0L);
        long double series = 0.0L;
        for (int n = 41; n >= 1; n -= 2) series = series * ratio * ratio + 1.0L / n;
        return 2.0L * ratio * series / 0.693147180559945309417232L;
    }
};
constinit const Parts table;

} // namespace

/// log2(2^k m) = k - log2(c) + log2(c m), where c is the reciprocal in the table. c m - 1, at most 1/128 in size, is
/// the sum of two numbers without a rounding. The result is within 2^-63 of the logarithm.
void PowersOf::take_log() {
    constexpr double per_ln2 = 1.4426950408889634, per_ln2_high = 0x1.7154764p+0, per_ln2_low = 0x1.2b82fe1777d1p-28;
    const auto bits = std::bit_cast<std::int64_t>(base_), above = bits - lowest;
    const std::int64_t k = above >> mantissa_bits;
    const Parts::Part& part = table.parts[above >> (mantissa_bits - part_bits) & ((1 << part_bits) - 1)];
    const std::int64_t m_bits = bits - (k << mantissa_bits);
    const double m = std::bit_cast<double>(m_bits), m_high = std::bit_cast<double>(m_bits >> 28 << 28);
    const double first = m_high * part.reciprocal - 1.0, second = (m - m_high) * part.reciprocal;
    const double x = first + second, square = x * x;
    // ln(1 + x) - x
    const double series = ((1.0 / 3.0 * x - 1.0 / 2.0) + (1.0 / 5.0 * x - 1.0 / 4.0) * square) +
                          ((1.0 / 7.0 * x - 1.0 / 6.0) + (1.0 / 9.0 * x - 1.0 / 8.0) * square) * (square * square);
    const double whole = static_cast<double>(k) + part.log_high, product = first * per_ln2_high;
    high_ = static_cast<float>(whole + product);
    low_ = ((whole - high_) + product) + (part.log_low + first * per_ln2_low + (second + series * square) * per_ln2);
    log2_ = high_ + low_;
}

} // namespace qx
