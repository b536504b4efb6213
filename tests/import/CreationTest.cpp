#include "import/ImportFixture.h"
#include "import/creation/ExemptionCreation.h"

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

    ElementListPtr Element(const std::map<std::string, data::Value>& cells) const {
        ElementListPtr element = NewElementList();
        element->AddNew();
        element->SetValue("Selezionato", true);
        for (const auto& [name, value] : cells) element->SetValue(name, value);
        element->Update();
        return element;
    }
    /// One text for each row of a query in the clinic's database, Null as "NULL".
    Lines Query(const std::string& sql) const {
        Lines rows;
        for (const auto set = host.connection->Open(sql); !set->AtEnd(); set->MoveNext()) {
            std::string& row = rows.emplace_back();
            for (int i = 0; i < set->FieldCount(); ++i) {
                row.append(i == 0 ? "" : "|").append(set->IsNull(i) ? "NULL" : set->TextOf(i));
            }
        }
        return rows;
    }
    Lines Patient(int id) const {
        return Query(
            "SELECT Cognome, Nome, DataNascita, Sesso, CodiceFiscale, NumTesseraSanitaria, NumAssistito, "
            "DataScelta, DataScadenza, DataSospensione, NonIscrittoASL, IDComuneNascita, NoteRevoca "
            "FROM Paziente WHERE IDPaziente = " +
            std::to_string(id));
    }
    Lines Residences(int id) const {
        return Query(
            "SELECT IDResidenza, IDTipoResidenza, IDComune, Indirizzo, Cap, Telefono FROM Residenza "
            "WHERE IDPaziente = " +
            std::to_string(id) + " ORDER BY IDResidenza");
    }
    static data::Value Text(const char* value) { return std::string(value); }
    static data::Value Day(int year, int month, int day) { return *Date::FromYmd(year, month, day); }
};

TEST_F(CreationTest, ANewPatientWithItsResidence) {
    const auto element = Element({{"Codice", Text("C1")},
                                  {"Cognome", Text("D'Alò")},
                                  {"Nome", Text("Lia")},
                                  {"DataNascita", Day(1950, 1, 1)},
                                  {"Sesso", Text("M")},
                                  {"CodiceFiscale", Text("CNTNNA70A41B639X")},
                                  {"Indirizzo", Text("Via Roma, 1")},
                                  {"CAP", Text("22063")},
                                  {"DataScelta", Day(2020, 2, 3)},
                                  {"IDComune", std::int64_t{1}},
                                  {"IDPaziente", std::int64_t{0}},
                                  {"Sospensione", Day(2021, 3, 4)},
                                  {"Telefono", Text("031")}});
    EXPECT_EQ(component.CreatePatient(*element), 11);
    EXPECT_EQ(Patient(11), Lines{"D'Alò|Lia|01/01/1970|F|CNTNNA70A41B639X|C1|C1|03/02/2020|NULL|04/03/2021|0|1|NULL"});
    EXPECT_EQ(Residences(11), Lines{"6|1|1|Via Roma, 1|22063|031"});
    EXPECT_EQ(Query("SELECT * FROM BloccoRecord"), Lines{});
}

TEST_F(CreationTest, AKnownPatientIsUpdatedInPlace) {
    const auto element = Element({{"Codice", Text("C7")},
                                  {"Cognome", Text("Nuovo")},
                                  {"IDPaziente", std::int64_t{7}},
                                  {"DataNascita", Day(1961, 2, 3)},
                                  {"Sesso", Text("F")},
                                  {"Indirizzo", Text("Via N")}});
    EXPECT_EQ(component.CreatePatient(*element), 7);
    const Lines expected = {"Nuovo|NULL|03/02/1961|F|NULL|C7|C7|NULL|01/01/2030|NULL|0|NULL|resta"};
    EXPECT_EQ(Patient(7), expected);
    EXPECT_EQ(Residences(7), (Lines{"4|1|0|Via N||055", "5|2|4|Altra|2|06"}));
    EXPECT_EQ(component.CreatePatient(*element), 7);
    EXPECT_EQ(Patient(7), expected);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM Paziente"), Lines{"4"});
}

TEST_F(CreationTest, WithoutComuneAddressAndTelephoneThereIsNoResidence) {
    EXPECT_EQ(component.CreatePatient(*Element({{"Cognome", Text("Solo")},
                                                {"CAP", Text("1")},
                                                {"IDComune", std::int64_t{0}},
                                                {"IDPaziente", std::int64_t{0}}})),
              11);
    EXPECT_EQ(Residences(11), Lines{});
    EXPECT_EQ(component.CreatePatient(*Element({{"Cognome", Text("Solo")}, {"Telefono", Text("0")}})), 12);
    EXPECT_EQ(Residences(12), Lines{"6|1|0|||0"});
}

/// A wrong fiscal code leaves what the decoder says empty.
TEST_F(CreationTest, AWrongFiscalCodeIsKeptAndTellsNothing) {
    EXPECT_EQ(component.CreatePatient(*Element({{"Cognome", Text("X")},
                                                {"CodiceFiscale", Text("CNTNNA70A41B639Q")},
                                                {"Sesso", Text("M")},
                                                {"DataNascita", Day(1950, 1, 1)}})),
              11);
    EXPECT_EQ(Patient(11), Lines{"X|NULL|NULL||CNTNNA70A41B639Q|NULL|NULL|NULL|NULL|NULL|0|0|NULL"});
}

TEST_F(CreationTest, AFailureLeavesNeitherPatientNorResidence) {
    host.connection->Execute(
        "CREATE TRIGGER Niente BEFORE INSERT ON Residenza BEGIN SELECT RAISE(ABORT, 'disco pieno'); END");
    const auto element = Element({{"Cognome", Text("Mezzo")}, {"Indirizzo", Text("Via")}});
    EXPECT_NE(ErrorOf([&] { component.CreatePatient(*element); }).find("disco pieno"), std::string::npos);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM Paziente"), Lines{"4"});
    host.connection->Execute("DROP TRIGGER Niente");
    EXPECT_EQ(component.CreatePatient(*element), 11);

    component.SetLockSrv(host.LockServiceOf("UGO"));
    const auto known = Element({{"Cognome", Text("Preso")}, {"IDPaziente", std::int64_t{7}}});
    host.connection->Execute(
        "INSERT INTO BloccoRecord (Tabella, Chiave, Utente, Dal) VALUES ('Paziente', 7, 'MARIA', '2026-11-23')");
    EXPECT_EQ(ErrorOf([&] { component.CreatePatient(*known); }),
              "Il paziente n. 7 è bloccato da MARIA dal 23/11/2026.");
    EXPECT_EQ(Patient(7).front().substr(0, 7), "Vecchio");
    EXPECT_EQ(ErrorOf([&] {
                  component.CreatePatient(*Element({{"IDPaziente", std::int64_t{77}}}));
              }),
              "Il paziente n. 77 non è più in archivio.");
}

TEST_F(CreationTest, ExemptionsByCodeAndAge) {
    const RecordSecurity security;
    const ExemptionCreation exemptions(library, security);
    const struct {
        const char* code;
        int age;
        int exemption;
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
    const auto element = [&](int patient, const char* code, int year) {
        return Element({{"IDPaziente", std::int64_t{patient}},
                        {"Esenzione", Text(code)},
                        {"EsenzioneDataInizio", Day(year, 1, 1)},
                        {"EsenzioneDataScadenza", Day(year, 12, 31)}});
    };
    const auto rows = [&](int patient) {
        return Query(
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
    EXPECT_EQ(Query("SELECT COUNT(*) FROM EsenzionePerPaziente"), Lines{"5"});
    EXPECT_EQ(Query("SELECT * FROM BloccoRecord"), Lines{});
}

}  // namespace
}  // namespace vlm::test
