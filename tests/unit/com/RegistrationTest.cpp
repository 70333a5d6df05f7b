#include <gtest/gtest.h>

#include <set>

#include "Target.h"
#include "com/ModuleExports.h"
#include "com/Registration.h"
#include "com/RegistryKey.h"

namespace zu::com::test {
namespace {

const ClassEntry kClasses[] = {
    {Named::classId(), L"ComTests.Named", L"A named object", &CreateObject<Named>},
    {Target::classId(), L"ComTests.Target", L"A target", &CreateObject<Target>},
};
const Server kServer{kClasses, 1};

const std::wstring kClassesPath = L"Software\\Classes\\";
const std::wstring kNamedId = L"{5D1B3C5E-1C5B-4C1E-9C55-0A4B6B1F7D07}";
const std::wstring kLibraryId = L"{5D1B3C5E-1C5B-4C1E-9C55-0A4B6B1F7D05}";

std::wstring Text(HKEY root, const std::wstring& path, const std::wstring& value = {}) {
    const RegistryKey key = RegistryKey::Open(root, kClassesPath + path);
    return key ? key.Text(value) : L"<no key>";
}

/// The names of the keys below `path` (as far down as registrations go).
void Collect(HKEY root, const std::wstring& path, int depth, std::set<std::wstring>& names) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    for (DWORD index = 0;; ++index) {
        wchar_t name[256];
        DWORD size = 256;
        if (RegEnumKeyExW(key, index, name, &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        names.insert(path + L"\\" + name);
        if (depth > 1) Collect(root, path + L"\\" + name, depth - 1, names);
    }
    RegCloseKey(key);
}

std::set<std::wstring> AllKeys() {
    std::set<std::wstring> names;
    for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        Collect(root, L"Software\\Classes", 1, names);
        for (const wchar_t* part : {L"CLSID", L"TypeLib", L"Interface", L"Wow6432Node\\CLSID",
                                    L"Wow6432Node\\Interface", L"Wow6432Node\\TypeLib"}) {
            Collect(root, kClassesPath + part, 1, names);
        }
    }
    return names;
}

void ExpectRegistered(HKEY root) {
    EXPECT_EQ(Text(root, L"ComTests.Named"), L"A named object");
    EXPECT_EQ(Text(root, L"ComTests.Named\\CLSID"), kNamedId);
    EXPECT_EQ(Text(root, L"ComTests.Named\\CurVer"), L"ComTests.Named.1");
    EXPECT_EQ(Text(root, L"ComTests.Named.1\\CLSID"), kNamedId);
    EXPECT_EQ(Text(root, L"CLSID\\" + kNamedId + L"\\InprocServer32"), Module::Path());
    EXPECT_EQ(Text(root, L"CLSID\\" + kNamedId + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_EQ(Text(root, L"CLSID\\" + kNamedId + L"\\ProgID"), L"ComTests.Named.1");
    EXPECT_EQ(Text(root, L"CLSID\\" + kNamedId + L"\\VersionIndependentProgID"), L"ComTests.Named");
    EXPECT_EQ(Text(root, L"CLSID\\" + kNamedId + L"\\TypeLib"), kLibraryId);
    EXPECT_EQ(Text(root, L"ComTests.Target\\CLSID").substr(0, 1), L"{");
}

class RegistrationTest : public ::testing::Test {
protected:
    void TearDown() override {
        const Registration registration(kServer);
        registration.Unregister(Scope::User);
        registration.Unregister(Scope::Machine);
    }
    std::set<std::wstring> before_ = AllKeys();
};

TEST_F(RegistrationTest, OfTheMachineIsCompleteAndLeavesNothing) {
    ASSERT_EQ(InstallServer(kServer, TRUE, L"machine"), S_OK);
    ExpectRegistered(HKEY_LOCAL_MACHINE);
    EXPECT_EQ(Text(HKEY_CURRENT_USER, L"ComTests.Named"), L"<no key>");
    ComPtr<ITypeLib> library;
    GUID id{};
    ASSERT_EQ(CLSIDFromString(kLibraryId.c_str(), &id), S_OK);
    EXPECT_EQ(LoadRegTypeLib(id, 1, 0, 0, library.put()), S_OK);
    EXPECT_EQ(InstallServer(kServer, FALSE, L"machine"), S_OK);
    EXPECT_EQ(AllKeys(), before_);
}

TEST_F(RegistrationTest, OfTheUserIsCompleteAndLeavesNothing) {
    ASSERT_EQ(InstallServer(kServer, TRUE, L"user"), S_OK);
    ExpectRegistered(HKEY_CURRENT_USER);
    EXPECT_EQ(Text(HKEY_LOCAL_MACHINE, L"ComTests.Named"), L"<no key>");
    EXPECT_EQ(InstallServer(kServer, FALSE, L"USER"), S_OK);
    EXPECT_EQ(AllKeys(), before_);
}

TEST_F(RegistrationTest, GoesWhereTheRightsAllow) {
    ASSERT_EQ(RegisterServer(kServer), S_OK);
    ExpectRegistered(Registration::MayWriteMachine() ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER);
    EXPECT_EQ(UnregisterServer(kServer), S_OK);
    EXPECT_EQ(AllKeys(), before_);
}

TEST_F(RegistrationTest, UnregisteringRemovesBothKinds) {
    ASSERT_EQ(InstallServer(kServer, TRUE, L"user"), S_OK);
    ASSERT_EQ(RegisterServer(kServer), S_OK);
    EXPECT_EQ(UnregisterServer(kServer), S_OK);
    EXPECT_EQ(AllKeys(), before_);
}

TEST_F(RegistrationTest, CanBeRepeated) {
    ASSERT_EQ(RegisterServer(kServer), S_OK);
    EXPECT_EQ(RegisterServer(kServer), S_OK);
    EXPECT_EQ(UnregisterServer(kServer), S_OK);
    EXPECT_EQ(UnregisterServer(kServer), S_OK) << "what is gone already is no error";
    EXPECT_EQ(AllKeys(), before_);
}

TEST_F(RegistrationTest, LeavesANameAloneThatBelongsToAnotherServer) {
    ASSERT_EQ(InstallServer(kServer, TRUE, L"user"), S_OK);
    const std::wstring other = L"{00000000-0000-0000-0000-000000000001}";
    RegistryKey::Create(HKEY_CURRENT_USER, kClassesPath + L"ComTests.Named\\CLSID").Set({}, other);
    EXPECT_EQ(InstallServer(kServer, FALSE, L"user"), S_OK);
    EXPECT_EQ(Text(HKEY_CURRENT_USER, L"ComTests.Named\\CLSID"), other);
    EXPECT_EQ(Text(HKEY_CURRENT_USER, L"ComTests.Named.1"), L"<no key>");
    RegistryKey::Remove(HKEY_CURRENT_USER, kClassesPath + L"ComTests.Named");
    EXPECT_EQ(AllKeys(), before_);
}

TEST(RegistryKey, MissingKeysAndValuesAreEmpty) {
    EXPECT_FALSE(RegistryKey::Open(HKEY_CURRENT_USER, L"Software\\Classes\\ComTests.NoSuchKey"));
    EXPECT_NO_THROW(RegistryKey::Remove(HKEY_CURRENT_USER, L"Software\\Classes\\ComTests.NoSuchKey"));
    const RegistryKey key = RegistryKey::Open(HKEY_CURRENT_USER, L"Software");
    ASSERT_TRUE(key);
    EXPECT_EQ(key.Text(L"ComTests no such value"), L"");
}

}  // namespace
}  // namespace zu::com::test
