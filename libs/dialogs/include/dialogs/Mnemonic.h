#pragma once

#include <string>
#include <string_view>

/// Captions carry "&" before the letter that, with Alt, reaches their control; "&&" is the character itself.
namespace vlm::ui {

/// The caption as it is read, without the marks.
std::string WithoutMnemonic(std::string_view caption);

/// The mnemonic in capitals when it is a Latin letter or a digit (the code of its key), 0 when there is none.
int MnemonicKey(std::string_view caption) noexcept;

}  // namespace vlm::ui
