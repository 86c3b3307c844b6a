#include "com/class_objects.h"
#include "com/component_object.h"
#include "com/host_objects.h"
#include "com/server/com_values.h"
#include "controls/month_view.h"
#include "kwoutil.h"

namespace kwo::com {

namespace {

/// A colour of the system has its highest bit set.
constexpr std::uint8_t kFirstIsColour = 1;

constexpr MemberThunk kMonthViewMembers[] = {
    Member<&_KWOMonthView::get_CanSelect>,
    Member<&_KWOMonthView::put_CanSelect>,
    Member<&_KWOMonthView::get_MultiSelect>,
    Member<&_KWOMonthView::put_MultiSelect>,
    Member<&_KWOMonthView::get_CaptionFontBold>,
    Member<&_KWOMonthView::put_CaptionFontBold>,
    Member<&_KWOMonthView::get_DayHdrFontBold>,
    Member<&_KWOMonthView::put_DayHdrFontBold>,
    Member<&_KWOMonthView::get_DayFontBold>,
    Member<&_KWOMonthView::put_DayFontBold>,
    Member<&_KWOMonthView::get_SelDayFontBold>,
    Member<&_KWOMonthView::put_SelDayFontBold>,
    Member<&_KWOMonthView::get_CaptionFontColor>,
    Member<&_KWOMonthView::put_CaptionFontColor, kFirstIsColour>,
    Member<&_KWOMonthView::get_DayHdrFontColor>,
    Member<&_KWOMonthView::put_DayHdrFontColor, kFirstIsColour>,
    Member<&_KWOMonthView::get_DayFontColor>,
    Member<&_KWOMonthView::put_DayFontColor, kFirstIsColour>,
    Member<&_KWOMonthView::get_SelDayFontColor>,
    Member<&_KWOMonthView::put_SelDayFontColor, kFirstIsColour>,
    Member<&_KWOMonthView::ShowMonth>,
    Member<&_KWOMonthView::Create>,
    Member<&_KWOMonthView::MouseDown>,
    Member<&_KWOMonthView::MouseMove>,
    Member<&_KWOMonthView::MouseUp>,
    Member<&_KWOMonthView::DblClick>,
    Member<&_KWOMonthView::Resize>,
    Member<&_KWOMonthView::SelDaysAdd>,
    Member<&_KWOMonthView::SelDaysRemove>,
    Member<&_KWOMonthView::get_SelDay>,
    Member<&_KWOMonthView::SelDaysClear>,
    Member<&_KWOMonthView::get_IsSelected>,
    Member<&_KWOMonthView::get_MinDate>,
    Member<&_KWOMonthView::put_MinDate>,
    Member<&_KWOMonthView::get_MaxDate>,
    Member<&_KWOMonthView::put_MaxDate>,
    Member<&_KWOMonthView::get_VisibleMonth>,
    Member<&_KWOMonthView::get_VisibleYear>,
    Member<&_KWOMonthView::get_CaptionBevel>,
    Member<&_KWOMonthView::put_CaptionBevel>,
    Member<&_KWOMonthView::get_DayHdrBevel>,
    Member<&_KWOMonthView::put_DayHdrBevel>,
    Member<&_KWOMonthView::get_DayBevel>,
    Member<&_KWOMonthView::put_DayBevel>,
    Member<&_KWOMonthView::KeyDown>,
};

ClassInfo& MonthViewInfo() {
    static constinit ClassInfo info(CLSID_KWOMonthView, IID__KWOMonthView, nullptr, u"KWOMonthView", kMonthViewMembers);
    return info;
}

class MonthViewObject final : public ComponentObject<_KWOMonthView> {
public:
    MonthViewObject() : ComponentObject(MonthViewInfo()), mView(Component()) {}

    STDMETHODIMP get_CanSelect(VARIANT_BOOL* value) override {
        return Run(u".CanSelect (Get)", [&] { Required(value) = VariantBool(mView.CanSelect()); });
    }
    STDMETHODIMP put_CanSelect(VARIANT_BOOL value) override {
        return Run(u".CanSelect (Let)", [&] { mView.SetCanSelect(value != VARIANT_FALSE); });
    }
    STDMETHODIMP get_MultiSelect(VARIANT_BOOL* value) override {
        return Run(u".MultiSelect (Get)", [&] { Required(value) = VariantBool(mView.MultiSelect()); });
    }
    STDMETHODIMP put_MultiSelect(VARIANT_BOOL value) override {
        return Run(u".MultiSelect (Let)", [&] { mView.SetMultiSelect(value != VARIANT_FALSE); });
    }
    STDMETHODIMP get_CaptionFontBold(VARIANT_BOOL* value) override {
        return Run(u".CaptionFontBold (Get)", [&] { Required(value) = VariantBool(mView.CaptionFontBold()); });
    }
    STDMETHODIMP put_CaptionFontBold(VARIANT_BOOL value) override {
        return Run(u".CaptionFontBold (Let)", [&] { mView.SetCaptionFontBold(value != VARIANT_FALSE); });
    }
    STDMETHODIMP get_DayHdrFontBold(VARIANT_BOOL* value) override {
        return Run(u".DayHdrFontBold (Get)", [&] { Required(value) = VariantBool(mView.DayHdrFontBold()); });
    }
    STDMETHODIMP put_DayHdrFontBold(VARIANT_BOOL value) override {
        return Run(u".DayHdrFontBold (Let)", [&] { mView.SetDayHdrFontBold(value != VARIANT_FALSE); });
    }
    STDMETHODIMP get_DayFontBold(VARIANT_BOOL* value) override {
        return Run(u".DayFontBold (Get)", [&] { Required(value) = VariantBool(mView.DayFontBold()); });
    }
    STDMETHODIMP put_DayFontBold(VARIANT_BOOL value) override {
        return Run(u".DayFontBold (Let)", [&] { mView.SetDayFontBold(value != VARIANT_FALSE); });
    }
    STDMETHODIMP get_SelDayFontBold(VARIANT_BOOL* value) override {
        return Run(u".SelDayFontBold (Get)", [&] { Required(value) = VariantBool(mView.SelDayFontBold()); });
    }
    STDMETHODIMP put_SelDayFontBold(VARIANT_BOOL value) override {
        return Run(u".SelDayFontBold (Let)", [&] { mView.SetSelDayFontBold(value != VARIANT_FALSE); });
    }
    STDMETHODIMP get_CaptionFontColor(LONG* value) override {
        return Run(u".CaptionFontColor (Get)", [&] { Required(value) = static_cast<LONG>(mView.CaptionFontColor()); });
    }
    STDMETHODIMP put_CaptionFontColor(LONG value) override {
        return Run(u".CaptionFontColor (Let)",
                   [&] { mView.SetCaptionFontColor(static_cast<platform::Colour>(value)); });
    }
    STDMETHODIMP get_DayHdrFontColor(LONG* value) override {
        return Run(u".DayHdrFontColor (Get)", [&] { Required(value) = static_cast<LONG>(mView.DayHdrFontColor()); });
    }
    STDMETHODIMP put_DayHdrFontColor(LONG value) override {
        return Run(u".DayHdrFontColor (Let)", [&] { mView.SetDayHdrFontColor(static_cast<platform::Colour>(value)); });
    }
    STDMETHODIMP get_DayFontColor(LONG* value) override {
        return Run(u".DayFontColor (Get)", [&] { Required(value) = static_cast<LONG>(mView.DayFontColor()); });
    }
    STDMETHODIMP put_DayFontColor(LONG value) override {
        return Run(u".DayFontColor (Let)", [&] { mView.SetDayFontColor(static_cast<platform::Colour>(value)); });
    }
    STDMETHODIMP get_SelDayFontColor(LONG* value) override {
        return Run(u".SelDayFontColor (Get)", [&] { Required(value) = static_cast<LONG>(mView.SelDayFontColor()); });
    }
    STDMETHODIMP put_SelDayFontColor(LONG value) override {
        return Run(u".SelDayFontColor (Let)", [&] { mView.SetSelDayFontColor(static_cast<platform::Colour>(value)); });
    }
    STDMETHODIMP ShowMonth(short* month, short* year) override {
        return Run(u".ShowMonth", [&] { mView.ShowMonth(Required(month), Required(year)); });
    }
    STDMETHODIMP Create(IDispatch** pictureBox, DATE* focusDate, VARIANT* selDate, VARIANT* canMultiSelect,
                        VARIANT* spinInterval, VARIANT* notifyOnChange, VARIANT* control, VARIANT* canChange,
                        VARIANT_BOOL* created) override {
        return Run(u".Create", [&] {
            VARIANT_BOOL& answer = Required(created);
            platform::Date focus{Required(focusDate)};
            const bool done =
                mView.Create(platform::windows::MakeHostObject(Required(pictureBox)), focus,
                             {OptionalValue(selDate), OptionalValue(canMultiSelect), OptionalValue(spinInterval),
                              OptionalValue(notifyOnChange), OptionalValue(control), OptionalValue(canChange)});
            *focusDate = focus.days;
            answer = VariantBool(done);
        });
    }
    STDMETHODIMP MouseDown(short* button, VARIANT* shift, float* x, float* y) override {
        return Run(u".MouseDown", [&] {
            RequireAll(button, shift, x, y);
            mView.MouseDown(Required(button), Required(x), Required(y));
        });
    }
    STDMETHODIMP MouseMove(short* button, VARIANT* shift, float* x, float* y) override {
        return Run(u".MouseMove", [&] {
            RequireAll(button, shift, x, y);
            mView.MouseMove(Required(x), Required(y));
        });
    }
    STDMETHODIMP MouseUp(short* button, VARIANT* shift, float* x, float* y) override {
        return Run(u".MouseUp", [&] {
            RequireAll(button, shift, x, y);
            mView.MouseUp();
        });
    }
    STDMETHODIMP DblClick() override {
        return Run(u".DblClick", [&] { mView.DblClick(); });
    }
    STDMETHODIMP Resize() override {
        return Run(u".Resize", [&] { mView.Resize(); });
    }
    STDMETHODIMP SelDaysAdd(DATE* date) override {
        return Run(u".SelDaysAdd", [&] { mView.SelDaysAdd({Required(date)}); });
    }
    STDMETHODIMP SelDaysRemove(DATE* date) override {
        return Run(u".SelDaysRemove", [&] { mView.SelDaysRemove({Required(date)}); });
    }
    STDMETHODIMP get_SelDay(DATE* date) override {
        return Run(u".SelDay (Get)", [&] { Required(date) = mView.SelDay().days; });
    }
    STDMETHODIMP SelDaysClear() override {
        return Run(u".SelDaysClear", [&] { mView.SelDaysClear(); });
    }
    STDMETHODIMP get_IsSelected(DATE* date, VARIANT_BOOL* selected) override {
        return Run(u".IsSelected (Get)", [&] { Required(selected) = VariantBool(mView.IsSelected({Required(date)})); });
    }
    STDMETHODIMP get_MinDate(DATE* date) override {
        return Run(u".MinDate (Get)", [&] { Required(date) = mView.MinDate().days; });
    }
    STDMETHODIMP put_MinDate(DATE* date) override {
        return Run(u".MinDate (Let)", [&] { mView.SetMinDate({Required(date)}); });
    }
    STDMETHODIMP get_MaxDate(DATE* date) override {
        return Run(u".MaxDate (Get)", [&] { Required(date) = mView.MaxDate().days; });
    }
    STDMETHODIMP put_MaxDate(DATE* date) override {
        return Run(u".MaxDate (Let)", [&] { mView.SetMaxDate({Required(date)}); });
    }
    STDMETHODIMP get_VisibleMonth(short* value) override {
        return Run(u".VisibleMonth (Get)", [&] { Required(value) = mView.VisibleMonth(); });
    }
    STDMETHODIMP get_VisibleYear(short* value) override {
        return Run(u".VisibleYear (Get)", [&] { Required(value) = mView.VisibleYear(); });
    }
    STDMETHODIMP get_CaptionBevel(short* bevel) override {
        return Run(u".CaptionBevel (Get)", [&] { Required(bevel) = mView.CaptionBevel(); });
    }
    STDMETHODIMP put_CaptionBevel(short* bevel) override {
        return Run(u".CaptionBevel (Let)", [&] { mView.SetCaptionBevel(Required(bevel)); });
    }
    STDMETHODIMP get_DayHdrBevel(short* bevel) override {
        return Run(u".DayHdrBevel (Get)", [&] { Required(bevel) = mView.DayHdrBevel(); });
    }
    STDMETHODIMP put_DayHdrBevel(short* bevel) override {
        return Run(u".DayHdrBevel (Let)", [&] { mView.SetDayHdrBevel(Required(bevel)); });
    }
    STDMETHODIMP get_DayBevel(short* bevel) override {
        return Run(u".DayBevel (Get)", [&] { Required(bevel) = mView.DayBevel(); });
    }
    STDMETHODIMP put_DayBevel(short* bevel) override {
        return Run(u".DayBevel (Let)", [&] { mView.SetDayBevel(Required(bevel)); });
    }
    STDMETHODIMP KeyDown(short* keyCode, short* shift) override {
        return Run(u".KeyDown", [&] {
            RequireAll(keyCode, shift);
            mView.KeyDown(Required(keyCode));
        });
    }

private:
    controls::KWOMonthView mView;
};

}  // namespace

ClassEntry MonthViewClass() {
    return {CLSID_KWOMonthView, u"KWOMonthView", &Make<MonthViewObject>};
}

}  // namespace kwo::com
