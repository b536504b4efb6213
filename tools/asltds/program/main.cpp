#include <charconv>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string_view>

#include "asltds/TdsServer.h"
#include "values/Error.h"

namespace {

constexpr const char* kUsage =
    "Uso: asltds --data CARTELLA [--port 11433] [--user NOME --password TESTO]\n"
    "Serve i database della cartella a chi si collega a questa macchina con il protocollo TDS, fino a "
    "un'interruzione.\n"
    "La porta 0 ne prende una libera. La password può stare anche nella variabile d'ambiente ASLTDS_PWD.\n";
constexpr int kUsageStatus = 2;

struct CommandLine {
    std::string folder;
    vlm::host::tds::TdsServer::Options options{.port = 11433};
};

int PortOf(std::string_view text) {
    int port = -1;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (failure != std::errc() || end != text.data() + text.size() || port < 0 || port > 65535) {
        throw vlm::Error("La porta non è un numero fra 0 e 65535: " + std::string(text));
    }
    return port;
}

CommandLine Parse(int count, char** arguments) {
    CommandLine line;
    if (const char* password = std::getenv("ASLTDS_PWD")) line.options.password = password;
    for (int at = 1; at < count; at += 2) {
        const std::string_view name = arguments[at];
        if (at + 1 == count) throw vlm::Error("Dopo " + std::string(name) + " manca il valore.");
        const char* const value = arguments[at + 1];
        if (name == "--data") {
            line.folder = value;
        } else if (name == "--port") {
            line.options.port = PortOf(value);
        } else if (name == "--user") {
            line.options.user = value;
        } else if (name == "--password") {
            line.options.password = value;
        } else {
            throw vlm::Error("Opzione sconosciuta: " + std::string(name));
        }
    }
    if (line.folder.empty()) throw vlm::Error("Manca la cartella dei database (--data).");
    return line;
}

/// Threads that start from here on leave interruptions to who waits for them.
sigset_t BlockInterruptions() {
    sigset_t interruptions;
    sigemptyset(&interruptions);
    sigaddset(&interruptions, SIGINT);
    sigaddset(&interruptions, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &interruptions, nullptr);
    return interruptions;
}

}  // namespace

int main(int count, char** arguments) {
    std::optional<CommandLine> line;
    try {
        line = Parse(count, arguments);
    } catch (const vlm::Error& error) {
        std::cerr << error.what() << "\n" << kUsage;
        return kUsageStatus;
    }
    try {
        const sigset_t interruptions = BlockInterruptions();
        const vlm::host::tds::TdsServer server(line->folder, line->options);
        std::cout << "In ascolto su 127.0.0.1:" << server.Port() << std::endl;
        int received = 0;
        sigwait(&interruptions, &received);
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
