// Find and replace on a host with a sheet of its own, which keeps formulas in row and column notation as Excel does.
#include "addin/cells.h"
#include "addin/excel_operations.h"
#include "addin/registration.h"
#include "addin/stub_host.h"
#include "commands/find_replace.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>

namespace qx::test {
namespace {

using Place = std::pair<int, int>;

class SheetOfCells : public StubHost {
  public:
    std::map<Place, std::string> cells; ///< a formula is kept as "=R1C1:" and what follows the equals sign
    std::vector<XLREF> selection;
    bool selection_fails = false;
    Place locked{-1, -1};
    int written = 0;

    int call(int xlfn, OPER* result, int count, OPER* const* arguments) override {
        switch (xlfn) {
        case xlfSelection: {
            if (selection_fails) return xlretFailed;
            areas_.resize(sizeof(XLMREF) + selection.size() * sizeof(XLREF));
            auto* const areas = reinterpret_cast<XLMREF*>(areas_.data());
            areas->count = static_cast<std::uint16_t>(selection.size());
            std::memcpy(areas->reftbl, selection.data(), selection.size() * sizeof(XLREF));
            result->xltype = xltypeRef;
            result->val.mref = {areas, 7};
            return xlretSuccess;
        }
        case xlfGetDocument: // the used part: rows 1 to 1000, columns 1 to 20
            *result = number_cell((arguments[0]->val.w == 10 ? 1000 : arguments[0]->val.w == 12 ? 20 : 1));
            return xlretSuccess;
        case xlfGetFormula:
            *result = kept_.text(cells[place(*arguments[0])]);
            return xlretSuccess;
        case xlfFormulaConvert: {
            EXPECT_EQ(count, 5);
            const std::string text = text_in(*arguments[0]);
            const bool from_a1 = arguments[1]->val.xbool != 0;
            EXPECT_NE(from_a1, arguments[2]->val.xbool != 0);
            if (text.find("((") != text.npos) return xlretFailed; // no formula
            *result = kept_.text(from_a1 ? "=R1C1:" + text.substr(1) : "=" + text.substr(6));
            return xlretSuccess;
        }
        case xlcFormula:
            if (place(*arguments[1]) == locked) return xlretFailed;
            ++written;
            cells[place(*arguments[1])] = text_in(*arguments[0]);
            *result = bool_cell(true);
            return xlretSuccess;
        default:
            return StubHost::call(xlfn, result, count, arguments);
        }
    }

  private:
    static Place place(const OPER& cell) {
        EXPECT_EQ(cell.val.mref.idSheet, 7u);
        const XLREF& area = cell.val.mref.lpmref->reftbl[0];
        return {area.rwFirst, area.colFirst};
    }

    std::vector<unsigned char> areas_;
    Cells kept_;
};

class FindReplace : public testing::Test {
  protected:
    FindReplace() {
        host.cells = {{{0, 0}, "Rent 2004"}, {{1, 0}, "=R1C1:DpD(B2,30)"}, {{2, 0}, "1200"}, {{4, 0}, "Rent 2005"}};
        host.selection = {{0, 3, 0, 0}};
    }
    SheetOfCells host;
    clsfindreplace dialog;
};

TEST_F(FindReplace, EmptyTextIsRefusedBeforeTheSelectionIsAsked) {
    dialog.find();
    EXPECT_EQ(dialog.status, "Error: Find text must not be the empty string!");
    EXPECT_TRUE(host.asked.empty());
}

TEST_F(FindReplace, FiftyAreasAreAcceptedAndNoMore) {
    dialog.findtext = "x";
    host.selection.assign(50, {0, 3, 0, 0});
    dialog.find();
    EXPECT_EQ(dialog.status, "Find:x\nReplace:\n0 of 3 filled cells would change.") << "areas overlap";
    host.selection.assign(51, {0, 3, 0, 0});
    dialog.find();
    EXPECT_EQ(dialog.status, " Too many areas are selected.  Please reduced the number of selected areas.  MAX=50");
    host.selection_fails = true;
    dialog.find();
    EXPECT_EQ(dialog.status, " Error accessing the selection");
}

TEST_F(FindReplace, ABrokenExpressionIsTold) {
    dialog.findtext = "(2004";
    dialog.find();
    EXPECT_EQ(dialog.status.find("Error: "), 0u);
    EXPECT_FALSE(dialog.can_replace());
    dialog.findtext = "(a|a)*b"; // takes for ever on a long text
    host.cells[{2, 0}] = std::string(200, 'a');
    dialog.find();
    EXPECT_FALSE(dialog.can_replace());
}

TEST_F(FindReplace, NothingIsWrittenBeforeItHasBeenShownAndUndoIsOneStep) {
    const auto before = host.cells;
    dialog.findtext = "(\\d)0";
    dialog.replacetext = "$1_";
    dialog.replace();
    EXPECT_EQ(dialog.status,
              "Find:(\\d)0\nReplace:$1_\n3 of 3 filled cells would change.\nPress Replace again to write them.");
    EXPECT_EQ(host.written, 0);
    ASSERT_EQ(dialog.changes().size(), 3u);
    EXPECT_EQ(describe(dialog.changes()[1].cell), "A2");
    EXPECT_EQ(dialog.changes()[1].before, "=DpD(B2,30)");
    EXPECT_EQ(dialog.changes()[1].after, "=DpD(B2,3_)");
    dialog.replacetext = "$1-"; // another text has to be shown again
    dialog.replace();
    EXPECT_EQ(host.written, 0);
    dialog.replace();
    EXPECT_EQ(dialog.status, "Find:(\\d)0\nReplace:$1-\n3 cells changed.\nUndo brings the former contents back.");
    EXPECT_EQ((host.cells[{1, 0}]), "=R1C1:DpD(B2,3-)");
    EXPECT_EQ((host.cells[{0, 0}]), "Rent 2-04");
    EXPECT_EQ((host.cells[{4, 0}]), "Rent 2005") << "it is not selected";
    EXPECT_FALSE(dialog.can_replace());
    dialog.undo();
    EXPECT_EQ(dialog.status, "3 cells as before the replacement.");
    for (const auto& [place, text] : before) EXPECT_EQ(host.cells[place], text);
    EXPECT_FALSE(dialog.can_undo());
}

TEST_F(FindReplace, WhatCannotBeWrittenIsToldAndNotUndone) {
    dialog.findtext = "2004|\\(|12";
    dialog.replacetext = "((";
    host.locked = {0, 0};
    dialog.find();
    dialog.replace();
    EXPECT_EQ(dialog.status, "Find:2004|\\(|12\nReplace:((\n1 cell changed.\n"
                             "A1 is left as it was: Excel does not accept the contents.\n"
                             "A2 is left as it was: Excel does not understand the formula.\n"
                             "Undo brings the former contents back.");
    host.written = 0;
    dialog.undo();
    EXPECT_EQ(host.written, 1);
    dialog.findtext = "Rent.*";
    dialog.replacetext = std::string(300, 'x');
    host.locked = {-1, -1};
    dialog.find();
    dialog.replace();
    EXPECT_NE(dialog.status.find("A1 is left as it was: the text is longer than 255 characters."), std::string::npos);
    EXPECT_EQ((host.cells[{0, 0}]), "Rent 2004");
}

TEST_F(FindReplace, WhereKeepsToAnArea) {
    host.selection = {{0, 65535, 0, 255}}; // a whole sheet, of which a thousand rows are in use
    dialog.findtext = "Rent";
    dialog.replacetext = "Income";
    dialog.find();
    EXPECT_EQ(dialog.changes().size(), 2u);
    dialog.where = "$A$5:B6";
    dialog.find();
    ASSERT_EQ(dialog.changes().size(), 1u);
    EXPECT_EQ(describe(dialog.changes()[0].cell), "A5");
    for (const char* const wrong : {"A", "1", "A1:", "A0", "A1:B2:C3", "IW1", "A65537", "Sheet1"}) {
        dialog.where = wrong;
        dialog.find();
        EXPECT_EQ(dialog.status, "Error: Where must be WorkSheet or an area such as A1:D50.") << wrong;
    }
    dialog.open();
    EXPECT_EQ(dialog.where, "WorkSheet");
}

TEST_F(FindReplace, TheCommandShowsTheDialog) {
    static int shown = 0;
    find_replace_dialog = [](clsfindreplace& shown_dialog) {
        ++shown;
        EXPECT_EQ(shown_dialog.where, "WorkSheet");
        shown_dialog.where = "A1";
    };
    const Command* command = all_commands();
    while (command != nullptr && std::string(command->name) != "CPPQX_FindReplace") command = command->next;
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->run(), 0);
    EXPECT_EQ(command->run(), 0);
    EXPECT_EQ(shown, 2);
    find_replace_dialog = nullptr;
    EXPECT_EQ(command->run(), 0);
}

TEST(Replacer, ReplacesLettersAndNoPartOfOne) {
    // The en dash begins with the same byte as the euro sign.
    EXPECT_EQ(Replacer("[€£]", "")("€5–£6"), "5–6");
    EXPECT_EQ(Replacer("Stra(.)e", "$1$1")("Straße"), "ßß");
    EXPECT_EQ(Replacer("-", "–")("a-b"), "a–b");
    EXPECT_EQ(Replacer("5", "6")("\xA3"
                                 "5"),
              "\xA3"
              "6")
        << "a text of a code page";
    EXPECT_EQ(Replacer("[\xA3$]", "GBP ")("\xA3"
                                          "5"),
              "GBP 5");
    EXPECT_THROW(Replacer("a", "\\x{110000}")("a"), std::runtime_error);
    EXPECT_THROW(Replacer("[b-a]", ""), std::runtime_error);
}

} // namespace
} // namespace qx::test
