#pragma once

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

#include "qt/QtToolkit.h"
#include "support/FakeServices.h"
#include "support/SampleDialog.h"

namespace vlm::ui::test {

/// Windows with settings in memory, for looking at one dialog.
struct Screen {
    vlm::test::FakeServices::Settings settings;
    QtToolkit toolkit{settings};

    /// Shows the dialog, does `deeds` in its window and closes it.
    void Show(Dialog& dialog, const std::function<void(QWidget& window)>& deeds) {
        QTimer::singleShot(0, [&] {
            QWidget& window = *toolkit.TopWindow();
            window.activateWindow();
            EXPECT_TRUE(QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }));
            deeds(window);
            dialog.Close();
        });
        toolkit.ShowModal(dialog);
    }

    QWidget& WidgetOf(const Control& control) const { return toolkit.Find(control)->Widget(); }
    ControlWidget& Of(const Control& control) const { return *toolkit.Find(control); }
};

/// One dialog with a control of every kind, and windows to show it in.
class SampleShown : public testing::Test {
protected:
    void Show(const std::function<void(QWidget& window)>& deeds) { screen.Show(dialog, deeds); }
    void Click(const Control& control) { QTest::mouseClick(&screen.WidgetOf(control), Qt::LeftButton); }

    Screen screen;
    SampleDialog dialog;
};

/// Does `deeds` once a modal window of that kind is up, in the event loop that it runs.
template <class Window>
void WhenUp(const std::function<void(Window&)>& deeds) {
    QTimer::singleShot(0, [deeds] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        window != nullptr && window->isVisible() ? deeds(*window) : WhenUp<Window>(deeds);
    });
}

}  // namespace vlm::ui::test
