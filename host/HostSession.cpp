#include "HostSession.h"

#include <filesystem>
#include <optional>

#include "ClinicDatabase.h"
#include "ado/ConnectionObject.h"
#include "automation/ErrorReport.h"
#include "automation/Object.h"
#include "demo/DemoClinic.h"
#include "server/VlmASLServicesLib.h"
#include "services/HealthCard.h"
#include "services/Security.h"

namespace vlm::host {

namespace fs = std::filesystem;

namespace {

constexpr const char* kImport = "ASLImportPatient";

/// Absolute, because a program that is started on a file may stand in another folder; without a "/" at its end.
std::string FolderText(const fs::path& folder) {
    std::string text = fs::absolute(folder).string();
    while (text.size() > 1 && text.back() == '/') text.pop_back();
    return text;
}

std::string WorkFolder(const HostOptions& options) {
    const fs::path folder =
        options.workFolder.empty() ? fs::temp_directory_path() / "aldra-lavoro" : fs::path(options.workFolder);
    if (options.workFolder.empty()) fs::create_directories(folder);
    return FolderText(folder);
}

/// As given, else the one that goes with the databases; "" for none.
std::string InstallationFolder(const HostOptions& options) {
    if (!options.installFolder.empty()) return FolderText(options.installFolder);
    const fs::path beside = fs::path(options.dataFolder) / kInstallationFolder;
    std::error_code ignored;
    return fs::is_directory(beside, ignored) ? FolderText(beside) : std::string();
}

/// The host's help as an automation object: a writable hWnd, and ShowContext, whose context number is told to whoever
/// shows it.
class LoggedHelp final : public com::DispatchObject<IDispatch> {
public:
    explicit LoggedHelp(std::function<void(std::int32_t context)> show) : show_(std::move(show)) {}

private:
    std::span<const com::Member> Members() const noexcept override;
    void* Find(const IID& iid) noexcept override;

    HRESULT STDMETHODCALLTYPE PutWindow(std::int32_t) { return S_OK; }
    HRESULT STDMETHODCALLTYPE ShowContext(std::int32_t context);

    std::function<void(std::int32_t)> show_;
};

std::span<const com::Member> LoggedHelp::Members() const noexcept {
    static constexpr std::array kMembers = {
        com::Put<&LoggedHelp::PutWindow>("hWnd", 1, VT_I4),
        com::Method<&LoggedHelp::ShowContext>("ShowContext", 2, VT_EMPTY, {{"Context", VT_I4}}),
    };
    return kMembers;
}

void* LoggedHelp::Find(const IID& iid) noexcept {
    if (com::Same(iid, server::kCHMObjectId)) return static_cast<IDispatch*>(this);
    return DispatchObject::Find(iid);
}

HRESULT LoggedHelp::ShowContext(std::int32_t context) {
    return com::Guarded("aslhost", server::kCHMObjectId, [&] { show_(context); });
}

/// The component library with what this host hands in, for as long as it lives. Everything that Create gave must be let
/// go before.
class LoadedLibrary {
public:
    /// Throws Error when it cannot be had that way, or objects of an earlier use are still alive.
    explicit LoadedLibrary(const VlmHost& host);
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary() { VlmSetHost(nullptr); }

    /// A new component, from its class's factory.
    com::LateBound Create(const GUID& classId) const;
};

LoadedLibrary::LoadedLibrary(const VlmHost& host) {
    const HRESULT result = VlmSetHost(&host);
    if (FAILED(result)) throw com::TakeError(result, "L'avvio della libreria");
    if (result != S_OK) throw Error("La libreria dei componenti è già in uso.");
}

com::LateBound LoadedLibrary::Create(const GUID& classId) const {
    com::Ref<IClassFactory> factory;
    HRESULT result = DllGetClassObject(classId, com::kIdOf<IClassFactory>, factory.ReceiveAny());
    com::Ref<IDispatch> component;
    if (SUCCEEDED(result)) {
        result = factory->CreateInstance(nullptr, com::kIdOf<IDispatch>, component.ReceiveAny());
    }
    if (FAILED(result)) throw com::TakeError(result, "La creazione del componente");
    return com::LateBound(std::move(component));
}

void VLM_CALL Tell(void* context, std::int32_t kind, const char* text) noexcept {
    const auto& face = *static_cast<const HostSession::Face*>(context);
    if (face.tell) face.tell(kind, text);
}

std::int32_t VLM_CALL Start(void* context, const char* command) noexcept {
    return com::Guarded("aslhost", com::kNoId,
                        [&] { static_cast<const HostSession::Face*>(context)->programs->Start(command); });
}

/// Nothing for what is no component with a dialog to open.
std::optional<GUID> ClassOf(const std::string& component) {
    if (component == "ASLExport") return server::kASLExportClass;
    if (component == "ASLPanoramico") return server::kASLPanoramicoClass;
    if (component == "ExportProgetti") return server::kExportProgettiClass;
    if (component == "ASLImportPatient") return server::kASLImportPatientClass;
    return std::nullopt;
}

}  // namespace

HostSession::HostSession(const HostOptions& options, const Face& face)
    : options_(options),
      face_(face),
      workFolder_(WorkFolder(options)),
      installFolder_(InstallationFolder(options)),
      fixedClock_(options.today.value_or(Date{})) {}

sys::Clock& HostSession::Clock() { return options_.today ? static_cast<sys::Clock&>(fixedClock_) : systemClock_; }

/// What an export needs beside the connection is the help, what the import needs is the host's security.
void HostSession::GiveServices(const com::LateBound& component, const data::ConnectionPtr& connection) {
    component.PutRef("Connection", com::Make<data::ado::ConnectionObject>(connection).Get());
    if (options_.command != kImport) {
        component.PutRef("CHMObject", com::Make<LoggedHelp>(face_.showHelp).Get());
        return;
    }
    component.PutRef("LockSrv", com::Make<LockService>(connection, options_.user, Clock()).Get());
    component.PutRef("Rights", com::Make<UserRights>(options_.user).Get());
}

void HostSession::Open() {
    const std::string today = options_.today ? IsoDate(*options_.today) : std::string();
    const com::Ref<IDispatch> components = MakeHealthCardServices([] { return std::make_unique<HealthCardFile>(); });
    std::vector<const char*> steps;
    for (const std::string& word : options_.words) steps.push_back(word.c_str());
    VlmHost host{};
    host.size = sizeof host;
    host.toolkit = face_.toolkit.c_str();
    host.steps = steps.data();
    host.stepCount = static_cast<std::uint32_t>(steps.size());
    host.readable = face_.readable ? 1 : 0;
    host.tell = Tell;
    host.start = face_.programs != nullptr ? Start : nullptr;
    host.context = &face_;
    host.workFolder = workFolder_.c_str();
    host.installFolder = installFolder_.c_str();
    host.settingsFile = options_.settingsFile.empty() ? nullptr : options_.settingsFile.c_str();
    host.today = today.empty() ? nullptr : today.c_str();
    host.components = components.Get();
    const LoadedLibrary library(host);
    const std::optional<GUID> classId = ClassOf(options_.command);
    if (!classId) {
        throw UsageError("Componente sconosciuto: " + options_.command +
                         ". Si può aprire ASLExport, ASLPanoramico, ExportProgetti o ASLImportPatient.");
    }
    const com::LateBound component = library.Create(*classId);
    GiveServices(component, OpenClinic(options_));
    component.Call("ShowDialog");
}

}  // namespace vlm::host
