#include "ui/tools/frmBackups.h"

#include <fmt/format.h>

#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "import/BackupFigures.h"
#include "store/session/Session.h"
#include "ui/main/Buttons.h"
#include "ui/main/Done.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"
#include "ui/tools/ListingModel.h"
#include "ui/tools/frmBackupView.h"

namespace zolmara::ui {
namespace {

enum Column { kWhich, kTime, kSize, kExpenses, kDifferences };

constexpr double kBytes = 1024;

std::string PlaceText() {
    const BackupRules rules = TheBackupRules();
    return fmt::format(
        "Backups of {} are kept in {}: the last {}, and the last of each day for {} days.",
        gCRFTitle, BackupFolderOf(gCRFPath), rules.Last, rules.Days);
}

}  // namespace

frmBackups::frmBackups()
    : model_(new ListingModel(this)),
      grd_(new QTableView),
      lblPlace_(new QLabel),
      lblDone_(new QLabel),
      cmdView_(MakeButton("cmdView", "&View ...", [this] { View(); })),
      cmdRestore_(MakeButton("cmdRestore", "&Restore ...", [this] { Restore(); })),
      tmrFigures_(new QTimer(this)) {
    SetUpForm(this, "frmBackups", "Backups", true);
    grd_->setObjectName("grd");
    grd_->setAccessibleName("Backups");
    grd_->setModel(model_);
    grd_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grd_->setSelectionMode(QAbstractItemView::SingleSelection);
    grd_->setTabKeyNavigation(false);
    grd_->verticalHeader()->hide();
    lblPlace_->setObjectName("lblPlace");
    lblPlace_->setWordWrap(true);
    lblPlace_->setTextFormat(Qt::PlainText);
    lblPlace_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    lblDone_->setObjectName("lblBackupDone");
    lblDone_->setTextFormat(Qt::PlainText);
    auto* const make = MakeButton("cmdMake", "&Back Up Now", [this] { Make(); });
    auto* const close = MakeButton("cmdClose", "&Close", [this] { UnloadForm(this); });
    auto* column = new QVBoxLayout(this);
    column->addWidget(lblPlace_);
    column->addWidget(grd_, 1);
    column->addWidget(lblDone_);
    column->addWidget(MakeButtonStrip({make, cmdView_, cmdRestore_, close}));
    PressOnEscape(this, close);
    tmrFigures_->setInterval(0);
    connect(tmrFigures_, &QTimer::timeout, this, [this] { ReadNextFigures(); });
    ReadBackups();
    resize(fontMetrics().averageCharWidth() * 100, fontMetrics().lineSpacing() * 24);
    grd_->setFocus();
}

void frmBackups::ReadBackups() {
    lblPlace_->setText(Q(PlaceText()));
    backups_ = BackupsOf(gCRFPath);
    ListingModel::Rows rows;
    for (const Backup& backup : backups_)
        rows.push_back({static_cast<double>(backup.Which),
                        StoreDateText(backup.Time),
                        RoundTo(static_cast<double>(backup.Size) / kBytes, 0),
                        {},
                        {}});
    model_->Set({{"No."},
                 {"Made"},
                 {"Size (KB)", Shown::Amount},
                 {"Total Expenses", Shown::Amount},
                 {"Cells That Differ From Now", Shown::Amount}},
                std::move(rows));
    grd_->resizeColumnsToContents();
    connect(grd_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { SetButtons(); });
    if (!backups_.empty()) grd_->selectRow(0);
    SetButtons();
    read_ = 0;
    tmrFigures_->start();
}

/// One after the other: each is read and compared as a whole.
void frmBackups::ReadNextFigures() {
    if (read_ >= backups_.size()) return tmrFigures_->stop();
    const int row = static_cast<int>(read_);
    const BackupFigures figures = FiguresOfBackup(gCRFPath, backups_[read_++]);
    model_->SetCell(row, kExpenses, figures.Expenses);
    model_->SetCell(row, kDifferences, figures.Differences);
}

const Backup* frmBackups::Chosen() const {
    const QModelIndexList rows = grd_->selectionModel()->selectedRows();
    return rows.isEmpty() ? nullptr : &backups_.at(static_cast<std::size_t>(rows.first().row()));
}

void frmBackups::SetButtons() {
    for (QPushButton* button : {cmdView_, cmdRestore_}) button->setEnabled(Chosen() != nullptr);
}

/// This window covers the main one, so its own line says it, too.
void frmBackups::Tell(const std::string& text) {
    lblDone_->setText(Q(text));
    lblDone_->setAccessibleName(Q(text));
    TellDone(text);
}

void frmBackups::Make() {
    const bool made = MakeBackup(gCRFPath).has_value();
    ReadBackups();
    Tell(made ? fmt::format("{} has been backed up.", gCRFTitle)
              : std::string("The newest backup holds what the file holds now."));
}

void frmBackups::View() {
    if (const Backup* const backup = Chosen()) ShowForm(new frmBackupView(*backup));
}

void frmBackups::Restore() {
    const Backup* const chosen = Chosen();
    if (!chosen) return;
    const Backup backup = *chosen;
    const int answer = TheDialogs().MsgBox(
        fmt::format("{} becomes what it was at {}.  What it holds now becomes a backup first.  "
                    "Restore it?",
                    gCRFTitle, StoreDateText(backup.Time)),
        kYesNo + kQuestion + kDefaultButton2, "Restore");
    if (answer != kYes) return;
    tmrFigures_->stop();
    const QPointer<frmBackups> window = this;
    const bool restored = RestoreOpenCrf(backup);
    if (!window) return;
    if (!CrfIsOpen()) return static_cast<void>(UnloadForm(this));
    ReadBackups();
    if (restored) Tell(fmt::format("{} has been restored.", gCRFTitle));
}

void ShowBackups() { ShowForm(new frmBackups); }

}  // namespace zolmara::ui
