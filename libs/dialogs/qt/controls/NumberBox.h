#pragma once

#include <QAbstractSpinBox>
#include <functional>
#include <optional>

namespace vlm::ui {

/// A line for a number between two bounds, with arrows that step by one. It may be empty, and while it is being typed
/// it may hold what is no number yet.
class NumberBox : public QAbstractSpinBox {
public:
    NumberBox(double minimum, double maximum, int decimals);

    QString Text() const { return text(); }
    /// Without telling onEdited.
    void Show(const QString& text);
    /// Nothing for what is no number; 0 for an empty line.
    std::optional<double> Number() const;
    void Mark(bool wrong);

    std::function<void()> onEdited;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void stepBy(int steps) override;
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
    QValidator::State validate(QString& input, int& position) const override;
    void wheelEvent(QWheelEvent* event) override;

private:
    double minimum_, maximum_;
    int decimals_;
    int digits_;  // that the line has room for
};

}  // namespace vlm::ui
