#include "event_source.h"

#include <olectl.h>

#include "com_support/type_description.h"

namespace kwohost {

namespace {

using kwo::com_support::TypeAttributes;

constexpr int kDefaultSource = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;

/// Those of a type that must have them.
class Attributes : public TypeAttributes {
public:
    explicit Attributes(ITypeInfo* type) : TypeAttributes(*type) { Check(Status()); }
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
        Check(classInfo->GetRefTypeInfo(reference, type.Out()));
        return type;
    }
    return nullptr;
}

ComPtr<ITypeInfo> TypeInTheLibraryOf(ITypeInfo* classInfo, REFIID id) {
    ComPtr<ITypeLib> library;
    ComPtr<ITypeInfo> type;
    UINT index = 0;
    if (SUCCEEDED(classInfo->GetContainingTypeLib(library.Out(), &index))) library->GetTypeInfoOfGuid(id, type.Out());
    return type;
}

std::map<DISPID, std::wstring> NamesOf(ITypeInfo* type) {
    std::map<DISPID, std::wstring> names;
    const Attributes attributes(type);
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        const kwo::com_support::FunctionDescription function(*type, i);
        // If one member cannot be described, the others must still work.
        if (!function) continue;
        const MEMBERID id = function->memid;
        Bstr name;
        if (SUCCEEDED(type->GetDocumentation(id, name.Out(), nullptr, nullptr, nullptr))) names[id] = name.View();
    }
    return names;
}

}  // namespace

std::optional<EventInterface> FindEventInterface(IUnknown* object) {
    ComPtr<IProvideClassInfo> provider;
    ComPtr<IProvideClassInfo2> namedProvider;
    ComPtr<ITypeInfo> classInfo;
    if (FAILED(object->QueryInterface(IID_PPV_ARGS(provider.Out()))) || FAILED(provider->GetClassInfo(classInfo.Out())))
        return std::nullopt;

    EventInterface events;
    ComPtr<ITypeInfo> type = DefaultSourceOf(classInfo.Get());
    if (type) events.id = Attributes(type.Get())->guid;
    IID stated = IID_NULL;
    if (SUCCEEDED(object->QueryInterface(IID_PPV_ARGS(namedProvider.Out()))) &&
        SUCCEEDED(namedProvider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &stated)) && stated != events.id) {
        events.id = stated;
        type = TypeInTheLibraryOf(classInfo.Get(), stated);
    }
    if (!type) return std::nullopt;
    events.names = NamesOf(type.Get());
    return events;
}

}  // namespace kwohost
