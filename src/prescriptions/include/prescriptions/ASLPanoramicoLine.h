#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "database/Connection.h"

namespace vlm {

/// The record of the drug-prescription export, public: the host may use it by itself. Set Connection and Rs, call
/// ReadData, take GetFormattedLine. One object serves any number of prescriptions and asks the database for each
/// illness once.
class ASLPanoramicoLine {
public:
    std::string CodMed;          // regional code of the prescribing doctor
    std::string AssCF;           // the patient's fiscal code
    Date DataRicetta;            // zero before the first reading
    std::string CodFarmaco1;     // AIC code
    std::string ICD9Farmaco1;    // at most 5 characters
    std::string SuggFarmaco1;    // "S" for a drug that another doctor suggested, else " "
    std::int16_t QFarmaco1 = 0;  // packs
    std::string CodFarmaco2;
    std::string ICD9Farmaco2;
    std::string SuggFarmaco2;
    std::int16_t QFarmaco2 = 0;
    std::string TipoRecord;
    std::string ICD92Farmaco1;  // the other drug's diagnosis, where the two differ
    std::string ICD92Farmaco2;
    bool PrescrivibileSSN = false;  // by the national health service; only such a prescription has a line

    /// The row set to read from, standing on its row; never moved and not owned.
    data::Recordset* Rs() const noexcept { return rs_; }
    void SetRs(data::Recordset* rs) noexcept { rs_ = rs; }
    /// Where diagnoses are looked up: this record's own, not the library-wide one.
    const data::ConnectionPtr& Connection() const noexcept { return connection_; }
    void SetConnection(data::ConnectionPtr connection) noexcept { connection_ = std::move(connection); }

    /// Fills the fields from the current row; always false. Throws Error for a missing column, for Null in doctor's
    /// code, fiscal code, date or a quantity, and for what the database says.
    bool ReadData();
    /// 76 characters, or nothing when the prescription is not PrescrivibileSSN. Valid until the next call.
    const std::string& GetFormattedLine();
    /// The record knows no anomalies.
    std::string GetErrors() const { return {}; }

    /// The code of an illness, at most 5 characters; nothing for no illness and for one that the database does not
    /// know, which is asked for again.
    std::string LookupICD9(std::int32_t idPatologia);

private:
    void ClearFields();

    data::Recordset* rs_ = nullptr;
    data::ConnectionPtr connection_;
    std::unordered_map<std::int32_t, std::string> icd9Cache_;  // by IDPatologia
    std::string line_;
};

}  // namespace vlm
