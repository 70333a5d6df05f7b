#include "bench/client/Client.h"
#include "com/ComError.h"

namespace zu::bench {
namespace {

using com::Bstr;
using com::Check;
using com::Variant;

bool stood = false;

// A timer's message comes when nothing else waits any more: the grid has painted its first screen then.
void CALLBACK CloseWindows(HWND, UINT, UINT_PTR, DWORD) {
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM) -> BOOL {
            if (!IsWindowVisible(window)) return TRUE;
            stood = true;
            PostMessageW(window, WM_CLOSE, 0, 0);
            return TRUE;
        },
        0);
}

}  // namespace

// Opens the grid on the records that meet the condition and closes it when it stands.
double OpenGrid(const Client& client, const Work& work) {
    const Variant table(work.table);
    const Bstr title(L"orders");
    const Variant condition(work.variant);
    const Variant missing = Variant::Missing();
    VARIANT_BOOL changed = VARIANT_FALSE;
    stood = false;
    const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, CloseWindows);
    const HRESULT result =
        client.functions()->DbfEdit(table.get(), title.get(), condition.get(), missing.get(), 400,
                                    missing.get(), -1, -1, nullptr, VARIANT_FALSE, &changed);
    KillTimer(nullptr, timer);
    Check(result);
    if (!stood) client.Fail("DbfEdit");
    return 1;
}

}  // namespace zu::bench
