#include "accounting/production_decline.h"

#include "accounting/years_later.h"
#include "calendar/date_arithmetic.h"
#include "core/routine.h"
#include "projections/levels.h"
#include "projections/spreads.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qx {

namespace {

bool is_no_rate(double rate) { return iszero(rate); }

void check_param(Routine& here, double DeclineParam) { here.at_least(DeclineParam, 0.0, "DeclineParam"); }

enum DeclineKind { exponential, harmonic, hyperbolic };

DeclineKind kind_of(double b) {
    if (iszero(b)) return exponential;
    return isequal(b, 1.0) ? harmonic : hyperbolic;
}

/// A curve of one kind from a plateau rate.
class Curve {
  public:
    Curve(double plateau_rate, double b) : kind_(kind_of(b)), q0_(plateau_rate), b_(b) {}

    /// a, from the reserves produced down to a rate.
    double parameter(double reserves, double rate) const {
        switch (kind_) {
        case exponential:
            return (q0_ - rate) / reserves;
        case harmonic:
            return safe_divide(q0_, reserves) * std::log(safe_divide(q0_, rate));
        default:
            return safe_divide((power(q0_, 1.0 - b_) - power(rate, 1.0 - b_)) * safe_divide(power(q0_, b_), 1.0 - b_),
                               reserves);
        }
    }
    /// Years in which the reserves are produced down to a rate.
    double years_to_produce(double reserves, double rate) const {
        if (iszero(q0_) || iszero(rate)) return std::numeric_limits<double>::infinity();
        if (isequal(q0_, rate)) return reserves / q0_; // the limit of all three
        switch (kind_) {
        case exponential:
            return -std::log(rate / q0_) * reserves / (q0_ - rate);
        case harmonic:
            return (q0_ / rate - 1.0) * reserves / std::log(q0_ / rate) / q0_;
        default:
            return (power(q0_ / rate, b_) - 1.0) * reserves * (1.0 - b_) / (power(q0_, b_) * b_) /
                   (power(q0_, 1.0 - b_) - power(rate, 1.0 - b_));
        }
    }
    /// Years down to a rate.
    double years_to_rate(double rate, double a) const {
        switch (kind_) {
        case exponential:
            return -std::log(rate / q0_) / a;
        case harmonic:
            return safe_divide(q0_ / rate - 1.0, a);
        default:
            return safe_divide(power(q0_ / rate, b_) - 1.0, a * b_);
        }
    }
    double rate_at(double t, double a) const {
        if (t == 0.0) return q0_; // however steep
        switch (kind_) {
        case exponential:
            return q0_ * std::exp(-a * t);
        case harmonic:
            return q0_ / (a * t + 1.0);
        default:
            return q0_ * power(b_ * a * t + 1.0, -1.0 / b_);
        }
    }
    double cumulative(double t, double a) const {
        if (t <= 0.0 || iszero(a) || std::isinf(a)) return 0.0;
        switch (kind_) {
        case exponential:
            return safe_divide(q0_, a) * (1.0 - std::exp(-a * t));
        case harmonic: {
            const double fall = q0_ / rate_at(t, a);
            return safe_divide(q0_ * t * std::log(fall), fall - 1.0);
        }
        default:
            return safe_divide(power(q0_, b_), (1.0 - b_) * a) *
                   (power(q0_, 1.0 - b_) - power(rate_at(t, a), 1.0 - b_));
        }
    }
    /// The production between two times of reserves that are produced down to a rate.
    double production(const Routine& here, double t1, double t2, double reserves, double rate) const {
        const double a = parameter(reserves, rate);
        if (here.traced()) describe_decline(here, a, years_to_produce(reserves, rate));
        if (t2 <= 0.0) return 0.0;
        return std::min(cumulative(t2, a), reserves) - std::min(cumulative(t1, a), reserves);
    }

  private:
    static double power(double base, double exponent) { return std::pow(base, exponent); }
    void describe_decline(const Routine& here, double a, double years) const {
        switch (kind_) {
        case exponential:
            return here.info("Exponential Decline: Decline Parameter a=", a, ".  Length of decline (years)=", years);
        case harmonic:
            return here.info("Harmonic Decline: ai=", a, ".  Length of decline(years)=", years);
        default:
            return here.info("Hyperbolic Decline (b=", b_, "): ai=", a, ".  Length of decline(years)=", years);
        }
    }

    DeclineKind kind_;
    double q0_, b_;
};

/// Where a field's decline starts.
struct Start {
    double reserves; ///< of the whole field
    double plateau;  ///< of these, what is produced before
    date when;

    double in_decline() const { return reserves - plateau; }
};

/// With the reserves given.
Start start_of_reserves(double reserves, const Field& field, const Measure& measure) {
    const double plateau = reserves * field.DeclinePoint;
    return {reserves, plateau, DepletionDate(plateau, field.FromDates, field.AnnualRates, measure)};
}

/// With the rate of decline given: on which step decline starts depends on the reserves, and they on its rate. The
/// steps are tried from the last one on.
Start start_of_rate(const Routine& here, const Field& field, const Measure& measure) {
    double tail = 0.0, total = 0.0;
    for (int i = field.FromDates.size(); i >= 1; --i) {
        const TraceBlock pass = here.pass(i, "Decline from the rate of step ", i);
        tail = CumProd(field.AbandonRate, field.AnnualRates.single_or(i), field.decline_rate(), field.DeclineParam);
        total = tail / (1.0 - field.DeclinePoint);
        if (StartDecline(total, field.FromDates, field.AnnualRates, field.DeclinePoint, measure) >= field.FromDates(i))
            break;
    }
    here.info("ResTail=", tail, ", reserves ", total);
    const double plateau = total - tail;
    return {total, plateau, DepletionDate(plateau, field.FromDates, field.AnnualRates, measure)};
}

double plateau_rate_at(const date& day, const Field& field) {
    return Levels(day, FromSteps{DateCrit, field.FromDates}, field.AnnualRates);
}

/// The date of abandonment of a field whose reserves are known.
date abandonment(const Routine& here, const Start& start, const Curve& curve, const Field& field,
                 const Measure& measure) {
    return years_later(here, start.when, curve.years_to_produce(start.in_decline(), field.AbandonRate), measure);
}

} // namespace

double DeclineRate(double ReservesDec, double PlateauRate, double AbandonRate, double DeclineParam) {
    Routine here{"DeclineRate"};
    here.inputs(ReservesDec, PlateauRate, AbandonRate, DeclineParam);
    check_param(here, DeclineParam);
    return here.returning(Curve(PlateauRate, DeclineParam).parameter(ReservesDec, AbandonRate));
}

double CumProd(double AnnProdRate, double PlateauRate, double DecRate, double DeclineParam) {
    Routine here{"CumProd", Routine::internal};
    here.arguments(QX_NAMED(AnnProdRate, PlateauRate, DecRate, DeclineParam));
    check_param(here, DeclineParam);
    const Curve curve(PlateauRate, DeclineParam);
    const double t = curve.years_to_rate(AnnProdRate, DecRate);
    here.info("Production Rate Input=", AnnProdRate, ", calculated value of t (yrs)", t);
    return here.returning(curve.cumulative(t, DecRate));
}

double Decline(double Yrs, double ResvsOrDcRate, double PlateauRate, double AbandonRate, double DeclineParam,
               int DeclineSwitch) {
    Routine here{"Decline"};
    here.inputs(Yrs, ResvsOrDcRate, PlateauRate, AbandonRate, DeclineParam, DeclineSwitch);
    check_param(here, DeclineParam);
    const Curve curve(PlateauRate, DeclineParam);
    const bool reserves_given = ResvsOrDcRate > 0.0, cumulative = DeclineSwitch == 0;
    double a = 0.0 - ResvsOrDcRate; // not -0
    if (reserves_given) {
        here.info("Reserves Input=", ResvsOrDcRate);
        if (cumulative) return here.returning(curve.production(here, 0.0, Yrs, ResvsOrDcRate, AbandonRate));
        a = curve.parameter(ResvsOrDcRate, AbandonRate);
        here.info("Decline Rate calculated=", a);
    } else {
        here.info("Decline Rate Input=", a);
    }
    const double abandoned = curve.years_to_rate(AbandonRate, a);
    here.info("AbandonmentYears=", abandoned);
    if (cumulative) return here.returning(curve.cumulative(std::min(Yrs, abandoned), a));
    if (Yrs >= abandoned) {
        here.info("Time is after abandonment, returning zero production rate");
        return here.returning(0.0);
    }
    return here.returning(curve.rate_at(Yrs, a));
}

date StartDecline(double Reserves, View<date> FromDates, View<double> AnnualRates, double DeclinePoint,
                  const Measure& measure) {
    Routine here{"StartDecline"};
    here.inputs(Reserves, FromDates, AnnualRates, DeclinePoint, measure);
    measure.check(here);
    return here.returning(DepletionDate(Reserves * DeclinePoint, FromDates, AnnualRates, measure));
}

date AbandonDate(const Field& field, const Measure& measure) {
    Routine here{"AbandonDate"};
    here.inputs(field, measure);
    check_param(here, field.DeclineParam);
    measure.check(here);
    const bool reserves_given = field.ResvsOrDcRate > 0.0;
    const Start start =
        reserves_given ? start_of_reserves(field.ResvsOrDcRate, field, measure) : start_of_rate(here, field, measure);
    const Curve curve(plateau_rate_at(start.when, field), field.DeclineParam);
    if (reserves_given) return here.returning(abandonment(here, start, curve, field, measure));
    const double years = curve.years_to_rate(field.AbandonRate, field.decline_rate());
    here.info("AbandonmentYears=", years);
    return here.returning(years_later(here, start.when, years, measure));
}

double ProdProf(const timeperiod& Time, const Field& field, const Basis& basis, int PPSwitch) {
    Routine here{"ProdProf"};
    here.inputs(Time, field, basis, PPSwitch);
    check_param(here, field.DeclineParam);
    basis.check(here);
    if (field.FromDates.empty() || std::all_of(field.AnnualRates.begin(), field.AnnualRates.end(), is_no_rate)) {
        here.info("Zero plateau rate implies zero production, returning 0.");
        return here.returning(0.0);
    }
    const Measure measure{basis.DayCount, basis.Periods};
    double reserves = field.ResvsOrDcRate;
    if (reserves > 0.0) {
        here.info("Reserves Input=", reserves);
    } else {
        reserves = start_of_rate(here, field, measure).reserves;
        here.info("Decline Rate Input=", field.decline_rate(), ", Reserves Calculated=", reserves);
    }
    const Start start = start_of_reserves(reserves, field, measure);
    const double q0 = plateau_rate_at(start.when, field), in_decline = (1.0 - field.DeclinePoint) * reserves;
    const Curve curve(q0, field.DeclineParam);
    const date& first = field.FromDates.first();
    const date abandoned = abandonment(here, start, curve, field, measure);
    const timeperiod period =
        basis.cash() ? CashTime(Time, basis.Periods, first, abandoned, true, basis.ProjMode) : Time;

    const auto years_to = [&](const date& day) {
        return diffmonths(start.when, day, basis.DayCount, basis.Periods) / 12.0;
    };
    const auto rate_on = [&](const date& day) {
        if (day <= first || day > abandoned) return 0.0;
        if (day < start.when) return plateau_rate_at(day, field);
        return curve.rate_at(years_to(day), curve.parameter(in_decline, field.AbandonRate));
    };
    switch (PPSwitch) {
    case production_rate_at_start:
        return here.returning(rate_on(period.from()));
    case production_rate_at_finish:
        return here.returning(rate_on(period.to()));
    case production_decline_rate:
        return here.returning(curve.parameter(in_decline, field.AbandonRate));
    case production_reserves:
        return here.returning(reserves);
    default:
        break;
    }
    const FSteppedSpread plateau{start.plateau, field.FromDates, field.AnnualRates};
    double production = spread_over(period, plateau, basis.accruals());
    if (PPSwitch == production_in_period) {
        const double t1 = years_to(period.from()), t2 = years_to(period.to());
        if (t2 > 0.0 && q0 > 0.0) production += curve.production(here, t1, t2, in_decline, field.AbandonRate);
    }
    return here.returning(production);
}

std::string DescribeDecline(double DeclineParam) {
    Routine here{"DescribeDecline"};
    here.inputs(DeclineParam);
    check_param(here, DeclineParam);
    switch (kind_of(DeclineParam)) {
    case exponential:
        return here.returning(std::string("Exponential Decline"));
    case harmonic:
        return here.returning(std::string("Harmonic Decline"));
    default:
        return here.returning(text_of("Hyperbolic Decline, b=", DeclineParam));
    }
}

double STOIIP(double Swc, double Porosity, double Boi, double NetRockVolume) {
    Routine here{"STOIIP"};
    here.inputs(Swc, Porosity, Boi, NetRockVolume);
    if (Boi == 0.0) here.fail<errlibdivzero>("Boi", "The formation volume factor is zero");
    return here.returning(NetRockVolume * Porosity * (1.0 - Swc) / Boi);
}

} // namespace qx
