#include "qt/QtApplication.h"

#include <QLocale>
#include <clocale>

#include "ItalianTexts.h"

namespace vlm::ui {

QtApplication::QtApplication(int& argc, char** argv)
    : texts_(std::make_unique<ItalianTexts>()), application_(argc, argv) {
    std::setlocale(LC_NUMERIC, "C");  // the application takes over the machine's, decimal comma and all
    std::setlocale(LC_TIME, "C");
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    QApplication::setApplicationDisplayName("Aldra");
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::installTranslator(texts_.get());
}

QtApplication::~QtApplication() { QApplication::removeTranslator(texts_.get()); }

std::string QtApplication::Hindrance() {
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    const bool needsDisplay = platform.isEmpty() || platform.startsWith("xcb") || platform.startsWith("wayland");
    if (!needsDisplay || !qgetenv("DISPLAY").isEmpty() || !qgetenv("WAYLAND_DISPLAY").isEmpty()) return {};
    return "Nessuno schermo su cui aprire finestre: usare --ui console.";
}

}  // namespace vlm::ui
