#include "files/StagedFile.h"

#include <array>
#include <cerrno>
#include <filesystem>

#include "files/Paths.h"
#include "values/Error.h"

namespace vlm::files {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kBufferSize = 256 * 1024;

bool EndsWith(const std::string& name, const std::string& suffix) {
    return name.size() > suffix.size() && name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0;
}

fs::path FolderOf(const fs::path& file) { return file.parent_path().empty() ? fs::path(".") : file.parent_path(); }

void RemoveLeftovers(const fs::path& folder) noexcept {
    try {
        std::error_code error;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
            const std::string name = TextOf(entry.path().filename());
            const bool ours = name.front() == '.' &&
                              (EndsWith(name, StagedFile::kPartSuffix) || EndsWith(name, StagedFile::kEarlierSuffix));
            FileLock lock;
            if (ours && lock.Take(entry.path())) fs::remove(entry.path(), error);
        }
    } catch (...) {  // a leftover that stays hidden does no harm
    }
}

[[noreturn]] void Fail(const std::string& path, const std::error_code& error) {
    throw Error("Impossibile scrivere il file " + path + ": " + ReasonOf(error) + ".");
}

void RemoveUnused(const fs::path& file, const std::string& shown) {
    std::error_code error;
    if (!fs::exists(file, error)) return;
    FileLock lock;
    if (!lock.Take(file)) Fail(shown, std::make_error_code(std::errc::operation_would_block));
    fs::remove(file, error);
}

}  // namespace

void OutputFile::Fail(const char* what) const {
    throw Error(std::string("Impossibile ") + what + " il file " + path_ + ": " + ReasonOf(errno) + ".");
}

void OutputFile::Open(const std::string& path, const std::string& shownPath) {
    Abandon();
    path_ = shownPath;
    file_ = machine::OpenToWrite(ToNative(path));
    if (!file_) Fail("aprire");
    std::setvbuf(file_.get(), nullptr, _IOFBF, kBufferSize);
}

void OutputFile::Write(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) Fail("scrivere");
}

void OutputFile::CopyFrom(const std::string& sourcePath) {
    const OpenFile source = machine::OpenToRead(ToNative(sourcePath));
    const auto unreadable = [&sourcePath] {
        return Error("Impossibile leggere il file " + sourcePath + ": " + ReasonOf(errno) + ".");
    };
    if (!source) throw unreadable();
    if (std::fflush(file_.get()) != 0) Fail("scrivere");
    const machine::Copied copied = machine::CopyAll(source.get(), file_.get());
    if (copied == machine::Copied::Failed) Fail("scrivere");
    if (copied == machine::Copied::All) return;
    std::array<char, 64 * 1024> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), source.get())) {
        Write({block.data(), count});
    }
    if (std::ferror(source.get()) != 0) throw unreadable();
}

void OutputFile::Close() {
    if (!file_) return;
    const bool flushed = std::ferror(file_.get()) == 0 && std::fflush(file_.get()) == 0 && machine::Sync(file_.get());
    const int error = errno != 0 ? errno : EIO;
    const bool closed = std::fclose(file_.release()) == 0;
    if (!flushed) errno = error;
    if (!flushed || !closed) Fail("scrivere");
}

void StagedFile::Open(const std::string& targetPath) {
    Revert();
    const fs::path target = ToNative(targetPath);
    RemoveLeftovers(FolderOf(target));
    target_ = target;
    shown_ = targetPath;
    std::error_code ignored;
    if (fs::is_directory(target, ignored)) Fail(targetPath, std::make_error_code(std::errc::is_a_directory));
    const fs::path hidden = target.parent_path() / (fs::path(".") += target.filename());
    part_ = fs::path(hidden) += kPartSuffix;
    earlier_ = fs::path(hidden) += kEarlierSuffix;
    output_.Open(TextOf(part_), targetPath);
    state_ = State::Writing;
}

void StagedFile::Deliver() {
    if (state_ != State::Writing) return;
    output_.Close();
    std::error_code error;
    if (fs::exists(target_, error)) {
        RemoveUnused(earlier_, shown_);
        machine::KeepAside(target_, earlier_, error);
        if (error) Fail(shown_, error);
        earlierLock_.Take(earlier_);
    } else {
        earlier_.clear();
    }
    machine::Replace(part_, target_, error);
    if (error) Fail(shown_, error);
    // The database's commit lasts; so must the file's name.
    machine::SyncFolder(FolderOf(target_));
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
        machine::Replace(earlier_, target_, error);
    }
    earlierLock_.Release();
    state_ = State::Idle;
}

}  // namespace vlm::files
