// Lists the unpaid orders above an amount: the functions from C++, early bound, with the headers of the
// package alone.
//
//   cl /EHsc /std:c++17 /I..\..\include report.cpp ole32.lib oleaut32.lib
//   g++ -std=c++17 -municode -I../../include report.cpp -o report.exe -lole32 -loleaut32 -luuid -static
//   report C:\demo
//
// C:\demo holds orders.dbf, made by zugenerate. The package is installed, or register.cmd of the zip was run.
#include <windows.h>

#include <cstdio>
#include <string>

#include "ZuDBFFunctions.h"
#include "Zuengine.h"

namespace {

/// Owns a COM pointer.
template <class T>
class Owned {
public:
    Owned() = default;
    ~Owned() {
        if (pointer_) pointer_->Release();
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;

    T** put() { return &pointer_; }
    T* get() const { return pointer_; }
    T* operator->() const { return pointer_; }
    explicit operator bool() const { return pointer_ != nullptr; }

private:
    T* pointer_ = nullptr;
};

/// Owns a text.
class Text {
public:
    Text() = default;
    explicit Text(const std::wstring& text)
        : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    ~Text() { SysFreeString(text_); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    BSTR* put() { return &text_; }
    BSTR get() const { return text_; }
    const wchar_t* shown() const { return text_ ? text_ : L""; }

private:
    BSTR text_ = nullptr;
};

/// A value of its own, released with it.
class Value {
public:
    Value() { VariantInit(&value_); }
    explicit Value(const std::wstring& text) : Value() {
        value_.vt = VT_BSTR;
        value_.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    ~Value() { VariantClear(&value_); }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;

    VARIANT* get() { return &value_; }

private:
    VARIANT value_;
};

/// The text of a field of the current record.
std::wstring FieldText(ZuDataView* view, const wchar_t* name) {
    Value index{name};
    Owned<ZuDataField> field;
    Text text;
    if (FAILED(view->get_Item(*index.get(), field.put())) || !field) return L"";
    field->get_Text(text.put());
    return text.shown();
}

int Report(const std::wstring& folder) {
    Owned<_Functions> functions;
    if (FAILED(CoCreateInstance(__uuidof(Functions), nullptr, CLSCTX_INPROC_SERVER, __uuidof(_Functions),
                                reinterpret_cast<void**>(functions.put())))) {
        std::fputs("The functions are not registered.\n", stderr);
        return 1;
    }

    Value orders{folder + L">orders"};
    Value fields{L"ID,GOODS,AMOUNT"};
    Text condition{L"NOT PAID AND AMOUNT > 9900"};
    Owned<ZuDataView> view;
    functions->DbfSelect(*orders.get(), condition.get(), fields.get(), 0, view.put());
    if (!view) {
        // Functions fail by failure values; the engine of this thread knows why.
        Owned<ZuProject> engine;
        Text reason;
        CoCreateInstance(__uuidof(Project), nullptr, CLSCTX_INPROC_SERVER, __uuidof(ZuProject),
                         reinterpret_cast<void**>(engine.put()));
        if (engine) engine->get_LastError(reason.put());
        std::fprintf(stderr, "%ls\n", reason.shown());
        return 1;
    }

    LONG count = 0;
    view->get_RecordCount(0, &count);
    std::printf("%ld orders\n", static_cast<long>(count));
    VARIANT_BOOL end = VARIANT_FALSE;
    while (SUCCEEDED(view->get_Eof(0, &end)) && end == VARIANT_FALSE) {
        std::printf("%8ls  %-20ls %10ls\n", FieldText(view.get(), L"ID").c_str(),
                    FieldText(view.get(), L"GOODS").c_str(), FieldText(view.get(), L"AMOUNT").c_str());
        view->MoveNext(-1);
    }
    return 0;
}

}  // namespace

int wmain(int argumentCount, wchar_t** arguments) {
    if (argumentCount != 2) {
        std::fputs("report FOLDER\n", stderr);
        return 64;
    }
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
    const int code = Report(arguments[1]);
    CoUninitialize();
    return code;
}
