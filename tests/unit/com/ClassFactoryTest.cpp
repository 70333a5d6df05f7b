#include <gtest/gtest.h>

#include "Target.h"
#include "com/ModuleExports.h"

namespace zu::com::test {
namespace {

const ClassEntry kClasses[] = {
    {Named::classId(), L"ComTests.Named", L"A named object", &CreateObject<Named>},
    {Target::classId(), L"ComTests.Target", L"A target", &CreateObject<Target>},
};
const Server kServer{kClasses, 1};

ComPtr<IClassFactory> FactoryOf(REFCLSID id) {
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(GetClassObject(kServer, id, IID_IClassFactory, factory.putVoid()), S_OK);
    return factory;
}

TEST(ClassFactory, MakesObjectsOfItsClass) {
    ComPtr<INamed> named;
    EXPECT_EQ(FactoryOf(Named::classId())->CreateInstance(nullptr, __uuidof(INamed), named.putVoid()), S_OK);
    EXPECT_TRUE(named);
    ComPtr<ITarget> target;
    EXPECT_EQ(FactoryOf(Target::classId())->CreateInstance(nullptr, __uuidof(ITarget), target.putVoid()),
              S_OK);
    EXPECT_TRUE(target);
}

TEST(ClassFactory, RefusesOtherClassesAndInterfaces) {
    void* object = &object;
    EXPECT_EQ(GetClassObject(kServer, IID_IUnknown, IID_IClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(GetClassObject(kServer, Named::classId(), IID_IDispatch, &object), E_NOINTERFACE);
    EXPECT_EQ(GetClassObject(kServer, Named::classId(), IID_IClassFactory, nullptr), E_POINTER);
    const LONG before = Module::objects();
    const auto factory = FactoryOf(Named::classId());
    EXPECT_EQ(factory->CreateInstance(nullptr, __uuidof(ITarget), &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(Module::objects(), before + 1) << "only the factory itself";
}

TEST(ClassFactory, DoesNotAggregate) {
    const auto outer = MakeObject<Named>(L"outer").as<IUnknown>();
    void* object = &object;
    EXPECT_EQ(FactoryOf(Named::classId())->CreateInstance(outer.get(), IID_IUnknown, &object),
              CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
}

TEST(ClassFactory, LocksAndObjectsKeepTheModule) {
    ASSERT_EQ(Module::CanUnloadNow(), S_OK);
    {
        const auto factory = FactoryOf(Named::classId());
        EXPECT_EQ(Module::CanUnloadNow(), S_FALSE);
        factory->LockServer(TRUE);
    }
    EXPECT_EQ(Module::CanUnloadNow(), S_FALSE);
    FactoryOf(Named::classId())->LockServer(FALSE);
    EXPECT_EQ(Module::CanUnloadNow(), S_OK);
    {
        const auto object = MakeObject<Named>(L"n");
        EXPECT_EQ(Module::CanUnloadNow(), S_FALSE);
    }
    EXPECT_EQ(Module::CanUnloadNow(), S_OK);
}

}  // namespace
}  // namespace zu::com::test
