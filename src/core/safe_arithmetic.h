// Arithmetic for cells that must not fail or look wrong for a hair: division, powers, equality, rounding to multiples.
#pragma once

namespace qx {

/// Numerator / Denominator, or 0 if either is zero within 1e-12.
double SDiv(double Numerator, double Denominator);

/// Number raised to Exponent: 1 for an exponent of zero, even of zero; otherwise 0 for a number of zero. Throws
/// errlibbadexponentiation for a fractional power of a negative number.
double SPow(double Number, double Exponent);

/// True if the two numbers are equal within 1e-12.
bool StdEq(double Number1, double Number2);

/// Number rounded up, down or to the nearest of the points Origin + k * Multiple; halfway goes away from the origin. A
/// number that lies within a part in 1e12 of a point is that point: SCeiling(0.3, 0.1, 0) is 0.3. The sign of Multiple
/// does not matter; a multiple of zero gives the number as it is.
double SCeiling(double Number, double Multiple, double Origin);
double SFloor(double Number, double Multiple, double Origin);
double SRound(double Number, double Multiple, double Origin);

} // namespace qx
