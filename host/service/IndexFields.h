#pragma once

#include <vector>

#include "host/service/ViewField.h"
#include "host/technologies/Maintenance.h"
#include "idl/Zuengine.h"

namespace zu::host {

/// The entries of a field list, ours or another engine's; null: none. Numbers stand for `fields`, counted
/// from 0: NotFound where there is none of that number. An entry that is neither a text nor a number is a
/// type mismatch.
std::vector<technologies::IndexField> IndexFieldsOf(::DataFieldList* list, const ViewFields& fields);

/// Some entry of the list is a number.
bool NamesFieldsByNumber(::DataFieldList* list);

/// The fields as technologies know them.
std::vector<technologies::FieldDescription> DescriptionsOf(const ViewFields& fields);

}  // namespace zu::host
