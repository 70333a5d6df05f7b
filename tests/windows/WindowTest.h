#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "component/ui/fgGrid.h"
#include "tests/windows/FormDriver.h"
#include "tests/windows/RunningScript.h"
#include "tests/windows/SmallTable.h"

namespace zu::windows {

using component::fgGrid;

/// Runs a script that opens the grid on a table of its own, and drives the window.
class WindowTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// `DbfEdit` with these arguments behind the table; the script then prints the answer and the records.
    void Edit(const std::vector<Person>& people, const std::string& arguments = ", \"People\"");
    /// `DbfPick`; the script then prints what was picked.
    void Pick(const std::vector<Person>& people, const std::string& arguments = ", \"People\"");
    /// A command of zurun on the table "people".
    void Command(const std::vector<Person>& people, const std::vector<std::wstring>& words);
    void Run(const std::string& script, RunningScript::Host host = RunningScript::Host::kZurun);

    /// Leaves the form by its button and answers what the script wrote.
    std::string ExitAndRead();
    std::string Output() { return script_->Output(); }

    std::wstring folder_;
    std::unique_ptr<RunningScript> script_;
    std::unique_ptr<FormDriver> form_;
};

}  // namespace zu::windows
