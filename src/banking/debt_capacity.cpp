#include "banking/debt_capacity.h"

#include "core/routine.h"
#include "rates/annuities.h"
#include "rates/compounding.h"
#include "rates/rate_conversion.h"

#include <algorithm>

namespace qx {

double MFLoan(const date& LoanStartDate, const date& StartAnnDate, const date& Finish, View<double> AnnualRates,
              View<date> ToDates, double InterestSimple, double Amortisation, double PmtsPerYrInt,
              double PmtsPerYearRec, double LoanFee) {
    Routine here{"MFLoan"};
    here.inputs(LoanStartDate, StartAnnDate, Finish, AnnualRates, ToDates, InterestSimple, Amortisation, PmtsPerYrInt,
                PmtsPerYearRec, LoanFee);
    check_rate(here, InterestSimple, "InterestSimple");
    const double receipts_a_year = check_frequency(here, PmtsPerYearRec, "PmtsPerYearRec");
    if (ToDates.empty()) here.fail<errlibinsuffrange>("ToDates");
    const double AER = SimpleToAER(InterestSimple, PmtsPerYrInt);
    const auto years = [&](const date& from, const date& to) { return (to.months() - from.months()) / 12.0; };

    double NPV = 0.0;
    date from = StartAnnDate;
    for (int i = 1; i <= ToDates.size(); ++i) {
        const date& to = std::min(ToDates(i), Finish);
        if (to <= from) continue;
        const double value = annuity_value(AnnualRates.single_or(i), AER, years(from, to), receipts_a_year);
        NPV += discounted_future_value(value, AER, years(LoanStartDate, from));
        from = to;
    }
    const double term = years(LoanStartDate, std::min(ToDates.last(), Finish));
    const double carried = 1.0 - discounted_future_value(1.0 - Amortisation, AER, term);
    here.info("AER=", AER, " NPV=", NPV, " Years=", term);
    if (iszero(carried)) here.fail<errlibinfiniteresult>("Amortisation");
    return here.returning((1.0 - LoanFee) * NPV / carried);
}

} // namespace qx
