#include "com/class_objects.h"
#include "com/component_object.h"
#include "com/host_objects.h"
#include "com/server/com_values.h"
#include "kwoutil.h"
#include "tray/sys_tray.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kSysTrayMembers[] = {
    Member<&_KWOSysTray::Create, 1>,
    Member<&_KWOSysTray::Destroy>,
    Member<&_KWOSysTray::get_Tip>,
    Member<&_KWOSysTray::put_Tip>,
    Member<&_KWOSysTray::get_Icon>,
    Member<&_KWOSysTray::putref_Icon>,
    Member<&_KWOSysTray::get_DoubleClickMsg>,
    Member<&_KWOSysTray::get_MouseDownMsg>,
    Member<&_KWOSysTray::get_MouseUpMsg>,
};

ClassInfo& SysTrayInfo() {
    static constinit ClassInfo info(CLSID_KWOSysTray, IID__KWOSysTray, nullptr, u"KWOSysTray", kSysTrayMembers);
    return info;
}

/// Picture objects are called by their dispatch identifiers, whatever other interfaces they have.
platform::HostObjectRef PictureOf(IPictureDisp* picture) {
    return platform::windows::MakeHostObject(picture);
}

class SysTrayObject final : public ComponentObject<_KWOSysTray> {
public:
    SysTrayObject() : ComponentObject(SysTrayInfo()), mTray(Component()) {}

    STDMETHODIMP Create(LONG* window, IPictureDisp** icon, BSTR* toolTip, VARIANT_BOOL* added) override {
        return Run(u".Create", [&] {
            VARIANT_BOOL& answer = Required(added);
            const bool done = mTray.Create(Required(window), PictureOf(Required(icon)), ToText(Required(toolTip)));
            answer = VariantBool(done);
        });
    }
    STDMETHODIMP Destroy() override {
        return Run(u".Destroy", [&] { mTray.Destroy(); });
    }
    STDMETHODIMP get_Tip(BSTR* toolTip) override {
        return Run(u".Tip (Get)", [&] { Required(toolTip) = NewString(mTray.Tip()); });
    }
    STDMETHODIMP put_Tip(BSTR* toolTip) override {
        return Run(u".Tip (Let)", [&] { mTray.SetTip(ToText(Required(toolTip))); });
    }
    STDMETHODIMP get_Icon(IPictureDisp** icon) override {
        return Run(u".Icon (Get)", [&] {
            IPictureDisp*& answer = Required(icon);
            answer = nullptr;
            // IPictureDisp has no members of its own.
            answer = static_cast<IPictureDisp*>(NewReference<IDispatch>(mTray.Icon()));
        });
    }
    STDMETHODIMP putref_Icon(IPictureDisp* icon) override {
        return Run(u".Icon (Set)", [&] { mTray.SetIcon(PictureOf(icon)); });
    }
    STDMETHODIMP get_DoubleClickMsg(short* button, LONG* message) override {
        return Run(u".DoubleClickMsg (Get)",
                   [&] { Required(message) = tray::KWOSysTray::DoubleClickMsg(Required(button)); });
    }
    STDMETHODIMP get_MouseDownMsg(short* button, LONG* message) override {
        return Run(u".MouseDownMsg (Get)",
                   [&] { Required(message) = tray::KWOSysTray::MouseDownMsg(Required(button)); });
    }
    STDMETHODIMP get_MouseUpMsg(short* button, LONG* message) override {
        return Run(u".MouseUpMsg (Get)", [&] { Required(message) = tray::KWOSysTray::MouseUpMsg(Required(button)); });
    }

private:
    tray::KWOSysTray mTray;
};

}  // namespace

ClassEntry SysTrayClass() {
    return {CLSID_KWOSysTray, u"KWOSysTray", &Make<SysTrayObject>};
}

}  // namespace kwo::com
