#include <QIcon>
#include <gtest/gtest.h>

#include "qt/QtApplication.h"

/// The windows are real ones without a screen, unless the environment names another platform.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    vlm::ui::QtApplication application(argc, argv);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setEffectEnabled(Qt::UI_AnimateCombo, false);
    QApplication::setDoubleClickInterval(0);  // a list takes no click that comes as quickly as the one that opened it
    // Signs keep the style's own pictures: looking for those of a theme took longer than all the tests.
    QIcon::setThemeSearchPaths({":/none"});
    QIcon::setFallbackSearchPaths({":/none"});
    return RUN_ALL_TESTS();
}
