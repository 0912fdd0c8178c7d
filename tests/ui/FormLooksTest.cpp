// Both menus, entry by entry: each worksheet's window as it stands on the screen, against how the
// form's instructions have it.

#include <QAction>
#include <QFontMetricsF>
#include <QHeaderView>
#include <algorithm>
#include <cmath>

#include "FormLooks.h"
#include "SheetTest.h"
#include "structure/EditLines.h"
#include "ui/main/MenuTable.h"
#include "worksheets/Worksheet.h"

namespace zolmara::ui {
namespace {

QString Squeezed(QString text) { return text.remove('\n').remove(' '); }

class FormLooksTest : public SheetTest {
protected:
    FormLooksTest() {
        Start();
        const std::string path = MakeCrf("Made.CRF");
        EXPECT_TRUE(OpenCrf(path));
        AddLines();
        FillAmounts();
        DropCrf();
        Open(path);
        Boxes.clear();
        main->hide();
    }

    /// Lines of every kind that can be keyed.
    static void AddLines() {
        for (const char* item : {"A6", "A81p1", "A81p2", "S2p1", "S2p2", "S2p3"})
            AddLine(item, Currency(1.0));
        gDB.Execute("UPDATE A6 SET Col_1 = 'Rent', Col_2 = 'A' WHERE LineNum = 1;");
        gDB.Execute("UPDATE A81p2 SET Col_1 = 'G' WHERE SeqNum = 1;");
        gDB.Execute("INSERT INTO G (LineNum,Description) VALUES (49,'Other');");
        gDB.Execute("INSERT INTO G1 (LineNum,Col_1) VALUES (10,'Other');");
        gDB.Execute("INSERT INTO CostCenters (LineNum,CCName) VALUES (29,'Press');");
        gDB.Execute("UPDATE S1p1 SET Col_1 = '5', Col_3 = 'No' WHERE LineNum In (3,4);");
    }
    static void FillAmounts() {
        for (const Worksheet& sheet : AllWorksheets()) {
            const std::string table(sheet.Item);
            bool isKey = true;
            for (const FieldDef& field : gDB.Table(table).Fields) {
                const bool amount =
                    field.Type == FieldType::dbDouble || field.Type == FieldType::dbCurrency;
                if (amount && !isKey)
                    gDB.Execute("UPDATE " + table + " SET " + field.Name + " = -1234.56;");
                isKey = false;
            }
        }
    }

    static frmWorksheet* Last() {
        return WorksheetWindows().empty() ? nullptr : WorksheetWindows().back();
    }
    static QString HeadingOf(frmWorksheet* window, int column) {
        return window->Grid()
            .model()
            ->headerData(column, Qt::Horizontal, Qt::DisplayRole)
            .toString();
    }

    void ExpectColumns(frmWorksheet* window, const ColumnLooks& columns);
    void ExpectColumn(frmWorksheet* window, int at, const ColumnLook& look);
    void ExpectFolded(frmWorksheet* window, int at, const ColumnLook& look);
    void ExpectShown(frmWorksheet* window, int at, const ColumnLook& look);
    void ExpectButtons(frmWorksheet* window, const FormLook& look, bool edit);
    void ExpectNeighbour(frmWorksheet* window, const FormLook& look, bool edit, bool next);
    void ExpectWindow(const FormLook& look, bool edit);
};

void FormLooksTest::ExpectColumns(frmWorksheet* window, const ColumnLooks& columns) {
    const auto* model = window->Grid().model();
    std::vector<std::string> shown;
    for (int at = 0; at < model->columnCount(); ++at)
        if (!window->Grid().isColumnHidden(at)) shown.push_back(window->Model().Column(at).Field);
    std::vector<std::string> expected;
    for (const ColumnLook& column : columns) expected.push_back(column.Field);
    ASSERT_EQ(shown, expected);
    for (const ColumnLook& column : columns) {
        SCOPED_TRACE(column.Field);
        ExpectColumn(window, window->Form().ColumnOf(column.Field), column);
    }
}

void FormLooksTest::ExpectColumn(frmWorksheet* window, int at, const ColumnLook& look) {
    ExpectFolded(window, at, look);
    ExpectShown(window, at, look);
    bool open = false;
    for (int row = 0; row < window->Model().rowCount(); ++row)
        open = open || window->Model().IsOpen(row, at);
    EXPECT_EQ(open, look.Is == Lock::Keyed);
    if (look.Twips == 0) return;
    const double pixels = look.Twips * window->Grid().logicalDpiX() / 1440.0;
    EXPECT_NEAR(window->Grid().columnWidth(at), pixels, 1);
}

/// The number on a line of its own, then the title in lines that are no wider than the column.
void FormLooksTest::ExpectFolded(frmWorksheet* window, int at, const ColumnLook& look) {
    const QString heading = HeadingOf(window, at);
    EXPECT_EQ(S(Squeezed(heading)), S(Squeezed(Q(look.Number + look.Title))));
    QStringList lines = heading.split('\n');
    if (!look.Number.empty()) {
        EXPECT_EQ(S(lines.takeFirst()), look.Number);
    }
    const QFontMetricsF letters(window->Grid().horizontalHeader()->font());
    for (const QString& line : lines)
        if (line.contains(' ')) {
            EXPECT_LE(letters.horizontalAdvance(line), window->Grid().columnWidth(at)) << S(line);
        }
    EXPECT_GE(window->Grid().horizontalHeader()->height(),
              letters.lineSpacing() * static_cast<double>(lines.size()));
}

void FormLooksTest::ExpectShown(frmWorksheet* window, int at, const ColumnLook& look) {
    const bool isKey = look.Field == window->Form().Key;
    const std::string text =
        S(window->Grid().model()->index(0, at).data(Qt::DisplayRole).toString());
    switch (look.Shows) {
        case Looks::Text:
            EXPECT_EQ(text, Text(window->Model().Value(0, at)));
            break;
        case Looks::Money:
            EXPECT_EQ(text, "(1,235)");
            break;
        case Looks::Percent:
            EXPECT_EQ(text, "(1,234.56)");
            break;
        case Looks::Sequence:
            EXPECT_EQ(text, isKey ? "1.00" : "(1,234.56)");
            break;
        case Looks::Ratio:
            EXPECT_EQ(text, "(1234.560000)");
            break;
        case Looks::Line:
            EXPECT_EQ(text, isKey ? "1.00" : "-1234.56");
            break;
        case Looks::Whole:
            EXPECT_EQ(text, "1");
            break;
    }
    const int align = window->Grid().model()->index(0, at).data(Qt::TextAlignmentRole).toInt() &
                      Qt::AlignHorizontal_Mask;
    EXPECT_EQ(align == Qt::AlignRight, look.Shows != Looks::Text);
}

/// The worksheet before or after in the order of the names; an editor passes over what has none.
void FormLooksTest::ExpectNeighbour(frmWorksheet* window, const FormLook& look, bool edit,
                                    bool next) {
    const auto& order = WalkOrder();
    const auto computed = [](const std::string& item) {
        return item == "E" || item.starts_with("Cp") || item.starts_with("Dp") ||
               item.starts_with("F");
    };
    const auto here = std::ranges::find(order, look.Item, &NamedItem::Item);
    std::string tip;
    for (auto at = here; at != order.end() && tip.empty();) {
        if (next ? ++at == order.end() : at == order.begin()) break;
        if (!next) --at;
        if (!edit || !computed(at->Item))
            tip = "Open " + at->Name + " For " + (edit ? "Edit" : "View");
    }
    const QPushButton* button = Button(window, next ? "cmdNext" : "cmdPrevious");
    EXPECT_EQ(button->isEnabled(), !tip.empty());
    if (!tip.empty()) {
        EXPECT_EQ(S(button->toolTip()), tip);
    }
}

void FormLooksTest::ExpectButtons(frmWorksheet* window, const FormLook& look, bool edit) {
    std::vector<std::string> names;
    for (const auto* button : window->findChild<QWidget*>("picButtons")
                                  ->findChildren<QPushButton*>(Qt::FindDirectChildrenOnly))
        names.push_back(S(button->objectName()));
    using Names = std::vector<std::string>;
    EXPECT_EQ(names, edit ? Names({"cmdRecalculate", "cmdOpenView", "cmdPrevious", "cmdNext",
                                   "cmdAdd", "cmdDelete", "cmdClose"})
                          : Names({"cmdRecalculate", "cmdOpenEdit", "cmdPrevious", "cmdNext",
                                   "cmdPrint", "cmdClose"}));
    EXPECT_EQ(S(Button(window, "cmdRecalculate")->text()), "&Recalculate");
    EXPECT_EQ(S(Button(window, "cmdClose")->text()), "&Close");
    EXPECT_TRUE(Button(window, "cmdClose")->isEnabled());
    ExpectNeighbour(window, look, edit, true);
    ExpectNeighbour(window, look, edit, false);
    if (edit) {
        EXPECT_EQ(S(Button(window, "cmdDelete")->text()), "&Delete");
        EXPECT_EQ(Button(window, "cmdAdd")->isEnabled(), look.Add);
        EXPECT_EQ(Button(window, "cmdDelete")->isEnabled(), look.Delete);
    } else {
        EXPECT_EQ(S(Button(window, "cmdOpenEdit")->text()), "&Open Edit");
        EXPECT_EQ(Button(window, "cmdOpenEdit")->isEnabled(), !look.EditName.empty());
    }
}

void FormLooksTest::ExpectWindow(const FormLook& look, bool edit) {
    SCOPED_TRACE((edit ? "edit " : "view ") + look.Item);
    Trigger((edit ? "mnuEdit" : "mnuView") + look.Menu);
    frmWorksheet* window = Last();
    ASSERT_NE(window, nullptr);
    const std::string own = edit ? look.EditCaption : look.ViewCaption;
    const std::string caption = (edit ? "Edit Worksheet " : "View Worksheet ") + look.Item;
    EXPECT_EQ(S(window->windowTitle()), own.empty() ? caption : own);
    EXPECT_EQ(S(window->objectName()), edit ? look.EditName : look.ViewName);
    if (look.Item == "S1p1") window->GoToLine(Currency(1.0), "Col_1");
    ExpectColumns(window, edit ? look.Edit : look.View);
    ExpectButtons(window, look, edit);
    window->close();
    EXPECT_EQ(WorksheetWindows().size(), 0U);
}

std::vector<std::string> EntriesOf(const std::string& mode) {
    std::vector<std::string> names;
    for (const MenuEntry& entry : MenuTable())
        if (entry.Mode == mode && !entry.Item.empty() && entry.Item != "S")
            names.push_back(entry.Name);
    std::ranges::sort(names);
    return names;
}

/// The names of the entries, but for the list of S, which is read from the CRF.
std::vector<std::string> ExpectedEntries(const std::string& prefix) {
    std::vector<std::string> names;
    for (const FormLook& look : FormLooks())
        if (!look.Menu.starts_with("Sx")) names.push_back(prefix + look.Menu);
    std::ranges::sort(names);
    return names;
}

TEST_F(FormLooksTest, TheEditMenuOpensEveryEditorAsItIsTold) {
    EXPECT_EQ(EntriesOf("edit"), ExpectedEntries("mnuEdit"));
    for (const FormLook& look : FormLooks())
        if (!look.EditName.empty())
            ExpectWindow(look, true);
        else
            EXPECT_FALSE(Enabled("mnuEdit" + look.Menu)) << look.Item;
    EXPECT_EQ(BoxTexts(), std::vector<std::string>());
}

TEST_F(FormLooksTest, TheViewMenuOpensEveryViewAsItIsTold) {
    EXPECT_EQ(EntriesOf("view"), ExpectedEntries("mnuView"));
    for (const FormLook& look : FormLooks()) ExpectWindow(look, false);
    EXPECT_EQ(BoxTexts(), std::vector<std::string>());
}

}  // namespace
}  // namespace zolmara::ui
