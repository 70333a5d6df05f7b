// Exports and copies through runs of records and those through single values write the same bytes.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "EngineDll.h"
#include "com/Bstr.h"
#include "com/ComError.h"
#include "component/table/CopyOutcome.h"
#include "component/table/GatheredRows.h"
#include "component/table/RowCopy.h"
#include "component/table/RunCopy.h"
#include "component/textio/TextExport.h"
#include "idl/RecordRuns.h"
#include "idl/Zuengine.h"
#include "portable/error/Error.h"
#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledDataView.h"
#include "tests/unit/dbf/FieldContents.h"
#include "tests/unit/dbf/TableImage.h"

namespace zu::component {
namespace {

using com::Bstr;
using com::ComPtr;
using com::Variant;

/// A view as another engine would give it: without the private interfaces.
class PlainView final : public fake::FakeObject<fake::UncalledDataView> {
public:
    explicit PlainView(ComPtr<ZuDataView> view) : FakeObject("plain view"), view_(std::move(view)) {}

    STDMETHODIMP get_Fields(ZuDataFields** result) override { return view_->get_Fields(result); }
    STDMETHODIMP MoveFirst(LONG reserved) override { return view_->MoveFirst(reserved); }
    STDMETHODIMP MoveNext(LONG count) override { return view_->MoveNext(count); }
    STDMETHODIMP get_Eof(LONG reserved, VARIANT_BOOL* result) override {
        return view_->get_Eof(reserved, result);
    }

private:
    ComPtr<ZuDataView> view_;
};

std::filesystem::path Samples() {
    const char* folder = std::getenv("ZU_SAMPLES");
    return std::filesystem::path(folder ? folder : "../shared/samples") / "xbase";
}

textio::ExportFormat Format(int preset) {
    textio::ExportFormat format;
    format.ApplyPreset(preset);
    return format;
}

struct Written {
    std::string content;
    bool whole;
};

class RecordRunsOfTheEngine : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dll_.isLoaded());
        ASSERT_TRUE(std::filesystem::is_directory(Samples()))
            << "the sample tables are needed in ../shared/samples";
        path_ = std::filesystem::temp_directory_path() / ("zu-runs-" + std::to_string(GetCurrentProcessId()));
        const ComPtr<ZuProject> project = dll_.Project();
        // Kept tables would keep the DLL too, for other tests to stumble over.
        ASSERT_EQ(project->put_Setting(Bstr(L"Data.ReuseTables").get(), Bstr(L"0").get()), S_OK);
        ComPtr<IDispatch> engine;
        ASSERT_EQ(project->Engine(engine.put()), S_OK);
        ComPtr<IDispatch> service;
        ASSERT_EQ(engine.as<ZuEngineData>()->DatabaseService(service.put()), S_OK);
        service_ = service.as<ZuDatabaseService>();
    }
    void TearDown() override {
        service_.reset();
        std::filesystem::remove(path_);
    }

    ComPtr<ZuDataView> Everything(const std::wstring& name) {
        return EverythingIn(std::filesystem::absolute(Samples()), name);
    }
    ComPtr<ZuDataView> EverythingIn(const std::filesystem::path& folder, const std::wstring& name) {
        Bstr database(L"DBF|" + folder.wstring());
        Bstr table(name);
        ComPtr<IDispatch> opened;
        if (FAILED(service_->OpenTable(database.address(), table.address(), opened.put())) || !opened)
            return nullptr;
        ComPtr<IDispatch> view;
        if (FAILED(opened.as<DataTable>()->Select(Variant(L""), Variant(LONG{0}), 1, Variant::Missing(),
                                                  view.put())))
            return nullptr;
        return view ? view.as<ZuDataView>() : nullptr;
    }

    Written Write(ComPtr<ZuDataView> records, const textio::ExportFormat& format) {
        bool whole = false;
        try {
            DataView view(std::move(records));
            TextExport file(path_.wstring(), format);
            file.Write(view);
            whole = true;
        } catch (const Error&) {
        } catch (const com::ComError&) {
        }
        SetErrorInfo(0, nullptr);
        std::ifstream file(path_, std::ios::binary);
        return {{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()}, whole};
    }

    const test::EngineDll dll_;
    ComPtr<ZuDatabaseService> service_;
    std::filesystem::path path_;
};

TEST_F(RecordRunsOfTheEngine, GiveTheBytesThatSingleValuesGive) {
    int tables = 0;
    int runs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(Samples())) {
        if (entry.path().extension() != ".dbf") continue;
        const std::wstring name = entry.path().stem().wstring();
        if (!Everything(name)) continue;
        ++tables;
        runs += Everything(name).tryAs<RecordRuns>() ? 1 : 0;
        for (const int preset : {0, textio::kDelimited, textio::kFixed}) {
            const textio::ExportFormat format = Format(preset);
            const Written fast = Write(Everything(name), format);
            const Written plain = Write(ComPtr<ZuDataView>::Adopt(new PlainView(Everything(name))), format);
            EXPECT_EQ(fast.whole, plain.whole) << entry.path() << ", preset " << preset;
            EXPECT_TRUE(fast.content == plain.content) << entry.path() << ", preset " << preset;
        }
    }
    EXPECT_GE(tables, 3);
    EXPECT_EQ(runs, tables) << "every view of this engine reads runs";
}

TEST_F(RecordRunsOfTheEngine, EndWithTheView) {
    const ComPtr<ZuDataView> view = Everything(L"orders");
    ASSERT_TRUE(view);
    LONG count = 0;
    ASSERT_EQ(view->get_RecordCount(0, &count), S_OK);
    const ComPtr<RecordRuns> runs = view.tryAs<RecordRuns>();
    ASSERT_TRUE(runs);
    LONG sum = 0;
    for (;;) {
        const textio::Cell* cells = nullptr;
        ULONG records = 0;
        ASSERT_EQ(runs->ReadRun(1252, 7, &cells, &records), S_OK);
        if (records == 0) break;
        ASSERT_LE(records, 7U);
        sum += static_cast<LONG>(records);
        LONG position = 0;
        ASSERT_EQ(view->get_AbsolutePosition(0, &position), S_OK);
        EXPECT_EQ(position, sum);
    }
    EXPECT_EQ(sum, count);
}

/// Tables with contents of every kind, canonical ones and others by turns, in a folder of their own.
class AwkwardTables : public RecordRunsOfTheEngine {
protected:
    void SetUp() override {
        RecordRunsOfTheEngine::SetUp();
        folder_ =
            std::filesystem::temp_directory_path() / ("zu-odd-" + std::to_string(GetCurrentProcessId()));
        std::filesystem::create_directory(folder_);
        Put(Image(kRecords, true), L"source");
        Put(Image(kRecords, false), L"mild");
    }
    void TearDown() override {
        RecordRunsOfTheEngine::TearDown();
        std::filesystem::remove_all(folder_);
    }

    /// `oddNumbers`: also some that a field of the same kind does not take, which ends a copy.
    static dbf::TableImage Image(int records, bool oddNumbers) {
        dbf::TableImage image;
        image.Mark(0x03);
        for (std::size_t i = 0; i < std::size(kKinds); ++i)
            image.Field("F" + std::to_string(i), kKinds[i].type, kKinds[i].width, kKinds[i].decimals);
        dbf::FieldContents contents;
        for (int i = 0; i < records; ++i) {
            // Long stretches without anything odd between others.
            const bool odd = i / 300 % 2 == 0;
            std::string record;
            for (const auto& kind : kKinds) {
                std::string content =
                    odd && (kind.type != 'N' || oddNumbers) ? contents.Of(kind) : std::string();
                if (kind.type == 'N' && content.empty()) content = i % 2 == 0 ? "   -1.50" : "  .25   ";
                content.resize(static_cast<std::size_t>(kind.width), 'F');
                record += content;
            }
            image.Record(record);
        }
        return image;
    }
    void Put(const dbf::TableImage& image, const std::wstring& name) const {
        std::ofstream(folder_ / (name + L".dbf"), std::ios::binary) << image.Bytes();
    }
    std::string Bytes(const std::wstring& name) const {
        std::ifstream file(folder_ / (name + L".dbf"), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    ComPtr<ZuDataView> All(const std::wstring& name) { return EverythingIn(folder_, name); }
    ComPtr<ZuDataView> Plain(const std::wstring& name) {
        return ComPtr<ZuDataView>::Adopt(new PlainView(All(name)));
    }

    static constexpr dbf::FieldContents::Kind kKinds[] = {
        {'C', 20, 0}, {'N', 8, 2}, {'D', 8, 0}, {'L', 1, 0}, {'C', 3, 0}};
    static constexpr int kRecords = 2400;
    std::filesystem::path folder_;
};

TEST_F(AwkwardTables, AreExportedAsThroughSingleValues) {
    for (const int preset : {textio::kDelimited, textio::kFixed}) {
        const textio::ExportFormat format = Format(preset);
        const Written fast = Write(All(L"source"), format);
        const Written plain = Write(Plain(L"source"), format);
        EXPECT_TRUE(fast.whole && plain.whole);
        EXPECT_TRUE(fast.content == plain.content) << "preset " << preset;
        EXPECT_GT(fast.content.size(), kRecords * 20U);
    }
}

TEST_F(AwkwardTables, AreCopiedAsThroughSingleValues) {
    for (const FieldMatch match : {FieldMatch::kPosition, FieldMatch::kName}) {
        const std::wstring from = match == FieldMatch::kName ? L"source" : L"mild";
        std::array<LONG, 2> added{};
        for (const bool plainly : {false, true}) {
            const std::wstring name = plainly ? L"plain" : L"fast";
            Put(Image(0, false), name);
            DataView source(plainly ? Plain(from) : All(from));
            DataView destination(All(name));
            CopyOutcome outcome(false);
            RowCopy rows(source, destination, match);
            GatheredRows gathered(destination, outcome);
            RunCopy runs(source, destination, match, gathered);
            source.MoveFirst();
            while (runs.Next() || !source.Eof()) {
                outcome.BeginRow();
                const bool atOnce = runs.AddRow();
                outcome.EndRow(atOnce || rows.CopyRow());
                if (!atOnce) source.MoveNext();
            }
            gathered.Finish();
            added[plainly ? 1 : 0] = outcome.added();
        }
        EXPECT_EQ(added[0], kRecords);
        EXPECT_EQ(added[1], kRecords);
        EXPECT_TRUE(Bytes(L"fast") == Bytes(L"plain"));
    }
}

TEST_F(AwkwardTables, LocateTheirRecordsUpToTheEndOfTheView) {
    const ComPtr<ZuDataView> view = All(L"source");
    const ComPtr<RecordRuns> runs = view.tryAs<RecordRuns>();
    ASSERT_TRUE(runs);
    const textio::StoredField* fields = nullptr;
    ULONG count = 0;
    ASSERT_EQ(runs->DescribeStored(1252, &fields, &count), S_OK);
    EXPECT_EQ(count, std::size(kKinds));
    EXPECT_EQ(fields[1].offset, 21U);
    EXPECT_EQ(runs->DescribeStored(437, &fields, &count), E_NOTIMPL) << "texts of another code page";
    int located = 0;
    for (;;) {
        const char* const* places = nullptr;
        ULONG records = 0;
        ASSERT_EQ(runs->LocateRun(1000, &places, &records), S_OK);
        if (records == 0) break;
        located += static_cast<int>(records);
        LONG position = 0;
        ASSERT_EQ(view->get_AbsolutePosition(0, &position), S_OK);
        EXPECT_EQ(position, located);
    }
    EXPECT_EQ(located, kRecords);
}

}  // namespace
}  // namespace zu::component
