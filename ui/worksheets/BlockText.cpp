#include "ui/worksheets/BlockText.h"

namespace zolmara::ui {
namespace {

class BlockReader {
public:
    explicit BlockReader(const QString& text) : text_(text) {}

    std::vector<QStringList> Read() {
        for (at_ = 0; at_ < text_.size(); ++at_) Take(text_[at_]);
        if (!row_.isEmpty() || !cell_.isEmpty() || wasQuoted_) EndRow();
        return rows_;
    }

private:
    void Take(QChar c) {
        if (quoted_) return TakeQuoted(c);
        if (c == '"' && cell_.isEmpty() && !wasQuoted_)
            quoted_ = wasQuoted_ = true;
        else if (c == '\t')
            EndCell();
        else if (c == '\n')
            EndRow();
        else
            cell_ += c;
    }

    void TakeQuoted(QChar c) {
        if (c != '"') {
            cell_ += c;
        } else if (at_ + 1 < text_.size() && text_[at_ + 1] == '"') {
            cell_ += c;
            ++at_;
        } else {
            quoted_ = false;
        }
    }

    void EndCell() {
        row_ << cell_;
        cell_.clear();
        wasQuoted_ = false;
    }

    void EndRow() {
        EndCell();
        rows_.push_back(row_);
        row_.clear();
    }

    const QString& text_;
    qsizetype at_ = 0;
    bool quoted_ = false;
    bool wasQuoted_ = false;
    QString cell_;
    QStringList row_;
    std::vector<QStringList> rows_;
};

QString Quoted(const QString& cell) {
    if (!cell.contains('\t') && !cell.contains('\n') && !cell.startsWith('"')) return cell;
    return '"' + QString(cell).replace("\"", "\"\"") + '"';
}

}  // namespace

std::vector<QStringList> ReadBlock(const QString& text) {
    const QString plain = QString(text).replace("\r\n", "\n").replace('\r', '\n');
    return BlockReader(plain).Read();
}

QString WriteBlock(const std::vector<QStringList>& rows) {
    QString text;
    for (const QStringList& row : rows) {
        QStringList cells;
        for (const QString& cell : row) cells << Quoted(cell);
        text += cells.join('\t') + '\n';
    }
    return text;
}

}  // namespace zolmara::ui
