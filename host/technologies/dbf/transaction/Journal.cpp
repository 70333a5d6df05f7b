#include "host/technologies/dbf/transaction/Journal.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <utility>

#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/transaction/StretchReader.h"
#include "portable/error/Error.h"

namespace zu::dbf::transaction {
namespace {

constexpr std::size_t kHeaderSize = 24;
constexpr std::uint64_t kMark = 0x00314C4E524A555AULL;  // "ZUJRNL1\0" read as a little-endian number
// What a body begins with that says from which record on keys are missing, and its length.
constexpr std::byte kKeysMissing{kPartCount};
constexpr std::size_t kKeysMissingSize = 5;
// Bytes of the table file that no data and no other program's lock can reach.
constexpr std::uint64_t kGateOffset = 0x7FFFFFFFFFFF0000ULL;
constexpr std::uint64_t kUsersOffset = kGateOffset + 1;
// A journal of a large change is cut back afterwards; a small one keeps its room for the next change.
constexpr std::uint64_t kKeepSize = 1U << 20;
constexpr files::OpenOptions kForLook{files::Access::Read, files::Creation::OpenExisting, false, true};

template <class T>
void Put(std::vector<std::byte>& out, T value) {
    for (std::size_t i = 0; i < sizeof(T); ++i)
        out.push_back(static_cast<std::byte>(value >> (8 * i)));
}

void PutAt(std::byte* out, std::uint64_t value) {
    for (std::size_t i = 0; i < 8; ++i)
        out[i] = static_cast<std::byte>(value >> (8 * i));
}

std::uint64_t GetAt(const std::byte* in) {
    std::uint64_t value = 0;
    for (std::size_t i = 8; i-- > 0;)
        value = (value << 8) | std::to_integer<std::uint64_t>(in[i]);
    return value;
}

// A multiplicative hash over eight bytes at a time: it must notice a write that stopped half-way, nothing
// more, and costs a fraction of a byte-wise code. The multiplier is the 64-bit golden ratio made odd.
std::uint64_t Checksum(std::span<const std::byte> bytes) {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;
    std::uint64_t hash = kMultiplier ^ bytes.size();
    const auto mix = [&hash](std::uint64_t word) {
        hash = (hash ^ word) * kMultiplier;
        hash ^= hash >> 29;
    };
    std::size_t at = 0;
    for (; at + 8 <= bytes.size(); at += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + at, 8);
        mix(word);
    }
    std::uint64_t rest = 0;
    if (at < bytes.size()) std::memcpy(&rest, bytes.data() + at, bytes.size() - at);
    mix(rest);
    return hash;
}

// Reads the fields of a body and never past its end.
class BodyReader {
public:
    BodyReader(std::span<const std::byte> body, const std::string& path) : body_(body), path_(path) {}

    bool atEnd() const noexcept { return at_ == body_.size(); }
    std::uint64_t Number(std::size_t size) {
        const auto bytes = Bytes(size);
        std::uint64_t value = 0;
        for (std::size_t i = size; i-- > 0;)
            value = (value << 8) | std::to_integer<std::uint64_t>(bytes[i]);
        return value;
    }
    std::span<const std::byte> Bytes(std::uint64_t size) {
        if (size > body_.size() - at_)
            throw Error(ErrorKind::Damaged, "The journal " + path_ + " contradicts itself.");
        const auto result = body_.subspan(at_, static_cast<std::size_t>(size));
        at_ += static_cast<std::size_t>(size);
        return result;
    }

private:
    std::span<const std::byte> body_;
    const std::string& path_;
    std::size_t at_ = 0;
};

// Windows does not make a file shorter that anybody has mapped. What is left behind the old end is harmless
// then: no page and no memo block refers to it, and the records of a table end at the mark.
void CutBack(files::File& file, Part part, std::uint64_t size) {
    try {
        file.Truncate(size);
    } catch (const Error& error) {
        if (error.kind() != ErrorKind::Locked) throw;
        if (part == Part::Table) file.WriteAt(size, std::array{std::byte{kEndOfFile}});
    }
}

}  // namespace

Journal::Journal(files::FileSystem& system, std::string path, files::File& table, Durability durability)
    : system_(system), path_(std::move(path)), table_(table), durability_(durability) {}

Journal::~Journal() {
    try {
        RemoveWhenLast();
    } catch (...) {
        // A journal that stays behind is empty, or holds what the next one to open the table must undo.
        static_cast<void>(std::current_exception());
    }
    Leave();
}

void Journal::Open() {
    using files::Creation;
    const auto creation = system_.Exists(path_) ? Creation::OpenExisting : Creation::CreateNew;
    file_ = system_.Open(path_, {files::Access::ReadWrite, creation, false});
    // Whoever wants this byte alone does so inside the gate, where we are.
    if (!table_.TryLock(kUsersOffset, 1, files::LockMode::Shared)) {
        file_.reset();
        throw Error(ErrorKind::Locked,
                    "The table of the journal " + path_ + " is being closed by another process.");
    }
}

void Journal::RemoveWhenLast() {
    if (!file_) return;
    table_.Unlock(kUsersOffset, 1);
    if (!inside_ && !table_.TryLock(kGateOffset, 1, files::LockMode::Exclusive)) return;
    inside_ = true;
    if (IsHot() || !table_.TryLock(kUsersOffset, 1, files::LockMode::Exclusive)) return;
    file_.reset();
    try {
        system_.Remove(path_);
    } catch (const Error&) {
        // It is empty and does no harm where it is.
        static_cast<void>(std::current_exception());
    }
    table_.Unlock(kUsersOffset, 1);
}

bool Journal::TryEnter() {
    if (inside_) throw Error(ErrorKind::Internal, "a change of this table is under way already");
    if (!table_.TryLock(kGateOffset, 1, files::LockMode::Exclusive)) return false;
    inside_ = true;
    if (!file_) {
        try {
            Open();
        } catch (...) {
            Leave();
            throw;
        }
    }
    return true;
}

void Journal::Leave() noexcept {
    if (!std::exchange(inside_, false)) return;
    try {
        table_.Unlock(kGateOffset, 1);
    } catch (...) {
        // The lock goes with the handle at the latest; there is nobody to tell here.
        static_cast<void>(std::current_exception());
    }
}

bool Journal::HasMark(const files::File& file) {
    std::byte mark[8]{};
    return file.ReadAt(0, mark) == sizeof mark && GetAt(mark) == kMark;
}

bool Journal::IsHot() const {
    return HasMark(*file_);
}

bool Journal::MayHoldChange(files::FileSystem& system, const std::string& path) {
    if (!system.Exists(path)) return false;
    try {
        return HasMark(*system.Open(path, kForLook));
    } catch (const Error& error) {
        // Its last user has just removed it.
        if (error.kind() == ErrorKind::NotFound) return false;
        throw;
    }
}

std::optional<std::vector<std::byte>> Journal::ReadSection(std::uint64_t offset) const {
    const std::uint64_t size = file_->Size();
    std::byte header[kHeaderSize]{};
    if (file_->ReadAt(offset, header) != kHeaderSize || GetAt(header) != kMark) return std::nullopt;
    const std::uint64_t length = GetAt(header + 8);
    if (size < offset + kHeaderSize || length > size - offset - kHeaderSize) return std::nullopt;
    std::vector<std::byte> body(static_cast<std::size_t>(length));
    ReadFully(*file_, offset + kHeaderSize, body);
    if (Checksum(body) != GetAt(header + 16)) return std::nullopt;
    return body;
}

void Journal::Restore(std::span<const std::byte> body, const PartFiles& parts) {
    Undo(body, parts, path_);
    if (durability_ != Durability::PowerCut) return;
    for (files::File* file : parts.files)
        if (file) file->Flush();
}

Journal::Recovery Journal::Recover(const PartFiles& parts) {
    Recovery recovery;
    start_ = 0;
    if (!IsHot()) return recovery;
    const auto body = ReadSection(0);
    if (!body) {
        Empty();
        mark_.ClearLeft();
    } else if (body->size() == kKeysMissingSize && body->front() == kKeysMissing) {
        start_ = kHeaderSize + kKeysMissingSize;
        if (const auto change = ReadSection(start_)) {
            Restore(*change, parts);
            ZeroMark(start_);
            recovery.undone = true;
        }
        BodyReader reader(*body, path_);
        reader.Bytes(1);
        recovery.keysMissingFrom = static_cast<std::uint32_t>(reader.Number(4));
    } else {
        Restore(*body, parts);
        Empty();
        mark_.ClearLeft();
        recovery.undone = true;
    }
    return recovery;
}

void Journal::BeginRecordsWithoutKeys(std::uint32_t from) {
    if (!inside_)
        throw Error(ErrorKind::Internal, "records are added by somebody who does not hold the gate");
    mark_.Set();
    // What an earlier change left behind this place must not be taken for a part of it.
    constexpr std::uint64_t kBehind = kHeaderSize + kKeysMissingSize;
    if (file_->Size() > kBehind) ZeroMark(kBehind);
    buffer_.assign(kHeaderSize, std::byte{0});
    buffer_.push_back(kKeysMissing);
    Put<std::uint32_t>(buffer_, from);
    Seal();
    file_->WriteAt(0, buffer_);
    start_ = buffer_.size();
}

// Completes what is in the buffer by its header.
void Journal::Seal() {
    const auto body = std::span(buffer_).subspan(kHeaderSize);
    PutAt(buffer_.data(), kMark);
    PutAt(buffer_.data() + 8, body.size());
    PutAt(buffer_.data() + 16, Checksum(body));
}

void Journal::Undo(std::span<const std::byte> body, const PartFiles& parts, const std::string& path) {
    // Everything is read once before anything is written: a journal that contradicts itself changes nothing.
    for (const bool write : {false, true}) {
        BodyReader reader(body, path);
        while (!reader.atEnd()) {
            const auto number = reader.Number(1);
            if (number >= kPartCount)
                throw Error(ErrorKind::Damaged, "The journal " + path + " contradicts itself.");
            files::File* file = parts[static_cast<Part>(number)];
            if (!file)
                throw Error(
                    ErrorKind::NotFound,
                    "The journal " + path + " must undo a change of a file that is not there any more.");
            const auto oldSize = reader.Number(8);
            const auto count = reader.Number(4);
            // A change makes files longer at most.
            if (!write && file->Size() < oldSize)
                throw Error(ErrorKind::Damaged, "The journal " + path + " belongs to a longer file than " +
                                                    file->path() + " is now.");
            for (std::uint64_t i = 0; i < count; ++i) {
                const auto offset = reader.Number(8);
                const auto bytes = reader.Bytes(reader.Number(4));
                if (offset > oldSize || bytes.size() > oldSize - offset)
                    throw Error(ErrorKind::Damaged, "The journal " + path + " contradicts itself.");
                if (write) file->WriteAt(offset, bytes);
            }
            if (write && file->Size() > oldSize) CutBack(*file, static_cast<Part>(number), oldSize);
        }
    }
}

void Journal::Note(const ChangeSet& changes, const PartFiles& parts) {
    buffer_.assign(kHeaderSize, std::byte{0});
    for (const Part part : kWriteOrder) {
        const auto& ranges = changes.ranges(part);
        if (ranges.empty()) continue;
        files::File* file = parts[part];
        if (!file) throw Error(ErrorKind::Internal, "a change writes to a file that the table does not have");
        const std::uint64_t size = file->Size();
        buffer_.push_back(static_cast<std::byte>(part));
        Put<std::uint64_t>(buffer_, size);
        const std::size_t countAt = buffer_.size();
        Put<std::uint32_t>(buffer_, 0);
        std::uint32_t count = 0;
        StretchReader reader(*file, size);
        for (std::size_t i = 0; i < ranges.size(); ++i) {
            const ChangeSet::Range& range = ranges[i];
            if (range.offset >= size) continue;  // behind the old end: undone by cutting the file
            const auto length =
                static_cast<std::uint32_t>(std::min<std::uint64_t>(range.length, size - range.offset));
            Put<std::uint64_t>(buffer_, range.offset);
            Put<std::uint32_t>(buffer_, length);
            const std::size_t at = buffer_.size();
            buffer_.resize(at + length);
            const auto old = std::span(buffer_).subspan(at, length);
            reader.Read(range.offset, old, i + 1 < ranges.size() ? ranges[i + 1].offset : range.offset);
            if (part == Part::Index) mark_.KeepIn(range.offset, old);
            ++count;
        }
        for (std::size_t i = 0; i < 4; ++i)
            buffer_[countAt + i] = static_cast<std::byte>(count >> (8 * i));
    }
    Seal();
}

void Journal::Apply(const ChangeSet& changes, const PartFiles& parts) const {
    for (const Part part : kWriteOrder) {
        // Pages that lie one behind the other, in the set as in the file, are written together.
        const auto& ranges = changes.ranges(part);
        for (auto range = ranges.begin(); range != ranges.end();) {
            auto whole = *range++;
            for (; range != ranges.end() && range->offset == whole.offset + whole.length &&
                   range->position == whole.position + whole.length;
                 ++range)
                whole.length += range->length;
            const auto data = changes.data(whole);
            if (part == Part::Index && ChangeMark::LiesIn(whole.offset, whole.length)) {
                std::vector<std::byte> marked(data.begin(), data.end());
                mark_.KeepIn(whole.offset, marked);
                parts[part]->WriteAt(whole.offset, marked);
            } else {
                parts[part]->WriteAt(whole.offset, data);
            }
        }
    }
}

void Journal::Commit(const ChangeSet& changes, const PartFiles& parts) {
    if (!inside_)
        throw Error(ErrorKind::Internal, "a change is written by somebody who does not hold the gate");
    if (changes.empty()) return;
    Note(changes, parts);
    try {
        file_->WriteAt(start_, buffer_);
        if (durability_ == Durability::PowerCut) file_->Flush();
        mark_.Set();
    } catch (...) {
        // Nothing was overwritten yet. A journal that cannot be emptied undoes nothing later: it holds what
        // the files hold.
        try {
            ForgetChange();
        } catch (const Error&) {
            static_cast<void>(std::current_exception());
        }
        throw;
    }
    try {
        Apply(changes, parts);
        if (durability_ == Durability::PowerCut)
            for (const Part part : kWriteOrder)
                if (!changes.ranges(part).empty()) parts[part]->Flush();
        Empty();
        mark_.Clear();
    } catch (...) {
        // If putting back fails too, the journal stays and the next one to open the table does it.
        Undo(std::span(buffer_).subspan(kHeaderSize), parts, path_);
        ForgetChange();
        throw;
    }
}

// The length and the checksum go with the mark, so that nothing of them can complete a later header of which
// only the beginning gets written.
void Journal::ZeroMark(std::uint64_t offset) {
    static constexpr std::byte kZeros[kHeaderSize]{};
    file_->WriteAt(offset, kZeros);
    if (durability_ == Durability::PowerCut) file_->Flush();
}

// A change that was undone, or never made: records without keys stay noted.
void Journal::ForgetChange() {
    if (start_ != 0) {
        ZeroMark(start_);
        return;
    }
    Empty();
    mark_.Clear();
}

void Journal::Empty() {
    ZeroMark(0);
    start_ = 0;
    if (file_->Size() <= kKeepSize) return;
    try {
        file_->Truncate(0);
    } catch (const Error&) {
        // It only takes room; what it says is nothing already.
        static_cast<void>(std::current_exception());
    }
}

}  // namespace zu::dbf::transaction
