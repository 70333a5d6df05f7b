#include "host/service/DeletionMark.h"

#include <algorithm>

#include "host/engine/JobReport.h"
#include "portable/error/Error.h"

namespace zu::host {
namespace {

/// Records that are marked without a look whether they are still to be.
constexpr std::size_t kStretch = 4096;

}  // namespace

bool MarkRecord(technologies::Table& table, std::uint32_t number, bool deleted) {
    technologies::MarkOutcome outcome;
    table.MarkRecords({&number, 1}, deleted, outcome);
    return outcome.changed != 0;
}

bool MarkRecords(technologies::Table& table, const wchar_t* job, std::span<const std::uint32_t> records,
                 bool deleted, technologies::MarkOutcome& outcome) {
    JobReport report(job, records.size());
    try {
        while (!records.empty()) {
            report.Report(outcome.handled);
            const auto stretch = records.first(std::min(records.size(), kStretch));
            table.MarkRecords(stretch, deleted, outcome);
            records = records.subspan(stretch.size());
        }
    } catch (const Error& error) {
        if (error.kind() != ErrorKind::Cancelled) throw;
        return false;
    }
    return true;
}

}  // namespace zu::host
