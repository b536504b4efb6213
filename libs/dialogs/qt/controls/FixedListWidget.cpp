#include "controls/FixedListWidget.h"

#include <QSignalBlocker>
#include <algorithm>

#include "controls/QtText.h"
#include "values/Utf8.h"

namespace vlm::ui {

namespace {

constexpr std::size_t kShortText = 6;  // a list of such texts stays narrow

}  // namespace

FixedListWidget::FixedListWidget(FixedList& list, WidgetHost& host) : ControlWidget(list, host), box_(new DropDown) {
    box_->onChosen = [this](int position) {
        Host().Act([this, position] { As<FixedList>(Shown()).SetPosition(position); });
    };
}

void FixedListWidget::Refresh() {
    const QSignalBlocker silent(box_);
    const auto& list = As<FixedList>(Shown());
    QStringList texts;
    for (const std::string& item : list.Items()) texts << ToQt(item);
    QStringList there;
    for (int i = 0; i < box_->count(); ++i) there << box_->itemText(i);
    if (texts != there) {
        box_->clear();
        box_->addItems(texts);
    }
    box_->setCurrentIndex(list.Position());
}

bool FixedListWidget::Widens() const {
    const std::vector<std::string>& items = As<FixedList>(Shown()).Items();
    return items.empty() || std::any_of(items.begin(), items.end(),
                                        [](const std::string& item) { return text::Length(item) > kShortText; });
}

}  // namespace vlm::ui
