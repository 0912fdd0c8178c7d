#include "ui/dialogs/frmViewError.h"

#include <QAction>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QScreen>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "editchecks/ComparedFigures.h"
#include "editchecks/ErrorView.h"
#include "print/Reports.h"
#include "store/session/Session.h"
#include "ui/dialogs/BuildEcr.h"
#include "ui/main/Buttons.h"
#include "ui/main/Guard.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/WorksheetRoads.h"
#include "ui/main/frmMain.h"
#include "ui/worksheets/FindingTarget.h"
#include "worksheets/CellNames.h"
#include "worksheets/Explain.h"

namespace zolmara::ui {
namespace {

enum Column { kLevel, kCode, kMessage, kColumns };

constexpr double kTwipsPerInch = 1440;

/// Red that can be read on the window's own ground.
QColor NoteColour(const QPalette& palette) {
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    return dark ? QColor(255, 120, 120) : QColor(192, 0, 0);
}

QTableWidgetItem* Cell(const std::string& text) {
    auto* item = new QTableWidgetItem(Lines(text));
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setTextAlignment(Qt::AlignLeft | Qt::AlignTop);
    return item;
}

}  // namespace

frmViewError::frmViewError(const std::string& caption) {
    SetUpForm(this, "frmViewError", caption, false);
    auto* column = new QVBoxLayout(this);
    MakeGrid();
    lblNonFatal_ = new QLabel;
    lblNonFatal_->setObjectName("lblNonFatal");
    lblNonFatal_->setWordWrap(true);
    MakeCompared();
    cmdBuildECR_ = MakeButton("cmdBuildECR", "&Build ECR", [this] { BuildECR(); });
    auto* print = MakeButton("cmdPrint", "&Print", [] { Print_Errors(); });
    auto* close = MakeButton("cmdClose", "&Close", [this] { UnloadForm(this); });
    submit_ = TheQtHost().Main() ? TheQtHost().Main()->Menu("mnuReportSubmit") : nullptr;
    if (submit_) following_ = connect(submit_, &QAction::changed, this, [this] { FollowSubmit(); });
    column->addWidget(grd_, 1);
    column->addWidget(lblCompared_);
    column->addWidget(lblNonFatal_);
    column->addWidget(MakeButtonStrip({cmdBuildECR_, print, close}));
    PressOnEscape(this, close);
    SetGrd();
    TakeSize();
    grd_->setFocus();
    AddForm(this, [this] { SetGrd(); });
}

void frmViewError::MakeGrid() {
    grd_ = new QTableWidget(0, kColumns);
    grd_->setObjectName("grd");
    grd_->setAccessibleName("Findings");
    grd_->setToolTip("Double-click a finding, or press Return, to go to its worksheet.");
    grd_->setHorizontalHeaderLabels({"Level", "Code", "Message"});
    grd_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grd_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grd_->setTabKeyNavigation(false);
    grd_->setWordWrap(true);
    grd_->setAlternatingRowColors(true);
    grd_->verticalHeader()->hide();
    const int least = fontMetrics().horizontalAdvance("Non-Fatal Error") + 24;
    grd_->setColumnWidth(kLevel, std::max(least, Pixels(kLevelWidth)));
    grd_->setColumnWidth(
        kCode, std::max(fontMetrics().horizontalAdvance("1010SX") + 16, Pixels(kCodeWidth)));
    QHeaderView* const head = grd_->horizontalHeader();
    head->setSectionResizeMode(kMessage, QHeaderView::Stretch);
    head->setMinimumSectionSize(24);
    QObject::connect(head, &QHeaderView::sectionResized, grd_, [this] { SetHeights(); });
    head->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    QObject::connect(grd_, &QTableWidget::itemActivated, this,
                     [this](const QTableWidgetItem* item) { OpenFinding(item->row()); });
    const int message = Pixels(kLeastMessageWidth);
    setMinimumWidth(grd_->columnWidth(kLevel) + grd_->columnWidth(kCode) + message);
}

void frmViewError::MakeCompared() {
    lblCompared_ = new QLabel;
    lblCompared_->setObjectName("lblCompared");
    lblCompared_->setTextFormat(Qt::RichText);
    lblCompared_->setWordWrap(true);
    lblCompared_->setTextInteractionFlags(Qt::TextBrowserInteraction);
    lblCompared_->hide();
    connect(lblCompared_, &QLabel::linkActivated, this,
            [this](const QString& link) { OpenCompared(link); });
    connect(grd_, &QTableWidget::currentCellChanged, this, [this] { ShowCompared(); });
}

int frmViewError::Pixels(int twips) const {
    return static_cast<int>(twips * logicalDpiX() / kTwipsPerInch);
}

/// As wide as the longest message, so far as the screen allows; it wraps in what there is.
void frmViewError::TakeSize() {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const int message = longest_ * fontMetrics().averageCharWidth() + 60;
    const int width = grd_->columnWidth(kLevel) + grd_->columnWidth(kCode) + message;
    resize(std::min(std::clamp(width, 640, 1200), screen.width()), std::min(560, screen.height()));
}

/// A row has the height of its own lines, and more where it wraps; no row is higher than the
/// window, so that each can be seen from its beginning.
void frmViewError::SetHeights() {
    grd_->resizeRowsToContents();
    const int most = std::max(grd_->viewport()->height(), Pixels(kTwipsPerLine));
    for (int row = 0; row < grd_->rowCount(); ++row) {
        const int least = Pixels(heights_.at(static_cast<std::size_t>(row)));
        grd_->setRowHeight(row, std::min(std::max(grd_->rowHeight(row), least), most));
    }
}

/// What tells one finding from another.
QString frmViewError::FindingAt(int row) const {
    const auto* const code = grd_->item(row, kCode);
    const auto* const message = grd_->item(row, kMessage);
    return code && message ? code->text() + ' ' + message->text() : QString();
}

void frmViewError::SetGrd() {
    const ErrorView view = ReadErrorView();
    const int current = grd_->currentRow();
    const QString former = FindingAt(current);
    longest_ = view.LongestMessage;
    heights_ = view.RowHeights;
    grd_->setRowCount(static_cast<int>(view.Rows.size()));
    for (int row = 0; const Finding& finding : view.Rows) {
        grd_->setItem(row, kLevel, Cell(finding.Level));
        grd_->setItem(row, kCode, Cell(finding.Code));
        grd_->setItem(row, kMessage, Cell(finding.Message));
        ++row;
    }
    SetHeights();
    // A refresh leaves the user at the finding that is being worked on.
    const bool same = !former.isEmpty() && FindingAt(current) == former;
    if (grd_->rowCount() > 0) grd_->setCurrentCell(same ? current : 0, kMessage);
    ShowCompared();
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, NoteColour(colours));
    lblNonFatal_->setPalette(colours);
    lblNonFatal_->setText(Q(view.Note));
    lblNonFatal_->setVisible(view.ErrorSeen && !view.Note.empty());
    checksAllow_ = view.CanBuildECR;
    FollowSubmit();
}

/// The messages of an import, and the findings of an earlier session, allow no build: only a
/// calculation of this one does.
void frmViewError::FollowSubmit() {
    cmdBuildECR_->setEnabled(checksAllow_ && submit_ && submit_->isEnabled());
}

void frmViewError::OpenFinding(int row) {
    const auto target = TargetOf(S(grd_->item(row, kMessage)->text()));
    if (!target || TheQtHost().InLongStep() || CommandAtWork()) return;
    Guarded([&] { GoToWorksheet("edit", target->Item, target->Line, target->Column); });
}

// --- The figures of a comparison -----------------------------------------------------------

namespace {

/// A cell as a link; its number leads back to it.
QString Link(const CellRef& cell, const std::string& text, std::vector<CellRef>& linked) {
    linked.push_back(cell);
    return QString("<a href=\"%1\">%2</a>").arg(linked.size() - 1).arg(Q(text).toHtmlEscaped());
}

/// "A, line 99, column 8 less A, line 8, column 8: 85", each cell a link.
QString SideHtml(const ComparedSide& side, std::vector<CellRef>& linked) {
    QString html;
    if (IsRun(side)) {
        html = Link(side.Cells.front().Cell, SideText(side), linked);
    } else {
        for (const SignedCell& cell : side.Cells) {
            if (!html.isEmpty()) html += cell.Sign < 0 ? " less " : " plus ";
            html += Link(cell.Cell, CellName(cell.Cell), linked);
        }
    }
    return html + ": <b>" + Q(Figure(side.Value)) + "</b>";
}

std::string SpokenSide(const ComparedSide& side) {
    return SideText(side) + ": " + Figure(side.Value);
}

}  // namespace

/// The figures are those of the CRF now, not those of the time of the check.
void frmViewError::ShowCompared() {
    compared_.clear();
    const int row = grd_->currentRow();
    const auto* const code = row < 0 ? nullptr : grd_->item(row, kCode);
    const auto* const message = row < 0 ? nullptr : grd_->item(row, kMessage);
    std::optional<Comparison> compared;
    try {
        if (code && message && CrfIsOpen())
            compared = ComparisonOf(S(code->text()), S(message->text()));
    } catch (const StoreError&) {
        // A worksheet that is not there has no figures.
    }
    lblCompared_->setVisible(compared.has_value());
    if (!compared) return;
    // The links count from the left.
    const QString left = SideHtml(compared->Left, compared_);
    const QString right = SideHtml(compared->Right, compared_);
    lblCompared_->setText(QString("%1<br>%2<br>Difference: <b>%3</b>")
                              .arg(left, right, Q(Figure(compared->Difference))));
    lblCompared_->setAccessibleName(Q(SpokenSide(compared->Left) + "; " +
                                      SpokenSide(compared->Right) + "; difference " +
                                      Figure(compared->Difference)));
}

void frmViewError::OpenCompared(const QString& link) {
    const auto at = static_cast<std::size_t>(link.toInt());
    if (at >= compared_.size() || TheQtHost().InLongStep() || CommandAtWork()) return;
    const CellRef cell = compared_[at];
    Guarded([&] { GoToCell(cell); });
}

int frmViewError::Selected() const { return grd_->currentRow(); }

void frmViewError::Select(int row) {
    grd_->setCurrentCell(row, kMessage);
    grd_->scrollToItem(grd_->item(row, kMessage));
}

void frmViewError::BuildECR() {
    UnloadForm(this);
    ShowCertification();
}

void ShowViewError(const std::string& caption) {
    auto* form = dynamic_cast<frmViewError*>(FindForm("frmViewError"));
    if (form) {
        form->setWindowTitle(Q(caption));
        form->SetGrd();
    } else {
        form = new frmViewError(caption);
    }
    ShowForm(form);
}

}  // namespace zolmara::ui
