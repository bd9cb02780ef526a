// Powers of one base to many exponents, as the discounting of a cash flow needs them. The logarithm of the base is
// taken once, with some bits to spare; each power then costs one exponential. The result is within 0.8 units of
// the last place, and the same whether two powers are taken at a time or one.
#pragma once

#include "core/utilities.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace qx {

/// Two numbers worked on at a time.
typedef double double2 __attribute__((vector_size(16)));
typedef std::int64_t integer2 __attribute__((vector_size(16)));

/// e^(high + low), |high + low| at most PowersOf::largest, where high has few enough bits that its product with an
/// integer is exact.
inline double2 exponential(double2 high, double2 low) {
    constexpr double per_ln2 = 1.4426950408889634;
    constexpr double ln2_high = 6.93147180369123816490e-01; // the rest of ln 2 in ln2_low
    constexpr double ln2_low = 1.90821492927058770002e-10;
    constexpr double to_integer = 6755399441055744.0; // 1.5 * 2^52: rounds what is added to it to an integer
    constexpr double terms[] = {1.0 / 6227020800.0, 1.0 / 479001600.0, 1.0 / 39916800.0, 1.0 / 3628800.0,
                                1.0 / 362880.0,     1.0 / 40320.0,     1.0 / 5040.0,     1.0 / 720.0,
                                1.0 / 120.0,        1.0 / 24.0,        1.0 / 6.0,        1.0 / 2.0};
    const double2 rounded = high * per_ln2 + to_integer;
    const double2 twos = rounded - to_integer;
    const double2 rest = (high - twos * ln2_high) + (low - twos * ln2_low); // |rest| <= ln 2 / 2
    // The series in halves of halves, which wait less for each other than one nested form.
    const double2 square = rest * rest, fourth = square * square;
    const double2 highest = (terms[0] * rest + terms[1]) * square + (terms[2] * rest + terms[3]);
    const double2 middle = (terms[4] * rest + terms[5]) * square + (terms[6] * rest + terms[7]);
    const double2 lowest = (terms[8] * rest + terms[9]) * square + (terms[10] * rest + terms[11]);
    const double2 series = ((highest * fourth + middle) * fourth + lowest) * square + rest + 1.0;
    integer2 bits;
    std::memcpy(&bits, &rounded, sizeof bits);
    bits = (bits + 1023) << 52; // 2^twos
    double2 scale;
    std::memcpy(&scale, &bits, sizeof scale);
    return series * scale;
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
    /// True if every exponent up to a size may go through pair().
    bool serves(double exponent) const { return log_ != 0.0 && std::fabs(exponent * log_) <= largest; }
    /// True if the power is beyond all numbers. That of the negative exponent is 0 then.
    bool overflows(double exponent) const { return exponent * log_ > beyond; }

    /// Two powers at once; each exponent as split() gives it.
    double2 pair(double2 exponent_high, double2 exponent_low) const {
        return exponential(exponent_high * high_, exponent_high * low_ + exponent_low * log_);
    }
    double operator()(double exponent) const {
        if (!serves(exponent)) {
            if (overflows(exponent)) return std::numeric_limits<double>::infinity();
            return overflows(-exponent) ? 0.0 : SafePow(base_, exponent);
        }
        const double high = split(exponent);
        const double low = exponent - high;
        return pair(double2{high, high}, double2{low, low})[0];
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
