#include "files/LineReader.h"

#include <algorithm>
#include <cerrno>

#include "files/Paths.h"
#include "values/CodePage1252.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::files {

namespace {

constexpr std::size_t kBlock = 64 * 1024;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

}  // namespace

LineReader::LineReader(const std::string& path) : path_(path) {
    const auto facts = FactsOf(path);
    file_ = machine::OpenToRead(ToNative(path));
    if (!file_ || !facts) throw Error("Impossibile aprire il file " + path + ": " + ReasonOf(errno) + ".");
    size_ = facts->size;
    Fill();
    if (buffer_.compare(0, kUtf8Mark.size(), kUtf8Mark) == 0) {
        utf8_ = true;
        at_ = kUtf8Mark.size();
    }
}

bool LineReader::Fill() {
    buffer_.erase(0, at_);
    start_ += at_;
    at_ = 0;
    const std::size_t kept = buffer_.size();
    buffer_.resize(kept + kBlock);
    const std::size_t got = std::fread(buffer_.data() + kept, 1, kBlock, file_.get());
    buffer_.resize(kept + got);
    if (std::ferror(file_.get()) != 0)
        throw Error("Impossibile leggere il file " + path_ + ": " + ReasonOf(errno) + ".");
    return got > 0;
}

bool LineReader::AtEnd() { return at_ == buffer_.size() && !Fill(); }

std::string_view LineReader::ReadLine() {
    std::size_t searched = at_;
    std::size_t end = buffer_.find('\n', searched);
    while (end == std::string::npos) {
        searched = buffer_.size() - at_;
        if (!Fill()) break;
        end = buffer_.find('\n', searched);
    }
    const bool whole = end != std::string::npos;
    std::string_view raw(buffer_.data() + at_, (whole ? end : buffer_.size()) - at_);
    at_ = whole ? end + 1 : buffer_.size();
    const bool carriageReturn = !raw.empty() && raw.back() == '\r';
    carriageReturn_ = whole && carriageReturn;
    if (carriageReturn) raw.remove_suffix(1);
    // Most lines are the same in every encoding: they are handed out where they stand.
    if (utf8_ || text::IsAscii(raw)) return raw;
    line_.clear();
    text::AppendFromAnsi(raw, line_);
    return line_;
}

std::uint64_t LineReader::CountLineFeeds() {
    const std::uint64_t here = Offset();
    std::uint64_t count = 0;
    MoveTo(0);
    do {
        count += static_cast<std::uint64_t>(
            std::count(buffer_.begin() + static_cast<std::ptrdiff_t>(at_), buffer_.end(), '\n'));
        at_ = buffer_.size();
    } while (Fill());
    MoveTo(here);
    return count;
}

void LineReader::MoveTo(std::uint64_t offset) {
    if (offset >= start_ && offset <= start_ + buffer_.size()) {
        at_ = static_cast<std::size_t>(offset - start_);
        return;
    }
    if (!machine::MoveTo(file_.get(), offset)) {
        throw Error("Impossibile leggere il file " + path_ + ": " + ReasonOf(errno) + ".");
    }
    buffer_.clear();
    start_ = offset;
    at_ = 0;
}

void LineReader::SkipLine() {
    while (true) {
        const std::size_t end = buffer_.find('\n', at_);
        at_ = end == std::string::npos ? buffer_.size() : end + 1;
        if (end != std::string::npos || !Fill()) return;
    }
}

}  // namespace vlm::files
