#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "database/Connection.h"

namespace vlm::host::tds {

/// The folder of databases that the server serves, one file each. A database "master" is always there. While they are
/// served, readers do not hold up who writes; when the server ends the files are as other programs keep them.
class ServedFolder {
public:
    static constexpr const char* kMaster = "master";

    /// Throws vlm::Error for a folder that is not there.
    explicit ServedFolder(const std::string& path);
    ServedFolder(const ServedFolder&) = delete;
    ServedFolder& operator=(const ServedFolder&) = delete;
    ~ServedFolder();

    std::vector<std::string> Names() const;
    /// The name as its file has it; "" for a database that is not there. Names compare without regard to case.
    std::string Find(std::string_view name) const;
    /// Throws ServerError for one that is not there.
    data::ConnectionPtr Open(std::string_view name);

    /// Throw ServerError for one that is there already, one that is not there, a name that cannot be, "master".
    void Create(std::string_view name);
    void Drop(std::string_view name);

private:
    std::filesystem::path FileOf(std::string_view name) const;
    data::ConnectionPtr Connect(const std::string& name) const;
    void KeepOpen(const std::string& name);

    std::string path_;
    std::mutex mutex_;  // of what follows
    /// One connection to each database that was asked for, so that the last client's end does not lock its file.
    std::map<std::string, data::ConnectionPtr> kept_;
};

}  // namespace vlm::host::tds
