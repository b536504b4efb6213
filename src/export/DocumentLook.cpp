#include "export/DocumentLook.h"

#include <algorithm>
#include <iterator>

#include "values/Error.h"

namespace vlm {

namespace {

using Keys = std::vector<std::int32_t>;

/// Servers take some thousands of values in a list.
constexpr std::size_t kKeysInList = 500;

void Sort(Keys& keys) {
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
}

bool Has(const Keys& sorted, std::int32_t key) { return std::binary_search(sorted.begin(), sorted.end(), key); }

/// Calls `take` with "IDParcella IN (...)" for some keys after the other.
template <typename Take>
void InLists(const Keys& keys, Take&& take) {
    for (std::size_t first = 0; first < keys.size(); first += kKeysInList) {
        std::string list = "IDParcella IN (";
        for (std::size_t at = first; at < std::min(first + kKeysInList, keys.size()); ++at) {
            list.append(at > first ? "," : "").append(std::to_string(keys[at]));
        }
        take(list + ")");
    }
}

}  // namespace

void DocumentLook::LookBefore(data::Connection& connection) {
    const data::RecordsetPtr rows = connection.Open("SELECT IDParcella FROM Parcella WHERE " + where_);
    for (; !rows->AtEnd(); rows->MoveNext()) before_.push_back(rows->Int32Of(0));
    Sort(before_);
}

void DocumentLook::LookAgain(data::Connection& connection) {
    Sort(written_);
    // One row that every run writes, and leaves as it is, before it looks: who comes second waits, and then sees.
    connection.Execute(
        "UPDATE Parcella SET ElaborataASL = ElaborataASL WHERE IDParcella = (SELECT MIN(IDParcella) FROM Parcella)");
    Keys now;
    {
        const data::RecordsetPtr rows =
            connection.Open("SELECT IDParcella, ElaborataASL FROM Parcella WHERE " + where_);
        for (; !rows->AtEnd(); rows->MoveNext()) {
            const std::int32_t key = rows->Int32Of(0);
            now.push_back(key);
            if (!Has(before_, key) && !Has(written_, key)) (rows->IsNull(1) ? late_ : lateZero_).push_back(key);
        }
    }
    Sort(now);
    matched_ = now.size();
    Keys gone;
    std::set_difference(written_.begin(), written_.end(), now.begin(), now.end(), std::back_inserter(gone));
    RefuseTaken(connection, gone);
}

/// A document may also have left the filter because a colleague has changed it; then it is not marked.
void DocumentLook::RefuseTaken(data::Connection& connection, const Keys& gone) const {
    std::int64_t taken = 0;
    InLists(gone, [&](const std::string& list) {
        const data::RecordsetPtr rows =
            connection.Open("SELECT COUNT(*) FROM Parcella WHERE " + list + " AND ElaborataASL <> 0");
        taken += rows->IntegerOf(0);
    });
    if (taken == 0) return;
    throw Error(
        "Un'altra elaborazione ha intanto inviato " + std::to_string(taken) + " dei " +
        std::to_string(written_.size()) +
        " documenti di questo file: il file non è stato consegnato e nessun documento è stato segnato. Ripetere "
        "l'elaborazione.");
}

void DocumentLook::GiveBack(data::Connection& connection, std::int64_t marked) const {
    if (marked > 0 && static_cast<std::size_t>(marked) != matched_) {
        throw Error("Durante la segnatura sono stati inseriti o modificati documenti: ripetere l'elaborazione.");
    }
    InLists(late_, [&](const std::string& list) {
        connection.Execute("UPDATE Parcella SET ElaborataASL = NULL WHERE " + list);
    });
    InLists(lateZero_,
            [&](const std::string& list) { connection.Execute("UPDATE Parcella SET ElaborataASL = 0 WHERE " + list); });
}

}  // namespace vlm
