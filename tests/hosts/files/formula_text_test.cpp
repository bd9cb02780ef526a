// Formulas in the notations of files.
#include "hosts/files/formula_text.h"

#include <gtest/gtest.h>
#include <utility>

namespace qx::files {

TEST(FormulaText, MarksOfXlsxAreTakenAway) {
    const std::pair<const char*, const char*> cases[] = {
        {"_xll.MonthEnd(A1)+_xlfn.XLOOKUP(1,A:A,B:B)", "MonthEnd(A1)+XLOOKUP(1,A:A,B:B)"},
        {"_xlfn._xlws.SORT(A1:A3)", "SORT(A1:A3)"},
        {"_xlfn.LET(_xlpm.x,1,_xlpm.x+1)", "LET(x,1,x+1)"},
        {"SUM(_xlfn.ANCHORARRAY(A1))", "SUM(A1#)"},
        {"_xlfn.SINGLE(A1:A3)", "@(A1:A3)"},
        {"'C:\\Add-ins\\Quexel.xll'!MonthEnd(1)", "MonthEnd(1)"},
        {"[1]!MonthEnd(1)", "MonthEnd(1)"},
        {"'[1]Other sheet'!A1", "'[1]Other sheet'!A1"}, // a cell of another workbook stays one
        {"COM.SUN.STAR.SHEET.ADDIN.ANALYSIS.GETEDATE(A1,1)", "EDATE(A1,1)"},
        {"\"_xlfn.IFS(\"&'_xll.x'!A1", "\"_xlfn.IFS(\"&'_xll.x'!A1"}, // texts and sheets are no functions
        {"FORECAST.LINEAR(1,A1:A2,B1:B2)", "FORECAST.LINEAR(1,A1:A2,B1:B2)"},
    };
    for (const auto& [in_file, written] : cases) EXPECT_EQ(from_xlsx(in_file), written);
}

TEST(FormulaText, WhatGoesIntoXlsxComesBack) {
    EXPECT_EQ(to_xlsx("MonthEnd(A1)"), "_xll.MonthEnd(A1)");
    EXPECT_EQ(to_xlsx("ifs(A1,2)+SUM(A1)"), "_xlfn.IFS(A1,2)+SUM(A1)");
    EXPECT_EQ(to_xlsx("FILTER(A1:A3,B1:B3)"), "_xlfn._xlws.FILTER(A1:A3,B1:B3)");
    EXPECT_EQ(to_xlsx("SUM(Data!A1#)"), "SUM(_xlfn.ANCHORARRAY(Data!A1))");
    EXPECT_EQ(to_xlsx("@A1:A3*2"), "_xlfn.SINGLE(A1:A3)*2");
    EXPECT_EQ(to_xlsx("@INDEX(A1:A3,2)+1"), "_xlfn.SINGLE(INDEX(A1:A3,2))+1");
    EXPECT_EQ(to_xlsx("LET(rate,5%,n,3,rate*n+\"rate\"&rate2)"),
              "_xlfn.LET(_xlpm.rate,5%,_xlpm.n,3,_xlpm.rate*_xlpm.n+\"rate\"&rate2)");
    for (const char* const formula : {"LET(a,1,b,a*2,a+b)", "SUM(A1#)", "MonthEnd(DpM(A1,B$2))&\"IFS(\"", "{1,2;3,4}"})
        EXPECT_EQ(from_xlsx(to_xlsx(formula)), formula);
}

TEST(FormulaText, OpenFormulaIsTranslated) {
    const std::pair<const char*, const char*> cases[] = {
        {"of:=SUM([.A1:.B3];2)", "SUM(A1:B3,2)"},
        {"of:=[$Rates.$A$1]+['My ''Sheet'.B2]", "Rates!$A$1+'My ''Sheet'!B2"},
        {"of:=SUM([$'Sheet.1'.A1:.B2])", "SUM('Sheet.1'!A1:B2)"},
        {"of:={1;2|3;4}", "{1,2;3,4}"},
        {"of:=\"a;b\"&[.A1]", "\"a;b\"&A1"},
        {"of:=COM.MICROSOFT.XLOOKUP(1;[.A:.A];[.B:.B])", "XLOOKUP(1,A:A,B:B)"},
        {"of:=_xll.monthend([.B6])", "monthend(B6)"},
        {"of:=[.#REF!]+1", "#REF!+1"},
        {"of:=['file:///tmp/a.ods'#$Sheet1.A1]", "#REF!"},
        {"msoxl:=A1", "A1"},
    };
    for (const auto& [in_file, written] : cases) EXPECT_EQ(from_openformula(in_file), written);
}

} // namespace qx::files
