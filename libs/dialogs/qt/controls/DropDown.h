#pragma once

#include <QComboBox>
#include <functional>

namespace vlm::ui {

/// A drop-down list of which also nothing may be chosen: Del takes the choice away. The mouse wheel turns it only while
/// it has the focus, so that scrolling over a form changes nothing.
class DropDown : public QComboBox {
public:
    explicit DropDown(QWidget* parent = nullptr);

    /// The user chose an entry, also the one that is chosen already; -1 for none.
    std::function<void(int position)> onChosen;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace vlm::ui
