#include "platform/ui/qt/controls/PathEdit.h"

#include <QAction>
#include <QDropEvent>
#include <QMimeData>
#include <QStyle>
#include <QUrl>

#include "platform/files/Paths.h"
#include "platform/text/Utf8.h"
#include "platform/ui/qt/controls/QtText.h"

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
};

Finding Find(std::string_view path) {
    if (files::IsDirectory(path)) return {QStyle::SP_DirIcon, "La cartella c'è"};
    if (files::IsFile(path)) return {QStyle::SP_FileIcon, "Il file c'è"};
    return {QStyle::SP_MessageBoxWarning, "Qui non c'è ancora nulla"};
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
    sign_->setIcon(style()->standardIcon(finding.sign));
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
