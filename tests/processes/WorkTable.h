#pragma once

#include <string>

namespace zu::test {

/// A folder of its own with an empty work table, its memo file and its index of five tags; removed at the
/// end.
class WorkTable {
public:
    WorkTable();
    WorkTable(const WorkTable&) = delete;
    WorkTable& operator=(const WorkTable&) = delete;
    ~WorkTable();

    const std::wstring& folder() const noexcept { return folder_; }

private:
    std::wstring folder_;
};

}  // namespace zu::test
