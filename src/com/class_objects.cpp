#include "com/class_objects.h"

#include <array>
#include <atomic>

#include "com/module.h"

namespace kwo::com {

namespace {

const std::array kClasses = {
    RegistryClass(),   UtilityClass(),   SplitterVClass(), PicBtnClass(),        SysParamsClass(),     SysTrayClass(),
    SysMetricsClass(), MonthViewClass(), TimerClass(),     TimerCallbackClass(), AlarmCallbackClass(),
};

/// A class object. COM may hand it from thread to thread, so its count is guarded.
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
        return outer != nullptr ? CLASS_E_NOAGGREGATION : mEntry.make(id, object);
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
    const ClassEntry& mEntry;
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
    for (const ClassEntry& entry : kwo::com::kClasses) {
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

extern "C" BOOL WINAPI DllMain(HINSTANCE handle, DWORD reason, void* processEnds) {
    switch (reason) {
        case DLL_PROCESS_ATTACH:
            Module::Instance().Attach(handle);
            break;
        case DLL_THREAD_DETACH:
            Module::Instance().ThreadEnded();
            break;
        case DLL_PROCESS_DETACH:
            // When the process ends its other threads are gone already, whatever they held.
            if (processEnds == nullptr) Module::Instance().Detach();
            break;
        default:
            break;
    }
    return TRUE;
}
