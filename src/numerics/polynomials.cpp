#include "numerics/polynomials.h"
#include "core/routine.h"

#define EIGEN_NO_MALLOC // all matrices are small and of bounded size
#include <Eigen/Eigenvalues>
#include <Eigen/QR>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace qx {

namespace {

constexpr double epsilon = std::numeric_limits<double>::epsilon();

// --- Least squares -------------------------------------------------------------------------------------------------

constexpr int max_terms = max_fit_degree + 2; // the powers of t and the value
constexpr int rows_at_once = 64;
using Block =
    Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::ColMajor, max_terms + rows_at_once, max_terms>;

// Replaces the first rows by the triangle of the QR decomposition of all of them.
void triangularise(Block& block, int rows) {
    const Eigen::HouseholderQR<Block> qr(block.topRows(rows));
    const int terms = static_cast<int>(block.cols());
    block.topRows(terms) = qr.matrixQR().topRows(terms).triangularView<Eigen::Upper>();
}

struct Points {
    WorkList<double> x, y;
};

// The points that have both a place and a value.
Points points_of(View<dateorfloat> XValues, View<dateorfloat> YValues) {
    XValues.checksamesize(YValues);
    WorkList<double> x(XValues.size()), y(XValues.size());
    int count = 0;
    for (int i = 1; i <= XValues.size(); ++i) {
        if (XValues.get(i).isblank() || YValues.get(i).isblank()) continue;
        ++count;
        x(count) = XValues.get(i).number();
        y(count) = YValues.get(i).number();
    }
    x->dimension(count);
    y->dimension(count);
    return {std::move(x), std::move(y)};
}

WorkList<double> fitted_coefficients(const FittedPolynomial& fit) {
    WorkList<double> coefficients;
    coefficients->setname("Coefficients");
    fit.coefficients(coefficients);
    return coefficients;
}

// --- Roots ---------------------------------------------------------------------------------------------------------

using Companion =
    Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::ColMajor, max_root_degree, max_root_degree>;

// A polynomial whose leading coefficient is 1 and whose constant is not 0.
struct MonicPolynomial {
    int degree = 0;
    double c[max_root_degree + 1] = {};

    struct Value {
        long double value, slope, terms; // terms: what the value's terms come to without their signs
    };
    Value operator()(long double x) const {
        Value at{c[degree], 0.0L, std::fabs(c[degree])};
        for (int k = degree; k-- > 0;) {
            at.slope = at.slope * x + at.value;
            at.value = at.value * x + c[k];
            at.terms = at.terms * std::fabs(x) + std::fabs(c[k]);
        }
        return at;
    }
    bool is_zero_at(double x) const {
        const Value at = (*this)(x);
        return std::fabs(at.value) <= tolerance * at.terms;
    }
    double polished(long double x) const {
        Value at = (*this)(x);
        for (int i = 0; i < 20 && at.value != 0.0L && at.slope != 0.0L; ++i) {
            const long double next = x - at.value / at.slope;
            const Value there = (*this)(next);
            if (!(std::fabs(there.value) < std::fabs(at.value))) break;
            x = next;
            at = there;
        }
        return static_cast<double>(x);
    }
};

// Brings rows and columns to like size by powers of two, which changes no eigenvalue (Parlett and Reinsch, 1969).
void balance(Companion& matrix) {
    for (bool better = true; better;) {
        better = false;
        for (int i = 0; i < matrix.rows(); ++i) {
            const double own = std::fabs(matrix(i, i));
            const double row = matrix.row(i).cwiseAbs().sum() - own;
            const double column = matrix.col(i).cwiseAbs().sum() - own;
            if (!(row > 0.0 && column > 0.0) || !std::isfinite(row / column)) continue;
            const double factor = std::exp2(std::round(std::log2(row / column) / 2.0));
            if (!(column * factor + row / factor < 0.95 * (column + row))) continue;
            matrix.row(i) /= factor;
            matrix.col(i) *= factor;
            better = true;
        }
    }
}

// The real roots in rising order, a multiple one once; how many there are.
int real_roots(const MonicPolynomial& p, double* roots) {
    Companion companion = Companion::Zero(p.degree, p.degree);
    for (int k = 0; k < p.degree; ++k) {
        companion(k, p.degree - 1) = -p.c[k];
        if (k > 0) companion(k, k - 1) = 1.0;
    }
    balance(companion);
    const Eigen::EigenSolver<Companion> solver(companion, false);
    if (solver.info() != Eigen::Success) return 0;
    int count = 0;
    for (const auto& root : solver.eigenvalues()) {
        // Rounding makes the parts of a multiple root complex; the polynomial's value separates them from others.
        if (std::fabs(root.imag()) < 0.01 * std::fabs(root.real()) && p.is_zero_at(root.real()))
            roots[count++] = root.real();
    }
    std::sort(roots, roots + count);
    int distinct = 0;
    for (int i = 0, parts; i < count; i += parts) {
        double sum = roots[i];
        for (parts = 1; i + parts < count && p.is_zero_at((roots[i + parts - 1] + roots[i + parts]) / 2.0); ++parts)
            sum += roots[i + parts];
        roots[distinct++] = parts == 1 ? p.polished(sum) : sum / parts; // rounding spreads the parts around the root
    }
    return distinct;
}

} // namespace

FittedPolynomial::FittedPolynomial(Routine& here, View<double> places, View<double> values, int degree)
    : degree_(degree), points_(places.size()) {
    here.limit(degree, 0, max_fit_degree, "Degree");
    if (points_ <= degree + 1)
        here.fail<insufficientpolypoints>("", "There are ", points_, " points for ", degree + 1, " coefficients");
    const auto [low, high] = std::minmax_element(places.begin(), places.end());
    centre_ = (*low + *high) / 2.0;
    half_width_ = *high > *low ? (*high - *low) / 2.0 : 1.0;
    fit(here, places, values);
}

void FittedPolynomial::fit(Routine& here, View<double> places, View<double> values) {
    const int terms = degree_ + 2;
    Block block = Block::Zero(terms + rows_at_once, terms);
    int rows = terms;
    for (int i = 1; i <= points_; ++i) {
        const double t = scaled(places.get(i));
        double power = 1.0;
        for (int k = 0; k <= degree_; ++k) {
            block(rows, k) = power;
            power *= t;
        }
        block(rows, degree_ + 1) = values.get(i);
        if (++rows < terms + rows_at_once && i < points_) continue;
        triangularise(block, rows);
        rows = terms;
    }
    const double least = epsilon * points_ * block.diagonal().head(degree_ + 1).cwiseAbs().maxCoeff();
    for (int k = degree_; k >= 0; --k) {
        if (!(std::fabs(block(k, k)) > least))
            here.fail<polyregerr>("", "There are fewer different X values than coefficients (", degree_ + 1, ")");
        double rest = block(k, degree_ + 1);
        for (int j = k + 1; j <= degree_; ++j) rest -= block(k, j) * c_[j];
        c_[k] = rest / block(k, k);
    }
    residual_ = block(degree_ + 1, degree_ + 1) * block(degree_ + 1, degree_ + 1);
    here.info("Fitted a polynomial of degree ", degree_, " to ", points_, " points, sum of squares left ", residual_);
}

double FittedPolynomial::operator()(double x) const {
    const double t = scaled(x);
    double value = 0.0;
    for (int k = degree_; k >= 0; --k) value = value * t + c_[k];
    return value;
}

double FittedPolynomial::integral(double x1, double x2) const {
    const auto antiderivative = [this](double x) {
        const double t = scaled(x);
        double value = 0.0;
        for (int k = degree_; k >= 0; --k) value = value * t + c_[k] / (k + 1);
        return value * t * half_width_;
    };
    return antiderivative(x2) - antiderivative(x1);
}

void FittedPolynomial::coefficients(Range<double>& list) const {
    long double a[max_fit_degree + 1] = {};
    for (int k = degree_; k >= 0; --k) { // a(x) = a(x) * (x - centre) / half_width + c[k]
        for (int j = degree_; j > 0; --j) a[j] = (a[j - 1] - a[j] * centre_) / half_width_;
        a[0] = -a[0] * centre_ / half_width_ + c_[k];
    }
    list.dimension(degree_ + 1);
    for (int k = 0; k <= degree_; ++k) list(k + 1) = static_cast<double>(a[k]);
}

WorkList<double> PolyReg(View<dateorfloat> XValues, View<dateorfloat> YValues, int Degree) {
    Routine here{"PolyReg"};
    here.inputs(XValues, YValues, Degree);
    const Points points = points_of(XValues, YValues);
    return here.returning(fitted_coefficients(FittedPolynomial(here, points.x, points.y, Degree)));
}

WorkList<double> LinReg(View<dateorfloat> XValues, View<dateorfloat> YValues) {
    Routine here{"LinReg"};
    here.inputs(XValues, YValues);
    const Points points = points_of(XValues, YValues);
    return here.returning(fitted_coefficients(FittedPolynomial(here, points.x, points.y, 1)));
}

WorkList<double> BestPoly(View<dateorfloat> XValues, View<dateorfloat> YValues, int MaxDegree) {
    Routine here{"BestPoly"};
    here.inputs(XValues, YValues, MaxDegree);
    here.limit(MaxDegree, 0, max_fit_degree, "MaxDegree");
    const Points points = points_of(XValues, YValues);
    FittedPolynomial best(here, points.x, points.y, 0);
    const double least_gain = tolerance * best.variance(); // a smaller one is rounding
    for (int degree = 1; degree <= MaxDegree && points.x.size() > degree + 1; ++degree) {
        const FittedPolynomial fit(here, points.x, points.y, degree);
        if (fit.variance() < best.variance() - least_gain) best = fit;
    }
    return here.returning(fitted_coefficients(best));
}

double RSqrdPoly(View<dateorfloat> XValues, View<dateorfloat> YValues, int Degree) {
    Routine here{"RSqrdPoly"};
    here.inputs(XValues, YValues, Degree);
    const Points points = points_of(XValues, YValues);
    const FittedPolynomial fit(here, points.x, points.y, Degree);
    if (View<double>(points.y).allequal())
        here.fail<errlibdivzero>("YValues", "All values are equal: there is nothing to explain");
    const FittedPolynomial mean(here, points.x, points.y, 0);
    return here.returning(std::max(0.0, 1.0 - fit.residual() / mean.residual()));
}

double CalcPoly(View<double> Coefficients, double XValue) {
    Routine here{"CalcPoly"};
    here.inputs(Coefficients, XValue);
    if (Coefficients.lastnonblank() == 0) here.fail<errlibinsuffrange>("Coefficients");
    double value = 0.0;
    for (int k = Coefficients.size(); k >= 1; --k) value = value * XValue + Coefficients.get(k);
    return here.returning(value);
}

std::string PolyEqn(View<double> Coefficients, int Digits) {
    Routine here{"PolyEqn"};
    here.inputs(Coefficients, Digits);
    here.limit(Digits, 1, 15, "Digits");
    if (Coefficients.lastnonblank() == 0) here.fail<errlibinsuffrange>("Coefficients");
    std::string equation;
    for (int k = 0; k < Coefficients.size(); ++k) {
        const double coefficient = Coefficients.get(k + 1);
        if (coefficient == 0.0) continue;
        char number[32];
        std::snprintf(number, sizeof number, "%.*g", Digits, std::fabs(coefficient));
        equation += equation.empty() ? (coefficient < 0.0 ? "-" : "") : (coefficient < 0.0 ? " - " : " + ");
        if (k == 0 || std::string_view(number) != "1") equation += number;
        if (k > 0) equation += 'x';
        if (k > 1) equation += '^' + std::to_string(k);
    }
    return here.returning("y = " + (equation.empty() ? "0" : equation));
}

WorkList<double> PolyRoot(View<double> Coefficients, double YValue, double XMin, double XMax) {
    WorkList<double> found;
    Routine here{"PolyRoot"};
    here.inputs(Coefficients, YValue, XMin, XMax);
    if (XMin > XMax) here.fail<errlibnonsenseinputs>("XMin", "XMin is above XMax");
    if (Coefficients.lastnonblank() == 0) here.fail<errlibinsuffrange>("Coefficients");
    int degree = Coefficients.size() - 1;
    while (degree > 0 && Coefficients.get(degree + 1) == 0.0) --degree;
    here.at_most(degree, max_root_degree, "Coefficients");
    if (degree == 0)
        here.fail<polyfail>("Coefficients",
                            iszero(Coefficients.get(1) - YValue) ? "Every X is a solution" : "No X is a solution");
    const auto a = [&](int k) { return Coefficients.get(k + 1) - (k == 0 ? YValue : 0.0); };
    double roots[max_root_degree + 1];
    int zeros = 0; // how often X is a factor
    while (a(zeros) == 0.0) ++zeros;
    MonicPolynomial p;
    p.degree = degree - zeros;
    for (int k = 0; k <= p.degree; ++k) {
        p.c[k] = a(zeros + k) / a(degree);
        if (!std::isfinite(p.c[k])) here.fail<polyfail>("Coefficients", "The coefficients differ too much in size");
    }
    int count = p.degree > 0 ? real_roots(p, roots) : 0;
    if (zeros > 0) {
        roots[count++] = 0.0;
        std::sort(roots, roots + count);
    }
    found->dimension(count);
    int inside = 0;
    for (int i = 0; i < count; ++i) {
        here.info("Root: ", roots[i]);
        if (roots[i] >= XMin - tolerance && roots[i] <= XMax + tolerance) found(++inside) = roots[i];
    }
    if (inside == 0) here.fail<polyfail>("", "No X between ", XMin, " and ", XMax, " is a solution");
    found->setname("Roots");
    found->dimension(inside);
    return here.returning(std::move(found));
}

} // namespace qx
