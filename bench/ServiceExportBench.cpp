// The monthly run over a million services, measured against a bare loop over the same rows. Every measurement is a
// process of its own, so that its CPU time and its peak memory are its own; the kinds take turns, and what is printed
// is the median of the ratios of neighbours.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "BareLoop.h"
#include "export/ASLExport.h"
#include "frame/Library.h"
#include "frame/MissingComponents.h"
#include "host/DemoClinic.h"
#include "host/ReferenceHostUtility.h"
#include "platform/data/sqlite/SqliteConnection.h"
#include "platform/files/spreadsheet/detect/DetectingOpener.h"
#include "platform/system/Clock.h"
#include "regions/sicilia/ASLExportSicilia.h"

namespace {

namespace fs = std::filesystem;
using namespace vlm;

constexpr int kRounds = 5;

struct Measured {
    double cpuSeconds;
    double peakMiB;
};

/// Nobody watches: a question is answered No.
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

/// A simulation, so that every round finds the same services unsent; marking is measured apart.
bool RunExport(const std::string& folder, bool simulation) {
    Silent toolkit;
    host::ReferenceHostUtility utility(folder + "/work");
    NoSettings settings;
    sys::SystemClock clock;
    NoPrograms programs;
    sys::FixedInstallFolder installFolder;
    MissingComponents components;
    files::DetectingOpener workbooks;
    Library library({toolkit, utility, settings, clock, programs, installFolder, components, workbooks});
    ASLExport component(library, [&](std::int32_t) { return std::make_unique<ASLExportSicilia>(library); });
    component.SetConnection(
        data::SqliteConnection::Connect("Provider=SQLite;Data Source=" + folder + ";Initial Catalog=Studio0012"));
    component.Filter.periodo = 3;
    component.Filter.anno = 2011;
    component.Filter.includiPrecedenti = true;
    return component.Export(folder + "/out", ttM, simulation) == static_cast<int>(ExportOutcome::FileProduced);
}

/// The number of services is the folder's name.
int Prepare(const fs::path& folder) {
    if (fs::exists(folder / "Aldra.sqlite")) return 0;
    fs::create_directories(folder / "work");
    fs::create_directories(folder / "out");
    host::DemoOptions options;
    options.serviceRows = std::stoll(folder.filename().string());
    host::CreateDemo(folder, *Date::FromYmd(2011, 4, 10), options);
    return 0;
}

int RunTask(const std::string& task, const std::string& folder) {
    if (task == "prepare") return Prepare(folder);
    if (task == "run") return RunExport(folder, true) ? 0 : 1;
    if (task == "mark") return RunExport(folder, false) ? 0 : 1;
    return bench::StepServices(folder, task == "tuned") > 0 ? 0 : 1;
}

Measured Measure(const char* program, const std::string& task, const std::string& folder) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::execl(program, program, task.c_str(), folder.c_str(), nullptr);
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child || status != 0) {
        std::cerr << task << " failed\n";
        std::exit(1);
    }
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return {seconds(usage.ru_utime) + seconds(usage.ru_stime), static_cast<double>(usage.ru_maxrss) / 1024.0};
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// A process's peak counts what its parent held when it started, so the databases are made in a process apart too.
std::string Databases(const char* program, const fs::path& root, std::int64_t rows) {
    const std::string folder = (root / std::to_string(rows)).string();
    Measure(program, "prepare", folder);
    return folder;
}

int Compare(const char* program, const fs::path& root) {
    const std::string large = Databases(program, root, 1000000);
    const std::string small = Databases(program, root, 10000);
    std::vector<double> toDefault, toTuned, cpu, peak;
    for (int round = 0; round < kRounds; ++round) {
        const Measured bare = Measure(program, "default", large);
        const Measured run = Measure(program, "run", large);
        const Measured tuned = Measure(program, "tuned", large);
        toDefault.push_back(run.cpuSeconds / bare.cpuSeconds);
        toTuned.push_back(run.cpuSeconds / tuned.cpuSeconds);
        cpu.push_back(run.cpuSeconds);
        peak.push_back(run.peakMiB);
    }
    const Measured few = Measure(program, "run", small);
    std::printf("1,000,000 services, monthly run with earlier periods, medians of %d rounds\n", kRounds);
    std::printf("  CPU of the run                                  %.2f s\n", Median(cpu));
    std::printf("  ratio to a bare loop, engine's defaults     (a) %.2f\n", Median(toDefault));
    std::printf("  ratio to a bare loop, tuned as the library  (b) %.2f\n", Median(toTuned));
    std::printf("  peak memory, 1,000,000 / 10,000 services        %.1f / %.1f MiB\n", Median(peak), few.peakMiB);
    const Measured marked = Measure(program, "mark", large);
    std::printf("  CPU with the marking of every document          %.2f s, peak %.1f MiB\n", marked.cpuSeconds,
                marked.peakMiB);
    fs::remove_all(large);  // its documents are marked now
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc == 3) return RunTask(argv[1], argv[2]);
        if (argc == 2) return Compare(argv[0], argv[1]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    std::cerr << "usage: service_export_bench FOLDER\n";
    return 2;
}
