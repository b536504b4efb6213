#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "ImportFixture.h"
#include "support/ServiceClinic.h"
#include "support/Words.h"

namespace vlm::test {
namespace {

using Json = nlohmann::json;

constexpr const char* kArchiveOfTheDialog = R"sql(
INSERT INTO Paziente (IDPaziente, CodicePaziente, Cognome, Nome, DataNascita, Sesso, CodiceFiscale,
    NumTesseraSanitaria, DataScelta, Revocato) VALUES
    (7, 'P7', 'Conti', 'Anna', '1970-01-01', 'F', 'CNTNNA70A41B639X', 'T7', '2001-02-03', 0),
    (8, '', 'Assente', 'Ivo', '1960-02-03', 'M', 'SSNVIO60B03H501X', 'T8', NULL, NULL),
    (9, 'P9', 'Andato', 'Ugo', '1950-02-03', 'M', NULL, NULL, NULL, 1),
    (10, 'P10', 'Bimbi', 'Leo', '2022-01-01', 'M', 'BMBLEO22A01H501X', NULL, NULL, 0);
INSERT INTO vwPartecipazioneSpesa VALUES (1, 'E01', 6, 65, 0);
INSERT INTO Specialista VALUES (3, 'Verdi', 'Pia', '900009');
INSERT INTO ParametroSpecialista VALUES (3, 'INPSUtente', 'MEDICO3');
INSERT INTO vwstudi VALUES ('190', '201');
CREATE TRIGGER Rifiuta BEFORE INSERT ON Paziente WHEN NEW.Cognome = 'Rifiutato'
    BEGIN SELECT RAISE(ABORT, 'rifiutato'); END;
)sql";

constexpr const char* kMaster = "INSERT INTO TipoRevocaPaziente VALUES (1, 'Deceduto'), (2, 'Trasferito');";

constexpr const char* kTemplate =
    "[FILETYPE]=TD\r\n[DELIMITER]=;\r\n[Codice]=1\r\n[Cognome]=2\r\n[Nome]=3\r\n[CodiceFiscale]=4\r\n"
    "[DataNascita]=5\r\n[Comune]=6\r\n[Indirizzo]=7\r\n[Esenzione]=8\r\n[EsenzioneDataInizio]=9\r\n";

class ImportDialogTest : public ::testing::Test {
protected:
    ImportDialogTest() {
        std::filesystem::create_directories(host.folder.Path() / "Inst" / "Import");
        std::filesystem::create_directories(host.folder.Path() / "work");
        WriteBytes(host.folder / "Inst/Import/zeta.acf", kTemplate);
        WriteBytes(host.folder / "Inst/Import/Alfa.ACF", "[FILETYPE]=XX");
        WriteBytes(host.folder / "Inst/Import/ABRUZZO.ACF", kTemplate);
        WriteBytes(host.folder / "Inst/Import/Esenti.ECF", kTemplate);
    }

    /// Runs the dialog with steps; what it says from its opening on, a line or more for each event but pointers and
    /// progress: see Tell.
    Lines Run(const std::string& steps) {
        run = RunReferenceHost(WordsOf("--data " + host.folder.Path().string() + " --work " + host.folder / "work" +
                                       " --settings " + host.folder / "set.ini" + " --install " + host.folder / "Inst" +
                                       " --today 2026-11-23 --clinic 12 ASLImportPatient " + steps));
        Lines said;
        for (const std::string& line : run.events) Tell(Json::parse(line), said);
        return said;
    }
    /// A message's parts; what else happens by its name; of a control that is asked for its caption and value, the
    /// entries of a list, whether it is disabled or hidden, and the rows of a grid.
    static void Tell(const Json& event, Lines& said) {
        const std::string kind = event["event"];
        const std::string name = event.value("name", "");
        if (kind == "pointer" || kind == "progress" || kind == "closed" || name == "frmASLImportPatient") return;
        if (kind == "message") {
            said.push_back(event["icon"].get<std::string>() + "|" + event["caption"].get<std::string>() + "|" +
                           event["text"].get<std::string>());
            return;
        }
        std::string& line = said.emplace_back(
            kind == "state" ? name : kind + " " + name + event.value("command", "") + event.value("filter", ""));
        if (kind != "state") return;
        const auto add = [&](const std::string& text) { line += (text.empty() ? "" : " ") + text; };
        add(event["caption"]);
        add(event["value"].is_string() ? event["value"].get<std::string>() : event["value"].dump());
        if (event.contains("items")) line += ":";
        for (const Json& item : event.value("items", Json::array())) line += item["text"].get<std::string>() + ",";
        if (!event["enabled"]) line += " disabled";
        if (!event["visible"]) line += " hidden";
        for (const Json& cells : event.value("cells", Json::array())) {
            std::string& row = said.emplace_back();
            for (const Json& cell : cells) row += (row.empty() ? "" : "|") + cell.get<std::string>();
        }
    }
    std::string Source(const std::string& text, const std::string& name = "elenco.csv") const {
        WriteBytes(host.folder / name, text::ToAnsi(text));
        return host.folder / name;
    }
    /// Reads a patient list with the template "zeta", then goes on.
    std::string Reading(const std::string& text, const std::string& more) const {
        return "cboASL=#32 txtPath=" + Source(text) + " cmdElabora! " + more;
    }

    ArchiveHost host{kArchiveOfTheDialog, kMaster};
    HostRun run;  // the last one
    const std::string list =
        "T7;Conti;Anna;CNTNNA70A41B639X;01/01/1970;Roma;Via A\r\n"
        "N1;Nuovo;Ezio;NVUZEI80A01H501X;;Cantù;Via B\r\n"
        "N2;Altro;Elio;LTRLEI80A01H501X;31/02/2000;;\r\n";
    const Lines listed = {"0|T7|Conti|Anna|01/01/1970||CNTNNA70A41B639X||Roma|Via A|4|7|||",
                          "1|N1|Nuovo|Ezio|||NVUZEI80A01H501X||Cantù|Via B|1|0|||",
                          "1|N2|Altro|Elio|||LTRLEI80A01H501X||||0|0|||"};
    /// Asked after a read of it.
    const std::string anomalies =
        "question|Attenzione!|Sono state riscontrate alcune anomalie durante la lettura del file.\r\nSi vuole "
        "procedere con la visualizzazione del dettaglio delle anomalie?";
    const std::string failure = "critical|Errore!!|Si sono verificati degli errori durante l'elaborazione:\r\n\r\n";
};

TEST_F(ImportDialogTest, ListsAndVisibilityFollowTheChoices) {
    const std::string filters =
        "tutti i pazienti nella fonte,presenti nella fonte e non presenti in Aldra,presenti in Aldra e non presenti "
        "nella fonte,";
    const std::string kinds = "Anagrafica pazienti,Esenti per reddito,";
    const std::string probes =
        " cboImportazione? cboASL? grdList? grdList1? grdList2? txtPath? cboSpecialista? cboFiltro? cmdConferma?";
    const std::string fixed = "cboASL -1:" + std::string(kAuthorityNames) + "ABRUZZO,Alfa,zeta,";
    EXPECT_EQ(Run(probes + " cboTipoImportazione? lblConteggio? lblSelezionati? lblLettura? prgLettura?"),
              (Lines{"cboImportazione 0:" + kinds, fixed, "grdList", "grdList1 hidden", "grdList2 hidden", "txtPath",
                     "cboSpecialista 0:Verdi Pia, hidden", "cboFiltro 0:" + filters, "cmdConferma &Importa",
                     "cboTipoImportazione 0:File di testo,Sistema TS,", "lblConteggio",
                     "lblSelezionati Selezionati 0 pazienti.", "lblLettura Lettura file in corso... hidden",
                     "prgLettura 0 hidden"}));
    EXPECT_EQ(Run("cboFiltro=#2" + probes),
              (Lines{"cboImportazione 0:" + kinds, fixed, "grdList hidden", "grdList1 hidden", "grdList2", "txtPath",
                     "cboSpecialista 0:Verdi Pia, hidden", "cboFiltro 2:" + filters, "cmdConferma &Revoca"}));
    EXPECT_EQ(Run("cboFiltro=#2 cboImportazione=#1 cboTipoImportazione=#1" + probes),
              (Lines{"cboImportazione 1:" + kinds, "cboASL -1:Esenti, hidden", "grdList hidden", "grdList1",
                     "grdList2 hidden", "txtPath hidden", "cboSpecialista 0:Verdi Pia,",
                     "cboFiltro 2:" + filters + " disabled", "cmdConferma &Importa"}));
    EXPECT_EQ(Run("cboFiltro=#2 cboFiltro=#1 cboImportazione=#1 cboImportazione=#0 cmdConferma? cboFiltro?"),
              (Lines{"cmdConferma &Importa", "cboFiltro 1:" + filters}));
    Run("cboTipoImportazione=#1 txtPath=x");
    EXPECT_EQ(run.status, 2) << "a hidden field takes no text";
}

TEST_F(ImportDialogTest, BrowsesWithTheButtonOrItsKey) {
    const std::string chosen = host.folder / "scelto.csv";
    const std::string choose = "choose All files (*.*)|*.*|ASL files|*.csv;*.xls";
    for (const char* step : {" cmdLink!", " key:txtPath=Ctrl+R"}) {
        EXPECT_EQ(Run("answer:" + chosen + step + " txtPath?"), (Lines{choose, "txtPath " + chosen}));
    }
    EXPECT_EQ(Run("txtPath=a key:txtPath=R answer:cancel cmdLink! txtPath?"), (Lines{choose, "txtPath a"}));
}

TEST_F(ImportDialogTest, ReadsFiltersAndCounts) {
    host.Connect()->Execute("UPDATE Paziente SET DataScelta = Cognome WHERE IDPaziente = 10");  // a date that is none
    EXPECT_EQ(Run(Reading(list, "grdList? grdList2? lblConteggio? lblSelezionati? lblLettura?")),
              (Lines{anomalies, "grdList"} + listed +
               Lines{"grdList2 hidden", "0|T8|Assente|Ivo|03/02/1960|M|SSNVIO60B03H501X||8|",
                     "0|P10|Bimbi|Leo|01/01/2022|M|BMBLEO22A01H501X||10|", "lblConteggio ( 3 pazienti )",
                     "lblSelezionati Selezionati 2 pazienti.", "lblLettura Popolamento griglia in corso... hidden"}));
    std::string columns;
    for (const std::string& line : run.events) {
        const Json event = Json::parse(line);
        for (const Json& column : event.value("columns", Json::array())) {
            columns += column["name"].get<std::string>() + (column["visible"] ? ":" : ":hidden ") +
                       column["title"].get<std::string>() + "|";
        }
    }
    EXPECT_EQ(columns,
              "Selezionato:Importa|Codice:Codice paziente|Cognome:Cognome|Nome:Nome|DataNascita:Data nascita|"
              "Sesso:Sesso|CodiceFiscale:Codice fiscale|DataScelta:Data scelta|Comune:Comune di residenza|"
              "Indirizzo:Indirizzo|IDComune:hidden IDComune|IDPaziente:hidden IDPaziente|Scadenza:Scadenza|"
              "Sospensione:Sospensione|Telefono:Telefono|"
              "Selezionato:Importa|CodicePaziente:Codice paziente|Cognome:Cognome|Nome:Nome|DataNascita:Data nascita|"
              "Sesso:Sesso|CodiceFiscale:Codice fiscale|DataScelta:Data scelta|IDPaziente:hidden IDPaziente|"
              "Revocato:Revocato|");
    // Rows that the filter hides keep their selection.
    EXPECT_EQ(Run(Reading(list,
                          "cmdSelezionaTutti! cboFiltro=#1 grdList? lblConteggio? lblSelezionati? grdList!1 "
                          "cmdSeleziona! lblSelezionati? cboFiltro=#0 lblSelezionati?")),
              (Lines{anomalies, "grdList", listed[1], listed[2], "lblConteggio ( 2 pazienti )",
                     "lblSelezionati Selezionati 2 pazienti.", "lblSelezionati Selezionati 1 pazienti.",
                     "lblSelezionati Selezionati 2 pazienti."}));
    EXPECT_EQ(Run(Reading(list, "cboFiltro=#2 lblConteggio? lblSelezionati? cmdSelezionaTutti! lblSelezionati?")),
              (Lines{anomalies, "lblConteggio ( 2 pazienti )", "lblSelezionati Selezionati 0 pazienti.",
                     "lblSelezionati Selezionati 2 pazienti."}));
    EXPECT_EQ(Run(Reading("", "lblConteggio?")), Lines{"lblConteggio ( 0 pazienti )"});
}

TEST_F(ImportDialogTest, ShowsWhatAReadCouldNotTakeAndPrintsTheGrid) {
    const std::string notepad = "run Notepad.exe " + host.folder / "work";
    EXPECT_EQ(Run("answer:yes " + Reading(list, "cboFiltro=#1 cmdStampa!")),
              (Lines{anomalies, notepad + "\\Anomalie importazione.txt", notepad + "\\Stampa importazione.txt"}));
    EXPECT_EQ(ReadBytes(host.folder / "work/Anomalie importazione.txt"),
              text::ToAnsi("Riga 3, DataNascita: \"31/02/2000\" non è una data.\r\n"));
    EXPECT_EQ(
        ReadBytes(host.folder / "work/Stampa importazione.txt"),
        text::ToAnsi("Importa  Codice paziente  Cognome  Nome  Data nascita  Sesso  Codice fiscale    Data scelta  "
                     "Comune di residenza  Indirizzo  Scadenza  Sospensione  Telefono\r\n"
                     "x        N1               Nuovo    Ezio                       NVUZEI80A01H501X               "
                     "Cantù                Via B\r\n"
                     "x        N2               Altro    Elio                       LTRLEI80A01H501X\r\n"));
}

TEST_F(ImportDialogTest, ConfirmsTheSelectedRowsAndTellsTheRest) {
    std::string refused = list;
    refused.replace(refused.find("Altro"), 5, "Rifiutato");
    const Lines said = Run(Reading(refused, "cmdConferma! grdList? lblSelezionati? cboFiltro=#1 lblConteggio?"));
    ASSERT_EQ(said.size(), 8U);
    const std::string told =
        "information|Aldra|Importazione conclusa.\r\nPazienti scritti: 1\r\nPazienti non scritti: 1\r\nRifiutato "
        "Elio: ";
    EXPECT_EQ(said[1].substr(0, told.size()), told);
    EXPECT_NE(said[1].find("rifiutato"), std::string::npos);
    EXPECT_EQ(Lines(said.begin() + 2, said.end()),
              (Lines{"grdList", listed[0], "0|N1|Nuovo|Ezio|||NVUZEI80A01H501X||Cantù|Via B|1|11|||",
                     "1|N2|Rifiutato|Elio|||LTRLEI80A01H501X||||0|0|||", "lblSelezionati Selezionati 1 pazienti.",
                     "lblConteggio ( 1 pazienti )"}));
    EXPECT_EQ(host.Query("SELECT IDPaziente, Cognome, NumAssistito FROM Paziente WHERE IDPaziente > 10"),
              Lines{"11|Nuovo|N1"});
    EXPECT_EQ(host.Query("SELECT IDPaziente, IDComune, Indirizzo, Cap FROM Residenza"), Lines{"11|1|Via B|22063"});
}

TEST_F(ImportDialogTest, HiddenRowsAreConfirmedAfterAQuestion) {
    const std::string question =
        "question|Attenzione!|Sono selezionati anche 1 pazienti non visualizzati.\r\nSi vuole procedere?";
    const std::string steps = Reading(list, "cmdSelezionaTutti! cboFiltro=#1 cmdConferma!");
    EXPECT_EQ(Run(steps), (Lines{anomalies, question}));
    EXPECT_EQ(host.Query("SELECT COUNT(*) FROM Paziente"), Lines{"4"});
    EXPECT_EQ(Run("answer:no answer:yes " + steps),
              (Lines{anomalies, question,
                     "information|Aldra|Importazione conclusa.\r\nPazienti scritti: 3\r\nPazienti non scritti: 0"}));
    EXPECT_EQ(host.Query("SELECT COUNT(*) FROM Paziente"), Lines{"6"});
    // The same list once more: everybody is known now.
    EXPECT_EQ(Run(Reading(list, "lblSelezionati? cboFiltro=#1 lblConteggio?")),
              (Lines{anomalies, "lblSelezionati Selezionati 0 pazienti.", "lblConteggio ( 0 pazienti )"}));
}

TEST_F(ImportDialogTest, ExemptionsOfAFile) {
    const std::string source =
        Source(";Bimbi;Leo;BMBLEO22A01H501X;;;;E1;01/01/2026\r\n;Conti;Anna;CNTNNA70A41B639X;;;;E01;01/01/2026\r\n");
    EXPECT_EQ(Run("cboImportazione=#1 cboASL=#0 txtPath=" + source +
                  " cmdElabora! lblConteggio? grdList1? cmdSelezionaTutti! cmdConferma!"),
              (Lines{"lblConteggio ( 2 elementi )", "grdList1", "0||Bimbi|Leo|||BMBLEO22A01H501X|E01|10|01/01/2026|",
                     "0||Conti|Anna|||CNTNNA70A41B639X|E01|7|01/01/2026|",
                     "information|Aldra|Importazione conclusa.\r\nEsenzioni scritte: 1\r\n"
                     "Esenzioni non scritte: 1\r\nConti Anna: l'esenzione non è stata scritta: il "
                     "paziente non è in archivio o il codice non vale per la sua età."}));
    EXPECT_EQ(host.Query("SELECT IDEsenzione, IDPaziente, DataEsenzione, Scadenza FROM EsenzionePerPaziente"),
              Lines{"1|10|01/01/2026|NULL"});
}

TEST_F(ImportDialogTest, ErrorsOfReadersAreToldAndLeaveNothingShown) {
    EXPECT_EQ(Run("cmdElabora!"),
              (Lines{"exclamation|Attenzione!!|Selezionare l'ASL di riferimento.", "focus cboASL"}));
    const std::string missing = host.folder / "manca.txt";
    const std::string reason = "Impossibile aprire il file " + missing + ": percorso inesistente.";
    EXPECT_EQ(Run(Reading(list, "txtPath=" + missing + " cboASL=#22 cmdElabora! grdList? lblConteggio? lblLettura?")),
              (Lines{anomalies, failure + reason, "grdList", "lblConteggio",
                     "lblLettura Lettura sorgente in corso... hidden"}));
    const std::string told =
        "critical|Aldra|Si è verificato un errore durante la lettura del file.\r\nIl messaggio tecnico dell'errore "
        "è: ";
    EXPECT_EQ(Run("cboASL=#32 txtPath=" + missing + " cmdElabora!"), Lines{told + reason});
    EXPECT_EQ(Run("cboASL=#31 txtPath=" + Source(list) + " cmdElabora!"), Lines{}) << "a template of no known type";
    EXPECT_EQ(Run("cboASL=#1 txtPath=" + Source(list) + " cmdElabora!"),
              Lines{told + "Impossibile aprire il file " + host.folder / "Inst" +
                    "\\Import\\BASILICATA.ACF: percorso inesistente."});
}

TEST_F(ImportDialogTest, HealthCardListsAskThePinOnce) {
    WriteBytes(host.folder / "Inst/SistemaTS.json",
               R"({"error":false,"errors":[],"persons":[{"fiscalCode":"CNTNNA70A41B639X","surname":"Conti",)"
               R"("firstName":"Anna","exemptions":[{"code":"E01","start":"2026-01-01T00:00:00",)"
               R"("end":"2026-12-31T23:00:00"}]},{"fiscalCode":"NUOVO","surname":"Nuovi","firstName":"Lia"}]})");
    const std::string pin = "in:frmInpsPIN txtConferma=1234567890 txtConferma? cmdConferma! end: ";
    EXPECT_EQ(Run(pin + "cboTipoImportazione=#1 cboSpecialista=3 cmdElabora! grdList? lblConteggio? "
                        "cboImportazione=#1 cmdElabora! grdList1?"),
              (Lines{"dialog frmInpsPIN", "txtConferma set", "grdList", "0||Conti|Anna|||CNTNNA70A41B639X|||||7|||",
                     "1||Nuovi|Lia|||NUOVO|||||0|||", "lblConteggio ( 2 pazienti )", "grdList1",
                     "1||Conti|Anna|||CNTNNA70A41B639X|E01|7|01/01/2026|01/01/2027"}));
    EXPECT_EQ(run.status, 0) << run.errors;
    for (const std::string& event : run.events) {
        EXPECT_EQ(event.find("1234567890"), std::string::npos) << "a PIN stands in no event";
    }
    for (const char* cancelled : {"txtConferma=1 cmdAnnulla!", "txtConferma=1", "cmdConferma!"}) {
        EXPECT_EQ(Run("in:frmInpsPIN " + std::string(cancelled) +
                      " end: " + Reading(list, "cboTipoImportazione=#1 cmdElabora! lblLettura? grdList?")),
                  (Lines{anomalies, "dialog frmInpsPIN", "lblLettura Lettura sorgente in corso... hidden", "grdList"} +
                   listed))
            << "a cancelled PIN keeps what is shown";
    }
    Run("in:frmInpsPIN txtConferma=1234567890 end:");
    EXPECT_NE(run.errors.find("frmInpsPIN"), std::string::npos);
    EXPECT_EQ(run.errors.find("1234567890"), std::string::npos) << run.errors;
}

TEST_F(ImportDialogTest, RevokesOnePatientAtATime) {
    const auto revoke = [&](const std::string& inside, const std::string& more = {}) {
        Lines said =
            Run("in:frmRevoca " + inside + " end: " + Reading(list, "cboFiltro=#2 grdList2!1 cmdConferma! " + more));
        said.erase(said.begin(), said.begin() + 2);  // the question of the read, and the dialog
        return said;
    };
    const std::string columns =
        "SELECT Revocato, DataRevoca, IDTipoRevocaPaziente, NoteRevoca FROM Paziente WHERE IDPaziente = ";
    EXPECT_EQ(Run(Reading(list, "cboFiltro=#2 cmdConferma!")),
              (Lines{anomalies, "information|Aldra|Selezionare un paziente!"}));
    // Cancelled, closed and confirmed without the flag: nothing is written.
    for (const char* inside :
         {"chkRevocato=1 cmdAnnulla!", "chkRevocato=1", "cmdConferma!", "chkRevocato=1 key:=Escape"}) {
        EXPECT_EQ(revoke(inside), Lines{});
        EXPECT_EQ(host.Query(columns + "8"), Lines{"NULL|NULL|NULL|NULL"});
    }
    host.Connect()->Execute("INSERT INTO BloccoRecord VALUES ('Paziente', 8, 'MARIA', '2026-11-23')");
    EXPECT_EQ(revoke("chkRevocato=1 cmdConferma!", "grdList2?"),
              (Lines{failure + "Il paziente n. 8 è bloccato da MARIA dal 23/11/2026.", "grdList2",
                     "0|T8|Assente|Ivo|03/02/1960|M|SSNVIO60B03H501X||8|",
                     "0|P10|Bimbi|Leo|01/01/2022|M|BMBLEO22A01H501X||10|"}));
    EXPECT_EQ(host.Query(columns + "8"), Lines{"NULL|NULL|NULL|NULL"});
    host.Connect()->Execute("DELETE FROM BloccoRecord");
    const std::string types = ":Deceduto,Trasferito,";
    EXPECT_EQ(
        revoke("lblPaziente? chkRevocato? dtDataRevoca? cboTipoRevocaPaziente? txtNoteRevoca? chkRevocato=1 "
               "dtDataRevoca=01/02/2026 cboTipoRevocaPaziente=2 txtNoteRevoca=x dtDataRevoca? "
               "cboTipoRevocaPaziente? txtNoteRevoca? chkRevocato=0 dtDataRevoca? cboTipoRevocaPaziente? "
               "txtNoteRevoca?"),
        (Lines{"lblPaziente Assente Ivo (03/02/1960)", "chkRevocato Revocato 0", "dtDataRevoca disabled",
               "cboTipoRevocaPaziente 0" + types + " disabled", "txtNoteRevoca disabled", "dtDataRevoca 01/02/2026",
               "cboTipoRevocaPaziente 2" + types, "txtNoteRevoca x", "dtDataRevoca disabled",
               "cboTipoRevocaPaziente 0" + types + " disabled", "txtNoteRevoca disabled"}));
    EXPECT_EQ(revoke("chkRevocato=1 dtDataRevoca=01/02/2026 cboTipoRevocaPaziente=2 txtNoteRevoca=l'altro "
                     "cmdConferma!",
                     "grdList2? cmdConferma!"),
              (Lines{"grdList2", "0|T8|Assente|Ivo|03/02/1960|M|SSNVIO60B03H501X||8|Si",
                     "0|P10|Bimbi|Leo|01/01/2022|M|BMBLEO22A01H501X||10|",
                     "information|Aldra|Il paziente selezionato risulta già revocato"}));
    EXPECT_EQ(host.Query(columns + "8"), Lines{"1|01/02/2026|2|l'altro"});
    EXPECT_EQ(host.Query("SELECT * FROM BloccoRecord"), Lines{});
    // The next read lists the other one only; a flag without a date stores none.
    revoke("chkRevocato=1 cmdConferma!");
    EXPECT_EQ(host.Query(columns + "10"), Lines{"1|NULL|0|"});
}

}  // namespace
}  // namespace vlm::test
