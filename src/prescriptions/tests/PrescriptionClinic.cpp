#include "PrescriptionClinic.h"

#include "support/Words.h"

namespace vlm::test {

namespace {

constexpr const char* kColumns =
    "(IDRicettaFarmaci INT, IDBrancaPerStudio INT, IDSpecialista INT, DataRicetta DATETIME, NumRicetta INT,"
    " CodiceRegionale VARCHAR(10), PAZ_CodiceFiscale VARCHAR(20), IDTipoRichiesta INT, CodiceAIC_1 VARCHAR(12),"
    " IDPatologia_1 INT, Quantita_1 SMALLINT, CodiceAIC_2 VARCHAR(12), IDPatologia_2 INT, Quantita_2 SMALLINT,"
    " PrescrivibileSSN BIT);";

constexpr const char* kMaster =
    "INSERT INTO Patologia (IDPatologia, CodificaCompleta) VALUES (1, '25000'), (2, '4019'), (3, '4019');";

}  // namespace

SqlRow Prescription(const std::string& id, const std::string& changes) {
    return ColumnsOf("IDRicettaFarmaci=" + id + "; NumRicetta=400" + id + "; Quantita_2=" + id +
                     "; IDBrancaPerStudio=2; IDSpecialista=9; DataRicetta='2011-03-15'; CodiceRegionale='900009'; "
                     "PAZ_CodiceFiscale='NCLMGR70E41G273K'; IDTipoRichiesta=3; CodiceAIC_1='0239930131'; "
                     "IDPatologia_1=1; Quantita_1=2; CodiceAIC_2='028519015'; IDPatologia_2=2; PrescrivibileSSN=1; " +
                     changes);
}

void PrescriptionClinic::Create(const std::vector<SqlRow>& prescriptions) {
    masterSql = kMaster + masterSql;
    std::string sql = std::string("CREATE TABLE RicettaFarmaci ") + kColumns + "CREATE TABLE AltreRighe " + kColumns +
                      "CREATE TABLE StoredProcedure (Name VARCHAR, Ordinal INT, Body TEXT);";
    for (const SqlRow& row : prescriptions) sql += InsertionInto("RicettaFarmaci", row);
    int ordinal = 0;
    for (const std::string& body : procedure) {
        sql += InsertionInto(
            "StoredProcedure",
            {{"Name", "'SP_RicettaFarmaci2005'"}, {"Ordinal", std::to_string(++ordinal)}, {"Body", "'" + body + "'"}});
    }
    extraSql = sql + extraSql;
    ServiceClinic::Create({});
}

HostRun PrescriptionClinic::Export(const Lines& more) const {
    return Show(WordsOf("cboBranca=2 dtFromDate=01/03/2011 dtToDate=31/03/2011 txtPath=" + File()) + more +
                WordsOf("cmdConferma!"));
}

}  // namespace vlm::test
