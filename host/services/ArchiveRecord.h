#pragma once

#include <memory>
#include <optional>
#include <string>

#include "ArchiveTable.h"
#include "RecordLock.h"
#include "frame/HostServices.h"

namespace vlm::host {

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

}  // namespace vlm::host
