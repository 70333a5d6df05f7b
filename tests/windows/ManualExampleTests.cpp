// The examples of the manual that open windows; tests/docs runs all others.
#include <fstream>
#include <iterator>

#include "tests/windows/WindowTest.h"

namespace zu::windows {
namespace {

/// The content of the block of this kind under the heading "Example" of a function's page.
std::string Block(const std::string& function, const std::string& kind) {
    std::ifstream file(ZU_DOCS_FOLDER "/functions/" + function + ".md", std::ios::binary);
    const std::string page(std::istreambuf_iterator<char>(file), {});
    const std::size_t heading = page.find("## Example");
    const std::size_t fence = page.find("```" + kind + "\n", heading);
    if (heading == std::string::npos || fence == std::string::npos) return {};
    const std::size_t start = page.find('\n', fence) + 1;
    return page.substr(start, page.find("```", start) - start);
}

/// Lines without carriage returns.
std::string Lines(const std::string& text) {
    std::string lines;
    for (const char character : text)
        if (character != '\r') lines += character;
    return lines;
}

/// Runs zugenerate, which lies beside this program.
void MakeSampleTables(const std::wstring& folder) {
    std::wstring command = L"zugenerate.exe \"" + folder + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                               nullptr, &start, &process));
    WaitForSingleObject(process.hProcess, 60000);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

class ManualExample : public WindowTest {
protected:
    /// Runs the example of a function's page on the sample tables, which the manual has in the folder sales.
    void RunExample(const std::string& function) {
        MakeSampleTables(folder_ + L"sales");
        expected_ = Block(function, "output");
        Run("Engine.DataFolder = Args(0)\n" + Block(function, "vbscript"));
        ASSERT_TRUE(form_->Open()) << Output();
    }

    std::string expected_;
};

TEST_F(ManualExample, OfDbfEditSaysThatTheWindowWasClosed) {
    RunExample("DbfEdit");
    EXPECT_TRUE(form_->Exit());
    EXPECT_EQ(Lines(Output()), expected_);
}

TEST_F(ManualExample, OfDbfPickCountsTheOrdersOfTheFirstCustomer) {
    RunExample("DbfPick");
    form_->Press(VK_RETURN);
    EXPECT_TRUE(form_->WaitForClose());
    EXPECT_EQ(Lines(Output()), expected_);
}

}  // namespace
}  // namespace zu::windows
