#include <sstream>

#include "ImportConfirmation.h"
#include "ImportFixture.h"
#include "creation/ArchiveRecords.h"
#include "elements/ArchiveMatcher.h"
#include "elements/ComuneFinder.h"

namespace vlm::test {
namespace {

using MatchingTest = ImportTest;

TEST_F(MatchingTest, ByCodeThenByFiscalCode) {
    ArchiveMatcher archive(library);
    const std::pair<const char*, int> codes[] = {{"T7", 7}, {"a7", 7},      {"T3", 3},     {"t3  ", 3},
                                                 {"", 0},   {"(NULLO)", 0}, {"X'; --", 0}, {"T", 0}};
    for (const auto& [code, patient] : codes) EXPECT_EQ(archive.FindPatientByCode(code), patient) << code;
    EXPECT_EQ(Joined(archive.FindPatientByFiscalCode("cntnna70a41b639q"),
                     archive.FindPatientByFiscalCode("DPPDPP70A01H501X"), archive.FindPatientByFiscalCode("")),
              "7|3|0|");
    host.connection->Execute(
        "INSERT INTO Paziente (IDPaziente, NumAssistito, CodiceFiscale) VALUES (99, 'N1', 'NUOVO')");
    EXPECT_EQ(archive.FindPatientByFiscalCode("NUOVO"), 0) << "the snapshot is of the read's start";
    archive.Close();
    EXPECT_EQ(archive.FindPatientByFiscalCode("NUOVO"), 99);
    EXPECT_EQ(archive.FindPatientByCode("N1"), 99) << "the assisted number is there after a look-up by fiscal code";
}

/// A source that is small against the archive asks for its patients; the elements are those of the whole archive.
TEST_F(MatchingTest, AskingGivesTheAnswersOfTheSnapshot) {
    const std::string alone =
        "testata\n1;T5;CF6;A;B;;;;;;;;x y\n2;ignoto;cf6;A;B;;;;;;;;x y\n3;a5;CF5;A;B;;;;;;;;x y\n"
        "4;D'ELIA;CF60;A;B;;;;;;;;x y\n5;z;CNTNNA70A41B639Q;A;B;;;;;;;;x y\n6;A7;;A;B;;;;;;;;x y\n";
    const std::string shared =
        alone + "7;T7;;A;B;;;;;;;;x y\n8;t3;;A;B;;;;;;;;x y\n9;z;DPPDPP70A01H501X;A;B;;;;;;;;x y\n";
    const auto patients = [&](const std::string& text) {
        std::string found;
        const auto elements = component.GetElementList(Source(text));
        for (; !elements->AtEnd(); elements->MoveNext()) {
            found.append(elements->TextOf(OrdinalOf(ElementColumn::IDPaziente))).append(" ");
        }
        return found;
    };
    host.connection->Execute(
        "INSERT INTO Paziente (IDPaziente, NumTesseraSanitaria, NumAssistito, CodiceFiscale) VALUES"
        " (105, 'T5', 'A6', 'CF5'), (106, 'T6', 'A5', 'CF6')");
    EXPECT_EQ(patients(alone), "105 106 106 0 7 7 ");
    EXPECT_EQ(patients(shared), "105 106 106 0 7 7 7 3 3 ");
    host.connection->Execute(
        "WITH RECURSIVE n(i) AS (SELECT 200 UNION ALL SELECT i + 1 FROM n WHERE i < 1200) INSERT INTO Paziente "
        "(IDPaziente, NumTesseraSanitaria, CodiceFiscale) SELECT i, 'T' || i, 'Z' FROM n");
    EXPECT_EQ(patients(alone), "105 106 106 0 7 7 ");
    EXPECT_EQ(patients(shared), "105 106 106 0 7 7 7 3 3 ");
    // Only the whole archive knows whom nobody asked for; it is asked where several patients share a code.
    for (const bool several : {false, true}) {
        ArchiveMatcher asked(library);
        EXPECT_TRUE(asked.IsWorthAsking(40));
        EXPECT_FALSE(asked.IsWorthAsking(60));
        asked.AskFor({"T500", several ? "t3" : "z"}, {});
        EXPECT_EQ(asked.FindPatientByCode("T500"), 500);
        EXPECT_EQ(asked.FindPatientByCode("T700"), several ? 700 : 0);
    }
}

TEST_F(MatchingTest, ComuniByNameAndByIstatCode) {
    host.connection->Execute(
        "INSERT INTO Aldra..Comune (IDComune, Comune, CodiceISTAT, Cap) VALUES (20, 'ROMANO D''EZZELINO', '024086', "
        "'36060'), (21, 'Romagnano al Monte', '065110', '84020'), (22, 'CANTÙ ASNAGO', '1', '1'), "
        "(23, 'Z_%[x', '2', '2')");
    ComuneFinder comuni(library);
    const std::pair<const char*, int> names[] = {
        {"roma", 4}, {"ROMAG", 21}, {"romano d'ez", 20}, {"cantÙ", 1},  {"CANTÙ A", 22}, {"Cant", 1},
        {"", 0},     {"Z_", 0},     {"Z%", 0},           {"R[o]ma", 0}, {"Nessuno", 0},  {"D'X", 0}};
    for (const auto& [name, comune] : names) EXPECT_EQ(comuni.FindComuneByName(name), comune) << name;
    EXPECT_EQ(Joined(comuni.PostalCodeOf(1), comuni.PostalCodeOf(4), comuni.FindComuneByIstat("082053")->name,
                     comuni.FindComuneByIstat("82053")->cap, comuni.FindComuneByIstat("999999")->id),
              "22063||Palermo|90100|0|");
    for (const char* code : {"", "08205x", "1 OR 1=1", "-1", "12345678901234567890"}) {
        EXPECT_FALSE(comuni.FindComuneByIstat(code)) << code;
    }
    // One look-up in a read: what changes meanwhile is seen by the next.
    host.connection->Execute("UPDATE Aldra..Comune SET Comune = 'X' WHERE IDComune = 4");
    EXPECT_EQ(comuni.FindComuneByName("roma"), 4);
    EXPECT_EQ(ComuneFinder(library).FindComuneByName("roma"), 21);
}

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

TEST_F(CreationTest, PatientsAndTheirResidences) {
    const std::string known = "Codice=C7|Cognome=Nuovo|IDPaziente=7|DataNascita=03/02/1961|Sesso=F|Indirizzo=Via N";
    const std::string updated = "Nuovo|NULL|03/02/1961|F|NULL|C7|C7|NULL|01/01/2030|NULL|0|NULL|resta";
    const std::tuple<std::string, int, std::string, Lines> cases[] = {
        {"Codice=C1|Cognome=D'Alò|Nome=Lia|DataNascita=01/01/1950|Sesso=M|CodiceFiscale=CNTNNA70A41B639X|"
         "Indirizzo=Via Roma, 1|CAP=22063|DataScelta=03/02/2020|IDComune=1|IDPaziente=0|Sospensione=04/03/2021|"
         "Telefono=031",
         11,
         "D'Alò|Lia|01/01/1970|F|CNTNNA70A41B639X|C1|C1|03/02/2020|NULL|04/03/2021|0|1|NULL",
         {"6|1|1|Via Roma, 1|22063|031"}},
        {known, 7, updated, {"4|1|0|Via N||055", "5|2|4|Altra|2|06"}},
        {known, 7, updated, {"4|1|0|Via N||055", "5|2|4|Altra|2|06"}},
        {"Cognome=Solo|CAP=1|IDComune=0", 12, "Solo|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|0|NULL|NULL", {}},
        // A wrong fiscal code leaves what the decoder says empty.
        {"Cognome=X|CodiceFiscale=CNTNNA70A41B639Q|Sesso=M|DataNascita=01/01/1950|Telefono=0",
         13,
         "X|NULL|NULL||CNTNNA70A41B639Q|NULL|NULL|NULL|NULL|NULL|0|0|NULL",
         {"7|1|0|||0"}},
    };
    for (const auto& [cells, id, patient, residences] : cases) {
        EXPECT_EQ(component.CreatePatient(*Element(cells)), id);
        EXPECT_EQ(Patient(id), Lines{patient});
        EXPECT_EQ(Residences(id), residences);
    }
    EXPECT_EQ(host.Query("SELECT COUNT(*) FROM Paziente"), Lines{"7"});
    EXPECT_EQ(host.Query("SELECT * FROM BloccoRecord"), Lines{});
}

/// Not so the public operation, nor a list that has one patient twice.
TEST_F(CreationTest, APatientWhomSomebodyElseHasEnteredSinceTheReadingIsNotConfirmed) {
    component.RememberArchive();
    host.connection->Execute(
        "INSERT INTO Paziente (IDPaziente, NumAssistito, CodiceFiscale) VALUES (50, 'c1 ', 'CF50')");
    for (const char* cells :
         {"Codice=C1|Cognome=A", "Codice=(NULLO)|CodiceFiscale=cf50", "Codice=X|CodiceFiscale=CF50"}) {
        EXPECT_EQ(CaughtText([&] { component.ConfirmPatient(*Element(cells)); }),
                  "intanto un altro utente lo ha inserito in archivio (paziente n. 50): rileggere la fonte.");
    }
    EXPECT_EQ(component.CreatePatient(*Element("Codice=C1|Cognome=A")), 51);
    component.RememberArchive();
    for (const int id : {52, 53}) EXPECT_EQ(component.ConfirmPatient(*Element("Codice=C1|Cognome=A")), id);
    EXPECT_EQ(component.ConfirmPatient(*Element("Codice=C7|Cognome=Nuovo|IDPaziente=7")), 7);
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

TEST_F(CreationTest, APatientWhomTheHostDoesNotStoreIsNotWritten) {
    host.components.savesPatients = false;
    EXPECT_EQ(component.CreatePatient(*Element("Cognome=Nuovo")), 0);
    ImportConfirmation confirmation(component, ImportConfirmation::Kind::Patients, [](int) { return true; });
    confirmation.Run(*PatientGrid(Element("Cognome=Conti|Nome=Lia|Indirizzo=Via|IDPaziente=7")));
    EXPECT_EQ(confirmation.Summary(),
              "Importazione conclusa.\r\nPazienti scritti: 0\r\nPazienti non scritti: 1\r\n"
              "Conti Lia: il paziente non è stato salvato.");
    EXPECT_EQ(Residences(7).front().substr(0, 19), "4|1|2|Via Vecchia|1");
}

TEST_F(CreationTest, ExemptionsByCodeAndAge) {
    const RecordSecurity security;
    const ExemptionCreation exemptions(library, security);
    const std::tuple<const char*, int, int> cases[] = {
        {"E01", 5, 1},  {"E01", 6, 1},  {"e01", 7, 0},  {"E01", 30, 0}, {"E01", 65, 1}, {"E01", 70, 1},
        {"E01", 0, 1},  {"E01", -1, 0}, {"E02", 30, 2}, {"E02", 60, 3}, {"E02", -1, 2}, {"E03", 10, 4},
        {"E03", 11, 0}, {"E04", 30, 0}, {"E05", 65, 6}, {"E05", 64, 0}, {"E99", 5, 0},  {"E'1", 5, 0}};
    for (const auto& [code, age, exemption] : cases) {
        EXPECT_EQ(exemptions.FindExemptionByCode(code, age), exemption) << code << age;
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
