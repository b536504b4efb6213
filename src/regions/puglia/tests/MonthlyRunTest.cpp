#include <gtest/gtest.h>
#include <memory>

#include "ASLLInePuglia.h"
#include "PugliaClinic.h"
#include "export/ASLExport.h"
#include "puglia/ASLExportPuglia.h"
#include "support/Events.h"
#include "support/FakeServices.h"
#include "support/Insertion.h"

namespace vlm::test {
namespace {

using Files = std::map<std::string, std::string>;

std::string Done(int lines) { return DoneEvent("Elaborazione terminata", lines); }

SqlRow Document(int id, const std::string& changes = {}) {
    return Service("IDParcella=" + std::to_string(id) + "; " + changes);
}

/// A service that is no part of a cycle, with every date as it should be.
SqlRow Single(const std::string& changes) {
    return Service(
        "PrestazioneCiclica=0; DataInizioCiclo=NULL; DataAssegnata='2011-03-15'; DataRefertazione='2011-03-15'; " +
        changes);
}

TEST(PugliaRunTest, WritesEveryFieldAtItsPositionAndMarksTheDocument) {
    PugliaClinic clinic({Service()});
    const HostRun run = clinic.Export();
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.Of("message"), std::vector{Done(1)});
    EXPECT_EQ(clinic.Marks(), Lines{"1|True|1"});
    EXPECT_EQ(FilesIn(clinic.work), (Files{{"C700007.txt", PugliaLine().WithLineEnd()}, {"C700007Err.txt", ""}}));
    EXPECT_NE(clinic.Export().Of("message").at(0).find("Nessun dato da elaborare."), std::string::npos);
    EXPECT_EQ(clinic.Out(), PugliaLine().WithLineEnd());
}

TEST(PugliaRunTest, WritesTheRulesOfSingleFields) {
    const std::string zeros(24, '0');
    using Case = std::tuple<const char*, std::string, std::size_t, std::string>;
    const std::vector<Case> cases = {
        {"structure trimmed, rightmost kept", "CodiceRegionale=' 9876543 '", 1, "876543077001"},
        {"structure filled", "CodiceRegionale='98'", 1, "000098"},
        {"points of the doctor go", "CodRegMedicoFiducia='7.70.01'", 7, "077001"},
        {"doctor with a letter", "CodRegMedicoFiducia='M7001'", 7, "000000NICOL"},
        {"no doctor", "CodRegMedicoFiducia=NULL", 7, "000000"},
        {"doctor too long", "CodRegMedicoFiducia='12345678'", 7, "345678"},
        {"capitals with accents", "PAZ_Cognome='àèìòù dell''àààààààààààààààààààààààààà'", 13,
         "\xC0\xC8\xCC\xD2\xD9 DELL'" + std::string(19, '\xC0') + "MARIA"},
        {"no code in the code page", "PAZ_Nome='Łucja'", 43, "?UCJA  "},
        {"card of a patient without number", "NumAssistito=NULL", 73, "8038000123456789NCLMGR"},
        {"a blank number is a number", "NumAssistito=' '", 73, std::string(16, ' ') + "NCL"},
        {"small letter is no sex", "PAZ_Sesso='f'", 105, "0"},
        {"male", "PAZ_Sesso='M'", 105, "1"},
        {"birth unknown", "PAZ_DataNascita=NULL", 106, "00000000"},
        {"no residence", "IDPaziente=9", 114, "000000190206"},
        {"region and authority", "CodiceRegione='16'; NumeroASL=NULL", 120, "016000"},
        {"short prescription number", "NumRicetta1=' 1234567 '; NumRicetta2='890'", 126, "123456789000000027"},
        {"long prescription number", "NumRicetta1='1234567890'; NumRicetta2='abcdefghij'", 126,
         "1234567890abcdef27022011"},
        {"no prescription number", "NumRicetta1=NULL; NumRicetta2=NULL", 126, std::string(16, '0')},
        {"not issued", "DataRilascioRicetta=NULL", 142, "00000000150320110000100008"},
        {"branch", "CodiceBranca='1234'", 165, "234"},
        {"code too long, as it stands", "CodicePrestazioneTariffario='x9.1.23.4z'", 168, "x912302"},
        {"the clinic's own code", "CodicePrestazioneTariffario=NULL", 168, " V10002"},
        {"no quantity is one", "Quantita=NULL", 168, "  89701"},
        {"quantity keeps its right digits", "Quantita=123", 168, "  89723"},
        {"negative amount", "TotTicketEuro=-12.5", 231, "-0000012500"},
        {"half of a thousandth away from zero", "TotQuotaPazienteTicketEuro=0.0125", 242, "00000000013E"},
        {"no amount", "TotQuotaPazienteTicketEuro=NULL", 242, "00000000000E"},
        {"exemption cut to six", "PS_CodiceIdentificativo='e02bcdEF'", 257, "E02BCD "},
        {"category five", "PS_IDCategoriaDiAppartenenza=5", 257, "1      "},
        {"urgent", "IDPrioritaRicetta=1", 277, "U"},
        {"deferred", "IDPrioritaRicetta=3", 277, "D"},
        {"planned", "IDPrioritaRicetta=4", 277, "P"},
        {"no such priority", "IDPrioritaRicetta=5", 277, " 01"},
        {"neither guaranteed nor suggested", "PrescrizioneGarantita=0; IDTipoRichiesta=1", 320, "   "},
        {"access 2: no doctor", "IDTipoAccesso=2", 7, "000000"},
        {"access 2: number of the structure, date of dispatch",
         "IDTipoAccesso=2; NumeroDocumento=1234567; CodiceRegionale='98'", 126, "046000098123456715032011"},
        {"access 2: no booking", "IDTipoAccesso=2", 278, "02" + zeros + "16032011"},
        {"access 3: its own number", "IDTipoAccesso=3", 126, "123456789012345627022011"},
        {"access 3: doctor", "IDTipoAccesso=3", 7, "077001"},
        {"access 3: no booking", "IDTipoAccesso=3", 278, "03" + zeros + "16032011"},
        {"no access", "IDTipoAccesso=NULL", 278, "0001032011"},
    };
    for (const auto& [what, change, position, written] : cases) {
        SCOPED_TRACE(what);
        PugliaClinic one({Service(change)});
        one.Export();
        const std::string file = one.Out();
        ASSERT_EQ(file.size(), 343U);
        EXPECT_EQ(file.substr(position - 1, written.size()), written);
    }
}

TEST(PugliaRunTest, APrescriptionHasRoomForEightServices) {
    PugliaClinic clinic(std::vector<SqlRow>(8, Service()));
    EXPECT_EQ(clinic.Export().Of("message"), std::vector{Done(1)});
}

TEST(PugliaRunTest, NumbersPrescriptionsAndKeepsTheirServicesApart) {
    PugliaClinic clinic({Document(4, "TotTicketEuro=1; PAZ_Nome='Prima'"),
                         Document(4, "CodicePrestazioneTariffario='89.01.2'; Quantita=12"),
                         Document(4, "CodicePrestazioneTariffario='1'; Quantita=0"),
                         Document(6, "CodicePrestazioneTariffario='95.02'"),
                         Document(5, "DataAiFiniConvenzione='2011-03-16'")});
    const HostRun run = clinic.Export();
    EXPECT_EQ(clinic.Out(), PugliaLine().At(175, "8901212").At(182, "    101").WithLineEnd() +
                                PugliaLine().At(158, "00002").At(168, " 950202").WithLineEnd() +
                                PugliaLine().At(150, "16032011").At(158, "00003").WithLineEnd());
    EXPECT_EQ(run.Of("message"), std::vector{Done(3)});
    EXPECT_EQ(clinic.Marks(), (Lines{"4|True|1", "5|True|3", "6|True|2"}));
}

TEST(PugliaRunTest, TheFileIsShownWhenAsked) {
    const HostRun shown = PugliaClinic({Service()}).Export("chkVisualizza=1");
    EXPECT_TRUE(shown.Of("message").empty());
    EXPECT_EQ(shown.Of("dialog").at(1), R"({"event":"dialog","name":"frmViewData","title":"Esportazione ASL"})");
}

TEST(PugliaRunTest, ChecksTheDates) {
    const std::string label = "Fattura A-125 del 16/03/2011: ";
    const std::string first = label + " - Prestazione 1: ";
    const std::string notCyclic = first + "Data di inizio ciclo valorizzata per una prestazione NON ciclica\r\n";
    const std::string reported = first + "Data di refertazione incongruente con data di spedizione\r\n";
    const std::string assigned = first + "Data assegnata incongruente con data di spedizione\r\n";
    const auto starts = [&](const std::string& date) {
        return first + "Data di inizio ciclo " + date + " incongruente con la data di spedizione 15/03/2011\r\n";
    };
    using Case = std::tuple<const char*, SqlRow, std::string>;
    const std::vector<Case> cases = {
        {"cyclic, sound", Service(), ""},
        {"single, sound", Single(""), ""},
        {"not reported", Service("DataRefertazione=NULL"), label + "Data refertazione mancante\r\n"},
        {"no start", Service("DataInizioCiclo=NULL"), first + "Data di inizio ciclo mancante\r\n"},
        {"start on the day", Service("DataInizioCiclo='2011-03-15 08:00:00'"), starts("15/03/2011")},
        {"start in the next year", Service("DataInizioCiclo='2012-01-01'"), starts("01/01/2012")},
        {"start in the month before", Service("DataInizioCiclo='2011-02-28'"), ""},
        {"single with a start", Single("DataInizioCiclo='2011-03-01'"), notCyclic},
        {"single, other dates missing", Single("DataAssegnata=NULL; DataRefertazione=NULL"),
         label + "Data refertazione mancante\r\n" + reported + assigned},
        {"single, all three",
         Single("DataInizioCiclo='2011-03-01'; DataAssegnata='2011-03-14'; DataRefertazione='2011-03-16'"),
         notCyclic + reported + assigned},
        {"a service without code is not looked at",
         Single("DataAssegnata=NULL; CodicePrestazioneTariffario=NULL; CodicePrestazione=''"), ""},
    };
    for (const auto& [what, service, report] : cases) {
        SCOPED_TRACE(what);
        PugliaClinic one({service});
        one.Export("chkSimulazione=1");
        EXPECT_EQ(one.Report(), report.empty() ? "" : report + "\r\n");
    }
}

/// No period selects such a row.
TEST(PugliaRunTest, ADocumentWithoutDispatchDateIsToldOnce) {
    PugliaClinic clinic({Service("DataAiFiniConvenzione=NULL"), Service("DataAiFiniConvenzione=NULL")});
    const auto connection = clinic.Connect();
    const auto rows = connection->Open("SELECT *, 72006 AS CodiceISTAT FROM VwPrestazionePerASL");
    ASLLInePuglia record(ttM);
    record.SetRs(rows.get());
    for (; !rows->AtEnd(); rows->MoveNext()) record.ReadData();
    EXPECT_EQ(record.GetErrors(), "Fattura A-125 del 16/03/2011: Data spedizione ricetta mancante\r\n");
    EXPECT_EQ(record.GetFormattedLine().substr(150, 8), "00000000");  // a two-byte letter stands before
    ASLLInePuglia other(ttS);
    EXPECT_EQ(other.GetErrors() + other.GetFormattedLine() + std::to_string(other.LineLenght()), "0");
}

TEST(PugliaRunTest, AFileWithAnomaliesGoesOutAndIsMarked) {
    PugliaClinic clinic;
    // The document is checked after every row, with what the row says of it.
    clinic.Create({Single("DataAssegnata=NULL"), Single("DataAssegnata=NULL; NumeroDocumento=9; IDTipoDocumento=2"),
                   Document(2)});
    const HostRun run = clinic.Export("chkVisualizza=1 answer:yes");
    const std::string message = "Data assegnata incongruente con data di spedizione\r\n";
    const std::string receipt = "Ricevuta A-9 del 16/03/2011:  - Prestazione ";
    EXPECT_EQ(clinic.Report(), "Fattura A-125 del 16/03/2011:  - Prestazione 1: " + message + "\r\n" + receipt +
                                   "1: " + message + receipt + "2: " + message + "\r\n");
    EXPECT_EQ(clinic.Out().size(), 2U * 343U);
    EXPECT_EQ(clinic.Marks(), (Lines{"1|True|1", "2|True|2"}));
    ASSERT_EQ(run.Of("message").size(), 2U);
    EXPECT_NE(run.Of("message")[0].find(R"("icon":"question","buttons":"yesno","answer":"yes")"), std::string::npos);
    EXPECT_EQ(run.Of("message")[1], Done(2));
    EXPECT_EQ(run.Of("run"), std::vector{NotepadEvent(clinic.work + "\\C700007Err.txt")});
    EXPECT_EQ(run.Of("dialog").size(), 1U);  // the viewer stays closed
}

TEST(PugliaRunTest, ExportsMonthsOnlyUnderTheSpecialistsCode) {
    FakeServices services;
    ASLExportPuglia region(services.library);
    ASLExport component(services.library, {});
    EXPECT_EQ(region.Export(component, "out", ttS, false), 0);
    EXPECT_TRUE(services.toolkit.messages.empty());
    EXPECT_EQ(region.GetFileName(ttS, "201", 3, 2011, "1234567", false), "C123456.txt");
    EXPECT_EQ(region.GetFileName(ttM, "201", 3, 2011, "12", true), "C12Err.txt");
}

/// Endings that fail: one message names the cause, nothing is marked, every file is as it was.
TEST(PugliaRunTest, AFailureIsNamedAndTakesEverythingBack) {
    struct Case {
        std::string reason;
        std::vector<SqlRow> services;
        const char* extraSql = "";
    };
    std::vector<Case> cases = {
        {"Indice non compreso nell'intervallo: Fattura A-125 del 16/03/2011: ", std::vector<SqlRow>(9, Document(2))},
        {"vietato",
         {Document(1), Document(2)},
         "CREATE TRIGGER Vieta BEFORE UPDATE ON Parcella WHEN NEW.IDParcella = 2 BEGIN SELECT RAISE(ABORT, 'vietato');"
         " END;"},
        {"Un'altra elaborazione ha intanto inviato 2 dei 2 documenti",
         {Document(1), Document(2)},
         "CREATE TRIGGER Altra AFTER UPDATE ON Parcella WHEN OLD.ElaborataASL = 0 BEGIN"
         " UPDATE Parcella SET ElaborataASL = 1; END;"}};
    cases.front().services.push_back(Document(1));
    for (const std::string cell : {"NumeroDocumento='12x'", "DataDocumento='2011-02-30'", "DataRefertazione='ieri'",
                                   "DataInizioCiclo='15/15/2011'", "DataPrenotazione='x'", "TotTicketEuro='molto'",
                                   "TotQuotaPazienteTicketEuro='poco'", "Quantita=70000"}) {
        cases.push_back({cell.substr(0, cell.find('=')), {Document(1), Document(2, cell)}});
    }
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reason);
        PugliaClinic clinic;
        clinic.extraSql = c.extraSql;
        clinic.Create(c.services);
        for (const std::string& folder : {clinic.out, clinic.work}) WriteBytes(folder + "/C700007.txt", "earlier");
        const HostRun run = clinic.Export("chkVisualizza=1");
        ASSERT_EQ(run.Of("message").size(), 1U);
        const std::string message = run.Of("message").front();
        EXPECT_NE(message.find("Si è verificato un errore durante la generazione del file."), std::string::npos);
        EXPECT_NE(message.find(c.reason), std::string::npos) << message;
        for (const std::string& folder : {clinic.out, clinic.work}) {
            EXPECT_EQ(FilesIn(folder), (Files{{"C700007.txt", "earlier"}}));
        }
        EXPECT_EQ(clinic.Query("SELECT COUNT(*) FROM Parcella WHERE ElaborataASL <> 0 OR ProgressivoRicetta > 0"),
                  Lines{"0"});
        EXPECT_EQ(run.Of("dialog").size(), 1U);
    }
}

}  // namespace
}  // namespace vlm::test
