#include "ImportFixture.h"
#include "XlsxFile.h"
#include "support/Positions.h"

namespace vlm::test {
namespace {

using files::SheetValue;

/// Positions in the dialog's list of authorities.
enum Entry {
    Lazio = 7,
    Marche = 10,
    Sardegna = 14,
    Toscana = 16,
    Catania = 22,
    Caltanissetta,
    Savona,
    Palermo,
    Ragusa,
    Sassari,
    Enna,
    Napoli
};

class AslFormatsTest : public ImportTest {
protected:
    Lines Read(Entry entry, const std::string& source) {
        return ElementsOf(component.ReadSourceForAsl(source, entry, "nessuno.ACF"));
    }
};

Positions CataniaLine() {
    return Positions(
        200, {At(1, "SCARTO.."), At(10, "DI MARIA NICOLOSI PATERNO"), At(35, "x"), At(36, "ANNA MARIA ANTONIETTA LIA"),
              At(61, "x"), At(62, "03/02/1961"), At(73, "F"), At(75, "DMRNMR61B43C351Z"), At(92, "CT123456789"),
              At(104, "04/03/2001"), At(115, "05/04/2031"), At(126, "06/05/30"), At(136, "scarto......"),
              At(148, "VIA ETNEA, ANGOLO VIA UMBERTO 123"), At(182, "CATANIA")});
}

TEST_F(AslFormatsTest, CataniaByItsRecordDescription) {
    const std::string source = Source("testata\r\n\r\n" + CataniaLine().WithLineEnd());
    EXPECT_EQ(Read(Catania, source),
              Lines{"Selezionato=True|Codice=CT123456789|Cognome=DI MARIA NICOLOSI PATERNO|"
                    "Nome=ANNA MARIA ANTONIETTA LIA|DataNascita=03/02/1961|Sesso=F|CodiceFiscale=DMRNMR61B43C351Z|"
                    "Comune=CATANIA|Indirizzo=VIA ETNEA, ANGOLO VIA UMBERTO 123|DataScelta=04/03/2001|IDComune=2|"
                    "IDPaziente=0|Scadenza=05/04/2031|Sospensione=06/05/1930"});
    EXPECT_TRUE(component.LastFindings().Empty());
}

TEST_F(AslFormatsTest, CataniaDatesThatAreNone) {
    const std::string source = Source(
        "1\n2\n" +
        CataniaLine().At(62, "00/00/0000").At(104, "          ").At(115, "31/02/2020").At(126, "1.1.29    ").Line());
    const ElementListPtr list = component.ReadSourceForAsl(source, Catania, "");
    ASSERT_EQ(list->RecordCount(), 1);
    EXPECT_TRUE(list->IsNull(OrdinalOf(ElementColumn::DataNascita)));
    EXPECT_TRUE(list->IsNull(OrdinalOf(ElementColumn::DataScelta)));
    EXPECT_TRUE(list->IsNull(OrdinalOf(ElementColumn::Scadenza)));
    EXPECT_EQ(list->TextOf(OrdinalOf(ElementColumn::Sospensione)), "01/01/2029");
    EXPECT_EQ(component.LastFindings().Report(), Lines{"Riga 3, Scadenza: \"31/02/2020\" non è una data."});
}

TEST_F(AslFormatsTest, SavonaByItsRecordDescription) {
    const Positions line = Positions(
        330, {At(1, "CNTNNA70A41B639Q"), At(17, "COGNOME DI TRENTA CARATTERI XX"),
              At(47, "NOME DI TRENTA CARATTERI ABCDE"), At(77, "01/01/1970"), At(87, "F"),
              At(88, "................................"), At(120, "ROMA"), At(150, "17100"), At(157, "VIA PALEOCAPA"),
              At(187, "12"), At(193, "A"), At(305, "02/02/1972"), At(315, "03-03-2033")});
    const Lines expected = {
        "Selezionato=False|Cognome=COGNOME DI TRENTA CARATTERI XX|Nome=NOME DI TRENTA CARATTERI ABCDE|"
        "DataNascita=01/01/1970|Sesso=F|CodiceFiscale=CNTNNA70A41B639Q|Comune=ROMA|Indirizzo=VIA PALEOCAPA 12/A|"
        "CAP=17100|DataScelta=02/02/1972|IDComune=4|IDPaziente=7|Scadenza=03/03/2033"};
    EXPECT_EQ(Read(Savona, Source(line.Line())), expected);
    const auto address = [&](const char* suffix) {
        const auto list = component.ReadSourceForAsl(Source(Positions(line).At(193, suffix).WithLineEnd()), Savona, "");
        return std::string(list->TextOf(OrdinalOf(ElementColumn::Indirizzo)));
    };
    EXPECT_EQ(address("0"), "VIA PALEOCAPA 12");
    EXPECT_EQ(address(" "), "VIA PALEOCAPA 12/");
}

TEST_F(AslFormatsTest, ToscanaByItsRecordDescription) {
    const Positions line = Positions(
        260, {At(1, "abc"), At(4, "FI123456789"), At(15, "ALIGHIERI DEGLI ALTR"), At(35, "DANTE DURANTE LAPO G"),
              At(55, "............"), At(67, "19610203"), At(75, "M"), At(76, "LGHDNT61B03D612X"),
              At(92, "VIA SANTA MARGHERITA, ANGOLO CORSO"), At(126, "082053"), At(248, "20010304")});
    const std::string start =
        "Selezionato=True|Codice=FI123456789|Cognome=ALIGHIERI DEGLI ALTR|Nome=DANTE DURANTE LAPO G|"
        "DataNascita=03/02/1961|Sesso=M|CodiceFiscale=LGHDNT61B03D612X|";
    const std::string address = "Indirizzo=VIA SANTA MARGHERITA, ANGOLO CORSO|";
    const auto read = [&](const Positions& row) { return Read(Toscana, Source("a\r\nb\r\n" + row.Line())).front(); };
    EXPECT_EQ(read(line),
              start + "Comune=Palermo|" + address + "CAP=90100|DataScelta=04/03/2001|IDComune=3|IDPaziente=0");
    EXPECT_EQ(read(Positions(line).At(126, "999999").At(248, "2001030 ")), start + address + "IDComune=0|IDPaziente=0");
    EXPECT_EQ(component.LastFindings().Report(), Lines{"Riga 3, DataScelta: \"2001030\" non è una data."});
    EXPECT_EQ(read(Positions(line).At(126, "0 OR 1")),
              start + address + "DataScelta=04/03/2001|IDComune=0|IDPaziente=0");
    EXPECT_EQ(component.LastFindings().Report(),
              Lines{"Riga 3, Comune: \"0 OR 1\" non è il codice ISTAT di un comune."});
}

/// Palermo and Caltanissetta, but for the width of the comune's name.
Positions SicilianLine() {
    return Positions(150, {At(1, "PA123456789"), At(13, "COGNOME E NOME DI TRENTA LETTE"), At(44, "03-02-1961"),
                           At(55, "F"), At(57, "CGNNMO61B43G273A"), At(74, "PALERMO"),
                           At(105, "VIA MAQUEDA NUMERO VENTISETTE "), At(139, "04/03/2001")});
}

TEST_F(AslFormatsTest, PalermoCaltanissettaEnnaAndMarcheByTheirTables) {
    const std::string start =
        "Selezionato=True|Codice=PA123456789|Cognome=COGNOME E NOME DI TRENTA LETTE|"
        "DataNascita=03/02/1961|Sesso=F|CodiceFiscale=CGNNMO61B43G273A|";
    const std::string address = "|Indirizzo=VIA MAQUEDA NUMERO VENTISETTE|";
    const std::string end = "DataScelta=04/03/2001|IDComune=3|IDPaziente=0";
    const std::string source = "1\r\n2\r\n" + SicilianLine().WithLineEnd();
    EXPECT_EQ(Read(Palermo, Source(source)), Lines{start + "Comune=PALERMO" + address + "CAP=90100|" + end});
    EXPECT_EQ(Read(Caltanissetta, Source(source)), Lines{start + "Comune=PALERMO" + address + end});

    const Positions wide = SicilianLine().At(74, "PALERMOOOOOOOOOOOOOOOOOOOOOXYZ").At(44, "00-00-0000");
    const auto comune = [&](Entry entry) {
        const auto list = component.ReadSourceForAsl(Source("1\n2\n" + wide.Line()), entry, "");
        EXPECT_TRUE(list->IsNull(OrdinalOf(ElementColumn::DataNascita)));
        return std::string(list->TextOf(OrdinalOf(ElementColumn::Comune)));
    };
    EXPECT_EQ(comune(Palermo), "PALERMOOOOOOOOOOOOOOOOOOOOOXYZ");
    EXPECT_EQ(comune(Caltanissetta), "PALERMOOOOOOOOOOOOOO");

    const Positions enna = Positions(125, {At(1, "EN123456789"), At(13, "COGNOME E NOME DI TRENTA LETTE"),
                                           At(44, "03/02/1961"), At(55, "PIAZZA VITTORIO EMANUELE N. 12"),
                                           At(89, "082053"), At(95, "CGNNMO61B43G273A"), At(112, "04/03/2001")});
    EXPECT_EQ(
        Read(Enna, Source(enna.Line())),
        Lines{"Selezionato=True|Codice=EN123456789|Cognome=COGNOME E NOME DI TRENTA LETTE|"
              "DataNascita=03/02/1961|CodiceFiscale=CGNNMO61B43G273A|Comune=Palermo|"
              "Indirizzo=PIAZZA VITTORIO EMANUELE N. 12|CAP=90100|DataScelta=04/03/2001|IDComune=3|IDPaziente=0"});

    const Positions marche = Positions(
        180, {At(1, "COGNOME E NOME DI TRENTACINQUE LETT"), At(36, "CORSO GARIBALDI NUMERO 12"), At(61, "CATANIA"),
              At(86, "60100"), At(111, "03021961"), At(146, "M"), At(150, "dppdpp70a01h501x"), At(166, "MC345678")});
    EXPECT_EQ(Read(Marche, Source(marche.Line())),
              Lines{"Selezionato=False|Codice=MC345678|Cognome=COGNOME E NOME DI TRENTACINQUE LETT|"
                    "DataNascita=03/02/1961|Sesso=M|CodiceFiscale=dppdpp70a01h501x|Comune=CATANIA|"
                    "Indirizzo=CORSO GARIBALDI NUMERO 12|CAP=60100|IDComune=2|IDPaziente=3"});
}

TEST_F(AslFormatsTest, SassariDividesTheNameAndLooksUpNoComune) {
    const Positions line =
        Positions(135, {At(1, "...................."), At(21, "SS34567"), At(29, "SNNMRA61B03I452K"),
                        At(47, "SANNA/MARIA GIOVANNA"), At(83, "03/02/1961"), At(94, "ROMA"), At(125, "04/03/01")});
    const std::string rest =
        "DataNascita=03/02/1961|CodiceFiscale=SNNMRA61B03I452K|Comune=ROMA|"
        "DataScelta=04/03/2001|IDPaziente=0";
    EXPECT_EQ(Read(Sassari,
                   Source(line.WithLineEnd() + "   \r\n\r\n" + Positions(line).At(47, "PIRAS GAVINO ANNA   ").Line())),
              (Lines{"Selezionato=True|Codice=SS34567|Cognome=SANNA|Nome=MARIA GIOVANNA|" + rest,
                     "Selezionato=True|Codice=SS34567|Cognome=PIRAS GAVINO ANNA|" + rest}));
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
    EXPECT_EQ(Read(Lazio, source), expected);
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
    EXPECT_EQ(Read(Sardegna, source),
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
    EXPECT_EQ(Read(Ragusa, path),
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
    EXPECT_EQ(Read(Napoli, path),
              (Lines{"Selezionato=False|Codice=T3|Cognome=ESPOSITO CIRO|CodiceFiscale=CNTNNA70A41B639Q|Comune=ROMA|"
                     "Indirizzo=VIA TOLEDO - SCALA B|CAP=|IDComune=4|IDPaziente=3",
                     "Selezionato=True|Codice=|Cognome=RUSSO LIA|CodiceFiscale=RSSLIA80A41F839X|Comune=CANTÙ|"
                     "Indirizzo=|CAP=22063|IDComune=1|IDPaziente=0"}));
}

/// Sources may be UTF-8 with its mark; widths count characters.
TEST_F(AslFormatsTest, EncodingsAndLengthsOfTextSources) {
    std::string accented = CataniaLine().Line();
    accented.replace(35, 25, "NICOLÒ A B               ");  // 25 characters in 26 bytes
    const std::string mark = "\xEF\xBB\xBF";
    for (const std::string& source :
         {Source("1\n2\n" + accented), Bytes(mark + "1\r\n2\r\n" + accented + "\r\n", "b")}) {
        EXPECT_NE(Read(Catania, source).at(0).find("Nome=NICOLÒ A B|DataNascita=03/02/1961|"), std::string::npos);
    }
    EXPECT_EQ(Read(Catania, Source("")), Lines{});
    EXPECT_EQ(Read(Lazio, Source("")), Lines{});
    EXPECT_EQ(Read(Palermo, Source("1\n2\nPA1")).front(),
              "Selezionato=True|Codice=PA1|Cognome=|Sesso=|CodiceFiscale=|Comune=|Indirizzo=|IDComune=0|IDPaziente=0");
}

TEST_F(AslFormatsTest, OddFilesDoNoHarm) {
    const std::string huge(50 << 20, 'x');
    EXPECT_EQ(Read(Lazio, Bytes("t\n1;" + huge + ";;;;;;;;;;;a b")).size(), 1U);
    EXPECT_EQ(Read(Catania, Bytes("1\n2\n" + huge)).size(), 1U);
    const std::string zero = "t\n1;T7;;A" + std::string(1, '\0') + "B;;;;;;;;;a b";
    EXPECT_EQ(component.GetElementList(Bytes(zero))->TextOf(OrdinalOf(ElementColumn::Cognome)),
              std::string("A") + '\0' + "B");
    EXPECT_EQ(CaughtText([&] { Read(Lazio, host.folder / "manca.txt"); }),
              "Impossibile aprire il file " + host.folder / "manca.txt" + ": percorso inesistente.");
    EXPECT_EQ(CaughtText([&] { Read(Ragusa, Source("non è una cartella di lavoro")); }),
              "Il file " + host.folder / "elenco.txt" +
                  " non è una cartella di lavoro leggibile: il suo formato non è né xlsx né xls.");
}

TEST_F(AslFormatsTest, ProgressByTheEstimateOrTheLastLine) {
    std::string lines;
    for (int line = 0; line < 25; ++line) lines += "x\r\n";
    Read(Catania, Source(lines + std::string(149 * 40 - 75, ' ')));  // 40 records long by its size
    EXPECT_EQ(progress, (std::vector<std::int32_t>{25, 50}));
    progress.clear();
    Read(Lazio, Source(lines));  // the last line has the index 25
    EXPECT_EQ(progress, (std::vector<std::int32_t>{40, 80}));
    progress.clear();
    Read(Palermo, Source(lines));  // 75 bytes by records of one character
    EXPECT_EQ(progress, (std::vector<std::int32_t>{13, 26}));
    progress.clear();
    Read(Catania, Source("123456789"));  // no estimate
    EXPECT_EQ(progress, (std::vector<std::int32_t>{}));
    Read(Catania, Source(std::string(2000, '\n')));  // more lines than estimated
    EXPECT_EQ(progress.size(), 200U);
    EXPECT_EQ(progress.back(), 100);
}

}  // namespace
}  // namespace vlm::test
