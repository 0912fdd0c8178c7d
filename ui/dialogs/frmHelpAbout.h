#pragma once

#include <QWidget>

namespace zolmara::ui {

/// The About box.
class frmHelpAbout : public QWidget {
public:
    frmHelpAbout();
};

}  // namespace zolmara::ui
