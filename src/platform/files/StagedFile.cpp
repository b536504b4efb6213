#include "platform/files/StagedFile.h"

#include <filesystem>

#include "platform/Error.h"
#include "platform/files/Paths.h"

namespace vlm::files {

namespace fs = std::filesystem;

namespace {

bool EndsWith(const std::string& name, const std::string& suffix) {
    return name.size() > suffix.size() && name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0;
}

fs::path FolderOf(const fs::path& file) { return file.parent_path().empty() ? fs::path(".") : file.parent_path(); }

void RemoveLeftovers(const fs::path& folder) noexcept {
    try {
        std::error_code error;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
            const std::string name = entry.path().filename().string();
            const bool ours = name.front() == '.' &&
                              (EndsWith(name, StagedFile::kPartSuffix) || EndsWith(name, StagedFile::kEarlierSuffix));
            FileLock lock;
            if (ours && lock.Take(entry.path().string())) fs::remove(entry.path(), error);
        }
    } catch (...) {  // a leftover that stays hidden does no harm
    }
}

[[noreturn]] void Fail(const std::string& path, const std::error_code& error) {
    throw Error("Impossibile scrivere il file " + path + ": " + ReasonOf(error.value()) + ".");
}

/// A second name for what stands at the target, so that the target itself never vanishes.
void KeepAside(const std::string& target, const std::string& earlier) {
    std::error_code error;
    if (fs::exists(earlier, error)) {
        FileLock lock;
        if (!lock.Take(earlier)) Fail(target, std::make_error_code(std::errc::operation_would_block));
        fs::remove(earlier, error);
    }
    fs::create_hard_link(target, earlier, error);
    if (!error) return;
    fs::copy_file(target, earlier, error);
    if (error) Fail(target, error);
}

}  // namespace

void StagedFile::Open(const std::string& targetPath) {
    Revert();
    const fs::path target = ToNative(targetPath);
    RemoveLeftovers(FolderOf(target));
    target_ = target.string();
    std::error_code ignored;
    if (fs::is_directory(target, ignored)) Fail(targetPath, std::make_error_code(std::errc::is_a_directory));
    const std::string hidden = (target.parent_path() / ("." + target.filename().string())).string();
    part_ = hidden + kPartSuffix;
    earlier_ = hidden + kEarlierSuffix;
    output_.Open(part_, targetPath);
    state_ = State::Writing;
}

void StagedFile::Deliver() {
    if (state_ != State::Writing) return;
    output_.Close();
    std::error_code error;
    if (fs::exists(target_, error)) {
        KeepAside(target_, earlier_);
        earlierLock_.Take(earlier_);
    } else {
        earlier_.clear();
    }
    fs::rename(part_, target_, error);
    if (error) Fail(target_, error);
    // The database's commit lasts; so must the file's name.
    SyncFolder(FolderOf(target_).string());
    state_ = State::Delivered;
}

void StagedFile::Keep() noexcept {
    if (state_ != State::Delivered) return;
    std::error_code error;
    if (!earlier_.empty()) fs::remove(earlier_, error);
    earlierLock_.Release();
    state_ = State::Idle;
}

void StagedFile::Revert() noexcept {
    if (state_ == State::Idle) return;
    output_.Abandon();
    std::error_code error;
    if (state_ == State::Writing) {
        fs::remove(part_, error);
        if (!earlier_.empty()) fs::remove(earlier_, error);
    } else if (earlier_.empty()) {
        fs::remove(target_, error);
    } else {
        fs::rename(earlier_, target_, error);
    }
    earlierLock_.Release();
    state_ = State::Idle;
}

}  // namespace vlm::files
