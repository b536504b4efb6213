#include <QAbstractSpinBox>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QWheelEvent>
#include <algorithm>
#include <optional>

#include "controls/ControlWidgets.h"
#include "controls/QtText.h"
#include "values/Number.h"

namespace vlm::ui {

namespace {

constexpr int kFewestDigits = 4;  // that the line has room for

/// A line for a field's number, with arrows that step by one. It may be empty, and while it is being typed it may hold
/// what is no number yet.
class NumberBox : public QAbstractSpinBox {
public:
    explicit NumberBox(const NumberField& field)
        : field_(field), digits_(static_cast<int>(Written(field.Maximum()).size())) {
        setAlignment(Qt::AlignRight);
        setFocusPolicy(Qt::StrongFocus);
        connect(lineEdit(), &QLineEdit::textChanged, [this] {
            if (onEdited) onEdited();
        });
    }

    /// Without telling onEdited.
    void Show(const std::string& text) {
        const QSignalBlocker silent(lineEdit());
        lineEdit()->setText(ToQt(text));
    }
    /// Nothing for what is no number; 0 for an empty line.
    std::optional<double> Number() const {
        const std::string typed = FromQt(text());
        return typed.empty() ? 0 : text::ParseNumber(typed);
    }
    void Mark(bool wrong) { MarkEntry(*lineEdit(), wrong); }

    std::function<void()> onEdited;

    QSize sizeHint() const override {
        const int width = (std::max(digits_, kFewestDigits) + 2) * fontMetrics().horizontalAdvance('0');
        QStyleOptionSpinBox option;
        initStyleOption(&option);
        const QSize inside(width, lineEdit()->sizeHint().height());
        return style()->sizeFromContents(QStyle::CT_SpinBox, &option, inside, this);
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void stepBy(int steps) override {
        const std::optional<double> number = Number();
        if (!number || text().isEmpty()) return;  // there is nothing to count from
        lineEdit()->setText(ToQt(Written(std::clamp(*number + steps, field_.Minimum(), field_.Maximum()))));
        lineEdit()->selectAll();
    }
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
    QValidator::State validate(QString& input, int& /*position*/) const override {
        static const QRegularExpression whole("^-?[0-9]*$");
        static const QRegularExpression broken("^-?[0-9.]*,?[0-9]*$");
        const QRegularExpression& form = field_.Decimals() == 0 ? whole : broken;
        return form.match(input).hasMatch() ? QValidator::Acceptable : QValidator::Invalid;
    }
    void wheelEvent(QWheelEvent* event) override { hasFocus() ? QAbstractSpinBox::wheelEvent(event) : event->ignore(); }

private:
    std::string Written(double number) const {
        return text::FormatDecimals(Currency::FromDouble(number), field_.Decimals(), false);
    }

    const NumberField& field_;
    int digits_;
};

class NumberWidget : public WidgetOf<NumberField, NumberBox> {
public:
    NumberWidget(NumberField& field, WidgetHost& host) : WidgetOf(field, host, new NumberBox(field)) {
        widget_->onEdited = [this] { Take(); };
        QObject::connect(widget_, &QAbstractSpinBox::editingFinished, [this] {
            if (Agrees()) widget_->Show(Shown().ShownText());
            widget_->Mark(!Agrees());
        });
    }
    void Refresh() override {
        if (!Agrees() || !widget_->hasFocus()) widget_->Show(Shown().ShownText());
        widget_->Mark(false);
    }
    QString Complaint() const override {
        if (Agrees()) return {};
        return ToQt("Il numero deve stare tra " + text::NumberText(Shown().Minimum()) + " e " +
                    text::NumberText(Shown().Maximum()) + ".");
    }

private:
    void Take() {
        const std::optional<double> number = widget_->Number();
        if (number) Host().Act([this, &number] { Shown().SetValue(*number); });
        if (Agrees()) widget_->Mark(false);
    }
    /// What stands in the line is the control's value.
    bool Agrees() const { return widget_->Number() == Shown().Value(); }
};

}  // namespace

std::unique_ptr<ControlWidget> MakeNumber(Control& control, WidgetHost& host) {
    return std::make_unique<NumberWidget>(As<NumberField>(control), host);
}

}  // namespace vlm::ui
