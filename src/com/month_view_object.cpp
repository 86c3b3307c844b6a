#include "com/class_objects.h"
#include "com/component_object.h"
#include "kwoutil.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kMembers[] = {
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
    Member<&_KWOMonthView::put_CaptionFontColor>,
    Member<&_KWOMonthView::get_DayHdrFontColor>,
    Member<&_KWOMonthView::put_DayHdrFontColor>,
    Member<&_KWOMonthView::get_DayFontColor>,
    Member<&_KWOMonthView::put_DayFontColor>,
    Member<&_KWOMonthView::get_SelDayFontColor>,
    Member<&_KWOMonthView::put_SelDayFontColor>,
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

ClassInfo& Info() {
    static ClassInfo info(CLSID_KWOMonthView, IID__KWOMonthView, nullptr, u"KWOMonthView", kMembers);
    return info;
}

class MonthViewObject final : public ComponentObject<_KWOMonthView> {
public:
    MonthViewObject() : ComponentObject(Info()) { Component().SetProgramName(); }

    STDMETHODIMP get_CanSelect(VARIANT_BOOL*) override { return NotBuilt(u".CanSelect (Get)"); }
    STDMETHODIMP put_CanSelect(VARIANT_BOOL) override { return NotBuilt(u".CanSelect (Let)"); }
    STDMETHODIMP get_MultiSelect(VARIANT_BOOL*) override { return NotBuilt(u".MultiSelect (Get)"); }
    STDMETHODIMP put_MultiSelect(VARIANT_BOOL) override { return NotBuilt(u".MultiSelect (Let)"); }
    STDMETHODIMP get_CaptionFontBold(VARIANT_BOOL*) override { return NotBuilt(u".CaptionFontBold (Get)"); }
    STDMETHODIMP put_CaptionFontBold(VARIANT_BOOL) override { return NotBuilt(u".CaptionFontBold (Let)"); }
    STDMETHODIMP get_DayHdrFontBold(VARIANT_BOOL*) override { return NotBuilt(u".DayHdrFontBold (Get)"); }
    STDMETHODIMP put_DayHdrFontBold(VARIANT_BOOL) override { return NotBuilt(u".DayHdrFontBold (Let)"); }
    STDMETHODIMP get_DayFontBold(VARIANT_BOOL*) override { return NotBuilt(u".DayFontBold (Get)"); }
    STDMETHODIMP put_DayFontBold(VARIANT_BOOL) override { return NotBuilt(u".DayFontBold (Let)"); }
    STDMETHODIMP get_SelDayFontBold(VARIANT_BOOL*) override { return NotBuilt(u".SelDayFontBold (Get)"); }
    STDMETHODIMP put_SelDayFontBold(VARIANT_BOOL) override { return NotBuilt(u".SelDayFontBold (Let)"); }
    STDMETHODIMP get_CaptionFontColor(LONG*) override { return NotBuilt(u".CaptionFontColor (Get)"); }
    STDMETHODIMP put_CaptionFontColor(LONG) override { return NotBuilt(u".CaptionFontColor (Let)"); }
    STDMETHODIMP get_DayHdrFontColor(LONG*) override { return NotBuilt(u".DayHdrFontColor (Get)"); }
    STDMETHODIMP put_DayHdrFontColor(LONG) override { return NotBuilt(u".DayHdrFontColor (Let)"); }
    STDMETHODIMP get_DayFontColor(LONG*) override { return NotBuilt(u".DayFontColor (Get)"); }
    STDMETHODIMP put_DayFontColor(LONG) override { return NotBuilt(u".DayFontColor (Let)"); }
    STDMETHODIMP get_SelDayFontColor(LONG*) override { return NotBuilt(u".SelDayFontColor (Get)"); }
    STDMETHODIMP put_SelDayFontColor(LONG) override { return NotBuilt(u".SelDayFontColor (Let)"); }
    STDMETHODIMP ShowMonth(short*, short*) override { return NotBuilt(u".ShowMonth"); }
    STDMETHODIMP Create(IDispatch**, DATE*, VARIANT*, VARIANT*, VARIANT*, VARIANT*, VARIANT*, VARIANT*,
                        VARIANT_BOOL*) override {
        return NotBuilt(u".Create");
    }
    STDMETHODIMP MouseDown(short*, VARIANT*, float*, float*) override { return NotBuilt(u".MouseDown"); }
    STDMETHODIMP MouseMove(short*, VARIANT*, float*, float*) override { return NotBuilt(u".MouseMove"); }
    STDMETHODIMP MouseUp(short*, VARIANT*, float*, float*) override { return NotBuilt(u".MouseUp"); }
    STDMETHODIMP DblClick() override { return NotBuilt(u".DblClick"); }
    STDMETHODIMP Resize() override { return NotBuilt(u".Resize"); }
    STDMETHODIMP SelDaysAdd(DATE*) override { return NotBuilt(u".SelDaysAdd"); }
    STDMETHODIMP SelDaysRemove(DATE*) override { return NotBuilt(u".SelDaysRemove"); }
    STDMETHODIMP get_SelDay(DATE*) override { return NotBuilt(u".SelDay (Get)"); }
    STDMETHODIMP SelDaysClear() override { return NotBuilt(u".SelDaysClear"); }
    STDMETHODIMP get_IsSelected(DATE*, VARIANT_BOOL*) override { return NotBuilt(u".IsSelected (Get)"); }
    STDMETHODIMP get_MinDate(DATE*) override { return NotBuilt(u".MinDate (Get)"); }
    STDMETHODIMP put_MinDate(DATE*) override { return NotBuilt(u".MinDate (Let)"); }
    STDMETHODIMP get_MaxDate(DATE*) override { return NotBuilt(u".MaxDate (Get)"); }
    STDMETHODIMP put_MaxDate(DATE*) override { return NotBuilt(u".MaxDate (Let)"); }
    STDMETHODIMP get_VisibleMonth(short*) override { return NotBuilt(u".VisibleMonth (Get)"); }
    STDMETHODIMP get_VisibleYear(short*) override { return NotBuilt(u".VisibleYear (Get)"); }
    STDMETHODIMP get_CaptionBevel(short*) override { return NotBuilt(u".CaptionBevel (Get)"); }
    STDMETHODIMP put_CaptionBevel(short*) override { return NotBuilt(u".CaptionBevel (Let)"); }
    STDMETHODIMP get_DayHdrBevel(short*) override { return NotBuilt(u".DayHdrBevel (Get)"); }
    STDMETHODIMP put_DayHdrBevel(short*) override { return NotBuilt(u".DayHdrBevel (Let)"); }
    STDMETHODIMP get_DayBevel(short*) override { return NotBuilt(u".DayBevel (Get)"); }
    STDMETHODIMP put_DayBevel(short*) override { return NotBuilt(u".DayBevel (Let)"); }
    STDMETHODIMP KeyDown(short*, short*) override { return NotBuilt(u".KeyDown"); }

private:
    HRESULT NotBuilt(TextView member) {
        return Run(member, [] { RaiseNotBuilt(); });
    }
};

}  // namespace

ClassEntry MonthViewClass() {
    return {CLSID_KWOMonthView, &Make<MonthViewObject>};
}

}  // namespace kwo::com
