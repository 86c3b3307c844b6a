#include "event_source.h"

#include <olectl.h>

namespace kwohost {

namespace {

constexpr int kDefaultSource = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;

/// The attributes of a type, given back to it at the end.
class Attributes {
public:
    explicit Attributes(ITypeInfo* type) : mType(type) { Check(type->GetTypeAttr(&mAttributes)); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    ~Attributes() { mType->ReleaseTypeAttr(mAttributes); }
    const TYPEATTR* operator->() const { return mAttributes; }

private:
    ITypeInfo* mType;
    TYPEATTR* mAttributes = nullptr;
};

ComPtr<ITypeInfo> DefaultSourceOf(ITypeInfo* classInfo) {
    const Attributes attributes(classInfo);
    for (UINT i = 0; i < attributes->cImplTypes; ++i) {
        int flags = 0;
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> type;
        Check(classInfo->GetImplTypeFlags(i, &flags));
        if ((flags & kDefaultSource) != kDefaultSource) continue;
        Check(classInfo->GetRefTypeOfImplType(i, &reference));
        Check(classInfo->GetRefTypeInfo(reference, type.Receive()));
        return type;
    }
    return nullptr;
}

ComPtr<ITypeInfo> TypeInTheLibraryOf(ITypeInfo* classInfo, REFIID id) {
    ComPtr<ITypeLib> library;
    ComPtr<ITypeInfo> type;
    UINT index = 0;
    if (SUCCEEDED(classInfo->GetContainingTypeLib(library.Receive(), &index)))
        library->GetTypeInfoOfGuid(id, type.Receive());
    return type;
}

std::map<DISPID, std::wstring> NamesOf(ITypeInfo* type) {
    std::map<DISPID, std::wstring> names;
    const Attributes attributes(type);
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        // If one member cannot be described, the others must still work.
        if (FAILED(type->GetFuncDesc(i, &function))) continue;
        const MEMBERID id = function->memid;
        type->ReleaseFuncDesc(function);
        Bstr name;
        if (SUCCEEDED(type->GetDocumentation(id, name.Receive(), nullptr, nullptr, nullptr))) names[id] = name.View();
    }
    return names;
}

}  // namespace

std::optional<EventInterface> FindEventInterface(IUnknown* object) {
    ComPtr<IProvideClassInfo> provider;
    ComPtr<IProvideClassInfo2> namedProvider;
    ComPtr<ITypeInfo> classInfo;
    if (FAILED(object->QueryInterface(IID_PPV_ARGS(provider.Receive()))) ||
        FAILED(provider->GetClassInfo(classInfo.Receive())))
        return std::nullopt;

    EventInterface events;
    ComPtr<ITypeInfo> type = DefaultSourceOf(classInfo.Get());
    if (type) events.id = Attributes(type.Get())->guid;
    IID stated = IID_NULL;
    if (SUCCEEDED(object->QueryInterface(IID_PPV_ARGS(namedProvider.Receive()))) &&
        SUCCEEDED(namedProvider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &stated)) && stated != events.id) {
        events.id = stated;
        type = TypeInTheLibraryOf(classInfo.Get(), stated);
    }
    if (!type) return std::nullopt;
    events.names = NamesOf(type.Get());
    return events;
}

}  // namespace kwohost
