// Worksheet functions of annuities: level payments, payments that grow, and level payments on dates.
#include "addin/declare.h"
#include "rates/annuities.h"
#include "rates/dated_annuities.h"
#include "rates/growing_annuities.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::TimeValueOfMoney;

constexpr Argument AnnPmt() { return {"AnnPmt", "Total paid in a year: received positive, paid negative"}; }
constexpr Argument PresentValue() {
    return {"PresentValue", "Amount at the start of the term: received positive, paid negative"};
}
constexpr Argument Periodicity() {
    return optional("Periodicity", 12.0, "Months between payments, and between steps of growth", "once a year");
}
constexpr Argument DrawDate() { return {"DrawDate", "Date on which the loan is drawn"}; }
constexpr Argument NumPmts() {
    return {"NumPmts", "Number of payments, on the dates of PrdsInt after DrawDate; 1 to 10000"};
}
constexpr Argument Pmt() { return {"Pmt", "Level payment: received positive, paid negative"}; }
constexpr Argument balance_left() {
    return optional("FVOpt", 0.0,
                    "Future value: what is still owed after the last payment, of the sign of PresentValue");
}

} // namespace

// --- Level payments ---------------------------------------------------------------------------------------------

constexpr Function FVM{
    .name = "FVM",
    .category = category,
    .calls = core<qx::FVM>,
    .help = "Future value that balances annual payments and a present value",
    .args = {AnnPmt(), PresentValue(), InterestAER(), TermYrs(), PmtsPerYear()},
    .examples = {"FVM(0, -100, 0.1, 2, -1) ~ 121 1e-12", "FVM(-100, 0, 0.1, 2, -1) ~ 210 1e-12"},
    .see_also = "PVM,PmtM,TermM,IntRateM",
};
QX_EXPORT(FVM, 5);

constexpr Function IntRateM{
    .name = "IntRateM",
    .category = category,
    .calls = core<qx::IntRateM>,
    .help = "The annual equivalent rate at which annual payments, a present value and a future value balance",
    .args = {AnnPmt(), PresentValue(), TermYrs(), PmtsPerYear(), FVOpt()},
    .examples = {"IntRateM(-110, 100, 1, -1) ~ 0.1 1e-9"},
    .see_also = "PVM,PmtM,TermM,FVM,RateQX",
};
QX_EXPORT(IntRateM, 5);

constexpr Function PmtM{
    .name = "PmtM",
    .category = category,
    .calls = core<qx::PmtM>,
    .help = "The payment a year, made PmtsPerYear times in the year, that balances a present value",
    .args = {PresentValue(), InterestAER(), TermYrs(), PmtsPerYear(), FVOpt()},
    .examples = {"PmtM(100, 0.1, 1, -1) ~ -110 1e-12", "PmtM(100, 0, 4, -12) ~ -25 1e-12"},
    .see_also = "PVM,FVM,TermM,IntRateM,PMTQX",
};
QX_EXPORT(PmtM, 5);

constexpr Function PVM{
    .name = "PVM",
    .category = category,
    .calls = core<qx::PVM>,
    .help =
        "Present value of annual payments made PmtsPerYear times in the year, and of a future value; of the other sign",
    .args = {AnnPmt(), InterestAER(), TermYrs(), PmtsPerYear(), FVOpt()},
    .examples = {"PVM(100, 0.1, 1, -1) ~ -90.9090909090909 1e-12", "PVM(100, 0, 3, 4) = -300"},
    .see_also = "PmtM,FVM,TermM,IntRateM,PVQX",
};
QX_EXPORT(PVM, 5);

constexpr Function TermM{
    .name = "TermM",
    .category = category,
    .calls = core<qx::TermM>,
    .help = "The term in years over which annual payments, a present value and a future value balance",
    .args = {AnnPmt(), PresentValue(), InterestAER(), PmtsPerYear(), FVOpt()},
    .examples = {"TermM(-100, 300, 0, -1) ~ 3 1e-9"},
    .see_also = "PVM,PmtM,FVM,IntRateM,NPerQX",
};
QX_EXPORT(TermM, 5);

// --- Payments that grow -----------------------------------------------------------------------------------------

constexpr Function PVEGAnn{
    .name = "PVEGAnn",
    .category = category,
    .calls = core<qx::PVEGAnn>,
    .help = "Present value of 1 a year in arrears for a term, growing exponentially from the second year",
    .args = {DisAER(), TermYrs(), AnnGrowthRate()},
    .examples = {"PVEGAnn(0.1, 2, 0.05) ~ 1.776859504132231 1e-12",
                 "PVEGAnn(0.1, 2, 0.1) ! #NUM! errlibinfiniteresult"},
    .see_also = "PVEGAnnM,PVEGPerp,PVEGPerAnn,SumEGAnn",
};
QX_EXPORT(PVEGAnn, 3);

constexpr Function PVEGAnnM{
    .name = "PVEGAnnM",
    .category = category,
    .calls = core<qx::PVEGAnnM>,
    .help = "Present value of 1 a year received PmtsPerYear times in the year for a term, growing in steps",
    .args = {DisAER(), TermYrs(), PmtsPerYear(), AnnGrowthRate(), GrowRevsPerYrOpt()},
    .examples = {"PVEGAnnM(0.1, 2, -1, 0.05) ~ 1.776859504132231 1e-12"},
    .see_also = "PVEGAnn,PVEGPerpM,SumEGAnnM,CorrectionM",
};
QX_EXPORT(PVEGAnnM, 5);

constexpr Function PVEGPerAnn{
    .name = "PVEGPerAnn",
    .category = category,
    .calls = core<qx::PVEGPerAnn>,
    .help = "Gordon model of an annuity: present value of 1 a period in arrears for a term, growing once a period",
    .args = {DisAER(), TermYrs(), AnnGrowthRate(), Periodicity()},
    .examples = {"PVEGPerAnn(0.1, 2, 0.05) ~ 1.776859504132231 1e-12",
                 "PVEGPerAnn(0.21, 1, 0, 6) ~ 1.735537190082645 1e-12"},
    .see_also = "PVEGPerPerp,PVEGAnn",
};
QX_EXPORT(PVEGPerAnn, 4);

constexpr Function PVEGPerp{
    .name = "PVEGPerp",
    .category = category,
    .calls = core<qx::PVEGPerp>,
    .help = "Present value of 1 a year in arrears for ever, growing exponentially from the second year",
    .args = {DisAER(), AnnGrowthRate()},
    .examples = {"PVEGPerp(0.1, 0.05) ~ 20 1e-12", "PVEGPerp(0.05, 0.05) ! #NUM! errlibinfiniteresult"},
    .see_also = "PVEGPerpM,PVEGAnn,PVEGPerPerp",
};
QX_EXPORT(PVEGPerp, 2);

constexpr Function PVEGPerPerp{
    .name = "PVEGPerPerp",
    .category = category,
    .calls = core<qx::PVEGPerPerp>,
    .help = "Gordon model of a perpetuity: present value of 1 a period in arrears for ever, growing once a period",
    .args = {DisAER(), AnnGrowthRate(), Periodicity()},
    .examples = {"PVEGPerPerp(0.1, 0.05) ~ 20 1e-12", "PVEGPerPerp(0.21, 0, 6) ~ 10 1e-12"},
    .see_also = "PVEGPerAnn,PVEGPerp",
};
QX_EXPORT(PVEGPerPerp, 3);

constexpr Function PVEGPerpM{
    .name = "PVEGPerpM",
    .category = category,
    .calls = core<qx::PVEGPerpM>,
    .help = "Present value of 1 a year received PmtsPerYear times in the year for ever, growing in steps",
    .args = {DisAER(), PmtsPerYear(), AnnGrowthRate(), GrowRevsPerYrOpt()},
    .examples = {"PVEGPerpM(0.1, -1, 0.05) ~ 20 1e-12"},
    .see_also = "PVEGPerp,PVEGAnnM,CorrectionM",
};
QX_EXPORT(PVEGPerpM, 4);

constexpr Function SumEGAnn{
    .name = "SumEGAnn",
    .category = category,
    .calls = core<qx::SumEGAnn>,
    .help = "Sum of 1 a year over a term, growing exponentially from the second year; 0 for a growth rate of zero",
    .args = {TermYrs(), AnnGrowthRate()},
    .examples = {"SumEGAnn(3, 0.1) ~ 3.31 1e-12", "SumEGAnn(3, 0) = 0"},
    .see_also = "SumEGAnnM,SumEGAnnCont,SumLGAnn,PVEGAnn",
};
QX_EXPORT(SumEGAnn, 2);

constexpr Function SumEGAnnCont{
    .name = "SumEGAnnCont",
    .category = category,
    .calls = core<qx::SumEGAnnCont>,
    .help = "Sum of 1 a year over a term, growing exponentially and continuously",
    .args = {TermYrs(), AnnGrowthRate()},
    .examples = {"SumEGAnnCont(2, 0.1) ~ 2.203332324323986 1e-12", "SumEGAnnCont(2, 0) = 2"},
    .see_also = "SumEGAnn,SumEGAnnM",
};
QX_EXPORT(SumEGAnnCont, 2);

constexpr Function SumEGAnnM{
    .name = "SumEGAnnM",
    .category = category,
    .calls = core<qx::SumEGAnnM>,
    .help = "Sum of 1 a year over a term, growing exponentially in steps in the year",
    .args = {TermYrs(), AnnGrowthRate(), GrowRevsPerYrOpt()},
    .examples = {"SumEGAnnM(3, 0.1) ~ 3.31 1e-12", "SumEGAnnM(1, 0.21, 2) ~ 1.05 1e-12"},
    .see_also = "SumEGAnn,SumEGAnnCont",
};
QX_EXPORT(SumEGAnnM, 3);

constexpr Function SumLGAnn{
    .name = "SumLGAnn",
    .category = category,
    .calls = core<qx::SumLGAnn>,
    .help = "Sum of 1 a year over a term, growing by the same amount each year from the second",
    .args = {TermYrs(), AnnGrowthRate()},
    .examples = {"SumLGAnn(3, 0.1) ~ 3.3 1e-12"},
    .see_also = "SumLGAnnM,SumLGAnnCont,SumEGAnn",
};
QX_EXPORT(SumLGAnn, 2);

constexpr Function SumLGAnnCont{
    .name = "SumLGAnnCont",
    .category = category,
    .calls = core<qx::SumLGAnnCont>,
    .help = "Sum of 1 a year over a term, growing linearly and continuously",
    .args = {TermYrs(), AnnGrowthRate()},
    .examples = {"SumLGAnnCont(2, 0.1) ~ 2.2 1e-12"},
    .see_also = "SumLGAnn,SumLGAnnM",
};
QX_EXPORT(SumLGAnnCont, 2);

constexpr Function SumLGAnnM{
    .name = "SumLGAnnM",
    .category = category,
    .calls = core<qx::SumLGAnnM>,
    .help = "Sum of 1 a year over a term, growing by the same amount in steps in the year",
    .args = {TermYrs(), AnnGrowthRate(), GrowRevsPerYrOpt()},
    .examples = {"SumLGAnnM(3, 0.1) ~ 3.3 1e-12", "SumLGAnnM(1, 0.2, 2) ~ 1.05 1e-12"},
    .see_also = "SumLGAnn,SumLGAnnCont,LCorrectionM",
};
QX_EXPORT(SumLGAnnM, 3);

// --- Level payments on dates ------------------------------------------------------------------------------------

constexpr Function FVQX{
    .name = "FVQX",
    .category = category,
    .calls = core<qx::FVQX>,
    .help = "What is still owed after dated level payments at a simple rate under a day count",
    .args = {PresentValue(), DrawDate(), NumPmts(), InterestSimple(), Pmt(), DayCount(), PrdsInt()},
    .examples = {"FVQX(1000, 2005, 2, 0.08, -100) ~ 838.4 1e-9"},
    .see_also = "PMTQX,PVQX,RateQX,NPerQX",
};
QX_EXPORT(FVQX, 7);

constexpr Function IntRateX{
    .name = "IntRateX",
    .category = category,
    .calls = core<qx::IntRateX>,
    .help = "The simple rate of a loan with dated level payments. Older name of RateQX",
    .args = {PresentValue(), DrawDate(), NumPmts(), Pmt(), balance_left(), DayCount(), PrdsInt()},
    .examples = {"IntRateX(1000, 2005, 1, -1020) ~ 0.08 1e-9"},
    .see_also = "RateQX",
};
QX_EXPORT(IntRateX, 7);

constexpr Function NPerQX{
    .name = "NPerQX",
    .category = category,
    .calls = core<qx::NPerQX>,
    .help = "Number of dated level payments that repay a loan at a simple rate, the last perhaps in part",
    .args = {PresentValue(), DrawDate(), Pmt(), InterestSimple(), balance_left(), DayCount(), PrdsInt()},
    .examples = {"NPerQX(1000, 2005, -1020, 0.08) ~ 1 1e-9", "NPerQX(1000, 2005, -100, 0) ~ 10 1e-9"},
    .see_also = "PMTQX,RateQX,TermM",
};
QX_EXPORT(NPerQX, 7);

constexpr Function PMTQX{
    .name = "PMTQX",
    .category = category,
    .calls = core<qx::PMTQX>,
    .help = "The level payment of a loan on dates of a sequence, at a simple rate under a day count",
    .args = {PresentValue(), DrawDate(), NumPmts(), InterestSimple(), balance_left(), DayCount(), PrdsInt()},
    .examples = {"PMTQX(1000, 2005, 1, 0.08) ~ -1020 1e-7", "PMTQX(1000, 2005, 4, 0) ~ -250 1e-7"},
    .see_also = "RateQX,PVQX,FVQX,NPerQX,PmtM",
};
QX_EXPORT(PMTQX, 7);

constexpr Function PMTX{
    .name = "PMTX",
    .category = category,
    .calls = core<qx::PMTX>,
    .help = "The level payment of a loan on dates of a sequence. Older name of PMTQX",
    .args = {PresentValue(), DrawDate(), NumPmts(), InterestSimple(), balance_left(), DayCount(), PrdsInt()},
    .examples = {"PMTX(1000, 2005, 1, 0.08) ~ -1020 1e-7"},
    .see_also = "PMTQX",
};
QX_EXPORT(PMTX, 7);

constexpr Function PVQX{
    .name = "PVQX",
    .category = category,
    .calls = core<qx::PVQX>,
    .help = "The amount that dated level payments repay at a simple rate under a day count",
    .args = {InterestSimple(), DrawDate(), NumPmts(), Pmt(), balance_left(), DayCount(), PrdsInt()},
    .examples = {"PVQX(0.08, 2005, 1, -1020) ~ 1000 1e-9"},
    .see_also = "PMTQX,RateQX,FVQX,PVM",
};
QX_EXPORT(PVQX, 7);

constexpr Function PVQXX{
    .name = "PVQXX",
    .category = category,
    .calls = core<qx::PVQXX>,
    .help = "The amount that dated level payments repay. Older form of PVQX, with the same result",
    .args = {InterestSimple(), DrawDate(), NumPmts(), Pmt(), balance_left(), DayCount(), PrdsInt()},
    .examples = {"PVQXX(0.08, 2005, 1, -1020) ~ 1000 1e-9"},
    .see_also = "PVQX",
};
QX_EXPORT(PVQXX, 7);

constexpr Function RateQX{
    .name = "RateQX",
    .category = category,
    .calls = core<qx::RateQX>,
    .help = "The simple rate of a loan with level payments on dates of a sequence, under a day count",
    .args = {PresentValue(), DrawDate(), NumPmts(), Pmt(), balance_left(), DayCount(), PrdsInt()},
    .examples = {"RateQX(1000, 2005, 1, -1020) ~ 0.08 1e-9"},
    .see_also = "PMTQX,PVQX,NPerQX,IntRateM",
};
QX_EXPORT(RateQX, 7);

} // namespace qx::worksheet
