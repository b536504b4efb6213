#include "host/desktop/frmTesto.h"

#include "frame/ModGeneral.h"
#include "host/desktop/TextFileRows.h"
#include "platform/files/Paths.h"

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
