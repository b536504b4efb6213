#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "files/Machine.h"

namespace vlm::files {

/// Bytes written to a file, buffered. The file is held exclusively while it is open. Every failure, also the one that
/// shows only when the buffer reaches the disk, throws Error naming the path.
class OutputFile {
public:
    /// Creates the file or empties it. Errors name `shownPath`, the file that the user knows of.
    void Open(const std::string& path, const std::string& shownPath);
    bool IsOpen() const noexcept { return file_ != nullptr; }
    void Write(std::string_view bytes);
    /// Appends all bytes of another file.
    void CopyFrom(const std::string& sourcePath);
    /// Brings everything to the disk, then closes.
    void Close();
    /// Closes without caring for what is written: the file is about to be thrown away.
    void Abandon() noexcept { file_.reset(); }

private:
    [[noreturn]] void Fail(const char* what) const;

    OpenFile file_;
    std::string path_;
};

/// A file that is written under a hidden name beside its target and put in place whole: who looks at the target sees
/// what stood there before or the whole new file, also after a crash or a full disk. What a killed run left behind in
/// the folder is removed by the next one.
///
/// Write to Output(), then Deliver(). Until Keep() the earlier file is kept aside and Revert() brings it back; going
/// out of scope before Keep() reverts.
class StagedFile {
public:
    StagedFile() = default;
    StagedFile(const StagedFile&) = delete;
    StagedFile& operator=(const StagedFile&) = delete;
    ~StagedFile() { Revert(); }

    /// Throws Error when the hidden file cannot be created.
    void Open(const std::string& targetPath);
    bool IsOpen() const noexcept { return state_ != State::Idle; }
    OutputFile& Output() noexcept { return output_; }
    /// Fills the hidden file with the bytes of another file.
    void CopyFrom(const std::string& sourcePath) { output_.CopyFrom(sourcePath); }

    void Deliver();
    void Keep() noexcept;
    void Revert() noexcept;

    static constexpr const char* kPartSuffix = ".aslpart";
    static constexpr const char* kEarlierSuffix = ".aslprec";

private:
    enum class State { Idle, Writing, Delivered };

    OutputFile output_;
    State state_ = State::Idle;
    std::string shown_;  // the target as the user knows it
    std::filesystem::path target_, part_;
    std::filesystem::path earlier_;  // empty when nothing stood at the target
    FileLock earlierLock_;
};

}  // namespace vlm::files
