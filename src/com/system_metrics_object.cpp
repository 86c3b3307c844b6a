#include "com/class_objects.h"
#include "com/component_object.h"
#include "kwoutil.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kMembers[] = {
    Member<&_KWOSysMetrics::get_ScaleMode>,
    Member<&_KWOSysMetrics::put_ScaleMode>,
    Member<&_KWOSysMetrics::ScreenX>,
    Member<&_KWOSysMetrics::ScreenY>,
    Member<&_KWOSysMetrics::VScrollX>,
    Member<&_KWOSysMetrics::HScrollY>,
    Member<&_KWOSysMetrics::BorderX>,
    Member<&_KWOSysMetrics::BorderY>,
    Member<&_KWOSysMetrics::DialogFrameX>,
    Member<&_KWOSysMetrics::DialogFrameY>,
    Member<&_KWOSysMetrics::VScrollThumbY>,
    Member<&_KWOSysMetrics::HScrollThumbX>,
    Member<&_KWOSysMetrics::IconX>,
    Member<&_KWOSysMetrics::IconY>,
    Member<&_KWOSysMetrics::CursorX>,
    Member<&_KWOSysMetrics::CursorY>,
    Member<&_KWOSysMetrics::FullScreenWindowX>,
    Member<&_KWOSysMetrics::FullScreenWindowY>,
    Member<&_KWOSysMetrics::WindowMinX>,
    Member<&_KWOSysMetrics::WindowMinY>,
    Member<&_KWOSysMetrics::WindowBtnX>,
    Member<&_KWOSysMetrics::WindowBtnY>,
    Member<&_KWOSysMetrics::FrameX>,
    Member<&_KWOSysMetrics::FrameY>,
    Member<&_KWOSysMetrics::MinTrackX>,
    Member<&_KWOSysMetrics::MinTrackY>,
    Member<&_KWOSysMetrics::DoubleClickX>,
    Member<&_KWOSysMetrics::DoubleClickY>,
    Member<&_KWOSysMetrics::IconSpacingX>,
    Member<&_KWOSysMetrics::IconSpacingY>,
    Member<&_KWOSysMetrics::DragX>,
    Member<&_KWOSysMetrics::DragY>,
    Member<&_KWOSysMetrics::Edge3DX>,
    Member<&_KWOSysMetrics::Edge3DY>,
    Member<&_KWOSysMetrics::FixedFrameX>,
    Member<&_KWOSysMetrics::FixedFrameY>,
    Member<&_KWOSysMetrics::MaximizedX>,
    Member<&_KWOSysMetrics::MaximizedY>,
    Member<&_KWOSysMetrics::MaxTrackX>,
    Member<&_KWOSysMetrics::MaxTrackY>,
    Member<&_KWOSysMetrics::MenuCheckX>,
    Member<&_KWOSysMetrics::MenuCheckY>,
    Member<&_KWOSysMetrics::MenuSizeX>,
    Member<&_KWOSysMetrics::MenuSizeY>,
    Member<&_KWOSysMetrics::MinimizedX>,
    Member<&_KWOSysMetrics::MinimizedY>,
    Member<&_KWOSysMetrics::MinSpacingX>,
    Member<&_KWOSysMetrics::MinSpacingY>,
    Member<&_KWOSysMetrics::SizeFrameX>,
    Member<&_KWOSysMetrics::SizeFrameY>,
    Member<&_KWOSysMetrics::SmallIconX>,
    Member<&_KWOSysMetrics::SmallIconY>,
    Member<&_KWOSysMetrics::SmallBtnX>,
    Member<&_KWOSysMetrics::SmallBtnY>,
    Member<&_KWOSysMetrics::DebugVersion>,
    Member<&_KWOSysMetrics::SwapButtons>,
    Member<&_KWOSysMetrics::SingleMenuBarY>,
    Member<&_KWOSysMetrics::VScrollArrowY>,
    Member<&_KWOSysMetrics::HScrollArrowX>,
    Member<&_KWOSysMetrics::KanjiWindowY>,
    Member<&_KWOSysMetrics::MousePresent>,
    Member<&_KWOSysMetrics::CaptionAreaY>,
    Member<&_KWOSysMetrics::SmallCaptionAreaY>,
    Member<&_KWOSysMetrics::MenuDropRightAligned>,
    Member<&_KWOSysMetrics::PenWindows>,
    Member<&_KWOSysMetrics::DBCSEnabled>,
    Member<&_KWOSysMetrics::MouseButtons>,
    Member<&_KWOSysMetrics::Arrange>,
    Member<&_KWOSysMetrics::CleanBoot>,
    Member<&_KWOSysMetrics::MidEastEnabled>,
    Member<&_KWOSysMetrics::Network>,
    Member<&_KWOSysMetrics::Secure>,
    Member<&_KWOSysMetrics::SlowMachine>,
};

ClassInfo& Info() {
    static ClassInfo info(CLSID_KWOSysMetrics, IID__KWOSysMetrics, nullptr, u"KWOSysMetrics", kMembers);
    return info;
}

class SystemMetricsObject final : public ComponentObject<_KWOSysMetrics> {
public:
    SystemMetricsObject() : ComponentObject(Info()) { Component().SetProgramName(); }

    STDMETHODIMP get_ScaleMode(short*) override { return NotBuilt(u".ScaleMode (Get)"); }
    STDMETHODIMP put_ScaleMode(short*) override { return NotBuilt(u".ScaleMode (Let)"); }
    STDMETHODIMP ScreenX(VARIANT*, LONG*) override { return NotBuilt(u".ScreenX"); }
    STDMETHODIMP ScreenY(VARIANT*, LONG*) override { return NotBuilt(u".ScreenY"); }
    STDMETHODIMP VScrollX(VARIANT*, LONG*) override { return NotBuilt(u".VScrollX"); }
    STDMETHODIMP HScrollY(VARIANT*, LONG*) override { return NotBuilt(u".HScrollY"); }
    STDMETHODIMP BorderX(VARIANT*, LONG*) override { return NotBuilt(u".BorderX"); }
    STDMETHODIMP BorderY(VARIANT*, LONG*) override { return NotBuilt(u".BorderY"); }
    STDMETHODIMP DialogFrameX(VARIANT*, LONG*) override { return NotBuilt(u".DialogFrameX"); }
    STDMETHODIMP DialogFrameY(VARIANT*, LONG*) override { return NotBuilt(u".DialogFrameY"); }
    STDMETHODIMP VScrollThumbY(VARIANT*, LONG*) override { return NotBuilt(u".VScrollThumbY"); }
    STDMETHODIMP HScrollThumbX(VARIANT*, LONG*) override { return NotBuilt(u".HScrollThumbX"); }
    STDMETHODIMP IconX(VARIANT*, LONG*) override { return NotBuilt(u".IconX"); }
    STDMETHODIMP IconY(VARIANT*, LONG*) override { return NotBuilt(u".IconY"); }
    STDMETHODIMP CursorX(VARIANT*, LONG*) override { return NotBuilt(u".CursorX"); }
    STDMETHODIMP CursorY(VARIANT*, LONG*) override { return NotBuilt(u".CursorY"); }
    STDMETHODIMP FullScreenWindowX(VARIANT*, LONG*) override { return NotBuilt(u".FullScreenWindowX"); }
    STDMETHODIMP FullScreenWindowY(VARIANT*, LONG*) override { return NotBuilt(u".FullScreenWindowY"); }
    STDMETHODIMP WindowMinX(VARIANT*, LONG*) override { return NotBuilt(u".WindowMinX"); }
    STDMETHODIMP WindowMinY(VARIANT*, LONG*) override { return NotBuilt(u".WindowMinY"); }
    STDMETHODIMP WindowBtnX(VARIANT*, LONG*) override { return NotBuilt(u".WindowBtnX"); }
    STDMETHODIMP WindowBtnY(VARIANT*, LONG*) override { return NotBuilt(u".WindowBtnY"); }
    STDMETHODIMP FrameX(VARIANT*, LONG*) override { return NotBuilt(u".FrameX"); }
    STDMETHODIMP FrameY(VARIANT*, LONG*) override { return NotBuilt(u".FrameY"); }
    STDMETHODIMP MinTrackX(VARIANT*, LONG*) override { return NotBuilt(u".MinTrackX"); }
    STDMETHODIMP MinTrackY(VARIANT*, LONG*) override { return NotBuilt(u".MinTrackY"); }
    STDMETHODIMP DoubleClickX(VARIANT*, LONG*) override { return NotBuilt(u".DoubleClickX"); }
    STDMETHODIMP DoubleClickY(VARIANT*, LONG*) override { return NotBuilt(u".DoubleClickY"); }
    STDMETHODIMP IconSpacingX(VARIANT*, LONG*) override { return NotBuilt(u".IconSpacingX"); }
    STDMETHODIMP IconSpacingY(VARIANT*, LONG*) override { return NotBuilt(u".IconSpacingY"); }
    STDMETHODIMP DragX(VARIANT*, LONG*) override { return NotBuilt(u".DragX"); }
    STDMETHODIMP DragY(VARIANT*, LONG*) override { return NotBuilt(u".DragY"); }
    STDMETHODIMP Edge3DX(VARIANT*, LONG*) override { return NotBuilt(u".Edge3DX"); }
    STDMETHODIMP Edge3DY(VARIANT*, LONG*) override { return NotBuilt(u".Edge3DY"); }
    STDMETHODIMP FixedFrameX(VARIANT*, LONG*) override { return NotBuilt(u".FixedFrameX"); }
    STDMETHODIMP FixedFrameY(VARIANT*, LONG*) override { return NotBuilt(u".FixedFrameY"); }
    STDMETHODIMP MaximizedX(VARIANT*, LONG*) override { return NotBuilt(u".MaximizedX"); }
    STDMETHODIMP MaximizedY(VARIANT*, LONG*) override { return NotBuilt(u".MaximizedY"); }
    STDMETHODIMP MaxTrackX(VARIANT*, LONG*) override { return NotBuilt(u".MaxTrackX"); }
    STDMETHODIMP MaxTrackY(VARIANT*, LONG*) override { return NotBuilt(u".MaxTrackY"); }
    STDMETHODIMP MenuCheckX(VARIANT*, LONG*) override { return NotBuilt(u".MenuCheckX"); }
    STDMETHODIMP MenuCheckY(VARIANT*, LONG*) override { return NotBuilt(u".MenuCheckY"); }
    STDMETHODIMP MenuSizeX(VARIANT*, LONG*) override { return NotBuilt(u".MenuSizeX"); }
    STDMETHODIMP MenuSizeY(VARIANT*, LONG*) override { return NotBuilt(u".MenuSizeY"); }
    STDMETHODIMP MinimizedX(VARIANT*, LONG*) override { return NotBuilt(u".MinimizedX"); }
    STDMETHODIMP MinimizedY(VARIANT*, LONG*) override { return NotBuilt(u".MinimizedY"); }
    STDMETHODIMP MinSpacingX(VARIANT*, LONG*) override { return NotBuilt(u".MinSpacingX"); }
    STDMETHODIMP MinSpacingY(VARIANT*, LONG*) override { return NotBuilt(u".MinSpacingY"); }
    STDMETHODIMP SizeFrameX(VARIANT*, LONG*) override { return NotBuilt(u".SizeFrameX"); }
    STDMETHODIMP SizeFrameY(VARIANT*, LONG*) override { return NotBuilt(u".SizeFrameY"); }
    STDMETHODIMP SmallIconX(VARIANT*, LONG*) override { return NotBuilt(u".SmallIconX"); }
    STDMETHODIMP SmallIconY(VARIANT*, LONG*) override { return NotBuilt(u".SmallIconY"); }
    STDMETHODIMP SmallBtnX(VARIANT*, LONG*) override { return NotBuilt(u".SmallBtnX"); }
    STDMETHODIMP SmallBtnY(VARIANT*, LONG*) override { return NotBuilt(u".SmallBtnY"); }
    STDMETHODIMP DebugVersion(VARIANT_BOOL*) override { return NotBuilt(u".DebugVersion"); }
    STDMETHODIMP SwapButtons(VARIANT_BOOL*) override { return NotBuilt(u".SwapButtons"); }
    STDMETHODIMP SingleMenuBarY(VARIANT*, LONG*) override { return NotBuilt(u".SingleMenuBarY"); }
    STDMETHODIMP VScrollArrowY(VARIANT*, LONG*) override { return NotBuilt(u".VScrollArrowY"); }
    STDMETHODIMP HScrollArrowX(VARIANT*, LONG*) override { return NotBuilt(u".HScrollArrowX"); }
    STDMETHODIMP KanjiWindowY(VARIANT*, LONG*) override { return NotBuilt(u".KanjiWindowY"); }
    STDMETHODIMP MousePresent(VARIANT_BOOL*) override { return NotBuilt(u".MousePresent"); }
    STDMETHODIMP CaptionAreaY(VARIANT*, LONG*) override { return NotBuilt(u".CaptionAreaY"); }
    STDMETHODIMP SmallCaptionAreaY(VARIANT*, LONG*) override { return NotBuilt(u".SmallCaptionAreaY"); }
    STDMETHODIMP MenuDropRightAligned(VARIANT_BOOL*) override { return NotBuilt(u".MenuDropRightAligned"); }
    STDMETHODIMP PenWindows(VARIANT_BOOL*) override { return NotBuilt(u".PenWindows"); }
    STDMETHODIMP DBCSEnabled(VARIANT_BOOL*) override { return NotBuilt(u".DBCSEnabled"); }
    STDMETHODIMP MouseButtons(short*) override { return NotBuilt(u".MouseButtons"); }
    STDMETHODIMP Arrange(LONG*) override { return NotBuilt(u".Arrange"); }
    STDMETHODIMP CleanBoot(short*) override { return NotBuilt(u".CleanBoot"); }
    STDMETHODIMP MidEastEnabled(VARIANT_BOOL*) override { return NotBuilt(u".MidEastEnabled"); }
    STDMETHODIMP Network(VARIANT_BOOL*) override { return NotBuilt(u".Network"); }
    STDMETHODIMP Secure(VARIANT_BOOL*) override { return NotBuilt(u".Secure"); }
    STDMETHODIMP SlowMachine(VARIANT_BOOL*) override { return NotBuilt(u".SlowMachine"); }

private:
    HRESULT NotBuilt(TextView member) {
        return Run(member, [] { RaiseNotBuilt(); });
    }
};

}  // namespace

ClassEntry SysMetricsClass() {
    return {CLSID_KWOSysMetrics, &Make<SystemMetricsObject>};
}

}  // namespace kwo::com
