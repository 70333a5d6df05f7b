#pragma once

#include <string>
#include <string_view>

#include "tests/contract/ContractTest.h"

namespace zu::contract {

/// Exports and imports against the fake engine, with a text file in the temporary folder.
class TextTest : public ContractTest {
protected:
    void SetUp() override;
    void TearDown() override;

    const std::wstring& path() const { return path_; }
    void Put(std::string_view content) const;
    /// The file's bytes; "no file" when there is none.
    std::string Content() const;

    /// A control of the component's, created by its name.
    static com::ComPtr<_ZuDbfControl> NewControl();
    static com::ComPtr<_ZuExportFormat> ExportFormat(_ZuDbfControl& control, const wchar_t* name);
    static com::ComPtr<_ZuImportFormat> ImportFormat(_ZuDbfControl& control, const wchar_t* name);

    bool ToFile(const wchar_t* format = nullptr, _ZuDbfControl* control = nullptr, LONG maxRecords = 0,
                const VARIANT& condition = com::Variant::Missing(),
                const VARIANT& fieldNames = com::Variant::Missing());

    /// With the three outputs, which begin as the text "untouched".
    bool FromFile(const wchar_t* format = nullptr, _ZuDbfControl* control = nullptr,
                  const wchar_t* condition = nullptr, bool listsFailures = true);
    std::string Outputs() const;

    /// Calls since the last ask whose text contains one of the words.
    Calls TakeCallsWith(const std::vector<std::string>& words);

    com::Variant rows_;
    com::Variant added_;
    com::Variant failed_;

private:
    std::wstring path_;
};

}  // namespace zu::contract
