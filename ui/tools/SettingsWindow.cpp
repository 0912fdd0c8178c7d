#include "ui/tools/SettingsWindow.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>
#include <QSpinBox>
#include <QVBoxLayout>
#include <array>
#include <cmath>
#include <filesystem>

#include "core/Dialogs.h"
#include "core/Machine.h"
#include "print/SendPrtFile.h"
#include "store/session/Backups.h"
#include "store/session/Session.h"
#include "ui/main/Buttons.h"
#include "ui/main/Done.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/Theme.h"
#include "ui/main/frmMain.h"
#include "ui/tools/EntryCalculation.h"
#include "ui/tools/Tools.h"
#include "ui/worksheets/SheetView.h"
#include "ui/worksheets/WindowPlace.h"
#include "ui/worksheets/frmWorksheet.h"

namespace zolmara::ui {
namespace {

struct FolderRow {
    const char* Name;
    const char* Caption;
    const char* Section;
    const char* Key;
};
constexpr std::array<FolderRow, 3> kFolders = {{
    {"txtCrfFolder", "Cost Report Files:", "Startup", "CRFLoc"},
    {"txtImportFolder", "&Import files:", "Startup", "ASCIIFiles"},
    {"txtBackupFolder", "&Backups:", "Backups", "Folder"},
}};

constexpr std::array<const char*, 3> kThemes = {"desktop", "light", "dark"};

std::string Saved(const FolderRow& row) {
    if (std::string_view(row.Section) == "Backups") return TheBackupRules().Folder;
    return TheMachine().GetSetting(std::string(kProductName), row.Section, row.Key, "");
}

void Save(const char* section, const char* key, const std::string& value) {
    TheMachine().SaveSetting(std::string(kProductName), section, key, value);
}

bool IsFolder(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

class SettingsWindow : public QWidget {
public:
    SettingsWindow();

private:
    QWidget* MakeFolder(const FolderRow& row);
    QSpinBox* MakeNumber(const char* name, int least, int most, int value, const char* suffix);
    QCheckBox* MakeSwitch(const char* name, const char* caption, bool on);
    bool FoldersAreThere();
    void SaveFolders();
    void SavePrinting();
    void Accept();

    std::array<QLineEdit*, kFolders.size()> folders_{};
    QSpinBox* numLast_;
    QSpinBox* numDays_;
    QCheckBox* chkEntry_;
    QSpinBox* numZoom_;
    QCheckBox* chkQuality_;
    QComboBox* cboTheme_;
};

SettingsWindow::SettingsWindow() {
    SetUpForm(this, "wndSettings", "Settings", FormKind::Dialog);
    auto* column = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    for (const FolderRow& row : kFolders) form->addRow(row.Caption, MakeFolder(row));
    const BackupRules rules = TheBackupRules();
    numLast_ = MakeNumber("numLast", 1, 999, rules.Last, " newest");
    numDays_ = MakeNumber("numDays", 0, 999, rules.Days, " days, the newest of each day");
    form->addRow("Backups to &keep:", numLast_);
    form->addRow("and &for:", numDays_);
    chkEntry_ = MakeSwitch("chkEntry", "&Calculate after each entry", EntryCalculation::IsOn());
    form->addRow(chkEntry_);
    chkQuality_ = MakeSwitch("chkQuality", "&High quality printing", HighQualityPrinting());
    form->addRow(chkQuality_);
    numZoom_ =
        MakeNumber("numZoom", 50, 300, static_cast<int>(std::lround(SavedZoom() * 100)), " %");
    form->addRow("&Zoom of worksheets:", numZoom_);
    cboTheme_ = new QComboBox;
    cboTheme_->setObjectName("cboTheme");
    cboTheme_->addItems({"As the desktop", "Light", "Dark"});
    for (int i = 0; i < static_cast<int>(kThemes.size()); ++i)
        if (SavedTheme() == kThemes[static_cast<std::size_t>(i)]) cboTheme_->setCurrentIndex(i);
    form->addRow("Co&lours:", cboTheme_);
    column->addLayout(form);
    column->addStretch(1);
    auto* ok = MakeButton("cmdOK", "&OK", [this] { Accept(); });
    auto* cancel = MakeButton("cmdCancel", "Cancel", [this] { close(); });
    column->addWidget(MakeButtonStrip({ok, cancel}));
    PressOnReturn(this, ok);
    PressOnEscape(this, cancel);
}

QWidget* SettingsWindow::MakeFolder(const FolderRow& row) {
    auto* strip = new QWidget;
    auto* line = new QHBoxLayout(strip);
    line->setContentsMargins(0, 0, 0, 0);
    auto* field = new QLineEdit(Q(Saved(row)));
    field->setObjectName(row.Name);
    field->setCursorPosition(0);
    field->setAccessibleName(
        QString("Folder of %1").arg(QString(row.Caption).remove('&').chopped(1)));
    field->setMinimumWidth(fontMetrics().averageCharWidth() * 40);
    folders_[static_cast<std::size_t>(&row - kFolders.data())] = field;
    auto* browse = MakeButton("cmdBrowse", "...", [this, field] {
        const QString chosen = QFileDialog::getExistingDirectory(this, "Folder", field->text());
        if (!chosen.isEmpty()) field->setText(chosen);
    });
    browse->setAccessibleName("Choose: " + field->accessibleName());
    line->addWidget(field, 1);
    line->addWidget(browse);
    strip->setFocusProxy(field);
    return strip;
}

QSpinBox* SettingsWindow::MakeNumber(const char* name, int least, int most, int value,
                                     const char* suffix) {
    auto* number = new QSpinBox;
    number->setObjectName(name);
    number->setRange(least, most);
    number->setValue(value);
    number->setSuffix(suffix);
    return number;
}

QCheckBox* SettingsWindow::MakeSwitch(const char* name, const char* caption, bool on) {
    auto* box = new QCheckBox(caption);
    box->setObjectName(name);
    box->setChecked(on);
    return box;
}

/// A folder that was changed must be there; an empty one is the program's own.
bool SettingsWindow::FoldersAreThere() {
    for (std::size_t i = 0; i < kFolders.size(); ++i) {
        const std::string folder = S(folders_[i]->text());
        if (folder.empty() || folder == Saved(kFolders[i]) || IsFolder(folder)) continue;
        TheDialogs().MsgBox(folder + " is no folder.", kExclamation, "Settings");
        folders_[i]->setFocus();
        return false;
    }
    return true;
}

void SettingsWindow::SaveFolders() {
    for (std::size_t i = 0; i < kFolders.size(); ++i)
        if (const std::string folder = S(folders_[i]->text()); folder != Saved(kFolders[i]))
            Save(kFolders[i].Section, kFolders[i].Key, folder);
}

void SettingsWindow::SavePrinting() {
    if (chkQuality_->isChecked() == HighQualityPrinting()) return;
    SetHighQualityPrinting(chkQuality_->isChecked());
    if (const frmMain* const main = TheQtHost().Main())
        main->Menu("mnuReportUtilitiesHQ")->setText(Q(HighQualityCaption()));
}

void SettingsWindow::Accept() {
    if (!FoldersAreThere()) return;
    SaveFolders();
    Save("Backups", "Last", std::to_string(numLast_->value()));
    Save("Backups", "Days", std::to_string(numDays_->value()));
    if (chkEntry_->isChecked() != EntryCalculation::IsOn()) EntryCalculation::Toggle();
    SavePrinting();
    const double zoom = numZoom_->value() / 100.0;
    SaveZoom(zoom);
    for (frmWorksheet* window : WorksheetWindows()) window->Grid().SetZoom(zoom);
    SetTheme(kThemes.at(static_cast<std::size_t>(cboTheme_->currentIndex())));
    RefreshTools();
    TellDone("Settings saved");
    close();
}

}  // namespace

void ShowSettings() {
    static QPointer<SettingsWindow> shown;
    // One that was closed waits only for its end.
    if (!shown || shown->isHidden()) shown = new SettingsWindow;
    ShowForm(shown);
}

}  // namespace zolmara::ui
