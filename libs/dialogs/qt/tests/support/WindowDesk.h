#pragma once

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <utility>

#include "ControlWidget.h"
#include "qt/QtToolkit.h"
#include "support/SampleDialog.h"

namespace vlm::ui::test {

struct MemorySettings : sys::SettingsStore {
    std::map<std::string, std::string> values;  // by key
    std::string Get(const std::string&, const std::string&, const std::string& key,
                    const std::string& otherwise) const override {
        const auto at = values.find(key);
        return at == values.end() ? otherwise : at->second;
    }
    void Save(const std::string&, const std::string&, const std::string& key, const std::string& value) override {
        values[key] = value;
    }
};

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
    /// The calls of the dialog but for keys that came up, which are forgotten.
    static std::vector<std::string> Runs(SampleDialog& shown) {
        std::erase_if(shown.calls, [](const std::string& call) { return call.starts_with("up:"); });
        return std::exchange(shown.calls, {});
    }

    MemorySettings settings;
    QtToolkit toolkit{settings};
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
