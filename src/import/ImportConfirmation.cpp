#include "ImportConfirmation.h"

#include <array>
#include <span>

#include "frame/Messages.h"
#include "values/Error.h"

namespace vlm {

namespace {

constexpr std::size_t kReasonsShown = 5;

/// What the component is given of an element.
constexpr std::array<ElementColumn, 15> kPatientCells = {
    ElementColumn::Codice,    ElementColumn::Cognome,       ElementColumn::Nome,       ElementColumn::DataNascita,
    ElementColumn::Sesso,     ElementColumn::CodiceFiscale, ElementColumn::DataScelta, ElementColumn::Comune,
    ElementColumn::Indirizzo, ElementColumn::CAP,           ElementColumn::IDComune,   ElementColumn::IDPaziente,
    ElementColumn::Scadenza,  ElementColumn::Sospensione,   ElementColumn::Telefono,
};
constexpr std::array<ElementColumn, 10> kExemptionCells = {
    ElementColumn::Codice,
    ElementColumn::Cognome,
    ElementColumn::Nome,
    ElementColumn::DataNascita,
    ElementColumn::Sesso,
    ElementColumn::CodiceFiscale,
    ElementColumn::Esenzione,
    ElementColumn::IDPaziente,
    ElementColumn::EsenzioneDataInizio,
    ElementColumn::EsenzioneDataScadenza,
};

}  // namespace

void ImportConfirmation::Run(ElementGridModel& elements) {
    const std::size_t selected = elements.CountSelected();
    std::size_t done = 0;
    for (std::uint32_t element = 0; element < elements.ElementCount(); ++element) {
        if (!elements.IsSelected(element)) continue;
        Confirm(elements, element);
        if (goOn_(static_cast<int>(++done * 100 / selected))) continue;
        left_ = selected - done;
        return;
    }
}

void ImportConfirmation::Confirm(ElementGridModel& elements, std::uint32_t element) {
    try {
        const ElementListPtr one = CopyOf(elements.At(element));
        const std::int32_t result =
            kind_ == Kind::Patients ? component_.ConfirmPatient(*one) : component_.CreateEsenzione(*one);
        if (result == 0) {
            return Fail(elements.At(element), kind_ == Kind::Patients
                                                  ? "il paziente non è stato salvato."
                                                  : "l'esenzione non è stata scritta: il paziente non è in archivio o "
                                                    "il codice non vale per la sua età.");
        }
        if (kind_ == Kind::Patients) elements.SetPatient(element, result);
        elements.Select(element, false);
        ++written_;
    } catch (const std::exception& error) {
        Fail(elements.At(element), error.what());
    }
}

void ImportConfirmation::Fail(const ElementList& element, const std::string& reason) {
    if (++failed_ > kReasonsShown) return;
    std::string name(element.TextOf(OrdinalOf(ElementColumn::Cognome)));
    name.append(" ").append(element.TextOf(OrdinalOf(ElementColumn::Nome)));
    reasons_.push_back(name + ": " + reason);
}

ElementListPtr ImportConfirmation::CopyOf(const ElementList& source) const {
    ElementListPtr one = NewElementList();
    one->AddNew();
    one->SetBoolean(OrdinalOf(ElementColumn::Selezionato), true);
    const std::span<const ElementColumn> cells =
        kind_ == Kind::Patients ? std::span<const ElementColumn>(kPatientCells) : kExemptionCells;
    for (const ElementColumn column : cells) one->SetValue(OrdinalOf(column), source.ValueOf(OrdinalOf(column)));
    one->Update();
    return one;
}

std::string ImportConfirmation::Summary() const {
    const bool patients = kind_ == Kind::Patients;
    std::string text = "Importazione conclusa.";
    text += messages::kLineEnd + std::string(patients ? "Pazienti scritti: " : "Esenzioni scritte: ") +
            std::to_string(written_);
    text += messages::kLineEnd + std::string(patients ? "Pazienti non scritti: " : "Esenzioni non scritte: ") +
            std::to_string(failed_);
    for (const std::string& reason : reasons_) text += messages::kLineEnd + reason;
    if (failed_ > reasons_.size()) text += std::string(messages::kLineEnd) + "...";
    if (left_ > 0) text += messages::kLineEnd + std::string("Non elaborati: ") + std::to_string(left_);
    return text;
}

}  // namespace vlm
