#pragma once

#include <QObject>

class QWidget;

namespace vlm::ui {

/// For as long as it lives, while a long step paints what it has done: the user may close the window with its title
/// bar, Escape or the button that cancels; other input is lost.
class WorkInput final : public QObject {
public:
    /// `cancels` is the button's widget, null for none.
    explicit WorkInput(const QWidget* cancels);
    ~WorkInput() override;

private:
    bool eventFilter(QObject* receiver, QEvent* event) override;

    const QWidget* cancels_;
};

}  // namespace vlm::ui
