#include <sstream>

#include "ImportFixture.h"
#include "creation/ArchiveRecords.h"

namespace vlm::test {
namespace {

constexpr const char* kArchive = R"sql(
INSERT INTO Paziente (IDPaziente, Cognome, Nome, DataNascita, Sesso, CodiceFiscale, NumTesseraSanitaria, NumAssistito,
    DataScadenza, NonIscrittoASL, NoteRevoca) VALUES
    (7, 'Vecchio', 'Nome', '1960-01-01', 'M', 'XXX', 'T7', 'A7', '2030-01-01', 1, 'resta'),
    (8, 'Rossi', 'Ada', '2021-12-31', 'F', 'YYY', NULL, NULL, NULL, 0, NULL),
    (9, 'Rossi', 'Ivo', '1956-01-01', 'M', 'ZZZ', NULL, NULL, NULL, 0, NULL),
    (10, 'Bassi', 'Lea', NULL, 'F', 'WWW', NULL, NULL, NULL, 0, NULL);
INSERT INTO Residenza (IDResidenza, IDPaziente, IDTipoResidenza, IDComune, Indirizzo, Cap, Telefono) VALUES
    (4, 7, 1, 2, 'Via Vecchia', '1', '055'), (5, 7, 2, 4, 'Altra', '2', '06');
INSERT INTO vwPartecipazioneSpesa (IDEsenzione, CodiceIdentificativo, EtaMinEsenzione, EtaMaxEsenzione) VALUES
    (1, 'E01', 6, 65), (2, 'E02', 0, 0), (3, 'E02', 0, 60), (4, 'E03', 10, 0), (5, 'E04', NULL, NULL),
    (6, 'E05', NULL, 65);
INSERT INTO EsenzionePerPaziente (IDEsenzionePerPaziente, IDEsenzione, IDPaziente, DataEsenzione, Scadenza) VALUES
    (20, 2, 10, '2010-01-01', '2011-01-01'), (21, 2, 10, '2012-01-01', '2013-01-01'),
    (22, 2, 10, '2011-01-01', '2012-01-01');
)sql";

class CreationTest : public ImportTest {
protected:
    CreationTest() : ImportTest(kArchive) {
        component.SetLockSrv(host.lockService);
        component.SetRights(host.rights);
    }

    /// An element with these cells, as "Codice=C1|Cognome=Rossi|DataNascita=01/01/1950".
    static ElementListPtr Element(const std::string& cells) {
        ElementListPtr element = NewElementList();
        element->AddNew();
        element->SetValue("Selezionato", true);
        std::istringstream parts(cells);
        for (std::string name, value; std::getline(parts, name, '=') && std::getline(parts, value, '|');) {
            element->SetValue(name, value);
        }
        element->Update();
        return element;
    }
    Lines Patient(int id) const {
        return host.Query(
            "SELECT Cognome, Nome, DataNascita, Sesso, CodiceFiscale, NumTesseraSanitaria, NumAssistito, "
            "DataScelta, DataScadenza, DataSospensione, NonIscrittoASL, IDComuneNascita, NoteRevoca "
            "FROM Paziente WHERE IDPaziente = " +
            std::to_string(id));
    }
    Lines Residences(int id) const {
        return host.Query(
            "SELECT IDResidenza, IDTipoResidenza, IDComune, Indirizzo, Cap, Telefono FROM Residenza "
            "WHERE IDPaziente = " +
            std::to_string(id) + " ORDER BY IDResidenza");
    }
};

TEST_F(CreationTest, ANewPatientWithItsResidence) {
    const auto element = Element(
        "Codice=C1|Cognome=D'Alò|Nome=Lia|DataNascita=01/01/1950|Sesso=M|CodiceFiscale=CNTNNA70A41B639X|"
        "Indirizzo=Via Roma, 1|CAP=22063|DataScelta=03/02/2020|IDComune=1|IDPaziente=0|Sospensione=04/03/2021|"
        "Telefono=031");
    EXPECT_EQ(component.CreatePatient(*element), 11);
    EXPECT_EQ(Patient(11), Lines{"D'Alò|Lia|01/01/1970|F|CNTNNA70A41B639X|C1|C1|03/02/2020|NULL|04/03/2021|0|1|NULL"});
    EXPECT_EQ(Residences(11), Lines{"6|1|1|Via Roma, 1|22063|031"});
    EXPECT_EQ(host.Query("SELECT * FROM BloccoRecord"), Lines{});
}

TEST_F(CreationTest, AKnownPatientIsUpdatedInPlace) {
    const auto element = Element("Codice=C7|Cognome=Nuovo|IDPaziente=7|DataNascita=03/02/1961|Sesso=F|Indirizzo=Via N");
    EXPECT_EQ(component.CreatePatient(*element), 7);
    const Lines expected = {"Nuovo|NULL|03/02/1961|F|NULL|C7|C7|NULL|01/01/2030|NULL|0|NULL|resta"};
    EXPECT_EQ(Patient(7), expected);
    EXPECT_EQ(Residences(7), (Lines{"4|1|0|Via N||055", "5|2|4|Altra|2|06"}));
    EXPECT_EQ(component.CreatePatient(*element), 7);
    EXPECT_EQ(Patient(7), expected);
    EXPECT_EQ(host.Query("SELECT COUNT(*) FROM Paziente"), Lines{"4"});
}

TEST_F(CreationTest, WithoutComuneAddressAndTelephoneThereIsNoResidence) {
    EXPECT_EQ(component.CreatePatient(*Element("Cognome=Solo|CAP=1|IDComune=0|IDPaziente=0")), 11);
    EXPECT_EQ(Residences(11), Lines{});
    EXPECT_EQ(component.CreatePatient(*Element("Cognome=Solo|Telefono=0")), 12);
    EXPECT_EQ(Residences(12), Lines{"6|1|0|||0"});
}

/// A wrong fiscal code leaves what the decoder says empty.
TEST_F(CreationTest, AWrongFiscalCodeIsKeptAndTellsNothing) {
    const char* const cells = "Cognome=X|CodiceFiscale=CNTNNA70A41B639Q|Sesso=M|DataNascita=01/01/1950";
    EXPECT_EQ(component.CreatePatient(*Element(cells)), 11);
    EXPECT_EQ(Patient(11), Lines{"X|NULL|NULL||CNTNNA70A41B639Q|NULL|NULL|NULL|NULL|NULL|0|0|NULL"});
}

TEST_F(CreationTest, AFailureLeavesNeitherPatientNorResidence) {
    host.connection->Execute(
        "CREATE TRIGGER Niente BEFORE INSERT ON Residenza BEGIN SELECT RAISE(ABORT, 'disco pieno'); END");
    const auto element = Element("Cognome=Mezzo|Indirizzo=Via");
    EXPECT_NE(CaughtText([&] { component.CreatePatient(*element); }).find("disco pieno"), std::string::npos);
    EXPECT_EQ(host.Query("SELECT COUNT(*) FROM Paziente"), Lines{"4"});
    host.connection->Execute("DROP TRIGGER Niente");
    EXPECT_EQ(component.CreatePatient(*element), 11);

    component.SetLockSrv(host.LockServiceOf("UGO"));
    const auto known = Element("Cognome=Preso|IDPaziente=7");
    host.connection->Execute(
        "INSERT INTO BloccoRecord (Tabella, Chiave, Utente, Dal) VALUES ('Paziente', 7, 'MARIA', '2026-11-23')");
    EXPECT_EQ(CaughtText([&] { component.CreatePatient(*known); }),
              "Il paziente n. 7 è bloccato da MARIA dal 23/11/2026.");
    EXPECT_EQ(Patient(7).front().substr(0, 7), "Vecchio");
    EXPECT_EQ(CaughtText([&] { component.CreatePatient(*Element("IDPaziente=77")); }),
              "Il paziente n. 77 non è più in archivio.");
}

TEST_F(CreationTest, ExemptionsByCodeAndAge) {
    const RecordSecurity security;
    const ExemptionCreation exemptions(library, security);
    const struct {
        const char* code;
        int age, exemption;
    } cases[] = {{"E01", 5, 1},  {"E01", 6, 1},  {"e01", 7, 0},  {"E01", 30, 0}, {"E01", 65, 1}, {"E01", 70, 1},
                 {"E01", 0, 1},  {"E01", -1, 0}, {"E02", 30, 2}, {"E02", 60, 3}, {"E02", -1, 2}, {"E03", 10, 4},
                 {"E03", 11, 0}, {"E04", 30, 0}, {"E05", 65, 6}, {"E05", 64, 0}, {"E99", 5, 0},  {"E'1", 5, 0}};
    for (const auto& each : cases) {
        EXPECT_EQ(exemptions.FindExemptionByCode(each.code, each.age), each.exemption) << each.code << each.age;
    }
    EXPECT_EQ(exemptions.FindPatientExemption(2, 10), 21);
    EXPECT_EQ(exemptions.FindPatientExemption(2, 7), 0);
    host.connection->Execute("DROP TABLE vwPartecipazioneSpesa");
    EXPECT_EQ(exemptions.FindExemptionByCode("E02", 30), 0);
}

TEST_F(CreationTest, ExemptionsAreAddedOnceAndThenUpdated) {
    const auto element = [&](int patient, const std::string& code, int year) {
        const std::string in = std::to_string(year);
        return Element("IDPaziente=" + std::to_string(patient) + "|Esenzione=" + code + "|EsenzioneDataInizio=01/01/" +
                       in + "|EsenzioneDataScadenza=31/12/" + in);
    };
    const auto rows = [&](int patient) {
        return host.Query(
            "SELECT IDEsenzionePerPaziente, IDEsenzione, DataEsenzione, Scadenza FROM EsenzionePerPaziente "
            "WHERE IDPaziente = " +
            std::to_string(patient) + " ORDER BY IDEsenzionePerPaziente");
    };
    EXPECT_EQ(component.CreateEsenzione(*element(8, "E01", 2026)), -1);
    EXPECT_EQ(rows(8), Lines{"23|1|01/01/2026|31/12/2026"});
    EXPECT_EQ(component.CreateEsenzione(*element(8, "E01", 2027)), -1);
    EXPECT_EQ(rows(8), Lines{"23|1|01/01/2027|31/12/2027"});
    EXPECT_EQ(component.CreateEsenzione(*element(9, "E02", 2026)), -1) << "70 by the calendar";
    EXPECT_EQ(rows(9), Lines{"24|3|01/01/2026|31/12/2026"});
    EXPECT_EQ(component.CreateEsenzione(*element(10, "E02", 2026)), -1) << "no birth date";
    EXPECT_EQ(rows(10),
              (Lines{"20|2|01/01/2010|01/01/2011", "21|2|01/01/2026|31/12/2026", "22|2|01/01/2011|01/01/2012"}));
    EXPECT_EQ(component.CreateEsenzione(*element(10, "E01", 2026)), 0);
    EXPECT_EQ(component.CreateEsenzione(*element(99, "E02", 2026)), 0);
    EXPECT_EQ(component.CreateEsenzione(*element(0, "E02", 2026)), 0);
    EXPECT_EQ(host.Query("SELECT COUNT(*) FROM EsenzionePerPaziente"), Lines{"5"});
    EXPECT_EQ(host.Query("SELECT * FROM BloccoRecord"), Lines{});
}

}  // namespace
}  // namespace vlm::test
