// Worksheet functions of service charges: what tenants pay, and what the landlord is left with.
#include "realestate/service_charges.h"
#include "addin/declare.h"
#include "addin/service_charge_arguments.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;

constexpr Argument SCStartDate() {
    return {"SCStartDate", "Date on which the first tenant's service charge starts; the day itself counts"};
}
constexpr Argument FirstSCRevDate() {
    return FirstRev("Date of the first review of the total; 0 for none at all").renamed("FirstSCRevDate");
}
constexpr Argument SCRevMonths() {
    return Argument{"SCRevMonths", "Months between reviews of the total, 0 to 1000; 0 for continuous review"}.within(
        review_months_limits);
}
constexpr ArgumentGroup growing_total() {
    return {FirstSCRevDate(),
            {"ServChargeTotal", "Total service charge of the building or estate a year, as at the first growth date"},
            GrowthDates(),
            GrowthRates(),
            SCRevMonths()};
}
constexpr ArgumentGroup forecast_total() {
    return {
        FirstSCRevDate(),
        {"SCFcstTotalServCharge", "Total service charges of the building or estate a year, one for each period of "
                                  "the forecast; the last one applies from then on"},
        {"SCStartFcst", "Date from which the first value of the forecast holds"},
        Argument{"SCFcstBase", "Months that each value of the forecast holds, 1 to 1000"}.within(forecast_base_limits),
        SCRevMonths()};
}
constexpr ArgumentGroup stepped_total() {
    return {FromDates("Dates from which the totals apply, ascending"),
            {"ServChargeAnnRates", "Total service charges of the building or estate a year, one for each of the dates "
                                   "or one for all"}};
}
constexpr ArgumentGroup recovery_basis() {
    return {DayCount(0.0), Periods(),
            optional("DayCountRec", 0.0, "Day count convention, 0 to 999, of what tenants pay", "DayCount")
                .within(daycount_limits),
            sequence_or_none("PeriodsRec", "Dates in the year on which tenants pay: 1, 2, 4, 12, negative in arrears, "
                                           "or a range of mm.dd figures; those of Periods if omitted"),
            ProjMode()};
}

} // namespace

// --- The tenants -----------------------------------------------------------------------------------------------------

constexpr Function ServChargeGrowR{
    .name = "ServChargeGrowR",
    .category = category,
    .calls = twin<qx::ServCharge<GrowingServiceCharge>>,
    .help = "Service charge paid in a period by a tenant, then by the tenants of the relets: a share of a total that "
            "grows",
    .args = {time_period(), SCStartDate(), BrksOrExp(), growing_total(), service_charge_share(), relet_terms(), basis(),
             chain_end()},
    .examples = {"ServChargeGrowR(2010, 12, 2005, 2020, 2006, 1000, 2005, 0.1, 12, 2005, 0.2) ~ 322.102 1e-9",
                 "ServChargeGrowR(2010, 12, 2005, 2010.25, 0, 1000, 2005, 0, 12, 2005, 0.2, 6, 5) ~ 100 1e-9"},
    .see_also = "ServChargeFcstR,FServChargeR,VacServChargeGrowR,RentGrowR",
};
QX_EXPORT(ServChargeGrowR, 19);

constexpr Function ServChargeFcstR{
    .name = "ServChargeFcstR",
    .category = category,
    .calls = twin<qx::ServCharge<ForecastServiceCharge>>,
    .help = "Service charge paid in a period by a tenant, then by the tenants of the relets: a share of a total that "
            "is forecast",
    .args = {time_period(), SCStartDate(), BrksOrExp(), forecast_total(), service_charge_share(), relet_terms(),
             basis(), chain_end()},
    .examples = {"ServChargeFcstR(2010, 12, 2005, 2020, 2006, {1000;1500}, 2005, 60, 12, 2005, 0.2) ~ 300 1e-9"},
    .see_also = "ServChargeGrowR,FServChargeR,VacServChargeFcstR,RentFcstR",
};
QX_EXPORT(ServChargeFcstR, 19);

constexpr Function FServChargeR{
    .name = "FServChargeR",
    .category = category,
    .calls = twin<qx::ServCharge<SteppedServiceCharge>>,
    .help = "Service charge paid in a period by a tenant, then by the tenants of the relets: a share of totals given "
            "from dates on",
    .args = {time_period(), SCStartDate(), BrksOrExp(), stepped_total(), service_charge_share(), relet_terms(), basis(),
             chain_end()},
    .examples = {"FServChargeR(2009, 24, 2005, 2020, {2005;2010}, {1000;1200}, 2005, 0.2) ~ 440 1e-9"},
    .see_also = "FServChargeGrowR,FVacServChargeR,ServChargeGrowR,FStepRev",
};
QX_EXPORT(FServChargeR, 16);

constexpr Function FServChargeGrowR{
    .name = "FServChargeGrowR",
    .category = category,
    .calls = twin<qx::ServCharge<GrownSteppedServiceCharge>>,
    .help = "FServChargeR with each total grown from the first growth date to the date from which it applies",
    .args = {time_period(), SCStartDate(), BrksOrExp(), stepped_total(), growth(), service_charge_share(),
             relet_terms(), basis(), chain_end()},
    .examples = {"FServChargeGrowR(2009, 24, 2005, 2020, {2005;2010}, 1000, 2005, 0.1, 2005, 0.2) ~ 522.102 1e-9"},
    .see_also = "FServChargeR,ServChargeGrowR,FStepGrown",
};
QX_EXPORT(FServChargeGrowR, 18);

// --- The landlord ----------------------------------------------------------------------------------------------------

constexpr Function VacServChargeGrowR{
    .name = "VacServChargeGrowR",
    .category = category,
    .calls = twin<qx::VacServCharge<GrowingServiceCharge>>,
    .help =
        "Service charge that a landlord bears in a period, mainly in voids: a share of a total that grows, less what "
        "is recovered from tenants",
    .args = {time_period(), StartCost(), StartLease(), BrksOrExp(), growing_total(), service_charge_share(),
             relet_terms(), recovery_basis(), chain_end()},
    .examples = {"VacServChargeGrowR(2010, 12, 2005, 2005, 2010.25, 0, 1000, 2005, 0, 12, 2005, 0.2, 6, 5) ~ 100 1e-9",
                 "VacServChargeGrowR(2004, 24, 2004.5, 2005, 2010, 0, 1000, 2005, 0, 12, 2004, 0.2) ~ 100 1e-9"},
    .see_also = "ServChargeGrowR,VacServChargeFcstR,FVacServChargeR,UKEmptyRatesGrowR",
};
QX_EXPORT(VacServChargeGrowR, 22);

constexpr Function VacServChargeFcstR{
    .name = "VacServChargeFcstR",
    .category = category,
    .calls = twin<qx::VacServCharge<ForecastServiceCharge>>,
    .help =
        "Service charge that a landlord bears in a period, mainly in voids: a share of a total that is forecast, less "
        "what is recovered from tenants",
    .args = {time_period(), StartCost(), StartLease(), BrksOrExp(), forecast_total(), service_charge_share(),
             relet_terms(), recovery_basis(), chain_end()},
    .examples =
        {"VacServChargeFcstR(2010, 12, 2005, 2005, 2010.25, 2006, {1000;1500}, 2005, 60, 12, 2005, 0.2, 6, 5) ~ 150 "
         "1e-9"},
    .see_also = "ServChargeFcstR,VacServChargeGrowR,FVacServChargeR,UKEmptyRatesFcstR",
};
QX_EXPORT(VacServChargeFcstR, 22);

constexpr Function FVacServChargeR{
    .name = "FVacServChargeR",
    .category = category,
    .calls = twin<qx::VacServCharge<SteppedServiceCharge>>,
    .help = "Service charge that a landlord bears in a period, mainly in voids: a share of totals given from dates on, "
            "less what is recovered from tenants",
    .args = {time_period(), StartCost(), StartLease(), BrksOrExp(), stepped_total(), service_charge_share(),
             relet_terms(), recovery_basis(), chain_end()},
    .examples = {"FVacServChargeR(2010, 12, 2005, 2005, 2010.25, {2005;2010}, {1000;1200}, 2005, 0.2, 6, 5) ~ 120 "
                 "1e-9"},
    .see_also = "FServChargeR,VacServChargeGrowR,VacServChargeFcstR",
};
QX_EXPORT(FVacServChargeR, 19);

} // namespace qx::worksheet
