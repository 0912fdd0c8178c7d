#pragma once

// The search through the whole statement.

#include <QAbstractTableModel>
#include <QWidget>
#include <map>
#include <string>
#include <vector>

#include "worksheets/FindCells.h"

class QLabel;
class QLineEdit;
class QTimer;
class QTreeView;

namespace zolmara::ui {

/// The cells that were found; their texts are made when they are looked at.
class FoundModel : public QAbstractTableModel {
public:
    enum Column { kCell, kTitle, kValue, kColumns };

    void Show(std::vector<FoundCell> found);
    const std::vector<FoundCell>& Found() const { return found_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    QString TitleOf(const CellRef& cell) const;

    std::vector<FoundCell> found_;
    mutable std::map<std::string, std::map<std::string, std::string>> titles_;
};

class SearchWindow : public QWidget {
public:
    SearchWindow();

    /// Ready for another text, with the last one selected.
    void Start();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeList();
    void Search();
    void GoTo();
    void Refresh();

    FoundModel model_;
    QLineEdit* txtSearch_ = nullptr;
    QLabel* lblCount_ = nullptr;
    QTreeView* lstFound_ = nullptr;
    QTimer* tmrSearch_ = nullptr;
};

/// Shows the window, in front.
void ShowSearch();

}  // namespace zolmara::ui
