#include "MessageWindow.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

#include "controls/QtText.h"

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

}  // namespace vlm::ui
