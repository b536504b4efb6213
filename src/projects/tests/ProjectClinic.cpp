#include "ProjectClinic.h"

#include <gtest/gtest.h>

#include "support/Words.h"

namespace vlm::test {

namespace {

struct Column {
    const char* name;
    const char* type;
    const char* value;
};

constexpr Column kColumns[] = {
    {"NumeroASL", "VARCHAR(10)", "'2011234'"},
    {"CodiceRegionale", "VARCHAR(10)", "'19010'"},
    {"Anno", "SMALLINT", "2011"},
    {"Periodo", "SMALLINT", "1"},
    {"Protocollo", "INT", "4321"},
    {"Cognome", "VARCHAR(60)", "'Nicolò'"},
    {"Nome", "VARCHAR(60)", "'Maria Graziella Antonietta'"},
    {"CodiceFiscale", "VARCHAR(20)", "'nclmgr70e41g273k'"},
    {"Sesso", "VARCHAR(1)", "'M'"},
    {"DataNascita", "DATETIME", "'1970-05-01 10:20:00'"},
    {"CodiceISTAT", "VARCHAR(6)", "'082053'"},
    {"NumeroAslPaziente", "VARCHAR(5)", "'6'"},
    {"CodiceIstatCittadinanza", "INT", "276"},
    {"ProvenienzaPaziente", "INT", "4"},
    {"DataScelta", "DATETIME", "'2009-12-31'"},
    {"Trattamento", "INT", "5"},
    {"CodicePatologia", "VARCHAR(10)", "'43890'"},
    {"NumeroAutorizzazione", "VARCHAR(10)", "'50001'"},
    {"DataAutorizzazione", "DATETIME", "'2011-01-15'"},
    {"NumPrestAutor", "INT", "60"},
    {"DataRevoca", "DATETIME", "'2011-02-28'"},
    {"TipoDimissione", "INT", "27"},
    {"IDStatoPrestazioneErogata", "INT", "1"},
    {"NumeroAccessi", "INT", "8"},
    {"ImportoTotale", "MONEY", "304.5"},
    {"DataInizio", "DATETIME", "'2011-01-18'"},
    {"IDStatoProgetto", "INT", "2"},
};

std::string ViewOf(const std::vector<SqlRow>& rows) {
    std::string sql = "CREATE TABLE VwPrestazioniASLME (";
    for (const Column& column : kColumns) sql += std::string(column.name) + " " + column.type + ",";
    sql.back() = ')';
    sql += ';';
    for (const SqlRow& row : rows) sql += InsertionInto("VwPrestazioniASLME", row);
    return sql;
}

}  // namespace

SqlRow Project(const std::string& project, const std::string& changes) {
    SqlRow row = ColumnsOf("NumeroAutorizzazione='" + project + "'; " + changes);
    for (const Column& column : kColumns) row.try_emplace(column.name, column.value);
    return row;
}

void ProjectClinic::Create(const Centres& centres) {
    for (const auto& [centre, rows] : centres) {
        if (centre == clinic) continue;
        masterSql += "INSERT INTO Studi (IDStudio) VALUES (" + std::to_string(centre) + ");";
        CreateDatabase(centre, ViewOf(rows));
    }
    masterSql += "UPDATE Studi SET IDEquipe = 1, RagioneSociale = 'Centro', Nome = IDStudio;";
    if (!teamless.empty()) masterSql += "UPDATE Studi SET IDEquipe = 0 WHERE IDStudio IN (" + teamless + ");";
    const auto own = centres.find(clinic);
    extraSql += ViewOf(own == centres.end() ? std::vector<SqlRow>{} : own->second);
    ServiceClinic::Create({});
}

HostRun ProjectClinic::Export(const Lines& more) const {
    return Show(WordsOf("numAnno=2011 cboDaTrimestre=#0 cboATrimestre=#1 txtPath=" + out) + more +
                WordsOf("cmdConferma!"));
}

std::string ProjectClinic::Projects(const std::string& centre) const {
    std::string numbers;
    const std::string content = Content(centre);
    EXPECT_EQ(content.size() % 197, 0U);
    for (std::size_t at = 0; at + 197 <= content.size(); at += 197) {
        std::string number = content.substr(at + 128, 6);
        number.erase(number.find_last_not_of(' ') + 1);
        numbers += (numbers.empty() ? "" : " ") + number;
    }
    return numbers;
}

}  // namespace vlm::test
