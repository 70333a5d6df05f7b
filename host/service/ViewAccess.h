#pragma once

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "host/service/ViewField.h"
#include "idl/ZuDataViewInterface.h"

namespace zu::host {

// What any view offers, ours or another engine's, with failures as ComErrors.

com::ComPtr<ZuDataFields> FieldsOf(ZuDataView& view);
LONG CountOf(ZuDataFields& fields);
com::ComPtr<ZuDataField> FieldOf(ZuDataFields& fields, LONG number);
com::Bstr NameOf(ZuDataField& field);

/// The fields of a view as their view describes them. A view that cannot tell whether a field takes Null has
/// none that do.
ViewFields DescribeFields(ZuDataView& view);

}  // namespace zu::host
