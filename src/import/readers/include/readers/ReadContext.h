#pragma once

#include "elements/ArchiveMatcher.h"
#include "elements/ComuneFinder.h"
#include "elements/Findings.h"
#include "readers/ReadProgress.h"

namespace vlm {

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

}  // namespace vlm
