#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "portable/error/Error.h"
#include "runner/commands/FailureReason.h"
#include "runner/commands/HeaderLine.h"
#include "runner/commands/ImportNote.h"
#include "runner/commands/TemporaryTextFile.h"
#include "tests/unit/runner/TemporaryFile.h"

namespace zu::runner::commands {
namespace {

using Names = std::vector<std::wstring>;

std::string Content(const std::wstring& path) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    std::string bytes(4096, '\0');
    DWORD count = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
    CloseHandle(file);
    bytes.resize(count);
    return bytes;
}

TEST(HeaderLine, HoldsNamesInTheFormOfTheFile) {
    EXPECT_EQ(HeaderLine({L"ID", L"NAME"}, L";", L"\""), L"\"ID\";\"NAME\"");
    EXPECT_EQ(HeaderLine({L"ID", L"NAME"}, L"\t", L""), L"ID\tNAME");
}

TEST(HeaderLine, NamesAreReadWithAndWithoutQuotes) {
    EXPECT_EQ(NamesInHeader(L"\"ID\";NAME; \"A B\" ", L";", L"\""), (Names{L"ID", L"NAME", L"A B"}));
    EXPECT_EQ(NamesInHeader(L"ID", L",", L""), Names{L"ID"});
    EXPECT_EQ(NamesInHeader(L"ID,", L",", L"\""), (Names{L"ID", L""}));
    EXPECT_EQ(NamesInHeader(L"ID,X", L"", L"\""), Names{L"ID,X"}) << "no separator, no end";
}

TEST(HeaderLine, IsPutInFrontAndTakenOffAgain) {
    const TemporaryFile data(L"lines.txt", "1,\"\xE4\"\r\n2,b\r\n");
    const TemporaryTextFile with;
    const TemporaryTextFile without;
    CopyWithHeader(data.path(), L"ID,T", with.path());
    EXPECT_EQ(Content(with.path()), "ID,T\r\n1,\"\xE4\"\r\n2,b\r\n");
    EXPECT_EQ(CopyWithoutHeader(with.path(), without.path()), L"ID,T");
    EXPECT_EQ(Content(without.path()), "1,\"\xE4\"\r\n2,b\r\n");
}

TEST(HeaderLine, AFileMayHaveAMarkLoneLineFeedsOrNoLineEndAtAll) {
    const TemporaryTextFile rest;
    EXPECT_EQ(CopyWithoutHeader(TemporaryFile(L"a.txt", "\xEF\xBB\xBFID\n1\n").path(), rest.path()), L"ID");
    EXPECT_EQ(Content(rest.path()), "1\n");
    EXPECT_EQ(CopyWithoutHeader(TemporaryFile(L"b.txt", "ID").path(), rest.path()), L"ID");
    EXPECT_EQ(Content(rest.path()), "");
    EXPECT_EQ(CopyWithoutHeader(TemporaryFile(L"c.txt", "").path(), rest.path()), L"");
}

TEST(HeaderLine, AFileThatIsMissingIsNamed) {
    const TemporaryTextFile rest;
    try {
        CopyWithoutHeader(L"no such file.txt", rest.path());
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::NotFound);
        EXPECT_NE(std::string(error.what()).find("no such file.txt"), std::string::npos);
    }
}

TEST(TemporaryTextFile, GoesWithTheObject) {
    std::wstring path;
    {
        const TemporaryTextFile file;
        path = file.path();
        EXPECT_NE(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES);
    }
    EXPECT_EQ(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(ImportNote, TellsLinesFromOtherNotes) {
    EXPECT_TRUE(IsImportNote(L"Row 2 (line 3) of a.txt was not added: x"));
    EXPECT_FALSE(IsImportNote(L"record added"));
    EXPECT_FALSE(IsImportNote(L"Rowing"));
}

TEST(ImportNote, NamesTheFileAndTheLineThatTheUserKnows) {
    EXPECT_EQ(ImportNote(L"Row 2 (line 3) of C:\\tmp\\z1 was not added: x", L"C:\\tmp\\z1", L"a.txt", 1),
              L"Row 2 (line 4) of a.txt was not added: x");
    EXPECT_EQ(ImportNote(L"Row 2 (line 3) of a.txt was not added: x", L"a.txt", L"a.txt", 0),
              L"Row 2 (line 3) of a.txt was not added: x");
    EXPECT_EQ(ImportNote(L"Row 2 (line ) of z", L"", L"a.txt", 1), L"Row 2 (line ) of z");
}

TEST(ImportNote, LeavesNumbersForProgramsOut) {
    EXPECT_EQ(
        ImportNote(
            L"Row 1 (line 1) of a was not added: field N does not take \"x\": 6 - Too great. in DbfFromFile",
            L"a", L"a", 0),
        L"Row 1 (line 1) of a was not added: field N does not take \"x\": Too great.");
    EXPECT_EQ(ImportNote(L"Row 1 (line 1) of a was not added: A - B", L"a", L"a", 0),
              L"Row 1 (line 1) of a was not added: A - B");
}

TEST(FailureReason, IsTheNoteWithoutNumberAndFunction) {
    EXPECT_EQ(PlainNote(L"-2147024894 - The file x cannot be opened. in DbfToFile"),
              L"The file x cannot be opened.");
    EXPECT_EQ(PlainNote(L"nothing to cut in Dbf words here"), L"nothing to cut in Dbf words here");
}

}  // namespace
}  // namespace zu::runner::commands
