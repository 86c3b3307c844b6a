#include "typed_form.h"

namespace kwo::com_test {
namespace {

/// What a parameter points to, for as long as the description is made.
struct Described {
    TYPEDESC target = {};
    ELEMDESC element = {};
};

}  // namespace

ComPtr<ITypeInfo> DescribeMethod(const std::wstring& name, const std::vector<VARTYPE>& parameters) {
    ComPtr<ITypeLib> standard;
    ComPtr<ITypeInfo> dispatch;
    ComPtr<ICreateTypeLib2> library;
    ComPtr<ICreateTypeInfo> creator;
    std::wstring typeName = L"IForm";
    const SYSKIND system = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
    HREFTYPE base = 0;
    EXPECT_EQ(LoadRegTypeLib(IID_StdOle, 2, 0, 0, standard.Out()), S_OK);
    EXPECT_EQ(standard->GetTypeInfoOfGuid(IID_IDispatch, dispatch.Out()), S_OK);
    EXPECT_EQ(CreateTypeLib2(system, L"unsaved.tlb", library.Out()), S_OK);
    EXPECT_EQ(library->CreateTypeInfo(typeName.data(), TKIND_INTERFACE, creator.Out()), S_OK);
    EXPECT_EQ(creator->AddRefTypeInfo(dispatch.Get(), &base), S_OK);
    EXPECT_EQ(creator->AddImplType(0, base), S_OK);
    EXPECT_EQ(creator->SetTypeFlags(TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FDISPATCHABLE), S_OK);

    std::vector<Described> described(parameters.size());
    std::vector<ELEMDESC> elements;
    for (std::size_t at = 0; at < parameters.size(); ++at) {
        Described& parameter = described[at];
        parameter.target.vt = static_cast<VARTYPE>(parameters[at] & ~VT_BYREF);
        parameter.element.tdesc = parameter.target;
        parameter.element.paramdesc.wParamFlags = PARAMFLAG_FIN;
        if ((parameters[at] & VT_BYREF) != 0) {
            parameter.element.tdesc.vt = VT_PTR;
            parameter.element.tdesc.lptdesc = &parameter.target;
            parameter.element.paramdesc.wParamFlags |= PARAMFLAG_FOUT;
        }
        elements.push_back(parameter.element);
    }
    FUNCDESC function = {};
    function.memid = 1;
    function.funckind = FUNC_PUREVIRTUAL;
    function.invkind = INVOKE_FUNC;
    function.callconv = CC_STDCALL;
    function.cParams = static_cast<SHORT>(elements.size());
    function.lprgelemdescParam = elements.data();
    function.elemdescFunc.tdesc.vt = VT_HRESULT;
    EXPECT_EQ(creator->AddFuncDesc(0, &function), S_OK);
    std::vector<std::wstring> texts = {name};
    for (std::size_t at = 0; at < parameters.size(); ++at)
        texts.push_back(L"p" + std::to_wstring(at));
    std::vector<LPOLESTR> names;
    for (std::wstring& text : texts)
        names.push_back(text.data());
    EXPECT_EQ(creator->SetFuncAndParamNames(0, names.data(), static_cast<UINT>(names.size())), S_OK);
    EXPECT_EQ(creator->LayOut(), S_OK);
    return As<ITypeInfo>(creator.Get(), IID_ITypeInfo);
}

}  // namespace kwo::com_test
