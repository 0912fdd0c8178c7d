#pragma once

#include <QWidget>

class QComboBox;
class QPushButton;

namespace zolmara::ui {

/// Offers to make a worksheet anew.
class frmReBuild_A_Worksheet : public QWidget {
public:
    frmReBuild_A_Worksheet();

private:
    void Execute();

    QComboBox* cboReBuild_;
    QPushButton* cmdExecute_;
};

}  // namespace zolmara::ui
