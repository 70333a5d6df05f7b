#include "tests/contract/grid/GridTest.h"

namespace zu::contract {

using component::Answer;
using component::SearchRequest;
using fake::Journal;
using grid::Cell;
using ::testing::Contains;

namespace {

SearchRequest For(std::wstring_view text) {
    SearchRequest request;
    request.text = text;
    return request;
}

class GridSearch : public GridTest {
protected:
    /// The record that a search leads to; -1 when it found nothing.
    grid::Row Found(SearchRequest request) {
        session().Find(request);
        const bool reported = Times("ZuEngineMessages.RaiseError") > 0;
        return reported ? -1 : session().current().row - 2;
    }
};

TEST_F(GridSearch, FindsTheNextRecordBehindTheCurrentOne) {
    Open(GridData::Names({L"abc", L"xyz", L"abd"}));
    EXPECT_EQ(Found(For(L"AB")), 2);
}

TEST_F(GridSearch, ATextLongerThanTheValueNeverMatches) {
    Open(GridData::Names({L"x", L"abc"}));
    EXPECT_EQ(Found(For(L"abcd")), -1);
    EXPECT_THAT(TakeCalls(), Contains("ZuEngineMessages.RaiseError(80041030, [0..0: \"abcd\"])"));
}

TEST_F(GridSearch, LeadingBlanksOfTheValueAreDropped) {
    Open(GridData::Names({L"x", L"  abc"}));
    EXPECT_EQ(Found(For(L"AB")), 1);
}

TEST_F(GridSearch, PatternsCoverTheWholeValueAndCountCase) {
    Open(GridData::Names({L"x", L"abc"}));
    SearchRequest request = For(L"ab");
    request.pattern = true;
    EXPECT_EQ(Found(request), -1);
    TakeCalls();
    request.text = L"AB*";
    EXPECT_EQ(Found(request), -1);
    TakeCalls();
    request.text = L"ab*";
    EXPECT_EQ(Found(request), 1);
}

TEST_F(GridSearch, StartFromTopTakesEffectForOneSearchOnly) {
    Open(GridData::Names({L"abc", L"x", L"abd"}));
    session().MoveTo({3, 1});
    SearchRequest request = For(L"ab");
    request.fromTop = true;
    session().Find(request);
    EXPECT_EQ(session().current().row, 2);
    EXPECT_FALSE(request.fromTop);
    session().Find(request);
    EXPECT_EQ(session().current().row, 4);
}

TEST_F(GridSearch, WithoutLoopTheEarlierRecordsAreNotFound) {
    Open(GridData::Names({L"abc", L"x"}));
    session().MoveTo({3, 1});
    EXPECT_EQ(Found(For(L"ab")), -1);
}

TEST_F(GridSearch, WithLoopTheEarlierRecordsAreFound) {
    Open(GridData::Names({L"abc", L"x"}));
    session().MoveTo({3, 1});
    SearchRequest request = For(L"ab");
    request.loop = true;
    EXPECT_EQ(Found(request), 0);
}

TEST_F(GridSearch, GoesToTheSearchedColumn) {
    Open(GridData::Numbered(20));
    SearchRequest request = For(L"r15");
    request.column = 1;
    session().Find(request);
    EXPECT_EQ(session().current(), (Cell{17, 2}));
}

TEST_F(GridSearch, AnEmptyTextDoesNothing) {
    Open(GridData::Names({L"a"}));
    SearchRequest request = For(L"");
    session().Find(request);
    EXPECT_EQ(TakeCalls(), Calls{});
}

TEST_F(GridSearch, AnEmptyViewIsNotSearched) {
    Open(GridData::Names({}));
    SearchRequest request = For(L"a");
    session().Find(request);
    EXPECT_EQ(TakeCalls(), Calls{"ZuDataView.RecordCount(0)"});
}

TEST_F(GridSearch, PendingChangesAreConfirmedFirst) {
    Open(GridData::Names({L"a", L"ab"}));
    Type({2, 1}, L"q");
    SearchRequest request = For(L"ab");
    session().Find(request);
    EXPECT_EQ(screen_.questions.size(), 1u);
    EXPECT_EQ(session().current().row, 2);
    screen_.answer = Answer::kYes;
    session().Find(request);
    EXPECT_EQ(session().current().row, 3);
}

TEST_F(GridSearch, AViewThatFailsEndsTheSearchQuietly) {
    Open(GridData::Names({L"a", L"ab"}));
    Journal::OfThread().FailOn("ZuDataView.CellValue");
    SearchRequest request = For(L"ab");
    session().Find(request);
    EXPECT_EQ(session().current().row, 2);
    EXPECT_EQ(Times("ZuEngineMessages.RaiseError"), 0u);
}

}  // namespace
}  // namespace zu::contract
