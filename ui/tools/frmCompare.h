#pragma once

// "Compare With ...": the open CRF beside another one, cell by cell.

#include <QWidget>
#include <string>
#include <vector>

#include "import/CompareCrfs.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QTableView;

namespace zolmara::ui {

class ListingModel;

class frmCompare : public QWidget {
public:
    /// With a file that must be another one than the open CRF.
    explicit frmCompare(std::string other);

    /// Compares what both files hold now.
    void Compare();

private:
    QWidget* MakeWishes();
    ComparisonWish Wish() const;
    void GoTo(int row);
    void Print();
    void Save();

    std::string other_;
    std::vector<CellDifference> found_;
    ListingModel* model_;
    QLabel* lblFiles_;
    QCheckBox* chkKeyed_;
    QLineEdit* txtOver_;
    QLineEdit* txtOverPercent_;
    QTableView* grd_;
    QLabel* lblCount_;
};

/// Asks for the other file and opens the window.
void ShowComparison();

}  // namespace zolmara::ui
