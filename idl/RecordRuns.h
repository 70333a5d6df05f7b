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
    virtual HRESULT STDMETHODCALLTYPE BeginBatch() noexcept = 0;
    /// Also ends by itself when the view goes. `*lost`, also set when an error is answered, receives how many
    /// of the records that were saved last could not be written and are not in the table.
    virtual HRESULT STDMETHODCALLTYPE EndBatch(ULONG* lost) noexcept = 0;
};

}  // namespace zu

__CRT_UUID_DECL(zu::RecordRuns, 0x6E1C0A57, 0x93D4, 0x4F2B, 0xA7, 0x0C, 0x52, 0x1D, 0xB8, 0x36, 0xEF, 0x94)
__CRT_UUID_DECL(zu::RecordBatch, 0x7D02E5B9, 0x3C81, 0x4FA6, 0x95, 0x6B, 0x48, 0xF1, 0xB2, 0x0E, 0x73, 0xCA)
