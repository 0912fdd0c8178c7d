// What goes for all worksheet windows.

#include <algorithm>
#include <set>

#include "forms/CellRules.h"
#include "forms/FormSupport.h"
#include "structure/EditLines.h"
#include "structure/modAddS2.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

using test::Cell;
using Words = std::vector<std::string>;

class WorksheetForms : public test::FormTest {};

TEST_F(WorksheetForms, EveryWorksheetHasItsView) {
    for (const Worksheet& sheet : AllWorksheets())
        EXPECT_TRUE(HasForm(FormMode::View, sheet.Item)) << sheet.Item;
    EXPECT_TRUE(HasForm(FormMode::View, "CCs"));
    EXPECT_TRUE(HasForm(FormMode::View, "ES"));
    EXPECT_EQ(AllForms().size(), 32U + 48U);
}

TEST_F(WorksheetForms, EveryFormOpensOnANewCrf) {
    for (const FormEntry& entry : AllForms()) {
        const auto form = DescribeForm(entry.Mode, entry.Item);
        ASSERT_TRUE(form) << entry.Item;
        EXPECT_EQ(form->Name, entry.Name);
        EXPECT_EQ(form->Mode, entry.Mode);
        FormRows rows(*form);
        for (int row = 0; row < rows.Count(); ++row)
            for (int column = 0; column < static_cast<int>(form->Columns.size()); ++column)
                rows.CellText(row, column);
        for (int i = 0; i < form->FrozenColumns; ++i)
            EXPECT_TRUE(i < static_cast<int>(form->Columns.size())) << entry.Item;
    }
}

TEST_F(WorksheetForms, TheItemStandsFromTheSixteenthCharacterOfTheCaption) {
    for (const FormEntry& entry : AllForms()) {
        const auto form = DescribeForm(entry.Mode, entry.Item);
        if (entry.Item == "ES" || (entry.Item == "CCs" && entry.Mode == FormMode::Edit)) continue;
        EXPECT_EQ(ItemOfCaption(form->Caption), entry.Item);
    }
    EXPECT_EQ(Edit("CCs").Caption, "EDIT: Cost Centers Structure Table");
    EXPECT_EQ(View("CCs").Caption, "View Worksheet CCs");
    EXPECT_EQ(Edit("ES").Caption, "Edit: Pooled Allocation Statistical Basis");
    EXPECT_EQ(View("ES").Caption, "View: Pooled Allocation Statistical Basis");
}

TEST_F(WorksheetForms, ARequestToEditWhatIsCalculatedGivesTheView) {
    for (const char* item : {"Cp1", "Dp3", "E", "Fp1", "F1p2", "F2p3"}) {
        const WorksheetForm form = Edit(item);
        EXPECT_EQ(form.Mode, FormMode::View) << item;
        EXPECT_EQ(form.Caption, std::string("View Worksheet ") + item);
    }
}

TEST_F(WorksheetForms, WhatIsNoWorksheetIsTold) {
    EXPECT_FALSE(DescribeForm(FormMode::Edit, "A82"));
    EXPECT_FALSE(DescribeForm(FormMode::Edit, "Bp4"));
    EXPECT_FALSE(DescribeForm(FormMode::View, ""));
    EXPECT_FALSE(DescribeForm(FormMode::View, "CostCenters"));
    EXPECT_EQ(UnknownWorksheetText("edit", "A82"), "Unknown worksheet requested (A82) for edit.");
    EXPECT_EQ(Edit("a81P1").Item, "A81p1") << "in the form's own spelling";
}

TEST_F(WorksheetForms, AHeadingLocksAndFormatsOfA) {
    const WorksheetForm form = Edit("A");
    EXPECT_EQ(Titles(form), (Words{"CC #", "Description", "Expenses per Home Office Books"}));
    EXPECT_EQ(KeyedFields(form), Words{"Col_1"});
    EXPECT_EQ(Column(form, "LineNum").Width, 650);
    EXPECT_EQ(Column(form, "CCName").Width, 3300);
    EXPECT_TRUE(Column(form, "CCName").Wrap);
    EXPECT_EQ(Column(form, "Col_1").Width, 1400);
    EXPECT_EQ(Column(form, "Col_1").NumberFormat, "#,##0;(#,##0)");
    EXPECT_EQ(Column(form, "Col_1").Align, CellAlign::Right);
    EXPECT_EQ(Column(form, "Col_1").Number, "1");
    EXPECT_EQ(form.FrozenColumns, 2);
    EXPECT_EQ(Titles(View("A")).size(), 10U);
    EXPECT_TRUE(KeyedFields(View("A")).empty());
}

}  // namespace
}  // namespace zolmara
