// table_worker change FOLDER SEED: changes the work table until it is ended, and writes a line before and
// after each change: "begin KIND ID VERSION", "done KIND ID VERSION".
// table_worker share FOLDER NUMBER COUNT: appends COUNT records of its own, changes each of them and counts
// up the first record of the table as often.
#include <windows.h>

#include <cstdio>
#include <exception>
#include <random>
#include <string>

#include "WorkView.h"
#include "com/Bstr.h"
#include "com/ComError.h"
#include "host/engine/EngineState.h"
#include "portable/text/Utf.h"

namespace zu::test {
namespace {

/// Straight to the other process: what has been said stays said when this one is ended.
void Say(const std::string& line) {
    const std::string text = line + "\n";
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), text.data(), static_cast<DWORD>(text.size()), &written,
              nullptr);
}

class Changer {
public:
    Changer(std::wstring_view folder, unsigned seed) : view_(folder), random_(seed) {}

    void Run() {
        constexpr int kMostChanges = 100'000;  // nobody has to end a worker that was forgotten
        for (int i = 0; i < kMostChanges; ++i)
            Step();
    }

private:
    void Step() {
        const LONG count = view_.Count();
        const unsigned dice = random_() % 10;
        if (count == 0 || (dice < 3 && count < 1200)) {
            Do("append", {count + 1, 1},
               [&](const WorkRecord& to) { return view_.Append(to.id, to.version); });
            return;
        }
        const auto index = static_cast<LONG>(random_() % static_cast<unsigned>(count));
        WorkRecord record = view_.Read(index);
        if (dice < 8) {
            ++record.version;
            Do("change", record,
               [&](const WorkRecord& to) { return view_.Change(index, to.id, to.version); });
        } else {
            record.deleted = !record.deleted;
            Do(record.deleted ? "delete" : "undelete", record,
               [&](const WorkRecord& to) { return view_.Mark(index, to.deleted); });
        }
    }

    void Append() {
        Do("append", {view_.Count() + 1, 1},
           [&](const WorkRecord& to) { return view_.Append(to.id, to.version); });
    }

    void AppendBatch(unsigned records) {
        view_.BeginBatch();
        for (; records > 0; --records)
            Append();
        view_.EndBatch();
    }

    template <class Body>
    static void Do(const char* kind, const WorkRecord& to, Body&& body) {
        const std::string what =
            std::string(kind) + " " + std::to_string(to.id) + " " + std::to_string(to.version);
        Say("begin " + what);
        if (body(to)) return Say("done " + what);
        // Nobody else is there who could be in the way.
        const std::wstring& reason = host::EngineState::Current().messages.lastError().text;
        Say("refused " + what + ": " + text::ToUtf8(com::AsUtf16(reason)));
    }

    WorkView view_;
    std::mt19937 random_;
};

/// Until the file "go" is there: the processes are to work at the same time, however long each takes to
/// start.
void WaitForGo(std::wstring_view folder) {
    constexpr ULONGLONG kLongest = 60'000;  // then nobody is there any more to say go
    const std::wstring file = std::wstring(folder) + L"\\go";
    const ULONGLONG start = GetTickCount64();
    while (GetFileAttributesW(file.c_str()) == INVALID_FILE_ATTRIBUTES && GetTickCount64() - start < kLongest)
        SwitchToThread();
}

void Share(std::wstring_view folder, LONG number, LONG count) {
    WorkView view(folder);
    Say("ready");
    WaitForGo(folder);
    int lost = 0;
    for (LONG i = 1; i <= count; ++i) {
        const LONG id = number * 10'000 + i;
        while (!view.Append(id, 1)) {
        }
        const LONG index = view.Count() - 1;
        while (!view.Change(index, id, 2)) {
        }
    }
    // One behind the other, so that the processes meet as often as they can.
    for (LONG i = 1; i <= kCountings; ++i)
        lost += view.CountUp(0);
    Say("done " + std::to_string(count) + " " + std::to_string(lost));
}

}  // namespace
}  // namespace zu::test

int wmain(int count, wchar_t** arguments) {
    if (count < 4) return 64;
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    try {
        const std::wstring_view kind = arguments[1];
        if (kind == L"change") {
            zu::test::Changer(arguments[2], static_cast<unsigned>(std::stoul(arguments[3]))).Run();
        } else if (kind == L"share" && count == 5) {
            zu::test::Share(arguments[2], std::stol(arguments[3]), std::stol(arguments[4]));
        } else {
            return 64;
        }
    } catch (const zu::com::ComError& error) {
        std::fwprintf(stderr, L"table_worker: 0x%08lX %ls\n", static_cast<unsigned long>(error.code()),
                      error.description().c_str());
        return 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "table_worker: %s\n", error.what());
        return 1;
    }
    CoUninitialize();
    return 0;
}
