#include "com/class_objects.h"
#include "com/component_object.h"
#include "kwoutil.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kMembers[] = {
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

ClassInfo& Info() {
    static ClassInfo info(CLSID_KWOSysTray, IID__KWOSysTray, nullptr, u"KWOSysTray", kMembers);
    return info;
}

class TrayIconObject final : public ComponentObject<_KWOSysTray> {
public:
    TrayIconObject() : ComponentObject(Info()) {}

    STDMETHODIMP Create(LONG*, IPictureDisp**, BSTR*, VARIANT_BOOL*) override { return NotBuilt(u".Create"); }
    STDMETHODIMP Destroy() override { return NotBuilt(u".Destroy"); }
    STDMETHODIMP get_Tip(BSTR*) override { return NotBuilt(u".Tip (Get)"); }
    STDMETHODIMP put_Tip(BSTR*) override { return NotBuilt(u".Tip (Let)"); }
    STDMETHODIMP get_Icon(IPictureDisp**) override { return NotBuilt(u".Icon (Get)"); }
    STDMETHODIMP putref_Icon(IPictureDisp*) override { return NotBuilt(u".Icon (Set)"); }
    STDMETHODIMP get_DoubleClickMsg(short*, LONG*) override { return NotBuilt(u".DoubleClickMsg (Get)"); }
    STDMETHODIMP get_MouseDownMsg(short*, LONG*) override { return NotBuilt(u".MouseDownMsg (Get)"); }
    STDMETHODIMP get_MouseUpMsg(short*, LONG*) override { return NotBuilt(u".MouseUpMsg (Get)"); }

private:
    HRESULT NotBuilt(TextView member) {
        return Run(member, [] { RaiseNotBuilt(); });
    }
};

}  // namespace

ClassEntry SysTrayClass() {
    return {CLSID_KWOSysTray, &Make<TrayIconObject>};
}

}  // namespace kwo::com
