#include "typed_form.h"

namespace kwo::com_test {
namespace {

/// The type of a parameter and what it points to, for as long as the description is made.
class Described {
public:
    Described(const Parameter& parameter, ITypeLib& standard, ICreateTypeInfo& creator)
        : mTypes(static_cast<std::size_t>(parameter.pointers) + 1) {
        mTypes[0].vt = parameter.type;
        if (parameter.name != nullptr) mTypes[0].hreftype = Reference(parameter.name, standard, creator);
        for (std::size_t at = 1; at < mTypes.size(); ++at) {
            mTypes[at].vt = VT_PTR;
            mTypes[at].lptdesc = &mTypes[at - 1];
        }
        mElement.tdesc = mTypes.back();
        mElement.paramdesc.wParamFlags = PARAMFLAG_FIN;
        if (parameter.isWritten) mElement.paramdesc.wParamFlags |= PARAMFLAG_FOUT;
    }
    const ELEMDESC& Element() const { return mElement; }

private:
    static HREFTYPE Reference(std::wstring name, ITypeLib& standard, ICreateTypeInfo& creator) {
        ComPtr<ITypeInfo> found;
        MEMBERID member = MEMBERID_NIL;
        USHORT count = 1;
        HREFTYPE reference = 0;
        EXPECT_EQ(standard.FindName(name.data(), 0, found.Out(), &member, &count), S_OK);
        EXPECT_EQ(creator.AddRefTypeInfo(found.Get(), &reference), S_OK);
        return reference;
    }

    std::vector<TYPEDESC> mTypes;
    ELEMDESC mElement = {};
};

}  // namespace

ComPtr<ITypeInfo> DescribeMethod(const std::wstring& name, const std::vector<Parameter>& parameters) {
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

    std::vector<Described> described;
    described.reserve(parameters.size());  // they point into themselves
    std::vector<ELEMDESC> elements;
    for (const Parameter& parameter : parameters) {
        described.emplace_back(parameter, *standard.Get(), *creator.Get());
        elements.push_back(described.back().Element());
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
