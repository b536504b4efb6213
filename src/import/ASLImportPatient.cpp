#include "import/ASLImportPatient.h"

#include "frame/Messages.h"
#include "frmASLImportPatient.h"
#include "readers/AslFormats.h"
#include "readers/ImportTemplate.h"
#include "values/Error.h"

namespace vlm {

void ASLImportPatient::ShowDialog() {
    frmASLImportPatient dialog(*this);
    library_.Toolkit().ShowModal(dialog);
}

ElementListPtr ASLImportPatient::GetElementList(const std::string& fileName) { return Read(asl::kLazio, fileName); }

std::int32_t ASLImportPatient::CreatePatient(data::Recordset& element) {
    return PatientCreation(library_, security_).CreatePatient(element);
}

std::int32_t ASLImportPatient::ConfirmPatient(data::Recordset& element) {
    return PatientCreation(library_, security_).CreatePatient(element, &sinceReading_);
}

void ASLImportPatient::RememberArchive() {
    const data::RecordsetPtr last = library_.RequireConnection().Open("SELECT MAX(IDPaziente) FROM Paziente");
    sinceReading_ = {last->Int32Of(0), {}};
}

std::int32_t ASLImportPatient::CreateEsenzione(data::Recordset& element) {
    return ExemptionCreation(library_, security_).CreateEsenzione(element);
}

ElementListPtr ASLImportPatient::GetElementListSistemaTS(std::int32_t specialist, const std::string& pin) {
    return ReadHealthCardList(HealthCardList::Patients, specialist, pin);
}

ElementListPtr ASLImportPatient::GetElementListEsentiRedditoSistemaTS(std::int32_t specialist, const std::string& pin) {
    return ReadHealthCardList(HealthCardList::Exemptions, specialist, pin);
}

ElementListPtr ASLImportPatient::ReadHealthCardList(HealthCardList list, std::int32_t specialist,
                                                    const std::string& pin) {
    return InContext(
        [&](ReadContext& context) { return ModSistemaTS(security_, context).GetElementList(list, specialist, pin); });
}

ElementListPtr ASLImportPatient::ReadSourceForAsl(const std::string& fileName, int aslIndex,
                                                  const std::string& templatePath) {
    const auto authorities = asl::Authorities();
    const auto entry = static_cast<std::size_t>(aslIndex);
    const SourceFormat* own = entry < authorities.size() ? authorities[entry].format : nullptr;
    return own != nullptr ? Read(*own, fileName) : ReadWithTemplate(fileName, templatePath);
}

ElementListPtr ASLImportPatient::ReadWithTemplate(const std::string& fileName, const std::string& templatePath) {
    findings_.Clear();
    try {
        const ImportTemplate source = ImportTemplate::Load(templatePath);
        if (source.LacksDelimiter()) {
            library_.Toolkit().Show({"Nessun delimitatore di campo impostato!", messages::kHostTitle,
                                     ui::Icon::Exclamation, ui::Buttons::Ok});
            return nullptr;
        }
        const std::optional<SourceFormat> format = source.Format();
        return format ? Read(*format, fileName) : nullptr;
    } catch (const std::exception& error) {
        messages::ShowReadingError(library_.Toolkit(), error.what());
        return nullptr;
    }
}

ElementListPtr ASLImportPatient::Read(const SourceFormat& format, const std::string& fileName) {
    return InContext([&](ReadContext& context) {
        return format.kind == SourceKind::Workbook ? ReadWorkbook(format, fileName, context, library_.Workbooks())
                                                   : ReadText(format, fileName, context);
    });
}

ElementListPtr ASLImportPatient::InContext(const std::function<ElementListPtr(ReadContext&)>& read) {
    findings_.Clear();
    const ReadProgress::Listener listener = [this](std::int32_t percent) { RaiseReadingFile(percent); };
    ReadContext context(library_, listener);
    ElementListPtr elements = read(context);
    findings_ = std::move(context.findings);
    return elements;
}

void ASLImportPatient::RaiseReadingFile(std::int32_t percent) const {
    if (ReadingFile) ReadingFile(percent);
    if (DialogReadingFile) DialogReadingFile(percent);
}

}  // namespace vlm
