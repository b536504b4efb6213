#pragma once

#include <string>

namespace vlm::sys {

/// Where the host application is installed on this machine.
class InstallFolder {
public:
    virtual ~InstallFolder() = default;
    /// Without "\" at its end; "" when the host is not installed.
    virtual std::string Path() const = 0;
};

/// A folder that was given.
class FixedInstallFolder final : public InstallFolder {
public:
    explicit FixedInstallFolder(std::string path = {}) : path_(std::move(path)) {}
    std::string Path() const override { return path_; }

private:
    std::string path_;
};

}  // namespace vlm::sys
