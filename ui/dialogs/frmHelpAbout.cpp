#include "ui/dialogs/frmHelpAbout.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "core/Globals.h"
#include "ecr/Fingerprint.h"
#include "store/session/Session.h"
#include "ui/main/Logo.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {
namespace {

QLabel* Label(const char* name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

}  // namespace

frmHelpAbout::frmHelpAbout() {
    const std::string title(kProductName);
    SetUpForm(this, "frmHelpAbout", "About " + title, FormKind::Dialog);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 20);
    auto* head = new QHBoxLayout;
    auto* logo = new QLabel;
    logo->setPixmap(LogoPixmap(72, devicePixelRatioF()));
    head->addWidget(logo);
    auto* texts = new QVBoxLayout;
    auto* name = Label("lblTitle", Q(title));
    QFont font = name->font();
    if (font.pointSizeF() > 0) font.setPointSizeF(font.pointSizeF() * 1.5);
    name->setFont(font);
    texts->addWidget(name);
    texts->addWidget(Label("lblVersion", Q("Version " + gVersion)));
    texts->addWidget(Label("lblForm", "CMS Form 287-22"));
    head->addLayout(texts, 1);
    column->addLayout(head);
    auto* description = Label("lblDescription",
                              "Prepares the Medicare Home Office Cost Statement.\n"
                              "Velquist, Inc.");
    description->setMinimumWidth(360);
    column->addWidget(description);
    column->addWidget(Label("lblSeal", Q(SealNotice())));
    auto* ok = new QPushButton("OK");
    ok->setObjectName("cmdHelpAboutOK");
    ok->setDefault(true);
    ok->setFocus();
    QObject::connect(ok, &QPushButton::clicked, this, [this] { UnloadForm(this); });
    column->addWidget(ok, 0, Qt::AlignRight);
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        auto* shortcut = new QShortcut(QKeySequence(key), this);
        QObject::connect(shortcut, &QShortcut::activated, ok, &QPushButton::click);
    }
    AddForm(this);
}

}  // namespace zolmara::ui
