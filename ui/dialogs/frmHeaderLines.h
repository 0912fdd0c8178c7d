#pragma once

#include <QWidget>
#include <string>
#include <vector>

class QTableWidget;

namespace zolmara::ui {

/// The editor of the custom lines at the head of every printed page.
class frmHeaderLines : public QWidget {
public:
    frmHeaderLines();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void MakeGrid();
    void ReadLines();
    std::vector<std::string> Texts() const;
    void CommitField();
    void Update();

    std::vector<std::string> stored_;  ///< the texts as the CRF has them

    QTableWidget* grdHeaderLines_ = nullptr;
};

}  // namespace zolmara::ui
