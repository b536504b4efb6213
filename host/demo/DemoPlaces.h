#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "databases/OdbcServer.h"

/// Where a demo comes to stand, whole or not at all.
namespace vlm::host {

/// A folder that gets its files and folders all at once or not at all: they are made in a temporary folder beside and
/// moved in when all are done.
class DemoClinicFolder {
public:
    /// Throws Error naming the first of `files` that is in the folder already. The folder itself may be missing.
    DemoClinicFolder(const std::filesystem::path& folder, std::vector<std::string> files);
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

/// Databases of a server that come to be all together or not at all. Those that were there are never touched.
class DemoClinicServer {
public:
    /// Throws Error naming the first of `databases` that the server has already.
    DemoClinicServer(OpenDatabase open, std::vector<std::string> databases);

    /// Creates the databases and does `work`, which may open them. When anything fails, those that were created are
    /// dropped and the error is told, with the names of those that could not be dropped.
    void Create(const std::function<void()>& work);

    /// Throws Error for a connection that leads to another database, as a text of one's own making may.
    data::ConnectionPtr Open(const std::string& database) const;

private:
    void RefuseExisting();
    void CreateAll();
    /// The names of those that are still there.
    std::string DropCreated() noexcept;
    void Drop(const std::string& database);

    OpenDatabase open_;
    std::vector<std::string> databases_, created_;
    data::ConnectionPtr server_;
};

}  // namespace vlm::host
