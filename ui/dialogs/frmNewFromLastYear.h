#pragma once

#include <QWidget>

#include "worksheets/NewCrf.h"

class QLineEdit;
class QListWidget;

namespace zolmara::ui {

/// Asks for the period of the new file and for the worksheets to take along, and makes it. Last
/// year's file is gImportDB as long as the window lives.
class frmNewFromLastYear : public QWidget {
public:
    frmNewFromLastYear();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void MakeFields();
    void MakeList();
    std::vector<std::string> TakeAlong() const;
    void ShowFields();
    void GoTo(NewCrfField field);
    void Create();
    void Made();

    NewCrfFields fields_;
    QLineEdit* txtFYStart_ = nullptr;
    QLineEdit* txtFYEnd_ = nullptr;
    QListWidget* lbWorksheets_ = nullptr;
};

/// Lets the user choose last year's file, closes the one that is open, and shows the window.
void ShowNewFromLastYear();

}  // namespace zolmara::ui
