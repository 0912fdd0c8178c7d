#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace zolmara::ui {

class frmWorksheet;

/// Finds a text or an amount in a worksheet's window.
class FindBar : public QWidget {
public:
    explicit FindBar(frmWorksheet& form);

    void Open();
    /// Goes to the next cell that holds the text, and on from the first behind the last.
    void Find(bool forward);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool Holds(int row, int column, const QString& text) const;

    frmWorksheet& form_;
    QLineEdit* txtFind_;
    QLabel* lblFound_;
};

}  // namespace zolmara::ui
