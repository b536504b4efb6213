#include <gtest/gtest.h>

#include "HostFactory.h"
#include "frame/PlainHostUtility.h"
#include "services/HealthCard.h"
#include "support/RowText.h"
#include "support/TempFolder.h"

namespace vlm::host {
namespace {

using data::testing::ErrorText;

class HealthCardFileTest : public testing::Test {
protected:
    /// As the component library asks: by name, object by object.
    HealthCardClient::Response Ask(const std::string& json) {
        test::WriteBytes(folder / "SistemaTS.json", json);
        const auto client = services.NewHealthCardClient();
        client->SetToolPath(folder.Path().string() + "\\openssl.exe");
        return client->RequestExemptions({"utente", "parola segreta", "1234567890", "201", "190"});
    }

    MissingComponents none;
    server::HostFactory services{MakeHealthCardServices([] { return std::make_unique<HealthCardFile>(); }), none};
    test::TempFolder folder;
};

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

/// No date is 30/12/1899; of an answer that is an error nobody is read.
TEST_F(HealthCardFileTest, AnswersWhatTheFileSays) {
    const std::string rest = R"("errors": [{"code": "E01"}, {"description": "perché"}],
        "persons": [{"fiscalCode": "RSSMRA80A01H501U", "surname": "D'Alò", "firstName": "Zoè", "altro": [1],
            "choice": "2011-01-02", "expiry": "2012-03-04T05:06:07", "suspension": "",
            "exemptions": [{"code": "E01", "start": "2012-01-01T00:00:00", "end": "2012-12-31T23:00:00"}, {}]},
          {"surname": null, "exemptions": null}]})";
    EXPECT_EQ(Told(Ask(R"({"error": true, )" + rest)), "true;E01 ; perché");
    EXPECT_EQ(Told(Ask("{" + rest)),
              "false;RSSMRA80A01H501U D'Alò Zoè 2011-01-02 2012-03-04 05:06:07 1899-12-30"
              " [E01 2012-01-01 2012-12-31 23:00:00][ 1899-12-30 1899-12-30];   1899-12-30 1899-12-30 1899-12-30 ");
    EXPECT_EQ(Told(Ask("{}")), "false");
}

/// Answers what it was asked.
struct Mirror final : HealthCardClient {
    std::string paths;
    void SetToolPath(const std::string& path) override { paths = path; }
    void SetCertificatePath(const std::string& path) override { paths += " " + path; }
    Response RequestPatients(const Credentials& given) override { return Answer("patients", given); }
    Response RequestExemptions(const Credentials& given) override { return Answer("exemptions", given); }
    Response Answer(const char* request, const Credentials& given) const {
        const std::string all = given.userId + " " + given.password + " " + given.pin + " " + given.aslCode + " ";
        return {true, {{request, paths + " " + all + given.regionCode}}, {}};
    }
};

TEST_F(HealthCardFileTest, WhatIsAskedArrivesThroughTheObjects) {
    server::HostFactory mirrors(MakeHealthCardServices([] { return std::make_unique<Mirror>(); }), none);
    const auto client = mirrors.NewHealthCardClient();
    client->SetToolPath("t");
    client->SetCertificatePath("c");
    EXPECT_EQ(Told(client->RequestPatients({"u", "w", "p", "201", "190"})), "true;patients t c u w p 201 190");
    EXPECT_EQ(Told(client->RequestExemptions({"u", "w", "p", "201", "190"})), "true;exemptions t c u w p 201 190");
}

TEST_F(HealthCardFileTest, AFileThatCannotBeReadIsNamedWithTheReasonAndNoSecret) {
    const std::pair<std::string, const char*> cases[] = {
        {R"({"error": )", "errore al carattere 11"},
        {"{\"persons\": [{\"surname\": \"\xE0\"}]}", "errore al carattere"},
        {std::string(200000, '['), "errore al carattere"},
        {R"({"persons": ["Rossi"]})", "non è un oggetto"},
        {R"({"persons": {}})", "\"persons\" non è un elenco"},
        {R"({"error": "no"})", "\"error\" non è un valore vero/falso"},
        {R"({"persons": [{"surname": 12}]})", "\"surname\" non è un testo"},
        {R"({"persons": [{"exemptions": [{"end": "2012-02-30"}]}]})", "\"end\" non è una data"},
    };
    for (const auto& [json, reason] : cases) {
        const std::string error = ErrorText([&, given = json] { Ask(given); });
        EXPECT_NE(error.find("SistemaTS.json"), std::string::npos) << error;
        EXPECT_NE(error.find(reason), std::string::npos) << json.substr(0, 60) << ": " << error;
        for (const char* secret : {"parola", "1234567890", "utente"})
            EXPECT_EQ(error.find(secret), std::string::npos) << error;
    }
    HealthCardFile client;
    client.SetToolPath("openssl.exe");
    EXPECT_NE(ErrorText([&] { client.RequestPatients({}); }).find("SistemaTS.json"), std::string::npos);
}

}  // namespace
}  // namespace vlm::host
