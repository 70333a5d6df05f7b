#pragma once

#include <windows.h>

#include <unknwn.h>

#include "portable/textio/Cell.h"
#include "portable/textio/StoredField.h"

// Private interfaces between this project's engine and component, for work on very many records. Views of
// other engines do not answer them; the component then goes record by record through the published interfaces
// and gives the same result. They never leave a process, and a change of their form takes a new identifier.

namespace zu {

/// Reads what is stored in many records of a view at once.
struct RecordRuns : IUnknown {
    /// Reads up to `most` records from the current one on and makes the one behind them current. `*cells`
    /// receives their values, field after field and record after record; they are valid until the next call
    /// on the view. Texts are bytes of `codePage` where the table has that page, else characters. `*records`
    /// receives the number of records, 0 at the end of the view. E_NOTIMPL when the view cannot read so.
    virtual HRESULT STDMETHODCALLTYPE ReadRun(UINT codePage, ULONG most, const textio::Cell** cells,
                                              ULONG* records) noexcept = 0;
    /// Where the view's fields lie in records that LocateRun finds; the array is valid until the next call on
    /// the view. E_NOTIMPL when a field has no such form.
    virtual HRESULT STDMETHODCALLTYPE DescribeStored(UINT codePage, const textio::StoredField** fields,
                                                     ULONG* count) noexcept = 0;
    /// As ReadRun, but `(*places)[i]` is where the i-th of the records begins in memory. E_NOTIMPL when the
    /// records from the current one on must be read by ReadRun.
    virtual HRESULT STDMETHODCALLTYPE LocateRun(ULONG most, const char* const** places,
                                                ULONG* records) noexcept = 0;
};

/// Adds many records to a view's table: they may be held back in memory, and work on indexes is gathered. A
/// record is safe against the end of the process at the latest when the batch ends.
struct RecordBatch : IUnknown {
    /// `*codePage` receives the page of the table's texts, 0 when there is none.
    virtual HRESULT STDMETHODCALLTYPE BeginBatch(UINT* codePage) noexcept = 0;
    /// Adds a record to the batch whose `count` fields at the positions `fields`, null for the first ones,
    /// hold these values, as AddNew, the values one by one and Update would; but it does not join the view,
    /// so that memory does not grow with the number of records. Bytes are of `codePage`. S_FALSE: nothing was
    /// done, and the record has to go that way; there it also shows what is wrong, if anything is.
    virtual HRESULT STDMETHODCALLTYPE AddRow(UINT codePage, const ULONG* fields, const textio::Cell* cells,
                                             ULONG count) noexcept = 0;
    /// Tells where the values of `count` fields at the positions `fields`, null for the first ones, lie in
    /// the records that AddStored is given from now on; texts are of the table's page. E_NOTIMPL: records
    /// must come as cells.
    virtual HRESULT STDMETHODCALLTYPE MatchStored(const ULONG* fields, const textio::StoredField* stored,
                                                  ULONG count) noexcept = 0;
    /// Adds a record of these values, as AddRow does.
    virtual HRESULT STDMETHODCALLTYPE AddStored(const char* record) noexcept = 0;
    /// Also ends by itself when the view goes. `*lost`, also set when an error is answered, receives how many
    /// of the records that were saved last could not be written and are not in the table.
    virtual HRESULT STDMETHODCALLTYPE EndBatch(ULONG* lost) noexcept = 0;
};

/// Deletes many records of a view's table.
struct RecordDeletion : IUnknown {
    /// Deletes all records of the view from the last to the first, as its Delete for each of them would.
    /// `*deleted` receives for how many that would have answered True. An error ends it; the records before
    /// are deleted then. E_ABORT: the user has ended it, and `*deleted` says how many are deleted. They may
    /// be marked in blocks, each of which is in the table whole or not at all when the process dies.
    virtual HRESULT STDMETHODCALLTYPE DeleteAll(LONG* deleted) noexcept = 0;
};

}  // namespace zu

__CRT_UUID_DECL(zu::RecordRuns, 0xB40D7E92, 0x1F6A, 0x4C83, 0x95, 0x2E, 0xE7, 0x08, 0x3B, 0xD1, 0x64, 0x5C)
__CRT_UUID_DECL(zu::RecordBatch, 0x3F85C6D0, 0xA21B, 0x4D97, 0x8E, 0x53, 0x71, 0xBC, 0x0A, 0xE4, 0x29, 0x6F)
__CRT_UUID_DECL(zu::RecordDeletion, 0x8F3B6D02, 0x17C9, 0x4E5A, 0x93, 0x6E, 0xD1, 0x40, 0x7A, 0xB5, 0x2C,
                0xE8)
