#include "hosts/sheet/builtin_tools.h"

namespace qx::sheet::builtin {

namespace {

/// Level payments at a rate per period: the rate, their number, the payment and whether it comes in advance.
struct Annuity {
    Annuity(double rate, double periods, bool in_advance)
        : rate(rate),
          growth_less_one(rate > -1.0 ? std::expm1(periods * std::log1p(rate)) : std::pow(1.0 + rate, periods) - 1.0),
          factor(rate == 0.0 ? periods : (in_advance ? 1.0 + rate : 1.0) * growth_less_one / rate) {}

    double growth() const { return 1.0 + growth_less_one; }
    double future_value(double payment, double present) const { return -(present * growth() + payment * factor); }
    double present_value(double payment, double future) const { return -(future + payment * factor) / growth(); }
    double payment(double present, double future) const { return -(future + present * growth()) / factor; }

    double rate, growth_less_one, factor; ///< factor: what payments of 1 amount to at the end
};

/// The annuity of rate, nper, (a third), [fv], [type] in the order of PV, FV and PMT.
Annuity annuity(A a) { return {a.number(0), a.number(1), a.number(4, 0.0) != 0.0}; }

Value present_value_of_flows(A a) {
    const double rate = a.number(0);
    if (rate == -1.0) return Value::error(xlerrDiv0);
    double sum = 0.0, discount = 1.0;
    const Value error = each_number(
        a, [&](double x) { sum += x * (discount /= 1.0 + rate); }, 1);
    return error.is_error() ? error : number(sum);
}

/// Interest in one period of a loan that level payments repay: IPMT, with the sign of a payment.
double interest_part(double rate, double period, double periods, double present, double future, bool in_advance) {
    const double payment = Annuity(rate, periods, in_advance).payment(present, future);
    if (period == 1.0) return in_advance ? 0.0 : -present * rate;
    const Annuity before(rate, period - (in_advance ? 2.0 : 1.0), in_advance);
    return (before.future_value(payment, present) - (in_advance ? payment : 0.0)) * rate;
}

/// IPMT and PPMT: rate, period, nper, pv, [fv], [type].
Value part_of_payment(A a, bool interest) {
    const double rate = a.number(0), period = a.number(1), periods = a.number(2), present = a.number(3);
    const double future = a.number(4, 0.0);
    const bool in_advance = a.number(5, 0.0) != 0.0;
    if (!(period >= 1.0 && period < periods + 1.0)) return num();
    const double part = interest_part(rate, period, periods, present, future, in_advance);
    return number(interest ? part : Annuity(rate, periods, in_advance).payment(present, future) - part);
}

/// CUMIPMT and CUMPRINC: rate, nper, pv, first period, last period, type.
Value sum_of_parts(A a, bool interest) {
    constexpr double most_periods = 1e6;
    const double rate = a.number(0), periods = a.number(1), present = a.number(2), type = a.number(5);
    const double first = std::ceil(a.number(3)), last = std::floor(a.number(4));
    if (!(rate > 0.0 && periods > 0.0 && present > 0.0 && first >= 1.0 && first <= last && last <= periods &&
          periods <= most_periods && (type == 0.0 || type == 1.0)))
        return num();
    const double payment = Annuity(rate, periods, type != 0.0).payment(present, 0.0);
    double sum = 0.0;
    for (double period = first; period <= last; period += 1.0) {
        const double part = interest_part(rate, period, periods, present, 0.0, type != 0.0);
        sum += interest ? part : payment - part;
    }
    return number(sum);
}

Value number_of_periods(A a) {
    const double rate = a.number(0), payment = a.number(1), present = a.number(2), future = a.number(3, 0.0);
    if (rate == 0.0) return payment == 0.0 ? num() : number(-(present + future) / payment);
    if (rate <= -1.0) return num();
    const double due = payment * (a.number(4, 0.0) != 0.0 ? 1.0 + rate : 1.0) / rate;
    const double ratio = (due - future) / (due + present);
    return ratio > 0.0 ? number(std::log(ratio) / std::log1p(rate)) : num();
}

/// A root of f above -1: Newton's steps from a guess, else the nearest change of sign to either side, halved.
template <class F>
bool find_rate(F f, double guess, double& rate) {
    constexpr double exact = 1e-14, nearly_all_lost = -1.0 + 1e-9; // beyond that the steps only near the bound
    rate = guess;
    for (int step = 0; step < 60; ++step) {
        const double width = 1e-7 * std::max(0.01, std::fabs(rate));
        const double here = f(rate), slope = (f(rate + width) - f(rate - width)) / (2.0 * width);
        if (here == 0.0) return true;
        if (!(std::isfinite(here) && std::isfinite(slope)) || slope == 0.0) break;
        double next = rate - here / slope;
        if (next <= -1.0) next = (rate - 1.0) / 2.0; // half way to the bound
        if (std::fabs(next - rate) <= exact * (1.0 + std::fabs(next))) {
            rate = next;
            if (next > nearly_all_lost) return true;
            break;
        }
        rate = next;
    }
    const auto halve = [&](double low, double high) {
        for (int step = 0; step < 200; ++step) {
            rate = (low + high) / 2.0;
            if ((f(rate) < 0.0) == (f(low) < 0.0))
                low = rate;
            else
                high = rate;
        }
        return std::isfinite(f(rate));
    };
    const auto bracketed = [&](double low, double high) {
        const double a = f(low), b = f(high);
        return std::isfinite(a) && std::isfinite(b) && (a < 0.0) != (b < 0.0);
    };
    double above = guess, below = guess;
    for (double step = 0.01; step < 1e6; step *= 1.3) {
        const double higher = above + step, lower = below - (below + 1.0) * 0.1;
        if (bracketed(above, higher)) return halve(above, higher);
        if (bracketed(lower, below)) return halve(lower, below);
        above = higher;
        below = lower;
    }
    return false;
}

Value found_rate(bool found, double rate) { return found ? number(rate) : Value::error(xlerrNum, "no rate was found"); }

Value rate_of_annuity(A a) {
    const double periods = a.number(0), payment = a.number(1), present = a.number(2), future = a.number(3, 0.0);
    const double guess = a.number(5, 0.1);
    if (!(periods > 0.0 && guess > -1.0)) return num();
    const bool in_advance = a.number(4, 0.0) != 0.0;
    double rate = 0.0;
    const bool found = find_rate(
        [&](double r) {
            const Annuity x(r, periods, in_advance);
            return present * x.growth() + payment * x.factor + future;
        },
        guess, rate);
    return found_rate(found, std::fabs(rate) < 1e-14 ? 0.0 : rate);
}

bool changes_sign(const std::vector<double>& flows) {
    return std::any_of(flows.begin(), flows.end(), [](double x) { return x > 0.0; }) &&
           std::any_of(flows.begin(), flows.end(), [](double x) { return x < 0.0; });
}

Value internal_rate(A a) {
    std::vector<double> flows;
    Value error = all_numbers({a.calculator, a.values, 1}, flows);
    if (error.is_error()) return error;
    if (!changes_sign(flows)) return Value::error(xlerrNum, "the flows need both signs");
    const double guess = a.number(1, 0.1);
    if (guess <= -1.0) return num();
    double rate = 0.0;
    const bool found = find_rate(
        [&](double r) {
            const double discount = 1.0 / (1.0 + r);
            double sum = 0.0;
            for (auto flow = flows.rbegin(); flow != flows.rend(); ++flow) sum = sum * discount + *flow;
            return sum;
        },
        guess, rate);
    return found_rate(found, rate);
}

Value modified_internal_rate(A a) {
    std::vector<double> flows;
    Value error = all_numbers({a.calculator, a.values, 1}, flows);
    if (error.is_error()) return error;
    if (!changes_sign(flows)) return Value::error(xlerrDiv0, "the flows need both signs");
    const double finance = a.number(1), reinvest = a.number(2), periods = static_cast<double>(flows.size()) - 1.0;
    double paid = 0.0, received = 0.0;
    for (std::size_t i = 0; i < flows.size(); ++i)
        if (flows[i] < 0.0)
            paid += flows[i] * std::pow(1.0 + finance, -static_cast<double>(i));
        else
            received += flows[i] * std::pow(1.0 + reinvest, periods - static_cast<double>(i));
    return number(std::pow(received / -paid, 1.0 / periods) - 1.0);
}

/// Flows with their dates, from arguments of as many cells.
struct DatedFlows {
    std::vector<double> amounts, dates;

    Value read(A a, int values, int days) {
        Value error = all_numbers({a.calculator, a.values + values, 1}, amounts);
        if (!error.is_error()) error = all_numbers({a.calculator, a.values + days, 1}, dates);
        if (error.is_error()) return error;
        if (amounts.size() != dates.size() || amounts.empty())
            return Value::error(xlerrNum, "there are not as many dates as flows");
        for (double& date : dates) {
            date = std::floor(date);
            if (date < std::floor(dates[0])) return Value::error(xlerrNum, "a flow is before the first one");
        }
        return {};
    }
    /// Present value on the first date at a yearly rate over years of 365 days.
    double value(double rate) const {
        double sum = 0.0;
        for (std::size_t i = 0; i < amounts.size(); ++i)
            sum += amounts[i] * std::pow(1.0 + rate, (dates[0] - dates[i]) / 365.0);
        return sum;
    }
};

Value dated_present_value(A a) {
    DatedFlows flows;
    const Value error = flows.read(a, 1, 2);
    if (error.is_error()) return error;
    return a.number(0) <= -1.0 ? num() : number(flows.value(a.number(0)));
}

Value dated_internal_rate(A a) {
    DatedFlows flows;
    const Value error = flows.read(a, 0, 1);
    if (error.is_error()) return error;
    if (!changes_sign(flows.amounts)) return Value::error(xlerrNum, "the flows need both signs");
    const double guess = a.number(2, 0.1);
    if (guess <= -1.0) return num();
    double rate = 0.0;
    const bool found = find_rate([&](double r) { return flows.value(r); }, guess, rate);
    return found_rate(found, rate);
}

// --- Depreciation ---------------------------------------------------------------------------------------------------

Value straight_line(A a) {
    return a.number(2) == 0.0 ? Value::error(xlerrDiv0) : number((a.number(0) - a.number(1)) / a.number(2));
}

Value sum_of_digits(A a) {
    const double cost = a.number(0), salvage = a.number(1), life = a.number(2), period = a.number(3);
    if (!(salvage >= 0.0 && life > 0.0 && period >= 1.0 && period <= life)) return num();
    return number((cost - salvage) * (life - period + 1.0) * 2.0 / (life * (life + 1.0)));
}

/// Depreciation in one period at factor/life of what is left, never below the salvage value.
double declining(double cost, double salvage, double life, double period, double factor) {
    const double rate = std::min(1.0, factor / life);
    const double before = rate == 1.0 ? (period == 1.0 ? cost : 0.0) : cost * std::pow(1.0 - rate, period - 1.0);
    const double after = rate == 1.0 ? 0.0 : cost * std::pow(1.0 - rate, period);
    return std::max(0.0, before - std::max(after, salvage));
}

Value double_declining(A a) {
    const double cost = a.number(0), salvage = a.number(1), life = a.number(2), period = a.number(3);
    const double factor = a.number(4, 2.0);
    if (!(cost >= 0.0 && salvage >= 0.0 && life > 0.0 && period >= 1.0 && period <= life && factor > 0.0)) return num();
    return number(declining(cost, salvage, life, period, factor));
}

/// Fixed-declining balance with a rate of three decimals and a first year of some months.
Value fixed_declining(A a) {
    const double cost = a.number(0), salvage = a.number(1), life = a.number(2), period = std::trunc(a.number(3));
    const double months = std::trunc(a.number(4, 12.0));
    if (!(cost >= 0.0 && salvage >= 0.0 && life > 0.0 && life <= 1200.0 && period >= 1.0 && months >= 1.0 &&
          months <= 12.0 && period <= life + (months < 12.0 ? 1.0 : 0.0)))
        return num();
    if (cost == 0.0) return number(0.0);
    const double rate = rounded(1.0 - std::pow(salvage / cost, 1.0 / life), 3);
    double total = 0.0, amount = cost * rate * months / 12.0;
    for (double year = 1.0; year < period; year += 1.0) {
        total += amount;
        amount = (cost - total) * rate;
    }
    return number(period == std::floor(life) + 1.0 && months < 12.0 ? amount * (12.0 - months) / 12.0 : amount);
}

/// Declining balance between two times, each period in proportion; it changes to a straight line where that is more.
Value variable_declining(A a) {
    const double cost = a.number(0), salvage = a.number(1), life = a.number(2), start = a.number(3), end = a.number(4);
    const double factor = a.number(5, 2.0);
    const bool may_change = a.count < 7 || !a.truth(6);
    if (!(cost >= 0.0 && salvage >= 0.0 && life > 0.0 && life <= 1e5 && start >= 0.0 && end >= start && end <= life &&
          factor > 0.0))
        return num();
    double total = 0.0, left = cost - salvage;
    bool straight = false;
    for (double period = 1.0; period < end + 1.0; period += 1.0) {
        double amount = declining(cost, salvage, life, period, factor);
        if (may_change) {
            const double line = left / (life - period + 1.0);
            straight = straight || line > amount;
            if (straight && period <= life) amount = line;
            amount = std::min(amount, left);
        }
        if (period <= life) left -= amount;
        const double from = std::max(start, period - 1.0), to = std::min(end, period);
        if (to > from) total += amount * (to - from);
    }
    return number(total);
}

const Builtin money[] = {
    {"PV", "nnn|nn", "rate, nper, pmt, [fv], [type]", "The present value of level payments",
     [](A a) { return number(annuity(a).present_value(a.number(2), a.number(3, 0.0))); }},
    {"FV", "nnn|nn", "rate, nper, pmt, [pv], [type]", "The future value of level payments",
     [](A a) { return number(annuity(a).future_value(a.number(2), a.number(3, 0.0))); }},
    {"PMT", "nnn|nn", "rate, nper, pv, [fv], [type]", "The level payment that repays a loan",
     [](A a) {
         const Annuity x = annuity(a);
         return x.factor == 0.0 ? num() : number(x.payment(a.number(2), a.number(3, 0.0)));
     }},
    {"IPMT", "nnnn|nn", "rate, period, nper, pv, [fv], [type]", "The interest in one of the payments on a loan",
     [](A a) { return part_of_payment(a, true); }},
    {"PPMT", "nnnn|nn", "rate, period, nper, pv, [fv], [type]", "The principal in one of the payments on a loan",
     [](A a) { return part_of_payment(a, false); }},
    {"CUMIPMT", "nnnnnn", "rate, nper, pv, first, last, type", "The interest in the payments from one to another",
     [](A a) { return sum_of_parts(a, true); }},
    {"CUMPRINC", "nnnnnn", "rate, nper, pv, first, last, type", "The principal in the payments from one to another",
     [](A a) { return sum_of_parts(a, false); }},
    {"RATE", "nnn|nnN", "nper, pmt, pv, [fv], [type], [guess]", "The rate per period of level payments",
     rate_of_annuity},
    {"NPER", "nnn|nn", "rate, pmt, pv, [fv], [type]", "How many level payments repay a loan", number_of_periods},
    {"NPV", "nr*", "rate, value, ...", "The net present value of flows at the ends of periods", present_value_of_flows},
    {"XNPV", "nrr", "rate, values, dates", "The net present value of dated flows on the first date",
     dated_present_value},
    {"IRR", "r|N", "values, [guess]", "The internal rate of return of periodic flows", internal_rate},
    {"MIRR", "rnn", "values, finance_rate, reinvest_rate",
     "The internal rate of return with rates for borrowing and reinvesting", modified_internal_rate},
    {"XIRR", "rr|N", "values, dates, [guess]", "The internal rate of return of dated flows", dated_internal_rate},
    {"EFFECT", "nn", "nominal_rate, times",
     "The effective yearly rate of a nominal rate compounded so many times a year",
     [](A a) {
         const double times = std::trunc(a.number(1));
         return a.number(0) <= 0.0 || times < 1.0 ? num() : number(std::expm1(times * std::log1p(a.number(0) / times)));
     }},
    {"NOMINAL", "nn", "effective_rate, times",
     "The nominal rate, compounded so many times a year, of an effective rate",
     [](A a) {
         const double times = std::trunc(a.number(1));
         return a.number(0) <= 0.0 || times < 1.0 ? num() : number(times * std::expm1(std::log1p(a.number(0)) / times));
     }},
    {"SLN", "nnn", "cost, salvage, life", "Straight-line depreciation of a period", straight_line},
    {"SYD", "nnnn", "cost, salvage, life, period", "Depreciation of a period by the sum of the years' digits",
     sum_of_digits},
    {"DDB", "nnnn|N", "cost, salvage, life, period, [factor]", "Double-declining depreciation of a period",
     double_declining},
    {"DB", "nnnn|N", "cost, salvage, life, period, [month]", "Fixed-declining depreciation of a period",
     fixed_declining},
    {"VDB", "nnnnn|Nb", "cost, salvage, life, start, end, [factor], [no_switch]",
     "Declining depreciation between two times, changing to a straight line where that is more", variable_declining},
};

} // namespace

std::span<const Builtin> money_functions() { return money; }

} // namespace qx::sheet::builtin
