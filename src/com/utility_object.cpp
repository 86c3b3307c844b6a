#include "com/class_objects.h"
#include "com/component_object.h"
#include "kwoutil.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kMembers[] = {
    Member<&_KWOUtility::KWO_FindInPath>,
    Member<&_KWOUtility::KWO_CenterForm>,
    Member<&_KWOUtility::KWO_SetFormPosition>,
    Member<&_KWOUtility::KWO_LoadApp>,
    Member<&_KWOUtility::KWO_Pause>,
    Member<&_KWOUtility::KWO_SystemDir>,
    Member<&_KWOUtility::KWO_WindowsDir>,
    Member<&_KWOUtility::get_KWO_IsWin32>,
    Member<&_KWOUtility::get_KWO_IsWinNT>,
    Member<&_KWOUtility::get_KWO_WinMajorVersion>,
    Member<&_KWOUtility::get_KWO_WinMinorVersion>,
};

ClassInfo& Info() {
    static ClassInfo info(CLSID_KWOUtility, IID__KWOUtility, nullptr, u"KWOUtility", kMembers);
    return info;
}

class UtilityObject final : public ComponentObject<_KWOUtility> {
public:
    UtilityObject() : ComponentObject(Info()) { Component().SetProgramName(); }

    STDMETHODIMP KWO_FindInPath(BSTR*, BSTR*) override { return NotBuilt(u".KWO_FindInPath"); }
    STDMETHODIMP KWO_CenterForm(IDispatch**, VARIANT*) override { return NotBuilt(u".KWO_CenterForm"); }
    STDMETHODIMP KWO_SetFormPosition(IDispatch**, VARIANT*, VARIANT*, VARIANT*, VARIANT*, VARIANT*, VARIANT*) override {
        return NotBuilt(u".KWO_SetFormPosition");
    }
    STDMETHODIMP KWO_LoadApp(BSTR*, BSTR*, BSTR*, short*, BSTR*, LONG*) override { return NotBuilt(u".KWO_LoadApp"); }
    STDMETHODIMP KWO_Pause(short*) override { return NotBuilt(u".KWO_Pause"); }
    STDMETHODIMP KWO_SystemDir(VARIANT*, BSTR*) override { return NotBuilt(u".KWO_SystemDir"); }
    STDMETHODIMP KWO_WindowsDir(VARIANT*, BSTR*) override { return NotBuilt(u".KWO_WindowsDir"); }
    STDMETHODIMP get_KWO_IsWin32(VARIANT_BOOL*) override { return NotBuilt(u".KWO_IsWin32 (Get)"); }
    STDMETHODIMP get_KWO_IsWinNT(VARIANT_BOOL*) override { return NotBuilt(u".KWO_IsWinNT (Get)"); }
    STDMETHODIMP get_KWO_WinMajorVersion(short*) override { return NotBuilt(u".KWO_WinMajorVersion (Get)"); }
    STDMETHODIMP get_KWO_WinMinorVersion(short*) override { return NotBuilt(u".KWO_WinMinorVersion (Get)"); }

private:
    HRESULT NotBuilt(TextView member) {
        return Run(member, [] { RaiseNotBuilt(); });
    }
};

}  // namespace

ClassEntry UtilityClass() {
    return {CLSID_KWOUtility, &Make<UtilityObject>};
}

}  // namespace kwo::com
