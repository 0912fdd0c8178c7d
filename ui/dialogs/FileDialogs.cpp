#include "ui/dialogs/FileDialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QTreeView>

#include "core/Dialogs.h"
#include "ui/main/Desktop.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {
namespace {

constexpr int kOverwritePrompt = 2;
constexpr int kFileMustExist = 4096;

bool IsPattern(const QString& name) { return name.contains('*') || name.contains('?'); }

/// The pattern of the file name, empty for a plain name.
QString StartPattern(const FileDialog& dialog) {
    const QString name = QFileInfo(Q(dialog.FileName)).fileName();
    return IsPattern(name) ? name : QString();
}

/// A name may be written in any case, and on this platform "*.*" would leave out names without
/// a point.
QString PlatformPattern(const QString& pattern) {
    if (pattern == "*.*") return "*";
    QStringList cases{pattern};
    for (const QString& other : {pattern.toLower(), pattern.toUpper()})
        if (!cases.contains(other)) cases << other;
    return cases.join(' ');
}

QString NameFilter(const QString& caption, const QString& pattern) {
    QString bare = caption;
    bare.remove("(" + pattern + ")", Qt::CaseInsensitive);
    return bare.trimmed() + " (" + PlatformPattern(pattern) + ")";
}

QStringList ToldFilters(const FileDialog& dialog) {
    const QStringList parts = Q(dialog.Filter).split('|', Qt::SkipEmptyParts);
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters << NameFilter(parts[i], parts[i + 1]);
    return filters;
}

bool FiltersHave(const FileDialog& dialog, const QString& pattern) {
    const QStringList parts = Q(dialog.Filter).split('|', Qt::SkipEmptyParts);
    for (qsizetype i = 1; i < parts.size(); i += 2)
        if (parts[i].compare(pattern, Qt::CaseInsensitive) == 0) return true;
    return false;
}

/// ".csv" of "*.csv"; empty for a pattern that tells no one extension.
QString ExtensionOf(const QString& pattern) {
    const bool plain = pattern.startsWith("*.") && !IsPattern(pattern.mid(1));
    return plain ? pattern.mid(1) : QString();
}

bool BeginsWithPattern(const FileDialog& dialog) {
    const QString pattern = StartPattern(dialog);
    return !pattern.isEmpty() && !FiltersHave(dialog, pattern);
}

/// The date tells which file is the latest; what kind it is, its name tells. The platform's own
/// dialog has no such list.
void ShowWholeDates(QFileDialog& box) {
    constexpr int kName = 0;
    constexpr int kType = 2;
    auto* const files = box.findChild<QTreeView*>("treeView");
    if (!files) return;
    files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    files->header()->setSectionResizeMode(kName, QHeaderView::Stretch);
    files->setColumnHidden(kType, true);
}

void SetUp(QFileDialog& box, const FileDialog& dialog) {
    box.setObjectName("cdlMain");
    box.setWindowTitle(Q(dialog.Title));
    box.setAcceptMode(dialog.Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    const bool mustExist = !dialog.Save && (dialog.Flags & kFileMustExist);
    box.setFileMode(mustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    // The platform asks before it knows the whole name.
    if (dialog.Save) box.setOption(QFileDialog::DontConfirmOverwrite);
    const QFileInfo start(Q(dialog.FileName));
    if (start.dir().exists()) box.setDirectory(start.dir());
    box.setNameFilters(NameFilters(dialog));
    box.selectNameFilter(FirstFilter(dialog));
    if (!IsPattern(start.fileName())) box.selectFile(start.fileName());
    if (!dialog.Save) return;
    box.setDefaultSuffix(Q(dialog.DefaultExt).remove(0, 1));
    QObject::connect(&box, &QFileDialog::filterSelected, &box, [&box, dialog](const QString& kind) {
        box.setDefaultSuffix(ExtensionToSave(kind, dialog).remove(0, 1));
        const QString name = QFileInfo(box.selectedFiles().value(0)).fileName();
        box.selectFile(NameOfKind(name, kind, dialog));
    });
}

}  // namespace

QStringList NameFilters(const FileDialog& dialog) {
    QStringList filters = ToldFilters(dialog);
    if (!BeginsWithPattern(dialog)) return filters;
    const QString pattern = StartPattern(dialog);
    filters.prepend(pattern + " (" + PlatformPattern(pattern) + ")");
    return filters;
}

QString FirstFilter(const FileDialog& dialog) {
    const QStringList filters = NameFilters(dialog);
    if (BeginsWithPattern(dialog)) return filters.first();
    return filters.value(dialog.FilterIndex - 1);
}

QString ExtensionToSave(const QString& kind, const FileDialog& dialog) {
    const QStringList parts = Q(dialog.Filter).split('|', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString extension = ExtensionOf(parts[i + 1]);
        if (!extension.isEmpty() && NameFilter(parts[i], parts[i + 1]) == kind) return extension;
    }
    return Q(dialog.DefaultExt);
}

QString NameOfKind(const QString& name, const QString& kind, const FileDialog& dialog) {
    const QStringList filters = ToldFilters(dialog);
    for (const QString& other : filters) {
        const QString extension = ExtensionToSave(other, dialog);
        if (extension.isEmpty() || !name.endsWith(extension, Qt::CaseInsensitive)) continue;
        return name.chopped(extension.size()) + ExtensionToSave(kind, dialog);
    }
    return name;
}

QString WholeName(const QString& chosen, const QString& kind, const FileDialog& dialog) {
    const bool whole = !dialog.Save || QFileInfo(chosen).fileName().contains('.');
    return whole ? chosen : chosen + ExtensionToSave(kind, dialog);
}

bool MayBeTaken(const std::string& path, const FileDialog& dialog) {
    if (!dialog.Save || !(dialog.Flags & kOverwritePrompt) || !QFileInfo::exists(Q(path)))
        return true;
    return TheDesktop().MsgBox(path + " already exists.  Do you want to replace it?",
                               kYesNo + kExclamation + kDefaultButton2, dialog.Title) == kYes;
}

std::optional<std::string> ChooseFileFor(const FileDialog& dialog) {
    QFileDialog box(DialogOwner());
    SetUp(box, dialog);
    ShowWholeDates(box);
    FitScreen(&box, box.sizeHint());
    while (box.exec() == QDialog::Accepted && !box.selectedFiles().isEmpty()) {
        const std::string path =
            S(WholeName(box.selectedFiles().first(), box.selectedNameFilter(), dialog));
        if (MayBeTaken(path, dialog)) return path;
    }
    return std::nullopt;
}

}  // namespace zolmara::ui
