#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/SqlTokens.h"

/// The statements of a batch, told apart by their tokens.
namespace vlm::host::tds {

using Tokens = std::vector<data::SqlToken>;

/// Each one closed by a token of kind End. A semicolon parts them, or a word that begins a statement. The definition
/// of a view or a procedure takes the rest of the batch; IF and BEGIN ... END take in what they hold.
std::vector<Tokens> SplitBatch(const Tokens& batch);

/// Whether a token's word begins a statement wherever it stands alone.
bool BeginsStatement(const data::SqlToken& token);

/// The tokens from `first` up to `last`, closed by one of kind End.
Tokens Part(const Tokens& tokens, std::size_t first, std::size_t last);
/// The statement as text. Literals and names stand as they were written.
std::string Joined(const Tokens& tokens);

/// "@Name" is two tokens; the variable's name when they stand at `at`, else "".
std::string_view VariableAt(const Tokens& tokens, std::size_t at);

}  // namespace vlm::host::tds
