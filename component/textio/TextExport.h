#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "component/engine/WatchedJob.h"
#include "component/table/DataView.h"
#include "portable/textio/BlockWriter.h"
#include "portable/textio/Encoding.h"
#include "portable/textio/ExportFormat.h"
#include "portable/textio/FieldRenderer.h"

namespace zu::component {

/// Writes the records of a view to a text file under a format, one line a record, in one pass.
class TextExport {
public:
    /// Makes the file, in the place of one that is there. Throws zu::Error, which names the file.
    TextExport(std::wstring_view path, const textio::ExportFormat& format);

    /// Writes all records from the first one on. Errors (ComError, zu::Error with record and field) and `job`
    /// end it; what was written so far stays in the file.
    void Write(DataView& view, const WatchedJob* job = nullptr);

    /// Characters that the file's code page lacks, so that "?" stands in their place.
    std::size_t missingCharacters() const noexcept { return missing_; }

private:
    template <class Char>
    void WriteRecords(DataView& view);
    /// Whole runs of records at once, where the view can; false when it cannot, and nothing was written.
    bool WriteRuns(DataView& view, const std::vector<textio::ExportField>& fields,
                   textio::FieldRenderer<char>& renderer);

    const WatchedJob* job_ = nullptr;  ///< while records are written
    const textio::ExportFormat& format_;
    textio::Encoding encoding_;
    textio::BlockWriter writer_;
    std::size_t missing_ = 0;
};

}  // namespace zu::component
