#include "desktop/WindowedProgramStarter.h"

#include <string_view>

#include "frmAnomalie.h"
#include "frmTesto.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::host {

namespace {

constexpr std::string_view kEditor = "Notepad.exe ";

}  // namespace

void WindowedProgramStarter::Start(const std::string& commandLine) {
    const std::string_view program = std::string_view(commandLine).substr(0, kEditor.size());
    if (!text::EqualNoCase(program, kEditor)) return machine_.Start(commandLine);
    ShowText(text::Without(text::Trim(std::string_view(commandLine).substr(kEditor.size())), '"'), commandLine);
}

void WindowedProgramStarter::ShowText(const std::string& path, const std::string& commandLine) {
    const auto open = [this, commandLine] { StartOnMachine(commandLine); };
    const auto report = std::make_shared<const AnomalyReport>(path);
    if (report->IsReport()) {
        frmAnomalie list(report, open);
        toolkit_.ShowModal(list);
    } else {
        frmTesto lines(path, open);
        toolkit_.ShowModal(lines);
    }
}

void WindowedProgramStarter::StartOnMachine(const std::string& commandLine) {
    try {
        machine_.Start(commandLine);
    } catch (const std::exception& error) {
        toolkit_.Show({error.what(), "Aldra", ui::Icon::Critical, ui::Buttons::Ok});
    }
}

}  // namespace vlm::host
