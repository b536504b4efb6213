#include "ParametersOfSpecialist.h"

#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::host {

void ParametersOfSpecialist::Load(std::int32_t specialist, std::int32_t /*kind*/) {
    values_.clear();
    if (connection_ == nullptr)
        throw Error("I parametri dello specialista non si possono leggere: manca la connessione.");
    const auto rows = connection_->Open("SELECT Nome, Valore FROM ParametroSpecialista WHERE IDSpecialista = " +
                                        std::to_string(specialist));
    for (; !rows->AtEnd(); rows->MoveNext()) values_.try_emplace(text::FoldCase(rows->TextOf(0)), rows->ValueOf(1));
}

data::Value ParametersOfSpecialist::Parameter(std::string_view name) const {
    const auto found = values_.find(text::FoldCase(name));
    return found == values_.end() ? data::Value() : found->second;
}

}  // namespace vlm::host
