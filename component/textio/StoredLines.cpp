#include "component/textio/StoredLines.h"

#include <algorithm>
#include <span>

#include "com/ComError.h"

namespace zu::component {

namespace {

/// Records that are located at once.
constexpr ULONG kRun = 1024;
constexpr ULONG kFewestLooks = 1;
constexpr ULONG kMostLooks = 256;

}  // namespace

StoredLines::StoredLines(DataView& view, RecordRuns& runs, const textio::ExportFormat& format,
                         const std::vector<textio::ExportField>& fields, const textio::Encoding& encoding)
    : view_(view), runs_(runs), closerLooks_(kMostLooks) {
    const textio::StoredField* stored = nullptr;
    ULONG count = 0;
    const HRESULT described = runs.DescribeStored(encoding.page().number(), &stored, &count);
    if (described == E_NOTIMPL) return;
    com::Check(described);
    renderer_ = textio::StoredRenderer::Make(format, fields, {stored, count}, encoding);
}

ULONG StoredLines::Write(LONG first, textio::BlockWriter& writer) {
    if (!renderer_) return 0;
    const char* const* places = nullptr;
    ULONG count = 0;
    const HRESULT located = runs_.LocateRun(kRun, &places, &count);
    if (located == E_NOTIMPL) {
        closerLooks_ = kMostLooks;
        return 0;
    }
    com::Check(located);
    ULONG written = 0;
    while (written < count && renderer_->RenderLine(places[written], writer.buffer())) {
        writer.LineDone();
        ++written;
    }
    if (written == count) {
        closerLooks_ = kFewestLooks;
        return written;
    }
    view_.Move(first + static_cast<LONG>(written));
    // The fewer lines lie between two odd records, the longer nobody asks again.
    if (written < closerLooks_)
        closerLooks_ = std::min(2 * closerLooks_, kMostLooks);
    else
        closerLooks_ = std::max(closerLooks_ / 2, kFewestLooks);
    return written;
}

}  // namespace zu::component
