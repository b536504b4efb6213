#include "ImportFixture.h"
#include "XlsxFile.h"
#include "support/Positions.h"

namespace vlm::test {
namespace {

using files::SheetValue;

class AslFormatsTest : public ImportTest {
protected:
    /// By the place of its name in the dialog's list.
    Lines Read(const std::string& authority, const std::string& source) {
        const std::string names = "," + std::string(kAuthorityNames);
        const auto found = names.begin() + static_cast<std::ptrdiff_t>(names.find("," + authority + ","));
        return ElementsOf(
            component.ReadSourceForAsl(source, static_cast<int>(std::count(names.begin(), found, ',')), "nessuno.ACF"));
    }
};

TEST_F(AslFormatsTest, EntriesWithoutAFormatGoByTheirTemplate) {
    const std::string reads = Source("x");
    const std::string format = Bytes("[FILETYPE]=XX", "nulla.ACF");  // gives nothing
    std::istringstream names(kAuthorityNames + std::string("modello,"));
    std::string own;
    int position = -1;
    for (std::string name; std::getline(names, name, ',');) {
        ++position;
        try {
            if (component.ReadSourceForAsl(reads, position, format) != nullptr) own += name + ",";
        } catch (const Error&) {  // no workbook
            own += name + ",";
        }
    }
    EXPECT_EQ(own, "LAZIO,MARCHE,SARDEGNA,TOSCANA,Catania,Caltanissetta,Savona,Palermo,Ragusa,Sassari,Enna,Napoli,");
}

const Positions kCatania(200, {At(1, "SCARTO.."), At(10, "DI MARIA NICOLOSI PATERNO"), At(35, "x"),
                               At(36, "ANNA MARIA ANTONIETTA LIA"), At(61, "x"), At(62, "03/02/1961"), At(73, "F"),
                               At(75, "DMRNMR61B43C351Z"), At(92, "CT123456789"), At(104, "04/03/2001"),
                               At(115, "05/04/2031"), At(126, "06/05/30"), At(136, "scarto......"),
                               At(148, "VIA ETNEA, ANGOLO VIA UMBERTO 123"), At(182, "CATANIA")});
const Positions kSavona(330, {At(1, "CNTNNA70A41B639Q"), At(17, "COGNOME DI TRENTA CARATTERI XX"),
                              At(47, "NOME DI TRENTA CARATTERI ABCDE"), At(77, "01/01/1970"), At(87, "F"),
                              At(88, "................................"), At(120, "ROMA"), At(150, "17100"),
                              At(157, "VIA PALEOCAPA"), At(187, "12"), At(193, "A"), At(305, "02/02/1972"),
                              At(315, "03-03-2033")});
const Positions kToscana(260, {At(1, "abc"), At(4, "FI123456789"), At(15, "ALIGHIERI DEGLI ALTR"),
                               At(35, "DANTE DURANTE LAPO G"), At(55, "............"), At(67, "19610203"), At(75, "M"),
                               At(76, "LGHDNT61B03D612X"), At(92, "VIA SANTA MARGHERITA, ANGOLO CORSO"),
                               At(126, "082053"), At(248, "20010304")});
/// Palermo and Caltanissetta, but for the width of the comune's name.
const Positions kSicilian(150, {At(1, "PA123456789"), At(13, "COGNOME E NOME DI TRENTA LETTE"), At(44, "03-02-1961"),
                                At(55, "F"), At(57, "CGNNMO61B43G273A"), At(74, "PALERMOOOOOOOOOOOOOOOOOOOOOXYZ"),
                                At(105, "VIA MAQUEDA NUMERO VENTISETTE "), At(139, "04/03/2001")});
const Positions kEnna(125, {At(1, "EN123456789"), At(13, "COGNOME E NOME DI TRENTA LETTE"), At(44, "03/02/1961"),
                            At(55, "PIAZZA VITTORIO EMANUELE N. 12"), At(89, "082053"), At(95, "CGNNMO61B43G273A"),
                            At(112, "04/03/2001")});
const Positions kMarche(180, {At(1, "COGNOME E NOME DI TRENTACINQUE LETT"), At(36, "CORSO GARIBALDI NUMERO 12"),
                              At(61, "CATANIA"), At(86, "60100"), At(111, "03021961"), At(146, "M"),
                              At(150, "dppdpp70a01h501x"), At(166, "MC345678")});
const Positions kSassari(135,
                         {At(1, "...................."), At(21, "SS34567"), At(29, "SNNMRA61B03I452K"),
                          At(47, "SANNA/MARIA GIOVANNA"), At(83, "03/02/1961"), At(94, "ROMA"), At(125, "04/03/01")});

Positions With(Positions line, std::initializer_list<Piece> pieces) { return line.With(pieces); }

TEST_F(AslFormatsTest, FixedWidthByTheirRecordDescriptions) {
    const std::string catania =
        "Selezionato=True|Codice=CT123456789|Cognome=DI MARIA NICOLOSI PATERNO|Nome=ANNA MARIA ANTONIETTA LIA|";
    const std::string etnea = "Indirizzo=VIA ETNEA, ANGOLO VIA UMBERTO 123|";
    const std::string savona =
        "Selezionato=False|Cognome=COGNOME DI TRENTA CARATTERI XX|Nome=NOME DI TRENTA CARATTERI ABCDE|"
        "DataNascita=01/01/1970|Sesso=F|CodiceFiscale=CNTNNA70A41B639Q|Comune=ROMA|Indirizzo=VIA PALEOCAPA 12";
    const std::string savonaEnd = "|CAP=17100|DataScelta=02/02/1972|IDComune=4|IDPaziente=7|Scadenza=03/03/2033";
    const std::string toscana =
        "Selezionato=True|Codice=FI123456789|Cognome=ALIGHIERI DEGLI ALTR|Nome=DANTE DURANTE LAPO G|"
        "DataNascita=03/02/1961|Sesso=M|CodiceFiscale=LGHDNT61B03D612X|";
    const std::string corner = "Indirizzo=VIA SANTA MARGHERITA, ANGOLO CORSO|";
    const std::string sicilian = "Selezionato=True|Codice=PA123456789|Cognome=COGNOME E NOME DI TRENTA LETTE|";
    const std::string sicilianEnd = "|Indirizzo=VIA MAQUEDA NUMERO VENTISETTE|";
    const std::string sassari =
        "DataNascita=03/02/1961|CodiceFiscale=SNNMRA61B03I452K|Comune=ROMA|DataScelta=04/03/2001|IDPaziente=0";
    const std::string born = "DataNascita=03/02/1961|Sesso=F|CodiceFiscale=";
    const struct {
        const char *authority, *headings;
        Positions line;
        std::string element, finding = {};
    } cases[] = {
        {"Catania", "testata\r\n\r\n", kCatania,
         catania + born + "DMRNMR61B43C351Z|Comune=CATANIA|" + etnea +
             "DataScelta=04/03/2001|IDComune=2|IDPaziente=0|Scadenza=05/04/2031|Sospensione=06/05/1930"},
        {"Catania", "1\n2\n",
         With(kCatania, {At(62, "00/00/0000"), At(104, "          "), At(115, "31/02/2020"), At(126, "1.1.29    ")}),
         catania + "Sesso=F|CodiceFiscale=DMRNMR61B43C351Z|Comune=CATANIA|" + etnea +
             "IDComune=2|IDPaziente=0|Sospensione=01/01/2029",
         "Riga 3, Scadenza: \"31/02/2020\" non è una data."},
        {"Savona", "", kSavona, savona + "/A" + savonaEnd},
        {"Savona", "", With(kSavona, {At(193, "0")}), savona + savonaEnd},
        {"Savona", "", With(kSavona, {At(193, " ")}), savona + "/" + savonaEnd},
        {"TOSCANA", "a\r\nb\r\n", kToscana,
         toscana + "Comune=Palermo|" + corner + "CAP=90100|DataScelta=04/03/2001|IDComune=3|IDPaziente=0"},
        {"TOSCANA", "a\r\nb\r\n", With(kToscana, {At(126, "999999"), At(248, "2001030 ")}),
         toscana + corner + "IDComune=0|IDPaziente=0", "Riga 3, DataScelta: \"2001030\" non è una data."},
        {"TOSCANA", "a\r\nb\r\n", With(kToscana, {At(126, "0 OR 1")}),
         toscana + corner + "DataScelta=04/03/2001|IDComune=0|IDPaziente=0",
         "Riga 3, Comune: \"0 OR 1\" non è il codice ISTAT di un comune."},
        {"Palermo", "1\r\n2\r\n", With(kSicilian, {At(74, "PALERMO                       ")}),
         sicilian + born + "CGNNMO61B43G273A|Comune=PALERMO" + sicilianEnd +
             "CAP=90100|DataScelta=04/03/2001|IDComune=3|IDPaziente=0"},
        {"Palermo", "1\r\n2\r\n", With(kSicilian, {At(44, "00-00-0000")}),
         sicilian + "Sesso=F|CodiceFiscale=CGNNMO61B43G273A|Comune=PALERMOOOOOOOOOOOOOOOOOOOOOXYZ" + sicilianEnd +
             "DataScelta=04/03/2001|IDComune=0|IDPaziente=0"},
        {"Caltanissetta", "1\r\n2\r\n", With(kSicilian, {At(74, "PALERMO              XYZ")}),
         sicilian + born + "CGNNMO61B43G273A|Comune=PALERMO" + sicilianEnd +
             "DataScelta=04/03/2001|IDComune=3|IDPaziente=0"},
        {"Enna", "", kEnna,
         "Selezionato=True|Codice=EN123456789|Cognome=COGNOME E NOME DI TRENTA LETTE|DataNascita=03/02/1961|"
         "CodiceFiscale=CGNNMO61B43G273A|Comune=Palermo|Indirizzo=PIAZZA VITTORIO EMANUELE N. 12|CAP=90100|"
         "DataScelta=04/03/2001|IDComune=3|IDPaziente=0"},
        {"MARCHE", "", kMarche,
         "Selezionato=False|Codice=MC345678|Cognome=COGNOME E NOME DI TRENTACINQUE LETT|DataNascita=03/02/1961|"
         "Sesso=M|CodiceFiscale=dppdpp70a01h501x|Comune=CATANIA|Indirizzo=CORSO GARIBALDI NUMERO 12|CAP=60100|"
         "IDComune=2|IDPaziente=3"},
        {"Sassari", "   \r\n\r\n", kSassari,
         "Selezionato=True|Codice=SS34567|Cognome=SANNA|Nome=MARIA GIOVANNA|" + sassari},
        {"Sassari", "", With(kSassari, {At(47, "PIRAS GAVINO ANNA   ")}),
         "Selezionato=True|Codice=SS34567|Cognome=PIRAS GAVINO ANNA|" + sassari},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(Read(each.authority, Source(each.headings + each.line.WithLineEnd())), Lines{each.element})
            << each.authority;
        EXPECT_EQ(component.LastFindings().Report(), each.finding.empty() ? Lines{} : Lines{each.finding});
    }
}

TEST_F(AslFormatsTest, LazioTakesNumberedLinesOfThirteenFields) {
    const std::string source = Source(
        "1;testata;;;;;;;;;;;\n"
        "1; T7 ;XXXXXX00X00X000X; Bianchi ;Rosa;03/02/1961;-;-;04/03/2001;05/04/2031;-;Cantù; VIA   DEI  GELSI "
        ";altro\r\n"
        "due;T3;;A;B;;;;;;;;VIA ROMA\n"
        "3;T3;;A;B;;;;;;;ROMA\n"
        "4;ignoto;CNTNNA70A41B639Q;A;B; ;;;NULL;null;;;PIAZZA\n");
    const Lines expected = {
        "Selezionato=False|Codice=T7|Cognome=Bianchi|Nome=Rosa|DataNascita=03/02/1961|CodiceFiscale=XXXXXX00X00X000X|"
        "Comune=Cantù|Indirizzo=VIA DEI GELSI|DataScelta=04/03/2001|IDComune=1|IDPaziente=7|Scadenza=05/04/2031",
        "Selezionato=False|Codice=ignoto|Cognome=A|Nome=B|CodiceFiscale=CNTNNA70A41B639Q|Comune=|Indirizzo=|IDComune=0|"
        "IDPaziente=7"};
    EXPECT_EQ(Read("LAZIO", source), expected);
    EXPECT_EQ(ElementsOf(component.GetElementList(source)), expected);
    EXPECT_TRUE(component.LastFindings().Empty());
}

TEST_F(AslFormatsTest, SardegnaTurnsAccentsIntoApostrophes) {
    const std::string source = Source(
        "Cognome,Nome\r\n"
        " Melis , Efisio ,03/02/1961,M, CNTNNA70A41B639Q ,D´ELVA`, ignorato ,09100, VIA ROMA ,9,10,11,12, 070123 ,"
        "04/03/2001,05/04/2031,resto\r\n"
        "solo\r\n"
        "Uno,Due\r\n");
    EXPECT_EQ(Read("SARDEGNA", source),
              (Lines{"Selezionato=False|Cognome=Melis|Nome=Efisio|DataNascita=03/02/1961|"
                     "CodiceFiscale=CNTNNA70A41B639Q|Comune=D'ELVA'|Indirizzo=VIA ROMA|CAP=09100|"
                     "DataScelta=04/03/2001|IDComune=0|IDPaziente=7|Scadenza=05/04/2031|Telefono=070123",
                     "Selezionato=True|Cognome=Uno|Nome=Due|CodiceFiscale=|Comune=|Indirizzo=|CAP=|IDComune=0|"
                     "IDPaziente=0|Telefono="}));
}

TEST_F(AslFormatsTest, RagusaReadsToTheFirstRowWithoutANumber) {
    const SheetValue none;
    const std::string path = host.folder / "ragusa.xlsx";
    XlsxFile()
        .Sheet("Elenco", {{"elenco"},
                          {"N.", "Cognome"},
                          {1.0, " ROSSI ANNA ", Date(22315), "F", " VIA ROMA 1 ", " PALERMO ", " CNTNNA70A41B639Q ",
                           "04/03/2001", 7001.0},
                          {"2", "VERDI", none, none, none, none, none, none, "T3"},
                          {0.0, "FINE"},
                          {4.0, "DOPO LA FINE"}})
        .Sheet("Altro", {{}, {}, {1.0, "ALTRO FOGLIO"}})
        .Write(path);
    EXPECT_EQ(Read("Ragusa", path),
              (Lines{"Selezionato=False|Codice=7001|Cognome= ROSSI ANNA |DataNascita=03/02/1961|Sesso=F|"
                     "CodiceFiscale=CNTNNA70A41B639Q|Comune=PALERMO|Indirizzo=VIA ROMA 1|CAP=90100|"
                     "DataScelta=04/03/2001|IDComune=3|IDPaziente=7",
                     "Selezionato=False|Codice=T3|Cognome=VERDI|Sesso=|CodiceFiscale=|Comune=|Indirizzo=|IDComune=0|"
                     "IDPaziente=3"}));
}

TEST_F(AslFormatsTest, NapoliDividesItsSharedCells) {
    const std::string path = host.folder / "napoli.xlsx";
    XlsxFile()
        .Sheet("Foglio1", {{"Num", "Cognome e nome"},
                           {1.0, "ESPOSITO CIRO", "ROMA - VIA TOLEDO - SCALA B", "CNTNNA70A41B639Q T3"},
                           {"x", "riga di altro"},
                           {3.0, "RUSSO LIA", "CANTÙ", "RSSLIA80A41F839X"}})
        .Write(path);
    EXPECT_EQ(Read("Napoli", path),
              (Lines{"Selezionato=False|Codice=T3|Cognome=ESPOSITO CIRO|CodiceFiscale=CNTNNA70A41B639Q|Comune=ROMA|"
                     "Indirizzo=VIA TOLEDO - SCALA B|CAP=|IDComune=4|IDPaziente=3",
                     "Selezionato=True|Codice=|Cognome=RUSSO LIA|CodiceFiscale=RSSLIA80A41F839X|Comune=CANTÙ|"
                     "Indirizzo=|CAP=22063|IDComune=1|IDPaziente=0"}));
}

/// Sources may be UTF-8 with its mark; widths count characters.
TEST_F(AslFormatsTest, EncodingsAndLengthsOfTextSources) {
    std::string accented = kCatania.Line();
    accented.replace(35, 25, "NICOLÒ A B               ");  // 25 characters in 26 bytes
    const std::string mark = "\xEF\xBB\xBF";
    for (const std::string& source :
         {Source("1\n2\n" + accented), Bytes(mark + "1\r\n2\r\n" + accented + "\r\n", "b")}) {
        EXPECT_NE(Read("Catania", source).at(0).find("Nome=NICOLÒ A B|DataNascita=03/02/1961|"), std::string::npos);
    }
    EXPECT_EQ(Read("Catania", Source("")), Lines{});
    EXPECT_EQ(Read("LAZIO", Source("")), Lines{});
    EXPECT_EQ(Read("Palermo", Source("1\n2\nPA1")).front(),
              "Selezionato=True|Codice=PA1|Cognome=|Sesso=|CodiceFiscale=|Comune=|Indirizzo=|IDComune=0|IDPaziente=0");
}

TEST_F(AslFormatsTest, OddFilesDoNoHarm) {
    const std::string huge(50 << 20, 'x');
    EXPECT_EQ(Read("LAZIO", Bytes("t\n1;" + huge + ";;;;;;;;;;;a b")).size(), 1U);
    EXPECT_EQ(Read("Catania", Bytes("1\n2\n" + huge)).size(), 1U);
    const std::string zero = "t\n1;T7;;A" + std::string(1, '\0') + "B;;;;;;;;;a b";
    EXPECT_EQ(component.GetElementList(Bytes(zero))->TextOf(OrdinalOf(ElementColumn::Cognome)),
              std::string("A") + '\0' + "B");
}

TEST_F(AslFormatsTest, ProgressByTheEstimateOrTheLastLine) {
    std::string lines;
    for (int line = 0; line < 25; ++line) lines += "x\r\n";
    Read("Catania", Source(lines + std::string(5900 - 75, ' ')));  // 39.6 records long by its size
    EXPECT_EQ(progress, (std::vector<std::int32_t>{25, 50}));
    progress.clear();
    Read("LAZIO", Source(lines));  // the last line has the index 25
    EXPECT_EQ(progress, (std::vector<std::int32_t>{40, 80}));
    progress.clear();
    Read("Palermo", Source(lines));  // 75 bytes by records of one character
    EXPECT_EQ(progress, (std::vector<std::int32_t>{13, 26}));
    progress.clear();
    Read("Palermo", Source("xx\n" + std::string(22, '\n')));  // 12.5 records: the even number of a half
    EXPECT_EQ(progress, (std::vector<std::int32_t>{83, 100}));
    progress.clear();
    Read("Catania", Source("123456789"));  // no estimate
    EXPECT_EQ(progress, (std::vector<std::int32_t>{}));
    Read("Catania", Source(std::string(2000, '\n')));  // more lines than estimated
    EXPECT_EQ(progress.size(), 200U);
    EXPECT_EQ(progress.back(), 100);
}

}  // namespace
}  // namespace vlm::test
