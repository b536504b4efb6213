#include "BiffRecords.h"

#include "LittleEndian.h"

namespace vlm::files {

namespace {

constexpr std::size_t kHeader = 4;

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

}  // namespace vlm::files
