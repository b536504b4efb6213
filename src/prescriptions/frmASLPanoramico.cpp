#include "frmASLPanoramico.h"

#include "files/Paths.h"
#include "frame/Messages.h"
#include "frame/ModGeneral.h"
#include "frame/ModSysTables.h"
#include "values/Utf8.h"

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
    : FormDialog(component.Lib(), "frmASLPanoramico", "Esportazione ricette farmaci", KeyPreview::Frame),
      aslPanoramicoObject_(&component) {
    LayOut();
    Wire();
}

void frmASLPanoramico::LayOut() {
    AddRow("Branca", {{{&cboBranca}}});
    AddRow("Medico", {{{&cboSpecialista}}});
    AddRow("Da data", {{{&dtFromDate}}});
    AddRow("A data", {{{&dtToDate}}});
    AddRow("Destinazione:", {{{&txtPath}}, {{&cmdLink}}});
    AddRow("", {{{&chkVisualizza}}});
    SetButtons({&cmdConferma, &cmdVisualizza, &cmdAnnulla}, &cmdConferma, &cmdAnnulla);
}

void frmASLPanoramico::Wire() {
    cboBranca.OnChange = [this] { Guarded([this] { LoadSpecialists(); }); };
    cmdLink.OnChange = [this] { Guarded([this] { Browse(); }); };
    BrowseWith(txtPath, cmdLink.OnChange);
    cmdConferma.OnChange = [this] {
        Guarded([this] {
            if (Validate()) Run();
        });
    };
    cmdAnnulla.OnChange = [this] { Close(); };
}

void frmASLPanoramico::Opening() {
    // The destination comes first: whatever fails later, closing keeps it.
    Guarded([this] { txtPath.SetText(GetSetting(Lib(), settings::kASLPathPanoramico)); });
    Guarded([this] {
        FillPickList(Lib(), cboBranca, PickListKind::Branches);
        if (cboBranca.RowCount() > 0) cboBranca.SelectIndex(0);
    });
}

void frmASLPanoramico::LoadSpecialists() {
    cboSpecialista.keyColumn = "IDSpecialista";
    FillSpecialistsOfBranch(Lib(), cboSpecialista, {},
                            " WHERE IDBrancaPerStudio = " + std::to_string(cboBranca.SelectedKey()));
}

void frmASLPanoramico::Browse() {
    const auto chosen = Lib().Toolkit().ChooseFile({"All files (*.*)|*.*|File progetto panoramico|*.txt",
                                                    2,
                                                    "txt",
                                                    {},
                                                    FileNameOf(files::ToLibrary(txtPath.Text()))});
    if (chosen) txtPath.SetText(*chosen);
}

bool frmASLPanoramico::Validate() {
    const auto missing = [this](const char* field, ui::Control& control) {
        messages::ShowFieldMissing(Lib().Toolkit(), field);
        control.SetFocus();
        return false;
    };
    if (cboBranca.SelectedKey() == 0) return missing("Branca", cboBranca);
    if (!dtFromDate.Value()) return missing("Da data", dtFromDate);
    if (!dtToDate.Value()) return missing("A data", dtToDate);
    if (text::Trim(txtPath.Text()).empty()) return missing("Destinazione", txtPath);
    if (IsDirectory(ParentFolderOf(txtPath.Text()))) return true;
    messages::ShowPathNotValid(Lib().Toolkit(), "Destinazione");
    txtPath.SetFocus();
    return false;
}

void frmASLPanoramico::Run() {
    ASLPanoramico& component = *aslPanoramicoObject_;
    component.IDSpecialista = cboSpecialista.SelectedKey();
    component.IDBranca = cboBranca.SelectedKey();
    component.FromDate = *dtFromDate.Value();
    component.ToDate = *dtToDate.Value();
    component.ExportFile(txtPath.Text());
    messages::ShowConcluded(Lib().Toolkit());
}

void frmASLPanoramico::Closed() {
    aslPanoramicoObject_ = nullptr;
    Guarded([this] { SaveSetting(Lib(), settings::kASLPathPanoramico, txtPath.Text()); });
}

}  // namespace vlm
