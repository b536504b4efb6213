#pragma once

#include <QWidget>

#include "dialogs/Toolkit.h"

namespace vlm::ui {

/// Shows a message over `parent` (null for none) and returns what the user answers; closing a question is a no.
Answer AskInWindow(const Message& message, QWidget* parent);

}  // namespace vlm::ui
