#include "type_library_dump.h"

#include <algorithm>

#include "dll_under_test.h"

namespace kwo::com_test {
namespace {

std::string TypeText(ITypeInfo* info, const TYPEDESC& type);

std::string ReferencedName(ITypeInfo* info, HREFTYPE reference, TYPEKIND& kind) {
    ComPtr<ITypeInfo> target;
    if (FAILED(info->GetRefTypeInfo(reference, target.Out()))) return "<unresolved>";
    const TypeAttributes attributes(*target);
    kind = attributes->typekind;
    if (kind == TKIND_ALIAS) return TypeText(target.Get(), attributes->tdescAlias);
    std::string name = NameOf(target.Get());
    if (kind == TKIND_ENUM) return name;
    // An object is named by its class, whichever of the class and its default interface the library refers to.
    if (name == "IFontDisp" || name == "StdFont") return "Font";
    if (name == "IPictureDisp" || name == "StdPicture") return "Picture";
    return name.starts_with("_") ? name.substr(1) : name;
}

std::string TypeText(ITypeInfo* info, const TYPEDESC& type) {
    switch (type.vt) {
        case VT_I2:
            return "Integer";
        case VT_I4:
            return "Long";
        case VT_R4:
            return "Single";
        case VT_R8:
            return "Double";
        case VT_DATE:
            return "Date";
        case VT_BSTR:
            return "String";
        case VT_BOOL:
            return "Boolean";
        case VT_VARIANT:
            return "Variant";
        case VT_DISPATCH:
            return "Object";
        case VT_UNKNOWN:
            return "Unknown";
        case VT_VOID:
            return "nothing";
        case VT_HRESULT:
            return "HRESULT";
        case VT_USERDEFINED: {
            TYPEKIND kind = TKIND_ALIAS;
            const std::string name = ReferencedName(info, type.hreftype, kind);
            return kind == TKIND_ENUM || kind == TKIND_ALIAS ? name : name + " itself";
        }
        case VT_PTR: {
            const std::string target = TypeText(info, *type.lptdesc);
            constexpr std::string_view kItself = " itself";
            if (target.ends_with(kItself)) return target.substr(0, target.size() - kItself.size());
            return "ref " + target;
        }
        default:
            return "type " + std::to_string(type.vt);
    }
}

std::string ValueText(const VARIANT& value) {
    Var text;
    if (FAILED(VariantChangeType(&text, const_cast<VARIANT*>(&value), 0, VT_BSTR)))
        return std::string("<type ").append(std::to_string(value.vt)).append(">");
    return Narrow(text.Text());
}

/// The direction is part of the type here: "ref" is in and out, anything else is said in brackets.
std::string ParameterText(ITypeInfo* info, const ELEMDESC& parameter) {
    const USHORT flags = parameter.paramdesc.wParamFlags;
    const std::string type = TypeText(info, parameter.tdesc);
    const USHORT direction = flags & (PARAMFLAG_FIN | PARAMFLAG_FOUT);
    const bool byReference = type.starts_with("ref ");
    std::string text;
    if ((flags & PARAMFLAG_FOPT) != 0) text += "opt ";
    if (byReference && direction != (PARAMFLAG_FIN | PARAMFLAG_FOUT)) {
        text += direction == PARAMFLAG_FOUT ? "[out] " : "[in] ";
    }
    if (!byReference && direction != PARAMFLAG_FIN)
        text.append("[direction ").append(std::to_string(direction)).append("] ");
    text += type;
    if ((flags & PARAMFLAG_FHASDEFAULT) != 0 && parameter.paramdesc.pparamdescex != nullptr) {
        text += " = " + ValueText(parameter.paramdesc.pparamdescex->varDefaultValue);
    }
    return text;
}

std::string KindText(const FUNCDESC& function) {
    std::string kind;
    if ((function.wFuncFlags & FUNCFLAG_FHIDDEN) != 0) kind += "hidden ";
    if ((function.wFuncFlags & FUNCFLAG_FRESTRICTED) != 0) kind += "restricted ";
    switch (function.invkind) {
        case INVOKE_FUNC:
            return kind + "method";
        case INVOKE_PROPERTYGET:
            return kind + "get";
        case INVOKE_PROPERTYPUT:
            return kind + "let";
        case INVOKE_PROPERTYPUTREF:
            return kind + "set";
        default:
            return kind + "unknown";
    }
}

std::string HelpText(ITypeInfo* info, MEMBERID id) {
    Bstr help;
    info->GetDocumentation(id, nullptr, help.Out(), nullptr, nullptr);
    return help.Get() != nullptr && *help.Get() != L'\0' ? " \"" + Narrow(help.Text()) + '"' : "";
}

std::string FunctionLine(ITypeInfo* info, UINT index, const char* kind) {
    const Function function(info, index);
    const std::vector<std::string> names = function.Names();
    std::string arguments;
    for (UINT i = 0; i < function.ArgumentCount(); ++i) {
        if (i > 0) arguments += ", ";
        const std::string name = i + 1 < names.size() ? names[i + 1] : "<unnamed>";
        arguments += name + ": " + ParameterText(info, function->lprgelemdescParam[i]);
    }
    std::string signature = "(" + arguments + ")";
    const ELEMDESC* last = function->cParams > 0 ? &function->lprgelemdescParam[function->cParams - 1] : nullptr;
    if (function.IsPut()) signature += " = " + ParameterText(info, *last);
    if (function.HasResult()) {
        const std::string type = TypeText(info, last->tdesc);
        signature += ": " + (type.starts_with("ref ") ? type.substr(4) : type + " not by reference");
    }
    char id[16];
    std::snprintf(id, sizeof id, "0x%08X", static_cast<unsigned>(function->memid));
    const std::string kindText = kind != nullptr ? kind : KindText(*function.operator->());
    return std::string(id) + ' ' + kindText + ' ' + (names.empty() ? "<unnamed>" : names[0]) + signature +
           HelpText(info, function->memid);
}

}  // namespace

bool Function::HasResult() const {
    if ((*this)->cParams == 0) return false;
    const USHORT flags = (*this)->lprgelemdescParam[(*this)->cParams - 1].paramdesc.wParamFlags;
    return (flags & PARAMFLAG_FRETVAL) != 0;
}

UINT Function::ArgumentCount() const {
    return static_cast<UINT>((*this)->cParams) - (HasResult() ? 1u : 0u) - (IsPut() ? 1u : 0u);
}

std::vector<std::string> Function::Names() const {
    BSTR raw[32] = {};
    UINT count = 0;
    mInfo->GetNames((*this)->memid, raw, 32, &count);
    std::vector<std::string> names;
    for (UINT i = 0; i < count; ++i) {
        names.push_back(Narrow(Bstr::Adopt(raw[i]).Text()));
    }
    return names;
}

ComPtr<ITypeLib> TypeLibraryOfTheDll() {
    ComPtr<ITypeLib> library;
    LoadTypeLibEx(DllPath().c_str(), REGKIND_NONE, library.Out());
    return library;
}

std::string NameOf(ITypeInfo* info) {
    Bstr name;
    info->GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr);
    return Narrow(name.Text());
}

ComPtr<ITypeInfo> TypeInfoOf(ITypeLib* library, const std::wstring& name) {
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        if (SUCCEEDED(library->GetTypeInfo(i, info.Out())) && NameOf(info.Get()) == Narrow(name)) return info;
    }
    return {};
}

ComPtr<ITypeInfo> SlotView(ITypeInfo* dispatchInfo) {
    HREFTYPE partner = 0;
    ComPtr<ITypeInfo> slots;
    if (SUCCEEDED(dispatchInfo->GetRefTypeOfImplType(static_cast<UINT>(-1), &partner))) {
        dispatchInfo->GetRefTypeInfo(partner, slots.Out());
    }
    return slots;
}

std::vector<std::string> DumpInterface(ITypeInfo* dispatchInfo) {
    const ComPtr<ITypeInfo> slots = SlotView(dispatchInfo);
    if (!slots) return {"<no slots>"};
    const TypeAttributes attributes(*slots);
    std::vector<std::pair<SHORT, std::string>> rows;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        const Function function(slots.Get(), i);
        std::string line = FunctionLine(slots.Get(), i, nullptr);
        if (TypeText(slots.Get(), function->elemdescFunc.tdesc) != "HRESULT") line += " answers no HRESULT";
        rows.emplace_back(function->oVft, line);
    }
    std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> lines;
    for (const auto& [slot, line] : rows)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> DumpEvents(ITypeInfo* dispatchInfo) {
    const TypeAttributes attributes(*dispatchInfo);
    std::vector<std::string> lines;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        const Function function(dispatchInfo, i);
        // The members of IUnknown and IDispatch, where the library repeats them.
        if ((function->wFuncFlags & FUNCFLAG_FRESTRICTED) != 0) continue;
        lines.push_back(FunctionLine(dispatchInfo, i, "event"));
    }
    return lines;
}

std::vector<std::string> DumpEnumeration(ITypeInfo* info) {
    const TypeAttributes attributes(*info);
    std::vector<std::string> lines;
    for (UINT i = 0; i < attributes->cVars; ++i) {
        const com_support::VariableDescription variable(*info, i);
        if (!variable) continue;
        Bstr name;
        info->GetDocumentation(variable->memid, name.Out(), nullptr, nullptr, nullptr);
        lines.push_back(Narrow(name.Text()) + " = " + ValueText(*variable->lpvarValue));
    }
    return lines;
}

std::string DumpClass(ITypeInfo* info) {
    const TypeAttributes attributes(*info);
    std::string line = NameOf(info);
    if ((attributes->wTypeFlags & TYPEFLAG_FCANCREATE) != 0) line += " creatable";
    for (UINT i = 0; i < attributes->cImplTypes; ++i) {
        INT flags = 0;
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> implemented;
        info->GetImplTypeFlags(i, &flags);
        if (FAILED(info->GetRefTypeOfImplType(i, &reference)) ||
            FAILED(info->GetRefTypeInfo(reference, implemented.Out()))) {
            continue;
        }
        if ((flags & IMPLTYPEFLAG_FDEFAULT) != 0) line += " default";
        if ((flags & IMPLTYPEFLAG_FSOURCE) != 0) line += " source";
        line += ' ' + NameOf(implemented.Get());
    }
    return line;
}

}  // namespace kwo::com_test
