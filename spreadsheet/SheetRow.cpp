#include "spreadsheet/SheetRow.h"

namespace zolmara {

std::string CellAddressOf(int column, std::int64_t row) {
    constexpr int kLetters = 26;
    std::string letters;
    for (int rest = column + 1; rest > 0; rest = (rest - 1) / kLetters)
        letters.insert(letters.begin(), static_cast<char>('A' + (rest - 1) % kLetters));
    return letters + std::to_string(row);
}

std::string CellAddressOf(const std::string& sheet, int column, std::int64_t row) {
    const std::string cell = CellAddressOf(column, row);
    return sheet.empty() ? cell : sheet + "!" + cell;
}

}  // namespace zolmara
