#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/technologies/Value.h"

namespace zu::host {

/// Which values of the current record its user has read, as fingerprints.
///
/// A new value is often made from the one that was read: a counter is read and counted up. When somebody else
/// changes the field between the reading and the writing, the change may not be overwritten, so what was seen
/// is compared with what the record holds when it is about to be changed.
class SeenValues {
public:
    /// Another record is current, or the same one is read anew.
    void Forget() noexcept { ++visit_; }
    /// The field is changed: what it held does not matter any more.
    void Forget(std::size_t field) noexcept {
        if (field < fields_.size()) fields_[field].visit = 0;
    }
    void Note(std::size_t field, const technologies::Value& value);
    bool WasNoted(std::size_t field) const noexcept {
        return field < fields_.size() && fields_[field].visit == visit_;
    }
    /// The field was read, and held another value then.
    bool Differs(std::size_t field, const technologies::Value& value) const noexcept;

private:
    struct Seen {
        std::uint64_t visit = 0;
        std::uint64_t fingerprint = 0;
    };
    static std::uint64_t Fingerprint(const technologies::Value& value) noexcept;

    std::uint64_t visit_ = 1;
    std::vector<Seen> fields_;
};

}  // namespace zu::host
