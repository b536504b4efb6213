#pragma once

#include <memory>
#include <string_view>

#include "ado/AdoTypes.h"
#include "automation/Object.h"
#include "database/UpdatableRecordset.h"

namespace vlm::data::ado {

/// A row set of ours as an automation object, for hosts that bind early (its table) and late (its names). Over a
/// disconnected row set it is filled, moved, sorted, searched and cloned as a client-side one is; over one opened for
/// update it is filled and read forward; over any other it is only read forward. What cannot be served fails with
/// number 3251. One reference belongs to the caller. `owner` is what must live as long: the connection of an opened
/// row set, the library.
com::Ref<IDispatch> MakeRecordsetObject(std::unique_ptr<Recordset> rows, std::shared_ptr<void> owner = nullptr);

}  // namespace vlm::data::ado
