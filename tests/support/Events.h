#pragma once

#include <string>
#include <vector>

#include "support/ServiceClinic.h"

/// Events of the reference host, as its log writes them.
namespace vlm::test {

inline std::string FieldOf(const std::string& event, const std::string& key) {
    const std::size_t at = event.find("\"" + key + "\":");
    if (at == std::string::npos) return "<no " + key + ">";
    const std::size_t start = at + key.size() + 3;
    const char* const end = event[start] == '[' ? "]" : ",}";
    return event.substr(start, event.find_first_of(end, start) - start);
}

/// One field of the first state event of a control.
inline std::string StateOf(const HostRun& run, const std::string& control, const std::string& key) {
    for (const std::string& event : run.Of("state")) {
        if (event.find("\"name\":\"" + control + "\"") != std::string::npos) return FieldOf(event, key);
    }
    return "<no " + control + ">";
}

/// One field of every state event, joined by blanks.
inline std::string StatesOf(const HostRun& run, const std::string& key) {
    std::string fields;
    for (const std::string& event : run.Of("state")) fields += (fields.empty() ? "" : " ") + FieldOf(event, key);
    return fields;
}

/// The same for a field that is true or false: "+" and "-".
inline std::string FlagsOf(const HostRun& run, const std::string& key) {
    std::string flags;
    for (const std::string& event : run.Of("state")) flags += FieldOf(event, key) == "true" ? '+' : '-';
    return flags;
}

/// `text` as it stands in JSON.
inline std::string MessageEvent(const std::string& text, const std::string& caption, const std::string& icon) {
    return R"({"event":"message","text":")" + text + R"(","caption":")" + caption + R"(","icon":")" + icon +
           R"(","buttons":"ok","answer":"ok"})";
}

inline std::string MissingEvent(const std::string& field) {
    return MessageEvent("Impossibile proseguire! Il campo '" + field + "' non può contenere un valore nullo.",
                        "Attenzione!", "critical");
}

inline std::string ErrorEvent(const std::string& description) {
    return MessageEvent(
        "Si è verificato un errore durante la generazione del file.\\r\\n"
        "Il messaggio tecnico dell'errore è: " +
            description,
        "Aldra", "critical");
}

inline std::string DoneEvent(const std::string& text, int lines) {
    return MessageEvent(text + "\\r\\nElaborate " + std::to_string(lines) + " linee.", "Generazione file per ASL",
                        "information");
}

inline const std::string kInvalidPathEvent = MessageEvent(
    "Impossibile proseguire! Il campo 'Destinazione' contiene un percorso non valido.", "Attenzione!", "critical");
inline const std::string kNoDataEvent = MessageEvent("Nessun dato da elaborare.", "Attenzione!", "information");
inline const std::string kHourglass = R"({"event":"pointer","shape":"hourglass"})";
inline const std::string kNormal = R"({"event":"pointer","shape":"normal"})";
inline const std::string kConcludedEvent = MessageEvent("Elaborazione conclusa.", "Aldra", "information");

inline std::string FocusEvent(const std::string& control) { return R"({"event":"focus","name":")" + control + "\"}"; }

/// A path as it stands in JSON.
inline std::string InJson(const std::string& path) {
    std::string escaped;
    for (const char c : path) escaped.append(c == '\\' ? 2 : 1, c);
    return escaped;
}

inline std::string NotepadEvent(const std::string& path) {
    return R"({"event":"run","command":"Notepad.exe )" + InJson(path) + "\"}";
}

inline Lines Inside(const HostRun& run) {
    if (run.events.size() < 2) return {"<no dialog>"};
    return {run.events.begin() + 1, run.events.end() - 1};
}

}  // namespace vlm::test
