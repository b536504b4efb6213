#include "FileChoosers.h"

#include <QDir>
#include <QFileDialog>
#include <QRegularExpression>

#include "controls/QtText.h"
#include "files/Paths.h"

namespace vlm::ui {

namespace {

/// The folder, or the nearest one above it that is there; the user's own for an empty path.
QString StartFolder(const std::string& folder) {
    if (folder.empty()) return QDir::homePath();
    const QString path = QString::fromStdString(files::ToNative(folder).string());
    QDir start(path);
    while (!start.exists() && start.cdUp()) {
    }
    return start.exists() ? start.absolutePath() : QDir::homePath();
}

std::optional<std::string> Choose(QFileDialog& chooser) {
    if (chooser.exec() != QDialog::Accepted || chooser.selectedFiles().isEmpty()) return std::nullopt;
    return FromQt(chooser.selectedFiles().first());
}

}  // namespace

QStringList NameFilters(const std::string& filter) {
    static const QRegularExpression patternsInName(" *\\([^)]*\\)$");
    const QStringList parts = ToQt(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString name = parts[i];
        QStringList patterns = parts[i + 1].split(';', Qt::SkipEmptyParts);
        patterns.replaceInStrings("*.*", "*");
        filters << name.remove(patternsInName) + " (" + patterns.join(' ') + ")";
    }
    return filters;
}

std::optional<std::string> ChooseFileInWindow(const FileChoice& choice, QWidget* parent) {
    QFileDialog chooser(parent, "Scelta del file", StartFolder(choice.folder));
    chooser.setFileMode(QFileDialog::AnyFile);
    chooser.setLabelText(QFileDialog::Accept, "&Scegli");
    const QStringList filters = NameFilters(choice.filter);
    if (!filters.isEmpty()) {
        chooser.setNameFilters(filters);
        chooser.selectNameFilter(filters.value(choice.filterIndex - 1, filters.first()));
    }
    chooser.setDefaultSuffix(ToQt(choice.defaultExtension));
    if (!choice.fileName.empty()) chooser.selectFile(ToQt(choice.fileName));
    return Choose(chooser);
}

std::optional<std::string> ChooseFolderInWindow(const std::string& startFolder, QWidget* parent) {
    QFileDialog chooser(parent, "Scelta della cartella", StartFolder(startFolder));
    chooser.setFileMode(QFileDialog::Directory);
    chooser.setOption(QFileDialog::ShowDirsOnly);
    chooser.setLabelText(QFileDialog::Accept, "&Scegli");
    return Choose(chooser);
}

std::optional<std::string> ChoosePrintFileInWindow(const std::string& title, QWidget* parent) {
    QFileDialog chooser(parent, "Stampa su file", QDir::homePath());
    chooser.setAcceptMode(QFileDialog::AcceptSave);
    chooser.setNameFilter("PDF (*.pdf)");
    chooser.setDefaultSuffix("pdf");
    chooser.selectFile(ToQt(title) + ".pdf");
    return Choose(chooser);
}

}  // namespace vlm::ui
