#pragma once

#include <QKeySequence>
#include <gtest/gtest.h>
#include <utility>

#include "ControlWidget.h"
#include "controls/QtText.h"
#include "support/QtUser.h"
#include "support/SampleDialog.h"
#include "support/Words.h"

namespace vlm::ui::test {

/// Presses keys where the focus is, or in the window on top: "Ctrl+End" is a key, "'ab" types two letters.
inline void Keys(const std::string& keys) {
    for (const std::string& each : vlm::test::WordsOf(keys)) {
        QWidget* const top = QApplication::activeModalWidget();
        QWidget* const focus = top->focusWidget() != nullptr ? top->focusWidget() : top;
        if (each[0] == '\'') {
            QTest::keyClicks(focus, ToQt(each.substr(1)));
        } else {
            const QKeyCombination key = QKeySequence(ToQt(each))[0];
            QTest::keyClick(focus, key.key(), key.keyboardModifiers());
        }
    }
}

/// Windows with settings in memory, and a dialog with a control of every kind to show in them.
class Windows : public testing::Test {
protected:
    /// Shows the dialog, does `deeds` in its window and closes it.
    void Show(Dialog& shown, const std::function<void(QWidget& window)>& deeds) {
        QTimer::singleShot(0, [&] {
            QWidget& window = *toolkit.TopWindow();
            window.activateWindow();
            EXPECT_TRUE(QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }));
            deeds(window);
            shown.Close();
        });
        toolkit.ShowModal(shown);
    }
    void Show(const std::function<void(QWidget& window)>& deeds) { Show(dialog, deeds); }
    ControlWidget& Of(const Control& control) const { return *toolkit.Find(control); }
    QWidget& WidgetOf(const Control& control) const { return Of(control).Widget(); }
    void Click(const Control& control) { QTest::mouseClick(&WidgetOf(control), Qt::LeftButton); }
    /// The control that has the focus, "" for none; frames have none.
    std::string Focus(const Dialog& shown) const {
        for (const Control* each : shown.Controls()) {
            ControlWidget* const widget = toolkit.Find(*each);
            if (widget == nullptr || each->Kind() == ControlKind::Frame) continue;
            for (const QWidget* at = QApplication::focusWidget(); at != nullptr; at = at->parentWidget()) {
                if (at == &widget->Widget()) return each->Name();
            }
        }
        return {};
    }
    /// The calls of the dialog but for keys that came up, which are forgotten.
    static std::vector<std::string> Runs(SampleDialog& shown) {
        std::erase_if(shown.calls, [](const std::string& call) { return call.starts_with("up:"); });
        return std::exchange(shown.calls, {});
    }

    MemorySettings settings;
    QtToolkit toolkit{settings};
    SampleDialog dialog;
};

}  // namespace vlm::ui::test
