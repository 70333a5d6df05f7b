#pragma once

#include <vector>

#include "com/ComPtr.h"
#include "component/table/DataView.h"

namespace zu::component {

/// How the fields of two tables find each other in a copy.
enum class FieldMatch {
    kPosition,  ///< first to first, as far as both have fields
    kName,      ///< by name; fields without a namesake are passed over
};

/// Copies the current record of one view into a new record of another. The fields are fetched once, with the
/// first row: they stay bound to their views.
class RowCopy {
public:
    /// Counts the fields of both views. Throws ComError.
    RowCopy(DataView& source, DataView& destination, FieldMatch match);

    /// False: the row was not added. Throws a ComError for what ends the whole copy; a value that the
    /// destination refuses does so by position, and by name only costs the row that field.
    bool CopyRow();

private:
    struct Pair {
        com::ComPtr<ZuDataField> from;
        com::ComPtr<ZuDataField> to;
    };

    void PairFields();
    void PairByPosition();
    void PairByName();
    bool CopyFields();
    void TellNothingCopied() const;

    DataView& source_;
    DataView& destination_;
    FieldMatch match_;
    LONG sourceFields_;
    LONG destinationFields_;
    bool paired_ = false;
    std::vector<Pair> pairs_;
};

}  // namespace zu::component
