#pragma once

#include <QWidget>

#include "store/Dao.h"
#include "store/session/Backups.h"

class QComboBox;
class QTableView;

namespace zolmara::ui {

class ListingModel;

/// A backup to be looked at, table by table. Nothing in it can be changed.
class frmBackupView : public QWidget {
public:
    /// StoreError when it cannot be read.
    explicit frmBackupView(const Backup& backup);

private:
    void ShowTable();

    Database backup_;
    ListingModel* model_;
    QComboBox* cboTable_;
    QTableView* grd_;
};

}  // namespace zolmara::ui
