#pragma once

#include <filesystem>
#include <gtest/gtest.h>

#include "automation/LateBound.h"
#include "automation/Object.h"
#include "dataobjects/DataObjects.h"
#include "server/VlmASLServicesLib.h"
#include "services/Security.h"
#include "sqlite/SqliteConnection.h"
#include "support/ServiceClinic.h"

namespace vlm::test {

inline constexpr const char* kToday = "2011-04-10";

/// What a user does with a component in a clinic.
struct Job {
    int clinic;
    const char* component;
    const GUID* classId;
    std::vector<std::string> steps;
};

/// Where a host keeps things: the demo's databases, as they were made and as they are worked on.
struct Places {
    const TempFolder place;
    const std::string fresh = place / "fresh", data = place / "data", work = place / "work", out = place / "out";
    const std::string settings = place / "set.ini";

    Places() { EXPECT_EQ(RunReferenceHost({"--today", kToday, "init", fresh}).errors, ""); }

    /// The databases as they were made, and no file of an earlier run.
    void Renew() const {
        for (const std::string& old : {data, work, out}) std::filesystem::remove_all(PathOf(old));
        for (const std::string& made : {work, out}) std::filesystem::create_directory(PathOf(made));
        std::filesystem::copy(PathOf(fresh), PathOf(data), std::filesystem::copy_options::recursive);
    }
    data::ConnectionPtr Connect(int clinic) const {
        return data::SqliteConnection::Connect("Provider=SQLite;Data Source=\"" + data + "\";Initial Catalog=Studio00" +
                                               std::to_string(clinic));
    }
    std::vector<std::string> PlayDirectly(const Job& job) const {
        return RunReferenceHost(std::vector<std::string>{"--data", data, "--clinic", std::to_string(job.clinic),
                                                         "--work", work, "--settings", settings, "--today", kToday,
                                                         job.component} +
                                job.steps)
            .events;
    }
};

/// A host of the library in one clinic, whose dialogs are played.
class Host {
public:
    Host(const Places& places, int clinic, const std::vector<std::string>& steps, const char* toolkit = "console")
        : native_(places.Connect(clinic)), connection_(dataobjects::NewConnection(native_)) {
        const std::string installFolder = places.data + "\\Installazione";
        std::vector<const char*> words;
        for (const std::string& step : steps) words.push_back(step.c_str());
        VlmHost host{};
        host.size = sizeof(host);
        host.toolkit = toolkit;
        host.steps = words.data();
        host.stepCount = static_cast<std::uint32_t>(words.size());
        host.tell = Tell;
        host.context = &told_;
        host.workFolder = places.work.c_str();
        host.installFolder = installFolder.c_str();
        host.settingsFile = places.settings.c_str();
        host.today = kToday;
        EXPECT_EQ(SetHost(&host), S_OK);
    }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host() { EXPECT_EQ(SetHost(nullptr), S_OK); }

    com::Ref<IDispatch> Create(const GUID& classId) const {
        com::Ref<IDispatch> component;
        EXPECT_EQ(
            CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, com::kIdOf<IDispatch>, component.ReceiveAny()),
            S_OK);
        if (com::Same(classId, server::kASLImportPatientClass)) {
            const com::LateBound import(component);
            import.PutRef("LockSrv", com::Make<host::LockService>(native_, "OPERATORE", clock_).Get());
            import.PutRef("Rights", com::Make<host::UserRights>("OPERATORE").Get());
        }
        return component;
    }
    _Connection* Connection() const { return connection_.Get(); }
    std::vector<std::string> Events() const { return LinesOf(told_); }

private:
    static void VLM_CALL Tell(void* told, std::int32_t, const char* text) {
        static_cast<std::string*>(told)->append(text);
    }
    /// Of the registered library, which stays loaded; the program may have another one inside.
    static HRESULT SetHost(const VlmHost* host) {
        static const auto entry =
            reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"VlmASLServicesLib.dll"), "VlmSetHost"));
        return reinterpret_cast<decltype(&VlmSetHost)>(entry)(host);
    }

    const data::ConnectionPtr native_;
    const com::Ref<_Connection> connection_;
    const sys::FixedClock clock_{*Date::FromYmd(2011, 4, 10)};
    std::string told_;
};

}  // namespace vlm::test
