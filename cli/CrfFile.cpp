#include "cli/CrfFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "core/Globals.h"
#include "store/session/RepairCrf.h"
#include "store/session/Session.h"
#include "store/session/Signature.h"

namespace zolmara::cli {

std::string FullPath(const std::string& path) {
    std::error_code error;
    const auto full = std::filesystem::absolute(path, error);
    if (error) return path;
    // What ".." leads to behind a link is for the file system to say.
    if (std::ranges::find(full, "..") == full.end()) return full.lexically_normal().string();
    const auto folder = std::filesystem::canonical(full.parent_path(), error);
    return error ? full.string() : (folder / full.filename()).string();
}

bool OpenFile(const Inputs& inputs) {
    const auto path = FullPath(inputs.Text("FILE"));
    try {
        return OpenCrf(path);
    } catch (const StoreError& error) {
        if (!IsOfADamagedCrf(error, path)) throw;
        throw StoreError(StoreError::Kind::Damaged,
                         fmt::format("{}: the file is damaged and cannot be opened; the command "
                                     "compact repairs it",
                                     path));
    }
}

std::string TableNamed(const std::string& item) {
    if (!gDB.HasTable(item))
        throw std::runtime_error(fmt::format("There is no table {} in {}", item, gCRFPath));
    return gDB.Table(item).Name;
}

std::string KeyOf(const std::string& table) {
    const std::string& first = gDB.Table(table).Fields.front().Name;
    if (!SameText(first, "LineNum") && !SameText(first, "SeqNum"))
        throw std::runtime_error(fmt::format("Table {} has no line numbers", table));
    return first;
}

Currency LineOf(const std::string& text) {
    const auto number = ParseNumber(text);
    if (!number || !Currency::Holds(*number))
        throw CommandLineError{fmt::format("LINE must be a line number such as 4 or 4.01, not {}",
                                           text.empty() ? "empty" : text)};
    return Currency(*number);
}

Variant Signature() {
    const std::string text = SignatureText();
    return text.empty() ? Variant() : Variant(text);
}

}  // namespace zolmara::cli
