#include "ui/dialogs/frmHeaderLines.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "store/session/Acts.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "ui/main/Buttons.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"
#include "ui/overview/StatementNotes.h"

namespace zolmara::ui {
namespace {

constexpr double kTwipsPerInch = 1440;
constexpr int kLineWidth = 600;  ///< twips
constexpr int kTextWidth = 5000;
constexpr int kLongestText = 140;

/// No line takes more than its field holds.
class TextDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        QWidget* const editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (auto* field = qobject_cast<QLineEdit*>(editor)) field->setMaxLength(kLongestText);
        return editor;
    }
};

}  // namespace

frmHeaderLines::frmHeaderLines() {
    if (!TableExists("Headerlines", false)) Build_HeaderLines();
    SetUpForm(this, "frmHeaderLines", "Header Lines", FormKind::Dialog);
    auto* column = new QVBoxLayout(this);
    MakeGrid();
    auto* update = MakeButton("cmdUpdate", "Update", [this] { Update(); });
    auto* cancel = MakeButton("cmdCancel", "&Cancel", [this] { UnloadForm(this); });
    column->addWidget(grdHeaderLines_, 1);
    column->addWidget(MakeButtonStrip({update, cancel}));
    PressOnEscape(this, cancel);
    ReadLines();
    grdHeaderLines_->setFocus();
    AddForm(this);
}

void frmHeaderLines::MakeGrid() {
    grdHeaderLines_ = new QTableWidget(0, 2);
    grdHeaderLines_->setObjectName("grdHeaderLines");
    grdHeaderLines_->setAccessibleName("Header Lines");
    grdHeaderLines_->setHorizontalHeaderLabels({"Line #", "LineText"});
    grdHeaderLines_->verticalHeader()->hide();
    grdHeaderLines_->setTabKeyNavigation(false);
    grdHeaderLines_->setEditTriggers(QAbstractItemView::AllEditTriggers);
    grdHeaderLines_->setItemDelegateForColumn(1, new TextDelegate(grdHeaderLines_));
    const double twip = logicalDpiX() / kTwipsPerInch;
    grdHeaderLines_->setColumnWidth(0, static_cast<int>(kLineWidth * twip) + 24);
    grdHeaderLines_->horizontalHeader()->setStretchLastSection(true);
    grdHeaderLines_->setMinimumWidth(static_cast<int>((kLineWidth + kTextWidth) * twip) + 40);
    grdHeaderLines_->setMinimumHeight(fontMetrics().lineSpacing() * 9);
}

void frmHeaderLines::ReadLines() {
    Recordset rows =
        gDB.OpenRecordset("SELECT * FROM HeaderLines Order By LineNum;", dbOpenSnapshot);
    grdHeaderLines_->setRowCount(static_cast<int>(rows.RecordCount()));
    for (int row = 0; !rows.Eof(); rows.MoveNext(), ++row) {
        auto* line = new QTableWidgetItem(Q(Text(rows[0])));
        line->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        grdHeaderLines_->setItem(row, 0, line);
        grdHeaderLines_->setItem(row, 1, new QTableWidgetItem(Q(StrOr(rows[1]))));
    }
    stored_ = Texts();
    if (grdHeaderLines_->rowCount() > 0) grdHeaderLines_->setCurrentCell(0, 1);
}

std::vector<std::string> frmHeaderLines::Texts() const {
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(grdHeaderLines_->rowCount()));
    for (int row = 0; row < grdHeaderLines_->rowCount(); ++row)
        texts.push_back(S(grdHeaderLines_->item(row, 1)->text()));
    return texts;
}

/// What is still being keyed counts too: leaving the field commits it.
void frmHeaderLines::CommitField() { grdHeaderLines_->setFocus(); }

void frmHeaderLines::Update() {
    CommitField();
    const std::vector<std::string> texts = Texts();
    const FiguresStay stay;
    RunAct("Change the header lines", [&] {
        for (int row = 0; const std::string& text : texts)
            gDB.Execute("UPDATE HeaderLines SET LineText = ? WHERE LineNum = ?;",
                        {text.empty() ? Variant() : Variant(text),
                         grdHeaderLines_->item(row++, 0)->text().toInt()});
    });
    stored_ = texts;
    MsgOrLog("Header Lines have been updated.", kInformation, "Header Lines Updated");
}

void frmHeaderLines::closeEvent(QCloseEvent* event) {
    CommitField();
    const bool lose =
        Texts() == stored_ || TheDialogs().MsgBox(
                                  "The header lines have been changed and not been updated. "
                                  " Close without the changes?",
                                  kYesNo + kQuestion + kDefaultButton2, "Header Lines") == kYes;
    event->setAccepted(lose);
}

}  // namespace zolmara::ui
