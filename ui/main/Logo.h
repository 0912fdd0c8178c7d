#pragma once

#include <QPixmap>

namespace zolmara::ui {

/// The emblem of the program: so many logical pixels square, for a screen of this scale.
QPixmap LogoPixmap(int size, double scale);

}  // namespace zolmara::ui
