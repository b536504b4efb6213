#pragma once

#include <QApplication>
#include <memory>
#include <string>

namespace vlm::ui {

/// The program as the desktop sees it: one for the life of a program that shows windows. Its texts are Italian whatever
/// the machine's language; numbers keep the plain form for the rest of the program.
class QtApplication {
public:
    QtApplication(int& argc, char** argv);
    ~QtApplication();

    /// Why no window can be shown, "" when one can. Asked before the application is made: without a display it would
    /// end the program.
    static std::string Hindrance();

private:
    std::unique_ptr<QTranslator> texts_;
    QApplication application_;
};

}  // namespace vlm::ui
