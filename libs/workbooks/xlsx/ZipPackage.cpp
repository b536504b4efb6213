#include "ZipPackage.h"

#include "files/Paths.h"
#include "workbooks/WorkbookFault.h"

namespace vlm::files {

namespace {

constexpr std::uint64_t kMaxPart = 512U << 20;
constexpr std::uint64_t kMaxPackage = 1024U << 20;
constexpr std::uint64_t kMaxSmallPart = 16U << 20;
constexpr std::uint64_t kBelowSuspicion = 32U << 20;
constexpr std::uint64_t kMaxRatio = 300;  // real sheets shrink to a tenth, at most to a hundredth
constexpr std::size_t kReadBlock = 64U << 10;

}  // namespace

ZipPackage::ZipPackage(const std::string& path) {
    const auto facts = FactsOf(path);
    fileSize_ = facts ? facts->size : 0;
    archive_.reset(zip_open(ToNative(path).string().c_str(), ZIP_RDONLY, nullptr));
    if (!archive_) throw WorkbookFault("l'archivio è incompleto o danneggiato");
}

std::int64_t ZipPackage::Find(const std::string& part) const noexcept {
    const std::int64_t exact = zip_name_locate(archive_.get(), part.c_str(), 0);
    return exact >= 0 ? exact : zip_name_locate(archive_.get(), part.c_str(), ZIP_FL_NOCASE);
}

ZipPackage::Part ZipPackage::Open(const std::string& part) {
    const std::int64_t index = Find(part);
    if (index < 0) throw WorkbookFault("manca la parte " + part);
    Part opened;
    opened.package_ = this;
    opened.name_ = part;
    opened.file_.reset(zip_fopen_index(archive_.get(), static_cast<std::uint64_t>(index), 0));
    if (!opened.file_) {
        const bool locked = zip_error_code_zip(zip_get_error(archive_.get())) == ZIP_ER_NOPASSWD;
        throw WorkbookFault(locked ? "è protetto da una password" : "la parte " + part + " è danneggiata");
    }
    return opened;
}

std::string ZipPackage::Read(const std::string& part) {
    Part opened = Open(part);
    std::string content;
    while (true) {
        const std::size_t size = content.size();
        content.resize(size + kReadBlock);
        const std::size_t got = opened.Read(content.data() + size, kReadBlock);
        content.resize(size + got);
        if (got == 0) return content;
        if (content.size() > kMaxSmallPart) throw WorkbookFault("la parte " + part + " è troppo grande");
    }
}

void ZipPackage::Count(Part& part, std::size_t bytes) {
    part.bytes_ += bytes;
    bytes_ += bytes;
    if (part.bytes_ > kMaxPart || bytes_ > kMaxPackage) {
        throw WorkbookFault("la parte " + part.name_ + " è troppo grande");
    }
    if (part.bytes_ > kBelowSuspicion && part.bytes_ / kMaxRatio > fileSize_) {
        throw WorkbookFault("la parte " + part.name_ + " si espande oltre misura");
    }
}

std::size_t ZipPackage::Part::Read(char* block, std::size_t size) {
    const std::int64_t got = zip_fread(file_.get(), block, size);
    if (got < 0) throw WorkbookFault("la parte " + name_ + " è danneggiata");
    package_->Count(*this, static_cast<std::size_t>(got));
    return static_cast<std::size_t>(got);
}

}  // namespace vlm::files
