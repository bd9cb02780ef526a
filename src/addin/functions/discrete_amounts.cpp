// Worksheet functions of payments on dates: those in a period, late ones, some of them.
#include "addin/amount_arguments.h"
#include "addin/declare.h"
#include "projections/payments.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::DiscreteAmount;

constexpr Argument more_amounts(const char* name) { return optional(name, 0.0, "Another payment on the same date"); }
constexpr Argument more_lists(const char* name) { return optional(name, "More payments on the same dates"); }
constexpr ArgumentGroup lists_2_to_4() { return {more_lists("Pmts2"), more_lists("Pmts3"), more_lists("Pmts4")}; }
constexpr ArgumentGroup lists_5_to_7() { return {more_lists("Pmts5"), more_lists("Pmts6"), more_lists("Pmts7")}; }
constexpr ArgumentGroup lists_8_to_10() { return {more_lists("Pmts8"), more_lists("Pmts9"), more_lists("Pmts10")}; }
constexpr Argument LagMonths() {
    return optional("LagMonths",
                    "Months from the date of a payment to when it is paid: one lag for all, or one for each "
                    "payment, of which the last applies to all that follow; none if omitted");
}
constexpr ArgumentGroup bounds() {
    return {optional("AbStart", "No payments in a period that ends before this date; no bound if omitted"),
            optional("AbFin", "No payments in a period that starts on or after this date; no bound if omitted")};
}
constexpr Argument Amounts() { return {"Amounts", "The amounts, in their order in time"}; }

} // namespace

constexpr Function MkPmts{
    .name = "MkPmts",
    .category = category,
    .calls = twin<qx::MkPmts>,
    .help = "Sum of the payments whose dates lie in a period",
    .args = {time_period(), payments()},
    .examples = {"MkPmts(2005, 12, {2005;2005.5;2006}, {10;20;40}) = 30"},
    .see_also = "MkPmtsSF,MkPmtsLag,MkPmtsPer,TotPmts",
};
QX_EXPORT(MkPmts, 4);

constexpr Function MkPmt{
    .name = "MkPmt",
    .category = category,
    .calls = twin_alias_of<qx::MkPmts>,
    .help = "A payment, if its date lies in a period. New workbooks use MkPmts",
    .args = {time_period(), payment()},
    .examples = {"MkPmt(2005, 12, 2005.5, 100) = 100", "MkPmt(2005, 12, 2006, 100) = 0"},
    .see_also = "MkPmts",
    .change = {33, "See Change in Behaviour 33, Oct-03 :Function hidden: superceded (compatibly) by MkPmts", "MkPmts"},
};
QX_EXPORT(MkPmt, 4);

constexpr Function MkPmtX{
    .name = "MkPmtX",
    .category = category,
    .calls = twin<qx::MkPmtX>,
    .help = "Up to ten payments on one date, if it lies in a period",
    .args = {time_period(), payment(), more_amounts("Pmt2"), more_amounts("Pmt3"), more_amounts("Pmt4"),
             more_amounts("Pmt5"), more_amounts("Pmt6"), more_amounts("Pmt7"), more_amounts("Pmt8"),
             more_amounts("Pmt9"), more_amounts("Pmt10")},
    .examples = {"MkPmtX(2005, 12, 2005.5, 100, 20, 3) = 123"},
    .see_also = "MkPmts,MkPmtsX",
};
QX_EXPORT(MkPmtX, 13);

constexpr Function MkPmtsX{
    .name = "MkPmtsX",
    .category = category,
    .calls = twin<qx::MkPmtsX>,
    .help = "Sum of the payments of up to ten lists whose dates, the same for all, lie in a period",
    .args = {time_period(), payments(), lists_2_to_4(), lists_5_to_7(), lists_8_to_10()},
    .examples = {"MkPmtsX(2005, 12, {2005.5;2006}, {100;200}, {10;20}, {1;2}) = 111"},
    .see_also = "MkPmts,MkPmtsLagX",
};
QX_EXPORT(MkPmtsX, 13);

constexpr Function MkPmtSF{
    .name = "MkPmtSF",
    .category = category,
    .calls = twin<qx::MkPmtSF<Payment>>,
    .help = "A payment, if its date lies in a period and between two dates",
    .args = {time_period(), life(), payment()},
    .examples = {"MkPmtSF(2005, 12, 2005, 2005.5, 2005.25, 100) = 100",
                 "MkPmtSF(2005, 12, 2005, 2005.5, 2005.5, 100) = 0"},
    .see_also = "MkPmtsSF",
};
QX_EXPORT(MkPmtSF, 6);

constexpr Function MkPmtsSF{
    .name = "MkPmtsSF",
    .category = category,
    .calls = twin<qx::MkPmtSF<Payments>>,
    .help = "Sum of the payments whose dates lie in a period and between two dates",
    .args = {time_period(), life(), payments()},
    .examples = {"MkPmtsSF(2005, 12, 2005.25, 2006, {2005;2005.25;2005.5}, {10;20;40}) = 60"},
    .see_also = "MkPmts,TotPmtsSF",
};
QX_EXPORT(MkPmtsSF, 6);

// --- Later than their dates ------------------------------------------------------------------------------------------

constexpr Function MkPmtsLag{
    .name = "MkPmtsLag",
    .category = category,
    .calls = twin<qx::MkPmtsLag>,
    .help = "Sum of the payments that fall into a period when each is paid some months after its date",
    .args = {time_period(), LagMonths(), payments(), measure(), bounds()},
    .examples = {"MkPmtsLag(2005, 12, 3, {2004.75;2005.75}, {10;20}) = 10"},
    .see_also = "MkPmtsLagProf,MkPmtsLagX,MkPmtsGroup",
};
QX_EXPORT(MkPmtsLag, 9);

constexpr Function MkPmtsLagX{
    .name = "MkPmtsLagX",
    .category = category,
    .calls = twin<qx::MkPmtsLagX>,
    .help = "Sum of the payments of up to ten lists on the same dates that fall into a period when each is paid some "
            "months after its date",
    .args = {time_period(), LagMonths(), payments(), lists_2_to_4(), lists_5_to_7(), lists_8_to_10(), measure(),
             bounds()},
    .examples = {"MkPmtsLagX(2005, 12, 3, {2004.75;2005.75}, {10;20}, {1;2}) = 11"},
    .see_also = "MkPmtsLag,MkPmtsX",
};
QX_EXPORT(MkPmtsLagX, 18);

constexpr Function MkPmtsLagProf{
    .name = "MkPmtsLagProf",
    .category = category,
    .calls = twin<qx::MkPmtsLagProf>,
    .help = "Sum of the payments that fall into a period when parts of each are paid different numbers of months after "
            "its date",
    .args = {time_period(),
             {"MonthsLag", "Months from the date of a payment to when each part of it is paid"},
             {"Proportions", "The parts, one for each lag; they need not sum to 1"},
             payments(),
             measure(),
             bounds()},
    .examples = {"MkPmtsLagProf(2005, 3, {1;3}, {0.4;0.6}, 2005, 1000) ~ 400 1e-9"},
    .see_also = "MkPmtsLag",
};
QX_EXPORT(MkPmtsLagProf, 10);

constexpr Function MkPmtsGroup{
    .name = "MkPmtsGroup",
    .category = category,
    .calls = twin<qx::MkPmtsGroup>,
    .help = "Sum of the payments that fall into a period when each, some months after its date, is held until the next "
            "date of a sequence",
    .args = {time_period(), LagMonths(), payments(), measure(),
             sequence("PrdsGroup", 4,
                      "Dates in the year on which payments are made: 1, 2, 4, 12, 13 or a range of mm.dd figures"),
             bounds()},
    .examples = {"MkPmtsGroup(2005.25, 1, , {2005.1;2005.2}, {10;20}, , , 4) = 30"},
    .see_also = "MkPmtsLag,NextDateSeq",
};
QX_EXPORT(MkPmtsGroup, 10);

// --- Some of them ----------------------------------------------------------------------------------------------------

constexpr Function MkPmtsLim{
    .name = "MkPmtsLim",
    .category = category,
    .calls = twin<qx::MkPmtsLim>,
    .help = "Sum of the payments in a period, up to the first that carries the total of the list past a limit",
    .args = {time_period(), payments(), {"CumLimit", "Limit of the payments from the first of the list on"}},
    .examples = {"MkPmtsLim(2005, 12, {2005.1;2005.2;2005.3}, {10;20;30}, 35) = 30"},
    .see_also = "MkPmts,FStepSpread",
};
QX_EXPORT(MkPmtsLim, 5);

constexpr Function MkPmtsCats{
    .name = "MkPmtsCats",
    .category = category,
    .calls = twin<qx::MkPmtsCats>,
    .help = "Sum of the payments of chosen categories whose dates lie in a period",
    .args = {time_period(),
             payments(),
             {"Categories", "The category of each payment, a number or text"},
             optional("ChosenCategories", "The categories to include; all if neither they nor limits are given"),
             optional("Categories2", "A second category of each payment"),
             optional("ChosenCategories2", "The categories to include of the second kind"),
             optional("Options", 0,
                      "A sum of: 1 leave out what the first choice names, 2 leave out what the second names, 4 one of "
                      "the choices is enough",
                      "both choices must agree"),
             bounds(),
             optional("CatMin", 0.0, "The least category to include, beside those chosen", "no limit"),
             optional("CatMax", 0.0, "The greatest category to include, beside those chosen", "no limit"),
             optional("CatMin2", 0.0, "The least category of the second kind to include", "no limit"),
             optional("CatMax2", 0.0, "The greatest category of the second kind to include", "no limit")},
    .examples = {"MkPmtsCats(2005, 12, {2005.1;2005.2;2005.3}, {10;20;40}, {\"a\";\"b\";\"a\"}, \"a\") = 50",
                 "MkPmtsCats(2005, 12, {2005.1;2005.2;2005.3}, {10;20;40}, {1;2;3}, , , , , , , 2) = 60"},
    .see_also = "MkPmts,SumCats",
};
QX_EXPORT(MkPmtsCats, 15);

constexpr Function MkPmtsSeq{
    .name = "MkPmtsSeq",
    .category = category,
    .calls = twin<qx::MkPmtsSeq>,
    .help = "Sum of the payments from one date of an annual sequence up to another, counted from a date",
    .args = {TheDate("Date to count from"),
             payments(),
             {"SeqRelStart",
              "Where to start: 0 on TheDate, 1 on the next date of the sequence after it, -1 on the last "
              "one before it, and so on"},
             {"SeqRelFinish", "Where to stop, counted in the same way; that day itself does not count"},
             AnnDateSeq("AnnualDateSeq")},
    .examples = {"MkPmtsSeq(2005.3, {2005.1;2005.25;2005.4}, {10;20;40}, 0, 1, 4) = 40",
                 "MkPmtsSeq(2005.25, {2005.1;2005.25;2005.4}, {10;20;40}, -1, 0, 4) = 10"},
    .see_also = "MkPmts,MatchPmts",
};
QX_EXPORT(MkPmtsSeq, 6);

constexpr Function MatchPmts{
    .name = "MatchPmts",
    .category = category,
    .calls = twin<qx::MatchPmts>,
    .help = "Sum of the payments on one day",
    .args = {TheDate("The day"), payments()},
    .examples = {"MatchPmts(2005, {2005;2006;2005}, {10;20;40}) = 50"},
    .see_also = "MkPmts",
};
QX_EXPORT(MatchPmts, 3);

constexpr Function TotPmts{
    .name = "TotPmts",
    .category = category,
    .calls = core<qx::TotPmts>,
    .help = "Sum of all payments",
    .args = {payments()},
    .examples = {"TotPmts({2005;2006;2005}, {10;20;40}) = 70"},
    .see_also = "TotPmtsSF,MkPmts",
};
QX_EXPORT(TotPmts, 2);

constexpr Function TotPmtsSF{
    .name = "TotPmtsSF",
    .category = category,
    .calls = core<qx::TotPmtsSF>,
    .help = "Sum of the payments from a start date up to, but not on, a finish date",
    .args = {life(), payments()},
    .examples = {"TotPmtsSF(2005, 2006, {2005;2006;2005}, {10;20;40}) = 50"},
    .see_also = "TotPmts,SumBetween,MkPmtsSF",
};
QX_EXPORT(TotPmtsSF, 4);

constexpr Function SumBetween{
    .name = "SumBetween",
    .category = category,
    .calls = core<qx::SumBetween>,
    .help = "Sum of the payments between two dates",
    .args = {FromDate(), ToDate(), payments(), InclusiveOpt()},
    .examples = {"SumBetween(2005, 2006, {2005;2005.5;2006}, {10;20;40}) = 30",
                 "SumBetween(2005, 2006, {2005;2005.5;2006}, {10;20;40}, 1) = 70"},
    .see_also = "DoBetween,MaxBetween,MinBetween,TotPmtsSF",
};
QX_EXPORT(SumBetween, 5);

constexpr Function DoBetween{
    .name = "DoBetween",
    .category = category,
    .calls = core<qx::DoBetween>,
    .help = "Sum, average, count, greatest, smallest or product of the payments between two dates",
    .args = {FromDate(), ToDate(), payments(), InclusiveOpt(), RangeOperation()},
    .examples = {"DoBetween(2005, 2006, {2005;2005.5;2006}, {10;20;40}, 0, 1) = 15",
                 "DoBetween(2005, 2006, {2005;2005.5;2006}, {10;20;40}, 1, 2) = 3"},
    .see_also = "SumBetween,DoBetweenX",
};
QX_EXPORT(DoBetween, 6);

// --- Moved, carried --------------------------------------------------------------------------------------------------

constexpr Function RePhasePmts{
    .name = "RePhasePmts",
    .category = category,
    .calls = twin<qx::RePhasePmts>,
    .help = "What moving payments to other dates adds to a period: the payments on the new dates less those on the old "
            "ones",
    .args = {time_period(),
             {"FromPmtDates", "The dates of the payments before the move"},
             {"ToPmtDates", "The dates of the payments after it"},
             {"Pmts", "The payments"}},
    .examples = {"RePhasePmts(2005, 12, {2005.5;2006}, {2006;2005.5}, {10;40}) = 30"},
    .see_also = "MkPmts,RePhaseCon",
};
QX_EXPORT(RePhasePmts, 5);

constexpr Function RePhasePmt{
    .name = "RePhasePmt",
    .category = category,
    .calls = twin_alias_of<qx::RePhasePmts>,
    .help = "What moving a payment to another date adds to a period. New workbooks use RePhasePmts",
    .args = {time_period(),
             {"FromPmtDate", "The date of the payment before the move"},
             {"ToPmtDate", "The date of the payment after it"},
             {"Pmt", "The payment"}},
    .examples = {"RePhasePmt(2005, 12, 2005.5, 2006, 100) = -100", "RePhasePmt(2006, 12, 2005.5, 2006, 100) = 100"},
    .see_also = "RePhasePmts",
    .change = {38, "See Change in Behaviour 38, Oct-03 :Function hidden: superceded (compatibly) by RePhasePmts",
               "RePhasePmts"},
};
QX_EXPORT(RePhasePmt, 5);

constexpr Function CarryNeg{
    .name = "CarryNeg",
    .category = category,
    .calls = core<qx::CarryNeg>,
    .help =
        "A list of amounts in which a negative balance is not shown but carried forward and set against what follows, "
        "as losses against profits",
    .args = {Amounts()},
    .examples = {"CarryNeg({-100;60;80}) = {0,0,40}"},
    .see_also = "CarryPos",
};
QX_EXPORT(CarryNeg, 1);

constexpr Function CarryPos{
    .name = "CarryPos",
    .category = category,
    .calls = core<qx::CarryPos>,
    .help =
        "A list of amounts in which a positive balance is not shown but carried forward and set against what follows, "
        "as cash in hand against payments",
    .args = {Amounts()},
    .examples = {"CarryPos({100;-60;-80}) = {0,0,-40}"},
    .see_also = "CarryNeg",
};
QX_EXPORT(CarryPos, 1);

} // namespace qx::worksheet
