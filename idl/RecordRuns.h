#pragma once

#include <windows.h>

#include <unknwn.h>

#include "portable/textio/Cell.h"

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
    /// Also ends by itself when the view goes. `*lost`, also set when an error is answered, receives how many
    /// of the records that were saved last could not be written and are not in the table.
    virtual HRESULT STDMETHODCALLTYPE EndBatch(ULONG* lost) noexcept = 0;
};

}  // namespace zu

__CRT_UUID_DECL(zu::RecordRuns, 0x6E1C0A57, 0x93D4, 0x4F2B, 0xA7, 0x0C, 0x52, 0x1D, 0xB8, 0x36, 0xEF, 0x94)
__CRT_UUID_DECL(zu::RecordBatch, 0xC2A97F14, 0x60D3, 0x4B8E, 0xA1, 0x37, 0x0D, 0x94, 0x5E, 0x26, 0xBB, 0x81)
