#pragma once

// Texts between the engine and the windows.

#include <QString>
#include <string>
#include <string_view>

namespace zolmara::ui {

inline QString Q(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string S(const QString& text) { return text.toStdString(); }

/// A text of several lines: the engine ends them by a carriage return.
inline QString Lines(std::string_view text) {
    return Q(text).replace("\r\n", "\n").replace('\r', '\n');
}

}  // namespace zolmara::ui
