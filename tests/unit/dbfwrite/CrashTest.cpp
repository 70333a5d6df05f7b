#include <gtest/gtest.h>

#include "portable/error/Error.h"
#include "portable/files/FaultyFiles.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbfwrite/TableModel.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

using files::FaultyFiles;

struct Case {
    FaultyFiles::Fault fault;
    bool powerCut;
    const char* name;
};

class FaultyTables : public ::testing::TestWithParam<Case> {};

// Every change is tried with a fault at its first write, at its second, and so on until it comes through.
TEST_P(FaultyTables, AreWholeAfterAFaultAtAnyWrite) {
    files::MemoryFiles memory;
    memory.AllowMapping(false);
    MakeTable(memory);
    FaultyFiles files(memory);
    technologies::TechnologySettings settings;
    settings.survivePowerCut = GetParam().powerCut;
    TableModel model(memory, 7);
    for (int i = 0; i < 60; ++i)
        model.Change(*OpenTable(files));
    ASSERT_FALSE(HasFailure());
    std::size_t faults = 0;
    for (int change = 0; change < 40; ++change) {
        for (std::size_t step = 1; step < 200; ++step) {
            bool finished = false;
            {
                const auto table = OpenTable(files, settings);
                files.FailAt(step, GetParam().fault);
                try {
                    model.Change(*table);
                    finished = true;
                } catch (const Error&) {
                    ++faults;
                }
                if (GetParam().fault == FaultyFiles::Fault::Refuse ||
                    GetParam().fault == FaultyFiles::Fault::Full)
                    files.Heal();
            }
            files.Heal();
            if (finished) break;
            model.ExpectBeforeOrAfter();
            ASSERT_FALSE(HasFailure()) << "fault at step " << step << " of change " << change;
        }
    }
    model.ExpectEqual();
    EXPECT_GT(faults, 50U);
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultyTables,
                         ::testing::Values(Case{FaultyFiles::Fault::Refuse, false, "WriteError"},
                                           Case{FaultyFiles::Fault::Full, false, "FullDisk"},
                                           Case{FaultyFiles::Fault::Crash, false, "EndOfTheProcess"},
                                           Case{FaultyFiles::Fault::Torn, false, "EndInTheMiddleOfAWrite"},
                                           Case{FaultyFiles::Fault::Crash, true,
                                                "EndOfTheProcessWithFlushes"}),
                         [](const auto& instance) { return std::string(instance.param.name); });

}  // namespace
}  // namespace zu::dbf::test
