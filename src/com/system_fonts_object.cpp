#include "com/class_objects.h"
#include "com/component_object.h"
#include "kwoutil.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kMembers[] = {
    Member<&_KWOSysParams::get_CaptionFont>, Member<&_KWOSysParams::get_SmCaptionFont>,
    Member<&_KWOSysParams::get_MenuFont>,    Member<&_KWOSysParams::get_StatusFont>,
    Member<&_KWOSysParams::get_MessageFont>,
};

ClassInfo& Info() {
    static ClassInfo info(CLSID_KWOSysParams, IID__KWOSysParams, nullptr, u"KWOSysParams", kMembers);
    return info;
}

class SystemFontsObject final : public ComponentObject<_KWOSysParams> {
public:
    SystemFontsObject() : ComponentObject(Info()) { Component().SetProgramName(); }

    STDMETHODIMP get_CaptionFont(IFontDisp**) override { return NotBuilt(u".CaptionFont (Get)"); }
    STDMETHODIMP get_SmCaptionFont(IFontDisp**) override { return NotBuilt(u".SmCaptionFont (Get)"); }
    STDMETHODIMP get_MenuFont(IFontDisp**) override { return NotBuilt(u".MenuFont (Get)"); }
    STDMETHODIMP get_StatusFont(IFontDisp**) override { return NotBuilt(u".StatusFont (Get)"); }
    STDMETHODIMP get_MessageFont(IFontDisp**) override { return NotBuilt(u".MessageFont (Get)"); }

private:
    HRESULT NotBuilt(TextView member) {
        return Run(member, [] { RaiseNotBuilt(); });
    }
};

}  // namespace

ClassEntry SysParamsClass() {
    return {CLSID_KWOSysParams, &Make<SystemFontsObject>};
}

}  // namespace kwo::com
