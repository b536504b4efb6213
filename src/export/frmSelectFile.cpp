#include "frmSelectFile.h"

#include "files/Paths.h"
#include "frame/ModGeneral.h"
#include "values/DateText.h"
#include "values/Number.h"

namespace vlm {

frmSelectFile::frmSelectFile(const Library& library)
    : FormDialog(library, "frmSelectFile", "Selezione file", KeyPreview::CommonRule) {
    AddRow("File da visualizzare", {{{&txtPath}}, {{&cmdLink}}});
    AddRow("", {{{&lblNonTrovato}}});
    AddRow("", {{{&lblData}}, {{&lblDataValore}}});
    AddRow("", {{{&lblDimensione}}, {{&lblDimensioneValore}}});
    SetButtons({&cmdConferma, &cmdAnnulla}, &cmdConferma, &cmdAnnulla);
    txtPath.OnChange = [this] { Refresh(); };
    cmdLink.OnChange = [this] { Guarded([this] { Browse(); }); };
    BrowseWith(txtPath, cmdLink.OnChange);
    cmdConferma.OnChange = [this] { CloseWith(false); };
    cmdAnnulla.OnChange = [this] { CloseWith(true); };
}

void frmSelectFile::Opening() {
    cancel_ = false;
    if (FileName.empty()) {
        Refresh();
    } else {
        txtPath.SetText(FileName);
    }
}

void frmSelectFile::Browse() {
    const auto chosen = Lib().Toolkit().ChooseFile(
        {"All files (*.*)|*.*|ASL files|*.txt", 2, "txt", Folder, FileNameOf(files::ToLibrary(txtPath.Text()))});
    if (chosen) txtPath.SetText(*chosen);
}

void frmSelectFile::Refresh() {
    const ui::HourglassScope hourglass(Lib().Toolkit());
    const auto facts = files::FactsOf(txtPath.Text());
    lblNonTrovato.SetVisible(!txtPath.Text().empty() && !facts);
    if (facts) {
        lblDataValore.SetCaption(text::LongDate(facts->lastChange));
        lblDimensioneValore.SetCaption(text::FormatInteger(static_cast<std::int64_t>(facts->size), true) + " bytes");
    }
    for (ui::Label* label : {&lblData, &lblDataValore, &lblDimensione, &lblDimensioneValore}) {
        label->SetVisible(facts.has_value());
    }
}

void frmSelectFile::CloseWith(bool cancel) {
    cancel_ = cancel;
    Close();
}

void frmSelectFile::FrameClose() { CloseWith(true); }

void frmSelectFile::Closed() {
    if (!cancel_) FileName = txtPath.Text();
}

}  // namespace vlm
