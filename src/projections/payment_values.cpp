#include "projections/payment_values.h"

#include "core/routine.h"
#include "projections/constant_rate.h"
#include "projections/forecast.h"
#include "projections/growth.h"
#include "projections/periodic.h"

namespace qx {

namespace {

/// The payments in a period, of which `worth` gives the value by date and amount.
template <class Pmts, class Worth>
double sum_worth(const Routine& here, const timeperiod& Time, const Pmts& payments, Worth worth) {
    if (!runs_forward(here, Time)) return 0.0;
    double total = 0.0;
    for (int n = 1; n <= payments.count(); ++n)
        if (Time.contains(payments.when(n))) total += worth(payments.when(n), payments.amount(n));
    return total;
}

/// The same of payments that recur.
template <class Pmts, class Worth>
double sum_recurring(const Routine& here, const timeperiod& Time, const date& AbsFinish, const Pmts& payments,
                     int Periodicity, Worth worth) {
    if (!runs_forward(here, Time)) return 0.0;
    double total = 0.0;
    for (int n = 1; n <= payments.count(); ++n)
        each_repetition(here, Time, payments.when(n), AbsFinish, Periodicity, [&](int, const date& when) {
            if (Time.contains(when)) total += worth(when, payments.amount(n));
        });
    return total;
}

// What a payment is worth on a date.

auto as_it_is() {
    return [](const date&, double amount) { return amount; };
}
auto grown(const Growth& growth) {
    return [amounts = GrownAmounts(growth)](const date& when, double amount) mutable { return amounts(when, amount); };
}
auto read_off(const Forecast& forecast) {
    return [&](const date& when, double) { return fcst(when, forecast); };
}
auto filled_from(const Forecast& forecast) {
    return [&](const date& when, double amount) { return iszero(amount) ? fcst(when, forecast) : amount; };
}
auto filled_from(double market, const Growth& growth) {
    return [market, amounts = GrownAmounts(growth)](const date& when, double amount) mutable {
        return iszero(amount) ? amounts(when, market) : amount;
    };
}
auto indexed(const Index& index) {
    dateorfloat base = index.BaseDateOrIdx;
    if (base.iszero()) base.setnumber(index.start.dtn());
    return [base, forecast = index.forecast()](const date& when, double amount) {
        return amount * IdxFromTo(base, when, forecast);
    };
}

} // namespace

template <class Pmts>
double MkPmtGrow(const timeperiod& Time, const Pmts& payments, const Growth& growth) {
    Routine here{one_or_many<Pmts>("MkPmtGrow", "MkPmtsGrow")};
    here.inputs(Time, payments, growth);
    growth.check(here);
    return here.returning(sum_worth(here, Time, payments, grown(growth)));
}
template double MkPmtGrow(const timeperiod&, const Payment&, const Growth&);
template double MkPmtGrow(const timeperiod&, const Payments&, const Growth&);

double MkPmtGrowQ(const timeperiod& Time, const Payment& payment, const date& GrowFrom, double GrowthRatePA) {
    Routine here{"MkPmtGrowQ"};
    here.inputs(Time, payment, GrowFrom, GrowthRatePA);
    const Growth growth{View<date>::of(GrowFrom), View<double>::of(GrowthRatePA)};
    growth.check(here);
    return here.returning(sum_worth(here, Time, payment, grown(growth)));
}

template <class Dates>
double MkPmtFcst(const timeperiod& Time, const Dates& dates, const Forecast& forecast) {
    Routine here{one_or_many<Dates>("MkPmtFcst", "MkPmtsFcst")};
    here.inputs(Time, dates, forecast);
    forecast.check(here);
    return here.returning(sum_worth(here, Time, dates, read_off(forecast)));
}
template double MkPmtFcst(const timeperiod&, const PaymentDate&, const Forecast&);
template double MkPmtFcst(const timeperiod&, const PaymentDates&, const Forecast&);

template <class Pmts>
double MkPmtFcstMkt(const timeperiod& Time, const Pmts& payments, const Forecast& forecast) {
    Routine here{one_or_many<Pmts>("MkPmtFcstMkt", "MkPmtsFcstMkt")};
    here.inputs(Time, payments, forecast);
    forecast.check(here);
    return here.returning(sum_worth(here, Time, payments, filled_from(forecast)));
}
template double MkPmtFcstMkt(const timeperiod&, const Payment&, const Forecast&);
template double MkPmtFcstMkt(const timeperiod&, const Payments&, const Forecast&);

double MkPmtsGrowMkt(const timeperiod& Time, double MktValue, const Payments& payments, const Growth& growth) {
    Routine here{"MkPmtsGrowMkt"};
    here.inputs(Time, MktValue, payments, growth);
    growth.check(here);
    return here.returning(sum_worth(here, Time, payments, filled_from(MktValue, growth)));
}

double MkPmtsIdx(const timeperiod& Time, const Payments& payments, const Index& index) {
    Routine here{"MkPmtsIdx"};
    here.inputs(Time, payments, index);
    index.forecast().check(here, "IdxFcstBase");
    return here.returning(sum_worth(here, Time, payments, indexed(index)));
}

template <class Pmts>
double MkPmtPer(const timeperiod& Time, const date& AbsFinish, const Pmts& payments, int Periodicity) {
    Routine here{one_or_many<Pmts>("MkPmtPer", "MkPmtsPer")};
    here.inputs(Time, AbsFinish, payments, Periodicity);
    return here.returning(sum_recurring(here, Time, AbsFinish, payments, Periodicity, as_it_is()));
}
template double MkPmtPer(const timeperiod&, const date&, const Payment&, int);
template double MkPmtPer(const timeperiod&, const date&, const Payments&, int);

template <class Pmts>
double MkPmtPerGrow(const timeperiod& Time, const date& AbsFinish, const Pmts& payments, const Growth& growth,
                    int Periodicity) {
    Routine here{one_or_many<Pmts>("MkPmtPerGrow", "MkPmtsPerGrow")};
    here.inputs(Time, AbsFinish, payments, growth, Periodicity);
    growth.check(here);
    return here.returning(sum_recurring(here, Time, AbsFinish, payments, Periodicity, grown(growth)));
}
template double MkPmtPerGrow(const timeperiod&, const date&, const Payment&, const Growth&, int);
template double MkPmtPerGrow(const timeperiod&, const date&, const Payments&, const Growth&, int);

double MkPmtsPerFcst(const timeperiod& Time, const date& AbsFinish, const PaymentDates& dates, const Forecast& forecast,
                     int Periodicity) {
    Routine here{"MkPmtsPerFcst"};
    here.inputs(Time, AbsFinish, dates, forecast, Periodicity);
    forecast.check(here);
    return here.returning(sum_recurring(here, Time, AbsFinish, dates, Periodicity, read_off(forecast)));
}

template <class Pmts>
double MkPmtPerFcstMkt(const timeperiod& Time, const date& AbsFinish, const Pmts& payments, const Forecast& forecast,
                       int Periodicity) {
    Routine here{one_or_many<Pmts>("MkPmtPerFcstMkt", "MkPmtsPerFcstMkt")};
    here.inputs(Time, AbsFinish, payments, forecast, Periodicity);
    forecast.check(here);
    return here.returning(sum_recurring(here, Time, AbsFinish, payments, Periodicity, filled_from(forecast)));
}
template double MkPmtPerFcstMkt(const timeperiod&, const date&, const Payment&, const Forecast&, int);
template double MkPmtPerFcstMkt(const timeperiod&, const date&, const Payments&, const Forecast&, int);

double MkPmtsPerGrowMkt(const timeperiod& Time, const date& AbsFinish, double MktValue, const Payments& payments,
                        const Growth& growth, int Periodicity) {
    Routine here{"MkPmtsPerGrowMkt"};
    here.inputs(Time, AbsFinish, MktValue, payments, growth, Periodicity);
    growth.check(here);
    return here.returning(sum_recurring(here, Time, AbsFinish, payments, Periodicity, filled_from(MktValue, growth)));
}

double MkPmtsIdxPer(const timeperiod& Time, const date& AbsFinish, const Payments& payments, const Index& index,
                    int Periodicity) {
    Routine here{"MkPmtsIdxPer"};
    here.inputs(Time, AbsFinish, payments, index, Periodicity);
    index.forecast().check(here, "IdxFcstBase");
    return here.returning(sum_recurring(here, Time, AbsFinish, payments, Periodicity, indexed(index)));
}

} // namespace qx
