#pragma once

#include <QString>
#include <QWidget>
#include <optional>

#include "worksheets/SoughtAmount.h"

class QLabel;
class QLineEdit;
class QTimer;

namespace zolmara::ui {

class frmWorksheet;

/// Finds a text or an amount in a worksheet's window.
class FindBar : public QWidget {
public:
    explicit FindBar(frmWorksheet& form);

    void Open();
    /// Goes to the next cell that holds the text, and on from the first behind the last. A large
    /// sheet is searched in slices: keys and clicks come in between, and whoever goes to another
    /// cell or changes the text meanwhile gives the search up.
    void Find(bool forward);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// A search on its way through the cells, which are counted row by row.
    struct Search {
        QString Text;
        SoughtAmount Amount;
        bool Forward = true;
        int Start = 0;
        int Cells = 0;
        int Step = 1;

        int At() const { return (Start + (Forward ? Step : Cells - Step)) % Cells; }
        bool Done() const { return Step > Cells; }
    };

    bool Holds(int row, int column, const Search& search) const;
    int CountOfCells() const;
    bool Slice();
    void GoOn();
    void Stop();

    frmWorksheet& form_;
    QLineEdit* txtFind_;
    QLabel* lblFound_;
    QTimer* tmrFind_;
    std::optional<Search> search_;
};

}  // namespace zolmara::ui
