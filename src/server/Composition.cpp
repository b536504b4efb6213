#include "Composition.h"

#include <cstring>
#include <filesystem>
#include <sstream>
#include <streambuf>

#include "automation/ErrorReport.h"
#include "console/JsonEventLog.h"
#include "console/TextEventLog.h"
#include "files/Paths.h"
#include "values/Error.h"

namespace vlm::server {

namespace {

/// No toolkit was named and the machine has no windows.
struct NoWindows final : ui::Toolkit {
    [[noreturn]] static void Refuse() {
        throw Error("Le finestre non sono disponibili: l'applicazione ospite non ha indicato come mostrarle.");
    }
    void ShowModal(ui::Dialog&) override { Refuse(); }
    // Nobody sees the message, so its text goes to who called.
    ui::Answer Show(const ui::Message& message) override { throw Error(message.text); }
    std::optional<std::string> ChooseFile(const ui::FileChoice&) override { Refuse(); }
    std::optional<std::string> ChooseFolder(const std::string&) override { Refuse(); }
    void SetPointer(ui::Pointer) override {}
};

class HostPrograms final : public sys::ProgramStarter {
public:
    explicit HostPrograms(const VlmHost& host) : start_(host.start), context_(host.context) {}
    void Start(const std::string& commandLine) override {
        SetErrorInfo(0, nullptr);
        const HRESULT done = start_(context_, commandLine.c_str());
        if (FAILED(done)) throw com::TakeError(done, "L'avvio di " + commandLine);
    }

private:
    decltype(VlmHost::start) start_;
    void* context_;
};

std::string TextOf(const char* text) { return text == nullptr ? std::string() : text; }

std::string TemporaryFolder() {
    std::error_code failure;
    return files::TextOf(std::filesystem::temp_directory_path(failure));
}

std::string WithoutEnd(std::string folder) {
    while (folder.size() > 1 && (folder.back() == '\\' || folder.back() == '/')) folder.pop_back();
    return folder;
}

std::unique_ptr<sys::Clock> ClockOf(const char* today) {
    if (today == nullptr) return std::make_unique<sys::SystemClock>();
    const std::optional<Date> date = ParseIsoDate(today);
    if (!date) throw Error("today: \"" + TextOf(today) + "\" non è una data AAAA-MM-GG.", E_INVALIDARG);
    return std::make_unique<sys::FixedClock>(*date);
}

/// Of a host that was compiled against an earlier header, or a later one, what both know.
VlmHost Known(const VlmHost& given) {
    if (given.size < sizeof given.size) throw Error("VlmHost: size non è indicato.", E_INVALIDARG);
    VlmHost host{};
    std::memcpy(&host, &given, given.size < sizeof host ? given.size : sizeof host);
    return host;
}

}  // namespace

/// What is written goes to the host whenever it is flushed.
class Composition::Told final : public std::stringbuf {
public:
    explicit Told(const Composition& owner) : owner_(owner) {}

protected:
    int sync() override {
        const std::string text = str();
        str({});
        if (!text.empty() && owner_.tell_ != nullptr) owner_.tell_(owner_.context_, VLM_TELL_EVENT, text.c_str());
        return 0;
    }

private:
    const Composition& owner_;
};

class Composition::Utility final : public PlainHostUtility {
public:
    explicit Utility(const VlmHost& host)
        : PlainHostUtility(WithoutEnd(host.workFolder != nullptr ? host.workFolder : TemporaryFolder())),
          fixed_(host.workFolder != nullptr),
          object_(com::Ref<IDispatch>(host.utility)) {}

    bool HoldsObject() const noexcept { return static_cast<bool>(object_); }
    std::string WorkFolder() const override {
        const bool ask = !fixed_ && object_ && object_.Has("WorkFolder");
        return ask ? WithoutEnd(object_.Get("WorkFolder").Text()) : PlainHostUtility::WorkFolder();
    }

private:
    bool fixed_;
    com::LateBound object_;
};

Composition::Composition(const VlmHost& given) {
    const VlmHost host = Known(given);
    tell_ = host.tell;
    context_ = host.context;
    settings_ =
        host.settingsFile == nullptr ? machine::Settings() : std::make_unique<sys::IniSettingsStore>(host.settingsFile);
    MakeToolkit(host);
    utility_ = std::make_unique<Utility>(host);
    clock_ = ClockOf(host.today);
    if (host.start != nullptr) {
        programs_ = std::make_unique<HostPrograms>(host);
    } else if (log_) {
        programs_ = std::make_unique<ui::LoggedProgramStarter>(*log_);
    } else {
        programs_ = machine::Programs();
    }
    installFolder_ = host.installFolder == nullptr
                         ? machine::InstallFolder()
                         : std::make_unique<sys::FixedInstallFolder>(WithoutEnd(host.installFolder));
    ownComponents_ = std::make_unique<archive::ArchiveComponents>(*clock_);
    if (host.components != nullptr) {
        factory_ = std::make_unique<HostFactory>(com::Ref<IDispatch>(host.components), *ownComponents_);
    }
    workbooks_ = machine::Workbooks();
}

Composition::~Composition() = default;

void Composition::MakeToolkit(const VlmHost& host) {
    const std::string name = TextOf(host.toolkit);
    if (name == "console") return MakeConsole(host);
    toolkit_ = machine::Windows(name, *settings_);
    if (toolkit_) return;
    if (!name.empty()) throw Error("Il toolkit \"" + name + "\" non è disponibile.", E_INVALIDARG);
    toolkit_ = std::make_shared<NoWindows>();
}

void Composition::MakeConsole(const VlmHost& host) {
    told_ = std::make_unique<Told>(*this);
    out_.rdbuf(told_.get());
    if (host.readable != 0) {
        log_ = std::make_unique<ui::TextEventLog>(out_);
    } else {
        log_ = std::make_unique<ui::JsonEventLog>(out_);
    }
    if (host.steps == nullptr && host.stepCount != 0) throw Error("VlmHost: mancano i passi (steps).", E_POINTER);
    std::vector<std::string> words;
    for (std::uint32_t i = 0; i < host.stepCount; ++i) words.push_back(TextOf(host.steps[i]));
    try {
        const auto console = std::make_shared<ui::ConsoleToolkit>(ui::ConsoleScript(words), *log_);
        console_ = console.get();
        toolkit_ = console;
    } catch (const ui::ScriptError& error) {
        if (tell_ != nullptr) tell_(context_, VLM_TELL_FAILED, error.what());
        throw Error(error.what(), E_INVALIDARG);
    }
}

Library::Services Composition::Services() noexcept {
    HostComponents* components = factory_.get();
    if (components == nullptr) components = ownComponents_.get();
    return {*toolkit_, *utility_, *settings_, *clock_, *programs_, *installFolder_, *components, *workbooks_};
}

bool Composition::HoldsObjects() const noexcept { return factory_ || utility_->HoldsObject(); }

void Composition::HelpShown(std::int32_t context) {
    if (log_) log_->Help(context);
}

void Composition::TellOfSteps() {
    if (console_ == nullptr || tell_ == nullptr) return;
    if (console_->Failure() != nullptr) return tell_(context_, VLM_TELL_FAILED, console_->Failure()->what());
    std::ostringstream unused;
    console_->ReportUnused(unused);
    if (!unused.str().empty()) tell_(context_, VLM_TELL_UNUSED, unused.str().c_str());
}

}  // namespace vlm::server
