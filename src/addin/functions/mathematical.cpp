// Worksheet functions of polynomials and of samples.
#include "addin/declare.h"
#include "numerics/polynomials.h"
#include "numerics/statistics.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Mathematical;

constexpr Argument XValues{"XValues", "The places of the points. A point with a blank cell does not count"};
constexpr Argument YValues{"YValues", "The values of the points, as many as places"};
constexpr Argument Degree{"Degree", "Degree of the polynomial, 0 to 10: 1 a line, 2 a parabola"};
constexpr Argument Coefficients{"Coefficients", "Coefficients of the polynomial from the constant up: 3, 0, 2 is 3 + "
                                                "2x^2"};
constexpr Argument Values{"Values", "The values; blank cells do not count"};

} // namespace

constexpr Function BestPoly{
    .name = "BestPoly",
    .category = category,
    .calls = core<qx::BestPoly>,
    .help =
        "The coefficients, from the constant up, of the polynomial that explains points best for its degree: the one "
        "with the highest adjusted R squared",
    .args = {XValues, YValues, optional("MaxDegree", 4, "Highest degree to try, 0 to 10")},
    .examples = {"BestPoly({1;2;3;4;5;6}, {2;5;10;17;26;37}) ~ {1,0,1} 1e-9"},
    .see_also = "PolyReg,RSqrdPoly,CalcPoly",
};
QX_EXPORT(BestPoly, 3);

constexpr Function CalcPoly{
    .name = "CalcPoly",
    .category = category,
    .calls = core<qx::CalcPoly>,
    .help = "The value of a polynomial",
    .args = {Coefficients, {"XValue", "Where"}},
    .examples = {"CalcPoly({3;0;2}, 5) = 53"},
    .see_also = "PolyReg,PolyRoot,PolyEqn",
};
QX_EXPORT(CalcPoly, 2);

constexpr Function LinReg{
    .name = "LinReg",
    .category = category,
    .calls = core<qx::LinReg>,
    .help = "The constant and the slope of the straight line that fits points best, by least squares",
    .args = {XValues, YValues},
    .examples = {"LinReg({1;2;3;4}, {3;5;7;9}) ~ {1,2} 1e-12"},
    .see_also = "PolyReg,RSqrdPoly,CalcPoly",
};
QX_EXPORT(LinReg, 2);

constexpr Function MeanAvg{
    .name = "MeanAvg",
    .category = category,
    .calls = core<qx::MeanAvg>,
    .help = "The arithmetic mean of the values",
    .args = {Values},
    .examples = {"MeanAvg({1;2;6}) = 3"},
    .see_also = "MeanNZ,SampleSD",
};
QX_EXPORT(MeanAvg, 1);

constexpr Function PolyEqn{
    .name = "PolyEqn",
    .category = category,
    .calls = core<qx::PolyEqn>,
    .help = "The equation of a polynomial as text",
    .args = {Coefficients, optional("Digits", 6, "Most significant digits of a number, 1 to 15")},
    .examples = {"PolyEqn({3;0;-2.5}) = \"y = 3 - 2.5x^2\"", "PolyEqn({0;1;1}) = \"y = x + x^2\""},
    .see_also = "PolyReg,CalcPoly",
};
QX_EXPORT(PolyEqn, 2);

constexpr Function PolyReg{
    .name = "PolyReg",
    .category = category,
    .calls = core<qx::PolyReg>,
    .help =
        "The coefficients, from the constant up, of the polynomial of a degree that fits points best (least squares by "
        "Householder's QR; more points than coefficients, degree up to 10)",
    .args = {XValues, YValues, Degree},
    .examples = {"PolyReg({1;2;3;4}, {2;5;10;17}, 2) ~ {1,0,1} 1e-12"},
    .see_also = "BestPoly,LinReg,RSqrdPoly,CalcPoly,PolyEqn",
};
QX_EXPORT(PolyReg, 3);

constexpr Function PolyRoot{
    .name = "PolyRoot",
    .category = category,
    .calls = core<qx::PolyRoot>,
    .help =
        "Where a polynomial takes a value: every such X, in rising order (eigenvalues of the companion matrix, degree "
        "up to 20; roots within a millionth of their size count as one)",
    .args = {Coefficients, optional("YValue", 0.0, "The value that it takes"),
             optional("XMin", -1e12, "Lowest X to look at"), optional("XMax", 1e12, "Highest X to look at")},
    .examples = {"PolyRoot({6;-5;1}) ~ {2,3} 1e-12", "PolyRoot({0;0;1}, 9, 0) ~ 3 1e-12", "PolyRoot({1;0;1}) ! #NUM!"},
    .see_also = "CalcPoly,PolyReg,SignChanges",
};
QX_EXPORT(PolyRoot, 4);

constexpr Function RSqrdPoly{
    .name = "RSqrdPoly",
    .category = category,
    .calls = core<qx::RSqrdPoly>,
    .help =
        "R squared of the polynomial that fits points best: the part of the variance of the values that it explains, 0 "
        "to 1",
    .args = {XValues, YValues, Degree},
    .examples = {"RSqrdPoly({1;2;3}, {1;3;2}, 1) ~ 0.25 1e-12"},
    .see_also = "PolyReg,BestPoly",
};
QX_EXPORT(RSqrdPoly, 3);

constexpr Function SampleSD{
    .name = "SampleSD",
    .category = category,
    .calls = core<qx::SampleSD>,
    .help = "The standard deviation of a sample, with one less than the number of values",
    .args = {Values},
    .examples = {"SampleSD({1;3;5}) = 2"},
    .see_also = "SampleVar,MeanAvg",
};
QX_EXPORT(SampleSD, 1);

constexpr Function SampleVar{
    .name = "SampleVar",
    .category = category,
    .calls = core<qx::SampleVar>,
    .help = "The variance of a sample, with one less than the number of values",
    .args = {Values},
    .examples = {"SampleVar({1;3;5}) = 4"},
    .see_also = "SampleSD,MeanAvg",
};
QX_EXPORT(SampleVar, 1);

constexpr Function SignChanges{
    .name = "SignChanges",
    .category = category,
    .calls = core<qx::SignChanges>,
    .help = "How often the sign changes along a list, zeros passed over: the most rates of return that a cash flow can "
            "have",
    .args = {Values},
    .examples = {"SignChanges({-100;0;60;80;-10}) = 2"},
    .see_also = "IRRE,PolyRoot",
};
QX_EXPORT(SignChanges, 1);

} // namespace qx::worksheet
