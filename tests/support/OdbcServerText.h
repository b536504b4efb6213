#pragma once

#include <string>

#include "asltds/TdsServer.h"

namespace vlm::test {

inline constexpr const char* kServerUser = "ospite";
inline constexpr const char* kServerPassword = "segretissima";

/// Who comes in is Italian: dates have the day first.
inline host::tds::TdsServer::Options ServerOptions(host::tds::Faults faults = {}) {
    return {0, kServerUser, kServerPassword, true, std::move(faults)};
}

/// The connection text to a server on this machine, its password still missing.
inline std::string OdbcServerText(const host::tds::TdsServer& server, const std::string& database = "Studio0012") {
    return "Driver={FreeTDS};Server=127.0.0.1;Port=" + std::to_string(server.Port()) +
           ";TDS_Version=7.4;ClientCharset=UTF-8;Database=" + database + ";UID=" + kServerUser;
}

}  // namespace vlm::test
