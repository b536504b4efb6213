#pragma once

#include <iostream>
#include <string>

#include "detect/DetectingOpener.h"
#include "frame/Library.h"
#include "frame/PlainHostUtility.h"
#include "sqlite/SqliteConnection.h"

namespace vlm::bench {

inline data::ConnectionPtr OpenStudio(const std::string& folder) {
    return data::SqliteConnection::Connect("Provider=SQLite;Data Source=" + folder + ";Initial Catalog=Studio0012");
}

/// A library that works in a folder, with nobody who watches: a question is answered No.
class BenchHost {
public:
    explicit BenchHost(const std::string& folder) : BenchHost(folder, OpenStudio(folder)) {}
    BenchHost(const std::string& folder, data::ConnectionPtr connection) : utility_(folder + "/work") {
        library.SetConnection(std::move(connection));
    }

private:
    struct Silent : ui::Toolkit {
        void ShowModal(ui::Dialog&) override {}
        ui::Answer Show(const ui::Message& message) override {
            if (message.icon != ui::Icon::Information) std::cerr << message.text << '\n';
            return ui::Answer::No;
        }
        std::optional<std::string> ChooseFile(const ui::FileChoice&) override { return {}; }
        std::optional<std::string> ChooseFolder(const std::string&) override { return {}; }
        void SetPointer(ui::Pointer) override {}
    };
    struct NoPrograms : sys::ProgramStarter {
        void Start(const std::string&) override {}
    };
    struct NoSettings : sys::SettingsStore {
        std::string Get(const std::string&, const std::string&, const std::string&,
                        const std::string& defaultValue) const override {
            return defaultValue;
        }
        void Save(const std::string&, const std::string&, const std::string&, const std::string&) override {}
    };

    Silent toolkit_;
    vlm::PlainHostUtility utility_;
    NoSettings settings_;
    sys::SystemClock clock_;
    NoPrograms programs_;
    sys::FixedInstallFolder installFolder_;
    MissingComponents components_;
    files::DetectingOpener workbooks_;

public:
    Library library{{toolkit_, utility_, settings_, clock_, programs_, installFolder_, components_, workbooks_}};
};

}  // namespace vlm::bench
