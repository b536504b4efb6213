// The monthly run over a million services, measured against a bare loop over the same rows. Every measurement is a
// process of its own, so that its CPU time and its peak memory are its own; the kinds take turns, and what is printed
// is the median of the ratios of neighbours.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "BareLoop.h"
#include "BenchHost.h"
#include "Measure.h"
#include "ServiceRun.h"

namespace {

namespace fs = std::filesystem;
using namespace vlm;
using bench::Measure;
using bench::Measured;
using bench::Median;

constexpr int kRounds = 5;

int RunTask(const std::string& task, const std::string& folder) {
    if (task == "prepare") {
        bench::PrepareServices(folder, std::stoll(fs::path(folder).filename().string()));  // the folder says how many
        return 0;
    }
    if (task == "run" || task == "mark") {
        return bench::RunServices(bench::OpenStudio(folder), folder, task == "run");
    }
    return bench::StepServices(folder, task == "tuned") > 0 ? 0 : 1;
}

/// A process's peak counts what its parent held when it started, so the databases are made in a process apart too.
std::string Databases(const char* program, const fs::path& root, std::int64_t rows) {
    const std::string folder = (root / std::to_string(rows)).string();
    Measure(program, "prepare", folder);
    return folder;
}

int Compare(const char* program, const std::string& root) {
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

int main(int argc, char** argv) { return bench::Main(argc, argv, RunTask, Compare); }
