#include "ASLLInePuglia.h"

#include <algorithm>

#include "PugliaChecks.h"

namespace vlm {

namespace puglia {

std::string Medico(const Ricetta& ricetta) {
    std::string medico = text::Without(ricetta.MedicoPrescrittore, '.');
    const std::string_view code = text::Trim(medico);
    const bool digits = std::all_of(code.begin(), code.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (ricetta.IsNumbered() || !digits) medico.clear();
    return medico;
}

std::string Identificativo(const Ricetta& ricetta) {
    if (!ricetta.IsNumbered()) return ricetta.NumeroRicetta;
    std::string identifier = "46";
    kLayout.format.AppendNumber(identifier, ricetta.CodiceRegionale, 6);
    identifier += text::Right(std::to_string(ricetta.Anno), 1);
    kLayout.format.AppendNumber(identifier, std::int64_t{ricetta.NumeroDocumento}, 6);
    return identifier;
}

}  // namespace puglia

void ASLLInePuglia::SetRs(data::Recordset* rs) {
    rs_ = rs;
    columns_.reset();
    if (rs != nullptr) columns_.emplace(*rs);
}

void ASLLInePuglia::ReadData() {
    if (!columns_) return;
    ++ricetta_.ProgressivoRicetta;
    columns_->Read(ricetta_, *rs_);
}

std::string ASLLInePuglia::GetErrors() const {
    return TipoTracciato == ttM ? puglia::Anomalies(ricetta_) : std::string{};
}

const std::string& ASLLInePuglia::GetFormattedLine() {
    line_.clear();
    if (TipoTracciato == ttM) WriteLine<puglia::kLayout>(line_, ricetta_);
    return line_;
}

}  // namespace vlm
