#pragma once

#include <QPointer>
#include <QWidget>
#include <string>
#include <vector>

#include "worksheets/CellDescription.h"

class QAction;
class QLabel;
class QPushButton;
class QTableWidget;

namespace zolmara::ui {

/// The findings of the last edit checks, or the messages of the last import.
class frmViewError : public QWidget {
public:
    explicit frmViewError(const std::string& caption);
    /// The menu may change while the window goes; by then there is no button to follow it.
    ~frmViewError() override { disconnect(following_); }

    /// Reads table Error afresh.
    void SetGrd();

    /// The row that is current, -1 without one; and another made current.
    int Selected() const;
    void Select(int row);

private:
    void MakeGrid();
    void MakeCompared();
    int Pixels(int twips) const;
    void TakeSize();
    void SetHeights();
    void OpenFinding(int row);
    void ShowCompared();
    void OpenCompared(const QString& link);
    void FollowSubmit();
    void BuildECR();

    QString FindingAt(int row) const;

    QTableWidget* grd_ = nullptr;
    QLabel* lblNonFatal_ = nullptr;
    QLabel* lblCompared_ = nullptr;  ///< the figures that the current finding's check compared
    std::vector<CellRef> compared_;  ///< the cells of its links
    QPushButton* cmdBuildECR_ = nullptr;
    QPointer<QAction> submit_;  ///< the main window's way to the build
    QMetaObject::Connection following_;
    bool checksAllow_ = false;
    std::vector<int> heights_;  ///< twips that the rows need at least
    int longest_ = 0;           ///< characters of the longest message
};

/// Shows the window under a caption; one that is open is read afresh.
void ShowViewError(const std::string& caption);

}  // namespace zolmara::ui
