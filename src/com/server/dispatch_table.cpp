#include "com/server/dispatch_table.h"

#include <algorithm>
#include <array>
#include <bit>
#include <iterator>

#include "com_support/type_description.h"
#include "platform/component_error.h"

namespace kwo::com {

namespace {

using com_support::TypeAttributes;

/// The longest name of a member or argument. Longer names are unknown.
constexpr std::size_t kLongestName = 64;

void Check(HRESULT result, TextView what) {
    if (FAILED(result)) platform::Raise(result, {}, what);
}

constexpr OLECHAR Fold(OLECHAR c) {
    return c >= L'a' && c <= L'z' ? static_cast<OLECHAR>(c - L'a' + L'A') : c;
}

Text FoldedName(const Bstr& name) {
    Text folded = ToText(name.Get());
    std::ranges::transform(folded, folded.begin(), [](char16_t c) { return static_cast<char16_t>(Fold(c)); });
    return folded;
}

/// A name that a caller asks for, case-folded in a buffer; empty if no member can have it.
class AskedName {
public:
    explicit AskedName(const OLECHAR* name) {
        if (name == nullptr) return;
        for (; *name != 0; ++name) {
            if (mLength == kLongestName) {
                mLength = 0;
                return;
            }
            mFolded[mLength++] = static_cast<char16_t>(Fold(*name));
        }
    }
    TextView Folded() const { return {mFolded, mLength}; }

private:
    char16_t mFolded[kLongestName];
    std::size_t mLength = 0;
};

/// The name of a member and those of its arguments.
using Names = std::array<Bstr, DispatchTable::kMostArguments + 1>;

Names NamesOf(ITypeInfo& info, MEMBERID id) {
    BSTR raw[DispatchTable::kMostArguments + 1] = {};
    UINT count = 0;
    const HRESULT read = info.GetNames(id, raw, static_cast<UINT>(std::size(raw)), &count);
    Names names;
    std::ranges::transform(raw, names.begin(), &Bstr::Adopt);
    Check(read, u"The names of a member cannot be read");
    return names;
}

void DescribeUserType(ITypeInfo* info, HREFTYPE reference, Parameter& parameter) {
    ComPtr<ITypeInfo> referred;
    Check(info->GetRefTypeInfo(reference, referred.Out()), u"A type of an argument cannot be found");
    const TypeAttributes attributes(*referred);
    Check(attributes.Status(), u"A type of an argument cannot be read");
    switch (attributes->typekind) {
        case TKIND_ENUM:
            parameter.type = VT_I4;
            return;
        case TKIND_ALIAS:
            // The system's own library names its font and picture objects by aliases of interfaces.
            parameter.type = attributes->tdescAlias.vt;
            if (parameter.type == VT_USERDEFINED) {
                DescribeUserType(referred.Get(), attributes->tdescAlias.hreftype, parameter);
            }
            return;
        default:
            parameter.type = VT_DISPATCH;
            parameter.interfaceId = attributes->guid;
            parameter.anyInterface = parameter.interfaceId == IID_IDispatch;
            return;
    }
}

/// Removes the pointers from an argument's type. The innermost pointer to an interface is the interface itself; any
/// further one, and any pointer to a value, means by reference.
Parameter Describe(ITypeInfo* info, const TYPEDESC& outer) {
    Parameter parameter;
    int pointers = 0;
    const TYPEDESC* type = &outer;
    for (; type->vt == VT_PTR; type = type->lptdesc)
        ++pointers;
    if (type->vt == VT_USERDEFINED) {
        DescribeUserType(info, type->hreftype, parameter);
        if (parameter.type == VT_DISPATCH) --pointers;
    } else if (type->vt == VT_SAFEARRAY) {
        parameter.type = static_cast<VARTYPE>(VT_ARRAY | type->lptdesc->vt);
    } else {
        parameter.type = type->vt;
    }
    parameter.byReference = pointers > 0;
    return parameter;
}

}  // namespace

DispatchTable::DispatchTable(ComPtr<ITypeInfo> dispatchInfo, std::span<const MemberThunk> members)
    : mTypeInfo(std::move(dispatchInfo)) {
    constexpr UINT kVirtualTable = static_cast<UINT>(-1);
    HREFTYPE reference = 0;
    Check(mTypeInfo->GetRefTypeOfImplType(kVirtualTable, &reference), u"An interface is not dual");
    ComPtr<ITypeInfo> virtualInfo;
    Check(mTypeInfo->GetRefTypeInfo(reference, virtualInfo.Out()), u"An interface has no virtual table");
    const TypeAttributes attributes(*virtualInfo);
    Check(attributes.Status(), u"An interface cannot be read");
    if (attributes->cFuncs != members.size()) Check(TYPE_E_ELEMENTNOTFOUND, u"The type library has other members");

    mMembers.reserve(members.size());
    for (UINT index = 0; index < members.size(); ++index)
        AddMember(virtualInfo.Get(), index, members[index]);
    std::ranges::sort(mMembers, {}, [](const DispatchMember& member) { return std::pair(member.id, member.kind); });
    IndexIds();
    std::ranges::sort(mNames, {}, &Name::folded);
}

void DispatchTable::AddMember(ITypeInfo* virtualInfo, UINT index, const MemberThunk& thunk) {
    const com_support::FunctionDescription function(*virtualInfo, index);
    Check(function.Status(), u"A member cannot be read");
    const auto count = static_cast<std::size_t>(function->cParams);
    if (count != thunk.argumentCount || count > kMostArguments) {
        Check(TYPE_E_ELEMENTNOTFOUND, u"A member has other arguments in the type library");
    }
    const Names names = NamesOf(*virtualInfo, function->memid);

    DispatchMember member;
    member.id = function->memid;
    member.kind = static_cast<WORD>(function->invkind);
    member.thunk = thunk;
    for (std::size_t at = 0; at < count; ++at) {
        const ELEMDESC& element = function->lprgelemdescParam[at];
        Parameter parameter = Describe(virtualInfo, element.tdesc);
        if ((element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0) {
            member.resultType = parameter.type;
            continue;
        }
        parameter.optional = (element.paramdesc.wParamFlags & (PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT)) != 0;
        parameter.handle = (thunk.handleArguments >> at & 1) != 0;
        if (!parameter.optional) member.requiredCount = static_cast<std::uint8_t>(at + 1);
        member.parameters.push_back(parameter);
        member.parameterNames.push_back(FoldedName(names[at + 1]));
    }
    Text name = FoldedName(names[0]);
    const bool known = std::ranges::any_of(mNames, [&](const Name& other) { return other.folded == name; });
    if (!known) mNames.push_back({std::move(name), member.id});
    mMembers.push_back(std::move(member));
}

void DispatchTable::IndexIds() {
    constexpr int kIdBits = 32;
    const auto slotBits = static_cast<int>(std::bit_width(2 * mMembers.size() + 1));
    mSlotShift = kIdBits - slotBits;
    mSlots.resize(std::size_t{1} << slotBits);
    for (const DispatchMember& member : mMembers) {
        const DispatchMember*& first = mSlots[SlotOf(member.id)];
        if (first == nullptr) first = &member;
    }
}

HRESULT DispatchTable::IdsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const noexcept {
    if (names == nullptr || ids == nullptr) return E_POINTER;
    if (count == 0) return E_INVALIDARG;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const Name* const found = FindName(names[0]);
    if (found == nullptr) return DISP_E_UNKNOWNNAME;
    ids[0] = found->id;

    HRESULT result = S_OK;
    for (UINT at = 1; at < count; ++at) {
        const AskedName asked(names[at]);
        for (const DispatchMember& member : mMembers) {
            if (member.id != found->id) continue;
            const auto argument =
                std::ranges::find(member.parameterNames, asked.Folded(), [](const Text& n) { return TextView(n); });
            if (argument == member.parameterNames.end() || asked.Folded().empty()) continue;
            ids[at] = static_cast<DISPID>(argument - member.parameterNames.begin());
            break;
        }
        if (ids[at] == DISPID_UNKNOWN) result = DISP_E_UNKNOWNNAME;
    }
    return result;
}

const DispatchTable::Name* DispatchTable::FindName(const OLECHAR* name) const noexcept {
    const AskedName asked(name);
    const auto found =
        std::ranges::lower_bound(mNames, asked.Folded(), {}, [](const Name& n) { return TextView(n.folded); });
    return found != mNames.end() && found->folded == asked.Folded() ? &*found : nullptr;
}

}  // namespace kwo::com
