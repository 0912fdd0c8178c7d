#include "ui/printing/Preview.h"

#include <fmt/format.h>

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <filesystem>

#include "core/Globals.h"
#include "store/PlainWords.h"
#include "store/session/Session.h"
#include "ui/main/Desktop.h"
#include "ui/main/Done.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"
#include "ui/printing/PageView.h"
#include "ui/printing/SavePdf.h"

namespace zolmara::ui {
namespace {

constexpr double kPointsPerInch = 72;
constexpr int kFrame = 24;  ///< pixels around a page
constexpr int kBarSteps = 100;
constexpr int kFitWidth = 0;
constexpr int kFitPage = -1;

struct ZoomEntry {
    const char* Caption;
    int Percent;
};
constexpr std::array<ZoomEntry, 7> kZooms = {{{"Page width", kFitWidth},
                                              {"Whole page", kFitPage},
                                              {"75 %", 75},
                                              {"100 %", 100},
                                              {"125 %", 125},
                                              {"150 %", 150},
                                              {"200 %", 200}}};

void TellError(const std::string& file, const std::string& error) {
    TheDesktop().MsgBox(
        fmt::format("The following error occurred during print of document:\r\n{}\r\n{}", file,
                    error),
        kExclamation, "Printing Error");
}

FileDialog PdfDialog() {
    FileDialog dialog;
    dialog.Save = true;
    dialog.Title = "Save As PDF";
    const std::string folder = gCRFDir.empty() ? "." : gCRFDir;
    const std::string name = gProviderNumber.empty() ? "print" : gProviderNumber;
    dialog.FileName = (std::filesystem::path(folder) / (name + ".pdf")).string();
    dialog.DefaultExt = ".pdf";
    dialog.Filter = "PDF files (*.pdf)|*.pdf";
    return dialog;
}

}  // namespace

frmPreview::frmPreview(Document document, QPrinter& printer)
    : QDialog(DialogOwner()), document_(std::move(document)), printer_(printer) {
    setObjectName("frmPreview");
    setWindowTitle("Print Preview");
    view_ = new PageView(document_);
    view_->setObjectName("picPage");
    area_ = new QScrollArea;
    area_->setObjectName("areaPage");
    area_->setAccessibleName("Page");
    area_->setWidget(view_);
    area_->setAlignment(Qt::AlignCenter);
    area_->setBackgroundRole(QPalette::Mid);
    // Its coming and going would change the room that the page is to fit.
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeBar());
    column->addWidget(area_, 1);
    MakeKeys();
    FitScreen(this, QSize(1000, 760));
    GoTo(0);
    area_->viewport()->installEventFilter(this);
    area_->setFocus();
}

QPushButton* frmPreview::AddButton(const char* name, const QString& caption, const QString& help,
                                   std::function<void()> action) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAccessibleName(help);
    button->setToolTip(help);
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this, std::move(action));
    return button;
}

QWidget* frmPreview::MakeBar() {
    txtPage_ = new QSpinBox;
    txtPage_->setObjectName("txtPage");
    txtPage_->setAccessibleName("Page number");
    txtPage_->setRange(1, static_cast<int>(document_.Pages()));
    connect(txtPage_, &QSpinBox::valueChanged, this,
            [this](int page) { GoTo(static_cast<std::size_t>(page - 1)); });
    cboZoom_ = new QComboBox;
    cboZoom_->setObjectName("cboZoom");
    cboZoom_->setAccessibleName("Size of the page");
    for (const ZoomEntry& entry : kZooms) cboZoom_->addItem(entry.Caption, entry.Percent);
    connect(cboZoom_, &QComboBox::currentIndexChanged, this, [this] { Zoom(); });
    cmdPrevious_ = AddButton("cmdPrevious", "<", "Previous page", [this] { Turn(-1); });
    cmdNext_ = AddButton("cmdNext", ">", "Next page", [this] { Turn(1); });
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(AddButton("cmdPrint", "&Print ...", "Print", [this] { Print(); }));
    row->addWidget(AddButton("cmdPDF", "Save as P&DF ...", "Save as PDF", [this] { SaveAsPdf(); }));
    row->addStretch(1);
    row->addWidget(cmdPrevious_);
    row->addWidget(txtPage_);
    row->addWidget(new QLabel(QString("of %1").arg(document_.Pages())));
    row->addWidget(cmdNext_);
    row->addWidget(cboZoom_);
    row->addStretch(1);
    row->addWidget(AddButton("cmdClose", "&Close", "Close", [this] { reject(); }));
    return bar;
}

void frmPreview::MakeKeys() {
    const auto key = [this](const QKeySequence& keys, std::function<void()> action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, std::move(action));
    };
    key(Qt::Key_PageDown, [this] { Scroll(1); });
    key(Qt::Key_PageUp, [this] { Scroll(-1); });
    key(QKeySequence("Ctrl+Home"), [this] { GoTo(0); });
    key(QKeySequence("Ctrl+End"), [this] { GoTo(document_.Pages() - 1); });
    key(QKeySequence::Print, [this] { Print(); });
}

std::size_t frmPreview::Page() const { return view_->Page(); }

void frmPreview::Turn(int pages) {
    const auto last = static_cast<int>(document_.Pages()) - 1;
    GoTo(static_cast<std::size_t>(std::clamp(static_cast<int>(Page()) + pages, 0, last)));
}

/// A screen down or up; at the end of the page the next one.
void frmPreview::Scroll(int direction) {
    QScrollBar* const bar = area_->verticalScrollBar();
    const int end = direction > 0 ? bar->maximum() : bar->minimum();
    if (bar->value() != end) return bar->setValue(bar->value() + direction * bar->pageStep());
    const std::size_t before = Page();
    Turn(direction);
    if (Page() != before) bar->setValue(direction > 0 ? bar->minimum() : bar->maximum());
}

void frmPreview::GoTo(std::size_t number) {
    const double inch = logicalDpiX() / kPointsPerInch;
    const QSizeF paper = PaperSize(document_.OrientationOf(number));
    const QSizeF room = area_->viewport()->size() - QSize(kFrame, kFrame);
    const double across = room.width() / paper.width();
    const int zoom = cboZoom_->currentData().toInt();
    const double scale = zoom == kFitWidth  ? across
                         : zoom == kFitPage ? std::min(across, room.height() / paper.height())
                                            : inch * zoom / 100;
    view_->Show(number, std::max(scale, 0.1));
    const QSignalBlocker quiet(txtPage_);
    txtPage_->setValue(static_cast<int>(number) + 1);
    cmdPrevious_->setEnabled(number > 0);
    cmdNext_->setEnabled(number + 1 < document_.Pages());
}

void frmPreview::Zoom() { GoTo(Page()); }

/// A page that fits the window follows its size.
bool frmPreview::eventFilter(QObject* watched, QEvent* event) {
    if (watched == area_->viewport() && event->type() == QEvent::Resize) Zoom();
    return QDialog::eventFilter(watched, event);
}

// --- Out of the preview --------------------------------------------------------------------

void frmPreview::Work(const QString& text, const std::string& file, const std::string& done,
                      const std::function<PaintResult(const PageProgress&)>& work) {
    QProgressDialog bar(text, "Cancel", 0, 1, this);
    bar.setObjectName("frmProgress");
    bar.setWindowTitle(windowTitle());
    bar.setWindowModality(Qt::WindowModal);
    try {
        // Each step of the bar draws the window: a hundred are enough to see it go.
        bar.setMaximum(kBarSteps + 1);
        const PaintResult result = work([&bar](std::size_t page, std::size_t all) {
            const auto step = static_cast<int>(page * kBarSteps / std::max<std::size_t>(all, 1));
            if (step != bar.value()) bar.setValue(step);
            return !bar.wasCanceled();
        });
        bar.reset();
        if (result == PaintResult::Failed) TellError(file, "The printer takes no pages.");
        if (result == PaintResult::Done) TellDone(done);
    } catch (const std::exception& error) {
        bar.reset();
        TellError(file, PlainWords(error));
    }
}

/// What the dialog sends into a file goes the way of every other file.
void frmPreview::Print() {
    if (!TheDesktop().AskToPrint(printer_, static_cast<int>(document_.Pages()))) return;
    const std::string file = S(printer_.outputFileName());
    const bool pdf = printer_.outputFormat() == QPrinter::PdfFormat && !file.empty();
    const std::string done = pdf ? "Saved " + FileName(file) : std::string("Sent to the printer");
    Work("Printing", pdf ? file : S(printer_.docName()), done, [&](const PageProgress& progress) {
        const PageRange range = RangeOf(printer_, document_.Pages());
        return pdf ? SavePdf(document_, range, file, progress)
                   : PaintJobs(document_, range, printer_, progress);
    });
}

void frmPreview::SaveAsPdf() {
    const std::optional<std::string> path = TheDesktop().ChooseFile(PdfDialog());
    if (!path || path->empty()) return;
    Work("Writing the PDF file", *path, "Saved " + FileName(*path),
         [&](const PageProgress& progress) {
             return SavePdf(document_, {0, document_.Pages()}, *path, progress);
         });
}

void ShowPreview(const std::vector<PrintJob>& jobs, QPrinter& printer) {
    Document document(jobs);
    if (document.Pages() == 0) return;
    printer.setPageSize(QPageSize(QPageSize::Letter));
    frmPreview preview(std::move(document), printer);
    preview.exec();
}

}  // namespace zolmara::ui
