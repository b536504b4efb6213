#include "archive/ArchiveRecord.h"

#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::archive {

std::string RecordText(const ArchiveTable& table, std::int64_t key) {
    return std::string(table.subject) + " n. " + std::to_string(key);
}

ArchiveTable ArchiveTableOf(std::string_view name) {
    for (const ArchiveTable& table : {kPatients, kPatientExemptions}) {
        if (text::EqualNoCase(table.name, name)) return table;
    }
    return {name, {}, "Il record", "bloccato"};
}

RecordLock::RecordLock(const HostObjectPtr& service, std::string_view table, std::int32_t key)
    : table_(table), key_(key) {
    auto* const object = service == nullptr ? nullptr : static_cast<IDispatch*>(service->Native());
    if (object == nullptr) return;
    com::LateBound calls{com::Ref<IDispatch>(object)};
    calls.Call("LockRecord", {table_, key_});
    service_ = std::move(calls);
}

RecordLock::~RecordLock() {
    try {
        if (service_) service_.Call("UnlockRecord", {table_, key_});
    } catch (...) {  // the same user takes it over next time
    }
}

void ArchiveRecord::SetSecurity(const HostObjectPtr& lockService, const HostObjectPtr& rights) {
    lockService_ = lockService;
    rights_ = rights;
}

void ArchiveRecord::Open(std::int32_t id) {
    if (connection_ == nullptr) throw Error(RecordText(table_, id) + " non si può leggere: manca la connessione.");
    state_ = State::Empty;
    id_ = 0;
    row_ = connection_->OpenForUpdate("SELECT * FROM " + std::string(table_.name) + " WHERE " +
                                      std::string(table_.key) + " = " + std::to_string(id));
}

void ArchiveRecord::AddNew() {
    lock_.reset();
    Open(0);
    row_->AddNew();
    state_ = State::New;
}

/// The record is read once it is locked, so that nobody changes it in between.
void ArchiveRecord::Load(std::int32_t id, bool forEdit) {
    lock_.reset();
    if (forEdit) lock_.emplace(lockService_, table_.name, id);
    Open(id);
    if (row_->AtEnd()) {
        lock_.reset();
        return;
    }
    id_ = id;
    state_ = forEdit ? State::Edited : State::Read;
}

int ArchiveRecord::Ordinal(std::string_view name) const {
    if (state_ == State::Empty) throw Error("Nessun record di " + std::string(table_.name) + " è stato caricato.");
    return row_->Ordinal(name);
}

data::Value ArchiveRecord::Field(std::string_view name) const { return row_->ValueOf(Ordinal(name)); }

void ArchiveRecord::SetField(std::string_view name, const data::Value& value) {
    const int ordinal = Ordinal(name);
    if (state_ == State::Read) throw Error(RecordText(table_, id_) + " è in sola lettura.");
    if (text::EqualNoCase(name, table_.key)) {
        throw Error("Il campo " + std::string(table_.key) + " è assegnato dall'archivio.");
    }
    row_->SetValue(ordinal, value);
}

std::int32_t ArchiveRecord::NextKey() const {
    const auto greatest =
        connection_->Open("SELECT MAX(" + std::string(table_.key) + ") FROM " + std::string(table_.name));
    const std::int64_t next = greatest->IntegerOf(0) + 1;
    if (next > INT32_MAX) throw OverflowError("Le chiavi di " + std::string(table_.name) + " sono esaurite.");
    return static_cast<std::int32_t>(next);
}

bool ArchiveRecord::Save() {
    if (state_ == State::Empty || state_ == State::Read) {
        throw Error(RecordText(table_, id_) + " non si può salvare: non è in modifica.");
    }
    const std::int32_t key = state_ == State::New ? NextKey() : id_;
    if (state_ == State::New) row_->SetValue(table_.key, std::int64_t{key});
    row_->Update();
    id_ = key;
    state_ = State::Edited;
    return true;
}

}  // namespace vlm::archive
