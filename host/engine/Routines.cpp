#include "host/engine/Routines.h"

#include <dispex.h>

#include <array>
#include <vector>

#include "com/Bstr.h"
#include "com/ComError.h"

namespace zu::host {
namespace {

/// What script engines answer for an error that they have told their site about already.
constexpr HRESULT kReportedToSite = static_cast<HRESULT>(0x80020101);

bool HoldsValues(SAFEARRAY* array) noexcept {
    VARTYPE type = VT_EMPTY;
    return array->cDims == 1 && ((array->fFeatures & FADF_VARIANT) != 0 ||
                                 (SUCCEEDED(SafeArrayGetVartype(array, &type)) && type == VT_VARIANT));
}

/// Gives access to the elements of an array for as long as it lives. The array's own structure is read, as it
/// is public: five calls to the automation library for each record would be a good part of a job.
class ArrayElements {
public:
    explicit ArrayElements(SAFEARRAY* array) : array_(array) {
        if (!array_) return;
        if (!HoldsValues(array_))
            throw com::ComError(com::kTypeMismatch, L"The arguments of a routine must be an array of values");
        const SAFEARRAYBOUND& bound = array_->rgsabound[0];
        // An upper bound of -1 means no arguments, also for an array that has an element numbered -1.
        if (bound.cElements == 0 || bound.lLbound + static_cast<LONG>(bound.cElements) <= 0) return;
        com::Check(SafeArrayLock(array_));  // the routine must not be able to take the elements away
        elements_ = static_cast<VARIANT*>(array_->pvData);
        count_ = bound.cElements;
    }
    ArrayElements(const ArrayElements&) = delete;
    ArrayElements& operator=(const ArrayElements&) = delete;
    ~ArrayElements() {
        if (elements_) SafeArrayUnlock(array_);
    }

    std::size_t count() const noexcept { return count_; }
    VARIANT& operator[](std::size_t index) const noexcept { return elements_[index]; }

private:
    SAFEARRAY* array_;
    VARIANT* elements_ = nullptr;
    std::size_t count_ = 0;
};

/// The arguments of one call, last first, each a reference so that the routine may write to it.
class CallArguments {
public:
    explicit CallArguments(const ArrayElements& elements) {
        const std::size_t count = elements.count();
        VARIANTARG* first = few_.data();
        if (count > few_.size()) {
            many_.resize(count);
            first = many_.data();
        }
        for (std::size_t i = 0; i < count; ++i) {
            VARIANTARG& argument = first[count - 1 - i];
            VARIANT& element = elements[i];
            if (element.vt & VT_BYREF) {
                argument = element;
            } else {
                argument.vt = VT_BYREF | VT_VARIANT;
                argument.pvarVal = &element;
            }
        }
        parameters_.rgvarg = count ? first : nullptr;
        parameters_.cArgs = static_cast<UINT>(count);
    }
    CallArguments(const CallArguments&) = delete;
    CallArguments& operator=(const CallArguments&) = delete;

    DISPPARAMS* parameters() noexcept { return &parameters_; }

private:
    std::array<VARIANTARG, 10> few_;  // set as far as there are arguments
    std::vector<VARIANTARG> many_;
    DISPPARAMS parameters_{};
};

/// The dispatch id of a method, DISPID_UNKNOWN when there is none.
DISPID FindMethod(IDispatch* object, std::wstring_view name) {
    std::wstring copy(name);
    LPOLESTR text = copy.data();
    DISPID id = DISPID_UNKNOWN;
    if (SUCCEEDED(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_INVARIANT, &id))) return id;
    // Objects of classes that a script defines may know their members by this interface only.
    const auto extended = com::Share(object).tryAs<IDispatchEx>();
    const com::Bstr wanted(name);
    if (!extended || FAILED(extended->GetDispID(wanted.get(), fdexNameCaseInsensitive, &id)))
        return DISPID_UNKNOWN;
    return id;
}

[[noreturn]] void ThrowRaised(HRESULT result, EXCEPINFO& raised, std::wstring_view name) {
    if (result == DISP_E_EXCEPTION && raised.pfnDeferredFillIn) raised.pfnDeferredFillIn(&raised);
    const com::Bstr source = com::Bstr::Adopt(raised.bstrSource);
    const com::Bstr description = com::Bstr::Adopt(raised.bstrDescription);
    SysFreeString(raised.bstrHelpFile);
    if (result == DISP_E_EXCEPTION) {
        // wCode is the old, short form of an error number.
        HRESULT code = raised.scode;
        if (SUCCEEDED(code)) code = raised.wCode ? static_cast<HRESULT>(0x800A0000 | raised.wCode) : E_FAIL;
        throw com::ComError(code, description.str(), source.str());
    }
    const std::wstring routine = L"Routine " + std::wstring(name);
    if (result == kReportedToSite) throw com::ComError(result, routine + L" raised an error");
    if (result == DISP_E_BADPARAMCOUNT || result == E_FAIL)
        throw com::ComError(result,
                            routine + L" could not be called: it may take another number of arguments");
    throw com::ComError(result, routine + L" could not be called");
}

}  // namespace

void Routines::SetHolder(IDispatch* holder) noexcept {
    com::ComPtr<IDispatch> old = com::Share(holder);
    old.swap(holder_);
    lastName_.clear();
    com::ComPtr<IDispatch>().swap(lastObject_);
}

DISPID Routines::Resolve(IDispatch* object, std::wstring_view name) {
    if (object == lastObject_.get() && name == lastName_) return lastId_;
    const DISPID id = FindMethod(object, name);
    if (id == DISPID_UNKNOWN)
        throw com::ComError(DISP_E_UNKNOWNNAME,
                            L"The script has no routine named \"" + std::wstring(name) + L"\"");
    lastName_ = name;
    lastObject_ = com::Share(object);
    lastId_ = id;
    return id;
}

bool Routines::Has(std::wstring_view name) {
    return holder_ && !name.empty() && FindMethod(holder_.get(), name) != DISPID_UNKNOWN;
}

com::ComPtr<IDispatch> Routines::Find(std::wstring_view name) {
    if (name.empty())
        throw com::ComError(DISP_E_UNKNOWNNAME,
                            L"The name of the routine to call for each record is missing");
    if (!holder_)
        throw com::ComError(DISP_E_UNKNOWNNAME,
                            L"Routine \"" + std::wstring(name) +
                                L"\" cannot be called: no object with routines was handed to "
                                L"the engine (RoutineHolder)");
    com::ComPtr<IDispatch> holder = holder_;
    Resolve(holder.get(), name);
    return holder;
}

com::Variant Routines::Call(IDispatch* routine, std::wstring_view name, SAFEARRAY* arguments) {
    // The routine may hand in another holder, or none, while it runs: `routine` is the caller's to keep.
    const DISPID id = Resolve(com::Required(routine), name);
    const ArrayElements elements(arguments);
    CallArguments call(elements);
    com::Variant answer;
    EXCEPINFO raised{};
    const HRESULT result = routine->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                           call.parameters(), answer.put(), &raised, nullptr);
    if (FAILED(result)) ThrowRaised(result, raised, name);
    return answer;
}

}  // namespace zu::host
