#include "com/Variant.h"

#include <gtest/gtest.h>

#include "com/ComError.h"
#include "com/SafeArray.h"

namespace zu::com {
namespace {

VARIANT Reference(Variant& variable) {
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = variable.address();
    return reference;
}

template <class Body>
HRESULT CodeOf(Body body) {
    try {
        body();
    } catch (const ComError& error) {
        return error.code();
    }
    return S_OK;
}

TEST(Variant, CopiesDeepAndResolvesReferences) {
    Variant source(L"text");
    const Variant copy(Reference(source));
    EXPECT_EQ(copy.type(), VT_BSTR);
    EXPECT_NE(copy->bstrVal, source->bstrVal);
    VARIANT inner = Reference(source);
    VARIANT outer;
    VariantInit(&outer);
    outer.vt = VT_BYREF | VT_VARIANT;
    outer.pvarVal = &inner;
    EXPECT_EQ(Variant(outer).ToText().view(), L"text");
}

TEST(Variant, CopyingAVariantThatRefersToItselfFails) {
    VARIANT loop;
    VariantInit(&loop);
    loop.vt = VT_BYREF | VT_VARIANT;
    loop.pvarVal = &loop;
    EXPECT_NE(CodeOf([&] { const Variant copy(loop); }), S_OK);
}

TEST(Variant, MovesAndDetaches) {
    Variant first(L"text");
    Variant second = std::move(first);
    EXPECT_EQ(first.type(), VT_EMPTY);  // NOLINT(bugprone-use-after-move): what it leaves is the point
    VARIANT raw = second.detach();
    EXPECT_EQ(second.type(), VT_EMPTY);
    EXPECT_EQ(Variant::Adopt(raw).ToText().view(), L"text");
}

TEST(Variant, ConvertsByTheInvariantLocale) {
    EXPECT_EQ(Variant(1.5).ToText().view(), L"1.5");
    EXPECT_EQ(Variant(L"1.5").ToDouble(), 1.5);
    EXPECT_EQ(Variant(true).ToText().view(), L"True");
    EXPECT_TRUE(Variant(L"True").ToBoolean());
    EXPECT_EQ(Variant(L" 12 ").ToLong(), 12);
    EXPECT_EQ(Variant(2.5).ToLong(), 2) << "halves go to the even number";
    EXPECT_EQ(Variant().ToText().view(), L"");
    EXPECT_EQ(Variant().ToLong(), 0);
}

TEST(Variant, RefusedConversionsAreErrorsThatScriptsKnow) {
    EXPECT_EQ(CodeOf([] { Variant(L"x").ToLong(); }), kTypeMismatch);
    EXPECT_EQ(CodeOf([] { Variant::Null().ToText(); }), kTypeMismatch);
    EXPECT_EQ(CodeOf([] { Variant(1e10).ToLong(); }), kOverflow);
}

TEST(Variant, MissingIsRecognisedInEveryWrapping) {
    Variant missing = Variant::Missing();
    EXPECT_TRUE(IsMissing(missing));
    EXPECT_TRUE(IsMissing(Reference(missing)));
    EXPECT_TRUE(IsMissing(static_cast<const VARIANT*>(nullptr)));
    SCODE code = DISP_E_PARAMNOTFOUND;
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_ERROR;
    reference.pscode = &code;
    EXPECT_TRUE(IsMissing(reference));
    code = E_FAIL;
    EXPECT_FALSE(IsMissing(reference));
    EXPECT_FALSE(IsMissing(Variant()));
    EXPECT_FALSE(IsMissing(Variant::Null()));
}

TEST(Variant, TextIsFoundInEveryWrapping) {
    Variant text(L"abc");
    EXPECT_EQ(TextOf(text), L"abc");
    EXPECT_EQ(TextOf(Reference(text)), L"abc");
    BSTR raw = text->bstrVal;
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_BSTR;
    reference.pbstrVal = &raw;
    EXPECT_EQ(TextOf(reference), L"abc");
    EXPECT_FALSE(TextOf(Variant(LONG{1})));
    EXPECT_FALSE(TextOf(Variant()));
}

TEST(Variant, ObjectsAreFoundInEveryWrapping) {
    EXPECT_FALSE(ObjectOf<IDispatch>(Variant(static_cast<IDispatch*>(nullptr))));
    EXPECT_FALSE(ObjectOf<IDispatch>(Variant(L"x")));
}

}  // namespace
}  // namespace zu::com
