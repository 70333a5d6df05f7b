#include "Caller.h"

namespace zu::com::test {
namespace {

class MemberCall : public ::testing::Test {
protected:
    Caller target{MakeObject<Target>().as<IDispatch>()};
};

TEST_F(MemberCall, MethodsAndPropertiesAnswerToEitherFlag) {
    for (const WORD flags : {DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_METHOD | DISPATCH_PROPERTYGET}) {
        EXPECT_EQ(target.Call(L"Add", {Variant(LONG{1})}, flags).text(), L"3 8");
        EXPECT_EQ(target.Call(L"Child", {}, flags).text(), L"object");
    }
}

TEST_F(MemberCall, PropertiesArePutWithAndWithoutIndex) {
    EXPECT_EQ(target.Put(L"Cell", {Variant(LONG{1}), Variant(L"one")}).code, S_OK);
    EXPECT_EQ(target.Put(L"Cell", {Variant(L"three")}).code, S_OK);
    EXPECT_EQ(target.Call(L"Cell", {Variant(LONG{1})}).text(), L"8 one");
    EXPECT_EQ(target.Call(L"Cell", {Variant(LONG{3})}).text(), L"8 three");
    EXPECT_EQ(target.Call(L"Cell").text(), L"8 three") << "the default index";
}

TEST_F(MemberCall, AnAssignmentMayComeWithoutTheNameOfItsValue) {
    EXPECT_EQ(target.Invoke(target.IdOf(L"Cell"), {Variant(L"three")}, DISPATCH_PROPERTYPUT).code, S_OK);
    EXPECT_EQ(target.Call(L"Cell").text(), L"8 three");
}

TEST_F(MemberCall, ObjectsAreAssignedWithEitherPutFlag) {
    const auto named = MakeObject<Named>(L"n").as<IDispatch>();
    EXPECT_EQ(target.Put(L"Holder", {Variant(named.get())}, DISPATCH_PROPERTYPUTREF).code, S_OK);
    EXPECT_EQ(target.Call(L"Holder").text(), L"object");
    EXPECT_EQ(target.Put(L"Holder", {Variant(static_cast<IDispatch*>(nullptr))}, DISPATCH_PROPERTYPUT).code,
              S_OK);
    EXPECT_EQ(target.Call(L"Holder").text(), L"nothing");
    EXPECT_EQ(
        target.Put(L"Holder", {Variant(named.get())}, DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF).code,
        S_OK);
}

TEST_F(MemberCall, ReadOnlyMembersCannotBePut) {
    EXPECT_EQ(target.Put(L"Echo", {Variant(L"x")}).code, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(target.Put(L"Child", {Variant(L"x")}, DISPATCH_PROPERTYPUTREF).code, DISP_E_MEMBERNOTFOUND);
}

TEST_F(MemberCall, UnknownIdsAreNotFound) {
    EXPECT_EQ(target.Invoke(4711, {}, DISPATCH_METHOD).code, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(target.Invoke(4711, {Variant(L"x")}, DISPATCH_PROPERTYPUT).code, DISP_E_MEMBERNOTFOUND);
}

TEST_F(MemberCall, TheDefaultMemberAnswersItsId) {
    EXPECT_EQ(target.Invoke(DISPID_VALUE, {Variant(L"child")}, DISPATCH_PROPERTYGET).text(), L"object");
}

TEST_F(MemberCall, ArgumentsToAPropertyWithoutAnyGoToTheObjectThatItAnswers) {
    EXPECT_EQ(target.Call(L"Child", {Variant(L"x")}).text(), L"8 content x");
    EXPECT_EQ(target.Call(L"Nothing", {Variant(L"x")}).code, DISP_E_MEMBERNOTFOUND);
}

TEST_F(MemberCall, AssignmentsToAnObjectGoToItsDefaultMember) {
    EXPECT_EQ(target
                  .Invoke(DISPID_VALUE, {Variant(L"child"), Variant(L"new")}, DISPATCH_PROPERTYPUT,
                          {DISPID_PROPERTYPUT})
                  .code,
              S_OK);
    const Caller child(ObjectOf<IDispatch>(target.Call(L"Child").result));
    EXPECT_EQ(child.Call(L"Content").text(), L"8 new");
    EXPECT_EQ(target.Put(L"Child", {Variant(L"x"), Variant(L"indexed")}).code, S_OK);
    EXPECT_EQ(child.Call(L"Content", {Variant(L"x")}).text(), L"8 indexed");
    EXPECT_EQ(target.Put(L"Nothing", {Variant(L"x")}).code, DISP_E_MEMBERNOTFOUND);
}

TEST_F(MemberCall, EnumeratorsComeAsUnknownObjects) {
    const Outcome outcome = target.Invoke(DISPID_NEWENUM, {}, DISPATCH_METHOD);
    ASSERT_EQ(outcome.code, S_OK);
    EXPECT_EQ(outcome.result.type(), VT_UNKNOWN);
    EXPECT_TRUE(ObjectOf<IEnumVARIANT>(outcome.result));
}

TEST_F(MemberCall, NoObjectComesAsNothing) {
    EXPECT_EQ(target.Call(L"Nothing").text(), L"nothing");
}

TEST_F(MemberCall, ResultsMayBeIgnored) {
    const ComPtr<IDispatch> object = MakeObject<Target>().as<IDispatch>();
    Variant text(L"x");
    VARIANT argument = text.get();
    DISPPARAMS parameters{&argument, nullptr, 1, 0};
    EXPECT_EQ(object->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr), S_OK);
    DISPPARAMS none{};
    EXPECT_EQ(object->Invoke(21, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr), S_OK);
}

TEST_F(MemberCall, FailuresCarryCodeTextAndSource) {
    const Outcome outcome =
        target.Call(L"Fail", {Variant(LONG{kDuplicateKey}), Variant(L"Schl\u00fcssel \u2260")});
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.errorCode, kDuplicateKey);
    EXPECT_EQ(outcome.error, L"Schl\u00fcssel \u2260");
    EXPECT_EQ(outcome.source, L"com_tests");
}

TEST_F(MemberCall, AFailureWithoutTextDoesNotShowAnOlderOne) {
    target.Call(L"Fail", {Variant(LONG{E_FAIL}), Variant(L"old")});
    Check(S_OK);
    const Outcome outcome = target.Call(L"Fail", {Variant(LONG{E_ACCESSDENIED}), Variant(L"")});
    EXPECT_EQ(outcome.errorCode, E_ACCESSDENIED);
    EXPECT_EQ(outcome.error, L"");
}

TEST_F(MemberCall, FailuresWithoutExceptionBlockAreReported) {
    Variant text(L"t");
    VARIANT arguments[] = {text.get(), Variant(LONG{E_FAIL}).get()};
    DISPPARAMS parameters{arguments, nullptr, 2, 0};
    EXPECT_EQ(
        target.object().Invoke(17, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
        DISP_E_EXCEPTION);
}

}  // namespace
}  // namespace zu::com::test
