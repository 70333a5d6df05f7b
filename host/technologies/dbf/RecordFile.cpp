#include "host/technologies/dbf/RecordFile.h"

#include <algorithm>
#include <limits>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/UnwrittenRecords.h"
#include "portable/error/Error.h"

namespace zu::dbf {

namespace {
constexpr std::uint32_t kBlockBytes = 1U << 20;
constexpr std::chrono::milliseconds kSizeTrusted{1};
}  // namespace

RecordFile::RecordFile(std::unique_ptr<files::File> file, const DbfHeader& header)
    : file_(std::move(file)),
      headerLength_(header.headerLength),
      recordLength_(header.recordLength),
      recordsPerBlock_(std::max(1U, kBlockBytes / header.recordLength)) {
    Refresh();
    hasForeignRecords_ = false;
}

std::uint32_t RecordFile::ReadStatedCount() const {
    std::array<std::byte, 4> bytes{};
    if (mapping_) return LoadLittle<std::uint32_t>(mapping_->bytes().data() + header::kRecordCount);
    if (file_->ReadAt(header::kRecordCount, bytes) < bytes.size()) return 0;
    return LoadLittle<std::uint32_t>(bytes.data());
}

std::vector<std::byte> RecordFile::HeaderBytes() const {
    std::vector<std::byte> bytes(headerLength_);
    if (file_->ReadAt(0, bytes) != bytes.size())
        throw Error(ErrorKind::Damaged, "The header of the table " + file_->path() + " is not whole.");
    return bytes;
}

bool RecordFile::NoticeGrowth() {
    UnwrittenRecords::WriteAll();
    return (file_->Size() != size_ || ReadStatedCount() != statedCount_) && Refresh();
}

// The question is a call of the system, which costs as much as all the rest of a lookup.
bool RecordFile::HasSameSize() {
    const Clock::time_point now = Clock::now();
    if (now - sizeAsked_ < kSizeTrusted) return true;
    if (file_->Size() != size_) return false;
    sizeAsked_ = now;
    return true;
}

bool RecordFile::IsAsBefore() {
    UnwrittenRecords::WriteAll();
    return mapped_ && !hasForeignRecords_ && ReadStatedCount() == statedCount_ && HasSameSize();
}

bool RecordFile::Refresh() {
    UnwrittenRecords::WriteAll();
    const std::uint64_t size = file_->Size();
    if (!mapping_ || size != size_) {
        mapped_ = nullptr;
        mapping_.reset();  // before the new one: address space may be short
        mapping_ = file_->Map();
        if (mapping_ && mapping_->bytes().size() <= headerLength_) mapping_.reset();
        if (mapping_) mapped_ = mapping_->bytes().data() + headerLength_;
    }
    for (Block& block : blocks_)
        block.number = UINT32_MAX;

    const std::uint64_t present = mapping_ ? mapping_->bytes().size() : size;
    const std::uint64_t whole = present <= headerLength_ ? 0 : (present - headerLength_) / recordLength_;
    const auto most = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(whole, std::numeric_limits<std::uint32_t>::max() - 1));
    const std::uint32_t stated = present < header::kSize ? 0 : ReadStatedCount();
    // Records behind the stated number were judged last time already, unless the table was made shorter.
    const bool onlyGrown = stated >= statedCount_ && size >= size_;
    const std::uint32_t known = std::min(most, onlyGrown ? std::max(stated, count_) : stated);
    const bool changed = size != size_ || stated != statedCount_;
    size_ = size;
    statedCount_ = stated;
    count_ = CountFrom(known, most);
    hasForeignRecords_ = hasForeignRecords_ || count_ != known_;
    known_ = count_;
    return changed;
}

/// Goes on from `known` records as long as more of them look like records.
std::uint32_t RecordFile::CountFrom(std::uint32_t known, std::uint32_t whole) {
    count_ = whole;  // lets Record reach them
    std::uint32_t count = known;
    for (; count < whole; ++count) {
        const auto mark = std::to_integer<std::uint8_t>(*Record(count + 1));
        if (mark != kLiveMark && mark != kDeletedMark) break;
    }
    return count;
}

const RecordFile::Block& RecordFile::Load(std::uint32_t number) {
    Block& block = blocks_[number % blocks_.size()];
    if (block.number == number) return block;
    block.number = UINT32_MAX;
    const std::uint32_t first = number * recordsPerBlock_;
    const std::uint32_t records = std::min(recordsPerBlock_, count_ - first);
    block.bytes.resize(std::size_t{records} * recordLength_);
    const std::uint64_t offset = headerLength_ + std::uint64_t{first} * recordLength_;
    if (file_->ReadAt(offset, block.bytes) < block.bytes.size()) {
        throw Error(ErrorKind::Damaged,
                    "The file " + file_->path() + " became shorter while it was read: record " +
                        std::to_string(first + 1) + " and those behind it are not there any more.");
    }
    block.number = number;
    return block;
}

const std::byte* RecordFile::BlockRecord(std::uint32_t number) {
    const std::uint32_t block = (number - 1) / recordsPerBlock_;
    return Load(block).bytes.data() + std::size_t{(number - 1) % recordsPerBlock_} * recordLength_;
}

expression::RecordRun RecordFile::Run(std::uint32_t first, std::uint32_t most) {
    std::uint32_t count = std::min(most, count_ - (first - 1));
    if (!mapped_) count = std::min(count, recordsPerBlock_ - (first - 1) % recordsPerBlock_);
    expression::RecordRun run;
    run.first = Record(first);
    run.stride = recordLength_;
    run.firstNumber = first;
    run.count = count;
    run.memos = memos_;
    return run;
}

}  // namespace zu::dbf
