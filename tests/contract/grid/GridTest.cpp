#include "tests/contract/grid/GridTest.h"

#include "component/engine/EngineLink.h"

namespace zu::contract {

void GridTest::SetUp() {
    ContractTest::SetUp();
    component::Engine();  // the session's own link, since it is no part of the DLL here
    TakeCalls();
}

void GridTest::TearDown() {
    session_.reset();
    ContractTest::TearDown();
}

component::EditSession& GridTest::Open(std::shared_ptr<GridData> data, bool allowUndelete,
                                       const com::Variant& direction) {
    data_ = std::move(data);
    session_ = std::make_unique<component::EditSession>(MakeGridView(data_), screen_);
    session_->OpenForEditing(allowUndelete, direction);
    session_->Load([](std::wstring_view text) { return static_cast<int>(text.size()) * 7; });
    session_->Start();
    TakeCalls();
    return *session_;
}

bool GridTest::Type(grid::Cell cell, std::wstring_view text) {
    return session_->MoveTo(cell) && session_->BeginEdit() && session_->Accept(text);
}

std::size_t GridTest::Times(const std::string& call) {
    std::size_t times = 0;
    for (const std::string& made : fake::Journal::OfThread().calls())
        times += made.rfind(call, 0) == 0 ? 1 : 0;
    return times;
}

}  // namespace zu::contract
