#include "DemoPlaces.h"

#include <system_error>

#include "database/SqlTokens.h"
#include "values/Error.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::host {

namespace fs = std::filesystem;

namespace {

/// A new folder on the same file system as `folder`, so that files can be moved from one to the other.
fs::path MakeWorkshop(const fs::path& folder) {
    fs::path beside = folder;
    while (!fs::exists(beside) && beside != beside.parent_path()) beside = beside.parent_path();
    for (int number = 1;; ++number) {
        const fs::path workshop = beside / (".clinica-in-preparazione-" + text::FormatInteger(number, false));
        if (fs::create_directory(workshop)) return workshop;
    }
}

/// The database that every server has, which tells of the others.
constexpr const char* kServerDatabase = "master";

}  // namespace

DemoClinicFolder::DemoClinicFolder(const fs::path& folder, std::vector<std::string> files)
    : folder_(fs::absolute(folder)), files_(std::move(files)) {
    if (fs::exists(folder_) && !fs::is_directory(folder_))
        throw Error("\"" + folder_.string() + "\" non è una cartella.");
    RefuseExisting();
    workshop_ = MakeWorkshop(folder_);
}

DemoClinicFolder::~DemoClinicFolder() {
    std::error_code ignored;
    fs::remove_all(workshop_, ignored);
}

/// A journal without its database counts too: the engine would apply it to the new one.
void DemoClinicFolder::RefuseExisting() const {
    for (const std::string& name : files_)
        for (const char* suffix : {"", "-journal", "-wal"})
            if (const fs::path file = folder_ / (name + suffix); fs::exists(fs::symlink_status(file)))
                throw Error("\"" + file.string() + "\" esiste già: la clinica dimostrativa non viene creata.");
}

void DemoClinicFolder::Deliver() {
    RefuseExisting();  // so that what stands there from now on is ours to take back
    const bool folderIsNew = !fs::exists(folder_);
    try {
        fs::create_directories(folder_);
        for (const std::string& name : files_) fs::rename(workshop_ / name, folder_ / name);
    } catch (...) {
        TakeBack(folderIsNew);
        throw;
    }
}

void DemoClinicFolder::TakeBack(bool folderIsNew) const noexcept {
    std::error_code ignored;
    for (const std::string& name : files_)
        if (!fs::exists(workshop_ / name, ignored)) fs::remove_all(folder_ / name, ignored);
    if (folderIsNew) fs::remove(folder_, ignored);
}

DemoClinicServer::DemoClinicServer(OpenDatabase open, std::vector<std::string> databases)
    : open_(std::move(open)), databases_(std::move(databases)), server_(open_(kServerDatabase)) {
    RefuseExisting();
}

void DemoClinicServer::RefuseExisting() {
    std::string names;
    for (const std::string& database : databases_) names += (names.empty() ? "" : ",") + data::SqlTextLiteral(database);
    const data::RecordsetPtr found = server_->Open("SELECT name FROM sys.databases WHERE name IN (" + names + ")");
    if (found->AtEnd()) return;
    throw Error("\"" + std::string(found->TextOf(0)) +
                "\" esiste già sul server: la clinica dimostrativa non viene creata.");
}

void DemoClinicServer::Create(const std::function<void()>& work) {
    try {
        CreateAll();
        work();
    } catch (const std::exception& error) {
        const std::string left = DropCreated();
        if (left.empty()) throw;
        throw Error(std::string(error.what()) + "\nDa eliminare a mano dal server, perché incompleti: " + left + ".");
    }
}

data::ConnectionPtr DemoClinicServer::Open(const std::string& database) const {
    data::ConnectionPtr connection = open_(database);
    const std::string opened = connection->InitialCatalog();
    if (!text::EqualNoCase(opened, database))
        throw Error("La connessione porta al database \"" + opened + "\", non a \"" + database + "\".");
    return connection;
}

void DemoClinicServer::CreateAll() {
    for (const std::string& database : databases_) {
        try {
            server_->Execute("CREATE DATABASE " + database);
        } catch (const Error& error) {
            throw Error("Impossibile creare il database \"" + database + "\": " + error.what());
        }
        created_.push_back(database);
    }
}

std::string DemoClinicServer::DropCreated() noexcept {
    std::string left;
    for (const std::string& database : created_) {
        try {
            Drop(database);
        } catch (...) {
            left += (left.empty() ? "\"" : ", \"") + database + "\"";
        }
    }
    created_.clear();
    return left;
}

/// A server may hold a connection that has just been closed for a moment longer, and refuses meanwhile.
void DemoClinicServer::Drop(const std::string& database) {
    try {
        server_->Execute("DROP DATABASE " + database);
    } catch (...) {
        server_->Execute("ALTER DATABASE " + database + " SET SINGLE_USER WITH ROLLBACK IMMEDIATE");
        server_->Execute("DROP DATABASE " + database);
    }
}

}  // namespace vlm::host
