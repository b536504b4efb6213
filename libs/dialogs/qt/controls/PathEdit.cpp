#include "controls/PathEdit.h"

#include <QAction>
#include <QDropEvent>
#include <QMimeData>
#include <QStyle>
#include <QUrl>

#include "controls/QtText.h"
#include "files/Paths.h"
#include "values/Utf8.h"

namespace vlm::ui {

namespace {

/// "" when nothing local is being dropped.
QString DroppedPath(const QDropEvent& event) {
    const QList<QUrl> urls = event.mimeData()->urls();
    return urls.isEmpty() ? QString() : urls.first().toLocalFile();
}

struct Finding {
    QStyle::StandardPixmap sign;
    const char* tip;
    bool pale = false;
};

/// What stands before the last stroke; the folder in use for a name alone.
std::string FolderOf(std::string_view path) {
    const std::size_t last = path.find_last_of("/\\");
    return last == std::string_view::npos ? "." : std::string(path.substr(0, last + 1));
}

Finding Find(std::string_view path) {
    if (files::IsDirectory(path)) return {QStyle::SP_DirIcon, "La cartella c'è"};
    if (files::IsFile(path)) return {QStyle::SP_FileIcon, "Il file c'è"};
    if (files::IsDirectory(FolderOf(path))) return {QStyle::SP_FileIcon, "Non c'è ancora; la sua cartella sì", true};
    return {QStyle::SP_MessageBoxWarning, "Il percorso non c'è"};
}

QIcon Pale(const QIcon& icon) {
    constexpr int kSize = 16;
    return icon.pixmap(kSize, kSize, QIcon::Disabled);
}

}  // namespace

PathEdit::PathEdit(QWidget* parent) : QLineEdit(parent), sign_(addAction(QIcon(), QLineEdit::TrailingPosition)) {
    connect(this, &QLineEdit::textChanged, [this] { TellWhatIsThere(); });
    TellWhatIsThere();
}

void PathEdit::TellWhatIsThere() {
    const std::string path = FromQt(text());
    sign_->setVisible(!text::Trim(path).empty());
    if (!sign_->isVisible()) return;
    const Finding finding = Find(path);
    const QIcon icon = style()->standardIcon(finding.sign);
    sign_->setIcon(finding.pale ? Pale(icon) : icon);
    sign_->setToolTip(QString::fromUtf8(finding.tip));
}

void PathEdit::dragEnterEvent(QDragEnterEvent* event) {
    DroppedPath(*event).isEmpty() ? QLineEdit::dragEnterEvent(event) : event->acceptProposedAction();
}

void PathEdit::dropEvent(QDropEvent* event) {
    const QString path = DroppedPath(*event);
    if (path.isEmpty()) return QLineEdit::dropEvent(event);
    event->acceptProposedAction();
    setText(path);
}

}  // namespace vlm::ui
