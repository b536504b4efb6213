#include "BiffRecords.h"

#include <algorithm>

#include "LittleEndian.h"
#include "values/CodePage1252.h"
#include "values/Utf16.h"

namespace vlm::files {

namespace {

constexpr std::size_t kHeader = 4;

constexpr std::uint8_t kWide = 1;
constexpr std::uint8_t kHasPhonetics = 4;
constexpr std::uint8_t kHasRuns = 8;

}  // namespace

BiffRecord BiffRecords::Next() {
    const std::size_t length = at_ < stream_.size() ? Read16(stream_, at_ + 2) : stream_.size();
    if (at_ >= stream_.size() || length > stream_.size() - at_ - kHeader) {
        throw WorkbookFault("il file è incompleto o danneggiato");
    }
    const BiffRecord record{BiffType{Read16(stream_, at_)}, stream_.substr(at_ + kHeader, length)};
    at_ += kHeader + length;
    return record;
}

std::vector<std::string_view> BiffRecords::WithContinuations(const BiffRecord& record) {
    std::vector<std::string_view> parts = {record.data};
    while (at_ + kHeader <= stream_.size() && BiffType{Read16(stream_, at_)} == BiffType::Continue) {
        parts.push_back(Next().data);
    }
    return parts;
}

bool BiffText::AtEnd() {
    while (part_ < parts_.size() && at_ == parts_[part_].size()) {
        ++part_;
        at_ = 0;
    }
    return part_ == parts_.size();
}

void BiffText::NeedMore() {
    if (AtEnd()) throw WorkbookFault("un testo è incompleto");
}

std::uint8_t BiffText::Byte() {
    NeedMore();
    return static_cast<std::uint8_t>(parts_[part_][at_++]);
}

std::uint16_t BiffText::Word() {
    const std::uint16_t low = Byte();
    return static_cast<std::uint16_t>(low | (Byte() << 8));
}

void BiffText::Skip(std::size_t bytes) {
    while (bytes > 0) {
        NeedMore();
        const std::size_t step = std::min(bytes, parts_[part_].size() - at_);
        at_ += step;
        bytes -= step;
    }
}

std::string BiffText::ReadUnits(std::size_t count, bool wide) {
    std::u16string units;
    while (count > 0) {
        if (at_ == parts_[part_].size()) {
            NeedMore();
            wide = (Byte() & kWide) != 0;
            NeedMore();
        }
        const std::string_view rest = parts_[part_].substr(at_);
        const std::size_t width = wide ? 2 : 1;
        const std::size_t step = std::min(count, rest.size() / width);
        if (step == 0) throw WorkbookFault("un testo è incompleto");
        for (std::size_t i = 0; i < step; ++i) {
            units += static_cast<char16_t>(wide ? Read16(rest, i * 2) : Read8(rest, i));
        }
        at_ += step * width;
        count -= step;
    }
    return text::FromUtf16(std::u16string_view(units));
}

std::string BiffText::Read(std::size_t characters) {
    if (!unicode_) {
        std::string bytes;
        for (std::size_t i = 0; i < characters; ++i) bytes += static_cast<char>(Byte());
        return text::FromAnsi(bytes);
    }
    const std::uint8_t flags = Byte();
    const std::size_t runs = (flags & kHasRuns) != 0 ? Word() : 0;
    std::size_t phonetics = 0;
    if ((flags & kHasPhonetics) != 0) {
        phonetics = Word();
        phonetics |= std::size_t{Word()} << 16;
    }
    std::string content = ReadUnits(characters, (flags & kWide) != 0);
    Skip(runs * 4 + phonetics);
    return content;
}

void ReadSharedTexts(std::vector<std::string_view> parts, SharedTexts& texts) {
    BiffText reader(std::move(parts), true);
    reader.Skip(8);  // how many times they are used, how many they are
    while (!reader.AtEnd()) texts.Add(reader.ReadLong());
}

}  // namespace vlm::files
