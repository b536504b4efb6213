#pragma once

#include <QLineEdit>
#include <QWidget>
#include <functional>
#include <string>

namespace vlm::ui {

/// A field to search for a text in what a window shows: Return goes on to the next place, Shift+Return back.
class SearchBar : public QWidget {
public:
    explicit SearchBar(QWidget* parent = nullptr);

    /// True when the text was found.
    std::function<bool(const std::string& text, bool backwards)> onSearch;
    void Search(bool backwards);
    QLineEdit& Field() { return *field_; }

private:
    QLineEdit* field_;
};

}  // namespace vlm::ui
