#include "DemoClinicServer.h"

#include "database/SqlTokens.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::host {

namespace {

/// The database that every server has, which tells of the others.
constexpr const char* kServerDatabase = "master";

}  // namespace

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
