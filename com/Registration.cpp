#include "com/Registration.h"

#include "com/RegistryKey.h"
#include "com/TypeLibrary.h"

// Windows has them since Vista; the headers at hand do not declare them.
extern "C" {
HRESULT WINAPI RegisterTypeLibForUser(ITypeLib*, OLECHAR*, OLECHAR*);
HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID, WORD, WORD, LCID, SYSKIND);
}

namespace zu::com {
namespace {

const std::wstring kClassesPath = L"Software\\Classes\\";
constexpr const wchar_t* kVersion = L"1.0";
constexpr const wchar_t* kVersionSuffix = L".1";

HKEY RootOf(Scope scope) noexcept {
    return scope == Scope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

std::wstring TextOfGuid(REFGUID id) {
    wchar_t text[40] = {};
    StringFromGUID2(id, text, 40);
    return text;
}

/// What a type library says about itself.
struct LibraryIdentity {
    explicit LibraryIdentity(ITypeLib& library) {
        TLIBATTR* attributes = nullptr;
        Check(library.GetLibAttr(&attributes));
        id = attributes->guid;
        major = attributes->wMajorVerNum;
        minor = attributes->wMinorVerNum;
        locale = attributes->lcid;
        system = attributes->syskind;
        library.ReleaseTLibAttr(attributes);
    }
    GUID id{};
    WORD major = 0;
    WORD minor = 0;
    LCID locale = 0;
    SYSKIND system = SYS_WIN32;
};

/// True when the name leads to this class, or to none.
bool NameIsOurs(HKEY root, const std::wstring& name, const std::wstring& classId) {
    const RegistryKey key = RegistryKey::Open(root, kClassesPath + name + L"\\CLSID");
    if (!key) return true;
    return _wcsicmp(key.Text({}).c_str(), classId.c_str()) == 0;
}

}  // namespace

Registration::Registration(const Server& server) : server_(server), path_(Module::Path()) {}

bool Registration::MayWriteMachine() noexcept {
    return static_cast<bool>(
        RegistryKey::Open(HKEY_LOCAL_MACHINE, L"Software\\Classes", KEY_READ | KEY_WRITE));
}

void Registration::RegisterClass(HKEY root, const ClassEntry& entry) const {
    const std::wstring id = TextOfGuid(entry.id);
    const std::wstring name = entry.progId;
    const std::wstring versioned = name + kVersionSuffix;

    RegistryKey::Create(root, kClassesPath + versioned).Set({}, entry.description);
    RegistryKey::Create(root, kClassesPath + versioned + L"\\CLSID").Set({}, id);
    RegistryKey::Create(root, kClassesPath + name).Set({}, entry.description);
    RegistryKey::Create(root, kClassesPath + name + L"\\CLSID").Set({}, id);
    RegistryKey::Create(root, kClassesPath + name + L"\\CurVer").Set({}, versioned);

    const std::wstring classPath = kClassesPath + L"CLSID\\" + id;
    RegistryKey::Create(root, classPath).Set({}, entry.description);
    const RegistryKey file = RegistryKey::Create(root, classPath + L"\\InprocServer32");
    file.Set({}, path_);
    file.Set(L"ThreadingModel", L"Apartment");
    RegistryKey::Create(root, classPath + L"\\ProgID").Set({}, versioned);
    RegistryKey::Create(root, classPath + L"\\VersionIndependentProgID").Set({}, name);
    RegistryKey::Create(root, classPath + L"\\Version").Set({}, kVersion);

    // The library that describes the class, which need not be the first one of the file.
    ComPtr<ITypeLib> library;
    UINT index = 0;
    Check(TypeLibrary::Find(entry.id)->GetContainingTypeLib(library.put(), &index));
    RegistryKey::Create(root, classPath + L"\\TypeLib").Set({}, TextOfGuid(LibraryIdentity(*library).id));
}

void Registration::RegisterTypeLibrary(unsigned number, Scope scope) const {
    const ComPtr<ITypeLib> library = TypeLibrary::Load(number);
    // The first library is found under the plain file name, further ones under their resource number.
    std::wstring place = number == 1 ? path_ : path_ + L'\\' + std::to_wstring(number);
    std::wstring folder = path_.substr(0, path_.find_last_of(L"\\/"));
    Check(scope == Scope::Machine ? RegisterTypeLib(library.get(), place.data(), folder.data())
                                  : RegisterTypeLibForUser(library.get(), place.data(), folder.data()));
}

void Registration::UnregisterTypeLibrary(unsigned number, Scope scope) const {
    const ComPtr<ITypeLib> library = TypeLibrary::Load(number);
    const LibraryIdentity identity(*library);
    // A library that is not registered (any more) is reported by several codes; nothing is left to do for
    // any.
    if (scope == Scope::Machine) {
        UnRegisterTypeLib(identity.id, identity.major, identity.minor, identity.locale, identity.system);
    } else {
        UnRegisterTypeLibForUser(identity.id, identity.major, identity.minor, identity.locale,
                                 identity.system);
    }
}

void Registration::Register(Scope scope) const {
    for (unsigned number = 1; number <= server_.typeLibraries; ++number)
        RegisterTypeLibrary(number, scope);
    for (const ClassEntry& entry : server_.classes)
        RegisterClass(RootOf(scope), entry);
}

void Registration::Unregister(Scope scope) const {
    const HKEY root = RootOf(scope);
    for (const ClassEntry& entry : server_.classes) {
        const std::wstring id = TextOfGuid(entry.id);
        const std::wstring plain = entry.progId;
        const std::wstring versioned = plain + kVersionSuffix;
        for (const std::wstring* name : {&versioned, &plain}) {
            if (!NameIsOurs(root, *name, id)) continue;
            std::wstring path = kClassesPath;
            path += *name;
            RegistryKey::Remove(root, path);
        }
        RegistryKey::Remove(root, kClassesPath + L"CLSID\\" + id);
    }
    for (unsigned number = 1; number <= server_.typeLibraries; ++number)
        UnregisterTypeLibrary(number, scope);
}

}  // namespace zu::com
