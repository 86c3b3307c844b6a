#include "com/server/class_info.h"

#include <mutex>
#include <utility>

#include "com/server/module.h"
#include "com_support/module_path.h"
#include "platform/component_error.h"
#include "platform/windows/lock.h"

namespace kwo::com {

namespace {

/// Guards all tables and the list of classes that have one: several apartments may create their first objects at once.
constinit platform::windows::Lock gLock;
constinit ClassInfo* gFirstWithTable = nullptr;

/// Reads it from the DLL itself, so that it works unregistered and never reads another version.
HRESULT LoadOwnTypeLib(ITypeLib** library) {
    return ::LoadTypeLibEx(com_support::ModulePath(ThisModule()).c_str(), REGKIND_NONE, library);
}

}  // namespace

const DispatchTable& ClassInfo::Table() {
    const std::lock_guard guard(gLock);
    if (mTable == nullptr) {
        ComPtr<ITypeLib> library;
        ComPtr<ITypeInfo> info;
        HRESULT result = LoadOwnTypeLib(library.Out());
        if (SUCCEEDED(result)) result = library->GetTypeInfoOfGuid(interfaceId, info.Out());
        if (FAILED(result)) platform::Raise(result, name, u"The type library of the component cannot be read");
        mTable = new DispatchTable(std::move(info), mMembers);
        mNextWithTable = std::exchange(gFirstWithTable, this);
    }
    return *mTable;
}

void ClassInfo::ForgetTables() noexcept {
    while (gFirstWithTable != nullptr) {
        ClassInfo& last = *std::exchange(gFirstWithTable, gFirstWithTable->mNextWithTable);
        delete std::exchange(last.mTable, nullptr);
    }
}

HRESULT ClassInfo::CoClass(ITypeInfo** info) const noexcept {
    *info = nullptr;
    try {
        ComPtr<ITypeLib> library;
        const HRESULT result = LoadOwnTypeLib(library.Out());
        return FAILED(result) ? result : library->GetTypeInfoOfGuid(classId, info);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace kwo::com
