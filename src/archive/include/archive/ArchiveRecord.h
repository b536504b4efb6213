#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "automation/LateBound.h"
#include "frame/HostServices.h"

namespace vlm::archive {

/// A table of the archive whose rows are records that one user at a time works on.
struct ArchiveTable {
    std::string_view name;
    std::string_view key;      // the column that numbers its records
    std::string_view subject;  // how a sentence speaks of a record
    std::string_view locked;   // "bloccato", in the subject's gender
};

inline constexpr ArchiveTable kPatients = {"Paziente", "IDPaziente", "Il paziente", "bloccato"};
inline constexpr ArchiveTable kPatientExemptions = {"EsenzionePerPaziente", "IDEsenzionePerPaziente",
                                                    "L'esenzione del paziente", "bloccata"};

/// "Il paziente n. 12"
std::string RecordText(const ArchiveTable& table, std::int64_t key);
/// By name without regard to case; a table that is not known has records of no particular kind.
ArchiveTable ArchiveTableOf(std::string_view name);

/// A record locked through a lock service, until the object goes. Letting go never fails.
class RecordLock {
public:
    /// Throws Error naming the holder when another user has the record. No service, no lock.
    RecordLock(const HostObjectPtr& service, std::string_view table, std::int32_t key);
    RecordLock(const RecordLock&) = delete;
    RecordLock& operator=(const RecordLock&) = delete;
    ~RecordLock();

private:
    com::LateBound service_;
    com::Variant table_, key_;
};

/// A record of one table of the archive: its fields are the table's columns, a new one gets the next free key, and all
/// the fields that were set are written by one statement. A record that cannot be stored is an Error.
class ArchiveRecord final : public HostRecord {
public:
    explicit ArchiveRecord(const ArchiveTable& table) : table_(table) {}

    void SetConnection(const data::ConnectionPtr& connection) override { connection_ = connection; }
    void SetSecurity(const HostObjectPtr& lockService, const HostObjectPtr& rights) override;
    void AddNew() override;
    void Load(std::int32_t id, bool forEdit) override;
    data::Value Field(std::string_view name) const override;
    void SetField(std::string_view name, const data::Value& value) override;
    bool Save() override;
    std::int32_t Id() const override { return id_; }

private:
    enum class State { Empty, New, Read, Edited };

    void Open(std::int32_t id);
    int Ordinal(std::string_view name) const;
    std::int32_t NextKey() const;

    ArchiveTable table_;
    data::ConnectionPtr connection_;
    HostObjectPtr lockService_;
    HostObjectPtr rights_;  // handed on by hosts; here it forbids nothing
    std::optional<RecordLock> lock_;
    data::UpdatableRecordsetPtr row_;
    State state_ = State::Empty;
    std::int32_t id_ = 0;
};

}  // namespace vlm::archive
