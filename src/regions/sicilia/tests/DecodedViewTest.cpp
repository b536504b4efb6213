#include <gtest/gtest.h>

#include "DetailedLines.h"
#include "support/Events.h"

namespace vlm::test {
namespace {

class DecodedViewTest : public ::testing::Test {
protected:
    DecodedViewTest() { clinic.Create({}); }

    HostRun View(const std::string& kind, const std::string& bytes) {
        WriteBytes(clinic.out + "/file.txt", bytes);
        return clinic.Run({"optTipoExport=" + kind, "in:frmSelectFile", "txtPath=" + clinic.out + "\\file.txt",
                           "cmdConferma!", "end:", "cmdVisualizza!"});
    }
    std::string Copy() const { return ReadBytes(clinic.work + "/file.txt.tmp"); }

    ServiceClinic clinic;
};

const std::string kHeadM =
    "USL     Br C.F. Utente      Cogn. e nome utente  Data pren.S Comune Numero Ricetta   P QTA  Ticket\r\n"
    "Strutt.C.F. Medico      Identific. record    Data nasc C USL PU Data     Codice  Esenz. R   Tot./Rimb\r\n" +
    std::string(101, '-') + "\r\n\r\n";
const std::string kLegendM = std::string(18, '-') +
                             "\r\nS=Sesso; C=Codice nomenclatore; Br=Codice branca; R=Riga; P=Posizione; PU=Posizione "
                             "Utente; T=Trimestre\r\n";

Positions Written() { return ServiceLine().At(61, "MARIA GRAZIA TERESA").At(97, "1"); }

TEST_F(DecodedViewTest, ShowsServiceAndClosingLineAtTheirPositions) {
    const std::string closing = ClosingLine(Written()).At(97, "2").At(180, "-0017,16").WithLineEnd();
    const HostRun run = View("0", Written().WithLineEnd() + closing + Written().At(97, "0").Line());
    const Positions first =
        Positions(101, {At(1, "190201"), At(9, "08"), At(12, "NCLMGR70E41G273K"), At(29, "NICOL\xD2 MARIA GRAZIA "),
                        At(50, "28/02/11"), At(60, "M"), At(62, "082053"), At(69, "1234567890123456"), At(88, "002"),
                        At(93, "     0,00")});
    const Positions second = Positions(101, {At(1, "123456"), At(8, "MDCFSC60A01F205X"), At(25, "20112011234560000125"),
                                             At(46, "01/05/70"), At(56, "x"), At(58, "206"), At(65, "15/03/11"),
                                             At(74, "897"), At(82, "E02"), At(89, "01"), At(93, "    20,66")});
    const std::string service = first.WithLineEnd() + second.WithLineEnd();
    const std::string unknownSex = Positions(first).With({At(60, "F")}).WithLineEnd() + second.WithLineEnd();
    const std::string closed =
        Positions(first).With({At(60, "F"), At(86, "2"), At(88, "000"), At(93, "     3,50")}).WithLineEnd() +
        Positions(second)
            .With({At(56, " "), At(62, "1 "), At(65, "        "), At(74, "   "), At(89, "99"), At(93, "   -17,16")})
            .WithLineEnd();
    // Two whole records of 224 bytes; the third has no line end.
    EXPECT_EQ(Copy(), "\r\nNr. record elaborati: 2\r\n\r\n\r\n" + kHeadM + service + closed + "\r\n" + unknownSex +
                          "\r\n\r\n" + kLegendM);
    EXPECT_EQ(run.Of("run"), std::vector{NotepadEvent(clinic.work + "\\file.txt.tmp")});
}

TEST_F(DecodedViewTest, ShowsASummaryLineAtItsPositions) {
    View("1",
         "2010312345608"
         "0001244,75"
         "0000003,50"
         "000042"
         "032011"
         "1" +
             std::string(14, ' ') + "\r\n");
    EXPECT_EQ(Copy(),
              "\r\nNr. record elaborati: 1\r\n\r\n\r\n"
              "USL Ditretto Struttura Branca  Importo    Ticket    N. Prestaz. Mese Anno Trimestre\r\n" +
                  std::string(83, '-') + "\r\n\r\n" +
                  Positions(85, {At(1, "201"), At(8, "03"), At(16, "123456"), At(26, "08"), At(31, "   1244,75"),
                                 At(42, "      3,50"), At(55, "42    "), At(66, "03"), At(70, "2011"), At(79, "1")})
                      .WithLineEnd() +
                  "\r\n\r\n");
}

TEST_F(DecodedViewTest, AFileOfAnotherKindShowsWhatIsReadable) {
    View("0", "short\r\n\r\n\xFF\xFE" + std::string(1, '\0') + "\r\n" + std::string(1000, '9'));
    EXPECT_EQ(Copy().substr(0, 30), "\r\nNr. record elaborati: 4\r\n\r\n\r");
    EXPECT_NE(Copy().find("short "), std::string::npos);
}

TEST_F(DecodedViewTest, AnEmptyFileGivesAnEmptyCopyAndAMissingOneNone) {
    EXPECT_EQ(View("0", "").Of("run").size(), 1U);
    EXPECT_EQ(Copy(), "");
    const HostRun run = clinic.Run(
        {"in:frmSelectFile", "txtPath=" + clinic.out + "\\nothing.txt", "cmdConferma!", "end:", "cmdVisualizza!"});
    EXPECT_TRUE(run.Of("run").empty());
    EXPECT_TRUE(run.Of("message").empty());
    EXPECT_EQ(NamesIn(clinic.work), Lines{"file.txt.tmp"});
}

TEST_F(DecodedViewTest, ACopyThatCannotBeWrittenIsToldAndStartsNothing) {
    std::filesystem::remove(clinic.work);
    const HostRun run = View("0", Written().WithLineEnd());
    EXPECT_TRUE(run.Of("run").empty());
    ASSERT_EQ(run.Of("message").size(), 1U);
    EXPECT_NE(run.Of("message").at(0).find("durante la generazione del file.\\r\\nIl messaggio tecnico"),
              std::string::npos);
}

}  // namespace
}  // namespace vlm::test
