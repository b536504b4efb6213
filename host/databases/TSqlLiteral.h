#pragma once

#include <string>

#include "databases/DatabaseWriter.h"

namespace vlm::host {

/// A cell as T-SQL writes it for a column of its type: a text in single quotes, with the mark of Unicode where it is
/// not plain ASCII; a moment as 'YYYYMMDD' or 'YYYYMMDD HH:MM:SS', which no session's language misreads; an amount with
/// four digits after the point; a truth value as 0 or 1. Throws Error naming the column for a value that it cannot
/// hold.
std::string TSqlLiteral(const DatabaseWriter::Cell& cell, const Column& column);

}  // namespace vlm::host
