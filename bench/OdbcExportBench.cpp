// The monthly run over a server, measured against a bare fetch loop of the same statement through the same driver. The
// server runs in this process; the run and the loop are processes of their own.

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "BenchHost.h"
#include "Measure.h"
#include "OdbcBareLoop.h"
#include "ServiceRun.h"
#include "asltds/TdsServer.h"
#include "demo/DemoClinic.h"
#include "odbc/OdbcConnection.h"

namespace {

namespace fs = std::filesystem;
using namespace vlm;
using bench::Measure;
using bench::Measured;
using bench::Median;

constexpr int kRounds = 5;
constexpr std::int64_t kServices = 200000;

/// Tasks are "run:PORT" and "loop:PORT".
std::string ServerText(const std::string& port) {
    return "Driver={FreeTDS};Server=127.0.0.1;Port=" + port +
           ";TDS_Version=7.4;ClientCharset=UTF-8;Database=Studio0012;UID=banco";
}

int RunTask(const std::string& task, const std::string& folder) {
    if (task == "prepare") {
        bench::PrepareServices(folder, kServices);
        return 0;
    }
    const std::size_t colon = task.find(':');
    const std::string text = ServerText(task.substr(colon + 1));
    if (task.starts_with("run")) return bench::RunServices(data::odbc::OdbcConnection::Connect(text), folder, true);
    return bench::FetchServices(text) == kServices ? 0 : 1;
}

int Compare(const char* program, const std::string& root) {
    const std::string folder = (fs::path(root) / "server").string();
    Measure(program, "prepare", folder);
    const host::tds::TdsServer server(folder, {});
    const std::string port = ":" + std::to_string(server.Port());
    std::vector<double> time, cpu, rate, peak;
    for (int round = 0; round < kRounds; ++round) {
        const Measured loop = Measure(program, "loop" + port, folder);
        const Measured run = Measure(program, "run" + port, folder);
        time.push_back(run.seconds / loop.seconds);
        cpu.push_back(run.cpuSeconds / loop.cpuSeconds);
        rate.push_back(static_cast<double>(kServices) / run.seconds);
        peak.push_back(run.peakMiB);
    }
    std::printf("%lld services over a server on this machine, medians of %d rounds\n",
                static_cast<long long>(kServices), kRounds);
    std::printf("  services a second                               %.0f\n", Median(rate));
    std::printf("  time, ratio to a bare fetch loop                %.2f\n", Median(time));
    std::printf("  CPU without the server, ratio to the loop       %.2f\n", Median(cpu));
    std::printf("  peak memory                                     %.1f MiB\n", Median(peak));
    return 0;
}

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv, RunTask, Compare); }
