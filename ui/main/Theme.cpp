#include "ui/main/Theme.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <array>

#include "core/Machine.h"
#include "store/session/Session.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {
namespace {

constexpr const char* kSection = "Windows";
constexpr const char* kKey = "Theme";

struct Tone {
    QPalette::ColorRole Role;
    QRgb Light;
    QRgb Dark;
};

constexpr std::array<Tone, 14> kTones = {{
    {QPalette::Window, 0xffefefef, 0xff2b2d30},
    {QPalette::WindowText, 0xff1a1a1a, 0xffe8e8e8},
    {QPalette::Base, 0xffffffff, 0xff1e1f22},
    {QPalette::AlternateBase, 0xfff5f5f5, 0xff26282b},
    {QPalette::Text, 0xff1a1a1a, 0xffe8e8e8},
    {QPalette::Button, 0xffefefef, 0xff393b40},
    {QPalette::ButtonText, 0xff1a1a1a, 0xffe8e8e8},
    {QPalette::Highlight, 0xff2a6db0, 0xff4a90d9},
    {QPalette::HighlightedText, 0xffffffff, 0xff101010},
    {QPalette::ToolTipBase, 0xffffffdc, 0xff393b40},
    {QPalette::ToolTipText, 0xff1a1a1a, 0xffe8e8e8},
    {QPalette::PlaceholderText, 0xff6a6a6a, 0xff9a9a9a},
    {QPalette::Link, 0xff0057ae, 0xff7ab8f5},
    {QPalette::LinkVisited, 0xff6a3d9a, 0xffc9a0ff},
}};

QPalette PaletteOf(bool dark) {
    QPalette palette(QColor(dark ? kTones[5].Dark : kTones[5].Light));
    for (const Tone& tone : kTones)
        palette.setColor(tone.Role, QColor(dark ? tone.Dark : tone.Light));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role,
                         dark ? QColor(0x80, 0x80, 0x80) : QColor(0x90, 0x90, 0x90));
    return palette;
}

/// Dark on dark, the lines of a grid and a box or button that is not checked would not be seen:
/// lines are lighter than the ground, and a box gets an outline.
class DarkStyle : public QProxyStyle {
public:
    DarkStyle() : QProxyStyle("Fusion") {}
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* more) const override {
        constexpr QRgb kGridLine = 0xff55585e;
        if (hint == SH_Table_GridLineColor) return static_cast<int>(kGridLine);
        return QProxyStyle::styleHint(hint, option, widget, more);
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool round = element == PE_IndicatorRadioButton;
        if (!round && element != PE_IndicatorCheckBox && element != PE_IndicatorItemViewItemCheck)
            return;
        const QRectF place = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing, round);
        painter->setPen(option->palette.color(QPalette::PlaceholderText));
        painter->setBrush(Qt::NoBrush);
        if (round)
            painter->drawEllipse(place);
        else
            painter->drawRect(place);
        painter->restore();
    }
};

/// The desktop's own style and colours, as they were before another theme.
struct DesktopLook {
    QString Style = QApplication::style()->objectName();
};

void Apply(const std::string& theme) {
    static const DesktopLook desktop;
    const bool dark = theme == "dark";
    const bool own = theme == "desktop";
    QStyle* const style =
        dark ? new DarkStyle : QStyleFactory::create(own ? desktop.Style : "Fusion");
    QApplication::setStyle(style);
    QApplication::setPalette(own ? QPalette() : PaletteOf(dark));
}

bool IsTheme(const std::string& theme) {
    return theme == "desktop" || theme == "light" || theme == "dark";
}

}  // namespace

std::string SavedTheme() {
    const std::string theme =
        TheMachine().GetSetting(std::string(kProductName), kSection, kKey, "desktop");
    return IsTheme(theme) ? theme : "desktop";
}

void SetTheme(const std::string& theme) {
    if (!IsTheme(theme)) return;
    if (theme != SavedTheme()) Apply(theme);
    TheMachine().SaveSetting(std::string(kProductName), kSection, kKey, theme);
}

void ApplySavedTheme() {
    if (SavedTheme() != "desktop") Apply(SavedTheme());
}

}  // namespace zolmara::ui
