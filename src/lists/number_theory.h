// Whole numbers: divisors, primes and remainders. Numbers reach 2^53 either way, the largest that a cell holds exactly.
#pragma once

#include "core/pools.h"

namespace qx {

/// The greatest common divisor g of u and v, not negative, and x, y with u x + v y = g, by Euclid's extended algorithm
/// (Knuth, The Art of Computer Programming, vol. 2, 4.5.2). Throws errlibmin, errlibmax beyond 2^53.
WorkList<double> ExtEuclid(long long u, long long v);

/// The prime number of a place: 2 is the first. Places run from 1 to 1,000,000; otherwise errlibmin, errlibmax.
int PrimeNum(int WhichOne);

/// True if u and v have no divisor in common but 1. Throws errlibmin, errlibmax beyond 2^53.
bool RelPrime(long long u, long long v);

/// The remainder of u v divided by n, from 0 to n - 1. Throws errlibmin for n below 1; errlibmin, errlibmax beyond
/// 2^53.
long long uvmodn(long long u, long long v, long long n);

} // namespace qx
