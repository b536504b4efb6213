#include "system/ShellProgramStarter.h"

#include <windows.h>
// It builds on windows.h.
#include <shellapi.h>

#include "values/Error.h"
#include "values/Utf16.h"

namespace vlm::sys {

namespace {

/// The length of the program at the beginning of a command line, quotes included.
std::size_t ProgramLength(std::string_view commandLine) {
    bool quoted = false;
    for (std::size_t i = 0; i < commandLine.size(); ++i) {
        if (commandLine[i] == '"') quoted = !quoted;
        if (commandLine[i] == ' ' && !quoted) return i;
    }
    return commandLine.size();
}

[[noreturn]] void Fail(const std::string& program, DWORD error) {
    const std::string reason = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? "programma non trovato"
                               : error == ERROR_ACCESS_DENIED                                 ? "accesso negato"
                                                              : "errore di sistema " + std::to_string(error);
    throw Error("Impossibile avviare il programma \"" + program + "\": " + reason + ".");
}

}  // namespace

void ShellProgramStarter::Start(const std::string& commandLine) {
    const std::string_view line = text::TrimLeft(commandLine);
    const std::size_t length = ProgramLength(line);
    const std::string program = text::Without(line.substr(0, length), '"');
    if (program.empty()) Fail(program, ERROR_FILE_NOT_FOUND);
    const std::wstring file = text::ToUtf16<wchar_t>(program);
    const std::wstring arguments = text::ToUtf16<wchar_t>(text::TrimLeft(line.substr(length)));
    SHELLEXECUTEINFOW start{};
    start.cbSize = sizeof start;
    start.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    start.lpFile = file.c_str();
    start.lpParameters = arguments.c_str();
    start.nShow = SW_SHOWNORMAL;
    if (ShellExecuteExW(&start) == 0) Fail(program, GetLastError());
}

}  // namespace vlm::sys
