// ZuDbfControl, the collections and the formats as clients see them.
#include "tests/contract/textio/TextTest.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;

namespace {

constexpr HRESULT kMissing = static_cast<HRESULT>(0x800A0009);
constexpr HRESULT kDuplicate = static_cast<HRESULT>(0x800A01C9);

template <class Object>
std::wstring Text(Object& object, HRESULT (STDMETHODCALLTYPE Object::*get)(BSTR*)) {
    Bstr text;
    EXPECT_EQ((object.*get)(text.put()), S_OK);
    return text.str();
}

template <class Object, class T>
T Plain(Object& object, HRESULT (STDMETHODCALLTYPE Object::*get)(T*)) {
    T value{};
    EXPECT_EQ((object.*get)(&value), S_OK);
    return value;
}

/// The value of a property by its name, as scripts ask for it.
Variant ByName(IDispatch& object, const wchar_t* name, WORD how = DISPATCH_PROPERTYGET,
               const VARIANT* argument = nullptr) {
    std::wstring text(name);
    LPOLESTR names[] = {text.data()};
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id), S_OK)
        << std::string(text.begin(), text.end());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{const_cast<VARIANT*>(argument), how == DISPATCH_PROPERTYPUT ? &put : nullptr,
                          argument ? 1U : 0U, how == DISPATCH_PROPERTYPUT ? 1U : 0U};
    Variant result;
    EXPECT_EQ(
        object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, how, &parameters, result.put(), nullptr, nullptr),
        S_OK);
    return result;
}

}  // namespace

class FormatClasses : public TextTest {
protected:
    static ComPtr<_ZuExportFormats> NewExportFormats() {
        return Create(L"ZuDBFFunctions.ZuExportFormats").tryAs<_ZuExportFormats>();
    }
    static ComPtr<_ZuImportFormats> NewImportFormats() {
        return Create(L"ZuDBFFunctions.ZuImportFormats").tryAs<_ZuImportFormats>();
    }
};

TEST_F(FormatClasses, AFreshControlHasBothFormatsInBothCollections) {
    const ComPtr<_ZuDbfControl> control = NewControl();
    ComPtr<_ZuExportFormats> out;
    ComPtr<_ZuImportFormats> in;
    ASSERT_EQ(control->get_ExportFormats(out.put()), S_OK);
    ASSERT_EQ(control->get_ImportFormats(in.put()), S_OK);
    EXPECT_EQ(Plain(*out.get(), &_ZuExportFormats::get_Count), 2);
    EXPECT_EQ(Plain(*in.get(), &_ZuImportFormats::get_Count), 2);
    const wchar_t* const names[] = {L"Delimited", L"Fixed"};
    for (LONG i = 1; i <= 2; ++i) {
        ComPtr<_ZuExportFormat> exported;
        ComPtr<_ZuImportFormat> imported;
        ASSERT_EQ(out->get_Item(Variant(i), exported.put()), S_OK);
        ASSERT_EQ(in->get_Item(Variant(i), imported.put()), S_OK);
        EXPECT_EQ(Text(*exported.get(), &_ZuExportFormat::get_Name), names[i - 1]);
        EXPECT_EQ(Text(*imported.get(), &_ZuImportFormat::get_Name), names[i - 1]);
    }
    ComPtr<_ZuExportFormat> fixed;
    ASSERT_EQ(out->get_Item(Variant(L"fixed"), fixed.put()), S_OK);
    EXPECT_EQ(Text(*fixed.get(), &_ZuExportFormat::get_Name), L"Fixed");
}

TEST_F(FormatClasses, AControlKeepsItsCollections) {
    const ComPtr<_ZuDbfControl> control = NewControl();
    ComPtr<_ZuExportFormats> first;
    ComPtr<_ZuExportFormats> second;
    ASSERT_EQ(control->get_ExportFormats(first.put()), S_OK);
    ASSERT_EQ(control->get_ExportFormats(second.put()), S_OK);
    EXPECT_EQ(first.get(), second.get());
}

TEST_F(FormatClasses, CollectionsCreatedDirectlyStartEmpty) {
    EXPECT_EQ(Plain(*NewExportFormats().get(), &_ZuExportFormats::get_Count), 0);
    EXPECT_EQ(Plain(*NewImportFormats().get(), &_ZuImportFormats::get_Count), 0);
}

TEST_F(FormatClasses, AddFormatRefusesANameThatIsThereInAnyCase) {
    const ComPtr<_ZuExportFormats> formats = NewExportFormats();
    LONG preset = 1;
    VARIANT_BOOL added = VARIANT_FALSE;
    ASSERT_EQ(formats->AddFormat(Bstr(L"Mine").address(), &preset, &added), S_OK);
    EXPECT_EQ(added, VARIANT_TRUE);
    EXPECT_EQ(formats->AddFormat(Bstr(L"MINE").address(), &preset, &added), kDuplicate);
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(Plain(*formats.get(), &_ZuExportFormats::get_Count), 1);
    const ComPtr<_ZuImportFormats> imports = NewImportFormats();
    ASSERT_EQ(imports->AddFormat(Bstr(L"Mine").address(), &preset, &added), S_OK);
    EXPECT_EQ(imports->AddFormat(Bstr(L"mine").address(), nullptr, &added), kDuplicate);
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(Plain(*imports.get(), &_ZuImportFormats::get_Count), 1);
}

TEST_F(FormatClasses, ItemFailsForAPositionOrNameThatIsMissing) {
    const ComPtr<_ZuDbfControl> control = NewControl();
    ComPtr<_ZuExportFormats> formats;
    ASSERT_EQ(control->get_ExportFormats(formats.put()), S_OK);
    ComPtr<_ZuExportFormat> format;
    for (const LONG position : {0L, 3L, -1L, 100000L})
        EXPECT_EQ(formats->get_Item(Variant(position), format.put()), kMissing) << position;
    EXPECT_EQ(formats->get_Item(Variant(L"None"), format.put()), kMissing);
    EXPECT_FALSE(format);
    ComPtr<_ZuImportFormats> imports;
    ASSERT_EQ(control->get_ImportFormats(imports.put()), S_OK);
    ComPtr<_ZuImportFormat> imported;
    EXPECT_EQ(imports->get_Item(Variant(LONG{3}), imported.put()), kMissing);
    EXPECT_EQ(imports->get_Item(Variant(L"1"), imported.put()), kMissing);
    SetErrorInfo(0, nullptr);
}

TEST_F(FormatClasses, ItemTakesPositionsOfAnyNumberType) {
    const ComPtr<_ZuDbfControl> control = NewControl();
    ComPtr<_ZuExportFormats> formats;
    ASSERT_EQ(control->get_ExportFormats(formats.put()), S_OK);
    for (const Variant& position : {Variant(SHORT{2}), Variant(LONG{2}), Variant(2.0)}) {
        ComPtr<_ZuExportFormat> format;
        ASSERT_EQ(formats->get_Item(position, format.put()), S_OK);
        EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_Name), L"Fixed");
    }
}

TEST_F(FormatClasses, ForEachGivesTheFormatsInOrder) {
    const ComPtr<_ZuDbfControl> control = NewControl();
    ComPtr<_ZuImportFormats> formats;
    ASSERT_EQ(control->get_ImportFormats(formats.put()), S_OK);
    VARIANT_BOOL added = VARIANT_FALSE;
    ASSERT_EQ(formats->AddFormat(Bstr(L"Third").address(), nullptr, &added), S_OK);
    ComPtr<IUnknown> walk;
    ASSERT_EQ(formats->get_NewEnum(walk.put()), S_OK);
    const ComPtr<IEnumVARIANT> sequence = walk.tryAs<IEnumVARIANT>();
    ASSERT_TRUE(sequence);
    std::wstring names;
    Variant element;
    while (sequence->Next(1, element.put(), nullptr) == S_OK) {
        const ComPtr<_ZuImportFormat> format = com::ObjectOf<_ZuImportFormat>(element);
        names += Text(*format.get(), &_ZuImportFormat::get_Name) + L";";
    }
    EXPECT_EQ(names, L"Delimited;Fixed;Third;");
}

TEST_F(FormatClasses, ForEachKeepsTheCollectionAlive) {
    ComPtr<IUnknown> walk;
    {
        const ComPtr<_ZuDbfControl> control = NewControl();
        ComPtr<_ZuExportFormats> formats;
        ASSERT_EQ(control->get_ExportFormats(formats.put()), S_OK);
        ASSERT_EQ(formats->get_NewEnum(walk.put()), S_OK);
    }
    Variant element;
    EXPECT_EQ(walk.tryAs<IEnumVARIANT>()->Next(1, element.put(), nullptr), S_OK);
}

TEST_F(FormatClasses, FormatsOutliveTheirControl) {
    ComPtr<_ZuExportFormat> format = ExportFormat(*NewControl().get(), L"Fixed");
    EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_Name), L"Fixed");
}

TEST_F(FormatClasses, DateSeparatorAndDateFormatRebuildTheExportMask) {
    const ComPtr<_ZuDbfControl> control = NewControl();
    const ComPtr<_ZuExportFormat> format = ExportFormat(*control.get(), L"Delimited");
    EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_DateFormatMask), L"yyyymmdd");
    EXPECT_EQ(format->put_DateSeparator(Bstr(L"-").get()), S_OK);
    EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_DateFormatMask), L"yyyy-mm-dd");
    EXPECT_EQ(format->put_DateFormat(DateMask_Ansi), S_OK);
    EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_DateFormatMask), L"yyyy.mm.dd");
    EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_DateSeparator), L".");
    EXPECT_EQ(format->put_DateFormatMask(Bstr(L"anything").get()), S_OK);
    EXPECT_EQ(Plain(*format.get(), &_ZuExportFormat::get_DateFormat), DateMask_Custom);
    EXPECT_EQ(format->put_DateSeparator(Bstr(L"-").get()), S_OK);
    EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_DateFormatMask), L"anything");
    for (const int ignored : {8, -1}) {
        EXPECT_EQ(format->put_DateFormat(static_cast<DateMaskConstants>(ignored)), S_OK);
        EXPECT_EQ(Plain(*format.get(), &_ZuExportFormat::get_DateFormat), DateMask_Custom);
    }
}

TEST_F(FormatClasses, PadCharactersReadBackAsTheirFirstCharacter) {
    const ComPtr<_ZuDbfControl> control = NewControl();
    const ComPtr<_ZuExportFormat> format = ExportFormat(*control.get(), L"Fixed");
    EXPECT_EQ(format->put_StringPadCharacter(Bstr(L"xyz").get()), S_OK);
    EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_StringPadCharacter), L"x");
    EXPECT_EQ(format->put_StringPadCharacter(nullptr), S_OK);
    EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_StringPadCharacter), L"");
}

TEST_F(FormatClasses, LengthsAndDecimalsOutOfRangeAreIgnored) {
    const ComPtr<_ZuDbfControl> control = NewControl();
    const ComPtr<_ZuExportFormat> format = ExportFormat(*control.get(), L"Fixed");
    EXPECT_EQ(format->put_LengthOfSingle(0), S_OK);
    EXPECT_EQ(Plain(*format.get(), &_ZuExportFormat::get_LengthOfSingle), 20);
    EXPECT_EQ(format->put_DecimalsForDouble(0), S_OK);
    EXPECT_EQ(Plain(*format.get(), &_ZuExportFormat::get_DecimalsForDouble), 0);
}

TEST_F(FormatClasses, AFormatWithoutPresetHasTheAnsiMaskAndNoMinus) {
    const ComPtr<_ZuExportFormats> formats = NewExportFormats();
    LONG preset = 0;
    VARIANT_BOOL added = VARIANT_FALSE;
    ASSERT_EQ(formats->AddFormat(Bstr(L"Plain").address(), &preset, &added), S_OK);
    ComPtr<_ZuExportFormat> format;
    ASSERT_EQ(formats->get_Item(Variant(L"PLAIN"), format.put()), S_OK);
    EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_DateFormatMask), L"yyyy.mm.dd");
    EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_NumberNegativeSymbol), L"");
}

TEST_F(FormatClasses, AnEmptyImportSeparatorIsIgnoredAndAnEmptyQuoteTurnsQuotingOff) {
    const ComPtr<_ZuDbfControl> control = NewControl();
    const ComPtr<_ZuImportFormat> format = ImportFormat(*control.get(), L"Delimited");
    EXPECT_EQ(format->put_Separator(Bstr(L"").get()), S_OK);
    EXPECT_EQ(Text(*format.get(), &_ZuImportFormat::get_Separator), L",");
    EXPECT_EQ(Text(*format.get(), &_ZuImportFormat::get_FieldQuoteChar), L"\"");
    EXPECT_EQ(format->put_FieldQuoteChar(Bstr(L"").get()), S_OK);
    EXPECT_EQ(Text(*format.get(), &_ZuImportFormat::get_FieldQuoteChar), L"");
}

TEST_F(FormatClasses, EveryPropertyTakesItsValueByName) {
    struct Case {
        const wchar_t* name;
        Variant value;
    };
    const Case exported[] = {
        {L"DateFormat", Variant(LONG{5})},         {L"DateSeparator", Variant(L"/")},
        {L"TrueValue", Variant(L"yes")},           {L"FalseValue", Variant(L"no")},
        {L"StringsTrimmed", Variant(false)},       {L"StringsPadded", Variant(true)},
        {L"StringPadCharacter", Variant(L"_")},    {L"StringsQuoted", Variant(false)},
        {L"NumbersTrimmed", Variant(true)},        {L"NumbersPadded", Variant(true)},
        {L"NumberPadCharacter", Variant(L"0")},    {L"NumbersQuoted", Variant(true)},
        {L"NumberPositiveSymbol", Variant(L"+")},  {L"NumberNegativeSymbol", Variant(L"~")},
        {L"NumberSignPosition", Variant(LONG{9})}, {L"CurrencySignPosition", Variant(LONG{1})},
        {L"CurrencySymbol", Variant(L"$")},        {L"CurrencySymbolPosition", Variant(LONG{-4})},
        {L"CurrencyPrecision", Variant(LONG{-2})}, {L"Separator", Variant(L"")},
        {L"FieldQuoteChar", Variant(L"'")},        {L"LengthOfSingle", Variant(LONG{11})},
        {L"LengthOfDouble", Variant(LONG{12})},    {L"DecimalsForSingle", Variant(LONG{1})},
        {L"DecimalsForDouble", Variant(LONG{2})},  {L"LengthOfCurrency", Variant(LONG{13})},
        {L"OmitDecimalPoint", Variant(true)}};
    const ComPtr<_ZuDbfControl> control = NewControl();
    const ComPtr<_ZuExportFormat> out = ExportFormat(*control.get(), L"Delimited");
    for (const Case& property : exported) {
        ByName(*out.get(), property.name, DISPATCH_PROPERTYPUT, &property.value.get());
        EXPECT_EQ(ByName(*out.get(), property.name).ToText().str(), property.value.ToText().str())
            << std::string(property.name, property.name + wcslen(property.name));
    }
    const Case imported[] = {{L"BooleanLength", Variant(LONG{5})},   {L"DateFormat", Variant(LONG{1})},
                             {L"DateSeparator", Variant(L".")},      {L"StringsTrimmed", Variant(true)},
                             {L"FieldQuoteChar", Variant(L"'")},     {L"LengthOfSingle", Variant(LONG{11})},
                             {L"LengthOfDouble", Variant(LONG{12})}, {L"LengthOfCurrency", Variant(LONG{13})},
                             {L"Separator", Variant(L"||")}};
    const ComPtr<_ZuImportFormat> in = ImportFormat(*control.get(), L"Fixed");
    for (const Case& property : imported) {
        ByName(*in.get(), property.name, DISPATCH_PROPERTYPUT, &property.value.get());
        EXPECT_EQ(ByName(*in.get(), property.name).ToText().str(), property.value.ToText().str())
            << std::string(property.name, property.name + wcslen(property.name));
    }
    EXPECT_EQ(ByName(*in.get(), L"DateFormatMask").ToText().str(), L"dd.mm.yyyy");
}

TEST_F(FormatClasses, AFormatCreatedDirectlyHasNoNameAndNoMask) {
    const auto format = Create(L"ZuDBFFunctions.ZuExportFormat").tryAs<_ZuExportFormat>();
    ASSERT_TRUE(format);
    EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_Name), L"");
    EXPECT_EQ(Text(*format.get(), &_ZuExportFormat::get_DateFormatMask), L"");
    const auto imported = Create(L"ZuDBFFunctions.ZuImportFormat").tryAs<_ZuImportFormat>();
    ASSERT_TRUE(imported);
    EXPECT_EQ(Plain(*imported.get(), &_ZuImportFormat::get_BooleanLength), 0);
}

}  // namespace zu::contract
