#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/technologies/dbf/DbfHeader.h"
#include "host/technologies/dbf/RecordFile.h"
#include "host/technologies/dbf/TableLayout.h"
#include "host/technologies/dbf/cdx/CdxFile.h"
#include "host/technologies/dbf/cdx/IndexContext.h"
#include "host/technologies/dbf/cdx/IndexSet.h"

namespace zu::dbf::cdx {

/// The folder of the sample tables: ZU_SAMPLES, or ../shared/samples beside the project.
std::string SampleFolder();

/// A sample table that other programs made, open for reading.
class SampleTable {
public:
    /// `name`: e.g. "xbase/orders.dbf". Fails the test with a clear text when it is not there.
    explicit SampleTable(const std::string& name);

    IndexContext Context() { return {layout_.record, *records_, tableName_, *codePage_}; }
    RecordFile& records() { return *records_; }

private:
    std::string tableName_;
    const text::CodePage* codePage_ = nullptr;
    TableLayout layout_;
    std::unique_ptr<RecordFile> records_;
};

/// A sample file, opened for reading.
std::unique_ptr<files::File> OpenSample(const std::string& name);

}  // namespace zu::dbf::cdx
