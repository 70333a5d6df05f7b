#include "tests/contract/textio/TextTest.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/contract/fake/Rendering.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;

void TextTest::SetUp() {
    ContractTest::SetUp();
    path_ = (std::filesystem::temp_directory_path() /
             (L"zu-text-" + std::to_wstring(GetCurrentProcessId()) + L".txt"))
                .wstring();
    DeleteFileW(path_.c_str());
}

void TextTest::TearDown() {
    rows_ = Variant();
    added_ = Variant();
    failed_ = Variant();
    ContractTest::TearDown();
    SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_NORMAL);
    DeleteFileW(path_.c_str());
}

void TextTest::Put(std::string_view content) const {
    std::ofstream file(std::filesystem::path(path_), std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
}

std::string TextTest::Content() const {
    std::ifstream file(std::filesystem::path(path_), std::ios::binary);
    if (!file) return "no file";
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

ComPtr<_ZuDbfControl> TextTest::NewControl() {
    return Create(L"ZuDBFFunctions.ZuDbfControl").tryAs<_ZuDbfControl>();
}

ComPtr<_ZuExportFormat> TextTest::ExportFormat(_ZuDbfControl& control, const wchar_t* name) {
    ComPtr<_ZuExportFormats> formats;
    EXPECT_EQ(control.get_ExportFormats(formats.put()), S_OK);
    ComPtr<_ZuExportFormat> format;
    EXPECT_EQ(formats->get_Item(Variant(name), format.put()), S_OK);
    return format;
}

ComPtr<_ZuImportFormat> TextTest::ImportFormat(_ZuDbfControl& control, const wchar_t* name) {
    ComPtr<_ZuImportFormats> formats;
    EXPECT_EQ(control.get_ImportFormats(formats.put()), S_OK);
    ComPtr<_ZuImportFormat> format;
    EXPECT_EQ(formats->get_Item(Variant(name), format.put()), S_OK);
    return format;
}

bool TextTest::ToFile(const wchar_t* format, _ZuDbfControl* control, LONG maxRecords,
                      const VARIANT& condition, const VARIANT& fieldNames) {
    Bstr name = format ? Bstr(format) : Bstr();
    VARIANT_BOOL result = 77;
    EXPECT_EQ(functions().DbfToFile(Variant(L"X|d>t"), Bstr(path_).get(), condition, fieldNames, maxRecords,
                                    control ? &control : nullptr, name.address(), &result),
              S_OK);
    return result == VARIANT_TRUE;
}

bool TextTest::FromFile(const wchar_t* format, _ZuDbfControl* control, const wchar_t* condition,
                        bool listsFailures) {
    Variant table(L"X|d>t");
    Bstr file(path_);
    Bstr test = condition ? Bstr(condition) : Bstr();
    Bstr name = format ? Bstr(format) : Bstr();
    rows_ = added_ = failed_ = Variant(L"untouched");
    VARIANT_BOOL result = 77;
    EXPECT_EQ(functions().DbfFromFile(table.address(), file.address(), test.address(), nullptr,
                                      control ? &control : nullptr, name.address(), rows_.address(),
                                      added_.address(), listsFailures ? failed_.address() : nullptr, &result),
              S_OK);
    return result == VARIANT_TRUE;
}

std::string TextTest::Outputs() const {
    return fake::Show(rows_.get()) + ", " + fake::Show(added_.get()) + ", " + fake::Show(failed_.get());
}

Calls TextTest::TakeCallsWith(const std::vector<std::string>& words) {
    Calls calls;
    for (std::string& call : TakeCalls()) {
        for (const std::string& word : words) {
            if (call.find(word) != std::string::npos) {
                calls.push_back(std::move(call));
                break;
            }
        }
    }
    return calls;
}

}  // namespace zu::contract
