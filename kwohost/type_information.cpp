#include "type_information.h"

namespace kwohost {

namespace {

HRESULT AddFunction(ICreateTypeInfo* type, UINT index, const DescribedMember& member, INVOKEKIND kind) {
    ELEMDESC value = {};
    value.tdesc.vt = VT_VARIANT;
    FUNCDESC function = {};
    function.memid = member.id;
    function.funckind = FUNC_DISPATCH;
    function.invkind = kind;
    function.callconv = CC_STDCALL;
    function.elemdescFunc.tdesc.vt = kind == INVOKE_PROPERTYPUT ? VT_VOID : VT_VARIANT;
    if (kind == INVOKE_PROPERTYPUT) {
        function.cParams = 1;
        function.lprgelemdescParam = &value;
    }
    const HRESULT added = type->AddFuncDesc(index, &function);
    if (FAILED(added)) return added;
    LPOLESTR names[] = {const_cast<LPOLESTR>(member.name)};
    return type->SetFuncAndParamNames(index, names, 1);
}

}  // namespace

ComPtr<ITypeInfo> MakeTypeInformation(const wchar_t* name, const std::vector<DescribedMember>& members) {
    // The library lives in memory alone: it is never saved under this name.
    ComPtr<ICreateTypeLib2> library;
    ComPtr<ICreateTypeInfo> type;
    ComPtr<ITypeInfo> made;
    if (FAILED(CreateTypeLib2(sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32, L"kwohost.tlb", library.Out())) ||
        FAILED(library->CreateTypeInfo(const_cast<LPOLESTR>(name), TKIND_DISPATCH, type.Out())))
        return nullptr;
    UINT index = 0;
    for (const DescribedMember& member : members) {
        if (FAILED(AddFunction(type.Get(), index++, member, member.isMethod ? INVOKE_FUNC : INVOKE_PROPERTYGET)))
            return nullptr;
        if (member.isAssignable && FAILED(AddFunction(type.Get(), index++, member, INVOKE_PROPERTYPUT))) return nullptr;
    }
    if (FAILED(type->LayOut()) || FAILED(type->QueryInterface(IID_PPV_ARGS(made.Out())))) return nullptr;
    return made;
}

}  // namespace kwohost
