#include "ImportFixture.h"
#include "SourceText.h"
#include "readers/ImportTemplate.h"
#include "values/DateText.h"
#if __has_include("XlsxFile.h")  // not where the spreadsheet program itself reads workbooks
#include "XlsxFile.h"
#endif

namespace vlm::test {
namespace {

using files::SheetValue;

constexpr const char* kReadingMessage =
    "Si è verificato un errore durante la lettura del file.\r\nIl messaggio tecnico dell'errore è: ";

class TemplatesTest : public ImportTest {
protected:
    std::string Template(const std::string& text) const { return Source(text, "modello.ACF"); }
    Lines Read(const std::string& format, const std::string& source) {
        return ElementsOf(component.ReadWithTemplate(source, Template(format)));
    }
    std::string MessageOf(const std::string& format, const std::string& source) {
        host.services.toolkit.messages.clear();
        EXPECT_EQ(Read(format, source), Lines{"<nothing>"});
        const auto& shown = host.services.toolkit.messages;
        return shown.empty() ? std::string() : shown.back();
    }
};

TEST_F(TemplatesTest, Grammar) {
    const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
        {"[FILETYPE]=TD\r\n[Nome]=2", "TD", "NOME", "2"},
        {"[FILETYPE] = TF ", "TF", "filetype", "TF"},
        {"= [FILETYPE] = E =", "E", "FILETYPE", ""},
        {"[filetype]=TD", "[filetype]TD", "FILETYPE", "TD"},
        {"remark [FILETYPE] = TD\nx[FILETYPE]TF", "xTF", "", ""},
        {"[FILETYPE]=td", "td", "FILETYPE", "td"},
        {"[Cognome]=", "", "Cognome", ""},
        {"Cognome=2\n [Cognome]=3\n[Cognome 4", "", "Cognome", ""},
        {"[Data[Nascita] = 3 = 4 ", "", "DataNascita", "3 = 4"},
        {"[DELIMITER]=\t\r\n", "", "delimiter", "\t"},
        {"[DELIMITER]=TAB", "", "delimiter", "TAB"},
        {"[Nome]= \r\n[Nome]=5", "", "Nome", "5"}};
    for (const auto& [text, type, key, value] : cases) {
        const ImportTemplate read = ImportTemplate::Load(Template(text));
        EXPECT_EQ(read.FileType(), type) << text;
        EXPECT_EQ(read.GetTemplateValue(key), value) << text;
    }
}

/// As a template lays them out, then as any source writes them.
TEST_F(TemplatesTest, Dates) {
    std::istringstream cases(
        "GGMMAA,010203,01/02/2003;GGMMAAAA,01022003,01/02/2003;MMGGAA,020103,01/02/2003;MMGGAAAA,02012003,01/02/2003;"
        "AAMMGG,030201,01/02/2003;AAAAMMGG,20030201,01/02/2003;aaaammgg,20030201,;GGMMAAAA,01/02/2003,;GGMMAA,01,;"
        ",01/02/2003,01/02/2003;, 1-2-03 ,01/02/2003;,1.2.29,01/02/2029;,1/2/30,01/02/1930;,31/12/99,31/12/1999;"
        ",1/1/00,01/01/2000;,2003-02-01,01/02/2003;,29/02/2000,29/02/2000;,01/02/2003 10:30,01/02/2003;"
        ",01/02/2003 10.30.15,01/02/2003;,29/02/2001,;,02/25/2003,;,01/02,;,01/02/003,;,20030201,;,01/02/2003x,;"
        ",01/02/2003 25:00,;,01/02/20031,;,a/b/c,;,,;,2003/2/111,;");
    for (std::string layout, given, expected;
         std::getline(cases, layout, ',') && std::getline(cases, given, ',') && std::getline(cases, expected, ';');) {
        const auto date = ParseSourceDate(ConvertTemplateDate(given, layout));
        EXPECT_EQ(date ? text::DdMmYyyySlashes(*date) : "", expected) << layout << given;
    }
}

constexpr const char* kDelimited =
    "[FILETYPE]=TD\r\n[DELIMITER]=;\r\n[Codice]=1\r\n[Cognome]=2\r\n[Nome]=3\r\n[Sesso]=4\r\n[DataNascita]=5\r\n"
    "[CodiceFiscale]=6\r\n[DataScelta]=7\r\n[Comune]=8\r\n[Indirizzo]=9\r\n[Scadenza]=10\r\n[Sospensione]=11\r\n"
    "[Telefono]=12\r\n[Esenzione]=13\r\n[EsenzioneDataInizio]=14\r\n[EsenzioneDataScadenza]=15\r\n"
    "[DATEFORMAT]=GGMMAAAA\r\n";

constexpr const char* kWholeLine =
    "a7; D'Alò ;\"Lia\";f;01021970;CNTNNA70A41B639Q;02031971;Cantù;Via \"Roma\";03041972;04051973;031/12;E3;05061974;"
    "06071975;resto";
constexpr const char* kWholeElement =
    "Selezionato=False|Codice=a7|Cognome=D'Alò|Nome=\"Lia\"|DataNascita=01/02/1970|Sesso=f|"
    "CodiceFiscale=CNTNNA70A41B639Q|Comune=Cantù|Indirizzo=Via \"Roma\"|CAP=22063|DataScelta=02/03/1971|IDComune=1|"
    "IDPaziente=7|Scadenza=03/04/1972|Sospensione=04/05/1973|Telefono=031/12|Esenzione=E03|"
    "EsenzioneDataInizio=05/06/1974|EsenzioneDataScadenza=06/07/1975";

TEST_F(TemplatesTest, DelimitedReadsEveryColumn) {
    const std::string source = Source(std::string(kWholeLine) + "\r\n;;;;;;;;;;;;\r\n\r\nT3;;;;31022000;X;;roma;");
    EXPECT_EQ(Read(kDelimited, source),
              (Lines{kWholeElement,
                     "Selezionato=False|Codice=T3|Cognome=|Nome=|Sesso=|CodiceFiscale=X|Comune=roma|Indirizzo=|CAP=|"
                     "IDComune=4|IDPaziente=3|Telefono=|Esenzione="}));
    EXPECT_EQ(component.LastFindings().Report(),
              (Lines{"Riga 2, CodiceFiscale: manca il codice fiscale: la riga non è stata letta.",
                     "Riga 4, DataNascita: \"31022000\" non è una data."}));
}

TEST_F(TemplatesTest, DelimitedOptions) {
    const char* const few =
        "[FILETYPE]=TD\n[DELIMITER]=||\n[CodiceFiscale]=2\n[Cognome]=0\n[Nome]=x\n[Esenzione]=1\n"
        "[Codice]=3\n";
    const auto read = [&](const std::string& more, const std::string& source) {
        return ElementsOf(component.ReadWithTemplate(Source(source), Template(few + more)),
                          {"CodiceFiscale", "IDPaziente", "Esenzione"});
    };
    const std::string source = "E1||CNTNNA70A41B639Q||T3\r\nE05||nuovo||A7\nE6||dppdpp70a01h501x\n e1 || ||T3";
    EXPECT_EQ(read("", source), (Lines{"CodiceFiscale=CNTNNA70A41B639Q|IDPaziente=3|Esenzione=E01",
                                       "CodiceFiscale=nuovo|IDPaziente=7|Esenzione=E05",
                                       "CodiceFiscale=dppdpp70a01h501x|IDPaziente=3|Esenzione=E6"}));
    EXPECT_EQ(read("[ONLYEXISTING]=S", source), (Lines{"CodiceFiscale=CNTNNA70A41B639Q|IDPaziente=7|Esenzione=E01",
                                                       "CodiceFiscale=dppdpp70a01h501x|IDPaziente=3|Esenzione=E6"}));
    EXPECT_EQ(read("[ONLYEXISTING]=s", source).size(), 3U);
    EXPECT_EQ(read("", "(NULLO)||CNTNNA70A41B639Q||(NULLO)"),
              Lines{"CodiceFiscale=CNTNNA70A41B639Q|IDPaziente=7|Esenzione=(NULLO)"});
}

TEST_F(TemplatesTest, DelimitedProgressCountsCharactersOfSourceLines) {
    const std::string format = "[FILETYPE]=TD\n[DELIMITER]=;\n[CodiceFiscale]=1\n";
    Read(format, Source("1234567890\r\n12345\r\n12345\r\n1\r\n"));  // 10, 15, 20 and 21 of 29 bytes
    EXPECT_EQ(Progress(), "34 68 ");
    Read(format, Source("1234567890\n1234567890\n"));  // one line of the file: 20 of 22
    EXPECT_EQ(Progress(), "90 ");
}

TEST_F(TemplatesTest, FixedWidthReadsEveryLine) {
    const std::string format =
        "[FILETYPE]=TF\r\n[Codice]=1,3\r\n[Cognome]=4,6\r\n[Nome]=10\r\n[Sesso]=50,1\r\n[DataNascita]=10,6\r\n"
        "[CodiceFiscale]=16,16\r\n[Comune]=32,6\r\n[Telefono]= 38 , 4 \r\n[Esenzione]=42,2\r\n[DATEFORMAT]=AAMMGG\r\n";
    const std::string rest = "|Indirizzo=|";
    EXPECT_EQ(Read(format, Source("T7 ALO'È 700201CNTNNA70A41B639QRoma  0123E3xxxxxx\n\nT3")),
              (Lines{"Selezionato=False|Codice=T7|Cognome=ALO'È|Nome=|DataNascita=01/02/1970|Sesso=|"
                     "CodiceFiscale=CNTNNA70A41B639Q|Comune=Roma|Indirizzo=|CAP=|IDComune=4|IDPaziente=7|"
                     "Telefono=0123|Esenzione=E3",
                     "Selezionato=True|Codice=|Cognome=|Nome=|Sesso=|CodiceFiscale=|Comune=|Indirizzo=|IDComune=0|"
                     "IDPaziente=0|Telefono=|Esenzione=",
                     "Selezionato=False|Codice=T3|Cognome=|Nome=|Sesso=|CodiceFiscale=|Comune=|Indirizzo=|IDComune=0|"
                     "IDPaziente=3|Telefono=|Esenzione="}));
}

#if __has_include("XlsxFile.h")
TEST_F(TemplatesTest, WorkbookReadsSheetsByColumnLetters) {
    const std::string path = host.folder / "lista.xlsx";
    std::vector<std::vector<SheetValue>> rows = {
        {"Codice", "Cognome", "Nato", "CF", "Citt\xC3\xA0", "Es"},
        {"T7", " Alò\xC2\xA0 ", Date(25600), "X", "CANTÙ", "E3"},
        {"T3", "\xC2\xA0 ", Date(25600)},
        {12345678901.0, "Verdi", "31/02/2000", SheetValue(), SheetValue(), 12.5}};
    rows.resize(12, {});
    rows.push_back({"x"});
    XlsxFile().Sheet("Uno", rows).Sheet("Due", {{"T3", "Neri"}}).Write(path);
    const std::string format =
        "[FILETYPE]=E\n[Codice]=A\n[Cognome]=b\n[DataNascita]=C\n[CodiceFiscale]=D\n[Comune]=E\n[Esenzione]=F\n"
        "[DATEFORMAT]=GGMMAA\n";
    const std::string none = "|Indirizzo=|IDComune=0|";
    const Lines first = {
        "Selezionato=True|Codice=Codice|Cognome=Cognome|Nome=|Sesso=|CodiceFiscale=CF|Comune=Città" + none +
            "IDPaziente=0|Telefono=|Esenzione=Es",
        "Selezionato=False|Codice=T7|Cognome=Alò|Nome=|DataNascita=01/02/1970|Sesso=|CodiceFiscale=X|Comune=CANTÙ|"
        "Indirizzo=|CAP=22063|IDComune=1|IDPaziente=7|Telefono=|Esenzione=E3",
        "Selezionato=True|Codice=12345678901|Cognome=Verdi|Nome=|Sesso=|CodiceFiscale=|Comune=" + none +
            "IDPaziente=0|Telefono=|Esenzione=12,5"};
    const Lines second = {"Selezionato=False|Codice=T3|Cognome=Neri|Nome=|Sesso=|CodiceFiscale=|Comune=" + none +
                          "IDPaziente=3|Telefono=|Esenzione="};
    Lines both = first;
    both.push_back(second.front());
    EXPECT_EQ(Read(format, path), both);
    EXPECT_EQ(component.LastFindings().Report(), (Lines{"Riga 1, DataNascita: \"Nato\" non è una data.",
                                                        "Riga 4, DataNascita: \"31/02/2000\" non è una data."}));
    EXPECT_EQ(Progress(), "76 ");  // row 10 of 13
    EXPECT_EQ(Read(format + "[SHEET]=2", path), second);
    EXPECT_EQ(Read(format + "[SHEET]=0", path), both);
    EXPECT_NE(MessageOf(format + "[SHEET]=3", path).find(kReadingMessage), std::string::npos);
}
#endif

TEST_F(TemplatesTest, FailuresAreToldAndGiveNothing) {
    const std::string source = Source("a;b;c\r\n");
    const std::string reading = kReadingMessage, missing = host.folder / "manca.txt";
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"[FILETYPE]=TD\n[CodiceFiscale]=1", source, "Nessun delimitatore di campo impostato!"},
        {"[FILETYPE]=TD\n[Nome]=2\n[NOME]=3", source,
         reading + "La chiave NOME del modello è indicata più di una volta."},
        {"[FILETYPE]=TD\n[FILETYPE]=TF", source,
         reading + "La chiave FILETYPE del modello è indicata più di una volta."},
        {"[FILETYPE]=TF\n[Nome]=0,5", source,
         reading + "La posizione '0,5' della chiave Nome del modello non è valida."},
        {"[FILETYPE]=E\n[Cognome]=A\n[Nome]=B2", source,
         reading + "La posizione 'B2' della chiave Nome del modello non è valida."},
        {"[FILETYPE]=E\n[Nome]=B", source, reading + "Nel modello manca la chiave Cognome."},
        {"[FILETYPE]=TF\n[Nome]=1,5", missing,
         reading + "Impossibile aprire il file " + missing + ": percorso inesistente."},
        {"[FILETYPE]=E\n[Cognome]=A", source,
         reading + "Il file " + source +
             " non è una cartella di lavoro leggibile: il suo formato non è né xlsx né xls."},
        {"[FILETYPE]=XX\n", source, ""},
        {"nulla", source, ""},
    };
    for (const auto& [format, from, message] : cases) EXPECT_EQ(MessageOf(format, from), message) << format;
}

}  // namespace
}  // namespace vlm::test
