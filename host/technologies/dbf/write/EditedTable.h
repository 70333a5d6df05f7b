#pragma once

#include "host/technologies/dbf/DbfHeader.h"
#include "host/technologies/dbf/FieldReader.h"
#include "host/technologies/dbf/MemoFields.h"
#include "host/technologies/dbf/RecordFile.h"
#include "host/technologies/dbf/TableLayout.h"
#include "host/technologies/dbf/cdx/IndexSet.h"
#include "host/technologies/dbf/write/WriteFiles.h"

namespace zu::dbf::write {

class AppendBatch;

/// What an edit needs of its open table. Everything referred to outlives the edit.
struct EditedTable {
    const DbfHeader& header;
    const TableLayout& layout;
    RecordFile& records;
    MemoFields* memos;       ///< null: the table has no memo fields
    cdx::IndexSet* indexes;  ///< null: the table has no production index
    WriteFiles& files;
    bool blankNumbersAreNull;
    AppendBatch* batch = nullptr;  ///< null: records are only added one by one
};

}  // namespace zu::dbf::write
