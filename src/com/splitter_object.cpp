#include "com/class_objects.h"
#include "com/component_object.h"
#include "kwoutil.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kMembers[] = {
    Member<&_KWOSplitterV::get_LeftMargin>,   Member<&_KWOSplitterV::put_LeftMargin>,
    Member<&_KWOSplitterV::get_TopMargin>,    Member<&_KWOSplitterV::put_TopMargin>,
    Member<&_KWOSplitterV::get_RightMargin>,  Member<&_KWOSplitterV::put_RightMargin>,
    Member<&_KWOSplitterV::get_BottomMargin>, Member<&_KWOSplitterV::put_BottomMargin>,
    Member<&_KWOSplitterV::Create>,           Member<&_KWOSplitterV::Resize>,
    Member<&_KWOSplitterV::MouseDown>,        Member<&_KWOSplitterV::MouseMove>,
    Member<&_KWOSplitterV::MouseUp>,
};

ClassInfo& Info() {
    static ClassInfo info(CLSID_KWOSplitterV, IID__KWOSplitterV, nullptr, u"KWOSplitterV", kMembers);
    return info;
}

class SplitterObject final : public ComponentObject<_KWOSplitterV> {
public:
    SplitterObject() : ComponentObject(Info()) { Component().SetProgramName(); }

    STDMETHODIMP get_LeftMargin(float*) override { return NotBuilt(u".LeftMargin (Get)"); }
    STDMETHODIMP put_LeftMargin(float) override { return NotBuilt(u".LeftMargin (Let)"); }
    STDMETHODIMP get_TopMargin(float*) override { return NotBuilt(u".TopMargin (Get)"); }
    STDMETHODIMP put_TopMargin(float) override { return NotBuilt(u".TopMargin (Let)"); }
    STDMETHODIMP get_RightMargin(float*) override { return NotBuilt(u".RightMargin (Get)"); }
    STDMETHODIMP put_RightMargin(float) override { return NotBuilt(u".RightMargin (Let)"); }
    STDMETHODIMP get_BottomMargin(float*) override { return NotBuilt(u".BottomMargin (Get)"); }
    STDMETHODIMP put_BottomMargin(float) override { return NotBuilt(u".BottomMargin (Let)"); }
    STDMETHODIMP Create(IDispatch**, IDispatch**, IDispatch**, VARIANT*, VARIANT*, VARIANT*, VARIANT*, VARIANT*,
                        VARIANT_BOOL*) override {
        return NotBuilt(u".Create");
    }
    STDMETHODIMP Resize() override { return NotBuilt(u".Resize"); }
    STDMETHODIMP MouseDown(short*, short*, float*, float*) override { return NotBuilt(u".MouseDown"); }
    STDMETHODIMP MouseMove(short*, short*, float*, float*) override { return NotBuilt(u".MouseMove"); }
    STDMETHODIMP MouseUp(short*, short*, float*, float*) override { return NotBuilt(u".MouseUp"); }

private:
    HRESULT NotBuilt(TextView member) {
        return Run(member, [] { RaiseNotBuilt(); });
    }
};

}  // namespace

ClassEntry SplitterVClass() {
    return {CLSID_KWOSplitterV, &Make<SplitterObject>};
}

}  // namespace kwo::com
