#include <gtest/gtest.h>

#include "DemoDatabase.h"
#include "HealthCardFile.h"
#include "import/ASLImportPatient.h"
#include "services/FiscalCode.h"
#include "sqlite/SqliteConnection.h"
#include "support/FakeServices.h"
#include "support/RowText.h"
#include "values/CodePage1252.h"

namespace vlm::host {
namespace {

using data::testing::RowText;

/// The demo clinic's lists, read by the library with the demo clinic's templates.
class DemoImport : public testing::Test {
protected:
    DemoImport() { services.library.SetConnection(connection); }
    static std::string Source(const std::string& name) {
        return SharedDemo() / (std::string(kSourcesFolder) + "/" + name);
    }
    ElementListPtr Read(const std::string& source, const std::string& templateName) {
        return component.ReadWithTemplate(
            Source(source), SharedDemo() / (std::string(kInstallationFolder) + "/Import/" + templateName));
    }
    /// "" for a person that the archive does not have.
    std::string PatientOf(const std::string& code) {
        return RowText(*connection, "SELECT IDPaziente FROM Paziente WHERE CodiceFiscale = '" + code + "'");
    }

    test::FakeServices services;
    data::ConnectionPtr connection = data::SqliteConnection::Connect(
        "Provider=SQLite;Data Source=\"" + SharedDemo().Path().string() + "\";Initial Catalog=Studio0012");
    ASLImportPatient component{services.library};
};

/// Fiscal code, patient, birth, town and card of every element.
std::string Told(ElementList& list) {
    std::string told;
    for (list.MoveFirst(); !list.AtEnd(); list.MoveNext()) {
        for (const char* name : {"CodiceFiscale", "IDPaziente", "DataNascita", "IDComune", "Codice"}) {
            told.append(list.TextOf(list.Ordinal(name))).append("|");
        }
        told += "\n";
    }
    return told;
}

TEST_F(DemoImport, TheSameListComesOutOfEveryFormat) {
    constexpr int kCataniaEntry = 22;
    const ElementListPtr delimited = Read("assistiti.txt", "Elenco assistiti.ACF");
    ASSERT_NE(delimited, nullptr) << services.toolkit.messages.back();
    EXPECT_EQ(delimited->RecordCount(), 40);
    int known = 0;
    for (; !delimited->AtEnd(); delimited->MoveNext()) {
        const std::string code(delimited->TextOf(delimited->Ordinal("CodiceFiscale")));
        EXPECT_TRUE(IsFiscalCode(code)) << code;
        EXPECT_GT(delimited->NumberOf(delimited->Ordinal("IDComune")), 0) << code;
        const std::string patient = PatientOf(code);
        EXPECT_EQ(delimited->TextOf(delimited->Ordinal("IDPaziente")), patient.empty() ? "0" : patient) << code;
        known += patient.empty() ? 0 : 1;
    }
    EXPECT_EQ(known, 27);
    const std::string told = Told(*delimited);
    EXPECT_EQ(Told(*Read("assistiti-colonne.txt", "Assistiti a colonne.ACF")), told);
    EXPECT_EQ(Told(*component.ReadSourceForAsl(Source("catania.txt"), kCataniaEntry, "")), told);
    EXPECT_TRUE(component.LastFindings().Empty());
}

TEST_F(DemoImport, ExemptionsAreThoseOfThePatients) {
    const ElementListPtr list = Read("esenti.txt", "Esenti per reddito.ECF");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->RecordCount(), 27);
    std::set<std::string> codes;
    for (; !list->AtEnd(); list->MoveNext()) {
        codes.insert(std::string(list->TextOf(list->Ordinal("Esenzione"))));
        EXPECT_EQ(list->TextOf(list->Ordinal("EsenzioneDataScadenza")), "31/12/2011");
    }
    EXPECT_EQ(codes, (std::set<std::string>{"E01", "E02", "E03", "E05"}));
}

TEST_F(DemoImport, SourcesAreInAnsiWithWholeLines) {
    for (const auto& [name, lines] :
         {std::pair{"assistiti.txt", 40}, {"assistiti-colonne.txt", 40}, {"catania.txt", 42}, {"esenti.txt", 40}}) {
        const std::string bytes = test::ReadBytes(Source(name));
        EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), lines) << name;
        EXPECT_TRUE(bytes.ends_with("\r\n")) << name;
        EXPECT_EQ(text::ToAnsi(text::FromAnsi(bytes)), bytes) << name;
    }
    EXPECT_EQ(test::NamesIn(SharedDemo() / (std::string(kInstallationFolder) + "/Import")),
              (std::vector<std::string>{"Assistiti a colonne.ACF", "Elenco assistiti.ACF", "Esenti per reddito.ECF",
                                        "Foglio assistiti.ACF"}));
}

TEST_F(DemoImport, TheHealthCardSystemKnowsOldAndNewPatients) {
    HealthCardFile client;
    client.SetToolPath(SharedDemo() / kInstallationFolder + "\\openssl.exe");
    const HealthCardClient::Response answer = client.RequestPatients({});
    EXPECT_FALSE(answer.error);
    int known = 0, exemptions = 0;
    for (const HealthCardClient::Person& person : answer.persons) {
        known += PatientOf(person.fiscalCode) != "";
        exemptions += static_cast<int>(person.exemptions.size());
        EXPECT_NE(person.surname + person.firstName, "");
    }
    EXPECT_EQ(known, 6);
    EXPECT_EQ(answer.persons.size(), 8U);
    EXPECT_EQ(exemptions, 6);
    EXPECT_EQ(IsoDate(answer.persons.front().exemptions.front().end), "2011-12-31 23:00:00");
}

}  // namespace
}  // namespace vlm::host
