#include "QtDialog.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QToolTip>
#include <algorithm>

#include "InputEvents.h"
#include "controls/QtText.h"

namespace vlm::ui {

namespace {

constexpr int kNarrowest = 440;  // pixels at 96 dots an inch
constexpr const char* kApplication = "Aldra";
constexpr const char* kSection = "Settings";
constexpr int kLeastSide = 100;  // of a window that was kept
constexpr int kMostSide = 20000;

bool Resizes(const Dialog& dialog) {
    return std::any_of(dialog.Controls().begin(), dialog.Controls().end(),
                       [](const Control* control) { return control->Kind() == ControlKind::Grid; });
}

bool IsReturn(KeyEvent key) { return key.code == kKeyReturn && key.shift == kShiftNone; }

/// Alt with a letter that is nobody's mnemonic types nothing.
bool IsAltCharacter(KeyEvent key) {
    const bool character = (key.code >= 'A' && key.code <= 'Z') || (key.code >= '0' && key.code <= '9');
    return character && key.shift == kAlt;
}

}  // namespace

DialogWindow::DialogWindow(QWidget* parent, bool resizes) : QDialog(parent) {
    setWindowModality(Qt::ApplicationModal);
    if (resizes) setWindowFlag(Qt::WindowMaximizeButtonHint);
}

void DialogWindow::ShowModal() {
    if (ended_) return;
    show();
    activateWindow();
    loop_.exec();
    hide();
}

void DialogWindow::End() {
    ended_ = true;
    loop_.quit();
}

void DialogWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!ended_) onClose();
}

void DialogWindow::keyPressEvent(QKeyEvent* event) { event->ignore(); }

QtDialog::QtDialog(Dialog& dialog, sys::SettingsStore& settings, QWidget* parent)
    : dialog_(dialog), settings_(settings), window_(parent, Resizes(dialog)) {
    dialog_.Attach(this);
    window_.onClose = [this] { Act([this] { dialog_.FrameClose(); }); };
}

QtDialog::~QtDialog() { dialog_.Attach(nullptr); }

void QtDialog::Show() {
    dialog_.Opening();
    Act([this] {
        Build();
        if (dialog_.IsClosing()) return;
        qApp->installEventFilter(this);
        window_.ShowModal();
    });
    qApp->removeEventFilter(this);
    KeepSize();
    if (!failure_) return dialog_.Closed();
    try {
        dialog_.Closed();
    } catch (...) {  // the error that led here is the one to tell
    }
    std::rethrow_exception(failure_);
}

void QtDialog::Build() {
    WidgetHost& host = *this;
    form_ = std::make_unique<DialogForm>(dialog_, host, window_);
    window_.setObjectName(ToQt(dialog_.Name()));
    window_.setWindowTitle(ToQt(WithoutMnemonic(dialog_.Title())));
    window_.setMinimumWidth(std::max(kNarrowest, window_.minimumSizeHint().width()));
    naturalSize_ = window_.sizeHint().expandedTo({kNarrowest, 0});
    const QSize screen = window_.screen()->availableGeometry().size() * 0.95;
    window_.resize(KeptSize().boundedTo(screen));
    naturalSize_ = window_.size();
    PlaceFocus();
}

/// Where the dialog moved it while it opened, else to the first control that can have it.
void QtDialog::PlaceFocus() {
    if (focusWanted_ != nullptr) {
        if (ControlWidget* widget = Find(*focusWanted_)) return widget->TakeFocus();
    }
    for (ControlWidget* widget : form_->Widgets()) {
        const Control& control = widget->Shown();
        if (widget->FocusStops().empty() || !dialog_.IsVisible(control) || !dialog_.IsEnabled(control)) continue;
        return widget->TakeFocus();
    }
}

/// The natural size when none was kept or what stands there is no size.
QSize QtDialog::KeptSize() const {
    try {
        const std::string kept = settings_.Get(kApplication, kSection, "Window." + dialog_.Name(), "");
        const QStringList sides = ToQt(kept).split('x');
        const auto possible = [](int side) { return side >= kLeastSide && side <= kMostSide; };
        const QSize size(sides.value(0).toInt(), sides.value(1).toInt());
        if (sides.size() == 2 && possible(size.width()) && possible(size.height())) return size;
    } catch (const std::exception&) {  // settings that cannot be read kept nothing
    }
    return naturalSize_;
}

void QtDialog::KeepSize() {
    if (form_ == nullptr || window_.isMaximized() || window_.size() == naturalSize_) return;
    try {
        settings_.Save(kApplication, kSection, "Window." + dialog_.Name(),
                       std::to_string(window_.width()) + "x" + std::to_string(window_.height()));
    } catch (const std::exception&) {  // a size that is not kept is no error of the dialog
    }
}

void QtDialog::ControlChanged(Control& control) {
    if (form_ == nullptr) return;
    form_->Follow(control);
    // Texts that come and go during work are painted while it lasts. Work may be as short as a look at a file while its
    // path is being typed: the keys that follow wait.
    const bool working = QApplication::overrideCursor() != nullptr;
    const bool tells = control.Kind() == ControlKind::Label || control.Kind() == ControlKind::Progress;
    if (working && tells) QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtDialog::FocusMoved(Control& control) {
    focusWanted_ = &control;
    if (form_ == nullptr) return;
    if (ControlWidget* widget = Find(control)) widget->TakeFocus();
}

void QtDialog::Repaint() {
    ++looks_;
    QApplication::processEvents();
    --looks_;
}

void QtDialog::Act(const std::function<void()>& action) {
    try {
        action();
    } catch (...) {
        if (!failure_) failure_ = std::current_exception();
        dialog_.Close();
        window_.End();
    }
}

void QtDialog::Click(Button& button) {
    if (IsHeldUp(button)) return;
    Act([&button] { button.Click(); });
}

bool QtDialog::IsHeldUp(const Button& button) {
    const auto& own = dialog_.Buttons();
    if (&button == dialog_.CancelButton() || std::find(own.begin(), own.end(), &button) == own.end()) return false;
    for (ControlWidget* widget : form_->Widgets()) {
        const QString complaint = widget->Complaint();
        if (complaint.isEmpty() || !dialog_.IsVisible(widget->Shown())) continue;
        widget->TakeFocus();
        QApplication::beep();
        const QWidget& field = widget->Widget();
        QToolTip::showText(field.mapToGlobal(QPoint(0, field.height())), complaint, &window_);
        return true;
    }
    return false;
}

Control* QtDialog::Focus() const { return form_->ControlOf(window_.focusWidget()); }

/// A key that the focus leaves alone goes on to the widgets around it; the dialog has seen it then.
bool QtDialog::IsForFocus(const QObject* receiver) const {
    if (!receiver->isWidgetType() || static_cast<const QWidget*>(receiver)->window() != &window_) return false;
    const QWidget* focus = window_.focusWidget();
    return receiver == (focus != nullptr ? focus : &window_);
}

bool QtDialog::IsLost(const QObject* receiver, const QEvent& event) const {
    if (looks_ == 0) return false;
    ControlWidget* const cancels = dialog_.CancelButton() != nullptr ? Find(*dialog_.CancelButton()) : nullptr;
    return IsLostDuringWork(receiver, event, cancels != nullptr ? &cancels->Widget() : nullptr);
}

bool QtDialog::eventFilter(QObject* receiver, QEvent* event) {
    if (IsLost(receiver, *event)) return true;
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
    if (dialog_.IsClosing() || !IsForFocus(receiver)) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (event->type() == QEvent::KeyPress) return KeyPressed(key);
    if (!key.isAutoRepeat()) KeyReleased(key);
    return false;
}

bool QtDialog::SearchTakes(const QKeyEvent& event) {
    SearchBar* search = form_->Search();
    if (search == nullptr || window_.focusWidget() != &search->Field()) return false;
    if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter) return false;
    search->Search(event.modifiers() & Qt::ShiftModifier);
    return true;
}

bool QtDialog::KeyPressed(const QKeyEvent& event) {
    const KeyEvent key = KeyOf(event);
    if (key.code == kKeyNone) return false;
    if (SearchTakes(event)) return true;
    Control* focus = Focus();
    if (IsReturn(key)) {
        // In a text of several lines it begins a line.
        if (focus != nullptr && focus->Kind() == ControlKind::Text && As<TextField>(*focus).multiLine) return false;
        const bool onButton = focus != nullptr && focus->Kind() == ControlKind::Button;
        const Button* button = onButton ? &As<Button>(*focus) : dialog_.DefaultButton();
        if (button != nullptr && IsHeldUp(*button)) return true;
    }
    bool taken = false;
    Act([&] { taken = dialog_.KeyDown(focus, key); });
    return taken || dialog_.IsClosing() || IsAltCharacter(key);
}

void QtDialog::KeyReleased(const QKeyEvent& event) {
    const KeyEvent key = KeyOf(event);
    if (key.code == kKeyNone) return;
    Act([&] { dialog_.KeyUp(Focus(), key); });
}

}  // namespace vlm::ui
