#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "com/server/com_values.h"
#include "com/server/member_list.h"

namespace kwo::com {

/// What the type library says about one argument.
struct Parameter {
    /// The automation type, VT_DISPATCH for every interface, VT_ARRAY | the elements' type.
    VARTYPE type = VT_EMPTY;
    /// The member may write into it.
    bool byReference = false;
    /// If it is left out, a variant is missing and anything else is 0, the one default there is.
    bool optional = false;
    /// It is a handle or a colour of the system, see MemberThunk.
    bool handle = false;
    /// An object is passed as it comes, without being asked for an interface.
    bool anyInterface = true;
    /// The interface that an object is asked for otherwise.
    IID interfaceId = IID_IDispatch;
};

/// One accessor or method.
struct DispatchMember {
    DISPID id = DISPID_UNKNOWN;
    /// One of the DISPATCH_ flags.
    WORD kind = 0;
    MemberThunk thunk{};
    /// In the order of the interface, without the result.
    std::vector<Parameter> parameters;
    /// The same, case-folded.
    std::vector<Text> parameterNames;
    /// VT_EMPTY if there is none.
    VARTYPE resultType = VT_EMPTY;
    /// How many must be there: up to the last one that is not optional.
    std::uint8_t requiredCount = 0;
};

/// Names, ids and arguments of a dual interface, from its type information.
/// Created once for each class and then only read, by all threads.
///
///     const DispatchMember* const member = table.Find(id, DISPATCH_METHOD);
///     if (member == nullptr) return DISP_E_MEMBERNOTFOUND;
class DispatchTable {
public:
    /// The most arguments of a member, its result included.
    static constexpr std::size_t kMostArguments = 16;

    /// `members` lists the members of the interface in the order of its virtual table.
    /// Raises ComponentError if the two do not match in number, or a member in the number of its arguments.
    DispatchTable(ComPtr<ITypeInfo> dispatchInfo, std::span<const MemberThunk> members);
    DispatchTable(const DispatchTable&) = delete;
    DispatchTable& operator=(const DispatchTable&) = delete;

    /// The type information that callers may ask for. The caller gets no reference of its own.
    ITypeInfo* TypeInfo() const { return mTypeInfo.Get(); }

    /// IDispatch::GetIDsOfNames: the ids of a member and of its arguments, by their names.
    /// The id of an argument is its place, from 0.
    /// DISP_E_UNKNOWNNAME if a name is unknown; its id is then DISPID_UNKNOWN. A name of more than 64 characters is
    /// unknown. Upper and lower case of A to Z are the same.
    HRESULT IdsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const noexcept;
    /// The member with this id and kind of access; null if there is none.
    /// `flags` may name several kinds.
    /// An assignment finds the other kind of assignment if its own is not there. Valid as long as the table.
    const DispatchMember* Find(DISPID id, WORD flags) const noexcept;

private:
    struct Name {
        Text folded;
        DISPID id;
    };

    /// Reads one member. Raises ComponentError if it does not match `thunk`.
    void AddMember(ITypeInfo* virtualInfo, UINT index, const MemberThunk& thunk);
    /// Fills mSlots. mMembers must not change any more.
    void IndexIds();
    /// The slot of an id, or the empty one where it would be.
    std::size_t SlotOf(DISPID id) const noexcept;
    /// Null if no member has that name.
    const Name* FindName(const OLECHAR* name) const noexcept;

    /// The dispatch interface, as clients see it.
    ComPtr<ITypeInfo> mTypeInfo;
    std::vector<DispatchMember> mMembers;  ///< by id, accessors of one property in the order get, put, putref
    std::vector<Name> mNames;              ///< by folded name
    /// A hash table of the ids: each leads to the first member that has it. A slot that is taken passes the id on to
    /// the next one. At least half of the slots are empty.
    std::vector<const DispatchMember*> mSlots;
    int mSlotShift = 0;  ///< leaves as many bits as a slot's number has
};

inline std::size_t DispatchTable::SlotOf(DISPID id) const noexcept {
    // The golden ratio spreads ids that lie at equal distances.
    constexpr std::uint32_t kSpread = 0x9E3779B9;
    std::size_t slot = static_cast<std::uint32_t>(id) * kSpread >> mSlotShift;
    while (mSlots[slot] != nullptr && mSlots[slot]->id != id)
        slot = (slot + 1) & (mSlots.size() - 1);
    return slot;
}

inline const DispatchMember* DispatchTable::Find(DISPID id, WORD flags) const noexcept {
    const DispatchMember* at = mSlots[SlotOf(id)];
    if (at == nullptr) return nullptr;
    const DispatchMember* const end = mMembers.data() + mMembers.size();
    const DispatchMember* other = nullptr;
    for (; at != end && at->id == id; ++at) {
        if ((at->kind & flags) != 0) return at;
        // Some script languages send an assignment of a value where a reference is meant, and the other way round.
        constexpr WORD kPuts = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
        if ((at->kind & kPuts) != 0 && (flags & kPuts) != 0) other = at;
    }
    return other;
}

}  // namespace kwo::com
