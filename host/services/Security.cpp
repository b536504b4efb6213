#include "services/Security.h"

#include "archive/ArchiveRecord.h"
#include "automation/ErrorReport.h"
#include "database/SqlTokens.h"
#include "server/VlmASLServicesLib.h"
#include "values/DateText.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::host {

namespace {

using data::SqlTextLiteral;

std::string WhereRecord(const std::string& table, std::int32_t key) {
    return " WHERE Tabella = " + SqlTextLiteral(table) + " AND Chiave = " + std::to_string(key);
}

[[noreturn]] void RefuseLocked(const std::string& table, std::int32_t key, const data::Recordset& lock) {
    const archive::ArchiveTable known = archive::ArchiveTableOf(table);
    const std::optional<Date> since = lock.DateOf(lock.Ordinal("Dal"));
    throw Error(archive::RecordText(known, key) + " è " + std::string(known.locked) + " da " +
                std::string(lock.TextOf(lock.Ordinal("Utente"))) +
                (since ? " dal " + text::DdMmYyyySlashes(*since) : std::string()) + ".");
}

}  // namespace

std::span<const com::Member> LockService::Members() const noexcept {
    static constexpr std::array kMembers = {
        com::Method<&LockService::LockRecord>("LockRecord", 1, VT_EMPTY, {{"Table", VT_BSTR}, {"Key", VT_I4}}),
        com::Method<&LockService::UnlockRecord>("UnlockRecord", 2, VT_EMPTY, {{"Table", VT_BSTR}, {"Key", VT_I4}}),
    };
    return kMembers;
}

void* LockService::Find(const IID& iid) noexcept {
    if (com::Same(iid, server::kLockSrvId)) return static_cast<IDispatch*>(this);
    return DispatchObject::Find(iid);
}

HRESULT LockService::LockRecord(BSTR table, std::int32_t key) {
    return com::Guarded("aslhost", server::kLockSrvId, [&] { Lock(com::ToUtf8(table), key); });
}

HRESULT LockService::UnlockRecord(BSTR table, std::int32_t key) {
    return com::Guarded("aslhost", server::kLockSrvId, [&] { Unlock(com::ToUtf8(table), key); });
}

/// One statement looks and takes. Of two users who do so at the same moment the table's key lets one in; what the other
/// is told then is not the engine's refusal, but who was first.
bool LockService::Take(const std::string& table, std::int32_t key, const std::string& where) {
    try {
        return connection_->Execute("INSERT INTO BloccoRecord (Tabella, Chiave, Utente, Dal) SELECT " +
                                    SqlTextLiteral(table) + ", " + std::to_string(key) + ", " + SqlTextLiteral(user_) +
                                    ", " + SqlTextLiteral(IsoDate(clock_.Today())) +
                                    " WHERE NOT EXISTS (SELECT * FROM BloccoRecord" + where + ")") != 0;
    } catch (const Error&) {
        if (connection_->Open("SELECT Utente FROM BloccoRecord" + where)->AtEnd()) throw;
        return false;
    }
}

void LockService::Lock(const std::string& table, std::int32_t key) {
    const std::string where = WhereRecord(table, key);
    if (!Take(table, key, where)) {
        const auto lock = connection_->Open("SELECT Utente, Dal FROM BloccoRecord" + where);
        if (!lock->AtEnd() && !text::EqualNoCase(lock->TextOf(0), user_)) RefuseLocked(table, key, *lock);
    }
    ++held_[{text::FoldCase(table), key}];
}

void LockService::Unlock(const std::string& table, std::int32_t key) {
    const auto held = held_.find({text::FoldCase(table), key});
    if (held == held_.end() || --held->second > 0) return;
    held_.erase(held);
    connection_->Execute("DELETE FROM BloccoRecord" + WhereRecord(table, key) +
                         " AND Utente = " + SqlTextLiteral(user_));
}

std::span<const com::Member> UserRights::Members() const noexcept {
    static constexpr std::array kMembers = {com::Get<&UserRights::User>("User", 1, VT_BSTR)};
    return kMembers;
}

void* UserRights::Find(const IID& iid) noexcept {
    if (com::Same(iid, server::kRightsId)) return static_cast<IDispatch*>(this);
    return DispatchObject::Find(iid);
}

HRESULT UserRights::User(BSTR* user) {
    return com::Guarded("aslhost", server::kRightsId, [&] { *user = com::Bstr(user_).Detach(); });
}

}  // namespace vlm::host
