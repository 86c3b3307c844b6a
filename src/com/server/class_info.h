#pragma once

#include <windows.h>

#include <span>

#include "com/server/dispatch_table.h"
#include "com/server/member_list.h"

namespace kwo::com {

/// What all objects of one class share. There is one static object for each class, initialised before any code runs.
class ClassInfo {
public:
    /// All of these must live as long as the program. `members` stand in the order of the interface.
    constexpr ClassInfo(const CLSID& ofClass, const IID& ofInterface, const IID* ofSource, TextView className,
                        std::span<const MemberThunk> members)
        : classId(ofClass), interfaceId(ofInterface), sourceId(ofSource), name(className), mMembers(members) {}

    const CLSID& classId;
    const IID& interfaceId;
    const IID* const sourceId;  ///< the event interface, null when the class has none
    const TextView name;

    /// The table of members; read from the type library at the first call. Raises ComponentError if the type library
    /// does not describe the class.
    const DispatchTable& Table();
    /// The type information of the class itself.
    HRESULT CoClass(ITypeInfo** info) const noexcept;

    /// Frees the tables of all classes. No object may exist any more.
    static void ForgetTables() noexcept;

private:
    std::span<const MemberThunk> mMembers;
    DispatchTable* mTable = nullptr;
    ClassInfo* mNextWithTable = nullptr;
};

}  // namespace kwo::com
