#pragma once

// What a file of keyed cells could not take: cells that were keyed and have no place in an import.

#include <QWidget>
#include <vector>

#include "spreadsheet/KeyedCells.h"

namespace zolmara::ui {

class frmCellsLeft : public QWidget {
public:
    explicit frmCellsLeft(std::vector<LeftCell> cells);

private:
    void GoTo(int row);

    std::vector<LeftCell> cells_;
};

void ShowCellsLeft(std::vector<LeftCell> cells);

}  // namespace zolmara::ui
