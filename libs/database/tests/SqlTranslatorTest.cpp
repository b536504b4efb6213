#include <gtest/gtest.h>

#include "SqlDateLiteral.h"
#include "support/DatabaseFolder.h"
#include "values/Error.h"

namespace vlm::data::testing {
namespace {

using Case = std::pair<const char*, const char*>;

/// Documents with midnight stored in both forms, and texts that look like statements.
class SqlTranslator : public DatabaseTest {
protected:
    void SetUp() override {
        Run({"CREATE TABLE Doc (ID INT PRIMARY KEY, Giorno DATETIME, Codice VARCHAR(20), Stato INT)",
             "INSERT INTO Doc VALUES (1, '2011-03-30', 'B', 1), (2, '2011-03-31' || ' 00:00:00', 'a', 2), "
             "(3, '2011-03-31', 'C', 3), (4, '2011-03-31' || ' 12:00:00', '082053', NULL), "
             "(5, '2011-04-01' || ' 00:00:00', 'ISNULL(x,y)', 5), (6, '2011-04-01', 'Aldra..T + 1', 6), "
             "(7, NULL, NULL, 7)",
             "CREATE VIEW VwDoc AS SELECT ID, Giorno AS Data, Codice || '' AS Calcolato, IFNULL(Giorno, '') AS Nudo "
             "FROM Doc",
             "CREATE TABLE Parola (Nome VARCHAR(20), Altro VARCHAR(20), Numero INT)",
             "INSERT INTO Parola VALUES ('Cantù', 'CANTÙ', 3), ('Èboli', 'eboli', 4), (NULL, 'x', 5)",
             "CREATE TABLE Aldra..Doc (ID INT, Codice VARCHAR(20))",
             "INSERT INTO Aldra..Doc VALUES (3, 'mille'), (1, 'cento')"});
    }

    void Check(std::initializer_list<Case> cases) {
        for (const auto& [sql, rows] : cases) EXPECT_EQ(Rows(sql), rows) << sql;
    }
};

TEST_F(SqlTranslator, DatesCompareInBothStoredForms) {
    Check({
        {"SELECT ID FROM Doc WHERE Giorno <= '3/31/2011' ORDER BY ID", "1;2;3"},
        {"SELECT ID FROM Doc WHERE Giorno <> '2011-03-31' ORDER BY ID", "1;4;5;6"},
        {"SELECT ID FROM Doc WHERE Giorno > '2011-03-31 00:00' ORDER BY ID", "4;5;6"},
        {"SELECT ID FROM Doc WHERE '3/31/2011' >= Giorno ORDER BY ID", "1;2;3"},
        {"SELECT ID FROM Doc WHERE (Giorno) = ('3/31/2011 12:00 PM')", "4"},
        {"SELECT ID FROM Doc WHERE Giorno <= '2011-03-31T12:00' AND Giorno > '2011-03-31'", "4"},
        {"SELECT ID FROM Doc WHERE Giorno < '2011-03-31 12:00:00.500' AND ID > 3", "4"},
        {"SELECT ID FROM Doc WHERE Giorno BETWEEN '3/31/2011' AND '4/1/2011' ORDER BY ID", "2;3;4;5;6"},
        {"SELECT ID FROM Doc WHERE Giorno NOT BETWEEN '3/31/2011' AND '4/1/2011'", "1"},
        {"SELECT ID FROM Doc WHERE Giorno IN ('3/30/2011', '20110401') ORDER BY ID", "1;5;6"},
        {"SELECT ID FROM Doc WHERE ISNULL(Giorno, '1/1/1900') = '19000101'", "7"},
        {"SELECT ID FROM Doc WHERE Codice = '3/31/2011'", ""},
        {"SELECT A.ID FROM Doc A, Doc B WHERE B.ID = 5 AND A.Giorno = B.Giorno ORDER BY A.ID", "5;6"},
        {"SELECT ID FROM VwDoc WHERE Data = '3/31/2011' ORDER BY ID", "2;3"},
        {"SELECT X.ID FROM (SELECT ID, Giorno AS G FROM Doc) X WHERE X.G = '3/31/2011' ORDER BY X.ID", "2;3"},
        {"SELECT ID FROM VwDoc WHERE Nudo <= '3/31/2011' AND Nudo <> '' ORDER BY ID", "1;2;3"},
        {"SELECT ID FROM VwDoc WHERE Calcolato = '31-31-2011'", ""},
        {"SELECT MAX(Giorno), YEAR('3/31/2011') FROM Doc", "01/04/2011|2011"},
        {"SELECT CAST('3/31/2011' AS DATETIME), YEAR(Giorno) FROM Doc WHERE ID = 7", "31/03/2011|NULL"},
    });
    EXPECT_PRED2(Holds, Rows("SELECT ID FROM Doc WHERE Giorno < '31/3/2011'"), "31/3/2011'");
    EXPECT_THROW(connection->Open("SELECT Giorno + 1 FROM Doc"), Error);
}

TEST_F(SqlTranslator, OrdersByMomentTextAndNumber) {
    Check({
        {"SELECT ID FROM Doc WHERE ID < 7 ORDER BY Giorno, ID DESC", "1;3;2;4;6;5"},
        {"SELECT ID FROM Doc ORDER BY Giorno DESC, ID", "5;6;4;2;3;1;7"},
        {"SELECT ID, Codice + '' AS Testo FROM Doc WHERE ID < 4 ORDER BY Testo DESC", "3|C;1|B;2|a"},
        {"SELECT Codice FROM Doc WHERE ID < 4 ORDER BY 1", "a;B;C"},
        {"SELECT ID FROM Doc WHERE ID < 4 ORDER BY ISNULL(Codice,'') + ' ' + Codice", "2;1;3"},
        {"SELECT ID FROM VwDoc WHERE ID < 4 ORDER BY Calcolato", "2;1;3"},
        {"SELECT ID FROM VwDoc WHERE ID IN (5, 6) ORDER BY Data, ID", "5;6"},
        {"SELECT Codice FROM Doc WHERE ID = 1 UNION SELECT Codice FROM Doc WHERE ID < 4 ORDER BY Codice", "a;B;C"},
        // A name alone is the column that the query gives, also where two tables have one of that name.
        {"SELECT D.ID, M.Codice FROM Doc D INNER JOIN Aldra..Doc AS M ON D.ID = M.ID ORDER BY ID DESC",
         "3|mille;1|cento"},
        {"SELECT TOP 2 ID FROM Doc ORDER BY ID DESC", "7;6"},
    });
}

TEST_F(SqlTranslator, LiteralsAndNamesKeepWhatIsInThem) {
    Check({
        {"SELECT ID FROM Doc WHERE Codice = 'ISNULL(x,y)'", "5"},
        {"SELECT ID FROM Doc WHERE Codice = N'aldra..t + 1'", "6"},
        {"SELECT 'Aldra..T' + ' + ' + 'l''altro' AS [a + b..c]", "Aldra..T + l'altro"},
        {"SELECT ID /* ISNULL(' */ FROM Doc -- WHERE '\n WHERE ID = 1", "1"},
        {"SELECT \"ID\" FROM [Doc] WHERE [Doc].[ID] = 1", "1"},
        {"SELECT '-- ' + '/*' + '?1'", "-- /*?1"},
        {"SELECT ID FROM Doc WHERE Codice LIKE 'isnull([x],y)'", "5"},
    });
    EXPECT_EQ(connection->Open("SELECT ID AS [a + b..c] FROM Doc")->FieldName(0), "a + b..c");
}

TEST_F(SqlTranslator, PlusJoinsTextsAndAddsNumbers) {
    Check({
        {"SELECT 1 + 2 + 3 * 4", "15"},
        {"SELECT UPPER(Nome) + LOWER(Altro) FROM Parola WHERE Numero < 5 ORDER BY Numero", "CANTÙcantù;ÈBOLIeboli"},
        {"SELECT (Nome + '-') + (1 + 2) FROM Parola WHERE Numero = 3", "Cantù-3"},
        {"SELECT CASE WHEN ID = 1 THEN 'uno' ELSE Codice END + '!' FROM Doc WHERE ID < 3 ORDER BY ID", "uno!;a!"},
        {"SELECT CAST(ID AS VARCHAR(10)) + CAST(Stato AS VARCHAR) FROM Doc WHERE ID = 3", "33"},
        {"SELECT 7 - 2 - -3, - -4, 2 - (3 - 5)", "8|4|4"},
    });
}

TEST_F(SqlTranslator, TextsCompareWithoutCaseAndWithNumbersByValue) {
    Check({
        {"SELECT Numero FROM Parola WHERE Nome = Altro", "3"},
        {"SELECT Numero FROM Parola WHERE Nome NOT IN ('èBOLI')", "3"},
        {"SELECT Numero FROM Parola WHERE Nome > 'D'", "4"},
        {"SELECT Numero FROM Parola WHERE Nome BETWEEN 'CANTÙ' AND 'cantù'", "3"},
        {"SELECT Numero FROM Parola WHERE Nome IN (SELECT UPPER(Nome) FROM Parola WHERE Numero = 4)", "4"},
        {"SELECT ID FROM Doc WHERE Codice = 82053", "4"},
        {"SELECT ID FROM Doc WHERE 82053 = Codice", "4"},
        {"SELECT ID FROM Doc WHERE Codice IN (82053, 5)", "4"},
        {"SELECT ID FROM Doc WHERE Codice + '' = 82053", "4"},
        {"SELECT ID FROM Doc WHERE ISNULL(Stato, 0) = '5'", "5"},
        {"SELECT ID FROM Doc WHERE ID = '5' AND NOT Stato <> '5'", "5"},
        {"SELECT ID FROM Doc WHERE ID = 'x5'", ""},
        {"SELECT CASE Nome WHEN 'CANTÙ' THEN 1 ELSE 0 END FROM Parola WHERE Numero = 3", "1"},
        {"SELECT ID FROM VwDoc WHERE Calcolato = 82053", "4"},
    });
}

TEST_F(SqlTranslator, LikeReadsPatternsAsTheServerDoes) {
    const std::tuple<const char*, const char*, int> cases[] = {
        {"CANTÙ", "cant%", 1}, {"CANTÙ", "cantù", 1}, {"Cantù", "cant_", 1},  {"Cantù", "cant__", 0},
        {"Cantù", "%ù", 1},    {"abcabd", "%abd", 1}, {"abcabd", "a%b%d", 1}, {"abc", "", 0},
        {"", "%", 1},          {"a5", "a[0-9]", 1},   {"aX", "a[^0-9]", 1},   {"a5", "a[^0-9]", 0},
        {"Èx", "[à-ü]x", 1},   {"100%", "100[%]", 1}, {"1000", "100[%]", 0},  {"a[b", "a[b", 1},
        {"a-b", "a[-]b", 1},   {"a-b", "a[x-]b", 1},  {"aaab", "%a_b", 1},
    };
    for (const auto& [value, pattern, matches] : cases) {
        const std::string sql = std::string("SELECT COUNT(*) WHERE '") + value + "' LIKE '" + pattern + "'";
        EXPECT_EQ(Rows(sql), std::to_string(matches)) << sql;
    }
    Check({
        {"SELECT COUNT(*) WHERE '10%' LIKE '10!%' ESCAPE '!' AND '10x' NOT LIKE '10!%' ESCAPE '!'", "1"},
        {"SELECT Numero FROM Parola WHERE Altro LIKE Nome + '%'", "3"},
        {"SELECT COUNT(*) FROM Parola WHERE Nome LIKE '%'", "2"},
    });
}

TEST_F(SqlTranslator, FunctionsAndConversions) {
    Check({
        {"SELECT CEILING(2.1), CEILING(-2.1), CEILING(4), FLOOR(2.9), CEILING(NULL)", "3|-2|4|2|NULL"},
        {"SELECT CAST(5 AS FLOAT) / 2, CAST('12' AS INT) + 1, CAST(2.345678 AS MONEY), CAST(2.567 AS DECIMAL(9, 2))",
         "2,5|13|2,3457|2,57"},
        {"SELECT CAST('abcdef' AS VARCHAR(3)), LEN('ab  '), SUBSTRING('abcdef', 2, 3), LEFT('abc', 2), RIGHT('abc', 2)",
         "abc|2|bcd|ab|bc"},
        {"SELECT RIGHT('abc', 9) + RIGHT('abc', 0), CAST(3 AS BIT)", "abc|1"},
        {"SELECT CAST('3/31/2011 10:00' AS DATETIME), CAST('2011-03-31 10:00' AS DATE)",
         "31/03/2011 10:00:00|31/03/2011"},
        {"SELECT COALESCE(NULL, 'x') + 'y', ABS(-2), COUNT(DISTINCT Stato) FROM Doc", "xy|2|6"},
        {"SELECT Stato, COUNT(*) FROM Doc WHERE ID > 5 GROUP BY Stato HAVING COUNT(*) > 0 ORDER BY Stato DESC",
         "7|1;6|1"},
        {"SELECT ID FROM Doc D WHERE EXISTS (SELECT 1 FROM Aldra..Doc WHERE Aldra..Doc.ID = D.ID) ORDER BY ID", "1;3"},
        {"SELECT (SELECT MAX(Codice) FROM Aldra..Doc) + '!'", "mille!"},
        {"SELECT Aldra..Doc.*, A.ID FROM Aldra..Doc WITH (NOLOCK) LEFT JOIN (Doc A INNER JOIN Doc B ON A.ID = B.ID) ON "
         "Aldra..Doc.ID = A.ID ORDER BY A.ID",
         "1|cento|1;3|mille|3"},
    });
}

TEST_F(SqlTranslator, RefusesByNameWhatItCannotSay) {
    const Case cases[] = {
        {"SELECT CONVERT(VARCHAR(10), Giorno, 103) FROM Doc", "CONVERT"},
        {"SELECT DATEDIFF(day, Giorno, Giorno) FROM Doc", "DATEDIFF"},
        {"SELECT dbo.Eta(Giorno) FROM Doc", "Eta"},
        {"SELECT @x", "@"},
        {"SELECT YEAR(Giorno, 1) FROM Doc", "YEAR"},
        {"SELECT * FROM Doc; DELETE FROM Doc", "DELETE"},
        {"SELECT * FROM Doc WHERE ID = 1 2", "2"},
        {"MERGE Doc USING x", "MERGE"},
        {"SELECT * INTO Copia FROM Doc", "INTO"},
        {"UPDATE Doc SET ID = 1 FROM Aldra..Doc", "FROM"},
        {"SELECT ROW_NUMBER() OVER (ORDER BY ID) FROM Doc", "OVER"},
        {"SELECT X.* FROM Doc", "X"},
    };
    for (const auto& [sql, named] : cases) {
        EXPECT_EQ(Rows(sql).find(std::string("Istruzione SQL non riconosciuta: ") + named), 0U) << sql;
    }
    for (const char* sql : {"", "SELECT", "SELECT ID FROM Doc WHERE (ID = 1", "SELECT 'a", "SELECT [a", "SELECT /* a",
                            "SELECT ID FROM Doc WHERE ID =", "CREATE TABLE A (X INT); CREATE TABLE B (X INT)"}) {
        EXPECT_THROW(connection->Execute(sql), Error) << sql;
    }
    for (const char* nested : {"(", "-", "NOT ", "CASE ", "ABS("}) {
        std::string sql = "SELECT 1 WHERE ";
        for (int depth = 0; depth < 100000; ++depth) sql += nested;
        EXPECT_THROW(connection->Open(sql), Error) << nested;
    }
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM Doc"), "7");
}

TEST_F(SqlTranslator, ChangesStoreDatesInTheStoredForm) {
    connection->Execute("INSERT INTO Doc (Giorno, ID) VALUES ('12/25/2011', 20), ('12/25/2011 10:30', 21)");
    connection->Execute("INSERT INTO Doc (ID, Giorno) SELECT ID + 20, Giorno FROM Doc WHERE ID = 2");
    connection->Execute("UPDATE Doc SET Doc.Giorno = '20111231', Codice = '12/25/2011' WHERE Giorno = '2011-12-25'");
    EXPECT_EQ(Rows("SELECT Giorno + '', Codice FROM Doc WHERE ID > 19 ORDER BY ID"),
              "2011-12-31|12/25/2011;2011-12-25 10:30:00|NULL;2011-03-31 00:00:00|NULL");
    EXPECT_EQ(connection->Execute("DELETE Aldra..Doc WHERE Codice = 'MILLE'"), 1);
}

/// A million services are selected through the clinic's view: in the order of the index, never sorted.
TEST_F(SqlTranslator, TheSelectionOfServicesFollowsItsIndex) {
    Run(
        {"CREATE TABLE Parcella (IDParcella INT PRIMARY KEY, CodiceBranca SMALLINT, Quando DATETIME, Fatta BIT, "
         "IDPaziente INT)",
         "CREATE INDEX PerEsportazione ON Parcella (CodiceBranca, datetime(Quando), IDParcella)",
         "CREATE VIEW VwPrestazione AS SELECT IDParcella, CodiceBranca, Quando AS Data, Fatta, IDPaziente FROM "
         "Parcella",
         "CREATE TABLE Residenza (IDPaziente INT PRIMARY KEY, IDTipo INT, IDComune INT)",
         "CREATE TABLE Aldra..Comune (IDComune INT PRIMARY KEY, CodiceISTAT VARCHAR(6))"});
    const std::string plan = Rows(
        "EXPLAIN QUERY PLAN SELECT VwPrestazione.*, Aldra..Comune.CodiceISTAT FROM VwPrestazione LEFT JOIN Residenza "
        "ON "
        "(VwPrestazione.IDPaziente = Residenza.IDPaziente AND Residenza.IDTipo = 1) LEFT JOIN Aldra..Comune ON "
        "Residenza.IDComune = Aldra..Comune.IDComune WHERE (YEAR(Data) = 2011 AND MONTH(Data) = 3 AND (Fatta = 0 OR "
        "Fatta IS NULL)) ORDER BY CodiceBranca, Data, IDParcella");
    EXPECT_PRED2(Holds, plan, "PerEsportazione");
    EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << plan;
}

TEST(SqlDateLiteral, KnowsTheFormsOfADate) {
    for (const char* text : {"3/1/2011", "03-01-2011", "2011-3-1", "20110301", " 3/1/2011 ", "3/1/2011 12:00:00 AM",
                             "2011-03-01T00:00:00.000"}) {
        const auto date = ParseSqlDate(text);
        EXPECT_TRUE(date && date->iso == "2011-03-01" && date->midnight) << text;
    }
    EXPECT_EQ(ParseSqlDate("2/29/2012")->iso, "2012-02-29");
    EXPECT_EQ(ParseSqlDate("3/1/2011 1:05 pm")->iso, "2011-03-01 13:05:00");
    EXPECT_EQ(ParseSqlDate("20110301 23:59:59.990")->iso, "2011-03-01 23:59:59.99");
    EXPECT_FALSE(ParseSqlDate("20110301 00:00:01")->midnight);
    for (const char* text : {"", "Rossi", "1234567", "12", "3/1", "1/2/x", "3/1/2011x"}) {
        EXPECT_FALSE(ParseSqlDate(text)) << text;
    }
    for (const char* text : {"31/3/2011", "2/29/2011", "20111301", "3/1/2011 25:00", "3/1/2011 domani", "3/1/11"}) {
        EXPECT_THROW(ParseSqlDate(text), Error) << text;
    }
}

}  // namespace
}  // namespace vlm::data::testing
