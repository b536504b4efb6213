#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>

#include "controls/ControlWidgets.h"
#include "controls/QtText.h"
#include "dialogs/Keys.h"

namespace vlm::ui {

namespace {

constexpr qsizetype kLongText = 60;    // characters from which a label is broken into lines
constexpr qsizetype kShortText = 3;    // characters of a button that stands beside its field ("...")
constexpr int kShortTextMargins = 24;  // pixels

class LabelWidget : public WidgetOf<Label, QLabel> {
public:
    LabelWidget(Control& control, WidgetHost& host) : WidgetOf(control, host, new QLabel) {
        widget_->setTextFormat(Qt::PlainText);
    }
    void Refresh() override {
        const QString text = ToQt(WithoutMnemonic(Shown().Caption()));
        if (text == widget_->text()) return;
        widget_->setText(text);
        widget_->setWordWrap(text.size() > kLongText);
    }
};

class BorderWidget : public WidgetOf<Frame, QWidget> {
public:
    BorderWidget(Control& control, WidgetHost& host)
        : WidgetOf(control, host, control.Caption().empty() ? new QWidget : new QGroupBox) {}
    void Refresh() override {
        if (auto* border = qobject_cast<QGroupBox*>(widget_)) border->setTitle(ToQt(Shown().Caption()).trimmed());
    }
};

class LineWidget : public WidgetOf<Frame, QFrame> {
public:
    LineWidget(Control& control, WidgetHost& host) : WidgetOf(control, host, new QFrame) {
        widget_->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    }
    void Refresh() override {}
    bool Widens() const override { return true; }
};

class ButtonWidget : public WidgetOf<Button, QPushButton> {
public:
    ButtonWidget(Control& control, WidgetHost& host) : WidgetOf(control, host, new QPushButton) {
        QObject::connect(widget_, &QPushButton::clicked, [this] { Host().Click(Shown()); });
    }
    void Refresh() override {
        const QString caption = ToQt(Shown().Caption());
        if (caption == widget_->text()) return;
        widget_->setText(caption);
        if (caption.size() > kShortText) return;
        widget_->setMaximumWidth(widget_->fontMetrics().horizontalAdvance(caption) + kShortTextMargins);
    }
};

class CheckWidget : public WidgetOf<CheckBox, QCheckBox> {
public:
    CheckWidget(Control& control, WidgetHost& host) : WidgetOf(control, host, new QCheckBox) {
        QObject::connect(widget_, &QCheckBox::toggled,
                         [this](bool checked) { Host().Act([this, checked] { Shown().SetChecked(checked); }); });
    }
    void Refresh() override {
        const QSignalBlocker silent(widget_);
        widget_->setText(ToQt(Shown().Caption()));
        widget_->setChecked(Shown().Checked());
    }
};

class ProgressWidget : public WidgetOf<ProgressBar, QProgressBar> {
public:
    ProgressWidget(Control& control, WidgetHost& host) : WidgetOf(control, host, new QProgressBar) {
        widget_->setRange(0, 100);
    }
    void Refresh() override { widget_->setValue(Shown().Value()); }
    bool Widens() const override { return true; }
};

}  // namespace

std::unique_ptr<ControlWidget> MakeLabel(Control& control, WidgetHost& host) {
    return std::make_unique<LabelWidget>(control, host);
}

std::unique_ptr<ControlWidget> MakeBorder(Control& control, WidgetHost& host) {
    return std::make_unique<BorderWidget>(control, host);
}

std::unique_ptr<ControlWidget> MakeLine(Control& control, WidgetHost& host) {
    return std::make_unique<LineWidget>(control, host);
}

std::unique_ptr<ControlWidget> MakeButton(Control& control, WidgetHost& host) {
    return std::make_unique<ButtonWidget>(control, host);
}

std::unique_ptr<ControlWidget> MakeCheckBox(Control& control, WidgetHost& host) {
    return std::make_unique<CheckWidget>(control, host);
}

std::unique_ptr<ControlWidget> MakeProgress(Control& control, WidgetHost& host) {
    return std::make_unique<ProgressWidget>(control, host);
}

}  // namespace vlm::ui
