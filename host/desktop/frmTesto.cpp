#include "frmTesto.h"

#include "TextFileRows.h"
#include "files/Paths.h"
#include "frame/ModGeneral.h"

namespace vlm::host {

frmTesto::frmTesto(const std::string& path, std::function<void()> open)
    : Dialog("frmTesto", FileNameOf(files::ToLibrary(path))) {
    AddRow("", {{{&grdTesto}}});
    SetButtons({&cmdApri, &cmdChiudi}, nullptr, &cmdChiudi);
    grdTesto.SetModel(std::make_shared<TextFileRows>(path));
    cmdApri.OnChange = std::move(open);
    cmdChiudi.OnChange = [this] { Close(); };
}

}  // namespace vlm::host
