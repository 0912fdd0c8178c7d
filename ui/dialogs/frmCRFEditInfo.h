#pragma once

namespace zolmara::ui {
void ShowCRFEditInfo();
}
