#include "host/technologies/dbf/MemoFile.h"

#include <array>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/Dbt3Memo.h"
#include "host/technologies/dbf/Dbt4Memo.h"
#include "host/technologies/dbf/FptMemo.h"

namespace zu::dbf {

namespace {

std::unique_ptr<MemoFile> OpenDbt4(MemoSource source, std::vector<std::string>& warnings) {
    std::array<std::byte, 2> size{};
    if (!source.Read(Dbt4Memo::kBlockSizeOffset, size)) {
        warnings.push_back(source.path() +
                           ": the memo file has no whole header; memo fields are read as null.");
        return nullptr;
    }
    const auto stated = LoadLittle<std::uint16_t>(size.data());
    return std::make_unique<Dbt4Memo>(std::move(source), stated != 0 ? stated : Dbt4Memo::kUsualBlockSize);
}

std::unique_ptr<MemoFile> OpenFpt(MemoSource source, std::vector<std::string>& warnings) {
    std::array<std::byte, 2> size{};
    if (!source.Read(fpt::kBlockSize, size)) {
        warnings.push_back(source.path() +
                           ": the memo file has no whole header; memo fields are read as null.");
        return nullptr;
    }
    const std::uint32_t stated =
        std::to_integer<std::uint32_t>(size[0]) << 8 | std::to_integer<std::uint32_t>(size[1]);
    if (stated == 0) {
        warnings.push_back(source.path() +
                           ": the memo file states the block size 0; memo fields are read as null.");
        return nullptr;
    }
    return std::make_unique<FptMemo>(std::move(source), stated);
}

}  // namespace

std::unique_ptr<MemoFile> MemoFile::Open(std::unique_ptr<files::File> file, MemoFormat format,
                                         std::vector<std::string>& warnings) {
    MemoSource source(std::move(file));
    switch (format) {
        case MemoFormat::Dbt3:
            return std::make_unique<Dbt3Memo>(std::move(source));
        case MemoFormat::Dbt4:
            return OpenDbt4(std::move(source), warnings);
        case MemoFormat::Fpt:
            return OpenFpt(std::move(source), warnings);
        default:
            warnings.push_back(source.path() +
                               ": memo files of this kind are not read; memo fields are read as null.");
            return nullptr;
    }
}

}  // namespace zu::dbf
