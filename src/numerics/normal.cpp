#include "numerics/normal.h"
#include "core/routine.h"
#include "numerics/random.h"

#include <cmath>
#include <numbers>

namespace qx {

namespace {

// c[0] + c[1] x + c[2] x^2 + ..., by Horner's rule.
template <std::size_t N>
double polynomial(const double (&c)[N], double x) {
    double value = c[N - 1];
    for (std::size_t i = N - 1; i-- > 0;) value = value * x + c[i];
    return value;
}

// The root of -ln of the smaller tail at p. Throws for a p without a tail.
double tail_root(double p, const char* routine, const char* message) {
    const double r = p < 0.5 ? p : 1.0 - p;
    if (!(r > 0.0)) Routine{routine, Routine::internal}.fail<errlibbaddistribution>("", message);
    return std::sqrt(-std::log(r));
}

// AS 241 with the coefficients of its centre (a, b), its tails (c, d) and its far tails (e, f).
template <std::size_t A, std::size_t C, std::size_t D>
double wichura(double p, const double (&a)[A], const double (&b)[A], const double (&c)[C], const double (&d)[D],
               const double (&e)[C], const double (&f)[D], const char* routine, const char* message) {
    const double q = p - 0.5;
    if (std::fabs(q) <= 0.425) {
        const double r = 0.180625 - q * q;
        return q * polynomial(a, r) / polynomial(b, r);
    }
    const double r = tail_root(p, routine, message);
    const double z =
        r <= 5.0 ? polynomial(c, r - 1.6) / polynomial(d, r - 1.6) : polynomial(e, r - 5.0) / polynomial(f, r - 5.0);
    return std::copysign(z, q);
}

} // namespace

double normal_probability(double z) { return 0.5 * std::erfc(-z / std::numbers::sqrt2); }

double PPND16(double p) {
    constexpr double a[] = {3.3871328727963666080e0, 1.3314166789178437745e2, 1.9715909503065514427e3,
                            1.3731693765509461125e4, 4.5921953931549871457e4, 6.7265770927008700853e4,
                            3.3430575583588128105e4, 2.5090809287301226727e3};
    constexpr double b[] = {1.0,
                            4.2313330701600911252e1,
                            6.8718700749205790830e2,
                            5.3941960214247511077e3,
                            2.1213794301586595867e4,
                            3.9307895800092710610e4,
                            2.8729085735721942674e4,
                            5.2264952788528545610e3};
    constexpr double c[] = {1.42343711074968357734e0,  4.63033784615654529590e0, 5.76949722146069140550e0,
                            3.64784832476320460504e0,  1.27045825245236838258e0, 2.41780725177450611770e-1,
                            2.27238449892691845833e-2, 7.74545014278341407640e-4};
    constexpr double d[] = {1.0,
                            2.05319162663775882187e0,
                            1.67638483018380384940e0,
                            6.89767334985100004550e-1,
                            1.48103976427480074590e-1,
                            1.51986665636164571966e-2,
                            5.47593808499534494600e-4,
                            1.05075007164441684324e-9};
    constexpr double e[] = {6.65790464350110377720e0,  5.46378491116411436990e0,  1.78482653991729133580e0,
                            2.96560571828504891230e-1, 2.65321895265761230930e-2, 1.24266094738807843860e-3,
                            2.71155556874348757815e-5, 2.01033439929228813265e-7};
    constexpr double f[] = {1.0,
                            5.99832206555887937690e-1,
                            1.36929880922735805310e-1,
                            1.48753612908506148525e-2,
                            7.86869131145613259100e-4,
                            1.84631831751005468180e-5,
                            1.42151175831644588870e-7,
                            2.04426310338993978564e-15};
    return wichura(p, a, b, c, d, e, f, "PPND16", "Inverse Normal Routine/Hi failed");
}

double PPND7(double p) {
    constexpr double a[] = {3.3871327179e0, 5.0434271938e1, 1.5929113202e2, 5.9109374720e1};
    constexpr double b[] = {1.0, 1.7895169469e1, 7.8757757664e1, 6.7187563600e1};
    constexpr double c[] = {1.4234372777e0, 2.7568153900e0, 1.3067284816e0, 1.7023821103e-1};
    constexpr double d[] = {1.0, 7.3700164250e-1, 1.2021132975e-1};
    constexpr double e[] = {6.6579051150e0, 3.0812263860e0, 4.2868294337e-1, 1.7337203997e-2};
    constexpr double f[] = {1.0, 2.4197894225e-1, 1.2258202635e-2};
    return wichura(p, a, b, c, d, e, f, "PPND7", "Inverse Normal Routine/Med failed");
}

double PPND(double p) {
    constexpr double a[] = {2.50662823884, -18.61500062529, 41.39119773534, -25.44106049637};
    constexpr double b[] = {1.0, -8.47351093090, 23.08336743743, -21.06224101826, 3.13082909833};
    constexpr double c[] = {-2.78718931138, -2.29796479134, 4.85014127135, 2.32121276858};
    constexpr double d[] = {1.0, 3.54388924762, 1.63706781897};
    const double q = p - 0.5;
    if (std::fabs(q) <= 0.42) {
        const double r = q * q;
        return q * polynomial(a, r) / polynomial(b, r);
    }
    const double r = tail_root(p, "PPND", "Inverse Normal Routine/Lo failed");
    return std::copysign(polynomial(c, r) / polynomial(d, r), q);
}

double NormalDeviate(double RandOpt) {
    if (!(RandOpt >= 0.0)) return draw_normal();
    const double z = PPND16(RandOpt);
    drop_saved_normal();
    return z;
}

} // namespace qx
