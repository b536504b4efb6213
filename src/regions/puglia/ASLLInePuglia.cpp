#include "ASLLInePuglia.h"

#include <algorithm>

#include "Priorita.h"
#include "PugliaChecks.h"
#include "PugliaLayout.h"
#include "export/DocumentLabel.h"
#include "export/RowReads.h"
#include "values/Error.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm {

using puglia::Prestazione;
using puglia::Ricetta;

namespace {

constexpr std::size_t kNumeroRicettaLength = 16;
/// Types of access, as the host numbers them: a prescription that the structure itself numbers, and one whose booking
/// dates do not go into the file either.
constexpr std::int32_t kAccessoNumerato = 2;
constexpr std::int32_t kAccessoSenzaPrenotazione = 3;
/// The exemption category that the region codes as "1".
constexpr double kCategoriaUno = 5;
/// The kind of request of a suggested prescription.
constexpr double kRichiestaSuggerita = 3;

bool AllDigits(std::string_view value) {
    return std::all_of(value.begin(), value.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Puts what a field of the layout stands for into its place.
struct FieldWriter {
    const FieldFormat& format;
    FixedLine& line;
    const FieldPlace& place;
    const Ricetta& ricetta;

    void operator()(std::monostate) const { format.Place(line, place, std::int64_t{0}); }
    template <class Value>
    void operator()(Value Ricetta::*field) const {
        format.Place(line, place, ricetta.*field);
    }
    void operator()(puglia::Slots Ricetta::*field) const {
        for (std::size_t slot = 0; slot < puglia::kMostPrestazioni; ++slot) {
            for (const puglia::SlotRow& part : puglia::kSlotLayout) {
                const FieldPlace at = puglia::PlaceInSlot(slot, part);
                std::visit([&](auto member) { Put(at, (ricetta.*field)[slot].*member); }, part.field);
            }
        }
    }

private:
    void Put(const FieldPlace& at, const std::string& codice) const {
        format.Place(line, at, text::Without(codice, '.'));
    }
    void Put(const FieldPlace& at, std::int32_t quantita) const { format.Place(line, at, std::int64_t{quantita}); }
};

}  // namespace

int ASLLInePuglia::LineLenght() const noexcept { return TipoTracciato == ttM ? puglia::kLineLength : 0; }

void ASLLInePuglia::SetRs(data::Recordset* rs) {
    rs_ = rs;
    columns_.reset();
    if (rs != nullptr) columns_.emplace(*rs);
}

void ASLLInePuglia::ReadData() {
    if (rs_ == nullptr) return;
    ++progressivoRicetta_;
    ReadPatient();
    ReadPrescription();
    ReadDates();
    ReadDocument();
    ReadService();
}

void ASLLInePuglia::ReadPatient() {
    const data::Recordset& rs = *rs_;
    const puglia::PugliaColumns& at = *columns_;
    ricetta_.CodiceRegionale = rs.TextOf(at.codiceRegionale);
    ricetta_.MedicoPrescrittore = rs.TextOf(at.medicoFiducia);
    ricetta_.Cognome = rs.TextOf(at.cognome);
    ricetta_.Nome = rs.TextOf(at.nome);
    ricetta_.CodiceAssistito = rs.TextOf(at.numAssistito);
    if (ricetta_.CodiceAssistito.empty()) ricetta_.CodiceAssistito = rs.TextOf(at.numTesseraSanitaria);
    ricetta_.CodiceFiscale = rs.TextOf(at.codiceFiscale);
    const std::string_view sesso = rs.TextOf(at.sesso);
    ricetta_.Sesso = sesso == "M" ? "1" : sesso == "F" ? "2" : "0";
    ricetta_.ComuneISTAT = rs.Int32Of(at.codiceISTAT);
    ricetta_.CodiceRegione = rs.Int32Of(at.codiceRegione);
    ricetta_.ASLResidenza = rs.Int32Of(at.numeroASL);
}

void ASLLInePuglia::ReadPrescription() {
    const data::Recordset& rs = *rs_;
    const puglia::PugliaColumns& at = *columns_;
    numeroRicetta_ = text::Trim(rs.TextOf(at.numRicetta1));
    numeroRicetta_ += text::Trim(rs.TextOf(at.numRicetta2));
    numeroRicetta_.resize(text::Left(numeroRicetta_, kNumeroRicettaLength).size());
    numeroRicetta_.append(kNumeroRicettaLength - text::Length(numeroRicetta_), '0');
    ricetta_.ProgressivoRicettaExport = rs.Int32Of(at.progressivoRicetta);
    ricetta_.BrancaSpecialistica = rs.Int16Of(at.codiceBranca);
    ricetta_.TotalePrestazioni = rs.AmountOf(at.totTicket);
    ricetta_.TotaleTicket = rs.AmountOf(at.quotaTicket);
    ricetta_.Esenzione = text::Left(rs.TextOf(at.esenzione), 6);
    if (rs.NumberOf(at.categoria) == kCategoriaUno) ricetta_.Esenzione = "1";
    ricetta_.ClassePriorita = puglia::PrioritaCodice(rs.NumberOf(at.priorita));
    ricetta_.TipoAccesso = rs.Int16Of(at.tipoAccesso);
    ricetta_.Garantita = rs.NumberOf(at.garantita) != 0 ? "G" : "";
    ricetta_.Suggerita = rs.NumberOf(at.tipoRichiesta) == kRichiestaSuggerita ? "S" : "";
}

void ASLLInePuglia::ReadDates() {
    const data::Recordset& rs = *rs_;
    const puglia::PugliaColumns& at = *columns_;
    ricetta_.DataNascita = DateFieldOf(rs, at.dataNascita);
    dataRilascio_ = DateFieldOf(rs, at.dataRilascio);
    ricetta_.DataSpedizione = DateFieldOf(rs, at.dataSpedizione);
    dataContatto_ = DateFieldOf(rs, at.dataContatto);
    dataPrimaDisponibilita_ = DateFieldOf(rs, at.dataPrimaDisponibilita);
    dataAssegnata_ = DateFieldOf(rs, at.dataAssegnata);
    ricetta_.DataRefertazione = DateFieldOf(rs, at.dataRefertazione);
    ricetta_.DataInizioCiclo = DateFieldOf(rs, at.dataInizioCiclo);
}

void ASLLInePuglia::ReadDocument() {
    const data::Recordset& rs = *rs_;
    const puglia::PugliaColumns& at = *columns_;
    idParcella_ = KeyOf(rs, at.idParcella);
    numeroDocumento_ = KeyOf(rs, at.numeroDocumento);
    idConsenso_ = rs.Int32Of(at.idConsenso);
    idTipoDocumento_ = rs.Int32Of(at.idTipoDocumento);
    dataDocumento_ = rs.DateOf(at.dataDocumento).value_or(Date{});
    prefissoNumerazione_ = rs.TextOf(at.prefisso);
    dataPrenotazione_ = DateFieldOf(rs, at.dataPrenotazione);
}

void ASLLInePuglia::ReadService() {
    if (progressivoRicetta_ < 1 || static_cast<std::size_t>(progressivoRicetta_) > puglia::kMostPrestazioni) {
        throw Error("Indice non compreso nell'intervallo: " + Label() + "una ricetta può avere al massimo " +
                        std::to_string(puglia::kMostPrestazioni) + " prestazioni.",
                    kSubscriptError);
    }
    const data::Recordset& rs = *rs_;
    const puglia::PugliaColumns& at = *columns_;
    Prestazione& slot = ricetta_.Prestazioni[static_cast<std::size_t>(progressivoRicetta_) - 1];
    slot.Codice = rs.TextOf(at.prestazioneTariffario);
    if (slot.Codice.empty()) slot.Codice = rs.TextOf(at.prestazione);
    slot.Quantita = rs.Int16Of(at.quantita);
    if (slot.Quantita == 0) slot.Quantita = 1;
    slot.Ciclica = rs.NumberOf(at.ciclica) != 0;
}

void ASLLInePuglia::ClearPrestazioni() {
    for (Prestazione& slot : ricetta_.Prestazioni) {
        slot.Codice.clear();
        slot.Quantita = 0;
        slot.Ciclica = false;
    }
}

std::string ASLLInePuglia::Label() const {
    return DocumentLabel(idTipoDocumento_, prefissoNumerazione_, numeroDocumento_, dataDocumento_);
}

std::string ASLLInePuglia::GetErrors() const { return TipoTracciato == ttM ? PugliaChecks::Run(*this) : std::string{}; }

const std::string& ASLLInePuglia::GetFormattedLine() {
    if (TipoTracciato != ttM) {
        line_.clear();
        return line_;
    }
    PrepareLine();
    WriteFields(line_, puglia::kLayout, puglia::kLineLength, false,
                [this](FixedLine& line, const FieldPlace& place, const puglia::Field& field) {
                    std::visit(FieldWriter{format_, line, place, ricetta_}, field);
                });
    return line_;
}

void ASLLInePuglia::PrepareLine() {
    PrepareMedico();
    const bool numbered = ricetta_.TipoAccesso == kAccessoNumerato;
    const bool booked = !numbered && ricetta_.TipoAccesso != kAccessoSenzaPrenotazione;
    ricetta_.Identificativo = numbered ? IdentifierOfStructure() : numeroRicetta_;
    ricetta_.DataPrescrizione = numbered ? ricetta_.DataSpedizione : dataRilascio_;
    ricetta_.DataContatto = booked ? dataContatto_ : "";
    ricetta_.DataPrimaDisponibilita = booked ? dataPrimaDisponibilita_ : "";
    ricetta_.DataAssegnata = booked ? dataAssegnata_ : "";
}

/// A doctor's code is digits; anything else, and the doctor of a prescription that the structure numbers, is left out.
void ASLLInePuglia::PrepareMedico() {
    std::string& medico = ricetta_.MedicoPrescrittore;
    std::erase(medico, '.');
    if (ricetta_.TipoAccesso == kAccessoNumerato || !AllDigits(text::Trim(medico))) medico.clear();
}

std::string ASLLInePuglia::IdentifierOfStructure() const {
    std::string identifier = "46";
    format_.AppendNumber(identifier, ricetta_.CodiceRegionale, 6);
    identifier += text::Right(std::to_string(Anno), 1);
    format_.AppendNumber(identifier, std::int64_t{numeroDocumento_}, 6);
    return identifier;
}

}  // namespace vlm
