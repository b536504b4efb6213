#include "PersonDecoder.h"

#include "frame/PlainHostUtility.h"
#include "services/FiscalCode.h"
#include "values/DateText.h"
#include "values/Error.h"

namespace vlm::host {

void PersonDecoder::SetFiscalCode(std::string_view code) {
    const FiscalBearer bearer = ReadFiscalCode(code, clock_.Today());
    comune_ = FindComune(bearer.landRegistryCode);
    birthDate_ = text::DdMmYyyySlashes(bearer.birth);
    sex_ = bearer.female ? "F" : "M";
}

std::int32_t PersonDecoder::FindComune(const std::string& landRegistryCode) const {
    if (landRegistryCode.front() == 'Z') return 0;  // a foreign state
    if (connection_ == nullptr) throw Error("Il comune di nascita non si può cercare: manca la connessione.");
    const auto comune =
        connection_->Open("SELECT IDComune FROM Aldra..Comune WHERE CodiceCatastale = " + SqlText(landRegistryCode));
    return comune->AtEnd() ? 0 : comune->Int32Of(0);
}

}  // namespace vlm::host
