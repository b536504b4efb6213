#pragma once

#include <string>
#include <string_view>

#include "files/StagedFile.h"
#include "values/CodePage1252.h"

namespace vlm::files {

/// Lines of text in the Windows ANSI code page, each ended by carriage return and line feed, written to a file that
/// comes into place whole (see StagedFile).
class LineWriter {
public:
    void Open(const std::string& path) { file_.Open(path); }
    bool IsOpen() const noexcept { return file_.IsOpen(); }
    void WriteLine(std::string_view utf8) {
        ansi_.clear();
        text::AppendAnsi(utf8, ansi_);
        ansi_ += "\r\n";
        file_.Output().Write(ansi_);
    }

    void Deliver() { file_.Deliver(); }
    void Keep() noexcept { file_.Keep(); }
    void Revert() noexcept { file_.Revert(); }

private:
    StagedFile file_;
    std::string ansi_;  // kept between lines so that a line costs no allocation
};

}  // namespace vlm::files
