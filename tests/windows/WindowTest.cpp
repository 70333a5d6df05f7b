#include "tests/windows/WindowTest.h"

#include <filesystem>

namespace zu::windows {

namespace {

/// One line a record: name|age|deleted.
constexpr const char* kPrintRecords = R"(
Dim view
Set view = DbfSelect(Args(0) & ">people", "")
view.MoveFirst
Do Until view.Eof
    Echo view("NAME").Value & "|" & CDbl(view("AGE").Value) & "|" & view("##DELETED").Value
    view.MoveNext
Loop
)";

}  // namespace

void WindowTest::SetUp() {
    const auto* const test = ::testing::UnitTest::GetInstance()->current_test_info();
    folder_ = FreshFolder(test->name());
}

void WindowTest::TearDown() {
    form_.reset();
    script_.reset();
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
}

void WindowTest::Run(const std::string& script, RunningScript::Host host) {
    script_ = std::make_unique<RunningScript>(folder_, script, host);
    form_ = std::make_unique<FormDriver>(*script_);
}

void WindowTest::Edit(const std::vector<Person>& people, const std::string& arguments) {
    WritePeople(folder_, people);
    Run("Echo \"edit \" & DbfEdit(Args(0) & \">people\"" + arguments + ")\n" + kPrintRecords);
    ASSERT_TRUE(form_->Open()) << Output();
}

void WindowTest::Pick(const std::vector<Person>& people, const std::string& arguments) {
    WritePeople(folder_, people);
    Run("Dim picked\nSet picked = DbfPick(Args(0) & \">people\"" + arguments +
        ")\nIf picked Is Nothing Then\n  Echo \"nothing\"\nElse\n  Echo \"picked \" & "
        "picked(\"NAME\").Value\nEnd If\n");
    ASSERT_TRUE(form_->Open()) << Output();
}

void WindowTest::Command(const std::vector<Person>& people, const std::vector<std::wstring>& words) {
    WritePeople(folder_, people);
    script_ = std::make_unique<RunningScript>(folder_, words);
    form_ = std::make_unique<FormDriver>(*script_);
    ASSERT_TRUE(form_->Open()) << Output();
}

std::string WindowTest::ExitAndRead() {
    EXPECT_TRUE(form_->Exit());
    return Output();
}

}  // namespace zu::windows
