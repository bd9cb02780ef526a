// Powers of one base to many exponents, as the discounting of a cash flow needs them. The binary logarithm of the base
// is taken once, with some bits to spare; each power is then a power of 2. The result is within 1.2 units of the last
// place for exponents up to some hundred, and the same however many powers are taken at a time.
#pragma once

#include "core/utilities.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace qx {

/// Numbers worked on at a time: two, or four where the processor can.
typedef double double2 __attribute__((vector_size(16)));
typedef double double4 __attribute__((vector_size(32)));

/// 2^(high + low) of each number, |high + low| at most PowersOf::largest and |low| small. However many numbers there
/// are, the steps are the same, and so are the bits.
template <class Vector>
[[gnu::always_inline]] inline void power_of_2(Vector& power, const Vector& high, const Vector& low) {
    constexpr double to_integer = 6755399441055744.0; // 1.5 * 2^52: rounds what is added to it to an integer
    // 2^x = 1 + x ln 2 + x^2 q(x) for |x| <= 0.50005, with the coefficients of q ascending and the least relative
    // error, 4.1e-18, that a polynomial of this degree can have (Remez).
    constexpr double ln2 = 0.6931471805599453;
    constexpr double q[] = {0x1.ebfbdff82c59cp-3,  0x1.c6b08d704a0d4p-5,  0x1.3b2ab6fba10fcp-7,  0x1.5d87fe78b3c1ap-10,
                            0x1.4309130c2c760p-13, 0x1.ffcbfbf8f422bp-17, 0x1.62bfcd7c73513p-20, 0x1.b5260cb297c57p-24,
                            0x1.e6123bd41a2e9p-28, 0x1.e810fb5153ad3p-32};
    const Vector rounded = high + to_integer;
    const Vector rest = (high - (rounded - to_integer)) + low;
    // In pairs of pairs, which wait less for each other than one nested form.
    const Vector square = rest * rest, fourth = square * square;
    const Vector first = (q[3] * rest + q[2]) * square + (q[1] * rest + q[0]);
    const Vector second = (q[7] * rest + q[6]) * square + (q[5] * rest + q[4]);
    const Vector third = q[9] * rest + q[8];
    const Vector series = (((third * fourth + second) * fourth + first) * square + ln2 * rest) + 1.0;
    decltype(high < low) exponent, bits; // integers of the same size
    std::memcpy(&exponent, &rounded, sizeof exponent);
    std::memcpy(&bits, &series, sizeof bits);
    bits += exponent << 52;
    std::memcpy(&power, &bits, sizeof power);
}

class PowersOf {
  public:
    static constexpr double largest = 1000.0; ///< of exponent * log2(base): no result over- or underflows
    static constexpr double beyond = 1080.0;  ///< every result over- or underflows

    explicit PowersOf(double base) : base_(base) {
        if (!isequal(base, 1.0) && base > tolerance && base <= std::numeric_limits<double>::max()) take_log();
    }

    double log() const { return log2_ * 0.6931471805599453; } ///< the natural one
    /// True if every exponent up to a size may go through powers().
    bool serves(double exponent) const { return log2_ != 0.0 && std::fabs(exponent * log2_) <= largest; }
    /// True if the power is beyond all numbers. That of the negative exponent is 0 then.
    bool overflows(double exponent) const { return exponent * log2_ > beyond; }

    /// The powers of several exponents.
    template <class Vector>
    [[gnu::always_inline]] void powers(Vector& powers, const Vector& exponents) const {
        // Each as two parts, of which the first has few enough bits that its product with high_ is exact.
        decltype(exponents < exponents) bits;
        std::memcpy(&bits, &exponents, sizeof bits);
        bits &= ~0xfffffffLL;
        Vector high;
        std::memcpy(&high, &bits, sizeof high);
        power_of_2(powers, high * high_, high * low_ + (exponents - high) * log2_);
    }
    double operator()(double exponent) const {
        if (!serves(exponent)) {
            if (overflows(exponent)) return std::numeric_limits<double>::infinity();
            return overflows(-exponent) ? 0.0 : SafePow(base_, exponent);
        }
        double2 power;
        powers(power, double2{exponent, exponent});
        return power[0];
    }

  private:
    void take_log();

    double base_;
    double log2_ = 0.0; ///< of the base; 0 where SafePow's special cases decide
    double high_ = 0.0; ///< the same as two parts, of which this has 24 bits
    double low_ = 0.0;
};

} // namespace qx
