#include "core/PlainName.h"

namespace zolmara {

std::string PlainFileName(std::string_view text) {
    static constexpr std::string_view kRefused = "/\\:*?\"<>|\x7F";
    std::string name(text);
    for (char& letter : name) {
        const bool control = static_cast<unsigned char>(letter) < ' ';
        if (control || kRefused.find(letter) != std::string_view::npos) letter = '_';
    }
    if (name.starts_with("..") || name == ".") name[0] = '_';
    return name;
}

}  // namespace zolmara
