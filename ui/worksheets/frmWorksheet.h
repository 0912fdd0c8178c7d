#pragma once

// The window of any worksheet, for editing or viewing, as its description in forms/ says.

#include <QWidget>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ui/worksheets/CellActs.h"
#include "ui/worksheets/SheetModel.h"
#include "worksheets/CellDescription.h"

class QLabel;
class QPushButton;
class QTimer;

namespace zolmara::ui {

enum class Direction;
class FindBar;
class SheetView;

class frmWorksheet : public QWidget {
public:
    frmWorksheet();
    ~frmWorksheet() override;

    /// Sets the caption, shows the rows and sets up the buttons.
    void FormSetup(WorksheetForm form);
    /// Shows the data afresh: columns, rows, headings, buttons. What is being keyed, the current
    /// cell, the selection and the place in the sheet stay. An error is passed by.
    void SetGrd();

    const WorksheetForm& Form() const { return model_.Form(); }
    const SheetModel& Model() const { return model_; }
    SheetView& Grid() { return *grd_; }

    /// Takes what is being typed and stores the row. False when either was refused; a box has
    /// told, and the row stays keyed.
    bool CommitGrid();
    /// The same as the window is left for another. What was refused then holds the window once:
    /// the next time it is tried again without a word, and the answer is true.
    bool MayBeLeft();
    /// True where something keyed is not stored yet.
    bool HasOpenRow() const;

    /// Makes a line, and a field of it, current.
    void GoToLine(Currency line, const std::string& field = "");
    /// The cell that is current; none without a row.
    std::optional<CellRef> CurrentCell() const;
    void Zoom(double zoom);
    /// Takes back what has been keyed and not been stored.
    void GiveUp();

    // --- Commands of keys and the context menu
    void Copy(bool withHeadings);
    void Paste();
    void FillDownSelection();
    void ClearSelection();
    void ShowFind();
    void Explain(Direction direction);
    void OpenList();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void MakeActs();
    void MakeCommands();
    void MakeButtons();
    void ShowButtonStates();
    void PressButton(const std::string& name);
    void RefreshData();
    /// Where the cursor stands, to come back to it when the rows were read anew.
    struct Place {
        std::optional<Currency> Line;
        std::string Field;
        int Row = -1;
        std::int64_t Mark = 0;
        std::vector<int> Widths;
    };
    Place CurrentPlace() const;
    void BackTo(const Place& place);
    void TellLost(const RowEntry& lost);

    bool BeforeEdit(const QModelIndex& cell);
    bool KeyEntry(const QModelIndex& cell, const QString& text);
    void ShowList(const QModelIndex& cell, const QPoint& place);
    void Move(Step step);
    void StayAtEnd(Step step);
    void RowChanged();
    void CurrentChanged();
    void ShowStatus();
    QString SumsText();
    QString CodeText() const;
    QString HintText() const;
    void AddUp();
    BlockRange Selected() const;
    BlockRange AheadOfRows() const;
    std::vector<int> ShownColumns(const BlockRange& range) const;
    void AfterBlock(const BlockResult& result, const QString& what);
    std::optional<Currency> CurrentLine() const;
    std::vector<Currency> SelectedLines() const;
    bool MayClose();
    void Left();

    void Recalculate();
    void OpenOther(const std::string& mode);
    void AddLine();
    void DeleteLines();

    /// The sum of a block that is too large to be added up at once.
    struct BigSum {
        BlockRange Range;
        int NextRow = 0;
        BlockSums Sums;
        bool Done() const { return NextRow > Range.LastRow; }
    };

    SheetModel model_;
    CellActs acts_;
    std::optional<BigSum> bigSum_;
    SheetView* grd_ = nullptr;
    QWidget* picButtons_ = nullptr;
    QLabel* lblStatus_ = nullptr;
    FindBar* find_ = nullptr;
    QTimer* tmrStatus_ = nullptr;
    QTimer* tmrSum_ = nullptr;
    std::map<std::string, QPushButton*> buttons_;
    bool committing_ = false;
    bool keying_ = false;
    bool refused_ = false;
    bool wasReset_ = false;
    bool told_ = false;   ///< what is keyed was refused when the window was left
    bool atEnd_ = false;  ///< Enter was pressed on the last cell
};

/// The open worksheet windows, first to last.
std::vector<frmWorksheet*> WorksheetWindows();
/// The open one that was active last; none without one.
frmWorksheet* LastWorksheet();

}  // namespace zolmara::ui
