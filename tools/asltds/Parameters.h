#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Statements.h"
#include "WireBytes.h"

namespace vlm::host::tds {

/// A value that a call brings, or a statement's variable.
struct Parameter {
    std::string name;                  // without its "@"; "" when it has none
    std::optional<std::string> value;  // a number's digits, or a text's content; nothing for Null
    bool isText = false;

    /// As it stands in a statement.
    data::SqlToken Literal() const;
};

/// Reads the next parameter of a call. Throws ProtocolError for bytes that are none, vlm::Error for a type that no
/// statement of the system has.
Parameter ReadParameter(ByteReader& reader, bool largeTexts);

/// The statement with the parameters in the place of their variables, which are told by name, else by the order of
/// `definitions` ("@P1 int, @P2 varchar(20)"). Variables without a value are left.
Tokens WithParameters(Tokens statement, const Tokens& definitions, const std::vector<Parameter>& values);

}  // namespace vlm::host::tds
