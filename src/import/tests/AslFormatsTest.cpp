#include <algorithm>
#include <map>
#include <sstream>

#include "ImportFixture.h"
#include "support/Positions.h"
#if __has_include("XlsxFile.h")  // not where the spreadsheet program itself reads workbooks
#include "XlsxFile.h"
#endif

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

// Records by their pieces: the place where one begins, its text, and behind ">" what the element shows of it: the
// column whose value it is, or that column's value too.
const std::string kCatania =
    "1 SCARTO..|10 DI MARIA NICOLOSI PATERNO>Cognome|35 x|36 ANNA MARIA ANTONIETTA LIA>Nome|61 x|"
    "62 03/02/1961>DataNascita|73 F>Sesso|75 DMRNMR61B43C351Z>CodiceFiscale|92 CT123456789>Codice|"
    "104 04/03/2001>DataScelta|115 05/04/2031>Scadenza|126 06/05/30>Sospensione=06/05/1930|136 scarto......|"
    "148 VIA ETNEA, ANGOLO VIA UMBERTO 123>Indirizzo|182 CATANIA>Comune";
const std::string kSavona =
    "1 CNTNNA70A41B639Q>CodiceFiscale|17 COGNOME DI TRENTA CARATTERI XX>Cognome|47 NOME DI TRENTA CARATTERI ABCDE>Nome|"
    "77 01/01/1970>DataNascita|87 F>Sesso|88 ................................|120 ROMA>Comune|150 17100>CAP|"
    "157 VIA PALEOCAPA|187 12|193 A>Indirizzo=VIA PALEOCAPA 12/A|305 02/02/1972>DataScelta|"
    "315 03-03-2033>Scadenza=03/03/2033";
const std::string kToscana =
    "1 abc|4 FI123456789>Codice|15 ALIGHIERI DEGLI ALTR>Cognome|35 DANTE DURANTE LAPO G>Nome|55 ............|"
    "67 19610203>DataNascita=03/02/1961|75 M>Sesso|76 LGHDNT61B03D612X>CodiceFiscale|"
    "92 VIA SANTA MARGHERITA, ANGOLO CORSO>Indirizzo|126 082053>Comune=Palermo|248 20010304>DataScelta=04/03/2001";
/// Palermo and Caltanissetta, but for the width of the comune's name.
const std::string kSicilian =
    "1 PA123456789>Codice|13 COGNOME E NOME DI TRENTA LETTE>Cognome|44 03-02-1961>DataNascita=03/02/1961|55 F>Sesso|"
    "57 CGNNMO61B43G273A>CodiceFiscale|74 PALERMOOOOOOOOOOOOOOOOOOOOOXYZ>Comune|"
    "105 VIA MAQUEDA NUMERO VENTISETTE >Indirizzo=VIA MAQUEDA NUMERO VENTISETTE|139 04/03/2001>DataScelta";
const std::string kEnna =
    "1 EN123456789>Codice|13 COGNOME E NOME DI TRENTA LETTE>Cognome|44 03/02/1961>DataNascita|"
    "55 PIAZZA VITTORIO EMANUELE N. 12>Indirizzo|89 082053>Comune=Palermo|95 CGNNMO61B43G273A>CodiceFiscale|"
    "112 04/03/2001>DataScelta";
const std::string kMarche =
    "1 COGNOME E NOME DI TRENTACINQUE LETT>Cognome|36 CORSO GARIBALDI NUMERO 12>Indirizzo|61 CATANIA>Comune|"
    "86 60100>CAP|111 03021961>DataNascita=03/02/1961|146 M>Sesso|150 dppdpp70a01h501x>CodiceFiscale|"
    "166 MC345678>Codice";
const std::string kSassari =
    "1 ....................|21 SS34567>Codice|29 SNNMRA61B03I452K>CodiceFiscale|47 SANNA/MARIA GIOVANNA>Cognome=SANNA|"
    "83 03/02/1961>DataNascita|94 ROMA>Comune|125 04/03/01>DataScelta=04/03/2001";

Lines PartsOf(const std::string& text) {
    Lines parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, '|');) parts.push_back(part);
    return parts;
}

/// The line of a record, of whose pieces the later one at a place counts. What the element shows of it goes to `cells`.
std::string LineOf(const std::string& record, Lines& cells) {
    std::map<std::size_t, std::string> pieces;
    for (const std::string& part : PartsOf(record)) pieces[std::stoul(part)] = part.substr(part.find(' ') + 1);
    Positions line(330);
    for (const auto& [place, piece] : pieces) {
        const std::string text = piece.substr(0, piece.find('>'));
        const std::string shown = piece.substr(std::min(text.size() + 1, piece.size()));
        line.At(place, text);
        if (!shown.empty()) cells.push_back(shown.find('=') == std::string::npos ? shown + "=" + text : shown);
    }
    return line.Line();
}

TEST_F(AslFormatsTest, FixedWidthByTheirRecordDescriptions) {
    const std::string added = "Selezionato=True|IDPaziente=0";
    const struct {
        const char* authority;
        std::string headings, record, others, finding = {};
    } cases[] = {
        {"Catania", "testata\r\n\r\n", kCatania, added + "|IDComune=2"},
        {"Catania", "1\n2\n", kCatania + "|62 00/00/0000|104 |115 31/02/2020|126 1.1.29>Sospensione=01/01/2029",
         added + "|IDComune=2", "Riga 3, Scadenza: \"31/02/2020\" non è una data."},
        {"Savona", "", kSavona, "Selezionato=False|IDComune=4|IDPaziente=7"},
        {"Savona", "", kSavona + "|193 0>Indirizzo=VIA PALEOCAPA 12", "Selezionato=False|IDComune=4|IDPaziente=7"},
        {"Savona", "", kSavona + "|193  >Indirizzo=VIA PALEOCAPA 12/", "Selezionato=False|IDComune=4|IDPaziente=7"},
        {"TOSCANA", "a\r\nb\r\n", kToscana, added + "|IDComune=3|CAP=90100"},
        {"TOSCANA", "a\r\nb\r\n", kToscana + "|126 999999|248 2001030 ", added + "|IDComune=0",
         "Riga 3, DataScelta: \"2001030\" non è una data."},
        {"TOSCANA", "a\r\nb\r\n", kToscana + "|126 0 OR 1", added + "|IDComune=0",
         "Riga 3, Comune: \"0 OR 1\" non è il codice ISTAT di un comune."},
        {"Palermo", "1\r\n2\r\n", kSicilian + "|74 PALERMO>Comune", added + "|IDComune=3|CAP=90100"},
        {"Palermo", "1\r\n2\r\n", kSicilian + "|44 00-00-0000", added + "|IDComune=0"},
        {"Caltanissetta", "1\r\n2\r\n", kSicilian + "|74 PALERMO              XYZ>Comune=PALERMO",
         added + "|IDComune=3"},
        {"Enna", "", kEnna, added + "|IDComune=3|CAP=90100"},
        {"MARCHE", "", kMarche, "Selezionato=False|IDComune=2|IDPaziente=3"},
        {"Sassari", "   \r\n\r\n", kSassari, added + "|Nome=MARIA GIOVANNA"},
        {"Sassari", "", kSassari + "|47 PIRAS GAVINO ANNA>Cognome", added},
    };
    for (const auto& each : cases) {
        Lines expected = PartsOf(each.others);
        const Lines elements = Read(each.authority, Source(each.headings + LineOf(each.record, expected) + "\r\n"));
        ASSERT_EQ(elements.size(), 1U) << each.authority;
        Lines given = PartsOf(elements.front());
        std::sort(given.begin(), given.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(given, expected) << each.authority;
        EXPECT_EQ(component.LastFindings().Report(), each.finding.empty() ? Lines{} : Lines{each.finding});
    }
}

TEST_F(AslFormatsTest, FieldsOfLazioAndSardegna) {
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
    // Accents become apostrophes.
    const std::string sardinian = Source(
        "Cognome,Nome\r\n"
        " Melis , Efisio ,03/02/1961,M, CNTNNA70A41B639Q ,D´ELVA`, ignorato ,09100, VIA ROMA ,9,10,11,12, 070123 ,"
        "04/03/2001,05/04/2031,resto\r\n"
        "solo\r\n"
        "Uno,Due\r\n");
    EXPECT_EQ(Read("SARDEGNA", sardinian),
              (Lines{"Selezionato=False|Cognome=Melis|Nome=Efisio|DataNascita=03/02/1961|"
                     "CodiceFiscale=CNTNNA70A41B639Q|Comune=D'ELVA'|Indirizzo=VIA ROMA|CAP=09100|"
                     "DataScelta=04/03/2001|IDComune=0|IDPaziente=7|Scadenza=05/04/2031|Telefono=070123",
                     "Selezionato=True|Cognome=Uno|Nome=Due|CodiceFiscale=|Comune=|Indirizzo=|CAP=|IDComune=0|"
                     "IDPaziente=0|Telefono="}));
}

#if __has_include("XlsxFile.h")
TEST_F(AslFormatsTest, WorkbooksOfRagusaAndNapoli) {
    const SheetValue none;
    const std::string path = host.folder / "elenco.xlsx";
    // To the first row without a number.
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
    // Shared cells are divided.
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
#endif

/// Sources may be UTF-8 with its mark; widths count characters.
TEST_F(AslFormatsTest, EncodingsLengthsAndOddFiles) {
    Lines ignored;
    std::string accented = LineOf(kCatania, ignored);
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
    EXPECT_EQ(Progress(), "25 50 ");
    Read("LAZIO", Source(lines));  // the last line has the index 25
    EXPECT_EQ(Progress(), "40 80 ");
    Read("Palermo", Source(lines));  // 75 bytes by records of one character
    EXPECT_EQ(Progress(), "13 26 ");
    Read("Palermo", Source("xx\n" + std::string(22, '\n')));  // 12.5 records: the even number of a half
    EXPECT_EQ(Progress(), "83 100 ");
    Read("Catania", Source("123456789"));  // no estimate
    EXPECT_EQ(Progress(), "");
    Read("Catania", Source(std::string(2000, '\n')));  // more lines than estimated
    EXPECT_EQ(progress.size(), 200U);
    EXPECT_EQ(progress.back(), 100);
}

}  // namespace
}  // namespace vlm::test
