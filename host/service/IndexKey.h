#pragma once

#include <windows.h>

#include <oleauto.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "com/Variant.h"
#include "host/service/OpenTable.h"
#include "host/technologies/Table.h"

namespace zu::host {

/// An index of an open table together with the key that is loaded to seek with. The index object and its key
/// fields share one. Failures are zu::Errors and ComErrors.
class IndexKey {
public:
    IndexKey(std::shared_ptr<OpenTable> table, std::size_t index);

    const technologies::Table* table() const noexcept { return &table_->table(); }
    std::size_t index() const noexcept { return index_; }
    const technologies::IndexDescription& description() const noexcept { return facts_->description; }

    std::size_t partCount() const noexcept { return parts_.size(); }
    const std::wstring& PartName(std::size_t part) const { return facts_->partNames.at(part); }
    technologies::FieldType PartType(std::size_t part) const { return description().parts.at(part).type; }
    bool IsDescending(std::size_t part) const { return description().parts.at(part).descending; }
    /// The part that `index` names or numbers from 0. NotFound when there is none.
    std::size_t Locate(const VARIANT& index) const;

    const com::Variant& PartValue(std::size_t part) const { return parts_.at(part).value; }
    void SetPartValue(std::size_t part, const VARIANT& value);
    bool IsExact(std::size_t part) const { return parts_.at(part).exact; }
    void SetExact(std::size_t part, bool exact) { parts_.at(part).exact = exact; }

    /// What the loaded key asks of the key parts, from the first part on to the last before one that is not
    /// loaded. No criteria: every record. Nothing at all: no record (a loaded Null equals no key).
    ///
    /// An empty text in the first part restricts nothing. TypeMismatch names the part whose value does not
    /// fit.
    std::optional<std::vector<technologies::KeyCriterion>> Criteria() const;

private:
    /// "ID of table orders"
    std::string Name() const;

    struct Part {
        com::Variant value;
        bool loaded = false;
        bool exact = true;
    };

    std::shared_ptr<OpenTable> table_;
    std::size_t index_;
    std::shared_ptr<const IndexFacts> facts_;
    std::vector<Part> parts_;
};

}  // namespace zu::host
