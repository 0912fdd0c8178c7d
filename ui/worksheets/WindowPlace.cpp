#include "ui/worksheets/WindowPlace.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QScreen>
#include <QScrollBar>
#include <QStringList>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "core/Machine.h"
#include "store/session/Session.h"
#include "ui/main/QtText.h"
#include "ui/worksheets/SheetView.h"
#include "ui/worksheets/frmWorksheet.h"

namespace zolmara::ui {
namespace {

constexpr const char* kSection = "Windows";
constexpr double kTwipsPerInch = 1440;
constexpr int kScreenEdge = 75;  ///< twips that a window leaves of the screen
constexpr int kSplitGap = 42;
constexpr int kGridEdges = 200 + 800;
constexpr int kMostRows = 22;

int Pixels(const QWidget& window, int twips) {
    return static_cast<int>(std::lround(twips * window.logicalDpiX() / kTwipsPerInch));
}

std::string Saved(const std::string& key) {
    return TheMachine().GetSetting(std::string(kProductName), kSection, key, "");
}

void Save(const std::string& key, const std::string& value) {
    TheMachine().SaveSetting(std::string(kProductName), kSection, key, value);
}

std::string KeyOf(const WorksheetForm& form, const char* what) {
    return std::string(what) + " " + std::string(ModeName(form.Mode)) + " " + form.Item;
}

std::vector<int> Numbers(const std::string& text) {
    std::vector<int> numbers;
    for (const QString& word : Q(text).split(' ', Qt::SkipEmptyParts))
        numbers.push_back(word.toInt());
    return numbers;
}

std::string Joined(const std::vector<int>& numbers) {
    QStringList words;
    for (const int number : numbers) words << QString::number(number);
    return S(words.join(' '));
}

/// What the desktop puts above a window.
int TitleBar(const QWidget& window) {
    return window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
}

/// gScreenWidth and gScreenHeight.
QSize LargestWindow(const QWidget& window) {
    const QSize screen = window.screen()->availableGeometry().size();
    const int edge = Pixels(window, kScreenEdge);
    return {screen.width() - edge, screen.height() - edge - TitleBar(window)};
}

int WantedWidth(frmWorksheet& window) {
    const int splits = window.Form().FrozenColumns > 0 ? 2 : 1;
    return window.Grid().ColumnsWidth() + Pixels(window, kSplitGap * (splits - 1) + kGridEdges);
}

int WantedHeight(frmWorksheet& window) {
    SheetView& grid = window.Grid();
    const int rows = std::clamp(window.Model().rowCount(), 6, kMostRows);
    return grid.horizontalHeader()->height() + rows * grid.verticalHeader()->defaultSectionSize() +
           grid.horizontalScrollBar()->sizeHint().height() +
           window.fontMetrics().lineSpacing() * 5 + 24;
}

/// It may have been left on a larger screen: wholly in sight, as its last line tells what to do.
bool PlaceAsLeft(frmWorksheet& window) {
    const std::vector<int> place = Numbers(Saved(KeyOf(window.Form(), "Place")));
    if (place.size() != 4 || place[2] < 100 || place[3] < 100) return false;
    const QSize largest = LargestWindow(window);
    const QSize size = QSize(place[2], place[3]).boundedTo(largest);
    const QPoint origin = window.screen()->availableGeometry().topLeft();
    const QSize room = largest - size;
    window.resize(size);
    window.move(std::min(place[0], origin.x() + room.width()),
                std::min(place[1], origin.y() + room.height()));
    return true;
}

}  // namespace

void PlaceWindow(frmWorksheet& window) {
    if (PlaceAsLeft(window)) return KeepOnScreen(window);
    const QSize largest = LargestWindow(window);
    const QRect screen = window.screen()->availableGeometry();
    const int width = std::max(std::min(WantedWidth(window), largest.width()),
                               std::min(window.minimumSizeHint().width(), largest.width()));
    const int height = std::min(WantedHeight(window), largest.height());
    window.resize(width, height);
    window.move(screen.left() + std::max(0, (screen.width() - window.width()) / 2),
                screen.top() + std::max(0, screen.height() - height - TitleBar(window)) / 3);
    KeepOnScreen(window);
}

void KeepOnScreen(QWidget& window) {
    constexpr double kMostLeft = 0.8;
    const QSize largest = LargestWindow(window);
    const QPoint origin = window.screen()->availableGeometry().topLeft();
    QPoint at = window.pos() - origin;
    if (at.y() < 0 || at.y() > largest.height()) at.setY(0);
    if (at.x() < 0 || at.x() > kMostLeft * largest.width()) at.setX(0);
    if (at + origin != window.pos()) window.move(at + origin);
}

void RememberWindow(frmWorksheet& window) {
    if (window.isHidden()) return;
    const QRect place(window.pos(), window.size());
    if (!window.isMaximized() && !window.isMinimized())
        Save(KeyOf(window.Form(), "Place"),
             Joined({place.x(), place.y(), place.width(), place.height()}));
    if (window.Grid().WidthsChanged())
        Save(KeyOf(window.Form(), "Widths"), Joined(window.Grid().Widths()));
}

std::vector<int> SavedWidths(const WorksheetForm& form) {
    std::vector<int> widths = Numbers(Saved(KeyOf(form, "Widths")));
    if (widths.size() != form.Columns.size()) widths.clear();
    return widths;
}

double SavedZoom() {
    const double zoom = Q(Saved("Zoom")).toDouble();
    return zoom > 0 ? std::clamp(zoom, 0.5, 3.0) : 1.0;
}

void SaveZoom(double zoom) { Save("Zoom", S(QString::number(zoom, 'f', 3))); }

}  // namespace zolmara::ui
