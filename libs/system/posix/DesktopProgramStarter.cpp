#include "system/DesktopProgramStarter.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::sys {

namespace {

constexpr std::string_view kOpener = "xdg-open";

[[noreturn]] void Fail(const std::string& program, int error) {
    const std::string reason = error == ENOENT   ? "programma non trovato"
                               : error == EACCES ? "accesso negato"
                                                 : "errore di sistema " + std::to_string(error);
    throw Error("Impossibile avviare il programma \"" + program + "\": " + reason + ".");
}

/// Takes the next word off `rest`.
std::string TakeWord(std::string_view& rest) {
    std::string word;
    bool quoted = false;
    rest = text::TrimLeft(rest);
    while (!rest.empty() && (quoted || rest.front() != ' ')) {
        if (rest.front() == '"') {
            quoted = !quoted;
        } else {
            word += rest.front();
        }
        rest.remove_prefix(1);
    }
    return word;
}

/// Runs in the second child. Only what is safe after a fork; never returns.
[[noreturn]] void Become(char* const* arguments, int errors) {
    setsid();
    const int nothing = open("/dev/null", O_RDWR);
    for (int stream = 0; stream <= 2 && nothing >= 0; ++stream) dup2(nothing, stream);
    execvp(arguments[0], arguments);
    const int error = errno;
    [[maybe_unused]] const ssize_t written = write(errors, &error, sizeof error);
    _exit(127);
}

/// The first child ends at once, so that the program belongs to nobody who would have to wait for it.
void ForkTwice(char* const* arguments, int errors) {
    const pid_t child = fork();
    if (child < 0) Fail(arguments[0], errno);
    if (child == 0) {
        const pid_t program = fork();
        if (program == 0) Become(arguments, errors);
        const int error = errno;
        if (program < 0) [[maybe_unused]]
            const ssize_t written = write(errors, &error, sizeof error);
        _exit(0);
    }
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

/// A pipe that closes itself in the program that starts; what comes out of it is why none did.
class ErrorPipe {
public:
    explicit ErrorPipe(const std::string& program) {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0) Fail(program, errno);
    }
    ~ErrorPipe() {
        close(ends_[0]);
        CloseWriting();
    }
    ErrorPipe(const ErrorPipe&) = delete;
    ErrorPipe& operator=(const ErrorPipe&) = delete;

    int WritingEnd() const { return ends_[1]; }
    /// 0 when the program started.
    int Read() {
        CloseWriting();
        int error = 0;
        ssize_t count = 0;
        do count = read(ends_[0], &error, sizeof error);
        while (count < 0 && errno == EINTR);
        return count == static_cast<ssize_t>(sizeof error) ? error : 0;
    }

private:
    void CloseWriting() {
        if (ends_[1] >= 0) close(ends_[1]);
        ends_[1] = -1;
    }

    std::array<int, 2> ends_{-1, -1};
};

}  // namespace

std::vector<std::string> DesktopProgramStarter::ArgumentsOf(const std::string& commandLine) {
    std::string_view rest = commandLine;
    std::vector<std::string> arguments{TakeWord(rest)};
    if (text::EqualNoCase(arguments.front(), "Notepad.exe")) {
        std::string path = text::Without(text::Trim(rest), '"');
        std::replace(path.begin(), path.end(), '\\', '/');
        return {std::string(kOpener), path};
    }
    while (!text::Trim(rest).empty()) arguments.push_back(TakeWord(rest));
    return arguments;
}

void DesktopProgramStarter::Start(const std::string& commandLine) {
    std::vector<std::string> words = ArgumentsOf(commandLine);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    ErrorPipe errors(words.front());
    ForkTwice(arguments.data(), errors.WritingEnd());
    if (const int error = errors.Read(); error != 0) Fail(words.front(), error);
}

}  // namespace vlm::sys
