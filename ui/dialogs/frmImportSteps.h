#pragma once

// The steps of "CRF to CRF Import", one in sight at a time.

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "import/ImportWorksheets.h"

class QLabel;
class QListWidget;
class QProgressBar;
class QTableWidget;

namespace zolmara::ui {

/// The cost centers of both files side by side. The way on is open where they are the same.
class frmImportCCMis : public QWidget {
public:
    explicit frmImportCCMis(std::function<void()> next);

private:
    QTableWidget* MakeGrid();
    void FillGrid();

    QTableWidget* grd_;
    QLabel* lblWarning_;
    QWidget* mnuNext_;
};

/// The choice of worksheets.
class frmImportWkshts : public QWidget {
public:
    explicit frmImportWkshts(std::function<void()> next);

    /// What is chosen, in the order of the list.
    std::vector<ImportEntry> Chosen() const;
    /// Says that nothing is chosen, and goes to the list.
    void AskForChoice();

private:
    void SetAll(bool chosen);

    std::vector<ImportEntry> entries_;
    QListWidget* lbWorksheets_;
};

/// How far the copying is, and what came of it.
class frmImportProgress : public QWidget {
public:
    explicit frmImportProgress(std::function<void()> back);

    void Begin();
    void Show(const std::string& text, double part);
    /// The copying of so many worksheets is over, and these items could not be filled.
    void Finish(std::size_t chosen, const std::vector<std::string>& failed);
    /// It ended early, and the file is as it was.
    void Fail();

private:
    QLabel* lblProgress_;
    QProgressBar* prgImport_;
    QListWidget* lbMessages_;
    QWidget* cmdBack_;
};

}  // namespace zolmara::ui
