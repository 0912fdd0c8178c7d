#pragma once

// Rows under named columns, to be read alone, as many as there may be.

#include <QAbstractTableModel>
#include <string>
#include <vector>

#include "core/Variant.h"

namespace zolmara::ui {

/// How the values of a column are shown.
enum class Shown {
    Plain,   ///< as they are; numbers at the right
    Amount,  ///< numbers with commas, as many decimals as they have
};

class ListingModel : public QAbstractTableModel {
public:
    struct Column {
        std::string Head;
        Shown How = Shown::Plain;
    };
    using Rows = std::vector<std::vector<Variant>>;

    explicit ListingModel(QObject* parent) : QAbstractTableModel(parent) {}

    void Set(std::vector<Column> columns, Rows rows);
    void SetCell(int row, int column, const Variant& value);
    const std::vector<Variant>& Row(int row) const {
        return rows_.at(static_cast<std::size_t>(row));
    }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<Column> columns_;
    Rows rows_;
};

/// A value as its column shows it.
std::string ShownText(const Variant& value, Shown how);

}  // namespace zolmara::ui
