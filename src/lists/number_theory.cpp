#include "lists/number_theory.h"

#include "core/routine.h"

#include <algorithm>
#include <numeric>

namespace qx {

namespace {

constexpr double largest = 9007199254740992.0; // 2^53

void limit_to_exact(Routine& here, long long value, const char* variable) {
    here.limit(static_cast<double>(value), -largest, largest, variable);
}

} // namespace

WorkList<double> ExtEuclid(long long u, long long v) {
    Routine here{"ExtEuclid"};
    here.inputs(u, v);
    limit_to_exact(here, u, "u");
    limit_to_exact(here, v, "v");
    // Throughout, u x + v y = g and u next_x + v next_y = next_g.
    long long g = u, x = 1, y = 0;
    long long next_g = v, next_x = 0, next_y = 1;
    while (next_g != 0) {
        const long long quotient = g / next_g;
        g = std::exchange(next_g, g - quotient * next_g);
        x = std::exchange(next_x, x - quotient * next_x);
        y = std::exchange(next_y, y - quotient * next_y);
        here.info("Quotient ", quotient, ", remainder ", next_g);
    }
    const long long sign = g < 0 ? -1 : 1;
    WorkList<double> result;
    result->setname("ExtEuclid");
    result->dimension(3);
    result(1) = static_cast<double>(sign * g);
    result(2) = static_cast<double>(sign * x);
    result(3) = static_cast<double>(sign * y);
    return here.returning(std::move(result));
}

int PrimeNum(int WhichOne) {
    Routine here{"PrimeNum"};
    here.inputs(WhichOne);
    here.limit(WhichOne, 1, 1'000'000, "WhichOne");
    if (WhichOne == 1) return here.returning(2);

    // The sieve of Eratosthenes over odd numbers, one window after another.
    constexpr int root = 3936; // the square of it is above the millionth prime, 15485863
    constexpr int window = 1 << 16;
    static bool crossed[window];
    static int primes[600]; // the odd primes up to the root
    int known = 0;
    for (int p = 3; p < root; p += 2)
        if (std::none_of(primes, primes + known, [p](int q) { return p % q == 0; })) primes[known++] = p;

    int place = 1;
    for (int low = 3;; low += 2 * window) { // crossed[i] stands for low + 2 i
        std::fill(crossed, crossed + window, false);
        const int high = low + 2 * window;
        for (int k = 0; k < known && primes[k] * primes[k] < high; ++k) {
            const int p = primes[k];
            int multiple = std::max(p * p, (low + p - 1) / p * p);
            if (multiple % 2 == 0) multiple += p;
            for (; multiple < high; multiple += 2 * p) crossed[(multiple - low) / 2] = true;
        }
        for (int i = 0; i < window; ++i)
            if (!crossed[i] && ++place == WhichOne) return here.returning(low + 2 * i);
    }
}

bool RelPrime(long long u, long long v) {
    Routine here{"RelPrime"};
    here.inputs(u, v);
    limit_to_exact(here, u, "u");
    limit_to_exact(here, v, "v");
    const long long divisor = std::gcd(u, v);
    here.info("Greatest common divisor ", divisor);
    return here.returning(divisor == 1);
}

long long uvmodn(long long u, long long v, long long n) {
    Routine here{"uvmodn"};
    here.inputs(u, v, n);
    limit_to_exact(here, u, "u");
    limit_to_exact(here, v, "v");
    here.limit(static_cast<double>(n), 1.0, largest, "n");
    __extension__ using wide = __int128;
    const auto remainder = static_cast<long long>(static_cast<wide>(u) * v % n);
    return here.returning(remainder < 0 ? remainder + n : remainder);
}

} // namespace qx
