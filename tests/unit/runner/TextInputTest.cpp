#include "runner/TextInput.h"

#include <gtest/gtest.h>

#include <thread>

#include "com/ComError.h"

namespace zu::runner {
namespace {

// Standard input is a pipe that is fed by a thread, so that also long texts and late ones are read.
class FedInput {
public:
    explicit FedInput(std::vector<std::string> pieces) : before_(GetStdHandle(STD_INPUT_HANDLE)) {
        HANDLE write = nullptr;
        CreatePipe(&read_, &write, nullptr, 0);
        SetStdHandle(STD_INPUT_HANDLE, read_);
        feeder_ = std::thread([write, pieces = std::move(pieces)] {
            for (const std::string& piece : pieces) {
                DWORD written = 0;
                WriteFile(write, piece.data(), static_cast<DWORD>(piece.size()), &written, nullptr);
            }
            CloseHandle(write);
        });
    }
    ~FedInput() {
        CloseHandle(read_);
        feeder_.join();
        SetStdHandle(STD_INPUT_HANDLE, before_);
    }
    FedInput(const FedInput&) = delete;
    FedInput& operator=(const FedInput&) = delete;

private:
    HANDLE before_;
    HANDLE read_ = nullptr;
    std::thread feeder_;
};

TEST(TextInput, ReadsLinesWithEveryUsualEnd) {
    const FedInput fed({"one\r\ntwo\n\nlast"});
    TextInput input;
    EXPECT_EQ(input.ReadLine(), L"one");
    EXPECT_EQ(input.ReadLine(), L"two");
    EXPECT_EQ(input.ReadLine(), L"");
    EXPECT_FALSE(input.AtEnd());
    EXPECT_EQ(input.ReadLine(), L"last");
    EXPECT_TRUE(input.AtEnd());
}

TEST(TextInput, ReadingPastTheEndIsAnError) {
    const FedInput fed({"x\n"});
    TextInput input;
    input.SkipLine();
    EXPECT_THROW(input.ReadLine(), com::ComError);
    EXPECT_THROW(input.ReadAll(), com::ComError);
    EXPECT_THROW(input.Read(1), com::ComError);
    EXPECT_THROW(input.SkipLine(), com::ComError);
    EXPECT_TRUE(input.AtEndOfLine());
}

TEST(TextInput, ReadsCharactersNotBytes) {
    const FedInput fed({"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z"});
    TextInput input;
    EXPECT_EQ(input.Read(3), L"a\u00E9\u20AC");
    EXPECT_EQ(input.Read(2), L"\xD83D\xDE00");
    EXPECT_EQ(input.Read(9), L"z");
}

TEST(TextInput, ReadsACharacterThatArrivesInPieces) {
    const FedInput fed({"\xE2", "\x82", "\xAC"});
    TextInput input;
    EXPECT_EQ(input.Read(1), L"\u20AC");
}

TEST(TextInput, TakesBytesThatAreNoUtf8AsAnsi) {
    const FedInput fed({"caf\xE9\nna\xEFve"});
    TextInput input;
    EXPECT_EQ(input.ReadLine(), L"caf\u00E9");
    EXPECT_EQ(input.Read(5), L"na\u00EFve");
}

TEST(TextInput, SkipsAMarkAtTheBeginningOnly) {
    const FedInput fed({"\xEF", "\xBB\xBFone\n\xEF\xBB\xBFtwo"});
    TextInput input;
    EXPECT_EQ(input.ReadLine(), L"one");
    EXPECT_EQ(input.ReadLine(), L"\uFEFFtwo");
}

TEST(TextInput, AShortLineDoesNotWaitForMore) {
    // The writer closes only after the line was read: waiting for three bytes of a possible mark would hang.
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    const HANDLE before = GetStdHandle(STD_INPUT_HANDLE);
    CreatePipe(&read, &write, nullptr, 0);
    SetStdHandle(STD_INPUT_HANDLE, read);
    DWORD written = 0;
    WriteFile(write, "y\n", 2, &written, nullptr);
    TextInput input;
    EXPECT_EQ(input.ReadLine(), L"y");
    CloseHandle(write);
    EXPECT_TRUE(input.AtEnd());
    CloseHandle(read);
    SetStdHandle(STD_INPUT_HANDLE, before);
}

TEST(TextInput, ReadsTheRestAtOnce) {
    const std::string longText(100'000, 'x');
    const FedInput fed({"first\n", longText, "\r\nend\n"});
    TextInput input;
    input.SkipLine();
    EXPECT_EQ(input.ReadAll().size(), longText.size() + 6);
    EXPECT_TRUE(input.AtEnd());
}

TEST(TextInput, FindsALineEndThatIsFarAway) {
    const std::string longText(100'000, 'y');
    const FedInput fed({longText, "\nnext"});
    TextInput input;
    EXPECT_EQ(input.ReadLine().size(), longText.size());
    EXPECT_EQ(input.ReadLine(), L"next");
}

TEST(TextInput, NothingAtAllIsTheEnd) {
    const FedInput fed({});
    TextInput input;
    EXPECT_TRUE(input.AtEnd());
    EXPECT_TRUE(input.AtEndOfLine());
    EXPECT_EQ(input.ReadBytes(), "");
}

}  // namespace
}  // namespace zu::runner
