#include "frmASLPanoramico.h"

#include "files/Paths.h"
#include "frame/ModGeneral.h"
#include "frame/ModSysTables.h"

namespace vlm {

namespace {

/// What stands before the last "\", the root itself for a file in it; "" when there is none.
std::string ParentFolderOf(const std::string& path) {
    const std::string own = files::ToLibrary(path);
    const std::size_t last = own.rfind('\\');
    if (last == 0) return "\\";
    return last == std::string::npos ? std::string{} : own.substr(0, last);
}

}  // namespace

frmASLPanoramico::frmASLPanoramico(ASLPanoramico& component)
    : ExportDialog(component.Lib(), "frmASLPanoramico", "Esportazione ricette farmaci", settings::kASLPathPanoramico),
      aslPanoramicoObject_(&component) {
    AddRow("Branca", {{{&cboBranca}}});
    AddRow("Medico", {{{&cboSpecialista}}});
    AddRow("Da data", {{{&dtFromDate}}});
    AddRow("A data", {{{&dtToDate}}});
    AddDestinationRows();
    cboBranca.OnChange = [this] {
        Guarded([this] { FillSpecialistsOfBranch(Lib(), cboSpecialista, cboBranca.SelectedKey()); });
    };
}

void frmASLPanoramico::Fill() {
    Guarded([this] {
        FillPickList(Lib(), cboBranca, PickListKind::Branches);
        if (cboBranca.RowCount() > 0) cboBranca.SelectIndex(0);
    });
}

std::optional<std::string> frmASLPanoramico::Choose() {
    return Lib().Toolkit().ChooseFile(
        {"All files (*.*)|*.*|File progetto panoramico|*.txt", 2, "txt", {}, FileNameOf(files::ToLibrary(Path()))});
}

bool frmASLPanoramico::Validate() {
    return Require(cboBranca.SelectedKey() != 0, "Branca", cboBranca) &&
           Require(dtFromDate.Value().has_value(), "Da data", dtFromDate) &&
           Require(dtToDate.Value().has_value(), "A data", dtToDate) && RequireDestination(ParentFolderOf(Path()));
}

void frmASLPanoramico::Run() {
    ASLPanoramico& component = *aslPanoramicoObject_;
    component.IDSpecialista = cboSpecialista.SelectedKey();
    component.IDBranca = cboBranca.SelectedKey();
    component.FromDate = *dtFromDate.Value();
    component.ToDate = *dtToDate.Value();
    component.ExportFile(Path());
    messages::ShowConcluded(Lib().Toolkit());
}

void frmASLPanoramico::Closed() {
    aslPanoramicoObject_ = nullptr;
    ExportDialog::Closed();
}

}  // namespace vlm
