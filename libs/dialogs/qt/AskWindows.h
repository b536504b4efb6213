#pragma once

#include <QStringList>
#include <QWidget>
#include <optional>
#include <string>

#include "dialogs/Toolkit.h"

/// Windows of the toolkit's own that ask the user, over `parent` (null for none).
namespace vlm::ui {

/// Returns what the user answers; closing a question is a no.
Answer AskInWindow(const Message& message, QWidget* parent);

/// These return a full path as the machine writes it, or nothing when the user cancelled. A file need not be there yet:
/// the same chooser also names files to be written.
std::optional<std::string> ChooseFileInWindow(const FileChoice& choice, QWidget* parent);
std::optional<std::string> ChooseFolderInWindow(const std::string& startFolder, QWidget* parent);
/// Where a print goes; asks before it goes over a file.
std::optional<std::string> ChoosePrintFileInWindow(const std::string& title, QWidget* parent);

/// "name|pattern;pattern|..." as a chooser's entries: "name (pattern pattern)"; "*.*" is every file, also one without a
/// point.
QStringList NameFilters(const std::string& filter);

}  // namespace vlm::ui
