#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vlm::data::odbc {

/// An ODBC connection text: `Driver={FreeTDS};Server=127.0.0.1;Database=Studio0012;UID=...;PWD=...`. A value in braces
/// may hold anything ("}" doubled). Keys compare without regard to case; of several of one name the first counts, as
/// for the drivers. A value goes on to the driver as it was written.
class OdbcText {
public:
    /// Throws Error for a piece that is no `Key=Value`; it names the key at most, because values may be secret.
    explicit OdbcText(std::string_view text);

    /// "" when the key is absent.
    std::string ValueOf(std::string_view key) const;
    /// Takes the place of the value that the key has, if any.
    void Set(std::string_view key, std::string_view value);
    /// The key's value, and no trace of it left.
    std::string Take(std::string_view key);

    std::string Text() const;
    /// The values that no message may show.
    std::vector<std::string> Secrets() const;

private:
    struct Entry {
        std::string key, value;
        std::string source;  // the value as it was written: not every driver takes braces
    };
    std::vector<Entry> entries_;
};

/// The statement with the schema written out where a database is named without one: `Aldra..Comune` becomes
/// `Aldra.dbo.Comune`, for engines that do not take a column's name with an empty schema. Literals, comments and all
/// else stay as they are.
std::string WithSchema(std::string_view sql);

}  // namespace vlm::data::odbc
