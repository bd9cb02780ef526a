// Powers of one base to many exponents, as the discounting of a cash flow needs them. The logarithm of the base is
// taken once, with some bits to spare; each power then costs one exponential. The result is within 0.8 units of
// the last place, and the same however many powers are taken at a time.
#pragma once

#include "core/utilities.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace qx {

/// Numbers worked on at a time: two, or four where the processor can.
typedef double double2 __attribute__((vector_size(16)));
typedef double double4 __attribute__((vector_size(32)));

/// e^(high + low) of each number, |high + low| at most PowersOf::largest, where high has few enough bits that its
/// product with an integer is exact. However many numbers there are, the steps are the same, and so are the bits.
template <class Vector>
[[gnu::always_inline]] inline void exponential(Vector& power, const Vector& high, const Vector& low) {
    constexpr double per_ln2 = 1.4426950408889634;
    constexpr double ln2_high = 6.93147180369123816490e-01; // the rest of ln 2 in ln2_low
    constexpr double ln2_low = 1.90821492927058770002e-10;
    constexpr double to_integer = 6755399441055744.0; // 1.5 * 2^52: rounds what is added to it to an integer
    constexpr double terms[] = {1.0 / 6227020800.0, 1.0 / 479001600.0, 1.0 / 39916800.0, 1.0 / 3628800.0,
                                1.0 / 362880.0,     1.0 / 40320.0,     1.0 / 5040.0,     1.0 / 720.0,
                                1.0 / 120.0,        1.0 / 24.0,        1.0 / 6.0,        1.0 / 2.0};
    const Vector rounded = high * per_ln2 + to_integer;
    const Vector twos = rounded - to_integer;
    const Vector rest = (high - twos * ln2_high) + (low - twos * ln2_low); // |rest| <= ln 2 / 2
    // The series in halves of halves, which wait less for each other than one nested form.
    const Vector square = rest * rest, fourth = square * square;
    const Vector highest = (terms[0] * rest + terms[1]) * square + (terms[2] * rest + terms[3]);
    const Vector middle = (terms[4] * rest + terms[5]) * square + (terms[6] * rest + terms[7]);
    const Vector lowest = (terms[8] * rest + terms[9]) * square + (terms[10] * rest + terms[11]);
    const Vector series = ((highest * fourth + middle) * fourth + lowest) * square + rest + 1.0;
    decltype(high < low) bits; // integers of the same size
    std::memcpy(&bits, &rounded, sizeof bits);
    bits = (bits + 1023) << 52; // 2^twos
    Vector scale;
    std::memcpy(&scale, &bits, sizeof scale);
    power = series * scale;
}

class PowersOf {
  public:
    static constexpr double largest = 700.0; ///< of exponent * ln(base): no result over- or underflows
    static constexpr double beyond = 750.0;  ///< every result over- or underflows

    explicit PowersOf(double base) : base_(base) {
        if (!(base > tolerance) || isequal(base, 1.0)) return;
        const long double log = std::log(static_cast<long double>(base));
        log_ = static_cast<double>(log);
        high_ = static_cast<float>(log_);
        low_ = static_cast<double>(log - high_);
    }

    double log() const { return log_; }
    /// True if every exponent up to a size may go through powers().
    bool serves(double exponent) const { return log_ != 0.0 && std::fabs(exponent * log_) <= largest; }
    /// True if the power is beyond all numbers. That of the negative exponent is 0 then.
    bool overflows(double exponent) const { return exponent * log_ > beyond; }

    /// The powers of several exponents, each as split() gives it.
    template <class Vector>
    [[gnu::always_inline]] void powers(Vector& powers, const Vector& exponents_high,
                                       const Vector& exponents_low) const {
        exponential(powers, exponents_high * high_, exponents_high * low_ + exponents_low * log_);
    }
    double operator()(double exponent) const {
        if (!serves(exponent)) {
            if (overflows(exponent)) return std::numeric_limits<double>::infinity();
            return overflows(-exponent) ? 0.0 : SafePow(base_, exponent);
        }
        const double high = split(exponent);
        const double low = exponent - high;
        double2 power;
        powers(power, double2{high, high}, double2{low, low});
        return power[0];
    }
    /// The part of an exponent with few bits; the rest is the difference.
    static double split(double exponent) { return static_cast<float>(exponent); }

  private:
    double base_;
    double log_ = 0.0; ///< of the base; 0 where SafePow's special cases decide
    double high_ = 0.0;
    double low_ = 0.0;
};

} // namespace qx
