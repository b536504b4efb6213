#include "OdbcHandle.h"

#include <algorithm>
#include <array>

namespace vlm::data::odbc {

namespace {

/// "[maker][driver][server]What happened" without who says it.
std::string_view WithoutOrigins(std::string_view text) {
    while (text.starts_with('[')) {
        const std::size_t end = text.find(']');
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + 1);
    }
    return text::Trim(text);
}

struct Record {
    std::string state, text;
    SQLINTEGER nativeCode = 0;
};

/// Records count from 1. False when there is none of that number.
bool ReadRecord(SQLSMALLINT handleType, SQLHANDLE handle, SQLSMALLINT number, Record& record) {
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, 2048> text{};
    SQLSMALLINT length = 0;
    const SQLRETURN result = SQLGetDiagRecW(handleType, handle, number, state.data(), &record.nativeCode, text.data(),
                                            static_cast<SQLSMALLINT>(text.size()), &length);
    if (!SQL_SUCCEEDED(result)) return false;
    const std::size_t kept =
        std::clamp<std::size_t>(static_cast<std::size_t>(std::max<SQLSMALLINT>(length, 0)), 0, text.size() - 1);
    record.state = text::FromUtf16(WideView(state.data(), 5));
    record.text = WithoutOrigins(text::FromUtf16(WideView(text.data(), kept)));
    return true;
}

}  // namespace

OdbcDiagnostics OdbcDiagnostics::Of(SQLSMALLINT handleType, SQLHANDLE handle) {
    OdbcDiagnostics all;
    Record record;
    for (SQLSMALLINT number = 1; ReadRecord(handleType, handle, number, record); ++number) {
        const bool warning = record.state.starts_with("01");
        if (number == 1 || (all.warning && !warning)) {
            all.state = record.state;
            all.nativeCode = record.nativeCode;
        }
        all.warning = all.warning && warning;
        if (all.text.find(record.text) != std::string::npos) continue;
        all.text += (all.text.empty() ? "" : " ") + record.text;
    }
    if (all.text.empty()) all.text = "Errore del driver ODBC senza descrizione.";
    return all;
}

}  // namespace vlm::data::odbc
