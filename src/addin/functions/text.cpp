// Worksheet functions of texts.
#include "lists/text.h"
#include "addin/declare.h"
#include "calendar/time_period.h"
#include "lists/money_text.h"
#include "lists/regular_expressions.h"
#include "lists/text_charts.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Text;

constexpr Argument Textstring() { return {"Textstring", "The text to look at"}; }
constexpr Argument RegSought() { return {"RegSought", "Regular expression to look for, in Perl's syntax"}; }
constexpr Argument CaseInSensitive() {
    return optional("CaseInSensitive", false,
                    "TRUE or 1 to disregard capitals. This will simply convert Textstring and RegSought to lower case "
                    "before evaluating.");
}
constexpr Argument Delimiter() { return optional("Delimiter", ",", "The letters between the pieces"); }
constexpr Argument OptionLetters() {
    return optional("OptionLetters", "",
                    "\"e\": the end of the text closes the last token; \"d\": delimiters in a row count as one");
}
constexpr Argument Letters() {
    return optional("Letters", "|", "The letter to draw with; several letters are used in turn");
}

} // namespace

constexpr Function RegMatchWhole{
    .name = "RegMatchWhole",
    .category = category,
    .calls = core<qx::RegMatchWhole>,
    .help = "True if a regular expression matches the whole of a string",
    .args = {Textstring(), RegSought(), CaseInSensitive()},
    .examples = {"RegMatchWhole(\"Unit 12\", \"Unit \\d+\") = TRUE", "RegMatchWhole(\"Unit 12\", \"Unit\") = FALSE"},
    .see_also = "RegNMatches,RegSMatch",
};
QX_EXPORT(RegMatchWhole, 3);

constexpr Function RegNMatches{
    .name = "RegNMatches",
    .category = category,
    .calls = core<qx::RegNMatches>,
    .help = "How often a regular expression matches in a string",
    .args = {Textstring(), RegSought(), CaseInSensitive()},
    .examples = {"RegNMatches(\"a1b22c333\", \"\\d+\") = 3"},
    .see_also = "RegSMatches,RegMatchWhole",
};
QX_EXPORT(RegNMatches, 3);

constexpr Function RegReplace{
    .name = "RegReplace",
    .category = category,
    .calls = core<qx::RegReplace>,
    .help = "A string with each match of a regular expression replaced",
    .args = {Textstring(),
             RegSought(),
             {"Replacement", "What replaces a match; $1 is the first group in brackets, $& the match"},
             CaseInSensitive()},
    .examples = {"RegReplace(\"2004-02-29\", \"(\\d+)-(\\d+)-(\\d+)\", \"$3/$2/$1\") = \"29/02/2004\""},
    .see_also = "RegSplit",
};
QX_EXPORT(RegReplace, 4);

constexpr Function RegSMatch{
    .name = "RegSMatch",
    .category = category,
    .calls = core<qx::RegSMatch>,
    .help = "The first match of a regular expression in a string, or an empty string",
    .args = {Textstring(), RegSought(), CaseInSensitive()},
    .examples = {"RegSMatch(\"Unit 12, Floor 3\", \"\\d+\") = \"12\""},
    .see_also = "RegSMatches",
};
QX_EXPORT(RegSMatch, 3);

constexpr Function RegSMatches{
    .name = "RegSMatches",
    .category = category,
    .calls = core<qx::RegSMatches>,
    .help = "All matches of a regular expression in a string, as a list",
    .args = {Textstring(), RegSought(), CaseInSensitive()},
    .examples = {"RegSMatches(\"a1b22c333\", \"\\d+\") = {\"1\",\"22\",\"333\"}"},
    .see_also = "RegSMatch,RegSplit",
};
QX_EXPORT(RegSMatches, 3);

constexpr Function RegSplit{
    .name = "RegSplit",
    .category = category,
    .calls = core<qx::RegSplit>,
    .help = "A string in pieces, split where a regular expression matches",
    .args =
        {Textstring(), RegSought(),
         optional("SplitMode", 0, "0: the pieces between the matches; 1: the matches themselves").of(split_mode_values),
         CaseInSensitive()},
    .examples = {"RegSplit(\"a; b ;c\", \"\\s*;\\s*\") = {\"a\",\"b\",\"c\"}"},
    .see_also = "RegSMatches,GetToken",
};
QX_EXPORT(RegSplit, 4);

constexpr Function MoneyText{
    .name = "MoneyText",
    .category = category,
    .calls = core<qx::MoneyText>,
    .help = "An amount of money in words, in English, Spanish or French",
    .args = {{"Amount", "The amount, 0 to 9,999,999,999,999"},
             optional("Currency", 0, "0 dollar, 1 euro, 2 pound, 3 peso").of(currency_values),
             optional("Language", 0, "0 English, 1 Spanish, 2 French").of(language_values)},
    .examples = {"MoneyText(123.05) = \"one hundred twenty-three dollars and five cents\"",
                 "MoneyText(1000000, 0, 2) = \"un million dollars\""},
};
QX_EXPORT(MoneyText, 3);

constexpr Function Bar{
    .name = "Bar",
    .category = category,
    .calls = core<qx::Bar>,
    .help = "A bar of letters as long as an amount, on a line from a minimum to a maximum",
    .args = {{"Amount", "The amount to show"},
             {"MaxAmount", "The amount at the end of the line"},
             optional("MinAmount", 0.0, "The amount at the start of the line"),
             optional("LineLength", 20, "Length of the line in letters, 1 to 254"),
             Letters()},
    .examples = {"Bar(30, 100, 0, 10) = \"|||\"", "Bar(-50, 100, -100, 10, \"+-\") = \"   --\""},
    .see_also = "Gantt",
};
QX_EXPORT(Bar, 5);

constexpr Function Gantt{
    .name = "Gantt",
    .category = category,
    .calls = core<qx::Gantt>,
    .help = "A line of text for a time period, with letters where activities are under way",
    .args = {Time(),
             Base(),
             {"Starts", "Date or dates on which activities start"},
             {"Finishes", "Date or dates on which they finish, no longer counted"},
             optional("LineLength", 0, "Length of the line in letters, 1 to 254; 0 for a letter a month"),
             Letters()},
    .examples = {"Gantt(2005, 12, DATE(2005,4,1), DATE(2005,7,1)) = \"   |||\""},
    .see_also = "Bar",
};
QX_EXPORT(Gantt, 6);

constexpr Function ExFl{
    .name = "ExFl",
    .category = category,
    .calls = core<qx::ExFl>,
    .help = "Cells as numbers, including amounts in text such as $1,234.50",
    .args = {{"InputPoly_s", "A cell or range of numbers and text"}},
    .examples = {"ExFl(\"$1,234.50\") = 1234.5", "ExFl({\"GBP 12.5\",7}) = {12.5,7}"},
    .see_also = "ExInt,ExNumRange",
};
QX_EXPORT(ExFl, 1);

constexpr Function ExInt{
    .name = "ExInt",
    .category = category,
    .calls = core<qx::ExInt>,
    .help = "Cells as whole numbers, including amounts in text such as $1,234.50; decimals are dropped",
    .args = {{"InputPoly_s", "A cell or range of numbers and text"}},
    .examples = {"ExInt(\"$1,234.50\") = 1234", "ExInt({\"Unit 12\",7}) = {12,7}"},
    .see_also = "ExFl,ExNumRange",
};
QX_EXPORT(ExInt, 1);

constexpr Function ExNumRange{
    .name = "ExNumRange",
    .category = category,
    .calls = core<qx::ExNumRange>,
    .help = "The numbers in a string such as 1-3,7,10-12 as a list, with ranges written out",
    .args = {{"Textstring", "Numbers and ranges of numbers"}, Delimiter()},
    .examples = {"ExNumRange(\"1-3,7,10-12\") = {1,2,3,7,10,11,12}"},
    .see_also = "ExFl,GetTokens",
};
QX_EXPORT(ExNumRange, 2);

constexpr Function GetToken{
    .name = "GetToken",
    .category = category,
    .calls = core<qx::GetToken>,
    .help = "A piece of a string between two delimiters, by its number, or \"not found\"",
    .args = {Textstring(), {"TokenNo", "Which piece, from 1"}, Delimiter(), OptionLetters()},
    .examples = {"GetToken(\"a,b,c\", 2) = \"b\"", "GetToken(\"a,b,c\", 3) = \"not found\"",
                 "GetToken(\"a,b,c\", 3, \",\", \"e\") = \"c\""},
    .see_also = "GetTokens,RegSplit",
};
QX_EXPORT(GetToken, 4);

constexpr Function GetTokens{
    .name = "GetTokens",
    .category = category,
    .calls = core<qx::GetTokens>,
    .help = "Several consecutive pieces of a string with the delimiters between them, or \"not found\"",
    .args = {Textstring(),
             {"FirstTokenToFind", "Which piece is the first, from 1"},
             {"NumberOfTokens", "How many pieces"},
             Delimiter(),
             OptionLetters()},
    .examples = {"GetTokens(\"a,b,c,d\", 2, 2) = \"b,c\""},
    .see_also = "GetToken,RegSplit",
};
QX_EXPORT(GetTokens, 5);

constexpr Function InString{
    .name = "InString",
    .category = category,
    .calls = core<qx::InString>,
    .help = "True if a sequence of letters occurs in a string; capitals matter",
    .args = {Textstring(), {"LetterSequence", "The letters to look for"}},
    .examples = {"InString(\"Unit 12\", \"it 1\") = TRUE"},
    .see_also = "RegNMatches",
};
QX_EXPORT(InString, 2);

} // namespace qx::worksheet
