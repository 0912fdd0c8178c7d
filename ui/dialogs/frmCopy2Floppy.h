#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "ui/main/Desktop.h"

class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace zolmara::ui {

/// Offers to copy the submission files to a removable drive.
class frmCopy2Floppy : public QWidget {
public:
    frmCopy2Floppy();

    /// The path of the electronic report; its folder is told in tbLocation.
    void SetFile(const std::string& path);

private:
    void MakeDrives();
    void SayThereAreNone();
    void Process();

    std::string path_;
    std::vector<Drive> drives_;
    std::vector<QRadioButton*> OptDrive_;
    QGroupBox* frmDrive_ = nullptr;
    QLabel* lblBuilt_ = nullptr;  ///< which files there are, and what their seal is worth
    QLabel* tbCopy_ = nullptr;
    QLabel* tbLocation_ = nullptr;
    QPushButton* cmdProcess_ = nullptr;
};

/// Shows the window for the report that has been built.
void ShowCopyWindow(const std::string& ecrPath);

}  // namespace zolmara::ui
