#pragma once

// The base of every automation object of the project. (Declaration of intent; see the class comments.)
//
//   class ZuDbRef final : public com::DualObject<ZuDbRef, _ZuDbRef> { ... };
//   ComPtr<ZuDbRef> object = com::MakeObject<ZuDbRef>(constructor arguments...);
//
// com::DualObject<Self, Primary, Others...>
//   - IUnknown with a reference count that starts at 1; QueryInterface answers IUnknown, IDispatch (= Primary),
//     Primary, Others..., ISupportErrorInfo, IProvideClassInfo where the class has a CLSID;
//     `virtual HRESULT QueryMore(REFIID, void**)` lets a class answer further interfaces;
//   - IDispatch through com::Dispatcher (lenient normalisation, see Dispatcher.h) over Primary and Others from
//     the type library of the module;
//   - counts itself in com::Module::objects(), so that DllCanUnloadNow tells the truth.
