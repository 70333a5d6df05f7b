#include "host/engine/ParserObject.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "LateBound.h"
#include "com/Bstr.h"

namespace zu::test {
namespace {

/// A client that answers names from a list and keeps what it is told.
class Client final : public IDispatch {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(_ZuParserEvents);
        *object = known ? this : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() noexcept override { return --references; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept override {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                                     EXCEPINFO*, UINT*) noexcept override {
        if (event == 2) {
            faults.push_back(*parameters->rgvarg[1].plVal);
            if (onFault) onFault();
            return S_OK;
        }
        const auto found = values.find(std::wstring(com::View(parameters->rgvarg[1].bstrVal)));
        if (found != values.end()) *parameters->rgvarg[0].pvarVal = com::Variant(found->second).detach();
        return S_OK;
    }

    std::map<std::wstring, com::Variant> values;
    std::vector<LONG> faults;
    std::function<void()> onFault;
    ULONG references = 1;
};

class ParserObjectTest : public testing::Test {
protected:
    void SetUp() override {
        parser_ = com::ComPtr<ZuParser>::Adopt(com::MakeObject<host::ParserObject>().detach());
        const auto container = parser_.as<IConnectionPointContainer>();
        ASSERT_EQ(container->FindConnectionPoint(__uuidof(_ZuParserEvents), point_.put()), S_OK);
        ASSERT_EQ(point_->Advise(&client_, &cookie_), S_OK);
    }
    void TearDown() override {
        point_->Unadvise(cookie_);
        point_.reset();
        parser_.reset();
        EXPECT_EQ(client_.references, 1u);
    }

    com::Variant Evaluated(const wchar_t* formula) {
        const com::Bstr text(formula);
        EXPECT_EQ(parser_->put_Formula(text.get()), S_OK);
        return Again();
    }
    com::Variant Again() {
        com::Variant result;
        result_ = parser_->Evaluate(result.put());
        return result;
    }

    Apartment apartment_;
    Client client_;
    com::ComPtr<ZuParser> parser_;
    com::ComPtr<IConnectionPoint> point_;
    DWORD cookie_ = 0;
    HRESULT result_ = S_OK;
};

constexpr HRESULT kFault = static_cast<HRESULT>(0x80041017);

TEST_F(ParserObjectTest, ValuesOfEachTypeArrive) {
    client_.values[L"N"] = Number(4);
    client_.values[L"T"] = Text(L"Malmö");
    client_.values[L"B"] = com::Variant(true);
    client_.values[L"X"] = com::Variant::Null();
    EXPECT_EQ(Evaluated(L"N * 2.5").ToDouble(), 10);
    EXPECT_EQ(Evaluated(L"T + '!'").ToText().view(), L"Malmö!");
    EXPECT_TRUE(Evaluated(L"B AND N > 3").ToBoolean());
    EXPECT_EQ(Evaluated(L"X").type(), VT_NULL);
    EXPECT_EQ(Evaluated(L"{2026-11-21}").type(), VT_DATE);
    EXPECT_TRUE(Evaluated(L" ").ToBoolean()) << "a blank formula is met";
}

TEST_F(ParserObjectTest, NamesAreAskedForAtEachEvaluate) {
    client_.values[L"N"] = Number(1);
    EXPECT_EQ(Evaluated(L"N").ToLong(), 1);
    client_.values[L"N"] = Number(2);
    EXPECT_EQ(Again().ToLong(), 2);
}

TEST_F(ParserObjectTest, FaultIsToldOnceAndFailsEachEvaluate) {
    Evaluated(L"1 + ");
    EXPECT_EQ(result_, kFault);
    Again();
    EXPECT_EQ(result_, kFault);
    EXPECT_EQ(client_.faults, std::vector<LONG>{5});
    EXPECT_EQ(Evaluated(L"1 + 1").ToLong(), 2) << "another formula is a new beginning";
}

TEST_F(ParserObjectTest, UnknownNamesAndWrongTypesShowWhenItRuns) {
    Evaluated(L"NOSUCH = 1");
    EXPECT_EQ(result_, kFault);
    EXPECT_EQ(client_.faults, std::vector<LONG>{1});
    client_.values[L"T"] = Text(L"x");
    Evaluated(L"T * 2");
    EXPECT_EQ(result_, kFault);
    EXPECT_EQ(client_.faults.size(), 2u);
}

TEST_F(ParserObjectTest, HandlerMayPutAnotherFormula) {
    client_.onFault = [&] {
        const com::Bstr text(L"7");
        EXPECT_EQ(parser_->put_Formula(text.get()), S_OK);
    };
    Evaluated(L"1 +");
    client_.onFault = nullptr;
    EXPECT_EQ(Again().ToLong(), 7);
}

TEST_F(ParserObjectTest, FaultWithoutAListenerIsToldByTheNextEvaluate) {
    point_->Unadvise(cookie_);
    const com::Bstr text(L"(");
    EXPECT_EQ(parser_->put_Formula(text.get()), S_OK);
    EXPECT_EQ(point_->Advise(&client_, &cookie_), S_OK);
    Again();
    EXPECT_EQ(client_.faults.size(), 1u);
}

TEST_F(ParserObjectTest, FormulaCanBeReadBackAndNullPointersAreRefused) {
    const com::Bstr text(L"A > 1");
    com::Bstr read;
    EXPECT_EQ(parser_->put_Formula(text.get()), S_OK);
    EXPECT_EQ(parser_->get_Formula(read.put()), S_OK);
    EXPECT_EQ(read.view(), L"A > 1");
    EXPECT_EQ(parser_->Evaluate(nullptr), E_POINTER);
    EXPECT_EQ(parser_->get_Formula(nullptr), E_POINTER);
    const auto container = parser_.as<IConnectionPointContainer>();
    com::ComPtr<IConnectionPoint> other;
    EXPECT_TRUE(FAILED(container->FindConnectionPoint(IID_IDispatch, other.put())));
}

TEST_F(ParserObjectTest, ListsTheOnePointOfItsEvents) {
    const auto container = parser_.as<IConnectionPointContainer>();
    EXPECT_EQ(container->EnumConnectionPoints(nullptr), E_POINTER);
    com::ComPtr<IEnumConnectionPoints> list;
    ASSERT_EQ(container->EnumConnectionPoints(list.put()), S_OK);
    com::ComPtr<IConnectionPoint> found;
    ULONG fetched = 0;
    ASSERT_EQ(list->Next(1, found.put(), &fetched), S_OK);
    EXPECT_EQ(fetched, 1u);
    EXPECT_EQ(found.get(), point_.get()) << "the same that FindConnectionPoint answers";
    found.reset();
    EXPECT_EQ(list->Next(1, found.put(), nullptr), S_FALSE) << "there is no second one";
    EXPECT_FALSE(found);
}

TEST_F(ParserObjectTest, TheListOfPointsIsWalkedAgainSkippedAndCopied) {
    com::ComPtr<IEnumConnectionPoints> list;
    ASSERT_EQ(parser_.as<IConnectionPointContainer>()->EnumConnectionPoints(list.put()), S_OK);
    EXPECT_EQ(list->Skip(1), S_OK);
    EXPECT_EQ(list->Skip(1), S_FALSE) << "past the end";
    com::ComPtr<IEnumConnectionPoints> behind;
    ASSERT_EQ(list->Clone(behind.put()), S_OK);
    EXPECT_EQ(list->Reset(), S_OK);
    std::array<IConnectionPoint*, 2> points{};
    ULONG fetched = 0;
    EXPECT_EQ(list->Next(2, points.data(), &fetched), S_FALSE) << "fewer than asked for";
    EXPECT_EQ(fetched, 1u);
    const auto first = com::ComPtr<IConnectionPoint>::Adopt(points[0]);
    EXPECT_EQ(first.get(), point_.get());
    EXPECT_EQ(points[1], nullptr);
    EXPECT_EQ(behind->Next(2, points.data(), &fetched), S_FALSE) << "a copy keeps its own position";
    EXPECT_EQ(fetched, 0u);
    EXPECT_EQ(list->Next(2, points.data(), nullptr), E_POINTER) << "the number is needed for more than one";
    EXPECT_EQ(list->Next(1, nullptr, &fetched), E_POINTER);
    EXPECT_EQ(list->Clone(nullptr), E_POINTER);
}

}  // namespace
}  // namespace zu::test
