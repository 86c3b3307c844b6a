#pragma once

#include <windows.h>
#include <oleauto.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "com/server/com_values.h"
#include "com/server/member_list.h"

namespace kwo::com {

/// What the type library says about one argument.
struct Parameter {
    VARTYPE type = VT_EMPTY;  ///< the automation type, VT_DISPATCH for every interface, VT_ARRAY | the elements' type
    bool byReference = false;
    bool optional = false;  ///< left out, a variant is missing and anything else 0, the one default there is
    bool handle = false;
    bool anyInterface = true;  ///< an object is passed as it comes, without being asked for an interface
    IID interfaceId = IID_IDispatch;
};

/// One accessor or method.
struct DispatchMember {
    DISPID id = DISPID_UNKNOWN;
    WORD kind = 0;  ///< one of the DISPATCH_ flags
    MemberThunk thunk{};
    std::vector<Parameter> parameters;  ///< without the result
    std::vector<Text> parameterNames;   ///< the same, case-folded
    VARTYPE resultType = VT_EMPTY;      ///< VT_EMPTY when there is none
    std::uint8_t requiredCount = 0;     ///< parameters that are not optional
};

/// Names, ids and arguments of a dual interface, from its type information. Created once for each class and then only
/// read.
class DispatchTable {
public:
    static constexpr std::size_t kMostArguments = 16;

    /// `members` lists the members of the interface in the order of its virtual table. Raises ComponentError if the two
    /// do not match.
    DispatchTable(ComPtr<ITypeInfo> dispatchInfo, std::span<const MemberThunk> members);

    /// The type information that callers may ask for. The caller gets no reference of its own.
    ITypeInfo* TypeInfo() const { return mTypeInfo.Get(); }

    /// IDispatch::GetIDsOfNames: the ids of a member and of its arguments, by their names.
    HRESULT IdsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const noexcept;
    /// The member with this id and kind of access; null if there is none.
    const DispatchMember* Find(DISPID id, WORD flags) const noexcept;

private:
    struct Name {
        Text folded;
        DISPID id;
    };

    void AddMember(ITypeInfo* virtualInfo, UINT index, const MemberThunk& thunk);
    const Name* FindName(const OLECHAR* name) const noexcept;

    ComPtr<ITypeInfo> mTypeInfo;
    std::vector<DispatchMember> mMembers;  ///< by id, accessors of one property in the order get, put, putref
    std::vector<DISPID> mIds;              ///< of mMembers, close together for the search
    std::vector<Name> mNames;              ///< by folded name
};

inline const DispatchMember* DispatchTable::Find(DISPID id, WORD flags) const noexcept {
    auto place = static_cast<std::size_t>(std::ranges::lower_bound(mIds, id) - mIds.begin());
    const DispatchMember* other = nullptr;
    for (; place < mIds.size() && mIds[place] == id; ++place) {
        const DispatchMember* const at = &mMembers[place];
        if ((at->kind & flags) != 0) return at;
        // Some script languages send an assignment of a value where a reference is meant, and the other way round.
        constexpr WORD kPuts = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
        if ((at->kind & kPuts) != 0 && (flags & kPuts) != 0) other = at;
    }
    return other;
}

}  // namespace kwo::com
