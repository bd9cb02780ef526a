#include "core/safe_arithmetic.h"

#include "core/routine.h"

#include <algorithm>
#include <cmath>

namespace qx {

double SDiv(double Numerator, double Denominator) {
    Routine here{"SDiv"};
    here.inputs(Numerator, Denominator);
    return here.returning(safe_divide(Numerator, Denominator));
}

double SPow(double Number, double Exponent) {
    Routine here{"SPow"};
    here.inputs(Number, Exponent);
    return here.returning(SafePow(Number, Exponent));
}

bool StdEq(double Number1, double Number2) {
    Routine here{"StdEq"};
    here.inputs(Number1, Number2);
    return here.returning(isequal(Number1, Number2));
}

namespace {

double to_multiple(const char* name, double Number, double Multiple, double Origin, double (*to_whole)(double)) {
    Routine here{name};
    here.inputs(Number, Multiple, Origin);
    const double step = std::fabs(Multiple);
    if (iszero(step)) {
        here.warning("The multiple is zero, returning the number as it is");
        return here.returning(Number);
    }
    const double count = (Number - Origin) / step;
    const double nearest = std::round(count);
    const bool on_a_point = std::fabs(count - nearest) <= tolerance * std::max(1.0, std::fabs(count));
    return here.returning(on_a_point ? Number : Origin + to_whole(count) * step);
}

} // namespace

double SCeiling(double Number, double Multiple, double Origin) {
    return to_multiple("SCeiling", Number, Multiple, Origin, [](double count) { return std::ceil(count); });
}
double SFloor(double Number, double Multiple, double Origin) {
    return to_multiple("SFloor", Number, Multiple, Origin, [](double count) { return std::floor(count); });
}
double SRound(double Number, double Multiple, double Origin) {
    return to_multiple("SRound", Number, Multiple, Origin, [](double count) {
        return std::round(count +
                          std::copysign(tolerance * std::max(1.0, std::fabs(count)), count)); // 1.15 / 0.1 is a half
    });
}

} // namespace qx
