#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "automation/Object.h"
#include "database/Connection.h"
#include "system/Clock.h"

namespace vlm::host {

/// The host's lock service as an automation object: LockRecord(Table, Key) and UnlockRecord(Table, Key). The locks of
/// all users stand in the clinic's table BloccoRecord. A lock that is taken twice is let go with the second release;
/// one of the same user's that an earlier run left behind is taken over. Letting go of what is not held does nothing: a
/// transaction that was rolled back took the lock with it.
class LockService final : public com::DispatchObject<IDispatch> {
public:
    /// `clock` is kept for as long as the service lives.
    LockService(data::ConnectionPtr connection, std::string user, const sys::Clock& clock)
        : connection_(std::move(connection)), user_(std::move(user)), clock_(clock) {}

private:
    std::span<const com::Member> Members() const noexcept override;
    void* Find(const IID& iid) noexcept override;

    /// Fails, naming the user and the record, when another user holds it.
    HRESULT STDMETHODCALLTYPE LockRecord(BSTR table, std::int32_t key);
    HRESULT STDMETHODCALLTYPE UnlockRecord(BSTR table, std::int32_t key);

    void Lock(const std::string& table, std::int32_t key);
    bool Take(const std::string& table, std::int32_t key, const std::string& where);
    void Unlock(const std::string& table, std::int32_t key);

    data::ConnectionPtr connection_;
    std::string user_;
    const sys::Clock& clock_;
    std::map<std::pair<std::string, std::int32_t>, int> held_;  // how many times, by folded table and key
};

/// The host's user rights as an automation object: User, the name of who works with the host. Here everybody may do
/// everything.
class UserRights final : public com::DispatchObject<IDispatch> {
public:
    explicit UserRights(std::string user) : user_(std::move(user)) {}

private:
    std::span<const com::Member> Members() const noexcept override;
    void* Find(const IID& iid) noexcept override;

    HRESULT STDMETHODCALLTYPE User(BSTR* user);

    std::string user_;
};

}  // namespace vlm::host
