#include "com/class_objects.h"
#include "com/component_object.h"
#include "com/host_objects.h"
#include "com/server/com_values.h"
#include "controls/splitter_v.h"
#include "kwoutil.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kSplitterVMembers[] = {
    Member<&_KWOSplitterV::get_LeftMargin>,   Member<&_KWOSplitterV::put_LeftMargin>,
    Member<&_KWOSplitterV::get_TopMargin>,    Member<&_KWOSplitterV::put_TopMargin>,
    Member<&_KWOSplitterV::get_RightMargin>,  Member<&_KWOSplitterV::put_RightMargin>,
    Member<&_KWOSplitterV::get_BottomMargin>, Member<&_KWOSplitterV::put_BottomMargin>,
    Member<&_KWOSplitterV::Create>,           Member<&_KWOSplitterV::Resize>,
    Member<&_KWOSplitterV::MouseDown>,        Member<&_KWOSplitterV::MouseMove>,
    Member<&_KWOSplitterV::MouseUp>,
};

ClassInfo& SplitterVInfo() {
    static constinit ClassInfo info(CLSID_KWOSplitterV, IID__KWOSplitterV, nullptr, u"KWOSplitterV", kSplitterVMembers);
    return info;
}

class SplitterVObject final : public ComponentObject<_KWOSplitterV> {
public:
    SplitterVObject() : ComponentObject(SplitterVInfo()), mSplitter(Component()) {}

    STDMETHODIMP get_LeftMargin(float* value) override {
        return Run(u".LeftMargin (Get)", [&] { Required(value) = mSplitter.LeftMargin(); });
    }
    STDMETHODIMP put_LeftMargin(float value) override {
        return Run(u".LeftMargin (Let)", [&] { mSplitter.SetLeftMargin(value); });
    }
    STDMETHODIMP get_TopMargin(float* value) override {
        return Run(u".TopMargin (Get)", [&] { Required(value) = mSplitter.TopMargin(); });
    }
    STDMETHODIMP put_TopMargin(float value) override {
        return Run(u".TopMargin (Let)", [&] { mSplitter.SetTopMargin(value); });
    }
    STDMETHODIMP get_RightMargin(float* value) override {
        return Run(u".RightMargin (Get)", [&] { Required(value) = mSplitter.RightMargin(); });
    }
    STDMETHODIMP put_RightMargin(float value) override {
        return Run(u".RightMargin (Let)", [&] { mSplitter.SetRightMargin(value); });
    }
    STDMETHODIMP get_BottomMargin(float* value) override {
        return Run(u".BottomMargin (Get)", [&] { Required(value) = mSplitter.BottomMargin(); });
    }
    STDMETHODIMP put_BottomMargin(float value) override {
        return Run(u".BottomMargin (Let)", [&] { mSplitter.SetBottomMargin(value); });
    }
    STDMETHODIMP Create(IDispatch** left, IDispatch** right, IDispatch** splitter, VARIANT* size, VARIANT* marginLeft,
                        VARIANT* marginTop, VARIANT* marginRight, VARIANT* marginBottom,
                        VARIANT_BOOL* created) override {
        return Run(u".Create", [&] {
            VARIANT_BOOL& answer = Required(created);
            const bool done = mSplitter.Create(
                platform::windows::MakeHostObject(Required(left)), platform::windows::MakeHostObject(Required(right)),
                platform::windows::MakeHostObject(Required(splitter)),
                {OptionalValue(size), OptionalValue(marginLeft), OptionalValue(marginTop), OptionalValue(marginRight),
                 OptionalValue(marginBottom)});
            answer = VariantBool(done);
        });
    }
    STDMETHODIMP Resize() override {
        return Run(u".Resize", [&] { mSplitter.Resize(); });
    }
    STDMETHODIMP MouseDown(short* button, short* shift, float* x, float* y) override {
        return Run(u".MouseDown", [&] {
            RequireAll(button, shift, x, y);
            mSplitter.MouseDown(Required(button), Required(x));
        });
    }
    STDMETHODIMP MouseMove(short* button, short* shift, float* x, float* y) override {
        return Run(u".MouseMove", [&] {
            RequireAll(button, shift, x, y);
            mSplitter.MouseMove(Required(x));
        });
    }
    STDMETHODIMP MouseUp(short* button, short* shift, float* x, float* y) override {
        return Run(u".MouseUp", [&] {
            RequireAll(button, shift, x, y);
            mSplitter.MouseUp(Required(x));
        });
    }

private:
    controls::KWOSplitterV mSplitter;
};

}  // namespace

ClassEntry SplitterVClass() {
    return {CLSID_KWOSplitterV, u"KWOSplitterV", &Make<SplitterVObject>};
}

}  // namespace kwo::com
