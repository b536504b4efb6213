#pragma once

#include <string>
#include <utility>
#include <vector>

#include "elements/ArchiveMatcher.h"
#include "readers/SourceFormat.h"

namespace vlm {

/// What a source says of its patients, collected to ask the archive for them alone.
class SourceKeys {
public:
    explicit SourceKeys(const SourceFormat& format)
        : byCode_(format.match == MatchRule::CodeThenFiscalCode && !format.onlyExisting) {}

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
