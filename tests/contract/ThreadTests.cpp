// Threads: each has its own engine, nothing is shared.
#include <atomic>
#include <thread>

#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;
using fake::Journal;
using fake::Scene;

namespace {

/// Lets two threads go on together.
class Gate {
public:
    explicit Gate(int threads) : missing_(threads) {}
    void Pass() {
        --missing_;
        while (missing_ > 0)
            std::this_thread::yield();
    }

private:
    std::atomic<int> missing_;
};

/// What one thread saw; looked at on the main thread.
struct Findings {
    bool initialised = false;
    int wrongCounts = 0;
    int processed = 0;
    std::size_t engineStarts = 0;
    std::size_t foreignCalls = 0;
    std::size_t liveInside = 0;
    std::size_t liveAfter = 99;
};

constexpr int kRounds = 300;

/// Uses the component in an apartment of its own, with a technology and a number of records of its own.
Findings UseComponent(const wchar_t* technology, LONG records, Gate& gate) {
    Findings findings;
    findings.initialised = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    Scene().technology = technology;
    Scene().records = records;
    {
        const auto functions = Create(L"ZuDBFFunctions.Functions").tryAs<_Functions>();
        gate.Pass();
        for (int round = 0; functions && round < kRounds; ++round) {
            LONG count = 0;
            functions->DbfCount(Variant(L"d>t"), nullptr, &count);
            if (count != records) ++findings.wrongCounts;
            ComPtr<_ZuDbRef> table;
            functions->DbfOpen(Variant(L"d>t"), table.put());
            LONG processed = 0;
            if (table) {
                table->Process(Bstr(L"Each").get(), nullptr, Variant::Missing(), 0, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &processed);
            }
            findings.processed += processed;
            Scene().contextItems.clear();
        }
        findings.liveInside = Journal::OfThread().Live();
    }
    const std::string own =
        "ZuDatabaseService.OpenTable(\"" + std::string(1, static_cast<char>(*technology)) + "|";
    for (const std::string& call : Journal::OfThread().calls()) {
        if (call == "ZuProject.Engine()") ++findings.engineStarts;
        if (call.find("ZuDatabaseService.OpenTable(") == 0 && call.find(own) != 0) ++findings.foreignCalls;
    }
    CoUninitialize();
    findings.liveAfter = Journal::OfThread().Live();
    return findings;
}

}  // namespace

TEST(Threads, TwoApartmentsUseTheComponentAtOnceWithTheirOwnEngines) {
    Gate gate(2);
    Findings first;
    Findings second;
    std::thread one([&] { first = UseComponent(L"A", 3, gate); });
    std::thread two([&] { second = UseComponent(L"B", 5, gate); });
    one.join();
    two.join();
    for (const Findings* findings : {&first, &second}) {
        EXPECT_TRUE(findings->initialised);
        EXPECT_EQ(findings->wrongCounts, 0);
        EXPECT_EQ(findings->engineStarts, 1u);
        EXPECT_EQ(findings->foreignCalls, 0u);
        EXPECT_EQ(findings->liveInside, 1u) << "only the engine is left";
        EXPECT_EQ(findings->liveAfter, 0u);
    }
    EXPECT_EQ(first.processed, kRounds * 3);
    EXPECT_EQ(second.processed, kRounds * 5);
    EXPECT_EQ(ComponentCanUnload(), S_OK);
}

TEST(Threads, ThreadsOneAfterTheOtherLeaveNothing) {
    for (int round = 0; round < 20; ++round) {
        Gate gate(1);
        Findings findings;
        std::thread thread([&] { findings = UseComponent(L"A", 1, gate); });
        thread.join();
        EXPECT_EQ(findings.engineStarts, 1u);
        EXPECT_EQ(findings.liveAfter, 0u);
        EXPECT_EQ(ComponentCanUnload(), S_OK);
    }
}

}  // namespace zu::contract
