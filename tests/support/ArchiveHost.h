#pragma once

#include <memory>
#include <string>
#include <vector>

#include "HostReferences.h"
#include "archive/ArchiveComponents.h"
#include "databases/DatabaseSchema.h"
#include "databases/SqliteWriter.h"
#include "detect/DetectingOpener.h"
#include "frame/HostServices.h"
#include "services/Security.h"
#include "sqlite/SqliteConnection.h"
#include "support/FakeServices.h"
#include "support/RowText.h"
#include "support/TempFolder.h"
#include "values/Error.h"

namespace vlm::test {

/// The library's own components with a health-card system that answers what the test says.
class ImportComponents final : public archive::ArchiveComponents {
public:
    using ArchiveComponents::ArchiveComponents;

    std::unique_ptr<HealthCardClient> NewHealthCardClient() override { return std::make_unique<Client>(*this); }

    std::unique_ptr<HostRecord> NewPatientRecord() override {
        return savesPatients ? ArchiveComponents::NewPatientRecord() : std::make_unique<Unsaved>();
    }

    bool savesPatients = true;
    HealthCardClient::Response response;  // to every request
    std::string failure;                  // thrown instead, when there is one
    // What the last client was given, and what was asked of it.
    std::string toolPath, certificatePath;
    HealthCardClient::Credentials credentials;
    std::vector<std::string> requests;  // "patients", "exemptions"

private:
    struct Unsaved final : HostRecord {
        void SetConnection(const data::ConnectionPtr&) override {}
        void SetSecurity(const HostObjectPtr&, const HostObjectPtr&) override {}
        void AddNew() override {}
        void Load(std::int32_t id, bool) override { loaded = id; }
        data::Value Field(std::string_view) const override { return {}; }
        void SetField(std::string_view, const data::Value&) override {}
        bool Save() override { return false; }
        std::int32_t Id() const override { return loaded; }
        std::int32_t loaded = 0;
    };
    struct Client final : HealthCardClient {
        explicit Client(ImportComponents& owner) : test(owner) {}
        void SetToolPath(const std::string& path) override { test.toolPath = path; }
        void SetCertificatePath(const std::string& path) override { test.certificatePath = path; }
        Response RequestPatients(const Credentials& given) override { return Answer("patients", given); }
        Response RequestExemptions(const Credentials& given) override { return Answer("exemptions", given); }
        Response Answer(const char* request, const Credentials& given) {
            test.requests.push_back(request);
            test.credentials = given;
            if (!test.failure.empty()) throw Error(test.failure);
            return test.response;
        }
        ImportComponents& test;
    };
};

/// The reference host with the databases of its clinic 12, nearly empty: what a test of the import begins with. Whose
/// program it is: user MARIA.
class ArchiveHost {
public:
    explicit ArchiveHost(const std::string& clinicSql = {}, const std::string& masterSql = {}) {
        Create("Aldra", host::MasterSchema(), kComuni + masterSql);
        Create("Studio0012", host::ClinicSchema(), clinicSql);
        connection = Connect();
        lockService = LockServiceOf("MARIA");
        rights = server::HostReference::Of(com::Make<host::UserRights>("MARIA").Get());
    }

    /// Another connection to the clinic, as another user's program has it.
    data::ConnectionPtr Connect() const {
        return data::SqliteConnection::Connect("Provider=SQLite;Data Source=\"" + folder.Path().string() +
                                               "\";Initial Catalog=Studio0012;Busy Timeout=0");
    }
    /// One text for each row of a query on another connection to the clinic's database; see RowText.
    std::vector<std::string> Query(const std::string& sql) const {
        return data::testing::RowTexts(*Connect()->Open(sql));
    }
    HostObjectPtr LockServiceOf(const std::string& user) const {
        return server::HostReference::Of(com::Make<host::LockService>(connection, user, clock).Get());
    }

    TempFolder folder;
    sys::FixedClock clock{*Date::FromYmd(2026, 11, 23)};
    data::ConnectionPtr connection;
    HostObjectPtr lockService, rights;
    ImportComponents components{clock};
    files::DetectingOpener workbooks;
    FakeServices services;

    /// What the library is given: the services of a test, and this host's clock and components.
    Library::Services Services() {
        Library::Services all = services.With(services.toolkit);
        return {all.toolkit, all.utility, all.settings, clock, all.programs, all.installFolder, components, workbooks};
    }

private:
    static constexpr const char* kComuni =
        "INSERT INTO Comune (IDComune, Comune, CodiceISTAT, CodiceCatastale, Sigla, Cap) VALUES"
        " (1, 'Cantù', '013041', 'B639', 'CO', '22063'), (2, 'Catania', '087015', 'C351', 'CT', NULL),"
        " (3, 'Palermo', '082053', 'G273', 'PA', '90100'), (4, 'Roma', '058091', 'H501', 'RM', NULL);";

    void Create(const std::string& database, const host::DatabaseSchema& schema, const std::string& sql) const {
        host::SqliteWriter writer(folder / (database + ".sqlite"));
        writer.CreateTables(schema);
        writer.CreateIndices(schema);
        writer.Execute(sql);
        writer.Commit();
    }
};

}  // namespace vlm::test
