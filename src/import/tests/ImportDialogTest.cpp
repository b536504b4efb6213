#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/AslHost.h"
#include "support/ArchiveHost.h"
#include "support/Words.h"
#include "values/CodePage1252.h"

namespace vlm::test {
namespace {

using Json = nlohmann::json;
using Lines = std::vector<std::string>;

constexpr const char* kArchive = R"sql(
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

    /// Runs the dialog; its events after the opening, without pointers and progress.
    std::vector<Json> Run(const Lines& steps) {
        const std::string folder = host.folder.Path().string();
        const Lines arguments =
            WordsOf("--data " + folder + " --work " + folder + "/work --settings " + folder + "/set.ini --install " +
                    folder + "/Inst --today 2026-11-23 --clinic 12 ASLImportPatient");
        std::ostringstream output;
        std::ostringstream errors;
        status = host::RunHost(arguments + steps, output, errors, false);
        complaint = errors.str();
        std::vector<Json> events;
        for (const std::string& line : LinesOf(output.str())) {
            Json event = Json::parse(line);
            if (event["event"] == "pointer" || event["event"] == "progress") continue;
            events.push_back(std::move(event));
        }
        return events;
    }
    Json State(const std::vector<Json>& events, const std::string& control) const {
        for (auto event = events.rbegin(); event != events.rend(); ++event) {
            if ((*event)["event"] == "state" && (*event)["name"] == control) return *event;
        }
        ADD_FAILURE() << "no state of " << control << ": " << complaint;
        return {};
    }
    static Lines Messages(const std::vector<Json>& events) {
        Lines messages;
        for (const Json& event : events) {
            if (event["event"] != "message") continue;
            messages.push_back(event["icon"].get<std::string>() + "|" + event["caption"].get<std::string>() + "|" +
                               event["text"].get<std::string>());
        }
        return messages;
    }
    /// The entries of a list, each with a comma behind it.
    static std::string Names(const Json& state) {
        std::string names;
        for (const Json& item : state["items"]) names += item["text"].get<std::string>() + ",";
        return names;
    }
    /// The shown cells of a grid by row, joined by "|".
    static Lines Cells(const Json& state) {
        Lines rows;
        for (const Json& cells : state["cells"]) {
            std::string& row = rows.emplace_back();
            for (const Json& cell : cells) row += (row.empty() ? "" : "|") + cell.get<std::string>();
        }
        return rows;
    }
    std::string Source(const std::string& text, const std::string& name = "elenco.csv") const {
        WriteBytes(host.folder / name, text::ToAnsi(text));
        return host.folder / name;
    }
    /// Reads the patient list with the template "zeta".
    static Lines Reading(const std::string& source, const Lines& more) {
        return Lines{"cboASL=#32", "txtPath=" + source, "cmdElabora!"} + more;
    }

    ArchiveHost host{kArchive, kMaster};
    int status = 0;
    std::string complaint;
    const std::string list =
        "T7;Conti;Anna;CNTNNA70A41B639X;01/01/1970;Roma;Via A\r\n"
        "N1;Nuovo;Ezio;NVUZEI80A01H501X;;Cantù;Via B\r\n"
        "N2;Altro;Elio;LTRLEI80A01H501X;31/02/2000;;\r\n";
};

TEST_F(ImportDialogTest, ListsAndVisibilityFollowTheChoices) {
    const auto first = Run(
        WordsOf("cboImportazione? cboTipoImportazione? cboASL? cboFiltro? grdList? grdList1? grdList2? lblConteggio? "
                "lblSelezionati? lblLettura? prgLettura? txtPath? cboSpecialista? cmdConferma?"));
    EXPECT_EQ(first.front()["title"], "Importazione pazienti");
    EXPECT_EQ(State(first, "cboImportazione")["value"], 0);
    EXPECT_EQ(State(first, "cboTipoImportazione")["value"], 0);
    EXPECT_EQ(State(first, "cboASL")["value"], -1);
    EXPECT_EQ(Names(State(first, "cboASL")),
              "ABRUZZO,BASILICATA,BOLZANO,CALABRIA,CAMPANIA,EMILIA ROMAGNA,FRIULI VENEZIA GIULIA,LAZIO,LIGURIA,"
              "LOMBARDIA,MARCHE,MOLISE,PIEMONTE,PUGLIA,SARDEGNA,SICILIA,TOSCANA,TRENTINO ALTO ADIGE,TRENTO,UMBRIA,"
              "VALLE D'AOSTA,VENETO,Catania,Caltanissetta,Savona,Palermo,Ragusa,Sassari,Enna,Napoli,"
              "ABRUZZO,Alfa,zeta,");
    EXPECT_EQ(State(first, "lblSelezionati")["caption"], "Selezionati 0 pazienti.");
    EXPECT_EQ(State(first, "lblConteggio")["caption"], "");
    EXPECT_EQ(State(first, "lblLettura")["caption"], "Lettura file in corso...");
    const Lines parts = WordsOf("grdList grdList1 grdList2 txtPath cboASL cboSpecialista lblLettura prgLettura");
    const auto visible = [&](const std::vector<Json>& events) {
        std::string shown;
        for (const std::string& control : parts) shown += State(events, control)["visible"] ? control + " " : "";
        return shown;
    };
    const auto after = [&](const std::string& steps) {
        return Run(WordsOf(steps + " grdList? grdList1? grdList2? txtPath? cboASL? cboSpecialista? lblLettura? "
                                   "prgLettura? cboFiltro? cmdConferma?"));
    };
    EXPECT_EQ(visible(first), "grdList txtPath cboASL ");
    const auto revocation = after("cboFiltro=#2");
    EXPECT_EQ(visible(revocation), "grdList2 txtPath cboASL ");
    EXPECT_EQ(State(revocation, "cmdConferma")["caption"], "&Revoca");
    EXPECT_EQ(State(after("cboFiltro=#2 cboFiltro=#1"), "cmdConferma")["caption"], "&Importa");
    const auto exemptions = after("cboFiltro=#2 cboImportazione=#1 cboTipoImportazione=#1");
    EXPECT_EQ(visible(exemptions), "grdList1 cboSpecialista ");
    EXPECT_EQ(Names(State(exemptions, "cboASL")), "Esenti,");
    EXPECT_EQ(State(exemptions, "cboFiltro")["enabled"], false);
    EXPECT_EQ(State(exemptions, "cmdConferma")["caption"], "&Importa");
    EXPECT_EQ(State(after("cboImportazione=#1 cboImportazione=#0"), "cboFiltro")["enabled"], true);
    Run({"cboTipoImportazione=#1", "txtPath=x"});
    EXPECT_EQ(status, 2) << "a hidden field takes no text";
}

TEST_F(ImportDialogTest, BrowsesWithTheButtonOrItsKey) {
    const std::string chosen = host.folder / "scelto.csv";
    for (const char* step : {"cmdLink!", "key:txtPath=Ctrl+R"}) {
        EXPECT_EQ(State(Run({"answer:" + chosen, step, "txtPath?"}), "txtPath")["value"], chosen);
    }
    EXPECT_EQ(State(Run({"txtPath=a", "key:txtPath=R", "txtPath?"}), "txtPath")["value"], "a");
    EXPECT_EQ(State(Run({"txtPath=a", "answer:cancel", "cmdLink!", "txtPath?"}), "txtPath")["value"], "a");
}

TEST_F(ImportDialogTest, ReadsFiltersAndCounts) {
    host.Connect()->Execute("UPDATE Paziente SET DataScelta = Cognome WHERE IDPaziente = 10");  // a date that is none
    const auto read =
        Run(Reading(Source(list), {"grdList?", "grdList2?", "lblConteggio?", "lblSelezionati?", "lblLettura?"}));
    EXPECT_EQ(Cells(State(read, "grdList")), (Lines{"0|T7|Conti|Anna|01/01/1970||CNTNNA70A41B639X||Roma|Via A|4|7|||",
                                                    "1|N1|Nuovo|Ezio|||NVUZEI80A01H501X||Cantù|Via B|1|0|||",
                                                    "1|N2|Altro|Elio|||LTRLEI80A01H501X||||0|0|||"}));
    std::string titles;
    const Json grid = State(read, "grdList");
    for (const Json& column : grid["columns"]) {
        titles += column["title"].get<std::string>() + (column["visible"].get<bool>() ? "|" : " (hidden)|");
    }
    EXPECT_EQ(titles,
              "Importa|Codice paziente|Cognome|Nome|Data nascita|Sesso|Codice fiscale|Data scelta|"
              "Comune di residenza|Indirizzo|IDComune (hidden)|IDPaziente (hidden)|Scadenza|Sospensione|Telefono|");
    EXPECT_EQ(Cells(State(read, "grdList2")), (Lines{"0|T8|Assente|Ivo|03/02/1960|M|SSNVIO60B03H501X||8|",
                                                     "0|P10|Bimbi|Leo|01/01/2022|M|BMBLEO22A01H501X||10|"}));
    EXPECT_EQ(State(read, "lblConteggio")["caption"], "( 3 pazienti )");
    EXPECT_EQ(State(read, "lblSelezionati")["caption"], "Selezionati 2 pazienti.");
    EXPECT_EQ(State(read, "lblLettura")["visible"], false);
    EXPECT_EQ(Messages(read),
              Lines{"question|Attenzione!|Sono state riscontrate alcune anomalie durante la lettura del "
                    "file.\r\nSi vuole procedere con la visualizzazione del dettaglio delle anomalie?"});

    const auto onlyNew =
        Run(Reading(Source(list), {"cmdSelezionaTutti!", "cboFiltro=#1", "grdList?", "lblConteggio?", "lblSelezionati?",
                                   "grdList!1", "cmdSeleziona!", "cboFiltro=#0", "grdList?"}));
    EXPECT_EQ(State(onlyNew, "lblConteggio")["caption"], "( 2 pazienti )");
    EXPECT_EQ(State(onlyNew, "lblSelezionati")["caption"], "Selezionati 2 pazienti.");
    const Lines all = Cells(State(onlyNew, "grdList"));
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].substr(0, 4) + all[1].substr(0, 4) + all[2].substr(0, 4), "1|T70|N11|N2");
    const auto revocation = Run(Reading(Source(list), {"cboFiltro=#2", "lblConteggio?", "lblSelezionati?"}));
    EXPECT_EQ(State(revocation, "lblConteggio")["caption"], "( 2 pazienti )");
    EXPECT_EQ(State(revocation, "lblSelezionati")["caption"], "Selezionati 0 pazienti.");
    const auto empty = Run(Reading(Source(""), {"lblConteggio?"}));
    EXPECT_EQ(State(empty, "lblConteggio")["caption"], "( 0 pazienti )");
}

TEST_F(ImportDialogTest, ShowsWhatAReadCouldNotTake) {
    const auto events = Run(Lines{"answer:yes"} + Reading(Source(list), {}));
    ASSERT_EQ(events.back()["event"], "closed");
    const std::string report = host.folder / "work" + "\\Anomalie importazione.txt";
    EXPECT_EQ(events[events.size() - 2]["command"], "Notepad.exe " + report);
    EXPECT_EQ(ReadBytes(host.folder / "work/Anomalie importazione.txt"),
              text::ToAnsi("Riga 3, DataNascita: \"31/02/2000\" non è una data.\r\n"));
}

TEST_F(ImportDialogTest, ConfirmsTheSelectedRowsAndTellsTheRest) {
    std::string refused = list;
    refused.replace(refused.find("Altro"), 5, "Rifiutato");
    const auto events =
        Run(Reading(Source(refused), {"cmdConferma!", "grdList?", "lblSelezionati?", "cboFiltro=#1", "lblConteggio?"}));
    const Lines messages = Messages(events);
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[1].substr(0, 104),
              "information|Aldra|Importazione conclusa.\r\nPazienti scritti: 1\r\nPazienti non scritti: 1\r\nRifiutato "
              "Elio: ");
    EXPECT_NE(messages[1].find("rifiutato"), std::string::npos);
    EXPECT_EQ(Cells(State(events, "grdList")).at(1), "0|N1|Nuovo|Ezio|||NVUZEI80A01H501X||Cantù|Via B|1|11|||");
    EXPECT_EQ(State(events, "lblSelezionati")["caption"], "Selezionati 1 pazienti.");
    EXPECT_EQ(State(events, "lblConteggio")["caption"], "( 1 pazienti )");
    EXPECT_EQ(host.Query("SELECT IDPaziente, Cognome, NumAssistito FROM Paziente WHERE IDPaziente > 10"),
              Lines{"11|Nuovo|N1"});
    EXPECT_EQ(host.Query("SELECT IDPaziente, IDComune, Indirizzo, Cap FROM Residenza"), Lines{"11|1|Via B|22063"});
}

TEST_F(ImportDialogTest, HiddenRowsAreConfirmedAfterAQuestion) {
    const char* const question =
        "question|Attenzione!|Sono selezionati anche 1 pazienti non visualizzati.\r\nSi vuole procedere?";
    const Lines steps = {"cmdSelezionaTutti!", "cboFiltro=#1", "cmdConferma!"};
    EXPECT_EQ(Messages(Run(Reading(Source(list), steps))).back(), question);
    EXPECT_EQ(host.Query("SELECT COUNT(*) FROM Paziente"), Lines{"4"});
    EXPECT_EQ(Messages(Run(Lines{"answer:no", "answer:yes"} + Reading(Source(list), steps))).back(),
              "information|Aldra|Importazione conclusa.\r\nPazienti scritti: 3\r\nPazienti non scritti: 0");
    EXPECT_EQ(host.Query("SELECT COUNT(*) FROM Paziente"), Lines{"6"});
    // The same list once more: everybody is known now.
    const auto again = Run(Reading(Source(list), {"lblSelezionati?", "cboFiltro=#1", "lblConteggio?"}));
    EXPECT_EQ(State(again, "lblSelezionati")["caption"], "Selezionati 0 pazienti.");
    EXPECT_EQ(State(again, "lblConteggio")["caption"], "( 0 pazienti )");
}

TEST_F(ImportDialogTest, ExemptionsOfAFile) {
    const std::string source =
        Source(";Bimbi;Leo;BMBLEO22A01H501X;;;;E1;01/01/2026\r\n;Conti;Anna;CNTNNA70A41B639X;;;;E01;01/01/2026\r\n");
    const auto events = Run({"cboImportazione=#1", "cboASL=#0", "txtPath=" + source, "cmdElabora!", "lblConteggio?",
                             "grdList1?", "cmdSelezionaTutti!", "cmdConferma!"});
    EXPECT_EQ(State(events, "lblConteggio")["caption"], "( 2 elementi )");
    EXPECT_EQ(Cells(State(events, "grdList1")), (Lines{"0||Bimbi|Leo|||BMBLEO22A01H501X|E01|10|01/01/2026|",
                                                       "0||Conti|Anna|||CNTNNA70A41B639X|E01|7|01/01/2026|"}));
    EXPECT_EQ(Messages(events), Lines{"information|Aldra|Importazione conclusa.\r\nEsenzioni scritte: 1\r\n"
                                      "Esenzioni non scritte: 1\r\nConti Anna: l'esenzione non è stata scritta: il "
                                      "paziente non è in archivio o il codice non vale per la sua età."});
    EXPECT_EQ(host.Query("SELECT IDEsenzione, IDPaziente, DataEsenzione, Scadenza FROM EsenzionePerPaziente"),
              Lines{"1|10|01/01/2026|NULL"});
}

TEST_F(ImportDialogTest, ErrorsOfReadersAreToldAndLeaveNothingShown) {
    const auto unchosen = Run({"cmdElabora!"});
    EXPECT_EQ(Messages(unchosen), Lines{"exclamation|Attenzione!!|Selezionare l'ASL di riferimento."});
    EXPECT_EQ(unchosen[unchosen.size() - 2], (Json{{"event", "focus"}, {"name", "cboASL"}}));
    const std::string missing = host.folder / "manca.txt";
    const std::string reason = "Impossibile aprire il file " + missing + ": percorso inesistente.";
    auto events = Run(Reading(
        Source(list), {"txtPath=" + missing, "cboASL=#22", "cmdElabora!", "grdList?", "lblConteggio?", "lblLettura?"}));
    EXPECT_EQ(Messages(events).back(),
              "critical|Errore!!|Si sono verificati degli errori durante l'elaborazione:\r\n\r\n" + reason);
    EXPECT_EQ(State(events, "grdList")["rows"], 0);
    EXPECT_EQ(State(events, "lblConteggio")["caption"], "");
    EXPECT_EQ(State(events, "lblLettura")["visible"], false);
    EXPECT_EQ(Messages(Run({"cboASL=#32", "txtPath=" + missing, "cmdElabora!"})),
              Lines{"critical|Aldra|Si è verificato un errore durante la lettura del file.\r\nIl messaggio tecnico "
                    "dell'errore è: " +
                    reason});
    EXPECT_EQ(Messages(Run({"cboASL=#31", "txtPath=" + Source(list), "cmdElabora!"})), Lines{});
    EXPECT_EQ(Messages(Run({"cboASL=#1", "txtPath=" + Source(list), "cmdElabora!"})).size(), 1U) << "no template";
    EXPECT_EQ(Messages(Run({"cboASL=#0", "txtPath=" + Source("x"), "cmdElabora!", "cmdConferma!"})).size(), 2U);
    host.Connect()->Execute("DROP TABLE Paziente");
    events = Run({"cboASL=#22", "txtPath=" + Source("1\n2\n" + std::string(200, 'x')), "cmdElabora!", "grdList?"});
    EXPECT_EQ(Messages(events).size(), 1U);
    EXPECT_EQ(State(events, "grdList")["rows"], 0);
}

TEST_F(ImportDialogTest, HealthCardListsAskThePinOnce) {
    WriteBytes(host.folder / "Inst/SistemaTS.json",
               R"({"error":false,"errors":[],"persons":[{"fiscalCode":"CNTNNA70A41B639X","surname":"Conti",)"
               R"("firstName":"Anna","exemptions":[{"code":"E01","start":"2026-01-01T00:00:00",)"
               R"("end":"2026-12-31T23:00:00"}]},{"fiscalCode":"NUOVO","surname":"Nuovi","firstName":"Lia"}]})");
    const Lines pin = WordsOf("in:frmInpsPIN txtConferma? txtConferma=1234567890 txtConferma? cmdConferma! end:");
    const auto events = Run(pin + WordsOf("cboTipoImportazione=#1 cboSpecialista=3 cmdElabora! grdList? lblConteggio? "
                                          "cboImportazione=#1 cmdElabora! grdList1?"));
    EXPECT_EQ(status, 0) << complaint;
    int asked = 0;
    std::string log;
    for (const Json& event : events) {
        asked += event["event"] == "dialog" && event["name"] == "frmInpsPIN" ? 1 : 0;
        log += event.dump();
    }
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(log.find("1234567890"), std::string::npos) << "a PIN stands in no event";
    EXPECT_EQ(State(events, "txtConferma")["value"], "set");
    EXPECT_EQ(Cells(State(events, "grdList")),
              (Lines{"0||Conti|Anna|||CNTNNA70A41B639X|||||7|||", "1||Nuovi|Lia|||NUOVO|||||0|||"}));
    EXPECT_EQ(State(events, "lblConteggio")["caption"], "( 2 pazienti )");
    EXPECT_EQ(Cells(State(events, "grdList1")), Lines{"1||Conti|Anna|||CNTNNA70A41B639X|E01|7|01/01/2026|01/01/2027"});

    for (const char* cancelled : {"in:frmInpsPIN txtConferma=1 cmdAnnulla! end:", "in:frmInpsPIN txtConferma=1 end:",
                                  "in:frmInpsPIN cmdConferma! end:"}) {
        const auto quiet = Run(WordsOf(cancelled) + Reading(Source(list), WordsOf("cboTipoImportazione=#1 cmdElabora! "
                                                                                  "lblLettura? grdList?")));
        EXPECT_EQ(State(quiet, "grdList")["rows"], 3) << "a cancelled PIN keeps what is shown";
        EXPECT_EQ(Messages(quiet).size(), 1U) << "the question for the file's findings";
        EXPECT_EQ(State(quiet, "lblLettura")["visible"], false);
    }
    WriteBytes(host.folder / "Inst/SistemaTS.json",
               R"({"error":true,"errors":[{"code":"E01","description":"PIN errato"},)"
               R"({"code":"E02","description":"Bloccato"}],"persons":[]})");
    Run({"in:frmInpsPIN", "txtConferma=1234567890", "end:"});
    EXPECT_NE(complaint.find("frmInpsPIN"), std::string::npos);
    EXPECT_EQ(complaint.find("1234567890"), std::string::npos) << complaint;
    EXPECT_EQ(Messages(Run(pin + WordsOf("cboTipoImportazione=#1 cmdElabora! cmdElabora!"))),
              Lines(2,
                    "critical|Errore!!|Si sono verificati degli errori durante l'elaborazione:\r\n\r\n"
                    "E01 - PIN errato\r\nE02 - Bloccato\r\n"));
}

TEST_F(ImportDialogTest, RevokesOnePatientAtATime) {
    const std::string source = Source(list);
    const auto revoke = [&](const std::string& inside, const Lines& more = {}) {
        return Run(WordsOf("in:frmRevoca " + inside + " end:") +
                   Reading(source, WordsOf("cboFiltro=#2 grdList2!1 cmdConferma!")) + more);
    };
    const std::string columns =
        "SELECT Revocato, DataRevoca, IDTipoRevocaPaziente, NoteRevoca FROM Paziente "
        "WHERE IDPaziente = 8";
    EXPECT_EQ(Messages(Run(Reading(source, {"cboFiltro=#2", "cmdConferma!"}))).back(),
              "information|Aldra|Selezionare un paziente!");
    // Cancelled, closed and confirmed without the flag: nothing is written.
    for (const char* inside :
         {"chkRevocato=1 cmdAnnulla!", "chkRevocato=1", "cmdConferma!", "chkRevocato=1 key:=Escape"}) {
        revoke(inside);
        EXPECT_EQ(host.Query(columns), Lines{"NULL|NULL|NULL|NULL"});
    }
    const auto shown = revoke("lblPaziente? chkRevocato? dtDataRevoca? cboTipoRevocaPaziente? txtNoteRevoca?");
    EXPECT_EQ(State(shown, "lblPaziente")["caption"], "Assente Ivo (03/02/1960)");
    EXPECT_EQ(State(shown, "chkRevocato")["value"], 0);
    for (const char* field : {"dtDataRevoca", "cboTipoRevocaPaziente", "txtNoteRevoca"}) {
        EXPECT_EQ(State(shown, field)["enabled"], false) << field;
    }
    const auto emptied = revoke(
        "chkRevocato=1 dtDataRevoca=01/02/2026 cboTipoRevocaPaziente=2 txtNoteRevoca=x chkRevocato=0 "
        "dtDataRevoca? cboTipoRevocaPaziente? txtNoteRevoca?");
    EXPECT_EQ(State(emptied, "dtDataRevoca")["value"], "");
    EXPECT_EQ(State(emptied, "cboTipoRevocaPaziente")["value"], 0);
    EXPECT_EQ(State(emptied, "txtNoteRevoca")["value"], "");

    const auto done =
        revoke("chkRevocato=1 dtDataRevoca=01/02/2026 cboTipoRevocaPaziente=2 txtNoteRevoca=l'altro cmdConferma!",
               {"grdList2?", "cmdConferma!"});
    EXPECT_EQ(host.Query(columns), Lines{"1|01/02/2026|2|l'altro"});
    EXPECT_EQ(Cells(State(done, "grdList2")).front(), "0|T8|Assente|Ivo|03/02/1960|M|SSNVIO60B03H501X||8|Si");
    EXPECT_EQ(Messages(done).back(), "information|Aldra|Il paziente selezionato risulta già revocato");
    EXPECT_EQ(host.Query("SELECT * FROM BloccoRecord"), Lines{});

    // The next read lists the other one only; a flag without a date stores none.
    revoke("chkRevocato=1 cmdConferma!");
    EXPECT_EQ(host.Query("SELECT Revocato, DataRevoca, IDTipoRevocaPaziente FROM Paziente WHERE IDPaziente = 10"),
              Lines{"1|NULL|0"});
}

TEST_F(ImportDialogTest, ALockedPatientIsNotRevoked) {
    host.Connect()->Execute(
        "INSERT INTO BloccoRecord (Tabella, Chiave, Utente, Dal) VALUES ('Paziente', 8, 'MARIA', '2026-11-23')");
    const auto events = Run(WordsOf("in:frmRevoca chkRevocato=1 cmdConferma! end:") +
                            Reading(Source(list), WordsOf("cboFiltro=#2 grdList2!1 cmdConferma! grdList2?")));
    EXPECT_EQ(Messages(events).back(),
              "critical|Errore!!|Si sono verificati degli errori durante l'elaborazione:\r\n"
              "\r\nIl paziente n. 8 è bloccato da MARIA dal 23/11/2026.");
    EXPECT_EQ(host.Query("SELECT Revocato FROM Paziente WHERE IDPaziente = 8"), Lines{"NULL"});
    EXPECT_EQ(Cells(State(events, "grdList2")).front().back(), '|');
}

TEST_F(ImportDialogTest, PrintsTheShownGridAsATable) {
    const auto events = Run(Reading(Source(list), {"cboFiltro=#1", "cmdStampa!"}));
    EXPECT_EQ(events[events.size() - 2]["event"], "run");
    EXPECT_EQ(
        ReadBytes(host.folder / "work/Stampa importazione.txt"),
        text::ToAnsi("Importa  Codice paziente  Cognome  Nome  Data nascita  Sesso  Codice fiscale    Data scelta  "
                     "Comune di residenza  Indirizzo  Scadenza  Sospensione  Telefono\r\n"
                     "x        N1               Nuovo    Ezio                       NVUZEI80A01H501X               "
                     "Cantù                Via B\r\n"
                     "x        N2               Altro    Elio                       LTRLEI80A01H501X\r\n"));
}

}  // namespace
}  // namespace vlm::test
