#pragma once

#include <QWidget>

namespace zolmara::ui {

/// What shows while the program starts.
class frmSplash : public QWidget {
public:
    frmSplash();
};

}  // namespace zolmara::ui
