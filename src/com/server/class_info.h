#pragma once

#include <windows.h>

#include <span>

#include "com/server/dispatch_table.h"
#include "com/server/member_list.h"

namespace kwo::com {

/// What is the same for all objects of one class. One static object per class, ready before anything runs.
class ClassInfo {
public:
    constexpr ClassInfo(const CLSID& ofClass, const IID& ofInterface, const IID* ofSource, TextView className,
                        std::span<const MemberThunk> members)
        : classId(ofClass), interfaceId(ofInterface), sourceId(ofSource), name(className), mMembers(members) {}

    const CLSID& classId;
    const IID& interfaceId;
    const IID* const sourceId;  ///< the event interface, null when the class has none
    const TextView name;

    /// Made at the first object. Raises ComponentError when the type library does not describe the class.
    const DispatchTable& Table();
    /// The class itself as the type library describes it.
    HRESULT CoClass(ITypeInfo** info) const noexcept;

    /// Lets the tables of all classes go. No object is left.
    static void ForgetTables() noexcept;

private:
    std::span<const MemberThunk> mMembers;
    DispatchTable* mTable = nullptr;
    ClassInfo* mNextWithTable = nullptr;
};

}  // namespace kwo::com
