#include "ImportFixture.h"
#include "ModCrypt.h"
#include "healthcard/ModSistemaTS.h"

namespace vlm::test {
namespace {

constexpr const char* kClinic = R"sql(
INSERT INTO ParametroSpecialista VALUES (3, 'inpsutente', 'MEDICO3'), (3, 'INPSPassword', char(1) || 'â' || 'ã');
INSERT INTO vwstudi (CodiceRegioneTariffario, NumeroASL) VALUES ('190', '201');
)sql";

class HealthCardTest : public ImportTest {
protected:
    HealthCardTest() : ImportTest(kPatients + std::string(kClinic)) {}

    static HealthCardClient::Person Person(const std::string& code, const std::string& surname) {
        HealthCardClient::Person person;
        person.fiscalCode = code;
        person.surname = surname;
        person.firstName = " Anna ";
        person.choice = person.expiry = Date(40000);
        return person;
    }
};

TEST_F(HealthCardTest, CryptTextUndoesItself) {
    const std::string marker = "\x01";
    EXPECT_EQ(CryptText("") + CryptText(marker), "");
    EXPECT_EQ(CryptText("abc"), marker + "ààà");
    EXPECT_EQ(CryptText(marker + "ààà"), "abc");
    for (const std::string& plain : {std::string("Segreto-12345 ~!\"#$%&'()*+,-./"), std::string(96, 'z')}) {
        EXPECT_EQ(CryptText(CryptText(plain)), plain);
    }
    // Codes that leave the code page; the error does not say what the text was.
    for (const std::string& text : {std::string("€€"), std::string(300, 'k'), marker + std::string(300, 'k')}) {
        EXPECT_EQ(CaughtText([&] { CryptText(text); }), "Il testo è troppo lungo per essere codificato.");
    }
}

TEST_F(HealthCardTest, PatientsAreMatchedByFiscalCodeAndErrorsRaised) {
    host.services.installFolder = sys::FixedInstallFolder("C:\\Aldra");
    host.components.response.persons = {Person(" cntnna70a41b639q ", " Conti "), Person("NUOVO", "Nuovi")};
    EXPECT_EQ(ElementsOf(component.GetElementListSistemaTS(3, "1234567890")),
              (Lines{"Selezionato=False|Cognome=Conti|Nome=Anna|CodiceFiscale=cntnna70a41b639q|IDPaziente=7",
                     "Selezionato=True|Cognome=Nuovi|Nome=Anna|CodiceFiscale=NUOVO|IDPaziente=0"}));
    EXPECT_EQ(host.components.requests, Lines{"patients"});
    EXPECT_EQ(host.components.toolPath, "C:\\Aldra\\openssl.exe");
    EXPECT_EQ(host.components.certificatePath, "C:\\Aldra\\SanitelCF.cer");
    const HealthCardClient::Credentials& given = host.components.credentials;
    EXPECT_EQ(given.userId + "|" + given.password + "|" + given.pin + "|" + given.regionCode + "|" + given.aslCode,
              "MEDICO3|ce|1234567890|190|201");
    host.components.response.error = true;
    host.components.response.errors = {{"E01", "PIN errato"}, {"E02", "Utente bloccato"}};
    const Error error = Caught([&] { component.GetElementListSistemaTS(3, "1234567890"); });
    EXPECT_EQ(std::string(error.what()), "E01 - PIN errato\r\nE02 - Utente bloccato\r\n");
    EXPECT_EQ(static_cast<std::uint32_t>(error.Number()), 0x80043018U);
    EXPECT_EQ(error.Source(), "SistemaTS");
    host.components.failure = "openssl.exe non si avvia";
    EXPECT_EQ(CaughtText([&] { component.GetElementListSistemaTS(3, "1"); }), "openssl.exe non si avvia");
}

TEST_F(HealthCardTest, ExemptionsOfPatientsInTheArchive) {
    host.connection->Execute("DELETE FROM vwstudi");
    for (int person = 0; person < 25; ++person) host.components.response.persons.push_back(Person("NUOVO", "X"));
    HealthCardClient::Person known = Person("CNTNNA70A41B639Q", "Conti");
    known.exemptions = {{"E01", *Date::FromYmd(2012, 1, 1), Date(41274 + 23.0 / 24)},
                        {"E02", Date(40909.5), *Date::FromYmd(2012, 12, 31)},
                        {"E03", Date(), Date()}};
    host.components.response.persons.push_back(known);
    const std::string start =
        "Selezionato=True|Cognome=Conti|Nome=Anna|CodiceFiscale=CNTNNA70A41B639Q|IDPaziente=7|Esenzione=";
    EXPECT_EQ(ElementsOf(component.GetElementListEsentiRedditoSistemaTS(99, "")),
              (Lines{start + "E01|EsenzioneDataInizio=01/01/2012|EsenzioneDataScadenza=01/01/2013",
                     start + "E02|EsenzioneDataInizio=02/01/2012|EsenzioneDataScadenza=31/12/2012", start + "E03"}));
    EXPECT_EQ(host.components.requests, Lines{"exemptions"});
    EXPECT_EQ(Progress(), "38 76 ");  // 10 and 20 of 26
    EXPECT_EQ(
        host.components.credentials.userId + host.components.credentials.password + host.components.credentials.aslCode,
        "");
}

}  // namespace
}  // namespace vlm::test
