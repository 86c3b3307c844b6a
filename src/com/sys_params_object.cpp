#include "com/class_objects.h"
#include "com/component_object.h"
#include "com/host_objects.h"
#include "kwoutil.h"
#include "sysinfo/sys_params.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kSysParamsMembers[] = {
    Member<&_KWOSysParams::get_CaptionFont>, Member<&_KWOSysParams::get_SmCaptionFont>,
    Member<&_KWOSysParams::get_MenuFont>,    Member<&_KWOSysParams::get_StatusFont>,
    Member<&_KWOSysParams::get_MessageFont>,
};

ClassInfo& SysParamsInfo() {
    static constinit ClassInfo info(CLSID_KWOSysParams, IID__KWOSysParams, nullptr, u"KWOSysParams", kSysParamsMembers);
    return info;
}

class SysParamsObject final : public ComponentObject<_KWOSysParams> {
public:
    SysParamsObject() : ComponentObject(SysParamsInfo()), mParams(Component()) {}

    STDMETHODIMP get_CaptionFont(IFontDisp** font) override {
        return Font(u".CaptionFont (Get)", font, [&] { return mParams.CaptionFont(); });
    }
    STDMETHODIMP get_SmCaptionFont(IFontDisp** font) override {
        return Font(u".SmCaptionFont (Get)", font, [&] { return mParams.SmCaptionFont(); });
    }
    STDMETHODIMP get_MenuFont(IFontDisp** font) override {
        return Font(u".MenuFont (Get)", font, [&] { return mParams.MenuFont(); });
    }
    STDMETHODIMP get_StatusFont(IFontDisp** font) override {
        return Font(u".StatusFont (Get)", font, [&] { return mParams.StatusFont(); });
    }
    STDMETHODIMP get_MessageFont(IFontDisp** font) override {
        return Font(u".MessageFont (Get)", font, [&] { return mParams.MessageFont(); });
    }

private:
    template <class Property>
    HRESULT Font(const char16_t* member, IFontDisp** font, Property&& property) {
        return Run(member, [&] {
            IFontDisp*& answer = Required(font);
            answer = nullptr;
            answer = NewReference<IFontDisp>(property());
        });
    }

    sysinfo::KWOSysParams mParams;
};

}  // namespace

ClassEntry SysParamsClass() {
    return {CLSID_KWOSysParams, u"KWOSysParams", &Make<SysParamsObject>};
}

}  // namespace kwo::com
