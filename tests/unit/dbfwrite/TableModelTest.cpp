#include <gtest/gtest.h>

#include <cstdlib>

#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbfwrite/TableModel.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

class TableModels : public ::testing::TestWithParam<Format> {
protected:
    // One table of 1,500 changes. Every third hundred is made as a batch.
    void Drive(unsigned seed) {
        files::MemoryFiles files;
        files.AllowMapping(false);
        MakeTable(files, GetParam());
        TableModel model(files, seed);
        auto first = OpenTable(files);
        const auto second = OpenTable(files);
        for (int hundred = 0; hundred < 15; ++hundred) {
            const bool gathered = hundred % 3 == 1;
            {
                const auto batch = gathered ? first->BeginBatch() : nullptr;
                for (int i = 0; i < 100; ++i) {
                    model.Change(i % 7 || gathered ? *first : *second);
                    if (HasFatalFailure()) return;
                }
            }
            model.ExpectEqual();
            if (HasFailure()) return;
            if (hundred % 5 == 0) first = OpenTable(files);
        }
        EXPECT_GT(model.size(), 300U);
    }
};

// ZU_MODEL_ROUNDS: how many tables; one when it is not set.
TEST_P(TableModels, TableMemoAndTagsAgreeWithTheModelAfterRandomChanges) {
    const char* rounds = std::getenv("ZU_MODEL_ROUNDS");
    const long count = rounds ? std::atol(rounds) : 1;
    for (long round = 1; round <= count; ++round) {
        Drive(static_cast<unsigned>(round));
        ASSERT_FALSE(HasFailure()) << "seed " << round;
    }
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
