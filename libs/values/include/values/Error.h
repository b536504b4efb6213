#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace vlm {

/// What every operation of the library throws. The text is Italian and is shown to the user as it stands
/// ("Il messaggio tecnico dell'errore è: ..."); `Number` and `Source` travel with it to automation clients.
class Error : public std::runtime_error {
public:
    explicit Error(const std::string& description, std::int32_t number = 0, std::string source = {})
        : std::runtime_error(description), number_(number), source_(std::move(source)) {}

    std::int32_t Number() const noexcept { return number_; }
    const std::string& Source() const noexcept { return source_; }

private:
    std::int32_t number_;
    std::string source_;
};

/// A number that does not fit the width it is stored in. Numbers never wrap.
class OverflowError : public Error {
public:
    static constexpr std::int32_t kNumber = 6;
    explicit OverflowError(const std::string& description) : Error(description, kNumber) {}
};

/// A value whose text is not of the kind that is asked for.
class TypeMismatchError : public Error {
public:
    static constexpr std::int32_t kNumber = 13;
    explicit TypeMismatchError(const std::string& description) : Error(description, kNumber) {}
};

}  // namespace vlm
