#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>

#include "elements/ArchiveMatcher.h"
#include "elements/ComuneFinder.h"
#include "elements/Findings.h"
#include "readers/SourceFormat.h"
#include "workbooks/Workbook.h"

namespace vlm {

/// Tells how much of a source is read, in percent: never more than 100, never less than before on the same sheet, and
/// nothing while the size of the source is not known.
class ReadProgress {
public:
    using Listener = std::function<void(std::int32_t percent)>;

    explicit ReadProgress(const Listener& listener) : listener_(listener) {}

    void Restart() noexcept { last_ = 0; }
    void Raise(std::uint64_t done, std::uint64_t whole) {
        if (whole == 0 || !listener_) return;
        last_ = std::max(last_, static_cast<std::int32_t>(std::min<std::uint64_t>(done * 100 / whole, 100)));
        listener_(last_);
    }

private:
    const Listener& listener_;
    std::int32_t last_ = 0;
};

/// What one read works with, made when it starts and gone when it ends: nothing of it serves the next read.
struct ReadContext {
    ReadContext(const Library& lib, const ReadProgress::Listener& listener)
        : library(lib), comuni(lib), archive(lib), progress(listener) {}

    const Library& library;
    ComuneFinder comuni;
    ArchiveMatcher archive;
    ReadProgress progress;
    Findings findings;
};

/// Reads a whole source into a new element list. Throws Error for a source that cannot be read and for a failing
/// query; what single cells have wrong goes into the context's findings.
ElementListPtr ReadText(const SourceFormat& format, const std::string& path, ReadContext& context);
ElementListPtr ReadWorkbook(const SourceFormat& format, const std::string& path, ReadContext& context,
                            const files::WorkbookOpener& opener);

}  // namespace vlm
