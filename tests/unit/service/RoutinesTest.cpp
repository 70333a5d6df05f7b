#include "host/engine/Routines.h"

#include <gtest/gtest.h>

#include "LateBound.h"
#include "ScriptObject.h"
#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/SafeArray.h"

namespace zu::host {
namespace {

using test::Number;
using test::ScriptObject;
using test::Text;

class RoutinesTest : public testing::Test {
protected:
    void SetUp() override { routines_.SetHolder(script_.get()); }

    test::Apartment apartment_;
    com::ComPtr<ScriptObject> script_ = ScriptObject::Make();
    Routines routines_;
};

TEST_F(RoutinesTest, AreFoundByName) {
    script_->Add(L"Work", [](auto&, VARIANT*, EXCEPINFO*) { return S_OK; });
    EXPECT_TRUE(routines_.Has(L"Work"));
    EXPECT_FALSE(routines_.Has(L"Play"));
    EXPECT_FALSE(routines_.Has(L""));
    EXPECT_EQ(routines_.Find(L"Work").get(), script_.get());
}

TEST_F(RoutinesTest, AMissingRoutineIsNamed) {
    try {
        routines_.Find(L"Play");
        FAIL();
    } catch (const com::ComError& error) {
        EXPECT_EQ(error.code(), DISP_E_UNKNOWNNAME);
        EXPECT_EQ(error.description(), L"The script has no routine named \"Play\"");
    }
}

TEST_F(RoutinesTest, WithoutAHolderTheErrorTellsHowToSetOne) {
    routines_.SetHolder(nullptr);
    EXPECT_FALSE(routines_.Has(L"Work"));
    try {
        routines_.Find(L"Work");
        FAIL();
    } catch (const com::ComError& error) {
        EXPECT_NE(error.description().find(L"RoutineHolder"), std::wstring::npos);
    }
}

TEST_F(RoutinesTest, AreLookedUpOnceHoweverOftenTheyAreCalled) {
    script_->Add(L"Work", [](auto&, VARIANT*, EXCEPINFO*) { return S_OK; });
    const com::ComPtr<IDispatch> routine = routines_.Find(L"Work");
    for (int i = 0; i < 100; ++i)
        routines_.Call(routine.get(), L"Work", nullptr);
    EXPECT_EQ(script_->lookups(), 1);
}

TEST_F(RoutinesTest, AreCalledByTheirOwnNameWhenSeveralAlternate) {
    std::wstring calls;
    script_->Add(L"A", [&](auto&, VARIANT*, EXCEPINFO*) { return calls += L"A", S_OK; });
    script_->Add(L"B", [&](auto&, VARIANT*, EXCEPINFO*) { return calls += L"B", S_OK; });
    for (const wchar_t* name : {L"A", L"B", L"B", L"A"})
        routines_.Call(script_.get(), name, nullptr);
    EXPECT_EQ(calls, L"ABBA");
}

TEST_F(RoutinesTest, GetTheirArgumentsInOrder) {
    std::vector<std::wstring> seen;
    script_->Add(L"Work", [&](std::vector<VARIANT*>& arguments, VARIANT*, EXCEPINFO*) {
        for (const VARIANT* argument : arguments)
            seen.emplace_back(com::View(argument->bstrVal));
        return S_OK;
    });
    for (const std::size_t count : {1u, 2u, 10u, 12u}) {
        std::vector<com::Variant> texts;
        for (std::size_t i = 0; i < count; ++i)
            texts.push_back(Text(std::to_wstring(i)));
        const com::SafeArray arguments = com::SafeArray::Of(texts);
        seen.clear();
        routines_.Call(script_.get(), L"Work", arguments.get());
        ASSERT_EQ(seen.size(), count);
        for (std::size_t i = 0; i < count; ++i)
            EXPECT_EQ(seen[i], std::to_wstring(i));
    }
}

TEST_F(RoutinesTest, AnUpperBoundOfMinusOneMeansNoArguments) {
    std::size_t given = 99;
    script_->Add(L"Work", [&](std::vector<VARIANT*>& arguments, VARIANT*, EXCEPINFO*) {
        given = arguments.size();
        return S_OK;
    });
    routines_.Call(script_.get(), L"Work", com::SafeArray::NoArguments().get());
    EXPECT_EQ(given, 0u);
    given = 99;
    routines_.Call(script_.get(), L"Work", com::SafeArray::Of({}).get());
    EXPECT_EQ(given, 0u);
    given = 99;
    routines_.Call(script_.get(), L"Work", nullptr);
    EXPECT_EQ(given, 0u);
}

TEST_F(RoutinesTest, MayWriteToTheArgumentList) {
    script_->Add(L"Count", [](std::vector<VARIANT*>& arguments, VARIANT*, EXCEPINFO*) {
        ++arguments[0]->lVal;
        return S_OK;
    });
    const com::SafeArray arguments = com::SafeArray::Of({Number(5)});
    routines_.Call(script_.get(), L"Count", arguments.get());
    routines_.Call(script_.get(), L"Count", arguments.get());
    LONG index = 0;
    com::Variant element;
    SafeArrayGetElement(arguments.get(), &index, element.put());
    EXPECT_EQ(element.ToLong(), 7);
}

TEST_F(RoutinesTest, AnArrayOfAnotherKindIsRefused) {
    script_->Add(L"Work", [](auto&, VARIANT*, EXCEPINFO*) { return S_OK; });
    SAFEARRAY* longs = SafeArrayCreateVector(VT_I4, 0, 2);
    EXPECT_THROW(routines_.Call(script_.get(), L"Work", longs), com::ComError);
    SafeArrayDestroy(longs);
}

TEST_F(RoutinesTest, AnErrorThatARoutineRaisesComesBackAsItWas) {
    script_->Add(L"Fail", [](auto&, VARIANT*, EXCEPINFO* raised) {
        raised->scode = static_cast<SCODE>(0x800A0009);
        raised->bstrDescription = SysAllocString(L"row 3 is odd");
        raised->bstrSource = SysAllocString(L"my script");
        return DISP_E_EXCEPTION;
    });
    try {
        routines_.Call(script_.get(), L"Fail", nullptr);
        FAIL();
    } catch (const com::ComError& error) {
        EXPECT_EQ(error.code(), static_cast<HRESULT>(0x800A0009));
        EXPECT_EQ(error.description(), L"row 3 is odd");
        EXPECT_EQ(error.source(), L"my script");
    }
}

TEST_F(RoutinesTest, ADeferredErrorIsFilledIn) {
    script_->Add(L"Fail", [](auto&, VARIANT*, EXCEPINFO* raised) {
        raised->pfnDeferredFillIn = [](EXCEPINFO* info) -> HRESULT {
            info->wCode = 13;
            info->bstrDescription = SysAllocString(L"late");
            return S_OK;
        };
        return DISP_E_EXCEPTION;
    });
    try {
        routines_.Call(script_.get(), L"Fail", nullptr);
        FAIL();
    } catch (const com::ComError& error) {
        EXPECT_EQ(error.code(), com::kTypeMismatch);
        EXPECT_EQ(error.description(), L"late");
    }
}

TEST_F(RoutinesTest, AnErrorThatTheScriptHostHasShownKeepsItsCode) {
    script_->Add(L"Fail", [](auto&, VARIANT*, EXCEPINFO*) { return static_cast<HRESULT>(0x80020101); });
    try {
        routines_.Call(script_.get(), L"Fail", nullptr);
        FAIL();
    } catch (const com::ComError& error) {
        EXPECT_EQ(error.code(), static_cast<HRESULT>(0x80020101));
        EXPECT_NE(error.description().find(L"Fail"), std::wstring::npos);
    }
}

TEST_F(RoutinesTest, LetTheHolderGo) {
    script_->Add(L"Work", [](auto&, VARIANT*, EXCEPINFO*) { return S_OK; });
    routines_.Call(routines_.Find(L"Work").get(), L"Work", nullptr);
    routines_.SetHolder(nullptr);
    EXPECT_EQ(script_->references(), 1u);
}

TEST_F(RoutinesTest, SurviveARoutineThatTakesTheHolderAway) {
    script_->Add(L"Leave", [&](auto&, VARIANT*, EXCEPINFO*) {
        routines_.SetHolder(nullptr);
        return S_OK;
    });
    ScriptObject* const held = script_.get();
    const com::ComPtr<IDispatch> routine = routines_.Find(L"Leave");
    routines_.Call(routine.get(), L"Leave", nullptr);
    EXPECT_EQ(held->references(), 2u);
}

}  // namespace
}  // namespace zu::host
