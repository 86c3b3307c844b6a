#include "com/server/class_factory.h"

#include <atomic>

#include "com/server/error_report.h"
#include "com/server/module.h"
#include "com_support/com_object.h"

namespace kwo::com {

namespace {

/// A class object. Several threads may use it, so its count is atomic.
class ClassObject final : public com_support::ComObject<IClassFactory, std::atomic<ULONG>> {
public:
    explicit ClassObject(const ClassEntry& entry) : mEntry(entry) {}

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (outer != nullptr) return CLASS_E_NOAGGREGATION;
        HRESULT result = S_OK;
        const HRESULT made = Guarded(
            [this] {
                return MemberName{mEntry.name, {}, &IID_IClassFactory};
            },
            [&] { result = mEntry.make(id, object); });
        return FAILED(made) ? made : result;
    }
    STDMETHODIMP LockServer(BOOL lock) override {
        if (lock) {
            Module::Instance().Lock();
        } else {
            Module::Instance().Unlock();
        }
        return S_OK;
    }

private:
    const ClassEntry mEntry;
    ModuleLock mModuleLock;
};

}  // namespace

}  // namespace kwo::com

using kwo::com::ClassEntry;
using kwo::com::Module;

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    for (const kwo::com::ClassSource entryOf : kwo::com::Classes()) {
        const ClassEntry entry = entryOf();
        if (entry.classId != classId) continue;
        using kwo::com::ClassObject;
        const auto made = kwo::com_support::ComPtr<ClassObject>::Adopt(new (std::nothrow) ClassObject(entry));
        if (!made) return E_OUTOFMEMORY;
        return made->QueryInterface(id, object);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    return Module::Instance().CanUnload() ? S_OK : S_FALSE;
}
