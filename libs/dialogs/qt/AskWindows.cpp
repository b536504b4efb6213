#include "AskWindows.h"

#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <algorithm>

#include "controls/QtText.h"
#include "files/Paths.h"

namespace vlm::ui {

namespace {

constexpr int kWidestLine = 640;  // pixels

QMessageBox::Icon SignOf(Icon icon) {
    switch (icon) {
        case Icon::Critical:
            return QMessageBox::Critical;
        case Icon::Question:
            return QMessageBox::Question;
        case Icon::Exclamation:
            return QMessageBox::Warning;
        case Icon::Information:
            return QMessageBox::Information;
        case Icon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

/// Lines stay whole as long as they are not too long; by itself the box breaks them early.
void KeepLinesWhole(const QMessageBox& box) {
    auto* label = box.findChild<QLabel*>("qt_msgbox_label");
    if (label == nullptr) return;
    int longest = 0;
    for (const QString& line : box.text().split('\n')) {
        longest = std::max(longest, label->fontMetrics().horizontalAdvance(line));
    }
    label->setMinimumWidth(std::min(longest + 2, kWidestLine));
}

/// In Italian also where the desktop brings texts of its own.
void AddButton(QMessageBox& box, QMessageBox::StandardButton button, const char* text) {
    box.addButton(button)->setText(QString::fromUtf8(text));
}

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

Answer AskInWindow(const Message& message, QWidget* parent) {
    QMessageBox box(parent);
    box.setIcon(SignOf(message.icon));
    box.setWindowTitle(ToQt(message.caption));
    box.setTextFormat(Qt::PlainText);
    box.setText(ToQt(message.text).replace("\r\n", "\n"));
    KeepLinesWhole(box);
    if (message.buttons == Buttons::Ok) {
        AddButton(box, QMessageBox::Ok, "OK");
        box.exec();
        return Answer::Ok;
    }
    AddButton(box, QMessageBox::Yes, "&Sì");
    AddButton(box, QMessageBox::No, "&No");
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

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
