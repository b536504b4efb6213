#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace vlm::files {

/// Bytes written to a file, buffered. The file is held exclusively while it is open. Every failure, also the one that
/// shows only when the buffer reaches the disk, throws Error naming the path.
class OutputFile {
public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    /// Creates the file or empties it. Errors name `shownPath`, the file that the user knows of.
    void Open(const std::string& path, const std::string& shownPath);
    bool IsOpen() const noexcept { return file_ != nullptr; }
    void Write(std::string_view bytes);
    /// Appends all bytes of another file.
    void CopyFrom(const std::string& sourcePath);
    /// Brings everything to the disk, then closes.
    void Close();
    /// Closes without caring for what is written: the file is about to be thrown away.
    void Abandon() noexcept;

private:
    [[noreturn]] void Fail(const char* what) const;

    std::FILE* file_ = nullptr;
    std::string path_;
};

}  // namespace vlm::files
