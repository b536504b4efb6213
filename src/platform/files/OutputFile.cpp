#include "platform/files/OutputFile.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <unistd.h>

#include "platform/Error.h"
#include "platform/files/Paths.h"

namespace vlm::files {

namespace {

constexpr std::size_t kBufferSize = 256 * 1024;
constexpr std::size_t kCopyStep = 64 * 1024 * 1024;

}  // namespace

OutputFile::~OutputFile() { Abandon(); }

void OutputFile::Fail(const char* what) const {
    throw Error(std::string("Impossibile ") + what + " il file " + path_ + ": " + ReasonOf(errno) + ".");
}

void OutputFile::Open(const std::string& path, const std::string& shownPath) {
    Abandon();
    path_ = shownPath;
    const int descriptor = ::open(ToNative(path).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (descriptor < 0) Fail("aprire");
    // The lock comes before the emptying, so that a file in use loses nothing.
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        ::close(descriptor);
        errno = EWOULDBLOCK;
        Fail("aprire");
    }
    if (::ftruncate(descriptor, 0) != 0 || (file_ = ::fdopen(descriptor, "wb")) == nullptr) {
        ::close(descriptor);
        Fail("aprire");
    }
    std::setvbuf(file_, nullptr, _IOFBF, kBufferSize);
}

void OutputFile::Write(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size()) Fail("scrivere");
}

void OutputFile::CopyFrom(const std::string& sourcePath) {
    const int source = ::open(ToNative(sourcePath).c_str(), O_RDONLY | O_CLOEXEC);
    const auto unreadable = [&sourcePath] {
        return Error("Impossibile leggere il file " + sourcePath + ": " + ReasonOf(errno) + ".");
    };
    if (source < 0) throw unreadable();
    const std::unique_ptr<const int, void (*)(const int*)> closer(&source, [](const int* file) { ::close(*file); });
    if (std::fflush(file_) != 0) Fail("scrivere");
    // The kernel copies, and shares the blocks where the file system can.
    ssize_t copied = 0;
    while ((copied = ::copy_file_range(source, nullptr, ::fileno(file_), nullptr, kCopyStep, 0)) > 0) {
    }
    if (copied == 0) return;
    if (errno != EXDEV && errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP) Fail("scrivere");
    std::array<char, 64 * 1024> block;
    while ((copied = ::read(source, block.data(), block.size())) > 0) {
        Write({block.data(), static_cast<std::size_t>(copied)});
    }
    if (copied < 0) throw unreadable();
}

void OutputFile::Close() {
    if (file_ == nullptr) return;
    // Some file systems cannot sync; that is no failure of the writing.
    const bool flushed =
        std::ferror(file_) == 0 && std::fflush(file_) == 0 && (::fsync(::fileno(file_)) == 0 || errno == EINVAL);
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
