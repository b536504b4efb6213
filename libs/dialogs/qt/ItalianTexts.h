#pragma once

#include <QTranslator>

namespace vlm::ui {

/// The toolkit's own texts (buttons, choosers, menus of a text field) in Italian, without a translation file that a
/// machine may lack.
class ItalianTexts : public QTranslator {
public:
    QString translate(const char* context, const char* source, const char* disambiguation, int count) const override;
    bool isEmpty() const override { return false; }
};

}  // namespace vlm::ui
