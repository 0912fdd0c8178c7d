#pragma once

// The list of all worksheets at the left of the main window.

#include <QWidget>
#include <string>
#include <vector>

#include "ui/overview/SheetList.h"

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace zolmara::ui {

class Navigator : public QWidget {
public:
    Navigator();

    /// Reads the worksheets afresh; the current one stays.
    void Refresh();
    void Clear();

    /// The worksheet that is current; empty without one.
    std::string Current() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeTree();
    void MakeMenu();
    void ShowRows();
    void Filter();
    void Open(const std::string& mode);
    void PrintSheet();
    void Export();
    void Explain();
    void Rebuild();

    QLineEdit* txtFilter_ = nullptr;
    QTreeWidget* treSheets_ = nullptr;
    std::vector<SheetRow> sheets_;
};

}  // namespace zolmara::ui
