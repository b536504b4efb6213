#include "controls/EntryMark.h"

namespace vlm::ui {

void MarkEntry(QWidget& field, bool wrong) {
    QPalette palette;
    if (wrong) {
        palette.setColor(QPalette::Base, QColor(255, 222, 217));
        palette.setColor(QPalette::Text, QColor(120, 0, 0));
    }
    field.setPalette(palette);
}

}  // namespace vlm::ui
