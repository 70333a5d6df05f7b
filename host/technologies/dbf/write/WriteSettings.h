#pragma once

#include <chrono>

#include "host/technologies/dbf/cdx/IndexUpdate.h"
#include "host/technologies/dbf/locking/LockScheme.h"
#include "host/technologies/dbf/transaction/Journal.h"

namespace zu::dbf::write {

/// How tables are written to.
struct WriteSettings {
    locking::LockScheme scheme = locking::LockScheme::FoxPro;
    std::chrono::milliseconds wait{5000};  ///< for locks of other processes
    transaction::Durability durability = transaction::Durability::Process;
    cdx::StaleTags staleTags = cdx::StaleTags::Refuse;
};

}  // namespace zu::dbf::write
