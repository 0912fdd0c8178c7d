#include "ui/main/frmSplash.h"

#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "ui/main/Desktop.h"
#include "ui/main/Logo.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {
namespace {

constexpr int kLongest = 10000;  ///< milliseconds that it stands at most

QLabel* Label(const char* name, const std::string& text, double size) {
    auto* label = new QLabel(Q(text));
    label->setObjectName(name);
    QFont font = label->font();
    if (font.pointSizeF() > 0) font.setPointSizeF(font.pointSizeF() * size);
    label->setFont(font);
    return label;
}

}  // namespace

frmSplash::frmSplash() {
    const std::string title(kProductName);
    SetUpForm(this, "frmSplash", title, false);
    setWindowFlags(Qt::SplashScreen);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* frame = new QFrame;
    frame->setObjectName("Frame1");
    frame->setFrameShape(QFrame::StyledPanel);
    outer->addWidget(frame);
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(32, 28, 48, 28);
    row->setSpacing(28);
    auto* logo = new QLabel;
    logo->setObjectName("imgLogo");
    logo->setPixmap(LogoPixmap(112, devicePixelRatioF()));
    row->addWidget(logo);
    auto* texts = new QVBoxLayout;
    texts->addWidget(Label("lblProductName", title.substr(0, title.find('-')), 2.2));
    texts->addWidget(Label("lblPlatform", "Form 287 " + title.substr(12), 1.3));
    texts->addWidget(Label("lblVersion", "Version " + gVersion, 1));
    texts->addWidget(Label("lblCompany", "Velquist, Inc.", 1));
    texts->addWidget(
        Label("lblDescription", "Medicare Home Office Cost Statement, Form CMS-287-22", 1));
    row->addLayout(texts);
    adjustSize();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    move(screen.center() - rect().center());
    auto* timer = new QTimer(this);
    timer->setObjectName("Timer1");
    timer->setSingleShot(true);
    timer->callOnTimeout([this] { UnloadForm(this); });
    timer->start(kLongest);
    AddForm(this);
}

}  // namespace zolmara::ui
