#include <gtest/gtest.h>

#include "HealthCardFile.h"
#include "support/RowText.h"
#include "support/TempFolder.h"
#include "values/Error.h"

namespace vlm::host {
namespace {

using data::testing::ErrorText;

class HealthCardFileTest : public testing::Test {
protected:
    void Write(const std::string& json) { test::WriteBytes(folder / "SistemaTS.json", json); }
    HealthCardClient::Response Ask() {
        HealthCardFile client;
        client.SetToolPath(folder.Path().string() + "\\openssl.exe");
        client.SetCertificatePath(folder.Path().string() + "\\SanitelCF.cer");
        return client.RequestExemptions({"utente", "parola segreta", "1234567890", "201", "190"});
    }

    test::TempFolder folder;
};

/// The whole answer; no date is 30/12/1899.
std::string Told(const HealthCardClient::Response& answer) {
    std::string told = answer.error ? "true" : "false";
    for (const auto& each : answer.errors) told += ";" + each.code + " " + each.description;
    for (const auto& each : answer.persons) {
        told += ";" + each.fiscalCode + " " + each.surname + " " + each.firstName + " ";
        for (const Date date : {each.choice, each.expiry, each.suspension}) told += IsoDate(date) + " ";
        for (const auto& one : each.exemptions)
            told += "[" + one.code + " " + IsoDate(one.start) + " " + IsoDate(one.end) + "]";
    }
    return told;
}

TEST_F(HealthCardFileTest, AnswersWhatTheFileSays) {
    Write(R"({"error": true, "errors": [{"code": "E01", "description": "perché"}, {"code": "E02"}],
        "persons": [{"fiscalCode": "RSSMRA80A01H501U", "surname": "D'Alò", "firstName": "Zoè", "altro": [1],
            "choice": "2011-01-02", "expiry": "2012-03-04T05:06:07", "suspension": "",
            "exemptions": [{"code": "E01", "start": "2012-01-01T00:00:00", "end": "2012-12-31T23:00:00"}, {}]},
          {"surname": null, "exemptions": null}]})");
    EXPECT_EQ(Told(Ask()),
              "true;E01 perché;E02 ;RSSMRA80A01H501U D'Alò Zoè 2011-01-02 2012-03-04 05:06:07 1899-12-30"
              " [E01 2012-01-01 2012-12-31 23:00:00][ 1899-12-30 1899-12-30];   1899-12-30 1899-12-30 1899-12-30 ");
    Write("{}");
    EXPECT_EQ(Told(Ask()), "false") << "what is missing is empty";
}

TEST_F(HealthCardFileTest, AFileThatCannotBeReadIsNamedWithTheReasonAndNoSecret) {
    const std::string missing = ErrorText([&] { Ask(); });
    EXPECT_NE(missing.find("SistemaTS.json"), std::string::npos) << missing;
    const struct {
        std::string json, reason;
    } cases[] = {
        {"", "errore al carattere 1"},
        {R"({"error": )", "errore al carattere 11"},
        {"{\"persons\": [{\"surname\": \"\xE0\"}]}", "errore al carattere"},
        {"[]", "non è un oggetto"},
        {R"({"persons": ["Rossi"]})", "non è un oggetto"},
        {R"({"persons": {}})", "\"persons\" non è un elenco"},
        {R"({"error": "no"})", "\"error\" non è un valore vero/falso"},
        {R"({"persons": [{"surname": 12}]})", "\"surname\" non è un testo"},
        {R"({"persons": [{"exemptions": [{"end": "31/12/2012"}]}]})", "\"end\" non è una data"},
        {R"({"persons": [{"exemptions": [{"end": "2012-02-30"}]}]})", "\"end\" non è una data"},
        {std::string(200000, '['), "errore al carattere"},
    };
    for (const auto& each : cases) {
        Write(each.json);
        const std::string error = ErrorText([&] { Ask(); });
        EXPECT_NE(error.find("SistemaTS.json"), std::string::npos) << error;
        EXPECT_NE(error.find(each.reason), std::string::npos) << each.json.substr(0, 60) << ": " << error;
        for (const char* secret : {"parola", "1234567890", "utente"}) {
            EXPECT_EQ(error.find(secret), std::string::npos) << error;
        }
    }
}

TEST_F(HealthCardFileTest, AnInstallationThatIsNotThereIsAnError) {
    HealthCardFile client;
    client.SetToolPath("\\openssl.exe");
    EXPECT_THROW(client.RequestPatients({}), Error);
    client.SetToolPath("openssl.exe");
    EXPECT_THROW(client.RequestPatients({}), Error);
}

}  // namespace
}  // namespace vlm::host
