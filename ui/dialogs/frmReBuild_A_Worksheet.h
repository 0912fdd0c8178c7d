#pragma once

#include <QWidget>
#include <string>

class QComboBox;
class QPushButton;

namespace zolmara::ui {

/// Offers to make a worksheet anew.
class frmReBuild_A_Worksheet : public QWidget {
public:
    /// With a worksheet, that one is chosen.
    explicit frmReBuild_A_Worksheet(const std::string& item = "");

private:
    void Execute();

    QComboBox* cboReBuild_;
    QPushButton* cmdExecute_;
};

}  // namespace zolmara::ui
