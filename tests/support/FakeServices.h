#pragma once

#include <map>
#include <string>

#include "frame/Library.h"
#include "frame/PlainHostUtility.h"
#include "values/Error.h"

namespace vlm::test {

struct FakeServices {
    explicit FakeServices(const data::ConnectionPtr& connection = nullptr) { library.SetConnection(connection); }

    struct Settings : sys::SettingsStore {
        std::map<std::string, std::string> values;
        std::string Get(const std::string&, const std::string&, const std::string& key,
                        const std::string& defaultValue) const override {
            const auto at = values.find(key);
            return at == values.end() ? defaultValue : at->second;
        }
        void Save(const std::string&, const std::string&, const std::string& key, const std::string& value) override {
            values[key] = value;
        }
    };
    struct Silent : ui::Toolkit {
        void ShowModal(ui::Dialog&) override {}
        ui::Answer Show(const ui::Message& message) override {
            messages.push_back(message.text);
            return ui::Answer::No;
        }
        std::optional<std::string> ChooseFile(const ui::FileChoice&) override { return {}; }
        std::optional<std::string> ChooseFolder(const std::string&) override { return {}; }
        void SetPointer(ui::Pointer) override {}
        std::vector<std::string> messages;
    };
    struct NoWorkbooks : files::WorkbookOpener {
        std::unique_ptr<files::Workbook> Open(const std::string& path) const override {
            throw Error("Nessun foglio: " + path);
        }
    };
    struct Programs : sys::ProgramStarter {
        void Start(const std::string& commandLine) override { started.push_back(commandLine); }
        std::vector<std::string> started;
    };

    Silent toolkit;
    PlainHostUtility utility{"work"};
    Settings settings;
    sys::FixedClock clock{Date(40643)};  // 10/04/2011
    Programs programs;
    sys::FixedInstallFolder installFolder;
    MissingComponents components;
    NoWorkbooks workbooks;
    Library::Services With(ui::Toolkit& shown) {
        return {shown, utility, settings, clock, programs, installFolder, components, workbooks};
    }
    Library library{With(toolkit)};
};

}  // namespace vlm::test
