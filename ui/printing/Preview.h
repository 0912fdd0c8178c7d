#pragma once

// What has been printed, on the screen first: from there it goes to a printer of the system or
// into a PDF file.

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "ui/printing/PaintJobs.h"

class QComboBox;
class QLabel;
class QPrinter;
class QPushButton;
class QScrollArea;
class QSpinBox;

namespace zolmara::ui {

class PageView;

/// The pages of a command, one at a time. A page is laid out when it is looked at.
class frmPreview : public QDialog {
public:
    frmPreview(Document document, QPrinter& printer);

    /// Shows a page, from 0.
    void GoTo(std::size_t number);
    std::size_t Page() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPushButton* AddButton(const char* name, const QString& caption, const QString& help,
                           std::function<void()> action);
    QWidget* MakeBar();
    void MakeKeys();
    void Turn(int pages);
    void Scroll(int direction);
    void Zoom();
    void Print();
    void SaveAsPdf();
    /// Runs with a bar and a cancel; an error is told, and in the end what is done.
    void Work(const QString& text, const std::string& file, const std::string& done,
              const std::function<PaintResult(const PageProgress&)>& work);

    Document document_;
    QPrinter& printer_;
    PageView* view_ = nullptr;
    QScrollArea* area_ = nullptr;
    QSpinBox* txtPage_ = nullptr;
    QComboBox* cboZoom_ = nullptr;
    QPushButton* cmdPrevious_ = nullptr;
    QPushButton* cmdNext_ = nullptr;
};

void ShowPreview(const std::vector<PrintJob>& jobs, QPrinter& printer);

}  // namespace zolmara::ui
