#pragma once

struct sqlite3;

namespace vlm::data {

/// Gives a connection the collation and the functions that translated statements use, and its LIKE. Throws Error.
void RegisterFunctions(sqlite3* database);

}  // namespace vlm::data
