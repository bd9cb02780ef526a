#include "numerics/interpolation.h"
#include "core/routine.h"
#include "numerics/lookup.h"

#include <numbers>

namespace qx {

namespace {

double place_of(double x) { return x; }
double place_of(const date& day) { return day.dtn(); }

struct Curve {
    int InterpType = by_line;
    double Tension = 0.0;
    double Bias = 0.0;
};

// The points of a table in rising order.
template <class X>
class Table {
  public:
    /// Of two lists of equal length.
    Table(const Routine& here, View<X> places, View<double> values) : places_(places), values_(values) {
        if (places.size() == 0) here.fail<errlibinsuffrange>(places.name());
        const Direction direction = places.thisdirection();
        if (direction == mixed)
            here.fail<errlibbadlistprogression>(places.name(),
                                                "Cannot resolve whether your list is ascending or descending");
        falls_ = direction == descending;
    }

    int size() const { return places_.size(); }
    double x(int i) const { return place_of(places_.get(at(i))); }
    double y(int i) const { return values_.get(at(i)); }
    /// The slope of the line from point i to the next.
    double slope(int i) const { return (y(i + 1) - y(i)) / (x(i + 1) - x(i)); }
    /// True if a line leads from point i to the next: both exist and the value does not just jump.
    bool joined(int i) const { return i >= 1 && i < size() && !isequal(x(i), x(i + 1)); }

    /// The last point at or below a place; 0 if all are above.
    int at_or_below(double place) const {
        int low = 0;
        for (int high = size() + 1; high - low > 1;) {
            const int middle = (low + high) / 2;
            (x(middle) <= place + tolerance ? low : high) = middle;
        }
        return low;
    }

  private:
    int at(int i) const { return falls_ ? size() + 1 - i : i; }

    View<X> places_;
    View<double> values_;
    bool falls_ = false;
};

/// The table of two lists as they come from cells.
template <class X>
Table<X> table_of(const Routine& here, View<X> places, View<double> values) {
    places = places.upto_last_nonblank();
    values = values.upto_last_nonblank();
    places.checksamesize(values);
    return {here, places, values};
}

// The slope of the cubic at point i, from the lines before and after it; at an end or a jump one stands for both.
template <class X>
double cubic_slope(const Table<X>& table, int i, const Curve& curve) {
    const double before = table.slope(table.joined(i - 1) ? i - 1 : i);
    const double after = table.slope(table.joined(i) ? i : i - 1);
    return (1.0 - curve.Tension) * ((1.0 + curve.Bias) * before + (1.0 - curve.Bias) * after) / 2.0;
}

template <class X>
double between(const Table<X>& table, int i, double place, const Curve& curve) {
    const double y1 = table.y(i), y2 = table.y(i + 1);
    const double width = table.x(i + 1) - table.x(i);
    const double mu = (place - table.x(i)) / width;
    switch (curve.InterpType) {
    case by_step:
        return interpolate_step(y1, y2, mu);
    case by_cosine:
        return interpolate_cosine(y1, y2, mu);
    case by_cubic:
        return interpolate_cubic(y1, cubic_slope(table, i, curve) * width, y2, cubic_slope(table, i + 1, curve) * width,
                                 mu);
    case by_growth:
        return interpolate_exponential(y1, y2, mu);
    default:
        return interpolate_linear(y1, y2, mu);
    }
}

// Beyond point `end`, past the line from point i to the next.
template <class X>
double beyond(const Table<X>& table, int end, int i, double place, const Curve& curve) {
    if (!table.joined(i)) return table.y(end);
    switch (curve.InterpType) {
    case by_step:
    case by_cosine:
        return table.y(end);
    case by_cubic:
        return table.y(end) + cubic_slope(table, end, curve) * (place - table.x(end));
    default:
        return between(table, i, place, curve);
    }
}

template <class X>
double on_curve(const Routine& here, const Table<X>& table, double place, const Curve& curve) {
    const int n = table.size();
    const int i = table.at_or_below(place);
    if (i >= 1 && isequal(place, table.x(i))) {
        here.info("At the point ", table.x(i), ", ", table.y(i));
        return table.y(i);
    }
    if (i == 0 || i == n) {
        here.warning("Outside the table, which runs from ", table.x(1), " to ", table.x(n));
        return i == 0 ? beyond(table, 1, 1, place, curve) : beyond(table, n, n - 1, place, curve);
    }
    here.info("Between the points ", table.x(i), ", ", table.y(i), " and ", table.x(i + 1), ", ", table.y(i + 1));
    return between(table, i, place, curve);
}

template <class X>
double interp(const Routine& here, View<X> places, View<double> values, const X& at, double OnErrorN) {
    const Table<X> table = table_of(here, places, values);
    const double place = place_of(at);
    if (place < table.x(1) - tolerance || place > table.x(table.size()) + tolerance) {
        if (OnErrorN == no_fallback)
            here.fail<errliblookupfailed>(places.name(), "The input ", at, " lies outside the table, which runs from ",
                                          table.x(1), " to ", table.x(table.size()));
        here.info("Outside the table, returning OnErrorN");
        return OnErrorN;
    }
    return on_curve(here, table, place, Curve{});
}

template <class X>
double collared(const Routine& here, View<X> places, View<double> values, const X& at) {
    const Table<X> table = table_of(here, places, values);
    const double low = table.x(1), high = table.x(table.size());
    const double place = place_of(at);
    return on_curve(here, table, place > high ? high : place < low ? low : place, Curve{});
}

template <class X>
double interpolated(Routine& here, View<X> places, View<double> values, double place, int InterpType, double Tension,
                    double Bias) {
    const Table<X> table = table_of(here, places, values);
    return on_curve(here, table, place, {InterpType, Tension, Bias});
}

} // namespace

void check_curve(Routine& here, int InterpType, double Tension, double Bias) {
    here.limit(InterpType, by_step, by_growth, "InterpType");
    here.limit(Tension, -1, 1, "Tension");
    here.limit(Bias, -1, 1, "Bias");
}

double interpolate_cosine(double y1, double y2, double mu) {
    return interpolate_linear(y1, y2, (1.0 - std::cos(mu * std::numbers::pi)) / 2.0);
}

double interpolate_cubic(double y1, double slope1, double y2, double slope2, double mu) {
    const double mu2 = mu * mu, mu3 = mu2 * mu;
    return y1 + (3.0 * mu2 - 2.0 * mu3) * (y2 - y1) + (mu3 - 2.0 * mu2 + mu) * slope1 + (mu3 - mu2) * slope2;
}

double interpolate_exponential(double y1, double y2, double mu) {
    if (iszero(y1) && iszero(y2)) return 0.0;
    if (y1 == 0.0 || y2 == 0.0 || (y1 > 0.0) != (y2 > 0.0))
        Routine{"interpolate_exponential", Routine::internal}.fail<errlibbadexponentiation>(
            "", "No constant rate of growth leads from ", y1, " to ", y2);
    return y1 * std::pow(y2 / y1, mu);
}

double Interp(View<double> InputRange, View<double> OutputRange, double InputValue, double OnErrorN) {
    Routine here{"Interp"};
    here.inputs(InputRange, OutputRange, InputValue, OnErrorN);
    return here.returning(interp(here, InputRange, OutputRange, InputValue, OnErrorN));
}

double InterpCollar(View<double> InputRange, View<double> OutputRange, double InputValue) {
    Routine here{"InterpCollar"};
    here.inputs(InputRange, OutputRange, InputValue);
    return here.returning(collared(here, InputRange, OutputRange, InputValue));
}

double InterpExtrap(View<double> InputRange, View<double> OutputRange, double InputValue) {
    Routine here{"InterpExtrap"};
    here.inputs(InputRange, OutputRange, InputValue);
    return here.returning(interpolated(here, InputRange, OutputRange, InputValue, by_line, 0.0, 0.0));
}

double InterpDate(View<date> InputDateRange, View<double> OutputRange, const date& TheDate, double OnErrorN) {
    Routine here{"InterpDate"};
    here.inputs(InputDateRange, OutputRange, TheDate, OnErrorN);
    return here.returning(interp(here, InputDateRange, OutputRange, TheDate, OnErrorN));
}

double InterpDateCollar(View<date> InputDateRange, View<double> OutputRange, const date& TheDate) {
    Routine here{"InterpDateCollar"};
    here.inputs(InputDateRange, OutputRange, TheDate);
    return here.returning(collared(here, InputDateRange, OutputRange, TheDate));
}

double InterpDateExtrap(View<date> InputDateRange, View<double> OutputRange, const date& TheDate) {
    Routine here{"InterpDateExtrap"};
    here.inputs(InputDateRange, OutputRange, TheDate);
    return here.returning(interpolated(here, InputDateRange, OutputRange, TheDate.dtn(), by_line, 0.0, 0.0));
}

double Interpolate(View<double> InputRange, View<double> OutputRange, double InputValue, int InterpType, double XMin,
                   double XMax, double Tension, double Bias) {
    Routine here{"Interpolate"};
    here.inputs(InputRange, OutputRange, InputValue, InterpType, XMin, XMax, Tension, Bias);
    check_curve(here, InterpType, Tension, Bias);
    if (XMin > XMax) here.fail<errlibnonsenseinputs>("XMin", "XMin is above XMax");
    const double place = InputValue > XMax ? XMax : InputValue < XMin ? XMin : InputValue;
    return here.returning(interpolated(here, InputRange, OutputRange, place, InterpType, Tension, Bias));
}

double interpolate(View<double> places, View<double> values, double place, int InterpType, double Tension,
                   double Bias) {
    Routine here{"interpolate", Routine::internal};
    return here.returning(on_curve(here, Table<double>(here, places, values), place, {InterpType, Tension, Bias}));
}

double InterpolateDate(View<date> InputDateRange, View<double> OutputRange, const date& TheDate, int InterpType,
                       const date& DateMin, const date& DateMax, double Tension, double Bias) {
    Routine here{"InterpolateDate"};
    here.inputs(InputDateRange, OutputRange, TheDate, InterpType, DateMin, DateMax, Tension, Bias);
    check_curve(here, InterpType, Tension, Bias);
    const double min = DateMin.iszero() ? no_XMin : DateMin.dtn();
    const double max = DateMax.iszero() ? no_XMax : DateMax.dtn();
    if (min > max) here.fail<errlibnonsenseinputs>("DateMin", "DateMin is after DateMax");
    const double place = std::max(min, std::min<double>(max, TheDate.dtn()));
    return here.returning(interpolated(here, InputDateRange, OutputRange, place, InterpType, Tension, Bias));
}

} // namespace qx
