// Worksheet functions of annuities and present values under the names of older workbooks.
#include "addin/declare.h"
#include "rates/annual_cash_flow.h"
#include "rates/annuities.h"
#include "rates/cash_flow.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Compatibility;

} // namespace

constexpr Function NPVMB{
    .name = "NPVMB",
    .category = category,
    .calls = twin<qx::NPVMB>,
    .help = "Present value of annual cash flows received in the course of the year. New workbooks use NPVM",
    .args = {NPVDate(),
             DisAER(),
             {"AnnualCashFlows", "Cash flows a year apart"},
             {"StartAnnDate", "Date of the first cash flow"},
             PmtsPerYear()},
    .examples = {"NPVMB(2005, 0.1, {110;121}, 2006, -1) ~ 200 1e-10"},
    .see_also = "NPVM",
};
QX_EXPORT(NPVMB, 5);

constexpr Function NPVOne{
    .name = "NPVOne",
    .category = category,
    .calls = twin<qx::NPVOne>,
    .help = "Present value of a payment of 1. New workbooks use PVOne",
    .args = {TheDate("Date of the payment"), NPVDate(), DisAER()},
    .examples = {"NPVOne(2006, 2005, 0.25) ~ 0.8 1e-12"},
    .see_also = "PVOne",
};
QX_EXPORT(NPVOne, 3);

constexpr Function NPVR{
    .name = "NPVR",
    .category = category,
    .calls = twin<qx::NPVR>,
    .help = "Present value of cash flows on dates. New workbooks use PVT",
    .args = {NPVDate(), DisAER(), Dates(), Cashflows()},
    .examples = {"NPVR(2005, 0.1, {2006;2007}, {110;121}) ~ 200 1e-10"},
    .see_also = "PVT",
};
QX_EXPORT(NPVR, 4);

constexpr Function PmtMB{
    .name = "PmtMB",
    .category = category,
    .calls = core<qx::PmtMB>,
    .help = "The payment a year of the same sign as the present value that it pays for. New workbooks use PmtM",
    .args = {{"PresentValue", "Amount at the start of the term, of the sign of the payments"},
             InterestAER(),
             TermYrs(),
             PmtsPerYear(),
             FVOpt()},
    .examples = {"PmtMB(100, 0.1, 1, -1) ~ 110 1e-12"},
    .see_also = "PmtM",
};
QX_EXPORT(PmtMB, 5);

constexpr Function PVMB{
    .name = "PVMB",
    .category = category,
    .calls = core<qx::PVMB>,
    .help = "Present value of annual payments, of the same sign as the payments. New workbooks use PVM",
    .args = {{"AnnPmt", "Total paid in a year"}, InterestAER(), TermYrs(), PmtsPerYear(), FVOpt()},
    .examples = {"PVMB(100, 0, 3, 4) = 300"},
    .see_also = "PVM",
};
QX_EXPORT(PVMB, 5);

} // namespace qx::worksheet
