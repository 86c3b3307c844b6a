#pragma once

#include <windows.h>

#include <span>

#include "com/server/dispatch_table.h"
#include "com/server/member_list.h"

namespace kwo::com {

/// What all objects of one class share.
/// There is one static object for each class, initialised before any code runs.
///
///     static constinit ClassInfo info(CLSID_KWOPicBtn, IID__KWOPicBtn, nullptr, u"KWOPicBtn", kMembers);
///
/// Objects of several apartments share it; Table may be called on any thread.
class ClassInfo {
public:
    /// All of these must live as long as the program.
    /// `members` stand in the order of the interface.
    /// Reads nothing yet.
    constexpr ClassInfo(const CLSID& ofClass, const IID& ofInterface, const IID* ofSource, TextView className,
                        std::span<const MemberThunk> members)
        : classId(ofClass), interfaceId(ofInterface), sourceId(ofSource), name(className), mMembers(members) {}

    const CLSID& classId;
    const IID& interfaceId;
    /// The event interface; null if the class has none.
    const IID* const sourceId;
    /// Without the library: "KWOTimer".
    const TextView name;

    /// The table of members, read from the type library inside the DLL at the first call.
    /// Valid until ForgetTables.
    /// Raises ComponentError if the type library cannot be read or does not describe the class; the next call tries
    /// again.
    const DispatchTable& Table();
    /// The type information of the class itself, with a reference for the caller.
    /// Fails if the type library cannot be read. `info` must not be null.
    HRESULT CoClass(ITypeInfo** info) const noexcept;

    /// Frees the tables of all classes, at the end of the module. No object may exist any more.
    static void ForgetTables() noexcept;

private:
    std::span<const MemberThunk> mMembers;
    DispatchTable* mTable = nullptr;
    /// The list of the classes whose tables must be freed.
    ClassInfo* mNextWithTable = nullptr;
};

}  // namespace kwo::com
