#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <random>
#include <sstream>

#include "ChildProcess.h"
#include "WorkTable.h"
#include "WorkView.h"
#include "com/Bstr.h"
#include "host/technologies/dbf/DbfTable.h"
#include "portable/error/Error.h"
#include "portable/files/File.h"
#include "portable/text/Utf.h"

namespace zu::test {
namespace {

/// The table as one who keeps it open looks into it by the tag ID. The record with a number has this number
/// as ID.
class Reader {
public:
    explicit Reader(const std::wstring& folder)
        : table_(dbf::DbfTable::Open(files::SystemFiles(),
                                     text::ToUtf8(com::AsUtf16(folder + L"\\" + kWorkTable + L".dbf")), {})),
          tag_(table_->FindIndex("ID").value()) {}

    std::vector<std::uint32_t> Find(LONG id) {
        technologies::KeyCriterion criterion;
        criterion.value.kind = technologies::Value::Kind::Integer;
        criterion.value.integer = id;
        return table_->Seek(tag_, {criterion}, 0, true);
    }

private:
    std::unique_ptr<dbf::DbfTable> table_;
    std::size_t tag_;
};

class KeptReader : public testing::Test {
protected:
    void SetUp() override { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    void TearDown() override { CoUninitialize(); }

    void Hear(const std::string& line) {
        std::istringstream words(line);
        std::string stage;
        std::string kind;
        LONG id = 0;
        words >> stage >> kind >> id;
        if (stage == "done" && kind == "append") known_ = id;
    }
    /// While keys of a batch are missing the tag is not used; that shows as an error.
    void LookWhileOthersWrite(Reader& reader, LONG id) {
        try {
            EXPECT_EQ(reader.Find(id), (std::vector<std::uint32_t>{static_cast<std::uint32_t>(id)}));
            ++answered_;
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::Unsupported) << error.what();
        }
    }

    LONG known_ = 0;
    int answered_ = 0;
};

TEST_F(KeptReader, FindsEachRecordWhileAnotherProcessWritesAndAfterItWasKilled) {
    const WorkTable table;
    std::optional<Reader> kept(table.folder());
    Reader& reader = *kept;
    const char* given = std::getenv("ZU_KILL_ROUNDS");
    const int rounds = given ? std::atoi(given) : 10;
    std::random_device source;
    const unsigned seed = source();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 1; round <= rounds && !HasFailure(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        ChildProcess worker(L"table_worker.exe",
                            L"change \"" + table.folder() + L"\" " + std::to_wstring(random()));
        const unsigned lines = 20 + random() % 150;
        for (unsigned i = 0; i < lines && !HasFailure(); ++i) {
            const auto line = worker.ReadLine();
            ASSERT_TRUE(line) << "the worker ended by itself";
            Hear(*line);
            for (int look = 0; look < 10 && known_ > 0; ++look)
                LookWhileOthersWrite(reader, 1 + static_cast<LONG>(random() % static_cast<unsigned>(known_)));
        }
        worker.Kill();
        while (const auto line = worker.ReadLine())
            Hear(*line);
        for (LONG id = 1; id <= known_; ++id)
            EXPECT_EQ(reader.Find(id), (std::vector<std::uint32_t>{static_cast<std::uint32_t>(id)}));
        // What was not confirmed is there for everybody or for nobody.
        EXPECT_EQ(reader.Find(known_ + 1), Reader(table.folder()).Find(known_ + 1));
        if (!reader.Find(known_ + 1).empty()) ++known_;
    }
    std::printf("%d of the lookups beside a writer were answered, %ld records\n", answered_, known_);
    EXPECT_GT(answered_, rounds * 20);
    kept.reset();
    EXPECT_EQ(WorkView::Check(table.folder()), std::vector<std::wstring>());
}

}  // namespace
}  // namespace zu::test
