#include <gtest/gtest.h>

#include "ProjectClinic.h"
#include "support/Positions.h"

namespace vlm::test {
namespace {

std::string FileOf(const std::vector<SqlRow>& rows) {
    ProjectClinic clinic({{12, rows}});
    clinic.Export();
    return clinic.Content();
}

TEST(ProjectLineTest, WritesEveryFieldAtItsPositions) {
    const Positions line =
        Positions(195, {At(1, "201123"), At(7, "19010"), At(13, "1"), At(14, "2011"), At(18, "01"), At(20, "004321"),
                        At(26, "Nicol\xF2"), At(56, "Maria Graziella Anto"), At(76, "NCLMGR70E41G273K"), At(92, "1"),
                        At(93, "01051970"), At(101, "082053")})
            .With({At(107, "006"), At(110, "276"), At(113, "4"), At(114, "31122009"), At(122, "3"), At(123, "5"),
                   At(124, "43890"), At(129, "50001"), At(135, "15012011"), At(143, "060"), At(146, "2"),
                   At(147, "28022011"), At(155, "008"), At(161, "0"), At(162, "038,06"), At(174, "000,00"),
                   At(180, "00304,50"), At(188, "18012011")});
    EXPECT_EQ(FileOf({Project("50001")}), line.WithLineEnd());
}

TEST(ProjectLineTest, WritesWhatAColumnHolds) {
    const std::vector<std::tuple<const char*, std::size_t, std::string>> cases = {
        {"Sesso='F'", 92, "2"},
        {"Sesso='m'", 92, "2"},
        {"Sesso=NULL", 92, "2"},
        {"CodiceIstatCittadinanza=0", 110, "100"},
        {"CodiceIstatCittadinanza=NULL", 110, "100"},
        {"CodiceIstatCittadinanza=-5", 110, "100"},
        {"CodiceIstatCittadinanza=20", 110, "020"},
        {"DataRevoca=NULL", 146, "         008"},
        {"DataRevoca=NULL; TipoDimissione=NULL", 146, "         008"},
        {"TipoDimissione=NULL", 146, "028022011"},
        {"DataAutorizzazione=NULL", 135, "        060"},
        {"DataInizio=NULL", 188, "        \r\n"},
        {"DataNascita=NULL; DataScelta=''", 93, "        0820530062764        35"},
        {"DataScelta='7/4/2003'", 114, "07042003"},
        {"Cognome='Ã12345678901234567890123456789012'", 26,
         "\xC3"
         "12345678901234567890123456789Maria"},
        {"Cognome=NULL; Nome='X'", 26, "                              X                   NCLMGR"},
        {"CodiceFiscale='abcdefghijklmnopqrs'", 76, "ABCDEFGHIJKLMNOP1"},
        {"Protocollo=7654321", 20, "654321"},
        {"Protocollo=-12", 20, "000-12"},
        {"NumeroAslPaziente='x'; CodiceISTAT=NULL", 101, "000000000276"},
        {"NumeroAccessi=0", 155, "000   0000,00      000,0000304,50"},
        {"NumeroAccessi=NULL", 155, "000   0000,00      000,0000304,50"},
        {"ImportoTotale=NULL", 155, "008   0000,00      000,0000000,00"},
        {"ImportoTotale=100; NumeroAccessi=3", 162, "033,33"},
        {"ImportoTotale=0.25; NumeroAccessi=2", 162, "000,13"},
        {"ImportoTotale=8000; NumeroAccessi=1", 162, "000,00      000,0008000,00"},
        {"ImportoTotale=-300; NumeroAccessi=8", 162, "-37,50      000,00-0300,00"},
    };
    std::vector<SqlRow> rows;
    for (const auto& [changes, position, text] : cases) {
        rows.push_back(Project(std::to_string(100 + rows.size()), changes));
    }
    const std::string file = FileOf(rows);
    ASSERT_EQ(file.size(), cases.size() * 197);
    for (std::size_t at = 0; const auto& [changes, position, text] : cases) {
        EXPECT_EQ(file.substr(at + position - 1, text.size()), text) << changes;
        at += 197;
    }
}

/// Positions 155 to 187 of each line.
Lines AmountsOf(const std::vector<SqlRow>& rows) {
    const std::string file = FileOf(rows);
    Lines amounts;
    for (std::size_t at = 0; at + 197 <= file.size(); at += 197) amounts.push_back(file.substr(at + 154, 33));
    return amounts;
}

TEST(ProjectLineTest, EveryRowOfAProjectCompletesItsLine) {
    const auto state = [](const char* project, const std::string& of, const std::string& accesses,
                          const std::string& amount) {
        return Project(project,
                       "IDStatoPrestazioneErogata=" + of + "; NumeroAccessi=" + accesses + "; ImportoTotale=" + amount);
    };
    const auto lines = [](Lines amounts) { return amounts; };
    EXPECT_EQ(AmountsOf({state("1", "1", "10", "250"), state("1", "10", "4", "100")}),
              lines({"0100040025,00025,00000,0000350,00"}));
    // The last row of a state stands, all of them count; other states add to the total alone.
    EXPECT_EQ(AmountsOf({state("1", "2", "9", "0.1"), state("1", "1", "2", "0.2"), state("1", "1", "0", "0.3"),
                         state("1", "NULL", "5", "7")}),
              lines({"000   0000,00      000,0000007,60"}));
    // Another project in between parts the line in two.
    EXPECT_EQ(AmountsOf({state("1", "1", "1", "5"), state("2", "1", "1", "6"), state("1", "10", "1", "7")}),
              lines({"001   0005,00      000,0000005,00", "001   0006,00      000,0000006,00",
                     "   0010      007,00000,0000007,00"}));
    // Beyond eight characters the rightmost stay, and the next row adds to those.
    EXPECT_EQ(AmountsOf({state("1", "10", "1", "1234567.89"), state("1", "2", "1", "0.11")}),
              lines({"   0010      567,89000,0034568,00"}));
    EXPECT_EQ(AmountsOf({state("1", "2", "1", "-12.345"), state("1", "2", "1", "-0.001"), state("1", "2", "1", "5")}),
              lines({"      0            000,00-0007,35"}));
}

TEST(ProjectLineTest, AnyPartOfTheKeyStartsAnotherProject) {
    const SqlRow rows[] = {
        Project("1"),
        Project("1", "NumeroAutorizzazione='01'"),
        Project("1", "NumeroAutorizzazione='01'; Periodo=2"),
        Project("1", "NumeroAutorizzazione='01'; Periodo=2; CodiceFiscale='B'"),
        Project("1", "CodiceFiscale='b'"),
        Project("1", "CodiceFiscale='b'; DataAutorizzazione='2011-01-15 08:00:00'"),
        Project("1", "CodiceFiscale='b'; DataAutorizzazione=NULL"),
        // These belong to the row before.
        Project("1", "CodiceFiscale='b'; DataAutorizzazione=NULL; Cognome='Altro'"),
        Project("1", "CodiceFiscale='b'; DataAutorizzazione=NULL; DataRevoca=NULL"),
    };
    const std::string file = FileOf({std::begin(rows), std::end(rows)});
    ASSERT_EQ(file.size(), 7U * 197);
    EXPECT_EQ(file.substr(6 * 197 + 25, 6) + file.substr(6 * 197 + 145, 9) + file.substr(6 * 197 + 179, 8),
              "Nicol\xF2"
              "22802201100913,50");
}

}  // namespace
}  // namespace vlm::test
