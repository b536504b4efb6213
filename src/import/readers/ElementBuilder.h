#pragma once

#include "readers/ReadContext.h"
#include "readers/SourceFormat.h"

namespace vlm {

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
    void Find(Findings::Kind kind, ElementColumn column, std::string_view value) {
        context_.findings.Add(line_, kind, column, value);
    }

    const SourceFormat& format_;
    ReadContext& context_;
    ElementList& elements_;
    std::uint64_t line_ = 0;
    std::string changed_;  // a cell's text that is not the source's own
};

}  // namespace vlm
