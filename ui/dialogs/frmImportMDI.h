#pragma once

#include <QWidget>
#include <functional>
#include <string>

class QStackedWidget;
class QTimer;

namespace zolmara::ui {

class frmImportCCMis;
class frmImportProgress;
class frmImportWkshts;

/// "CRF to CRF Import": hosts its steps one after the other. As long as it is open
/// gImportDB is.
class frmImportMDI : public QWidget {
public:
    frmImportMDI();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void ChooseWorksheets();
    void Import();
    bool MayClose();

    QStackedWidget* steps_;
    frmImportCCMis* lists_;
    frmImportWkshts* worksheets_;
    frmImportProgress* progress_;
    QTimer* tmrMDIClose_;
    bool running_ = false;
    bool closing_ = false;
};

/// Lets the user choose a file and shows the window on it.
void ShowImportCRF();

}  // namespace zolmara::ui
