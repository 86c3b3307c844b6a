#include "com/class_objects.h"
#include "com/component_object.h"
#include "kwoutil.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kMembers[] = {
    Member<&_KWOPicBtn::Create>,
    Member<&_KWOPicBtn::get_Caption>,
    Member<&_KWOPicBtn::put_Caption>,
    Member<&_KWOPicBtn::get_TextAlignment>,
    Member<&_KWOPicBtn::put_TextAlignment>,
    Member<&_KWOPicBtn::get_PicAlignment>,
    Member<&_KWOPicBtn::put_PicAlignment>,
    Member<&_KWOPicBtn::get_MultiLine>,
    Member<&_KWOPicBtn::put_MultiLine>,
    Member<&_KWOPicBtn::DblClick>,
    Member<&_KWOPicBtn::GotFocus>,
    Member<&_KWOPicBtn::LostFocus>,
    Member<&_KWOPicBtn::Form_KeyDown>,
    Member<&_KWOPicBtn::KeyDown>,
    Member<&_KWOPicBtn::MouseDown>,
    Member<&_KWOPicBtn::MouseMove>,
    Member<&_KWOPicBtn::MouseUp>,
    Member<&_KWOPicBtn::Resize>,
};

ClassInfo& Info() {
    static ClassInfo info(CLSID_KWOPicBtn, IID__KWOPicBtn, nullptr, u"KWOPicBtn", kMembers);
    return info;
}

class PictureButtonObject final : public ComponentObject<_KWOPicBtn> {
public:
    PictureButtonObject() : ComponentObject(Info()) { Component().SetProgramName(); }

    STDMETHODIMP Create(IDispatch**, BSTR*, VARIANT_BOOL*) override { return NotBuilt(u".Create"); }
    STDMETHODIMP get_Caption(BSTR*) override { return NotBuilt(u".Caption (Get)"); }
    STDMETHODIMP put_Caption(BSTR*) override { return NotBuilt(u".Caption (Let)"); }
    STDMETHODIMP get_TextAlignment(short*) override { return NotBuilt(u".TextAlignment (Get)"); }
    STDMETHODIMP put_TextAlignment(short*) override { return NotBuilt(u".TextAlignment (Let)"); }
    STDMETHODIMP get_PicAlignment(short*) override { return NotBuilt(u".PicAlignment (Get)"); }
    STDMETHODIMP put_PicAlignment(short*) override { return NotBuilt(u".PicAlignment (Let)"); }
    STDMETHODIMP get_MultiLine(VARIANT_BOOL*) override { return NotBuilt(u".MultiLine (Get)"); }
    STDMETHODIMP put_MultiLine(VARIANT_BOOL*) override { return NotBuilt(u".MultiLine (Let)"); }
    STDMETHODIMP DblClick() override { return NotBuilt(u".DblClick"); }
    STDMETHODIMP GotFocus() override { return NotBuilt(u".GotFocus"); }
    STDMETHODIMP LostFocus() override { return NotBuilt(u".LostFocus"); }
    STDMETHODIMP Form_KeyDown(short*, short*, VARIANT_BOOL*) override { return NotBuilt(u".Form_KeyDown"); }
    STDMETHODIMP KeyDown(short*, short*) override { return NotBuilt(u".KeyDown"); }
    STDMETHODIMP MouseDown(short*, short*, float*, float*) override { return NotBuilt(u".MouseDown"); }
    STDMETHODIMP MouseMove(short*, short*, float*, float*) override { return NotBuilt(u".MouseMove"); }
    STDMETHODIMP MouseUp(short*, short*, float*, float*) override { return NotBuilt(u".MouseUp"); }
    STDMETHODIMP Resize() override { return NotBuilt(u".Resize"); }

private:
    HRESULT NotBuilt(TextView member) {
        return Run(member, [] { RaiseNotBuilt(); });
    }
};

}  // namespace

ClassEntry PicBtnClass() {
    return {CLSID_KWOPicBtn, &Make<PictureButtonObject>};
}

}  // namespace kwo::com
