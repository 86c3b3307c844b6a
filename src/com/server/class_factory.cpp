#include "com/server/class_factory.h"

#include <atomic>

#include "com/server/error_report.h"
#include "com/server/module.h"

namespace kwo::com {

namespace {

/// A class object. Several threads may use it, so its count is atomic.
class ClassObject final : public IClassFactory {
public:
    explicit ClassObject(const ClassEntry& entry) : mEntry(entry) {}

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (id != IID_IUnknown && id != IID_IClassFactory) return E_NOINTERFACE;
        *object = static_cast<IClassFactory*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++mReferences; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --mReferences;
        if (left == 0) delete this;
        return left;
    }

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
    std::atomic<ULONG> mReferences = 1;
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
        auto* const made = new (std::nothrow) kwo::com::ClassObject(entry);
        if (made == nullptr) return E_OUTOFMEMORY;
        const HRESULT result = made->QueryInterface(id, object);
        made->Release();
        return result;
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    return Module::Instance().CanUnload() ? S_OK : S_FALSE;
}
