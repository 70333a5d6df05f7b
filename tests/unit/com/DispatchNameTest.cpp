#include "Caller.h"

namespace zu::com::test {
namespace {

class DispatchName : public ::testing::Test {
protected:
    Caller target{MakeObject<Target>().as<IDispatch>()};
};

TEST_F(DispatchName, FindsMembersWithoutRegardToCase) {
    EXPECT_EQ(target.IdOf(L"Echo"), 1);
    EXPECT_EQ(target.IdOf(L"eCHO"), 1);
    EXPECT_EQ(target.IdOf(L"item"), DISPID_VALUE);
}

TEST_F(DispatchName, FindsMembersOfAllInterfaces) {
    EXPECT_EQ(target.IdOf(L"Extra"), 100);
    EXPECT_EQ(target.Call(L"Extra").result.ToLong(), 99);
}

TEST_F(DispatchName, OfEqualNamesTheFirstInterfaceWins) {
    EXPECT_EQ(target.IdOf(L"Nop"), 26);
    EXPECT_EQ(target.Call(L"Nop").text(), L"empty");
}

TEST_F(DispatchName, DoesNotKnowOtherNames) {
    EXPECT_EQ(target.IdOf(L"Ech"), DISPID_UNKNOWN);
    EXPECT_EQ(target.IdOf(L"Echoo"), DISPID_UNKNOWN);
    EXPECT_EQ(target.IdOf(L""), DISPID_UNKNOWN);
    EXPECT_EQ(target.IdOf(L"QueryInterface"), DISPID_UNKNOWN);
    auto* name = const_cast<LPOLESTR>(L"NoSuchName");
    DISPID id = 0;
    EXPECT_EQ(target.object().GetIDsOfNames(IID_NULL, &name, 1, 0, &id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(id, DISPID_UNKNOWN);
}

TEST_F(DispatchName, HidesRestrictedMembers) {
    EXPECT_EQ(target.IdOf(L"Hidden"), DISPID_UNKNOWN);
    EXPECT_EQ(target.IdOf(L"_NewEnum"), DISPID_UNKNOWN);
}

TEST_F(DispatchName, AnswersTheIdsOfParameters) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(L"Order"), const_cast<LPOLESTR>(L"THIRD"),
                        const_cast<LPOLESTR>(L"first")};
    DISPID ids[3] = {};
    EXPECT_EQ(target.object().GetIDsOfNames(IID_NULL, names, 3, 0, ids), S_OK);
    EXPECT_EQ(ids[0], 25);
    EXPECT_EQ(ids[1], 2);
    EXPECT_EQ(ids[2], 0);
}

TEST_F(DispatchName, ReportsAnUnknownParameterAndStillAnswersTheOthers) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(L"Order"), const_cast<LPOLESTR>(L"Fourth"),
                        const_cast<LPOLESTR>(L"Second")};
    DISPID ids[3] = {};
    EXPECT_EQ(target.object().GetIDsOfNames(IID_NULL, names, 3, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], 25);
    EXPECT_EQ(ids[1], DISPID_UNKNOWN);
    EXPECT_EQ(ids[2], 1);
}

TEST_F(DispatchName, RefusesNamesUnderAnInterfaceId) {
    auto* name = const_cast<LPOLESTR>(L"Echo");
    DISPID id = 0;
    EXPECT_EQ(target.object().GetIDsOfNames(IID_IUnknown, &name, 1, 0, &id), DISP_E_UNKNOWNINTERFACE);
    DISPPARAMS none{};
    EXPECT_EQ(target.object().Invoke(26, IID_IUnknown, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
}

TEST_F(DispatchName, KnowsInternalOperationsButRefusesToCallThem) {
    const DISPID id = target.IdOf(L"secret");
    ASSERT_NE(id, DISPID_UNKNOWN);
    EXPECT_NE(target.IdOf(L"AnotherSecret"), id);
    for (const WORD flags : {DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT}) {
        const Outcome outcome = target.Invoke(id, {}, flags);
        EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
        EXPECT_EQ(outcome.errorCode, kInvalidFriendCall);
        EXPECT_FALSE(outcome.error.empty());
    }
}

TEST_F(DispatchName, AnswersTheTypeOfThePrimaryInterface) {
    UINT count = 0;
    EXPECT_EQ(target.object().GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1u);
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(target.object().GetTypeInfo(0, 0, info.put()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_TRUE(IsEqualIID(attributes->guid, __uuidof(ITarget)));
    info->ReleaseTypeAttr(attributes);
    EXPECT_EQ(target.object().GetTypeInfo(1, 0, info.put()), DISP_E_BADINDEX);
}

}  // namespace
}  // namespace zu::com::test
