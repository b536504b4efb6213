#pragma once

#include <string>

#include "host/tds/TdsServer.h"

namespace vlm::test {

inline constexpr const char* kServerUser = "ospite";
inline constexpr const char* kServerPassword = "segretissima";

inline host::tds::TdsServer::Options ServerOptions(std::int64_t endAfterRows = 0) {
    return {0, kServerUser, kServerPassword, endAfterRows};
}

/// The connection text to a server on this machine, its password still missing.
inline std::string OdbcServerText(const host::tds::TdsServer& server, const std::string& database = "Studio0012") {
    return "Driver={FreeTDS};Server=127.0.0.1;Port=" + std::to_string(server.Port()) +
           ";TDS_Version=7.4;ClientCharset=UTF-8;Database=" + database + ";UID=" + kServerUser;
}

}  // namespace vlm::test
