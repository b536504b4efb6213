#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <zip.h>

namespace vlm::files {

/// The parts of a zip archive. Sizes that the archive declares are not trusted: what comes out is counted, a part and
/// an archive that grow out of proportion are a WorkbookFault.
class ZipPackage {
public:
    /// Throws WorkbookFault when the file is no archive.
    explicit ZipPackage(const std::string& path);

    bool Has(const std::string& part) const noexcept { return Find(part) >= 0; }

    /// One part, read forward.
    class Part {
    public:
        /// Fills `block`; the number of bytes, 0 at the part's end.
        std::size_t Read(char* block, std::size_t size);

    private:
        friend class ZipPackage;
        struct Close {
            void operator()(zip_file_t* file) const noexcept { zip_fclose(file); }
        };
        ZipPackage* package_ = nullptr;
        std::string name_;
        std::unique_ptr<zip_file_t, Close> file_;
        std::uint64_t bytes_ = 0;
    };
    /// Throws WorkbookFault when there is no such part. The package outlives the part.
    Part Open(const std::string& part);
    /// A small part whole; WorkbookFault above 16 MB.
    std::string Read(const std::string& part);

private:
    std::int64_t Find(const std::string& part) const noexcept;
    void Count(Part& part, std::size_t bytes);

    struct Discard {
        void operator()(zip_t* archive) const noexcept { zip_discard(archive); }
    };
    std::unique_ptr<zip_t, Discard> archive_;
    std::uint64_t fileSize_ = 0;
    std::uint64_t bytes_ = 0;
};

}  // namespace vlm::files
