#include "ui/main/Desktop.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QUrl>
#include <array>

#include "core/Dialogs.h"
#include "store/session/Session.h"
#include "ui/dialogs/FileDialogs.h"
#include "ui/dialogs/RemovableDrives.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"
#include "ui/main/SingleCopy.h"
#include "ui/printing/Preview.h"

namespace zolmara::ui {
namespace {

struct BoxButton {
    QMessageBox::StandardButton Button;
    int Answer;
};

constexpr BoxButton kOkButton{QMessageBox::Ok, kOk};
constexpr BoxButton kCancelButton{QMessageBox::Cancel, kCancel};
constexpr BoxButton kYesButton{QMessageBox::Yes, kYes};
constexpr BoxButton kNoButton{QMessageBox::No, kNo};

std::vector<BoxButton> ButtonsFor(int style) {
    switch (ButtonsOf(style)) {
        case kOkCancel:
            return {kOkButton, kCancelButton};
        case kYesNoCancel:
            return {kYesButton, kNoButton, kCancelButton};
        case kYesNo:
            return {kYesButton, kNoButton};
        default:
            return {kOkButton};
    }
}

QMessageBox::Icon IconFor(int style) {
    switch (IconOf(style)) {
        case kCritical:
            return QMessageBox::Critical;
        case kQuestion:
            return QMessageBox::Question;
        case kExclamation:
            return QMessageBox::Warning;
        case kInformation:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

/// An hourglass is no pointer for a dialog.
class ArrowPointer {
public:
    ArrowPointer() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~ArrowPointer() { QApplication::restoreOverrideCursor(); }
    ArrowPointer(const ArrowPointer&) = delete;
    ArrowPointer& operator=(const ArrowPointer&) = delete;
};

constexpr qsizetype kMostLines = 16;

/// A text of many lines would make the box higher than the screen: the first ones stand in it, and
/// all of them behind its button for details.
void SetText(QMessageBox& box, const QString& text) {
    const QStringList lines = text.split('\n');
    if (lines.size() <= kMostLines) return box.setText(text);
    box.setText(lines.first(kMostLines).join('\n') +
                QString("\n... and %1 more lines, in the details.").arg(lines.size() - kMostLines));
    box.setDetailedText(text);
}

int ShowBox(const std::string& text, int style, const std::string& title) {
    const ArrowPointer pointer;
    QMessageBox box(DialogOwner());
    box.setObjectName("MsgBox");
    box.setIcon(IconFor(style));
    box.setWindowTitle(Q(title.empty() ? std::string(kProductName) : title));
    box.setTextFormat(Qt::PlainText);
    SetText(box, Lines(text));
    for (const BoxButton& button : ButtonsFor(style)) {
        box.addButton(button.Button);
        if (button.Answer == DefaultAnswer(style)) box.setDefaultButton(button.Button);
    }
    const int chosen = box.exec();
    for (const BoxButton& button : ButtonsFor(style))
        if (button.Button == chosen) return button.Answer;
    return kCancel;
}

void ShowPrinterDialog(QPrinter& printer, const std::string& title) {
    const ArrowPointer pointer;
    QPrintDialog dialog(&printer, DialogOwner());
    dialog.setWindowTitle(Q(title));
    dialog.exec();
}

bool AskToPrint(QPrinter& printer, int pages) {
    const ArrowPointer pointer;
    QPrintDialog dialog(&printer, DialogOwner());
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setMinMax(1, pages);
    return dialog.exec() == QDialog::Accepted;
}

std::optional<std::string> ShowFileDialog(const FileDialog& dialog) {
    const ArrowPointer pointer;
    return ChooseFileFor(dialog);
}

void OpenByDesktop(const std::string& path) {
    QDesktopServices::openUrl(QUrl::fromLocalFile(Q(path)));
}

}  // namespace

Desktop RealDesktop() {
    return {.MsgBox = ShowBox,
            .ChooseFile = ShowFileDialog,
            .SetUpPrinter = ShowPrinterDialog,
            .AskToPrint = AskToPrint,
            .Print = ShowPreview,
            .OpenDocument = OpenByDesktop,
            .RemovableDrives = GetRemovableDrives,
            .AnotherCopyRuns = AnotherCopyRuns,
            .EndProgram = [] { QCoreApplication::exit(0); }};
}

Desktop& TheDesktop() {
    static Desktop desktop = RealDesktop();
    return desktop;
}

}  // namespace zolmara::ui
