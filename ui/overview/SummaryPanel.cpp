#include "ui/overview/SummaryPanel.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <array>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "store/session/Signature.h"
#include "ui/main/Guard.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/WorksheetRoads.h"
#include "ui/overview/BarPicture.h"
#include "ui/overview/StatementNotes.h"
#include "worksheets/CellNames.h"
#include "worksheets/Explain.h"

namespace zolmara::ui {
namespace {

constexpr std::size_t kTopComponents = 10;

struct StateRow {
    const char* Name;
    const char* Caption;
};
constexpr std::array<StateRow, 4> kStates = {{{"lblSigned", "Signed:"},
                                              {"lblCalculated", "Calculated:"},
                                              {"lblChecked", "Edit checks:"},
                                              {"lblSince", "Keyed since:"}}};

/// A screen reader speaks the name of a label and not its text.
void SetSpoken(QLabel* label, const QString& what, const QString& text) {
    label->setText(text);
    label->setAccessibleName(what + " " + text);
}

QGroupBox* Group(const QString& title, QWidget* inside) {
    auto* group = new QGroupBox(title);
    auto* column = new QVBoxLayout(group);
    column->addWidget(inside);
    return group;
}

QString Known(const std::string& when) {
    return when.empty() ? QString("not in this session") : Q(when);
}

QString SinceText(const StatementNotes& notes) {
    if (notes.Calculated.empty()) return "not calculated in this session";
    if (notes.Keyed > 0)
        return QString("%1 entries").arg(notes.Keyed).replace("1 entries", "1 entry");
    return notes.Changed ? "the file was changed otherwise" : "nothing";
}

}  // namespace

SummaryPanel::SummaryPanel() {
    setObjectName("summaryPanel");
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    auto* page = new QWidget;
    grid_ = new QGridLayout(page);
    grid_->setContentsMargins(8, 0, 0, 0);
    picMoney_ = new BarPicture("picMoney", "The path of the money");
    picMoney_->OnChosen([this](int bar) { GoTo(money_[static_cast<std::size_t>(bar)]); });
    picComponents_ = new BarPicture("picComponents", "The components that bear most");
    picComponents_->OnChosen(
        [this](int bar) { GoTo(components_[static_cast<std::size_t>(bar)].Cell); });
    groups_ = {MakeState(), MakeNext(), MakeFigures(), Group("The path of the money", picMoney_),
               Group("The components that bear most", picComponents_)};
    Arrange(true);
    setWidget(page);
}

namespace {

/// Where a part stands: in two columns, and below each other.
struct PlaceInGrid {
    int Row;
    int Column;
    int Rows = 1;
};
constexpr std::array<PlaceInGrid, 5> kWide = {{{0, 0}, {0, 1}, {1, 0, 2}, {1, 1}, {2, 1}}};
constexpr std::array<PlaceInGrid, 5> kNarrow = {{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}}};

}  // namespace

void SummaryPanel::Arrange(bool wide) {
    if (wide == wide_) return;
    wide_ = wide;
    for (std::size_t i = 0; i < groups_.size(); ++i) {
        const PlaceInGrid& place = wide ? kWide[i] : kNarrow[i];
        grid_->addWidget(groups_[i], place.Row, place.Column, place.Rows, 1);
    }
    grid_->setColumnStretch(0, 5);
    grid_->setColumnStretch(1, wide ? 4 : 0);
    grid_->setRowStretch(wide ? 3 : 5, 1);
    grid_->setRowStretch(wide ? 5 : 3, 0);
}

/// Two columns, where there is room for them.
void SummaryPanel::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    Arrange(viewport()->width() >= fontMetrics().averageCharWidth() * 78);
}

// --- Its parts -----------------------------------------------------------------------------

QWidget* SummaryPanel::MakeState() {
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    form->setContentsMargins(0, 0, 0, 0);
    lblWho_ = new QLabel;
    lblWho_->setObjectName("lblWho");
    lblWho_->setWordWrap(true);
    QFont bold = lblWho_->font();
    bold.setBold(true);
    lblWho_->setFont(bold);
    form->addRow(lblWho_);
    for (const StateRow& state : kStates) {
        auto* label = new QLabel;
        label->setObjectName(state.Name);
        label->setWordWrap(true);
        form->addRow(state.Caption, label);
        states_.push_back(label);
    }
    return Group("This statement", page);
}

QWidget* SummaryPanel::MakeNext() {
    lstNext_ = new QListWidget;
    lstNext_->setObjectName("lstNext");
    lstNext_->setAccessibleName("What to do next");
    lstNext_->setToolTip("Return or a double click does it.");
    lstNext_->setWordWrap(true);
    lstNext_->setMinimumHeight(fontMetrics().lineSpacing() * 4);
    lstNext_->setMaximumHeight(fontMetrics().lineSpacing() * 8);
    connect(lstNext_, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
        const auto at = static_cast<std::size_t>(lstNext_->row(item));
        if (at >= steps_.size() || TheQtHost().InLongStep()) return;
        const std::function<void()> run = steps_[at].Run;
        run();
    });
    return Group("What to do next", lstNext_);
}

QWidget* SummaryPanel::MakeFigures() {
    grdFigures_ = new QTableWidget(0, 3);
    grdFigures_->setObjectName("grdFigures");
    grdFigures_->setAccessibleName("Figures of the statement");
    grdFigures_->setToolTip("Return or a double click goes to the cell.");
    grdFigures_->setHorizontalHeaderLabels({"Figure", "Amount", "Cell"});
    grdFigures_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grdFigures_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grdFigures_->setSelectionMode(QAbstractItemView::SingleSelection);
    grdFigures_->setTabKeyNavigation(false);
    grdFigures_->setWordWrap(false);
    grdFigures_->verticalHeader()->hide();
    grdFigures_->verticalHeader()->setMinimumSectionSize(0);
    grdFigures_->verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() * 3 / 2);
    // Where there is no room for all, the cell is cut: the figure leads to it all the same.
    QHeaderView* const head = grdFigures_->horizontalHeader();
    head->setSectionResizeMode(QHeaderView::ResizeToContents);
    head->setSectionResizeMode(2, QHeaderView::Stretch);
    connect(grdFigures_, &QTableWidget::itemActivated, this, [this](const QTableWidgetItem* item) {
        GoTo(figures_[static_cast<std::size_t>(item->row())].Cell);
    });
    return Group("Figures", grdFigures_);
}

void SummaryPanel::GoTo(const CellRef& cell) {
    if (TheQtHost().InLongStep()) return;
    const CellRef wanted = cell;
    Guarded([&] { GoToCell(wanted); });
}

// --- Showing -------------------------------------------------------------------------------

void SummaryPanel::Refresh() {
    try {
        StoreCells cells;
        figures_ = SummaryFigures(cells);
        components_ = LargestComponents(kTopComponents);
        ShowState();
        ShowNext();
        ShowFigures();
        ShowMoney();
        ShowComponents();
    } catch (const StoreError&) {
        // A file that cannot be read shows what it had; the next command tells why.
    }
}

void SummaryPanel::Clear() {
    lstNext_->clear();
    grdFigures_->setRowCount(0);
    picMoney_->Show({});
    picComponents_->Show({});
    steps_.clear();
}

void SummaryPanel::ShowState() {
    const StatementNotes notes = TheNotes();
    lblWho_->setText(Q(gProviderName) + " (" + Q(gProviderNumber) + "), " +
                     Q(Format(gFYStart, "m/d/yyyy")) + " to " + Q(Format(gFYEnd, "m/d/yyyy")));
    lblWho_->setAccessibleName(lblWho_->text());
    const std::string signature = SignatureText();
    const std::array<QString, kStates.size()> texts = {
        signature.empty() ? QString("no") : Q(signature), Known(notes.Calculated),
        Known(notes.Checked), SinceText(notes)};
    for (std::size_t i = 0; i < kStates.size(); ++i)
        SetSpoken(states_[i], kStates[i].Caption, texts[i]);
}

void SummaryPanel::ShowNext() {
    steps_ = ReadNextSteps();
    const int row = lstNext_->currentRow();
    lstNext_->clear();
    for (const NextStep& step : steps_) lstNext_->addItem(step.Text);
    lstNext_->setCurrentRow(std::clamp(row, 0, std::max(0, lstNext_->count() - 1)));
}

void SummaryPanel::ShowFigures() {
    grdFigures_->setRowCount(static_cast<int>(figures_.size()));
    for (int row = 0; const SummaryFigure& figure : figures_) {
        const QString amount =
            figure.Value.IsNumber() ? Q(Figure(figure.Value.Number())) : QString();
        const QString texts[] = {Q(figure.Name), amount, Q(CellName(figure.Cell))};
        for (int column = 0; column < 3; ++column) {
            auto* item = new QTableWidgetItem(texts[column]);
            if (column == 1) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            item->setToolTip(texts[0] + ": " + texts[1] + "  (" + texts[2] + ")");
            grdFigures_->setItem(row, column, item);
        }
        ++row;
    }
    const int rows = grdFigures_->verticalHeader()->defaultSectionSize() * grdFigures_->rowCount();
    grdFigures_->setMinimumHeight(
        std::min(rows + 2 * grdFigures_->horizontalHeader()->sizeHint().height(),
                 fontMetrics().lineSpacing() * 24));
}

/// From the books to the net, and how the net is given out.
void SummaryPanel::ShowMoney() {
    std::vector<Bar> bars;
    money_.clear();
    StoreCells cells;
    for (const MoneyStep& step : MoneyPath(cells)) {
        static constexpr BarFill kFills[] = {BarFill::Plain, BarFill::Striped, BarFill::Dotted};
        bars.push_back({.Name = Q(step.Name),
                        .From = step.From,
                        .To = step.From + step.Amount,
                        .Amount = step.Amount,
                        .Fill = kFills[static_cast<std::size_t>(step.Kind)]});
        money_.push_back(step.Cell);
    }
    picMoney_->Show(std::move(bars));
}

void SummaryPanel::ShowComponents() {
    std::vector<Bar> bars;
    for (const ComponentCost& component : components_)
        bars.push_back(
            {.Name = Q(component.Name), .From = 0, .To = component.Cost, .Amount = component.Cost});
    picComponents_->Show(std::move(bars));
}

}  // namespace zolmara::ui
