#pragma once

// "Backups ...": the backups of the open CRF, each to be looked at and brought back.

#include <QWidget>
#include <string>
#include <vector>

#include "store/session/Backups.h"

class QLabel;
class QPushButton;
class QTableView;
class QTimer;

namespace zolmara::ui {

class ListingModel;

class frmBackups : public QWidget {
public:
    frmBackups();

private:
    void ReadBackups();
    void ReadNextFigures();
    const Backup* Chosen() const;
    void SetButtons();
    void Make();
    void View();
    void Restore();
    void Tell(const std::string& text);

    std::vector<Backup> backups_;
    std::size_t read_ = 0;  ///< backups whose figures are shown
    ListingModel* model_;
    QTableView* grd_;
    QLabel* lblPlace_;
    QLabel* lblDone_;
    QPushButton* cmdView_;
    QPushButton* cmdRestore_;
    QTimer* tmrFigures_;
};

/// Opens the window.
void ShowBackups();

}  // namespace zolmara::ui
