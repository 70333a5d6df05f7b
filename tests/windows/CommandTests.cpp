// The grid opened from the command line.
#include <fstream>
#include <iterator>

#include "tests/windows/WindowTest.h"

namespace zu::windows {
namespace {

class GridCommand : public WindowTest {};

TEST_F(GridCommand, PickWritesTheRecordThatWasChosen) {
    Command(FivePeople(), {L"pick", L"people", L"--title", L"Who is it?"});
    EXPECT_EQ(FormDriver::TextOf(form_->form()), L"Who is it?");
    form_->Press(VK_DOWN);
    ASSERT_TRUE(form_->WaitForCell(3, 1));
    form_->Press(VK_RETURN);
    EXPECT_TRUE(form_->WaitForClose());
    const std::string output = Output();
    EXPECT_EQ(output.substr(0, output.find('\n')), "NAME    " + FivePeople()[1].name);
    EXPECT_EQ(script_->ExitCode(), 0U);
}

TEST_F(GridCommand, PickWritesJsonToo) {
    Command(FivePeople(), {L"pick", L"people", L"--json", L"--fields", L"NAME"});
    form_->Press(VK_RETURN);
    EXPECT_TRUE(form_->WaitForClose());
    EXPECT_EQ(Output(), "[ {\"NAME\": \"" + FivePeople()[0].name + "\"}\n]\n");
}

TEST_F(GridCommand, PickWithoutAChoiceIsAFailure) {
    Command(FivePeople(), {L"pick", L"people"});
    form_->Press(VK_ESCAPE);
    EXPECT_TRUE(form_->WaitForClose());
    EXPECT_EQ(Output(), "zurun: no record was picked\n");
    EXPECT_EQ(script_->ExitCode(), 1U);
}

TEST_F(GridCommand, EditChangesTheRecordsOfTheCondition) {
    Command(FivePeople(), {L"edit", L"people", L"NAME = 'Bertil'"});
    EXPECT_EQ(FormDriver::TextOf(form_->form()), L"people");
    EXPECT_TRUE(form_->WaitForCellText(L"Bertil"));
    form_->Press(VK_F2);
    ASSERT_TRUE(form_->WaitForEditor(true));
    form_->Type(L"Zoe");
    form_->Press(VK_RETURN);
    ASSERT_TRUE(form_->WaitForState(fgGrid::kIsDirty, 1));
    ASSERT_TRUE(form_->Until([&] { return form_->State(fgGrid::kIsDirty) == 0; },
                             [&] { form_->PushButton(L"&Update"); }));
    EXPECT_EQ(ExitAndRead(), "");
    EXPECT_EQ(script_->ExitCode(), 0U);
    std::ifstream table(std::string(folder_.begin(), folder_.end()) + "people.dbf", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(table), {}};
    EXPECT_NE(bytes.find("Zoe"), std::string::npos);
    EXPECT_EQ(bytes.find("Bertil"), std::string::npos);
}

}  // namespace
}  // namespace zu::windows
