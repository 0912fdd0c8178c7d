#include "ui/worksheets/BlockText.h"

#include "ui/main/QtText.h"

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

}  // namespace

std::vector<QStringList> ReadBlock(const QString& text) {
    const QString plain = QString(text).replace("\r\n", "\n").replace('\r', '\n');
    return BlockReader(plain).Read();
}

void AppendCell(std::string& text, std::string_view cell) {
    if (cell.find_first_of("\t\n") == std::string_view::npos && !cell.starts_with('"')) {
        text += cell;
        return;
    }
    text += '"';
    for (const char c : cell) text.append(c == '"' ? 2 : 1, c);
    text += '"';
}

QString WriteBlock(const std::vector<QStringList>& rows) {
    std::string text;
    for (const QStringList& row : rows) {
        for (qsizetype at = 0; at < row.size(); ++at) {
            if (at > 0) text += '\t';
            AppendCell(text, S(row[at]));
        }
        text += '\n';
    }
    return Q(text);
}

}  // namespace zolmara::ui
