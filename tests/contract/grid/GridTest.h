#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "component/ui/EditSession.h"
#include "tests/contract/ContractTest.h"
#include "tests/contract/grid/GridData.h"

namespace zu::contract {

/// A form without windows: it shows ten rows, keeps what it was told and gives the answers that it was given.
class RecordedScreen final : public component::GridScreen {
public:
    void ShowButton(component::Button button, bool visible) override { shown[button] = visible; }
    void EnableButton(component::Button button, bool enabled) override { enabledButtons[button] = enabled; }
    void ShowDeleted(bool deleted) override { deletedShown = deleted; }
    void ShowPosition(std::wstring_view text) override { position = text; }
    void Tell(std::wstring_view message) override { messages.emplace_back(message); }
    component::Answer Ask(std::wstring_view question) override {
        questions.emplace_back(question);
        return answer;
    }
    void Explain(std::wstring_view note) override { notes.emplace_back(note); }
    grid::Row TopRow() const override { return top; }
    grid::Row VisibleEnd() const override { return top + 10; }
    void ScrollTo(grid::Row row) override { top = row; }
    void CurrentCellChanged() override {}
    void RowsChanged() override {}
    void RowChanged(grid::Row) override {}
    void Close() override {}

    bool IsShown(component::Button button) { return shown[button]; }
    bool IsEnabled(component::Button button) { return enabledButtons[button]; }

    std::map<component::Button, bool> shown;
    std::map<component::Button, bool> enabledButtons;
    bool deletedShown = false;
    std::wstring position;
    std::vector<std::wstring> messages;
    std::vector<std::wstring> questions;
    std::vector<std::wstring> notes;
    component::Answer answer = component::Answer::kCancel;
    grid::Row top = 2;
};

/// An edit session on records in memory.
class GridTest : public ContractTest {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Opens in edit mode; the journal is empty afterwards.
    component::EditSession& Open(std::shared_ptr<GridData> data, bool allowUndelete = true,
                                 const com::Variant& direction = com::Variant::Missing());
    component::EditSession& session() { return *session_; }
    std::wstring Text(grid::Row row, int column = 1) { return session_->TextAt({row, column}); }
    /// Types a text into a cell.
    bool Type(grid::Cell cell, std::wstring_view text);
    /// How often a call was made since the journal was emptied.
    std::size_t Times(const std::string& call);

    RecordedScreen screen_;
    std::shared_ptr<GridData> data_;
    std::unique_ptr<component::EditSession> session_;
};

}  // namespace zu::contract
