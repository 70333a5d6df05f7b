// An export through runs of records and one through single values write the same bytes.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "EngineDll.h"
#include "com/Bstr.h"
#include "com/ComError.h"
#include "component/textio/TextExport.h"
#include "idl/RecordRuns.h"
#include "idl/Zuengine.h"
#include "portable/error/Error.h"
#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledDataView.h"

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
        Bstr database(L"DBF|" + std::filesystem::absolute(Samples()).wstring());
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

}  // namespace
}  // namespace zu::component
