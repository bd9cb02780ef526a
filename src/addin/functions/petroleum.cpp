// Worksheet functions of petroleum: production, decline and what is in the ground.
#include "accounting/production_decline.h"
#include "addin/declare.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::PetroleumEconomics;

constexpr Argument ResvsOrDcRate(const char* help = "Above 0 the reserves of the field; otherwise the decline rate at "
                                                    "the start of decline with a minus: -0.15 for 15% a year") {
    return {"ResvsOrDcRate", help};
}
constexpr Argument ReservesDec() { return {"ReservesDec", "Reserves that are produced in decline"}; }
constexpr Argument PlateauRate() { return {"PlateauRate", "Amount a year at the start of decline"}; }
constexpr Argument AbandonRate() { return {"AbandonRate", "Amount a year at which production is abandoned"}; }
constexpr Argument DeclinePoint() {
    return {"DeclinePoint", "Share of the reserves that has been produced when decline starts, 0 to 1"};
}
constexpr Argument DeclineParam() {
    return optional("DeclineParam", 0.0,
                    "Exponent b of the decline, 0 or more: 0 exponential, 1 harmonic, any other hyperbolic",
                    "exponential")
        .within({0});
}
constexpr Argument PlateauRates() {
    return {"AnnualRates", "Plateau production a year, one rate for each of the dates, or a single one for all"};
}
constexpr Argument PlateauDates() { return FromDates("Dates from which the plateau rates apply, ascending"); }
/// Field.
constexpr ArgumentGroup field() {
    return {ResvsOrDcRate(), PlateauDates(), PlateauRates(), DeclinePoint(), AbandonRate(), DeclineParam()};
}
constexpr ArgumentGroup field_measure() { return {DayCount(), Periods()}; }
constexpr ArgumentGroup field_basis() { return {DayCount(), Periods(), ProjMode()}; }

} // namespace

constexpr Function ProdProf{
    .name = "ProdProf",
    .category = category,
    .calls = twin<qx::ProdProf>,
    .help = "Production of a field in a period: plateau rates until a share of the reserves is gone, then a decline to "
            "abandonment",
    .args = {time_period(), field(), field_basis(),
             optional("PPSwitch", 0,
                      "0 production in the period; rate a year 1 at its start, 2 at its end; 3 decline rate a year at "
                      "the start of decline; 4 reserves; any other the plateau's production in the period")},
    .examples = {"ProdProf(2005, 12, 1000, 2005, 100, 0.5, 10) ~ 100 1e-9",
                 "ProdProf(2010, 12, 1000, 2005, 100, 0.5, 10, 0, 0) ~ 91.516549216 1e-9"},
    .see_also = "AbandonDate,StartDecline,Decline,FStepSpread",
};
QX_EXPORT(ProdProf, 12);

constexpr Function AbandonDate{
    .name = "AbandonDate",
    .category = category,
    .calls = core<qx::AbandonDate>,
    .help = "Date on which the production of a field has declined to the rate of abandonment",
    .args = {field(), field_measure()},
    .examples = {"AbandonDate(1000, 2005, 100, 0.5, 50) = DATE(2016,12,6)"},
    .see_also = "StartDecline,ProdProf,DepletionDate",
};
QX_EXPORT(AbandonDate, 8);

constexpr Function StartDecline{
    .name = "StartDecline",
    .category = category,
    .calls = core<qx::StartDecline>,
    .help = "Date on which the production of a field starts to decline",
    .args = {{"Reserves", "Reserves of the field"}, PlateauDates(), PlateauRates(), DeclinePoint(), field_measure()},
    .examples = {"StartDecline(1000, 2005, 100, 0.5) = DATE(2010,1,1)"},
    .see_also = "AbandonDate,ProdProf,DepletionDate",
};
QX_EXPORT(StartDecline, 6);

constexpr Function Decline{
    .name = "Decline",
    .category = category,
    .calls = twin<qx::Decline>,
    .help = "Cumulative production since the start of decline, or the rate of production then",
    .args = {{"Yrs", "Years since the start of decline"},
             ResvsOrDcRate("Above 0 the reserves in decline; otherwise the decline rate at the start of decline with a "
                           "minus: -0.15 for 15% a year"),
             PlateauRate(),
             AbandonRate(),
             DeclineParam(),
             optional("DeclineSwitch", 0, "0 cumulative production; any other the rate a year")},
    .examples = {"Decline(5, -0.1, 100, 10) ~ 393.46934029 1e-9", "Decline(5, -0.1, 100, 10, 1, 1) ~ 66.66666667 1e-9"},
    .see_also = "DeclineRate,DescribeDecline,ProdProf",
};
QX_EXPORT(Decline, 6);

constexpr Function DeclineRate{
    .name = "DeclineRate",
    .category = category,
    .calls = core<qx::DeclineRate>,
    .help = "Decline rate a year, at the start of decline, by which reserves are produced from the plateau rate down "
            "to the rate of abandonment",
    .args = {ReservesDec(), PlateauRate(), AbandonRate(), DeclineParam()},
    .examples = {"DeclineRate(900, 100, 10) ~ 0.1 1e-12"},
    .see_also = "Decline,DescribeDecline,ProdProf",
};
QX_EXPORT(DeclineRate, 4);

constexpr Function DescribeDecline{
    .name = "DescribeDecline",
    .category = category,
    .calls = core<qx::DescribeDecline>,
    .help = "The kind of decline that a DeclineParam selects, in words",
    .args = {Argument{"DeclineParam", "Exponent b of the decline, 0 or more"}.within({0})},
    .examples = {"DescribeDecline(1) = \"Harmonic Decline\"", "DescribeDecline(0.5) = \"Hyperbolic Decline, b=0.500\""},
    .see_also = "Decline,DeclineRate",
};
QX_EXPORT(DescribeDecline, 1);

constexpr Function STOIIP{
    .name = "STOIIP",
    .category = category,
    .calls = core<qx::STOIIP>,
    .help = "Stock tank oil initially in place: net rock volume x porosity x (1 - water saturation) / formation volume "
            "factor",
    .args = {{"Swc", "Connate water saturation: the fraction of the pores that holds water, 0 to 1"},
             {"Porosity", "Fraction of the rock that is pores, 0 to 1"},
             {"Boi", "Oil formation volume factor: reservoir volume for each stock tank volume"},
             {"NetRockVolume", "Volume of the net rock, in the unit of the result (7758 barrels to an acre-foot)"}},
    .examples = {"STOIIP(0.25, 0.2, 1.25, 1000000) = 120000"},
    .see_also = "ProdProf",
};
QX_EXPORT(STOIIP, 4);

} // namespace qx::worksheet
