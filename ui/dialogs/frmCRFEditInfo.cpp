#include "ui/dialogs/frmCRFEditInfo.h"
namespace zolmara::ui {
void ShowCRFEditInfo() {}
}  // namespace zolmara::ui
