#include "classes.h"

#include "com_support/bstr.h"
#include "com_support/com_ptr.h"
#include "com_support/type_description.h"

namespace kwo::invoke_fuzz {

namespace {

using com_support::Bstr;
using com_support::ComPtr;
using com_support::FunctionDescription;
using com_support::TypeAttributes;

/// The type of an argument on the stack.
VARTYPE StackType(ITypeInfo& info, const TYPEDESC& type) {
    if (type.vt == VT_PTR) {
        const VARTYPE inner = StackType(info, *type.lptdesc);
        const bool isInterface = type.lptdesc->vt == VT_USERDEFINED && inner == VT_UNKNOWN;
        return isInterface ? inner : static_cast<VARTYPE>(VT_BYREF | inner);
    }
    if (type.vt != VT_USERDEFINED) return type.vt;
    ComPtr<ITypeInfo> referred;
    if (FAILED(info.GetRefTypeInfo(type.hreftype, referred.Out()))) return VT_EMPTY;
    const TypeAttributes attributes(*referred);
    if (attributes->typekind == TKIND_ALIAS) return StackType(*referred, attributes->tdescAlias);
    return attributes->typekind == TKIND_ENUM ? VARTYPE{VT_I4} : VARTYPE{VT_UNKNOWN};
}

Member Described(ITypeInfo& info, UINT index) {
    constexpr UINT kMostNames = 20;
    Member member;
    const FunctionDescription function(info, index);
    BSTR names[kMostNames] = {};
    UINT count = 0;
    info.GetNames(function->memid, names, kMostNames, &count);
    for (UINT at = 0; at < count; ++at) {
        const Bstr name = Bstr::Adopt(names[at]);
        if (at == 0) {
            member.name = name.Text();
        } else {
            member.parameters.push_back(name.Text());
        }
    }
    member.id = function->memid;
    member.kind = static_cast<WORD>(function->invkind);
    member.arguments = static_cast<UINT>(function->cParams);
    return member;
}

/// Adds what early-bound calls need, from the interface behind the dispatch view.
void DescribeStack(ITypeInfo& dispatchInfo, std::vector<Member>& members) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> info;
    if (FAILED(dispatchInfo.GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) ||
        FAILED(dispatchInfo.GetRefTypeInfo(reference, info.Out()))) {
        return;
    }
    const TypeAttributes attributes(*info);
    for (UINT index = 0; index < attributes->cFuncs; ++index) {
        const FunctionDescription function(*info, index);
        for (Member& member : members) {
            if (member.id != function->memid || member.kind != static_cast<WORD>(function->invkind)) continue;
            member.offset = function->oVft;
            for (SHORT at = 0; at < function->cParams; ++at) {
                const ELEMDESC& parameter = function->lprgelemdescParam[at];
                member.stack.push_back(StackType(*info, parameter.tdesc));
                member.mayBeLeftOut.push_back((parameter.paramdesc.wParamFlags & PARAMFLAG_FOPT) != 0);
                member.hasResult = (parameter.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0;
            }
        }
    }
}

void ReadInterface(ITypeInfo& coclass, UINT index, ClassDescription& described) {
    int flags = 0;
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> info;
    if (FAILED(coclass.GetImplTypeFlags(index, &flags)) || FAILED(coclass.GetRefTypeOfImplType(index, &reference)) ||
        FAILED(coclass.GetRefTypeInfo(reference, info.Out())) || (flags & IMPLTYPEFLAG_FDEFAULT) == 0) {
        return;
    }
    const TypeAttributes attributes(*info);
    if ((flags & IMPLTYPEFLAG_FSOURCE) != 0) {
        described.sourceId = attributes->guid;
        return;
    }
    described.interfaceId = attributes->guid;
    constexpr UINT kOfDispatch = 7;
    for (UINT function = kOfDispatch; function < attributes->cFuncs; ++function)
        described.members.push_back(Described(*info, function));
    DescribeStack(*info, described.members);
}

}  // namespace

std::vector<ClassDescription> ReadClasses(const std::wstring& dllPath) {
    std::vector<ClassDescription> classes;
    ComPtr<ITypeLib> library;
    if (FAILED(LoadTypeLibEx(dllPath.c_str(), REGKIND_NONE, library.Out()))) return classes;
    for (UINT index = 0; index < library->GetTypeInfoCount(); ++index) {
        ComPtr<ITypeInfo> info;
        if (FAILED(library->GetTypeInfo(index, info.Out()))) continue;
        const TypeAttributes attributes(*info);
        if (attributes->typekind != TKIND_COCLASS || (attributes->wTypeFlags & TYPEFLAG_FCANCREATE) == 0) continue;
        ClassDescription described;
        Bstr name;
        info->GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr);
        described.name = name.Text();
        described.id = attributes->guid;
        for (UINT at = 0; at < attributes->cImplTypes; ++at)
            ReadInterface(*info, at, described);
        classes.push_back(described);
    }
    return classes;
}

}  // namespace kwo::invoke_fuzz
