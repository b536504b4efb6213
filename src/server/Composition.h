#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "HostFactory.h"
#include "archive/ArchiveComponents.h"
#include "console/ConsoleToolkit.h"
#include "frame/Library.h"
#include "frame/PlainHostUtility.h"
#include "server/VlmHost.h"

namespace vlm::server {

/// What this machine has for a host that leaves it out.
namespace machine {
/// The windows of that name, "" for the machine's own; null when there are none. Throws Error when they cannot be
/// shown.
std::shared_ptr<ui::Toolkit> Windows(const std::string& name, sys::SettingsStore& settings);
std::unique_ptr<sys::SettingsStore> Settings();
std::unique_ptr<sys::ProgramStarter> Programs();
std::unique_ptr<sys::InstallFolder> InstallFolder();
std::unique_ptr<files::WorkbookOpener> Workbooks();
}  // namespace machine

/// The services of the library, put together of what a host hands in and what the machine has.
class Composition {
public:
    /// Keeps nothing of `host` but its objects, functions and context. Throws Error for what cannot be.
    explicit Composition(const VlmHost& host);
    Composition(const Composition&) = delete;
    Composition& operator=(const Composition&) = delete;
    ~Composition();

    /// They live as long as this object.
    Library::Services Services() noexcept;
    /// Whether it keeps objects of the host's.
    bool HoldsObjects() const noexcept;
    void HelpShown(std::int32_t context);
    /// What became of the steps, once no more of them can be done.
    void TellOfSteps();

private:
    class Told;
    class Utility;

    void MakeConsole(const VlmHost& host);
    void MakeToolkit(const VlmHost& host);

    decltype(VlmHost::tell) tell_;
    void* context_;
    std::unique_ptr<Told> told_;
    std::ostream out_{nullptr};
    std::unique_ptr<ui::EventLog> log_;  // of the console, else null
    std::unique_ptr<sys::SettingsStore> settings_;
    std::shared_ptr<ui::Toolkit> toolkit_;
    ui::ConsoleToolkit* console_ = nullptr;
    std::unique_ptr<Utility> utility_;
    std::unique_ptr<sys::Clock> clock_;
    std::unique_ptr<sys::ProgramStarter> programs_;
    std::unique_ptr<sys::InstallFolder> installFolder_;
    std::unique_ptr<archive::ArchiveComponents> ownComponents_;
    std::unique_ptr<HostFactory> factory_;  // null when the host has none
    std::unique_ptr<files::WorkbookOpener> workbooks_;
};

}  // namespace vlm::server
