#include "ui/tools/frmCompare.h"

#include <fmt/format.h>

#include <QCheckBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QVBoxLayout>
#include <filesystem>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "import/ComparisonReport.h"
#include "spreadsheet/ComparisonSheet.h"
#include "store/CopyRows.h"
#include "store/files/FileDoor.h"
#include "store/session/Session.h"
#include "ui/main/Buttons.h"
#include "ui/main/Done.h"
#include "ui/main/Guard.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/StatementWatch.h"
#include "ui/main/WorksheetRoads.h"
#include "ui/tools/ListingModel.h"
#include "ui/worksheets/OpenWorksheet.h"
#include "worksheets/Worksheet.h"

namespace zolmara::ui {
namespace {

constexpr int kFirstAmount = 4;  ///< columns from here on hold amounts

/// A limit that was keyed; nothing for an empty field. An error names the field.
std::optional<double> Limit(const QLineEdit& field) {
    const std::string text = S(field.text().trimmed());
    if (text.empty()) return std::nullopt;
    const auto number = ParseNumber(text);
    if (!number || *number < 0)
        throw std::runtime_error(
            fmt::format("\"{}\" must be a number of 0 or more.", S(field.accessibleName())));
    return number;
}

QLineEdit* MakeLimit(const char* name, const char* spoken) {
    auto* field = new QLineEdit;
    field->setObjectName(name);
    field->setAccessibleName(spoken);
    return field;
}

}  // namespace

frmCompare::frmCompare(std::string other)
    : other_(std::move(other)),
      model_(new ListingModel(this)),
      lblFiles_(new QLabel),
      chkKeyed_(new QCheckBox("&Keyed cells only")),
      txtOver_(MakeLimit("txtOver", "Amounts that differ by more than")),
      txtOverPercent_(MakeLimit("txtOverPercent", "And by more per cent than")),
      grd_(new QTableView),
      lblCount_(new QLabel) {
    SetUpForm(this, "frmCompare", "Compare With", FormKind::Dialog);
    lblFiles_->setObjectName("lblFiles");
    lblFiles_->setTextFormat(Qt::PlainText);
    lblFiles_->setWordWrap(true);
    lblCount_->setObjectName("lblCount");
    grd_->setObjectName("grd");
    grd_->setAccessibleName("Cells that differ");
    grd_->setToolTip("Double-click a cell, or press Return, to go to its worksheet.");
    grd_->setModel(model_);
    grd_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grd_->setTabKeyNavigation(false);
    grd_->verticalHeader()->hide();
    connect(grd_, &QTableView::activated, this, [this](const QModelIndex& at) { GoTo(at.row()); });
    auto* const close = MakeButton("cmdClose", "C&lose", [this] { UnloadForm(this); });
    auto* column = new QVBoxLayout(this);
    column->addWidget(lblFiles_);
    column->addWidget(MakeWishes());
    column->addWidget(grd_, 1);
    column->addWidget(lblCount_);
    column->addWidget(
        MakeButtonStrip({MakeButton("cmdCompare", "&Compare", [this] { Compare(); }),
                         MakeButton("cmdPrint", "&Print", [this] { Print(); }),
                         MakeButton("cmdSave", "&Save As ...", [this] { Save(); }), close}));
    PressOnEscape(this, close);
    CloseWithStatement(this);
    resize(fontMetrics().averageCharWidth() * 130, fontMetrics().lineSpacing() * 32);
}

QWidget* frmCompare::MakeWishes() {
    auto* wishes = new QWidget;
    chkKeyed_->setObjectName("chkKeyed");
    auto* form = new QFormLayout(wishes);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(chkKeyed_);
    form->addRow("&Amounts that differ by more than:", txtOver_);
    form->addRow("And by more p&er cent than:", txtOverPercent_);
    return wishes;
}

ComparisonWish frmCompare::Wish() const {
    return {.Items = {},
            .Keyed = chkKeyed_->isChecked(),
            .Over = Limit(*txtOver_),
            .OverPercent = Limit(*txtOverPercent_)};
}

void frmCompare::Compare() {
    if (!CrfIsOpen() || !CommitOpenRows()) return;
    const ComparisonWish wish = Wish();
    {
        Database other = OpenReadOnly(other_);
        found_ = CompareCrfs(gDB, other, wish);
    }
    lblFiles_->setText(Q(fmt::format("Here: {}\nThere: {}", gCRFPath, other_)));
    std::vector<ListingModel::Column> columns;
    for (const std::string& head : ComparisonColumns())
        columns.push_back(
            {head, static_cast<int>(columns.size()) < kFirstAmount ? Shown::Plain : Shown::Amount});
    ListingModel::Rows rows;
    for (const CellDifference& difference : found_) rows.push_back(ComparisonRow(difference));
    model_->Set(std::move(columns), std::move(rows));
    grd_->resizeColumnsToContents();
    lblCount_->setText(found_.empty()       ? QString("No differences.")
                       : found_.size() == 1 ? QString("1 cell differs.")
                                            : QString("%1 cells differ.").arg(found_.size()));
}

/// A line that only the other file has is no line to go to.
void frmCompare::GoTo(int row) {
    const CellDifference& cell = found_.at(static_cast<std::size_t>(row));
    const bool isSheet = FindWorksheet(cell.Item) != nullptr || cell.Item == "CostCenters";
    if (!isSheet || cell.Line.IsNull() || !CrfIsOpen() || TheQtHost().InLongStep() ||
        CommandAtWork())
        return;
    const std::string item = cell.Item == "CostCenters" ? "CCs" : cell.Item;
    Guarded([&] { GoToWorksheet("view", item, CurOr(cell.Line), cell.Column); });
}

void frmCompare::Print() {
    if (CrfIsOpen()) Print_Comparison(found_, other_);
}

void frmCompare::Save() {
    FileDialog dialog = CrfDialog();
    dialog.Save = true;
    dialog.Title = "Save The Comparison As ...";
    dialog.FileName =
        (std::filesystem::path(dialog.FileName).parent_path() / "Compare.xlsx").string();
    dialog.DefaultExt = ".xlsx";
    dialog.Filter = "Spreadsheets (*.xlsx)|*.xlsx|Comma Separated Values (*.csv)|*.csv";
    dialog.FilterIndex = 1;
    dialog.Flags = 2050;
    const auto chosen = TheDialogs().ChooseFile(dialog);
    if (!chosen || chosen->empty()) return;
    // The dialog has asked whether a file that stands there is to be replaced.
    const ReplaceAsTold asked(true, "");
    SaveComparison(found_, other_, *chosen);
    TellDone("Saved the comparison as " + FileName(*chosen));
}

void ShowComparison() {
    FileDialog dialog = CrfDialog();
    dialog.Title = "Compare With ...";
    dialog.Filter = "Cost Report Files (*.CRF)|*.CRF";
    dialog.Flags = 4100;
    const auto chosen = TheDialogs().ChooseFile(dialog);
    if (!chosen || chosen->empty()) return;
    auto* const window = new frmCompare(*chosen);
    try {
        window->Compare();
    } catch (...) {
        delete window;
        throw;
    }
    ShowForm(window);
}

}  // namespace zolmara::ui
