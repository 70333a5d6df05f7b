#include "component/textio/ZuDbfControl.h"

#include "com/ThreadState.h"

namespace zu::component {

namespace {

template <class Formats>
com::ComPtr<Formats> MakeSeeded() {
    com::ComPtr<Formats> formats = com::MakeObject<Formats>();
    formats->formats().Add(L"Delimited", textio::kDelimited);
    formats->formats().Add(L"Fixed", textio::kFixed);
    return formats;
}

struct ThreadControl {
    com::ComPtr<ZuDbfControl> control = com::MakeObject<ZuDbfControl>();
};

}  // namespace

ZuDbfControl::ZuDbfControl()
    : exportFormats_(MakeSeeded<ZuExportFormats>()), importFormats_(MakeSeeded<ZuImportFormats>()) {}

STDMETHODIMP ZuDbfControl::get_ImportFormats(_ZuImportFormats** Result) {
    return com::GuardResult(Result, [&] { return importFormats_.copy(); });
}

STDMETHODIMP ZuDbfControl::get_ExportFormats(_ZuExportFormats** Result) {
    return com::GuardResult(Result, [&] { return exportFormats_.copy(); });
}

com::ComPtr<_ZuDbfControl> DefaultControl() {
    return com::ComPtr<_ZuDbfControl>(com::ThreadState<ThreadControl>::Current().control.get());
}

}  // namespace zu::component
