#include "host/technologies/dbf/transaction/StretchReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "portable/error/Error.h"
#include "tests/unit/InventedFile.h"

namespace zu::dbf::transaction {
namespace {

constexpr std::uint64_t kLockBytes = 1'000'000'000;

/// Counts what is read of a file that says of each place which one it is, however long it is.
class CountedFile final : public test::InventedFile {
public:
    explicit CountedFile(std::uint64_t size) : InventedFile("t.dbf"), size_(size) {}

    static std::byte At(std::uint64_t offset) { return static_cast<std::byte>(offset * 7 + offset / 251); }
    std::size_t reads() const { return reads_; }
    std::uint64_t furthest() const { return furthest_; }
    void CutTo(std::uint64_t size) { size_ = size; }

    std::uint64_t Size() const override { return size_; }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const override {
        ++reads_;
        furthest_ = std::max(furthest_, offset + buffer.size());
        std::size_t count = 0;
        for (; count < buffer.size() && offset + count < size_; ++count)
            buffer[count] = At(offset + count);
        return count;
    }

private:
    std::uint64_t size_;
    mutable std::size_t reads_ = 0;
    mutable std::uint64_t furthest_ = 0;
};

/// Reads a piece at each of the places and checks what comes; answers how often the file was read.
std::size_t ReadsFor(const CountedFile& file, const std::vector<std::uint64_t>& places, std::size_t length) {
    const std::size_t before = file.reads();
    StretchReader reader(file, file.Size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        std::vector<std::byte> piece(length);
        reader.Read(places[i], piece, i + 1 < places.size() ? places[i + 1] : places[i]);
        for (std::size_t k = 0; k < length; ++k)
            EXPECT_EQ(piece[k], CountedFile::At(places[i] + k)) << places[i] << " + " << k;
    }
    return file.reads() - before;
}

std::vector<std::uint64_t> Places(std::uint64_t first, std::int64_t step, std::size_t count) {
    std::vector<std::uint64_t> places;
    for (std::size_t i = 0; i < count; ++i)
        places.push_back(first + static_cast<std::uint64_t>(step * static_cast<std::int64_t>(i)));
    return places;
}

TEST(StretchReader, ReadsPiecesThatFollowCloselyTogether) {
    const CountedFile file(300'000);
    EXPECT_LE(ReadsFor(file, Places(161, 150, 1900), 150), 6U);
    EXPECT_LE(ReadsFor(file, Places(285'161, -150, 1900), 150), 6U);
}

TEST(StretchReader, ReadsPiecesThatLieFarApartAlone) {
    const CountedFile file(5'000'000);
    EXPECT_EQ(ReadsFor(file, Places(1000, 40'000, 100), 150), 100U);
    EXPECT_EQ(ReadsFor(file, {77}, 1), 1U);
}

TEST(StretchReader, ReadsInAnyOrderAndUpToTheEnd) {
    const CountedFile file(10'000);
    ReadsFor(file, {9990, 8000, 9000, 0, 10, 9999 - 9, 5000, 5001, 5000}, 10);
}

TEST(StretchReader, ReadsNothingUnaskedWhereOthersMayHoldLocks) {
    const CountedFile file(2 * kLockBytes);
    EXPECT_EQ(ReadsFor(file, Places(kLockBytes - 500, 100, 10), 100), 10U);
    EXPECT_EQ(file.furthest(), kLockBytes + 500);
}

TEST(StretchReader, SaysThatTheFileBecameShorter) {
    CountedFile file(10'000);
    StretchReader reader(file, 10'000);
    file.CutTo(100);
    std::array<std::byte, 8> piece{};
    EXPECT_THROW(reader.Read(200, piece, 208), Error);
    EXPECT_THROW(reader.Read(200, piece, 200), Error);
}

}  // namespace
}  // namespace zu::dbf::transaction
