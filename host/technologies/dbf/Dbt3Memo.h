#pragma once

#include "host/technologies/dbf/MemoFile.h"
#include "host/technologies/dbf/MemoSource.h"

namespace zu::dbf {

/// Memos of dBASE III, Clipper and FoxBASE: blocks of 512 bytes, a text ends at its first 1A byte or with the
/// file. (Writers put two of them, but only one is certain.)
class Dbt3Memo final : public MemoFile {
public:
    explicit Dbt3Memo(MemoSource source) : source_(std::move(source)) {}
    MemoOutcome Read(std::uint32_t block, std::string& out) override;

private:
    MemoSource source_;
};

}  // namespace zu::dbf
