#pragma once

// A block too large to be put on the clipboard at once. Its cells are read as they stand when it is
// copied, and made into text in slices: keys and clicks come in between, and what is keyed or
// cleared meanwhile does not change what was copied.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "forms/WorksheetForm.h"
#include "store/Dao.h"

class QObject;

namespace zolmara::ui {

class SheetModel;

/// The rows of a block as they stood at one moment.
class BlockSource {
public:
    /// `columns` are those that are shown; `heading` goes ahead of the rows.
    BlockSource(const SheetModel& model, const BlockRange& range, std::vector<int> columns,
                std::string heading);

    /// Appends the text of some cells' rows.
    void Take(int cells);
    bool Done() const;
    int Percent() const;
    const std::string& Text() const { return text_; }

private:
    const Variant& Value(std::size_t at) const;
    void TakeRow();

    std::shared_ptr<const WorksheetForm> form_;
    BlockRange range_;
    std::vector<int> columns_;
    Recordset rows_;
    std::vector<int> positions_;  ///< of the columns in the recordset
    int key_;                     ///< and of the line
    int next_;
    int keyedRow_;
    std::vector<Variant> keyed_;  ///< its cells, by column
    std::string text_;
};

/// Puts a block on the clipboard when its text is made. It takes the place of a copy that is at
/// work, and ends when anything else comes to the clipboard first. `tell` is called after each
/// slice as long as the window is there.
void StartCopy(std::unique_ptr<BlockSource> block, QObject* window, std::function<void()> tell);
/// How far this window's copy is; none when none is at work.
std::optional<int> CopyPercent(const QObject* window);
/// Brings a copy that is at work to its end at once: the clipboard is asked for.
void FinishCopy();
/// Gives up a copy of this window; the clipboard keeps what it has. False without one.
bool StopCopy(const QObject* window);

}  // namespace zolmara::ui
