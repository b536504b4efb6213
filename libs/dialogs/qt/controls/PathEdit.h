#pragma once

#include <QLineEdit>

namespace vlm::ui {

/// A line for a path: a file or folder dropped on it becomes its text; a sign at its end tells while typing whether a
/// folder, a file or nothing is there.
class PathEdit : public QLineEdit {
public:
    explicit PathEdit(QWidget* parent = nullptr);
    /// Looks at the path as it stands; done by itself when the text changes.
    void TellWhatIsThere();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QAction* sign_;
};

}  // namespace vlm::ui
