#include "SearchBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QShortcut>
#include <QToolButton>

#include "ControlWidget.h"
#include "controls/QtText.h"

namespace vlm::ui {

namespace {

constexpr int kSearchWidth = 220;

QToolButton* Arrow(Qt::ArrowType type, const char* tip) {
    auto* button = new QToolButton;
    button->setArrowType(type);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setToolTip(tip);
    return button;
}

}  // namespace

SearchBar::SearchBar(QWidget* parent) : QWidget(parent), field_(new QLineEdit) {
    auto* label = new QLabel("Cerca:");
    label->setBuddy(field_);
    QToolButton* back = Arrow(Qt::UpArrow, "Precedente (Maiusc+Invio)");
    QToolButton* next = Arrow(Qt::DownArrow, "Successivo (Invio)");
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(field_);
    layout->addWidget(back);
    layout->addWidget(next);
    field_->setMinimumWidth(kSearchWidth);
    field_->setPlaceholderText("Ctrl+F");
    field_->setClearButtonEnabled(true);
    connect(field_, &QLineEdit::textChanged, [this] { MarkEntry(*field_, false); });
    connect(back, &QToolButton::clicked, [this] { Search(true); });
    connect(next, &QToolButton::clicked, [this] { Search(false); });
    auto* keys = new QShortcut(QKeySequence::Find, this);
    keys->setContext(Qt::WindowShortcut);
    connect(keys, &QShortcut::activated, [this] {
        field_->setFocus(Qt::ShortcutFocusReason);
        field_->selectAll();
    });
}

void SearchBar::Search(bool backwards) {
    const QString text = field_->text();
    if (!text.isEmpty()) MarkEntry(*field_, !onSearch(FromQt(text), backwards));
}

}  // namespace vlm::ui
