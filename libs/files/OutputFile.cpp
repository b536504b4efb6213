#include "files/OutputFile.h"

#include <array>
#include <cerrno>
#include <memory>

#include "files/Machine.h"
#include "files/Paths.h"
#include "values/Error.h"

namespace vlm::files {

namespace {

constexpr std::size_t kBufferSize = 256 * 1024;

}  // namespace

OutputFile::~OutputFile() { Abandon(); }

void OutputFile::Fail(const char* what) const {
    throw Error(std::string("Impossibile ") + what + " il file " + path_ + ": " + ReasonOf(errno) + ".");
}

void OutputFile::Open(const std::string& path, const std::string& shownPath) {
    Abandon();
    path_ = shownPath;
    file_ = machine::OpenToWrite(ToNative(path));
    if (file_ == nullptr) Fail("aprire");
    std::setvbuf(file_, nullptr, _IOFBF, kBufferSize);
}

void OutputFile::Write(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size()) Fail("scrivere");
}

void OutputFile::CopyFrom(const std::string& sourcePath) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> source(machine::OpenToRead(ToNative(sourcePath)),
                                                                 &std::fclose);
    const auto unreadable = [&sourcePath] {
        return Error("Impossibile leggere il file " + sourcePath + ": " + ReasonOf(errno) + ".");
    };
    if (!source) throw unreadable();
    if (std::fflush(file_) != 0) Fail("scrivere");
    const machine::Copied copied = machine::CopyAll(source.get(), file_);
    if (copied == machine::Copied::Failed) Fail("scrivere");
    if (copied == machine::Copied::All) return;
    std::array<char, 64 * 1024> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), source.get())) {
        Write({block.data(), count});
    }
    if (std::ferror(source.get()) != 0) throw unreadable();
}

void OutputFile::Close() {
    if (file_ == nullptr) return;
    const bool flushed = std::ferror(file_) == 0 && std::fflush(file_) == 0 && machine::Sync(file_);
    const int error = errno != 0 ? errno : EIO;
    const bool closed = std::fclose(file_) == 0;
    file_ = nullptr;
    if (!flushed) errno = error;
    if (!flushed || !closed) Fail("scrivere");
}

void OutputFile::Abandon() noexcept {
    if (file_ != nullptr) std::fclose(file_);
    file_ = nullptr;
}

}  // namespace vlm::files
