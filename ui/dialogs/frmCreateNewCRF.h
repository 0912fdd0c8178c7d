#pragma once

#include <QWidget>

#include "worksheets/NewCrf.h"

class QLineEdit;
class QPushButton;

namespace zolmara::ui {

/// Asks for the identity of a new cost statement and makes its file.
class frmCreateNewCRF : public QWidget {
public:
    frmCreateNewCRF();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void MakeFields(const NewCrfFields& fields);
    NewCrfFields Fields() const;
    void ShowFields(const NewCrfFields& fields);
    void GoTo(NewCrfField field);
    void Create();
    void EnableButtons(bool enabled);

    QLineEdit* txtFormNum_ = nullptr;
    QLineEdit* txtProviderNum_ = nullptr;
    QLineEdit* txtFYStart_ = nullptr;
    QLineEdit* txtFYEnd_ = nullptr;
    QLineEdit* txtFacilityName_ = nullptr;
    QPushButton* cmdCreate_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    bool welcome_ = false;   ///< as it was before
    bool made_ = false;      ///< a CRF has been made
    bool checking_ = false;  ///< a box about a field stands open
};

}  // namespace zolmara::ui
