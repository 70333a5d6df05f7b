#include <gtest/gtest.h>

#include <thread>

#include "EngineDll.h"
#include "LateBound.h"
#include "com/Bstr.h"
#include "idl/ZuParser.h"

namespace zu::test {
namespace {

constexpr CLSID kNobody = {0x12345678, 0, 0, {0, 0, 0, 0, 0, 0, 0, 1}};

TEST(EngineDll, MakesProjectsAndParsers) {
    const EngineDll dll;
    const Apartment apartment;
    ASSERT_TRUE(dll.isLoaded());
    EXPECT_TRUE(dll.Project());
    EXPECT_TRUE(dll.Create<ZuParser>(__uuidof(::Parser)));
}

TEST(EngineDll, RefusesOtherClassesAndAggregation) {
    const EngineDll dll;
    const Apartment apartment;
    com::ComPtr<IClassFactory> factory;
    EXPECT_EQ(dll.ClassObject(kNobody, IID_IClassFactory, factory.putVoid()), CLASS_E_CLASSNOTAVAILABLE);
    ASSERT_EQ(dll.ClassObject(__uuidof(::Project), IID_IClassFactory, factory.putVoid()), S_OK);
    com::ComPtr<IUnknown> object;
    EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IUnknown, object.putVoid()), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(factory->CreateInstance(nullptr, __uuidof(ZuParser), object.putVoid()), E_NOINTERFACE);
}

TEST(EngineDll, SaysThatItCanBeUnloadedOnlyWhenNothingIsInUse) {
    const EngineDll dll;
    std::thread([&] {
        const Apartment apartment;
        EXPECT_EQ(dll.CanUnloadNow(), S_OK);
        com::ComPtr<ZuProject> project = dll.Project();
        EXPECT_EQ(dll.CanUnloadNow(), S_FALSE);
        const com::Bstr unknown(L"Data.Colour");
        com::Bstr text;
        EXPECT_TRUE(FAILED(project->get_Setting(unknown.get(), text.put())));
        project.reset();
        // The thread's last error waits for the end of its apartment.
        EXPECT_EQ(dll.CanUnloadNow(), S_FALSE);
    }).join();
    EXPECT_EQ(dll.CanUnloadNow(), S_OK);
}

TEST(EngineDll, LeavesTheProcessWhenItIsLetGo) {
    {
        const EngineDll dll;
        std::thread([&] {
            const Apartment apartment;
            const com::ComPtr<ZuProject> project = dll.Project();
            EXPECT_EQ(project->ClearLastError(), S_OK);
        }).join();
    }
    EXPECT_EQ(GetModuleHandleW(L"Zuengine.dll"), nullptr);
}

TEST(EngineDll, CarriesItsThreeTypeLibraries) {
    const wchar_t* const ids[] = {L"{7DCA546A-2E03-4D2B-B3F2-46B3B4165661}",
                                  L"{30D5F02A-F05A-43A6-81BD-9F322DA2E7C7}",
                                  L"{9863C9B9-304A-45DD-8783-1737866971E6}"};
    for (int i = 0; i < 3; ++i) {
        com::ComPtr<ITypeLib> library;
        const std::wstring path = EngineDll::Path() + L"\\" + std::to_wstring(i + 1);
        ASSERT_EQ(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put()), S_OK) << i;
        TLIBATTR* attributes = nullptr;
        ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
        GUID expected;
        IIDFromString(ids[i], &expected);
        EXPECT_TRUE(IsEqualGUID(attributes->guid, expected)) << i;
        library->ReleaseTLibAttr(attributes);
    }
}

TEST(EngineDll, AnswersScriptsWithoutBeingRegistered) {
    const EngineDll dll;
    const Apartment apartment;
    const com::ComPtr<ZuProject> made = dll.Project();
    const LateBound project(made.get());
    EXPECT_EQ(project.Object(L"Engine").Get(L"Name").ToText().view(), L"Zuengine");
    const LateBound parser(dll.Create<ZuParser>(__uuidof(::Parser)).get());
    parser.Put(L"Formula", Text(L"1 + 1"));
    EXPECT_EQ(parser.Get(L"Formula").ToText().view(), L"1 + 1");
}

TEST(EngineDll, WorksWithoutCoInitialize) {
    const EngineDll dll;
    std::thread([&] {
        const com::ComPtr<ZuProject> project = dll.Project();
        ASSERT_TRUE(project);
        com::Bstr version;
        EXPECT_EQ(project->get_Version(version.put()), S_OK);
        EXPECT_FALSE(version.empty());
    }).join();
}

}  // namespace
}  // namespace zu::test
