#pragma once

#include <functional>
#include <string>
#include <vector>

#include "databases/OdbcServer.h"

namespace vlm::host {

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
