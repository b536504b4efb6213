#include <QAction>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QStyle>
#include <QUrl>

#include "controls/ControlWidgets.h"
#include "controls/QtText.h"
#include "files/Paths.h"
#include "values/Utf8.h"

namespace vlm::ui {

namespace {

constexpr int kWidth = 36;  // characters that a line has room for at least
constexpr int kLines = 4;   // that a field of several has room for at least

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

/// A line for a path: a file or folder dropped on it becomes its text; a sign at its end tells while typing whether a
/// folder, a file or nothing is there.
class PathEdit : public QLineEdit {
public:
    PathEdit() : sign_(addAction(QIcon(), QLineEdit::TrailingPosition)) {
        connect(this, &QLineEdit::textChanged, [this] { TellWhatIsThere(); });
        TellWhatIsThere();
    }

    void TellWhatIsThere() {
        const std::string path = FromQt(text());
        sign_->setVisible(!text::Trim(path).empty());
        if (!sign_->isVisible()) return;
        const Finding finding = Find(path);
        const QIcon icon = style()->standardIcon(finding.sign);
        sign_->setIcon(finding.pale ? Pale(icon) : icon);
        sign_->setToolTip(QString::fromUtf8(finding.tip));
    }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override {
        DroppedPath(*event).isEmpty() ? QLineEdit::dragEnterEvent(event) : event->acceptProposedAction();
    }
    void dropEvent(QDropEvent* event) override {
        const QString path = DroppedPath(*event);
        if (path.isEmpty()) return QLineEdit::dropEvent(event);
        event->acceptProposedAction();
        setText(path);
    }

private:
    QAction* sign_;
};

QLineEdit* LineFor(const TextField& field) {
    if (field.path) return new PathEdit;
    auto* line = new QLineEdit;
    if (field.password) line->setEchoMode(QLineEdit::Password);
    return line;
}

class TextWidget : public WidgetOf<TextField, QLineEdit> {
public:
    TextWidget(TextField& field, WidgetHost& host) : WidgetOf(field, host, LineFor(field)) {
        widget_->setMinimumWidth(kWidth * widget_->fontMetrics().averageCharWidth());
        QObject::connect(widget_, &QLineEdit::textChanged,
                         [this](const QString& text) { Host().Act([this, &text] { Shown().SetText(FromQt(text)); }); });
    }
    void Refresh() override {
        const QString text = ToQt(Shown().Text());
        if (text == widget_->text()) return;  // what the user is typing keeps its cursor
        const QSignalBlocker silent(widget_);
        widget_->setText(text);
        if (auto* path = dynamic_cast<PathEdit*>(widget_)) path->TellWhatIsThere();
    }
    bool Widens() const override { return true; }
};

class NoteWidget : public WidgetOf<TextField, QPlainTextEdit> {
public:
    NoteWidget(TextField& field, WidgetHost& host) : WidgetOf(field, host, new QPlainTextEdit) {
        widget_->setTabChangesFocus(true);
        widget_->setMinimumHeight(kLines * widget_->fontMetrics().lineSpacing() + 12);
        QObject::connect(widget_, &QPlainTextEdit::textChanged, [this] {
            Host().Act([this] { Shown().SetText(FromQt(widget_->toPlainText().replace("\n", "\r\n"))); });
        });
    }
    void Refresh() override {
        const QString text = ToQt(Shown().Text()).replace("\r\n", "\n");
        if (text == widget_->toPlainText()) return;
        const QSignalBlocker silent(widget_);
        widget_->setPlainText(text);
    }
    bool Widens() const override { return true; }
    bool Heightens() const override { return true; }
};

}  // namespace

std::unique_ptr<ControlWidget> MakeText(Control& control, WidgetHost& host) {
    auto& field = As<TextField>(control);
    if (field.multiLine) return std::make_unique<NoteWidget>(field, host);
    return std::make_unique<TextWidget>(field, host);
}

}  // namespace vlm::ui
