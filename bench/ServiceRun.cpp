#include "ServiceRun.h"

#include <filesystem>

#include "BenchHost.h"
#include "demo/DemoClinic.h"
#include "export/ASLExport.h"
#include "sicilia/ASLExportSicilia.h"

namespace vlm::bench {

namespace fs = std::filesystem;

void PrepareServices(const std::string& folder, std::int64_t services) {
    if (fs::exists(fs::path(folder) / "Aldra.sqlite")) return;
    fs::create_directories(fs::path(folder) / "work");
    fs::create_directories(fs::path(folder) / "out");
    host::DemoOptions options;
    options.serviceRows = services;
    host::CreateDemo(folder, *Date::FromYmd(2011, 4, 10), options);
}

int RunServices(data::ConnectionPtr connection, const std::string& folder, bool simulation) {
    BenchHost host(folder, std::move(connection));
    ASLExport component(host.library, {&kSicilia, 1});
    component.Filter.periodo = 3;
    component.Filter.anno = 2011;
    component.Filter.includiPrecedenti = true;
    return component.Export(folder + "/out", ttM, simulation) == static_cast<int>(ExportOutcome::FileProduced) ? 0 : 1;
}

}  // namespace vlm::bench
