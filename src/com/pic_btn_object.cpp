#include "com/class_objects.h"
#include "com/component_object.h"
#include "com/host_objects.h"
#include "com/server/com_values.h"
#include "controls/pic_btn.h"
#include "kwoutil.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kPicBtnMembers[] = {
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

ClassInfo& PicBtnInfo() {
    static constinit ClassInfo info(CLSID_KWOPicBtn, IID__KWOPicBtn, nullptr, u"KWOPicBtn", kPicBtnMembers);
    return info;
}

class PicBtnObject final : public ComponentObject<_KWOPicBtn> {
public:
    PicBtnObject() : ComponentObject(PicBtnInfo()), mButton(Component()) {}

    STDMETHODIMP Create(IDispatch** pictureBox, BSTR* caption, VARIANT_BOOL* created) override {
        return Run(u".Create", [&] {
            Required(created) = VARIANT_FALSE;
            mButton.Create(platform::windows::MakeHostObject(Required(pictureBox)), ToText(Required(caption)));
        });
    }
    STDMETHODIMP get_Caption(BSTR* caption) override {
        return Run(u".Caption (Get)", [&] { Required(caption) = NewString(mButton.Caption()); });
    }
    STDMETHODIMP put_Caption(BSTR* caption) override {
        return Run(u".Caption (Let)", [&] { mButton.SetCaption(ToText(Required(caption))); });
    }
    STDMETHODIMP get_TextAlignment(short* alignment) override {
        return Run(u".TextAlignment (Get)", [&] { Required(alignment) = mButton.TextAlignment(); });
    }
    STDMETHODIMP put_TextAlignment(short* alignment) override {
        return Run(u".TextAlignment (Let)", [&] { mButton.SetTextAlignment(Required(alignment)); });
    }
    STDMETHODIMP get_PicAlignment(short* alignment) override {
        return Run(u".PicAlignment (Get)", [&] { Required(alignment) = mButton.TextAlignment(); });
    }
    STDMETHODIMP put_PicAlignment(short* alignment) override {
        return Run(u".PicAlignment (Let)", [&] { mButton.SetTextAlignment(Required(alignment)); });
    }
    STDMETHODIMP get_MultiLine(VARIANT_BOOL* multiLine) override {
        return Run(u".MultiLine (Get)", [&] { Required(multiLine) = VariantBool(mButton.MultiLine()); });
    }
    STDMETHODIMP put_MultiLine(VARIANT_BOOL* multiLine) override {
        return Run(u".MultiLine (Let)", [&] { mButton.SetMultiLine(Required(multiLine) != VARIANT_FALSE); });
    }
    STDMETHODIMP DblClick() override {
        return Run(u".DblClick", [&] { mButton.DblClick(); });
    }
    STDMETHODIMP GotFocus() override {
        return Run(u".GotFocus", [&] { mButton.GotFocus(); });
    }
    STDMETHODIMP LostFocus() override {
        return Run(u".LostFocus", [&] { mButton.LostFocus(); });
    }
    STDMETHODIMP Form_KeyDown(short* keyCode, short* shift, VARIANT_BOOL* used) override {
        return Run(u".Form_KeyDown", [&] {
            VARIANT_BOOL& answer = Required(used);
            answer = VARIANT_FALSE;
            if (mButton.Form_KeyDown(Required(keyCode), Required(shift))) answer = VARIANT_TRUE;
        });
    }
    STDMETHODIMP KeyDown(short* keyCode, short* shift) override {
        return Run(u".KeyDown", [&] {
            RequireAll(keyCode, shift);
            mButton.KeyDown(Required(keyCode));
        });
    }
    STDMETHODIMP MouseDown(short* button, short* shift, float* x, float* y) override {
        return Run(u".MouseDown", [&] {
            RequireAll(button, shift, x, y);
            mButton.MouseDown(Required(button), Required(x), Required(y));
        });
    }
    STDMETHODIMP MouseMove(short* button, short* shift, float* x, float* y) override {
        return Run(u".MouseMove", [&] {
            RequireAll(button, shift, x, y);
            mButton.MouseMove(Required(x), Required(y));
        });
    }
    STDMETHODIMP MouseUp(short* button, short* shift, float* x, float* y) override {
        return Run(u".MouseUp", [&] {
            RequireAll(button, shift, x, y);
            mButton.MouseUp(Required(x), Required(y));
        });
    }
    STDMETHODIMP Resize() override {
        return Run(u".Resize", [&] { mButton.Resize(); });
    }

private:
    controls::KWOPicBtn mButton;
};

}  // namespace

ClassEntry PicBtnClass() {
    return {CLSID_KWOPicBtn, u"KWOPicBtn", &Make<PicBtnObject>};
}

}  // namespace kwo::com
