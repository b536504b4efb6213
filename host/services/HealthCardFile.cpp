#include <fstream>
#include <nlohmann/json.hpp>

#include "files/Paths.h"
#include "services/HealthCard.h"
#include "values/Error.h"

namespace vlm::host {

namespace {

using Json = nlohmann::json;

constexpr std::string_view kAnswer = "\\SistemaTS.json";

/// Reads the members of one object of the answer; throws std::string, what is wrong with one of them.
class Members {
public:
    explicit Members(const Json& object) : object_(object) {
        if (!object.is_object()) throw std::string("un elemento non è un oggetto");
    }

    bool Truth(const char* name) const {
        const Json* const member = Find(name);
        if (member == nullptr) return false;
        if (!member->is_boolean()) Refuse(name, "un valore vero/falso");
        return member->get<bool>();
    }
    std::string Text(const char* name) const {
        const Json* const member = Find(name);
        if (member == nullptr) return {};
        if (!member->is_string()) Refuse(name, "un testo");
        return member->get<std::string>();
    }
    Date Day(const char* name) const {
        const std::string content = Text(name);
        if (content.empty()) return {};
        const std::optional<Date> date = ParseIsoDate(content);
        if (!date) Refuse(name, "una data");
        return *date;
    }
    template <typename Element>
    std::vector<Element> List(const char* name, Element (*read)(const Members&)) const {
        std::vector<Element> list;
        const Json* const member = Find(name);
        if (member == nullptr) return list;
        if (!member->is_array()) Refuse(name, "un elenco");
        for (const Json& element : *member) list.push_back(read(Members(element)));
        return list;
    }

private:
    const Json* Find(const char* name) const {
        const auto found = object_.find(name);
        return found == object_.end() || found->is_null() ? nullptr : &*found;
    }
    [[noreturn]] static void Refuse(const std::string& name, const std::string& wanted) {
        throw "il campo \"" + name + "\" non è " + wanted;
    }

    const Json& object_;
};

HealthCardClient::Failure ReadFailure(const Members& failure) {
    return {failure.Text("code"), failure.Text("description")};
}

HealthCardClient::Exemption ReadExemption(const Members& exemption) {
    return {exemption.Text("code"), exemption.Day("start"), exemption.Day("end")};
}

HealthCardClient::Person ReadPerson(const Members& person) {
    return {person.Text("fiscalCode"),
            person.Text("surname"),
            person.Text("firstName"),
            person.Day("choice"),
            person.Day("expiry"),
            person.Day("suspension"),
            person.List("exemptions", ReadExemption)};
}

}  // namespace

void HealthCardFile::SetToolPath(const std::string& path) {
    const std::size_t end = path.find_last_of("\\/");
    folder_ = end == std::string::npos ? std::string() : path.substr(0, end);
}

HealthCardClient::Response HealthCardFile::Read() const {
    const std::string path = folder_ + std::string(kAnswer);
    std::ifstream file(files::ToNative(path), std::ios::binary);
    if (!file) throw Error("Il Sistema TS non risponde: manca il file " + path + ".");
    try {
        const Json answer = Json::parse(file);
        const Members members(answer);
        return {members.Truth("error"), members.List("errors", ReadFailure), members.List("persons", ReadPerson)};
    } catch (const Json::parse_error& error) {
        throw Error("Il file " + path + " non si può leggere: errore al carattere " + std::to_string(error.byte) + ".");
    } catch (const std::string& reason) {
        throw Error("Il file " + path + " non si può leggere: " + reason + ".");
    }
}

}  // namespace vlm::host
