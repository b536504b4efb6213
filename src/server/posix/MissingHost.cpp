#include "Module.h"
#include "frame/PlainHostUtility.h"
#include "values/Error.h"

namespace vlm::server {

namespace {

/// The services of a host that has given none: every one of them throws Error and says so.
class MissingHost final : public DefaultHost {
public:
    Library::Services Services() noexcept override {
        return {toolkit_, utility_, settings_, clock_, programs_, installFolder_, components_, workbooks_};
    }

private:
    [[noreturn]] static void Refuse(const char* service) {
        throw Error(std::string("L'applicazione ospite non ha fornito i suoi servizi (") + service + ").");
    }

    struct Toolkit final : ui::Toolkit {
        void ShowModal(ui::Dialog&) override { Refuse("finestre"); }
        // Nobody sees the message, so its text goes to who called.
        ui::Answer Show(const ui::Message& message) override { throw Error(message.text); }
        std::optional<std::string> ChooseFile(const ui::FileChoice&) override { Refuse("scelta dei file"); }
        std::optional<std::string> ChooseFolder(const std::string&) override { Refuse("scelta delle cartelle"); }
        void SetPointer(ui::Pointer) override {}
    };
    struct Utility final : HostUtility {
        std::string WorkFolder() const override { Refuse("cartella di lavoro"); }
        std::string SqlDate(Date, int) const override { Refuse("date SQL"); }
        std::string SqlString(std::string_view) const override { Refuse("testi SQL"); }
    };
    struct Settings final : sys::SettingsStore {
        std::string Get(const std::string&, const std::string&, const std::string&, const std::string&) const override {
            Refuse("impostazioni");
        }
        void Save(const std::string&, const std::string&, const std::string&, const std::string&) override {
            Refuse("impostazioni");
        }
    };
    struct Clock final : sys::Clock {
        Date Today() const override { Refuse("data di oggi"); }
    };
    struct Workbooks final : files::WorkbookOpener {
        std::unique_ptr<files::Workbook> Open(const std::string&) const override { Refuse("cartelle di lavoro"); }
    };
    struct Programs final : sys::ProgramStarter {
        void Start(const std::string&) override { Refuse("avvio dei programmi"); }
    };

    Toolkit toolkit_;
    Utility utility_;
    Settings settings_;
    Clock clock_;
    Programs programs_;
    sys::FixedInstallFolder installFolder_;
    MissingComponents components_;
    Workbooks workbooks_;
};

}  // namespace

std::unique_ptr<DefaultHost> MakeDefaultHost() { return std::make_unique<MissingHost>(); }

}  // namespace vlm::server
