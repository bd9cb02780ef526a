// The standard normal distribution.
#pragma once

namespace qx {

/// The probability of a standard normal variable at or below z.
double normal_probability(double z);

/// The standard normal deviate below which a variable lies with probability p: algorithm AS 241, PPND16 (Wichura,
/// 1988), to about 1 part in 1e16. Throws errlibbaddistribution unless 0 < p < 1.
double PPND16(double p);
/// The same to about 1 part in 1e7: AS 241, PPND7. In reserve.
double PPND7(double p);
/// The same to about 1 part in 1e7: AS 111, PPND (Beasley and Springer, 1977). In reserve.
double PPND(double p);

/// The standard normal deviate of a probability at or above 0, which also drops a deviate kept from a draw; a negative
/// one draws. Throws as PPND16.
double NormalDeviate(double RandOpt);

} // namespace qx
