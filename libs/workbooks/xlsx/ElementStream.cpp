#include "ElementStream.h"

#include "workbooks/WorkbookFault.h"

namespace vlm::files {

namespace {

constexpr std::size_t kBlock = 256U << 10;
constexpr std::size_t kMaxElement = 16U << 20;

}  // namespace

ElementStream::ElementStream(ZipPackage& package, const std::string& part, Shape shape)
    : part_(package.Open(part)), name_(part), shape_(shape) {
    if (StartsWith("\xFE\xFF") || StartsWith("\xFF\xFE")) Refuse("è scritta in una codifica non prevista");
}

void ElementStream::Refuse(const std::string& what) const { throw WorkbookFault("la parte " + name_ + ' ' + what); }

bool ElementStream::Fill() {
    buffer_.erase(0, keep_);
    at_ -= keep_;
    keep_ = 0;
    if (buffer_.size() > kMaxElement) Refuse("ha un elemento troppo grande");
    const std::size_t kept = buffer_.size();
    buffer_.resize(kept + kBlock);
    const std::size_t got = part_.Read(buffer_.data() + kept, kBlock);
    buffer_.resize(kept + got);
    return got > 0;
}

bool ElementStream::Has(std::size_t bytes) {
    while (buffer_.size() - at_ < bytes) {
        if (!Fill()) return false;
    }
    return true;
}

bool ElementStream::StartsWith(std::string_view text) {
    return Has(text.size()) && std::string_view(buffer_).substr(at_, text.size()) == text;
}

void ElementStream::SkipPast(std::string_view text) {
    std::size_t searched = 0;
    while (true) {
        const std::size_t found = buffer_.find(text, at_ + searched);
        if (found != std::string::npos) {
            at_ = found + text.size();
            return;
        }
        const std::size_t ahead = buffer_.size() - at_;
        searched = ahead < text.size() ? 0 : ahead - text.size() + 1;
        if (!Fill()) Refuse("è incompleta");
    }
}

void ElementStream::ReadTag(Tag& tag) {
    char quote = 0;
    std::size_t length = 1;
    for (;; ++length) {
        if (!Has(length + 1)) Refuse("è incompleta");
        const char c = buffer_[at_ + length];
        if (quote != 0) {
            if (c == quote) quote = 0;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            break;
        }
    }
    std::string_view inside(buffer_.data() + at_ + 1, length - 1);
    tag.closing = !inside.empty() && inside.front() == '/';
    tag.empty = !tag.closing && !inside.empty() && inside.back() == '/';
    if (tag.closing) inside.remove_prefix(1);
    inside = inside.substr(0, inside.find_first_of(" \t\r\n/"));
    const std::size_t colon = inside.find(':');
    tag.name = colon == std::string_view::npos ? inside : inside.substr(colon + 1);
    at_ += length + 1;
}

bool ElementStream::NextTag(Tag& tag) {
    while (true) {
        while (at_ == buffer_.size() || buffer_[at_] != '<') {
            at_ = std::min(buffer_.find('<', at_), buffer_.size());
            if (!inElement_) keep_ = at_;
            if (at_ == buffer_.size() && !Fill()) return false;
        }
        if (!inElement_) keep_ = at_;
        if (StartsWith("<!--")) {
            SkipPast("-->");
        } else if (StartsWith("<![CDATA[")) {
            SkipPast("]]>");
        } else if (StartsWith("<?")) {
            SkipPast("?>");
        } else if (StartsWith("<!")) {
            Refuse("contiene dichiarazioni che non sono ammesse");
        } else {
            ReadTag(tag);
            return true;
        }
    }
}

bool ElementStream::Enters(const Tag& tag) {
    if (!rootSeen_) {
        if (tag.name != shape_.root || tag.closing) Refuse("non è del tipo atteso");
        rootSeen_ = true;
    }
    if (tag.closing) {
        if (tag.name == shape_.root) rootClosed_ = true;
        if (tag.name == shape_.container) inContainer_ = false;
        return false;
    }
    if (inContainer_) return tag.name == shape_.element;
    inContainer_ = tag.name == shape_.container && !tag.empty;
    rootClosed_ = rootClosed_ || (tag.name == shape_.root && tag.empty);
    return false;
}

void ElementStream::SkipElement() {
    Tag tag;
    do {
        if (!NextTag(tag)) Refuse("è incompleta");
    } while (!tag.closing || tag.name != shape_.element);
}

std::optional<std::span<char>> ElementStream::Next() {
    inElement_ = false;
    Tag tag;
    while (NextTag(tag)) {
        if (!Enters(tag)) continue;
        inElement_ = true;
        if (!tag.empty) SkipElement();
        return std::span(buffer_.data() + keep_, at_ - keep_);
    }
    if (!rootClosed_) Refuse("è incompleta");
    return std::nullopt;
}

}  // namespace vlm::files
