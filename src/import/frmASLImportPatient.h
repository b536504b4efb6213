#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ImportGrids.h"
#include "dialogs/PickList.h"
#include "frame/FormDialog.h"
#include "import/ASLImportPatient.h"

namespace vlm {

/// Reads a patient list, shows it against the archive, and makes patients and exemptions of the selected elements or
/// revokes patients that the list does not have any more.
class frmASLImportPatient : public FormDialog {
public:
    explicit frmASLImportPatient(ASLImportPatient& component);

    void Opening() override;
    void Closed() override;

private:
    void LayOut();
    void Wire();
    void FillSourceFormats();
    void ApplyVisibility();
    void ApplyFilter();
    void ShowSelected();
    void Browse();

    void Process();
    /// Null when there is nothing to show: the user was told, or cancelled.
    ElementListPtr ReadSource();
    ElementListPtr ReadFile();
    ElementListPtr ReadHealthCard();
    void FillGrids(ElementListPtr elements);
    void EmptyGrids();
    void OfferFindings();
    void ShowProcessingError(const std::string& description);

    void ToggleSelection();
    void SelectAll();
    void CheckBoxClicked(int row);
    void RefreshGrid();

    void Confirm();
    bool MayConfirmHidden(const ElementGridModel& elements);
    void Revoke();

    void Print();
    /// A text for the user to read, in the host's working folder, opened in the text editor.
    void ShowTextFile(const std::string& name, const std::vector<std::string>& lines);

    /// A step that takes long: progress and hourglass until its end, however it ends.
    class Work {
    public:
        Work(frmASLImportPatient& dialog, const std::string& caption)
            : dialog_(dialog), hourglass_(dialog.Lib().Toolkit()) {
            dialog_.ShowWork(caption);
        }
        ~Work() { dialog_.HideWork(); }
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

    private:
        frmASLImportPatient& dialog_;
        ui::HourglassScope hourglass_;
    };
    void ShowWork(const std::string& caption);
    void HideWork();
    /// Paints the share done; false once the dialog is being closed.
    bool WorkDone(int percent);

    bool IsPatientList() const { return cboImportazione.Position() == 0; }
    bool IsHealthCard() const { return cboTipoImportazione.Position() == 1; }
    bool IsRevocation() const { return IsPatientList() && cboFiltro.Position() == 2; }
    ui::Grid& ShownGrid();
    /// What the shown grid shows; null for nothing.
    ElementGridModel* ShownModel();

    ASLImportPatient* aslImportObject_;
    std::shared_ptr<ElementGridModel> elements_;
    std::shared_ptr<RevocableGridModel> revocable_;

    ui::FixedList cboImportazione{*this, "cboImportazione"};
    ui::FixedList cboTipoImportazione{*this, "cboTipoImportazione"};
    ui::Frame fraFile{*this, "fraFile", "File"};
    ui::FixedList cboASL{*this, "cboASL"};
    ui::TextField txtPath{*this, "txtPath"};
    ui::Button cmdLink{*this, "cmdLink", "..."};
    ui::Frame fraSistemaTS{*this, "fraSistemaTS", "Sistema TS"};
    ui::PickList cboSpecialista{*this, "cboSpecialista"};
    ui::FixedList cboFiltro{*this, "cboFiltro"};
    ui::Label lblConteggio{*this, "lblConteggio"};
    ui::Label lblSelezionati{*this, "lblSelezionati"};
    ui::Label lblLettura{*this, "lblLettura", "Lettura file in corso..."};
    ui::ProgressBar prgLettura{*this, "prgLettura"};
    ui::Grid grdList{*this, "grdList"};
    ui::Grid grdList1{*this, "grdList1"};
    ui::Grid grdList2{*this, "grdList2"};
    ui::Button cmdElabora{*this, "cmdElabora", "&Elabora"};
    ui::Button cmdConferma{*this, "cmdConferma", "&Importa"};
    ui::Button cmdSeleziona{*this, "cmdSeleziona", "&Seleziona"};
    ui::Button cmdSelezionaTutti{*this, "cmdSelezionaTutti", "Seleziona &tutti"};
    ui::Button cmdStampa{*this, "cmdStampa", "S&tampa"};
    ui::Button cmdAnnulla{*this, "cmdAnnulla", "Chiudi"};
};

}  // namespace vlm
