#include <gtest/gtest.h>
#include <memory>
#include <optional>

#include "DetailedLines.h"
#include "support/Events.h"
#include "support/Insertion.h"
#include "support/SmallDisk.h"
#include "support/Words.h"

namespace vlm::test {
namespace {

using Files = std::map<std::string, std::string>;

std::string Done(int lines) { return DoneEvent("Elaborazione terminata con successo", lines); }

class DetailedRunTest : public ::testing::Test {
protected:
    HostRun Export(const std::string& before = {}) {
        return Clinic().Run(WordsOf(before) + std::vector{"txtPath=" + Clinic().out, std::string("cmdConferma!")});
    }
    std::string Out() const { return ReadBytes(Clinic().out + "/2010311M.txt"); }
    Lines Marks() const { return Clinic().Query("SELECT IDParcella, ElaborataASL FROM Parcella ORDER BY IDParcella"); }

    std::unique_ptr<ServiceClinic> held = std::make_unique<ServiceClinic>();
    ServiceClinic& Clinic() const { return *held; }
};

TEST_F(DetailedRunTest, WritesEveryFieldAtItsPositionAndMarksTheDocument) {
    Clinic().Create({Service()});
    const HostRun run = Export();
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.Of("message"), std::vector{Done(2)});
    EXPECT_EQ(Marks(), Lines{"1|True"});
    const std::string lines = ServiceLine().WithLineEnd() + ClosingLine().WithLineEnd();
    EXPECT_EQ(FilesIn(Clinic().out), (Files{{"2010311M.txt", lines}}));
    EXPECT_EQ(FilesIn(Clinic().work), (Files{{"2010311M.txt", lines}, {"2010311MErr.txt", ""}}));
    EXPECT_EQ(Export().Of("message"), std::vector{kNoDataEvent});  // everything is sent now
    EXPECT_EQ(Export("chkIncludiElaborate=1").Of("message"), std::vector{Done(2)});
}

TEST_F(DetailedRunTest, WritesTheRulesOfSingleFields) {
    struct Case {
        const char* what;
        std::string change;
        std::size_t position;
        std::string service;
        std::optional<std::string> closing = std::nullopt;  // as the service line
        std::string masterSql = {};
    };
    const auto position = [](const char* from) {
        return std::string("UPDATE TipoEsenzione SET IDPosizioneTicket = ") + from + ";";
    };
    const std::vector<Case> cases = {
        {"anonymous without consent", "IDConsenso=1", 31, "ANONIMO "},
        {"first name too", "IDConsenso=NULL", 61, "ANONIMO     "},
        {"family doctor", "MED_CodiceFiscale=NULL", 15, "77001           "},
        {"a blank doctor is a doctor", "MED_CodiceFiscale=' '", 15, "     "},
        {"small letter is no sex", "PAZ_Sesso='m'", 97, "0"},
        {"male", "PAZ_Sesso='M'", 97, "1"},
        {"no birth date", "PAZ_DataNascita=NULL", 98, "        "},
        {"birth moment", "PAZ_DataNascita='1970-05-01 23:59:59'", 98, "01051970"},
        {"no quantity is one", "Quantita=NULL", 162, "001", "000"},
        {"parts of the prescription number", "NumRicetta1='12'; NumRicetta2='34567890123'", 123, "12     345678901"},
        {"code cut before its points go", "CodicePrestazioneTariffario='89.01.23.4'", 155, "89012  ", "       "},
        {"region cut to three", "CodiceRegione='19'", 1, "19 201"},
        {"long surname", "PAZ_Cognome='àààààààààààààààààààààààààààààààààà'", 31, std::string(30, '\xC0')},
        {"no code in the code page", "PAZ_Cognome='Łoś'", 31, "?O? "},
        {"a line end in a text is no line end", "PAZ_Cognome='Là' || char(13, 10) || 'Rossi'", 31, "L\xC0  ROSSI "},
        {"exemption cut to six", "PS_CodiceIdentificativo='ABCDEFGH'", 167, "ABCDEF0"},
        {"negative amount", "TotaleEuro=-12.5", 180, "-0012,50", "-0016,00"},
        {"half a cent away from zero", "TotaleEuro=0.125", 180, "00000,13", "-0003,38"},
        {"no tickets", "TotQuotaPazienteTicketEuro=NULL; QuotaRicettaEuro=NULL", 173, "0000,00"},
        {"accounting position", "IDPosizioneContabile=NULL", 188, " ", "0"},
        {"document number", "NumeroDocumento=12345678", 202, "2345678"},
        {"branch", "CodiceBranca='117'", 13, "17"},
        {"ticket position 1", {}, 165, "  ", "1 ", position("1")},
        {"ticket position 2", {}, 165, "  ", "2 ", position("2")},
        {"ticket position 3 counts as 1", {}, 165, "  ", "1 ", position("3")},
        {"ticket position 12", {}, 165, "  ", "12", position("12")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        held = std::make_unique<ServiceClinic>();
        Clinic().masterSql = c.masterSql;
        Clinic().Create({Service(c.change)});
        Export();
        // With anomalies or without: the working folder has the file.
        const std::string bytes = ReadBytes(Clinic().work + "/2010311M.txt");
        ASSERT_EQ(bytes.size(), 448U);
        EXPECT_EQ(bytes.substr(c.position - 1, c.service.size()), c.service);
        const std::string closing = c.closing.value_or(c.service);
        EXPECT_EQ(bytes.substr(224 + c.position - 1, closing.size()), closing);
    }
}

TEST_F(DetailedRunTest, ClosesEveryDocumentWithItsTotals) {
    Clinic().Create({Service("TotaleEuro=20; TotQuotaPazienteTicketEuro=2.5"),
                     Service("TotaleEuro=15.5; TotQuotaPazienteTicketEuro=2.5"),
                     Service("IDParcella=2; NumeroDocumento=126; TotaleEuro=7")});
    const HostRun run = Export();
    const Positions first = ServiceLine().At(180, "00020,00");
    const Positions second = ServiceLine().At(139, "02").At(180, "00015,50");
    const Positions third = ServiceLine().At(180, "00007,00").At(202, "0000126");
    EXPECT_EQ(Out(), first.WithLineEnd() + second.WithLineEnd() +
                         ClosingLine(second).At(173, "0003,00").At(180, "00032,50").WithLineEnd() +
                         third.WithLineEnd() + ClosingLine(third).At(180, "00003,50").WithLineEnd());
    EXPECT_EQ(run.Of("message"), std::vector{Done(5)});
}

/// Pieces of every line of the file: branch, sequence and document number.
std::string LinesIn(const std::string& file) {
    std::string lines;
    for (std::size_t at = 0; at + 224 <= file.size(); at += 224) {
        lines += file.substr(at + 12, 2) + file.substr(at + 138, 2) + file.substr(at + 205, 3) + " ";
    }
    return lines;
}

TEST_F(DetailedRunTest, ADocumentOnBothSidesOfABranchIsClosedTwice) {
    Clinic().Create({Service(), Service("CodiceBranca='09'"), Service("IDParcella=2; CodiceBranca='08'")});
    Export();
    EXPECT_EQ(LinesIn(Out()), "0801125 0899125 0801125 0899125 0901125 0999125 ");
}

TEST_F(DetailedRunTest, OrdersByBranchDateAndDocumentWhateverFormADateHas) {
    const auto service = [](const std::string& id, const std::string& date) {
        return Service("IDParcella=" + id + "; NumeroDocumento=" + id + "; DataAiFiniConvenzione=" + date);
    };
    Clinic().Create(
        {service("6", "'2011-03-31'"), service("5", "'2011-03-31 00:00:00'"), service("7", "'2011-03-30 12:00:00'")});
    Export();
    EXPECT_EQ(LinesIn(Out()), "0801007 0899007 0801005 0899005 0801006 0899006 ");
}

TEST_F(DetailedRunTest, TheNinetyNinthRowTakesTheClosingLayout) {
    Clinic().Create(std::vector<SqlRow>(100, Service("TotaleEuro=1")));
    Export();
    const std::string file = Out();
    ASSERT_EQ(file.size(), 101U * 224U);
    const auto pieces = [&](std::size_t line) {
        return file.substr(line * 224 + 138, 2) + file.substr(line * 224 + 145, 8) + file.substr(line * 224 + 179, 8);
    };
    EXPECT_EQ(pieces(98), "99        00095,50");
    EXPECT_EQ(pieces(99), "001503201100001,00");
}

TEST_F(DetailedRunTest, AnomaliesAreReportedAndNothingIsSent) {
    const std::string label = "Fattura A-125 del 16/03/2011: ";
    Clinic().numeroASL = "NULL";
    Clinic().Create(
        {Service("CodiceRegionale='  '; CodiceBranca='abc'; MED_CodiceFiscale=''; CodRegMedicoFiducia=NULL; "
                 "PAZ_CodiceFiscale=' '; PAZ_Nome=NULL; PAZ_Sesso='x'; IDPaziente=2; NumeroASL=NULL; NumRicetta1=NULL; "
                 "NumRicetta2=NULL; CodicePrestazioneTariffario=NULL; IDPartecipazioneSpesa=NULL"),
         Service("IDParcella=2; IDConsenso=1; PAZ_CodiceFiscale=NULL; PAZ_Nome=NULL; IDTipoDocumento=2; "
                 "NP_PrefissoNumerazione=NULL; NumeroDocumento=88; DataDocumento=NULL")});
    WriteBytes(Clinic().out + "/0000311M.txt", "earlier");
    const HostRun run = Export("answer:yes");
    const std::string receipt = "Ricevuta -88 del 30/12/1899: ";
    std::string expected =
        receipt + "[1] Codice Azienda ASL mancante\r\n" + receipt + "[7] Codice fiscale dell'utente mancante\r\n\r\n";
    for (const char* message :
         {"[1] Codice Azienda ASL mancante", "[2] Codice struttura erogatrice mancante",
          "[3] Codice branca specialiastica mancante", "[4] Codice fiscale del medico prescrittore mancante",
          "[7] Identificativo dell'utente mancante", "[8] Sesso dell'utente mancante",
          "[10] Comune di residenza o codice ISTAT mancante", "[11] ASL di residenza mancante",
          "[12] Numero ricetta mancante", "[16] Codice prestazione mancante", "[18] Posizione utente mancante"}) {
        expected += label + message + "\r\n";
    }
    expected += "\r\n";
    EXPECT_EQ(ReadBytes(Clinic().work + "/0000311MErr.txt"), expected);
    EXPECT_EQ(ReadBytes(Clinic().work + "/0000311M.txt").size(), 4U * 224U);
    EXPECT_EQ(ReadBytes(Clinic().out + "/0000311M.txt"), "earlier");
    EXPECT_EQ(
        run.Of("message"),
        Lines{
            R"({"event":"message","text":"Sono state riscontrate alcune anomalie durante la generazione del file.\r\n)"
            R"(Si vuole procedere con la visualizzazione del dettaglio delle anomalie?","caption":"Attenzione!",)"
            R"("icon":"question","buttons":"yesno","answer":"yes"})"});
    EXPECT_EQ(run.Of("run"), std::vector{NotepadEvent(Clinic().work + "\\0000311MErr.txt")});
    EXPECT_EQ(Marks(), (Lines{"1|False", "2|False"}));
}

/// Nor does a patient whose name and birth date are known need a fiscal code.
TEST_F(DetailedRunTest, ASimulationDeliversAndMarksNothingAndAFileIsShownWhenAsked) {
    Clinic().Create({Service("PAZ_CodiceFiscale=NULL")});
    EXPECT_EQ(Export("chkSimulazione=1").Of("message"), std::vector{Done(2)});
    EXPECT_EQ(Out().size(), 448U);
    EXPECT_EQ(Marks(), Lines{"1|False"});
    const HostRun shown = Export("chkVisualizza=1");
    EXPECT_TRUE(shown.Of("message").empty());
    EXPECT_EQ(shown.Of("run"), std::vector{NotepadEvent(Clinic().work + "\\2010311M.txt.tmp")});
    EXPECT_EQ(ReadBytes(Clinic().work + "/2010311M.txt.tmp").substr(0, 29), "\r\nNr. record elaborati: 2\r\n\r\n");
}

TEST_F(DetailedRunTest, FiltersChooseAndMarkTheSameDocuments) {
    const auto service = [](int parcella, const std::string& date, const std::string& more = {}) {
        return Service("IDParcella=" + std::to_string(parcella) + "; DataAiFiniConvenzione=" + date + "; " + more);
    };
    const std::vector<SqlRow> services = {
        service(1, "'2011-03-01'"),
        service(2, "'2011-03-31 23:59:59'"),
        service(3, "'2011-04-01 00:00:00'"),
        service(4, "'2011-02-28'"),
        service(5, "'2010-03-05'", "IDTipoOperazione=3"),
        service(6, "'2011-02-01'", "IDPosizioneContabile=1"),
        service(7, "'2011-03-02'", "ElaborataASL=1"),
        service(8, "'2011-03-03'", "ElaborataASL=NULL; IDTipoOperazione=2"),
        service(9, "'2011-03-04'", "IDBrancaPerStudio_Parcella=2; IDSpecialista_Parcella=9"),
        service(10, "'2011-03-04'", "IDSpecialista_Parcella=8"),
    };
    const std::pair<const char*, const char*> cases[] = {
        {"", "1 2 7 8 10 "},
        {"cboSpecialista=7", "1 2 7 8 "},
        {"cboBranca=2", "7 9 "},
        {"chkIncludiPrecedenti=1", "1 2 4 5 7 8 10 "},
        // The operation types bind to the earlier periods only.
        {"chkIncludiPrecedenti=1 lstTipoOperazione=1,2", "1 2 5 7 8 10 "},
        {"lstTipoOperazione=1", "7 8 "},
        {"cboMese=2", "4 6 7 "},
        {"chkIncludiElaborate=1 cboSpecialista=8", "7 10 "},
    };
    for (const auto& [steps, expected] : cases) {
        held = std::make_unique<ServiceClinic>();
        Clinic().Create(services);
        EXPECT_EQ(Export(steps).status, 0);
        std::string marked;
        for (const std::string& mark : Marks()) {
            if (mark.ends_with("|True")) marked += mark.substr(0, mark.find('|')) + " ";
        }
        EXPECT_EQ(marked, expected) << steps;
    }
}

/// Between the reading and the marking a colleague dates two documents into the month.
TEST_F(DetailedRunTest, DocumentsThatComeUpMeanwhileKeepWhatTheyHad) {
    Clinic().extraSql =
        "CREATE TRIGGER Intanto AFTER UPDATE ON Parcella WHEN OLD.IDParcella = 1 AND OLD.ElaborataASL = "
        "NEW.ElaborataASL"
        " BEGIN UPDATE Parcella SET DataAiFiniConvenzione = '2011-03-05' WHERE IDParcella > 7; END;";
    Clinic().Create({Service(), Service("IDParcella=8; DataAiFiniConvenzione='2011-04-05'; ElaborataASL=NULL"),
                     Service("IDParcella=9; DataAiFiniConvenzione='2011-04-05'")});
    EXPECT_EQ(Export().Of("message"), std::vector{Done(2)});
    EXPECT_EQ(Marks(), (Lines{"1|True", "8|NULL", "9|False"}));
}

/// Endings that fail: nothing is said to have succeeded, nothing is marked, every file is as it was.
class FailingRunTest : public DetailedRunTest {
protected:
    void ExpectFailed(const std::string& reason) {
        const HostRun run = Export();
        ASSERT_EQ(run.Of("message").size(), 1U);
        const std::string message = run.Of("message").front();
        EXPECT_NE(message.find(reason), std::string::npos) << message;
        const std::size_t told = message.find("tecnico dell'errore è: ") + 24;
        EXPECT_EQ(message, ErrorEvent(message.substr(told, message.find(R"(","caption)") - told)));
        EXPECT_TRUE(run.Of("run").empty());
        for (const std::string& mark : Marks()) EXPECT_NE(mark.find("|False"), std::string::npos) << mark;
    }
    void ExpectFilesUntouched() {
        EXPECT_EQ(FilesIn(Clinic().out), (Files{{"2010311M.txt", "earlier"}}));
        EXPECT_EQ(FilesIn(Clinic().work), (Files{{"2010311M.txt", "earlier too"}}));
    }
    void WithEarlierFiles(const std::vector<SqlRow>& services) {
        Clinic().Create(services);
        WriteBytes(Clinic().out + "/2010311M.txt", "earlier");
        WriteBytes(Clinic().work + "/2010311M.txt", "earlier too");
    }
};

TEST_F(FailingRunTest, WhatCannotBeReadOrWrittenIsNamedAndEveryFileIsBack) {
    // The reason that is told, or the cell of the second document whose column is named; done to the clinic's database.
    for (const auto& [reason, sql] : std::initializer_list<std::pair<std::string, const char*>>{
             {"NumeroDocumento='12x'", ""},
             {"TotaleEuro='molto'", ""},
             {"PAZ_DataNascita='ieri'", ""},
             {"DataDocumento='2011-02-30'", ""},
             {"Quantita=70000", ""},
             {"Residenza", "ALTER TABLE Residenza RENAME TO Altrove;"},
             {"PAZ_Sesso", "ALTER TABLE VwPrestazionePerASL DROP COLUMN PAZ_Sesso;"},
             {"vietato", "CREATE TRIGGER Vieta BEFORE UPDATE ON Parcella BEGIN SELECT RAISE(ABORT, 'vietato'); END;"},
             {"Un'altra elaborazione ha intanto inviato 1 dei 2 documenti",
              "CREATE TRIGGER Altra AFTER UPDATE ON Parcella WHEN OLD.IDParcella = 1 BEGIN"
              " UPDATE Parcella SET ElaborataASL = 1 WHERE IDParcella = 2; END;"}}) {
        SCOPED_TRACE(reason);
        held = std::make_unique<ServiceClinic>();
        Clinic().extraSql = sql;
        WithEarlierFiles({Service(), Service("IDParcella=2; " + (*sql == '\0' ? reason : ""))});
        ExpectFailed(reason.substr(0, reason.find('=')));
        ExpectFilesUntouched();
    }
}

TEST_F(FailingRunTest, WithoutAWorkingFolderNothingStarts) {
    Clinic().Create({Service()});
    std::filesystem::remove(Clinic().work);
    ExpectFailed("percorso inesistente");
    EXPECT_TRUE(NamesIn(Clinic().out).empty());
}

TEST_F(FailingRunTest, ADestinationThatCannotBeWrittenKeepsTheDatabase) {
    Clinic().Create({Service()});
    std::filesystem::create_directories(Clinic().out + "/2010311M.txt/in");
    ExpectFailed("2010311M.txt");
    EXPECT_EQ(NamesIn(Clinic().out), Lines{"2010311M.txt"});
    EXPECT_TRUE(NamesIn(Clinic().work).empty());
}

TEST_F(FailingRunTest, TheWorkingFolderAsDestinationIsNoOtherCase) {
    Clinic().extraSql =
        "CREATE TRIGGER Vieta BEFORE UPDATE ON Parcella WHEN OLD.IDTipoOperazione = 1 BEGIN SELECT"
        " RAISE(ABORT, 'vietato'); END;";
    Clinic().out = Clinic().work;
    Clinic().Create({Service()});
    WriteBytes(Clinic().work + "/2010311M.txt", "earlier");
    ExpectFailed("vietato");
    EXPECT_EQ(FilesIn(Clinic().work), (Files{{"2010311M.txt", "earlier"}}));
    Clinic().Connect()->Execute("DROP TRIGGER Vieta");
    EXPECT_EQ(Export().Of("message"), std::vector{Done(2)});
    const std::string lines = ServiceLine().WithLineEnd() + ClosingLine().WithLineEnd();
    EXPECT_EQ(FilesIn(Clinic().work), (Files{{"2010311M.txt", lines}, {"2010311MErr.txt", ""}}));
    EXPECT_EQ(Marks(), Lines{"1|True"});
}

TEST_F(FailingRunTest, ACommitThatFailsTakesTheFileBack) {
    WithEarlierFiles({Service()});
    // Somebody who reads keeps the commit, but not the update, from happening.
    const auto reader = Clinic().Connect();
    const auto rows = reader->Open("SELECT IDParcella FROM Parcella UNION ALL SELECT 2");
    ExpectFailed("bloccato");
    ExpectFilesUntouched();
}

#ifdef VLM_SMALL_DISK
TEST_F(FailingRunTest, AFullDiskFailsTheRun) {
    WithEarlierFiles(std::vector<SqlRow>(2000, Service("IDParcella=2")));
    {
        const SmallDisk disk(300 * 1024);
        ExpectFailed("file troppo grande");
    }
    ExpectFilesUntouched();
}
#endif

TEST_F(FailingRunTest, LeftoversOfAKilledRunAreRemoved) {
    Clinic().Create({Service()});
    for (const std::string& folder : {Clinic().out, Clinic().work}) {
        WriteBytes(folder + "/.2010211M.txt.aslpart", "half");
        WriteBytes(folder + "/.2010311M.txt.aslprec", "earlier");
        WriteBytes(folder + "/.nascosto", "somebody else's");
    }
    Export();
    EXPECT_EQ(NamesIn(Clinic().out), (Lines{".nascosto", "2010311M.txt"}));
    EXPECT_EQ(NamesIn(Clinic().work), (Lines{".nascosto", "2010311M.txt", "2010311MErr.txt"}));
}

}  // namespace
}  // namespace vlm::test
