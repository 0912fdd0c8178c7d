#include "ui/worksheets/BlockCopy.h"

#include <QApplication>
#include <QClipboard>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "ui/main/QtText.h"
#include "ui/worksheets/BlockText.h"
#include "ui/worksheets/SheetModel.h"

namespace zolmara::ui {
namespace {

/// Cells that are made into text before the windows take keys again.
constexpr int kCellsAtOnce = 20'000;

}  // namespace

// --- The block -----------------------------------------------------------------------------

BlockSource::BlockSource(const SheetModel& model, const BlockRange& range, std::vector<int> columns,
                         std::string heading)
    : form_(model.SharedForm()),
      range_(range),
      columns_(std::move(columns)),
      rows_(gDB.OpenRecordset(form_->RowSource, dbOpenSnapshot)),
      key_(rows_.FieldIndex(form_->Key)),
      next_(range.FirstRow),
      keyedRow_(model.KeyedRow()),
      text_(std::move(heading)) {
    for (const int column : columns_) {
        positions_.push_back(rows_.FieldIndex(model.Column(column).Field));
        if (keyedRow_ >= 0) keyed_.push_back(model.Value(keyedRow_, column));
    }
    // Another program may have taken rows away since they were shown.
    range_.LastRow = std::min(range_.LastRow, static_cast<int>(rows_.RecordCount()) - 1);
}

bool BlockSource::Done() const { return next_ > range_.LastRow; }

int BlockSource::Percent() const {
    const int rows = range_.LastRow - range_.FirstRow + 1;
    return rows <= 0 ? 100 : (next_ - range_.FirstRow) * 100 / rows;
}

const Variant& BlockSource::Value(std::size_t at) const {
    static const Variant null;
    if (next_ == keyedRow_) return keyed_[at];
    return positions_[at] < 0 ? null : rows_[positions_[at]];
}

void BlockSource::TakeRow() {
    rows_.SetBookmark(next_);
    const Currency line = key_ < 0 ? Currency() : CurOr(rows_[key_]);
    for (std::size_t at = 0; at < columns_.size(); ++at) {
        if (at > 0) text_ += '\t';
        const FormColumn& column = form_->Columns[static_cast<std::size_t>(columns_[at])];
        AppendCell(text_, PlainText(column, line, Value(at)));
    }
    text_ += '\n';
}

void BlockSource::Take(int cells) {
    const int width = std::max(1, static_cast<int>(columns_.size()));
    for (int rows = std::max(1, cells / width); rows > 0 && !Done(); --rows, ++next_) TakeRow();
}

// --- The copy at work ----------------------------------------------------------------------

namespace {

class CopyAtWork : public QObject {
public:
    CopyAtWork() : QObject(qApp) {
        slices_.callOnTimeout([this] { Slice(); });
        connect(QApplication::clipboard(), &QClipboard::dataChanged, this, [this] { End(); });
    }

    void Start(std::unique_ptr<BlockSource> block, QObject* window, std::function<void()> tell) {
        block_ = std::move(block);
        window_ = window;
        tell_ = std::move(tell);
        slices_.start(0);
        Tell();
    }
    bool IsOf(const QObject* window) const { return block_ && window_ == window; }
    int Percent() const { return block_->Percent(); }
    void End() {
        block_.reset();
        slices_.stop();
        Tell();
    }
    void Finish() {
        while (block_) Slice();
    }

private:
    void Slice() {
        try {
            block_->Take(kCellsAtOnce);
        } catch (const StoreError&) {
            // The file was closed without its windows.
            QApplication::beep();
            return End();
        }
        if (!block_->Done()) return Tell();
        const QString text = Q(block_->Text());
        End();
        QApplication::clipboard()->setText(text);
    }
    void Tell() const {
        if (window_ && tell_) tell_();
    }

    QTimer slices_;
    std::unique_ptr<BlockSource> block_;
    QPointer<QObject> window_;
    std::function<void()> tell_;
};

QPointer<CopyAtWork> work;

}  // namespace

void StartCopy(std::unique_ptr<BlockSource> block, QObject* window, std::function<void()> tell) {
    if (!work) work = new CopyAtWork;
    work->Start(std::move(block), window, std::move(tell));
}

std::optional<int> CopyPercent(const QObject* window) {
    return work && work->IsOf(window) ? std::optional(work->Percent()) : std::nullopt;
}

void FinishCopy() {
    if (work) work->Finish();
}

bool StopCopy(const QObject* window) {
    if (!work || !work->IsOf(window)) return false;
    work->End();
    return true;
}

}  // namespace zolmara::ui
