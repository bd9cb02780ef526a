// Polynomials: fitted to points, evaluated, written out, solved.
//
//     PolyReg({1,2,3,4}, {2,5,10,17}, 2)     1, 0, 1: the parabola 1 + x^2
//     PolyRoot({-6,5,-1}, 0, ...)            2, 3
//
// Coefficients run from the constant up. Points are two lists of equal length; one with a blank cell does not count.
// Fits are by least squares: Householder's QR decomposition on places brought to -1 to 1. Roots are the eigenvalues of
// the companion matrix, polished by Newton's method.
#pragma once

#include "calendar/anyvalue.h"
#include "core/pools.h"

#include <string>

namespace qx {

class Routine;

inline constexpr int max_fit_degree = 10;  ///< of a polynomial that is fitted
inline constexpr int max_root_degree = 20; ///< of a polynomial that is solved

/// A polynomial fitted to points. It is kept in t = (x - centre) / half_width, with t from -1 to 1 over the points, so
/// that it is as exact over date numbers as over small ones.
class FittedPolynomial {
  public:
    /// Fits places and values. Throws errlibmin, errlibmax for a degree outside 0 to 10, insufficientpolypoints unless
    /// there are more points than coefficients, polyregerr for fewer different places than coefficients.
    FittedPolynomial(Routine& here, View<double> places, View<double> values, int degree);

    double operator()(double x) const;
    /// The integral from x1 to x2.
    double integral(double x1, double x2) const;
    /// The coefficients in x.
    void coefficients(Range<double>& list) const;

    int degree() const { return degree_; }
    /// The sum of the squares that the fit leaves.
    double residual() const { return residual_; }
    /// The variance left for each degree of freedom.
    double variance() const { return residual_ / (points_ - degree_ - 1); }

  private:
    double scaled(double x) const { return (x - centre_) / half_width_; }
    void fit(Routine& here, View<double> places, View<double> values);

    int degree_;
    int points_;
    double centre_ = 0.0, half_width_ = 1.0;
    double c_[max_fit_degree + 1] = {};
    double residual_ = 0.0;
};

/// The coefficients of the polynomial of a degree (0 to 10) that fits points best. Throws inputrangelength2 and as
/// FittedPolynomial.
WorkList<double> PolyReg(View<dateorfloat> XValues, View<dateorfloat> YValues, int Degree);
/// The constant and the slope of the line that fits best.
WorkList<double> LinReg(View<dateorfloat> XValues, View<dateorfloat> YValues);
/// The coefficients of the best of the fits of degree 0 to MaxDegree (0 to 10): of the one with the highest adjusted R
/// squared. Degrees that have too few points are not tried.
WorkList<double> BestPoly(View<dateorfloat> XValues, View<dateorfloat> YValues, int MaxDegree);
/// R squared: the part of the variance of the values that the fit explains, 0 to 1. Throws errlibdivzero for values
/// that are all equal.
double RSqrdPoly(View<dateorfloat> XValues, View<dateorfloat> YValues, int Degree);

/// The value of a polynomial. Throws errlibinsuffrange without a coefficient.
double CalcPoly(View<double> Coefficients, double XValue);
/// The equation as a string, "y = 3 + 2x^2", with numbers of up to 1 to 15 significant digits.
std::string PolyEqn(View<double> Coefficients, int Digits);
/// Where a polynomial of degree 20 at most takes a value: all such places from XMin to XMax in rising order, a multiple
/// one once. Roots within about a millionth of their size count as one. Throws polyfail if there is none or every place
/// is one, errlibnonsenseinputs for XMin above XMax.
WorkList<double> PolyRoot(View<double> Coefficients, double YValue, double XMin, double XMax);

} // namespace qx
