#pragma once

#include <string>
#include <utility>
#include <vector>

#include "readers/SourceReaders.h"

namespace vlm {

/// Whether the patients of a source are looked for by their codes before their fiscal codes.
inline bool MatchesByCode(const SourceFormat& format) {
    return format.match == MatchRule::CodeThenFiscalCode && !format.onlyExisting;
}

/// Turns what the rows of a source say into elements: cells by their rules, the comune found, the patient matched with
/// the archive, selected when the archive does not have it.
class ElementBuilder {
public:
    ElementBuilder(const SourceFormat& format, ReadContext& context, ElementList& elements)
        : format_(format), context_(context), elements_(elements) {}

    /// `line` of the source, from 1. A row that the format leaves out adds nothing.
    void Add(const RawElement& raw, std::uint64_t line);

private:
    std::int32_t Match(const RawElement& raw);
    void SetCell(const SourceColumn& column, std::string_view value);
    void SetText(const SourceColumn& column, std::string_view value);
    void SetDate(const SourceColumn& column, std::string_view value);
    void SetComune();
    void SetComuneByIstat(std::string_view code);
    void NoteFinding(Findings::Kind kind, ElementColumn column, std::string_view value) {
        context_.findings.Add(line_, kind, column, value);
    }

    const SourceFormat& format_;
    ReadContext& context_;
    ElementList& elements_;
    std::uint64_t line_ = 0;
    std::string changed_;  // a cell's text that is not the source's own
};

/// What a source says of its patients, collected to ask the archive for them alone.
class SourceKeys {
public:
    explicit SourceKeys(const SourceFormat& format) : byCode_(MatchesByCode(format)) {}

    void Add(const RawElement& raw) {
        if (byCode_) codes_.emplace_back(raw[ElementColumn::Codice]);
        fiscalCodes_.emplace_back(raw[ElementColumn::CodiceFiscale]);
    }
    void Ask(ArchiveMatcher& archive) { archive.AskFor(std::move(codes_), std::move(fiscalCodes_)); }

private:
    bool byCode_;
    std::vector<std::string> codes_;
    std::vector<std::string> fiscalCodes_;
};

}  // namespace vlm
