// What the DLL writes into the registry, and that it takes everything away again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <objbase.h>

#include <algorithm>

#include "idl/ZuDBFFunctions.h"
#include "tests/contract/RegistryTree.h"

namespace zu::contract {

namespace {

using Content = std::map<std::wstring, std::wstring>;

struct ClassName {
    const wchar_t* name;
    CLSID id;
};

const ClassName kClasses[] = {
    {L"ZuDBFFunctions.Functions", __uuidof(::Functions)},
    {L"ZuDBFFunctions.ZuDbRef", __uuidof(::ZuDbRef)},
    {L"ZuDBFFunctions.ZuDbfControl", __uuidof(::ZuDbfControl)},
    {L"ZuDBFFunctions.ZuImportFormats", __uuidof(::ZuImportFormats)},
    {L"ZuDBFFunctions.ZuImportFormat", __uuidof(::ZuImportFormat)},
    {L"ZuDBFFunctions.ZuExportFormats", __uuidof(::ZuExportFormats)},
    {L"ZuDBFFunctions.ZuExportFormat", __uuidof(::ZuExportFormat)},
};
constexpr const wchar_t* kLibrary = L"{E36F2C32-4325-4AF0-9976-A4633FC83E9B}";
constexpr const wchar_t* kMachine = L"machine\\Software\\Classes\\";
constexpr const wchar_t* kUser = L"user\\Software\\Classes\\";

std::wstring TextOf(REFGUID id) {
    wchar_t text[40] = {};
    StringFromGUID2(id, text, 40);
    return text;
}

std::size_t CountUnder(const Content& content, const std::wstring& lead) {
    return static_cast<std::size_t>(std::count_if(content.begin(), content.end(), [&](const auto& entry) {
        return entry.first.compare(0, lead.size(), lead) == 0;
    }));
}

std::wstring At(const Content& content, const std::wstring& entry) {
    const auto found = content.find(entry);
    return found == content.end() ? L"(none)" : found->second;
}

}  // namespace

class Registration : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        module_ = LoadLibraryW(L"ZuDBFFunctions.dll");
        ASSERT_NE(module_, nullptr);
    }
    void TearDown() override {
        FreeLibrary(module_);
        CoUninitialize();
    }
    HRESULT Call(const char* entryPoint) {
        using Function = HRESULT(STDMETHODCALLTYPE*)();
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, entryPoint)))();
    }
    HRESULT Install(BOOL install, const wchar_t* how) {
        using Function = HRESULT(STDMETHODCALLTYPE*)(BOOL, LPCWSTR);
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, "DllInstall")))(
            install, how);
    }
    std::wstring ModulePath() const {
        wchar_t path[1024] = {};
        GetModuleFileNameW(module_, path, 1023);
        return path;
    }
    /// Every class with all its entries below `root`.
    void ExpectClasses(const Content& content, const std::wstring& root) {
        for (const ClassName& entry : kClasses) {
            const std::wstring id = TextOf(entry.id);
            const std::wstring name = entry.name;
            std::wstring place(root);
            place.append(L"CLSID\\").append(id).append(L"\\");
            EXPECT_EQ(At(content, root + name + L"\\CLSID\\|"), id);
            EXPECT_EQ(At(content, root + name + L".1\\CLSID\\|"), id);
            EXPECT_EQ(At(content, root + name + L"\\CurVer\\|"), name + L".1");
            EXPECT_EQ(At(content, place + L"ProgID\\|"), name + L".1");
            EXPECT_EQ(At(content, place + L"VersionIndependentProgID\\|"), name);
            EXPECT_EQ(At(content, place + L"InprocServer32\\|"), ModulePath());
            EXPECT_EQ(At(content, place + L"InprocServer32\\|ThreadingModel"), L"Apartment");
            EXPECT_EQ(At(content, place + L"TypeLib\\|"), kLibrary);
        }
    }

    HMODULE module_ = nullptr;
};

TEST_F(Registration, ForTheMachineWritesClassesAndTypeLibrary) {
    const RegistryTree registry;
    ASSERT_EQ(Call("DllRegisterServer"), S_OK);
    const Content content = registry.Content();
    ExpectClasses(content, kMachine);
    const std::wstring library = std::wstring(kMachine) + L"TypeLib\\" + kLibrary + L"\\1.0\\";
    EXPECT_NE(At(content, library + L"|"), L"(none)");
    EXPECT_EQ(At(content, library + (sizeof(void*) == 8 ? L"0\\win64\\|" : L"0\\win32\\|")), ModulePath());
    for (const IID& id : {__uuidof(_Functions), __uuidof(_ZuDbRef), __uuidof(_ZuDbfControl)}) {
        EXPECT_EQ(At(content, std::wstring(kMachine) + L"Interface\\" + TextOf(id) + L"\\TypeLib\\|"),
                  kLibrary);
    }
    EXPECT_EQ(CountUnder(content, std::wstring(kUser) + L"ZuDBFFunctions"), 0u);
    EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
}

TEST_F(Registration, TakenBackLeavesNothing) {
    const RegistryTree registry;
    const Content before = registry.Content();
    ASSERT_EQ(Call("DllRegisterServer"), S_OK);
    EXPECT_GT(registry.Content().size(), before.size() + 50);
    ASSERT_EQ(Call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(registry.Content(), before);
}

TEST_F(Registration, CanBeRepeatedAndTakenBackTwice) {
    const RegistryTree registry;
    const Content before = registry.Content();
    ASSERT_EQ(Call("DllUnregisterServer"), S_OK) << "nothing was registered";
    ASSERT_EQ(Call("DllRegisterServer"), S_OK);
    const Content once = registry.Content();
    ASSERT_EQ(Call("DllRegisterServer"), S_OK);
    EXPECT_EQ(registry.Content(), once);
    ASSERT_EQ(Call("DllUnregisterServer"), S_OK);
    ASSERT_EQ(Call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(registry.Content(), before);
}

TEST_F(Registration, ForTheUserWritesOnlyTheUsersClassesAndLeavesNothing) {
    const RegistryTree registry;
    const Content before = registry.Content();
    ASSERT_EQ(Install(TRUE, L"user"), S_OK);
    const Content content = registry.Content();
    ExpectClasses(content, kUser);
    EXPECT_EQ(CountUnder(content, std::wstring(kMachine) + L"ZuDBFFunctions"), 0u);
    EXPECT_EQ(CountUnder(content, std::wstring(kMachine) + L"CLSID\\{"), 0u);
    ASSERT_EQ(Install(FALSE, L"user"), S_OK);
    EXPECT_EQ(registry.Content(), before);
}

TEST_F(Registration, WithoutRightsOnTheMachineIsForTheUser) {
    const RegistryTree registry(false);
    const Content before = registry.Content();
    ASSERT_EQ(Call("DllRegisterServer"), S_OK);
    const Content content = registry.Content();
    ExpectClasses(content, kUser);
    EXPECT_EQ(CountUnder(content, kMachine), 0u);
    ASSERT_EQ(Call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(registry.Content(), before);
}

TEST_F(Registration, ByInstallForTheMachineIsTheSame) {
    const RegistryTree registry;
    const Content before = registry.Content();
    ASSERT_EQ(Install(TRUE, L"machine"), S_OK);
    ExpectClasses(registry.Content(), kMachine);
    ASSERT_EQ(Install(FALSE, L"machine"), S_OK);
    EXPECT_EQ(registry.Content(), before);
    ASSERT_EQ(Install(TRUE, nullptr), S_OK);
    ExpectClasses(registry.Content(), kMachine);
    ASSERT_EQ(Install(FALSE, nullptr), S_OK);
    EXPECT_EQ(registry.Content(), before);
}

}  // namespace zu::contract
