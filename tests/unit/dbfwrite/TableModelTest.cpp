#include <gtest/gtest.h>

#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbfwrite/TableModel.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

class TableModels : public ::testing::TestWithParam<Format> {};

TEST_P(TableModels, TableMemoAndTagsAgreeWithTheModelAfterRandomChanges) {
    files::MemoryFiles files;
    files.AllowMapping(false);
    MakeTable(files, GetParam());
    TableModel model(files, 1);
    auto first = OpenTable(files);
    const auto second = OpenTable(files);
    for (int batch = 0; batch < 15; ++batch) {
        for (int i = 0; i < 100; ++i) {
            model.Change(i % 7 ? *first : *second);
            if (HasFatalFailure()) return;
        }
        model.ExpectEqual();
        if (HasFailure()) return;
        if (batch % 5 == 0) first = OpenTable(files);
    }
    EXPECT_GT(model.size(), 300U);
}

INSTANTIATE_TEST_SUITE_P(Formats, TableModels,
                         ::testing::Values(Format::DBase3, Format::FoxPro2, Format::VisualFoxPro),
                         [](const auto& instance) {
                             return instance.param == Format::DBase3    ? "DBase3"
                                    : instance.param == Format::FoxPro2 ? "FoxPro2"
                                                                        : "VisualFoxPro";
                         });

}  // namespace
}  // namespace zu::dbf::test
