// A delimited patient list against an archive of a million patients, measured against plain loops over the same files
// and the same database. Every measurement is a process of its own; what is printed are medians of ratios of
// neighbours.

#include <cstdio>
#include <filesystem>
#include <malloc.h>
#include <string>
#include <vector>

#include "BenchHost.h"
#include "ImportSources.h"
#include "Measure.h"
#include "PlainImport.h"
#include "elements/ArchiveMatcher.h"
#include "import/ASLImportPatient.h"

namespace {

namespace fs = std::filesystem;
using namespace vlm;
using bench::Measure;
using bench::Median;

constexpr int kRounds = 5;

ElementListPtr ReadList(bench::BenchHost& host, const std::string& folder, long lines) {
    ASLImportPatient component(host.library);
    return component.ReadWithTemplate(bench::ListOf(folder, lines), bench::TemplateOf(folder));
}

double BytesInUse() {
    const struct mallinfo2 use = mallinfo2();
    return static_cast<double>(use.uordblks + use.hblkhd);
}

/// What the elements of the large list and the snapshot of the archive take, in bytes.
int PrintMemory(const std::string& folder) {
    bench::BenchHost host(folder);
    constexpr double kMillion = 1000000;
    ReadList(host, folder, 10000);  // what the engine keeps is there from here on
    const double empty = BytesInUse();
    const ElementListPtr elements = ReadList(host, folder, 1000000);
    const double listed = BytesInUse();
    ArchiveMatcher archive(host.library);
    archive.FindPatientByCode("T00000001");
    archive.FindPatientByCode("nessuno");
    archive.FindPatientByFiscalCode("nessuno");
    std::printf("  memory of an element, of an archive patient      %.0f, %.0f bytes\n", (listed - empty) / kMillion,
                (BytesInUse() - listed) / kMillion);
    return 0;
}

int RunTask(const std::string& task, const std::string& folder) {
    if (task == "prepare") return bench::WriteImportSources(folder), 0;
    if (task == "memory") return PrintMemory(folder);
    if (task == "load") return bench::LoadMaps(folder) > 0 ? 0 : 1;
    const std::string kind = task.substr(0, task.find(' '));
    const long lines = std::stol(task.substr(task.find(' ') + 1));
    const std::string list = bench::ListOf(folder, lines);
    if (kind == "split") return bench::SplitOnly(list) == lines * 10 ? 0 : 1;
    if (kind == "maps") return bench::ImportWithMaps(folder, list) > 0 ? 0 : 1;
    bench::BenchHost host(folder);
    const ElementListPtr elements = ReadList(host, folder, lines);
    return elements && elements->RecordCount() == lines ? 0 : 1;
}

int Compare(const char* program, const std::string& folder) {
    Measure(program, "prepare", folder);
    std::vector<double> toSplit, toMaps, small, cpu[3];
    for (int round = 0; round < kRounds; ++round) {
        const double split = Measure(program, "split 1000000", folder).cpuSeconds;
        const double read = Measure(program, "read 1000000", folder).cpuSeconds;
        const double maps = Measure(program, "maps 1000000", folder).cpuSeconds;
        const double few = Measure(program, "read 10000", folder).cpuSeconds;
        const double load = Measure(program, "load", folder).cpuSeconds;
        toSplit.push_back(read / split);
        toMaps.push_back(read / maps);
        small.push_back(few / load);
        cpu[0].push_back(few);
        cpu[1].push_back(Measure(program, "read 100000", folder).cpuSeconds);
        cpu[2].push_back(read);
    }
    std::printf("1,000,000 delimited lines against 1,000,000 archive patients, medians of %d rounds\n", kRounds);
    std::printf("  CPU of 10,000 / 100,000 / 1,000,000 lines        %.2f / %.2f / %.2f s\n", Median(cpu[0]),
                Median(cpu[1]), Median(cpu[2]));
    std::printf("  ratio to reading and splitting the file      (a) %.2f\n", Median(toSplit));
    std::printf("  ratio to a plain loop with two maps          (b) %.2f\n", Median(toMaps));
    std::printf("  10,000 lines to loading the archive into maps    %.2f\n", Median(small));
    std::fflush(stdout);
    Measure(program, "memory", folder);
    return 0;
}

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv, RunTask, Compare); }
