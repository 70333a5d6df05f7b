#pragma once

#include <memory>
#include <string>

#include "tests/unit/cdx/TestTable.h"

namespace zu::dbf::cdx {

/// The table that the indexes of the corpus belong to.
inline std::unique_ptr<TestTable> MakeFuzzTable() {
    auto table = std::make_unique<TestTable>();
    table->Field("NAME", expression::Storage::Character, 12)
        .Field("NUM", expression::Storage::NumberText, 6)
        .Field("DAY", expression::Storage::DateText, 8)
        .NullableField("N", expression::Storage::Integer32, 4);
    for (int i = 0; i < 60; ++i) {
        table->Add({"name" + std::to_string(i * 37 % 61), std::to_string(i % 9),
                    "2024013" + std::to_string(i % 2), Int32Bytes(i * 1001)},
                   i % 7 == 0);
        if (i % 5 == 0) table->SetNull(static_cast<std::uint32_t>(i + 1), 3);
    }
    return table;
}

}  // namespace zu::dbf::cdx
