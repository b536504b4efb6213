#include <gtest/gtest.h>

#include "support/Positions.h"
#include "support/ServiceClinic.h"

namespace vlm::test {
namespace {

SqlRow Sent(int parcella, const std::string& date, const std::string& quantity, const std::string& amount,
            const std::string& more = {}) {
    return Service("IDParcella=" + std::to_string(parcella) + "; DataAiFiniConvenzione='" + date +
                   "'; Quantita=" + quantity + "; TotaleEuro=" + amount + "; ElaborataASL=1; " + more);
}

HostRun Export(const ServiceClinic& clinic) {
    return clinic.Run(
        {"optTipoExport=1", "cboTrimestre=#0", "numAnnoTrimestre=2011", "txtPath=" + clinic.out, "cmdConferma!"});
}

/// Branch, number of services and month of every line of the file, and its ticket.
std::string LinesIn(const ServiceClinic& clinic) {
    const std::string file = ReadBytes(clinic.out + "/2010111S.txt");
    std::string lines;
    for (std::size_t at = 0; at + 62 <= file.size(); at += 62) {
        lines += file.substr(at + 11, 2) + " " + file.substr(at + 33, 8) + " " + file.substr(at + 23, 10) + "; ";
    }
    return lines;
}

TEST(SummaryRunTest, WritesALineForEachMonthAtItsPositions) {
    ServiceClinic clinic({
        Sent(1, "2011-01-10", "2", "1234.5"),
        Sent(1, "2011-01-10", "0", "10.25"),
        // The document goes on in February: its ticket counts in January only. No minimum of one here.
        Sent(1, "2011-02-01", "NULL", "3"),
        Sent(2, "2011-02-02", "3", "4", "TotQuotaPazienteTicketEuro=36.15; QuotaRicettaEuro=NULL"),
        Sent(3, "2011-03-02", "7", "100", "ElaborataASL=0"),  // not sent yet
        Sent(4, "2011-04-01", "7", "100"),                    // another quarter
        Sent(5, "2011-03-31 18:00:00", "12", "-0.5", "CodiceRegionale='98'"),
    });
    const HostRun run = Export(clinic);
    const auto line = [](const char* month, const char* gross, const char* ticket, const char* count,
                         const char* structure) {
        return Positions(60, {At(1, "201"), At(4, "03"), At(6, structure), At(12, "08"), At(14, gross), At(24, ticket),
                              At(34, count), At(40, month), At(42, "2011"), At(46, "1")})
            .WithLineEnd();
    };
    EXPECT_EQ(ReadBytes(clinic.out + "/2010111S.txt"), line("01", "0001244,75", "0000003,50", "000002", "123456") +
                                                           line("02", "0000007,00", "0000036,15", "000003", "123456") +
                                                           line("03", "-000000,50", "0000003,50", "000012", "98    "));
    EXPECT_EQ(run.Of("message").size(), 1U);
    EXPECT_NE(run.Of("message").at(0).find("con successo\\r\\nElaborate 3 linee."), std::string::npos);
    EXPECT_EQ(clinic.Query("SELECT COUNT(*) FROM Parcella WHERE ElaborataASL = 0"), Lines{"1"});
}

TEST(SummaryRunTest, BranchesMeetInOneLineWhenTheirMonthsDoAndATicketCountsAgainWhenItsDocumentComesBack) {
    ServiceClinic branches({Sent(1, "2011-01-10", "1", "1"), Sent(2, "2011-01-11", "2", "2", "CodiceBranca='09'"),
                            Sent(3, "2011-02-11", "4", "4", "CodiceBranca='09'"),
                            Sent(4, "2011-01-11", "8", "8", "CodiceBranca='10'")});
    Export(branches);
    EXPECT_EQ(LinesIn(branches), "08 00000301 0000007,00; 09 00000402 0000003,50; 10 00000801 0000003,50; ");
    ServiceClinic tickets(
        {Sent(0, "2011-01-10", "1", "1"), Sent(2, "2011-01-11", "1", "1"), Sent(0, "2011-01-12", "1", "1")});
    Export(tickets);
    EXPECT_EQ(LinesIn(tickets), "08 00000301 0000010,50; ");
}

TEST(SummaryRunTest, ChecksTheRunOnceAndOnItsFirstRow) {
    ServiceClinic clinic;
    clinic.numeroASL = "' '";
    clinic.codiceDistretto = "NULL";
    clinic.Create(
        {Sent(1, "2011-01-10", "1", "1", "CodiceRegionale=' '; CodiceBranca=NULL"), Sent(2, "2011-02-10", "1", "1")});
    const HostRun run = Export(clinic);
    EXPECT_EQ(ReadBytes(clinic.work + "/0000111SErr.txt"),
              "[1] Codice Azienda ASL mancante\r\n[2] Distretto ASL mancante\r\n"
              "[3] Codice struttura erogatrice mancante\r\n[4] Codice branca specialiastica mancante\r\n");
    EXPECT_EQ(ReadBytes(clinic.work + "/0000111S.txt").size(), 2U * 62U);
    EXPECT_TRUE(NamesIn(clinic.out).empty());
    EXPECT_NE(run.Of("message").at(0).find(R"("icon":"question","buttons":"yesno","answer":"no")"), std::string::npos);

    ServiceClinic later({Sent(1, "2011-01-10", "1", "1"), Sent(2, "2011-02-10", "1", "1", "CodiceRegionale=NULL")});
    Export(later);
    EXPECT_EQ(ReadBytes(later.work + "/2010111SErr.txt"), "");
    EXPECT_EQ(ReadBytes(later.out + "/2010111S.txt").substr(62 + 5, 6), "      ");
}

TEST(SummaryRunTest, ACountBeyondItsWidthIsAnErrorAndAnEmptyQuarterSaysSo) {
    for (const auto& [sent, told] : {std::pair{"ElaborataASL=0", "Nessun dato da elaborare."}, {"", "Overflow"}}) {
        ServiceClinic clinic({Sent(1, "2011-01-10", "30000", "1", sent), Sent(2, "2011-01-10", "30000", "1", sent)});
        EXPECT_NE(Export(clinic).Of("message").at(0).find(told), std::string::npos);
        EXPECT_TRUE(NamesIn(clinic.out).empty());
        EXPECT_TRUE(NamesIn(clinic.work).empty());
    }
}

}  // namespace
}  // namespace vlm::test
