#pragma once

#include <string>
#include <string_view>

#include "files/LineWriter.h"
#include "frame/Library.h"

namespace vlm {

/// The file of a run that keeps the lines written so far also when the run ends on an error. It is written under a
/// hidden name and comes into place when it is closed; a run that is killed leaves what stood there before, and so
/// does one that could not write all of its lines (a full disk).
class RunFile {
public:
    RunFile() = default;
    RunFile(const RunFile&) = delete;
    RunFile& operator=(const RunFile&) = delete;
    /// Closes an open file; an error is under way then, and one of the closing is not told.
    ~RunFile();

    void Open(const std::string& path);
    /// An empty line is not written.
    void WriteLine(std::string_view line);
    /// Brings the file into place. Throws Error naming the path.
    void Close();

private:
    files::LineWriter writer_;
    bool torn_ = false;  // what was written may end in the middle of a line
};

/// A path for a new file in a folder below the host's working folder: a fresh temporary name ("rad1F3A0.tmp") that no
/// file has yet. The folder is created when it is missing; Error naming it when it cannot be.
std::string FreshWorkFile(const Library& library, std::string_view folder);

}  // namespace vlm
