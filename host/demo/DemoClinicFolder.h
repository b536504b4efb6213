#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vlm::host {

/// A folder that gets its files and folders all at once or not at all: they are made in a temporary folder beside and
/// moved in when all are done.
class DemoClinicFolder {
public:
    /// Throws Error naming the first of `files` that is in the folder already. The folder itself may be missing.
    DemoClinicFolder(std::filesystem::path folder, std::vector<std::string> files);
    DemoClinicFolder(const DemoClinicFolder&) = delete;
    DemoClinicFolder& operator=(const DemoClinicFolder&) = delete;
    /// Whatever was not delivered goes.
    ~DemoClinicFolder();

    const std::filesystem::path& Workshop() const { return workshop_; }
    void Deliver();

private:
    void RefuseExisting() const;
    void TakeBack(bool folderIsNew) const noexcept;

    std::filesystem::path folder_, workshop_;
    std::vector<std::string> files_;
};

}  // namespace vlm::host
