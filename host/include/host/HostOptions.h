#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "values/Date.h"

namespace vlm::host {

/// A command line that cannot be understood; the text is for the person who typed it.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The first clinic of the demo.
inline constexpr int kUsualClinic = 12;

/// What the command line of `aslhost` says.
struct HostOptions {
    std::string dataFolder = ".";
    std::string odbcText;            // "" = the databases of dataFolder; may hold a password, so no message says it
    std::optional<int> clinic;       // without it the one that the connection text names, else kUsualClinic
    std::string workFolder;          // "" = a folder of the host's own
    std::string installFolder;       // "" = not given
    std::string user = "OPERATORE";  // who works with the host: in whose name records are locked
    std::string settingsFile;        // "" = the user's
    std::optional<Date> today;
    int waitSeconds = 10;  // for a database of dataFolder that somebody else writes
    std::string ui;        // "console", "qt" or "" for what fits
    bool json = false;
    bool text = false;
    bool help = false;

    std::string command;             // "init", a component's name, "" for none
    std::vector<std::string> words;  // init: the folder, if any; a component: the steps

    /// Throws UsageError.
    static HostOptions Parse(const std::vector<std::string>& arguments);
    static const char* Usage();
};

}  // namespace vlm::host
