#include "golden_members.h"

#include <cstdio>

namespace kwo::com_test {
namespace {

GoldenInterface Registry() {
    return {"_KWORegistry",
            {
                {"method", "KWO_RegGetValueEx", 0x6003002C,
                 "(hKey: ref Long, ValueName: ref String, DefaultValue: Variant): Variant"},
                {"method", "KWO_RegDeleteKey", 0x6003001C, "(KeyRoot: ref Long, KeyName: ref String): Long",
                 "Deletes A Registry Key"},
                {"method", "KWO_RegDeleteValue", 0x60030020,
                 "(KeyRoot: ref Long, KeyName: ref String, ValueName: ref String): Long"},
                {"method", "KWO_RegCreateKey", 0x6003002D, "(KeyRoot: ref Long, KeyName: ref String): Long"},
                {"method", "KWO_RegSetValue", 0x60030024,
                 "(KeyRoot: ref Long, KeyName: ref String, ValueName: ref String, Value: ref String): Long"},
                {"method", "KWO_RegGetValue", 0x60030028,
                 "(KeyRoot: ref Long, KeyName: ref String, ValueName: ref String, Value: ref String): Long"},
            }};
}

GoldenInterface Utility() {
    return {"_KWOUtility",
            {
                {"method", "KWO_FindInPath", 0x6003001C, "(FileName: ref String): String"},
                {"method", "KWO_CenterForm", 0x60030020, "(ActiveForm: ref Object, ParentForm: opt ref Variant)",
                 "Center form on the screen or over another form."},
                {"method", "KWO_SetFormPosition", 0x60030024,
                 "(FormObj: ref Object, WindowState: opt ref Variant, Left: opt ref Variant, Top: opt ref Variant, "
                 "Width: opt ref Variant, Height: opt ref Variant, ParentForm: opt ref Variant)",
                 "Position a form on the screen or over another form.  Resize or move the form if it does not fit."},
                {"method", "KWO_LoadApp", 0x60030028,
                 "(AppPath: ref String, AppProg: ref String, AppParms: ref String, WinMode: ref Integer, "
                 "AppName: ref String): Long",
                 "Shell an application, or activate it if it already is running."},
                {"method", "KWO_Pause", 0x6003002C, "(Seconds: ref Integer)",
                 "Loops and waits for the number of seconds indicated."},
                {"method", "KWO_SystemDir", 0x60030030, "(SlashAtEnd: opt ref Variant): String"},
                {"method", "KWO_WindowsDir", 0x60030034, "(SlashAtEnd: opt ref Variant): String"},
                {"get", "KWO_IsWin32", 0x68030038, "(): Boolean"},
                {"get", "KWO_IsWinNT", 0x6803003C, "(): Boolean", "True, if running under WIndows NT."},
                {"get", "KWO_WinMajorVersion", 0x68030040, "(): Integer"},
                {"get", "KWO_WinMinorVersion", 0x68030044, "(): Integer"},
            }};
}

GoldenInterface SplitterV() {
    constexpr const char* kMouse = "(Button: ref Integer, Shift: ref Integer, X: ref Single, Y: ref Single)";
    return {"_KWOSplitterV",
            {
                {"get", "LeftMargin", 0x4003001C, "(): Single"},
                {"let", "LeftMargin", 0x4003001C, "() = Single"},
                {"get", "TopMargin", 0x40030024, "(): Single"},
                {"let", "TopMargin", 0x40030024, "() = Single"},
                {"get", "RightMargin", 0x4003002C, "(): Single"},
                {"let", "RightMargin", 0x4003002C, "() = Single"},
                {"get", "BottomMargin", 0x40030034, "(): Single"},
                {"let", "BottomMargin", 0x40030034, "() = Single"},
                {"method", "Create", 0x6003003C,
                 "(LeftControl: ref Object, RightControl: ref Object, Splitter: ref Object, "
                 "SplitterSizeInPixels: opt ref Variant, MarginLeft: opt ref Variant, MarginTop: opt ref Variant, "
                 "MarginRight: opt ref Variant, MarginBottom: opt ref Variant): Boolean",
                 "Creates the splitter class."},
                {"method", "Resize", 0x60030040, "()",
                 "Resizes the Left & Right control according to the new splitter position."},
                {"method", "MouseDown", 0x60030044, kMouse, "Call this routine from <SplitterControl>_MouseDown."},
                {"method", "MouseMove", 0x60030048, kMouse, "Call this routine from <SplitterControl>_MouseMove."},
                {"method", "MouseUp", 0x6003004C, kMouse, "Call this routine from <SplitterControl>_MouseUp."},
            }};
}

GoldenInterface PicBtn() {
    constexpr const char* kKey = "(KeyCode: ref Integer, Shift: ref Integer)";
    constexpr const char* kMouse = "(Button: ref Integer, Shift: ref Integer, X: ref Single, Y: ref Single)";
    constexpr const char* kSister = "Called by control's sister event";
    constexpr const char* kMultiLine = "Whether or not the button's caption is displayed on more than one line";
    return {"_KWOPicBtn",
            {
                {"method", "Create", 0x6003001C, "(PictureBox: ref Object, BtnCaption: ref String): Boolean",
                 "Prepares the class for use. Must be the first method called."},
                {"get", "Caption", 0x68030020, "(): String", "Caption displayed on button"},
                {"let", "Caption", 0x68030020, "() = ref String", "Caption displayed on button"},
                {"get", "TextAlignment", 0x68030028, "(): Integer", "Horizontal alignment of Caption"},
                {"let", "TextAlignment", 0x68030028, "() = ref Integer", "Horizontal alignment of Caption"},
                {"get", "PicAlignment", 0x68030030, "(): Integer", "Reserved."},
                {"let", "PicAlignment", 0x68030030, "() = ref Integer", "Reserved."},
                {"get", "MultiLine", 0x68030038, "(): Boolean", kMultiLine},
                {"let", "MultiLine", 0x68030038, "() = ref Boolean", kMultiLine},
                {"method", "DblClick", 0x60030040, "()", kSister},
                {"method", "GotFocus", 0x60030044, "()", kSister},
                {"method", "LostFocus", 0x60030048, "()", kSister},
                {"method", "Form_KeyDown", 0x6003004C, "(KeyCode: ref Integer, Shift: ref Integer): Boolean"},
                {"method", "KeyDown", 0x60030050, kKey},
                {"method", "MouseDown", 0x60030054, kMouse},
                {"method", "MouseMove", 0x60030058, kMouse},
                {"method", "MouseUp", 0x6003005C, kMouse},
                {"method", "Resize", 0x60030060, "()"},
            }};
}

GoldenInterface SysParams() {
    return {"_KWOSysParams",
            {
                {"get", "CaptionFont", 0x6803001C, "(): Font"},
                {"get", "SmCaptionFont", 0x68030020, "(): Font"},
                {"get", "MenuFont", 0x68030024, "(): Font"},
                {"get", "StatusFont", 0x68030028, "(): Font"},
                {"get", "MessageFont", 0x6803002C, "(): Font"},
            }};
}

GoldenInterface SysTray() {
    return {"_KWOSysTray",
            {
                {"method", "Create", 0x6003001C,
                 "(hWndToSubclass: ref Long, IconA: ref Picture, ToolTip: ref String): Boolean"},
                {"method", "Destroy", 0x60030020, "()"},
                {"get", "Tip", 0x68030024, "(): String"},
                {"let", "Tip", 0x68030024, "() = ref String"},
                {"get", "Icon", 0x6803002C, "(): Picture"},
                {"set", "Icon", 0x6803002C, "() = Picture"},
                {"get", "DoubleClickMsg", 0x68030034, "(Button: ref Integer): Long"},
                {"get", "MouseDownMsg", 0x68030038, "(Button: ref Integer): Long"},
                {"get", "MouseUpMsg", 0x6803003C, "(Button: ref Integer): Long"},
            }};
}

// The 71 metrics: identifiers go up by 4 from the first one, in this order.
GoldenInterface SysMetrics() {
    constexpr const char* kDimension = "(ScaleMode: opt ref Variant): Long";
    constexpr const char* kFlag = "(): Boolean";
    constexpr const char* kCount = "(): Integer";
    constexpr const char* kRaw = "(): Long";
    static constexpr std::pair<const char*, const char*> kMetrics[] = {
        {"ScreenX", kDimension},
        {"ScreenY", kDimension},
        {"VScrollX", kDimension},
        {"HScrollY", kDimension},
        {"BorderX", kDimension},
        {"BorderY", kDimension},
        {"DialogFrameX", kDimension},
        {"DialogFrameY", kDimension},
        {"VScrollThumbY", kDimension},
        {"HScrollThumbX", kDimension},
        {"IconX", kDimension},
        {"IconY", kDimension},
        {"CursorX", kDimension},
        {"CursorY", kDimension},
        {"FullScreenWindowX", kDimension},
        {"FullScreenWindowY", kDimension},
        {"WindowMinX", kDimension},
        {"WindowMinY", kDimension},
        {"WindowBtnX", kDimension},
        {"WindowBtnY", kDimension},
        {"FrameX", kDimension},
        {"FrameY", kDimension},
        {"MinTrackX", kDimension},
        {"MinTrackY", kDimension},
        {"DoubleClickX", kDimension},
        {"DoubleClickY", kDimension},
        {"IconSpacingX", kDimension},
        {"IconSpacingY", kDimension},
        {"DragX", kDimension},
        {"DragY", kDimension},
        {"Edge3DX", kDimension},
        {"Edge3DY", kDimension},
        {"FixedFrameX", kDimension},
        {"FixedFrameY", kDimension},
        {"MaximizedX", kDimension},
        {"MaximizedY", kDimension},
        {"MaxTrackX", kDimension},
        {"MaxTrackY", kDimension},
        {"MenuCheckX", kDimension},
        {"MenuCheckY", kDimension},
        {"MenuSizeX", kDimension},
        {"MenuSizeY", kDimension},
        {"MinimizedX", kDimension},
        {"MinimizedY", kDimension},
        {"MinSpacingX", kDimension},
        {"MinSpacingY", kDimension},
        {"SizeFrameX", kDimension},
        {"SizeFrameY", kDimension},
        {"SmallIconX", kDimension},
        {"SmallIconY", kDimension},
        {"SmallBtnX", kDimension},
        {"SmallBtnY", kDimension},
        {"DebugVersion", kFlag},
        {"SwapButtons", kFlag},
        {"SingleMenuBarY", kDimension},
        {"VScrollArrowY", kDimension},
        {"HScrollArrowX", kDimension},
        {"KanjiWindowY", kDimension},
        {"MousePresent", kFlag},
        {"CaptionAreaY", kDimension},
        {"SmallCaptionAreaY", kDimension},
        {"MenuDropRightAligned", kFlag},
        {"PenWindows", kFlag},
        {"DBCSEnabled", kFlag},
        {"MouseButtons", kCount},
        {"Arrange", kRaw},
        {"CleanBoot", kCount},
        {"MidEastEnabled", kFlag},
        {"Network", kFlag},
        {"Secure", kFlag},
        {"SlowMachine", kFlag},
    };
    static_assert(std::size(kMetrics) == 71);
    GoldenInterface metrics = {"_KWOSysMetrics",
                               {
                                   {"get", "ScaleMode", 0x6803001C, "(): Integer"},
                                   {"let", "ScaleMode", 0x6803001C, "() = ref Integer"},
                               }};
    unsigned id = 0x60030024;
    for (const auto& [name, signature] : kMetrics) {
        metrics.members.push_back({"method", name, id, signature});
        id += 4;
    }
    return metrics;
}

GoldenInterface MonthView() {
    constexpr const char* kMouse = "(Button: ref Integer, Shift: ref Variant, X: ref Single, Y: ref Single)";
    constexpr const char* kSister = "Called by control's sister event";
    constexpr const char* kMinDate =
        "The smallest possible date that can be selected via the interface. Can override via SelDaysAdd";
    constexpr const char* kMaxDate =
        "The maximum possible date that can be selected via the interface. Can override via SelDaysAdd";
    return {
        "_KWOMonthView",
        {
            {"get", "CanSelect", 0x4003001C, "(): Boolean"},
            {"let", "CanSelect", 0x4003001C, "() = Boolean"},
            {"get", "MultiSelect", 0x40030024, "(): Boolean"},
            {"let", "MultiSelect", 0x40030024, "() = Boolean"},
            {"get", "CaptionFontBold", 0x4003002C, "(): Boolean"},
            {"let", "CaptionFontBold", 0x4003002C, "() = Boolean"},
            {"get", "DayHdrFontBold", 0x40030034, "(): Boolean"},
            {"let", "DayHdrFontBold", 0x40030034, "() = Boolean"},
            {"get", "DayFontBold", 0x4003003C, "(): Boolean"},
            {"let", "DayFontBold", 0x4003003C, "() = Boolean"},
            {"get", "SelDayFontBold", 0x40030044, "(): Boolean"},
            {"let", "SelDayFontBold", 0x40030044, "() = Boolean"},
            {"get", "CaptionFontColor", 0x4003004C, "(): Long"},
            {"let", "CaptionFontColor", 0x4003004C, "() = Long"},
            {"get", "DayHdrFontColor", 0x40030054, "(): Long"},
            {"let", "DayHdrFontColor", 0x40030054, "() = Long"},
            {"get", "DayFontColor", 0x4003005C, "(): Long"},
            {"let", "DayFontColor", 0x4003005C, "() = Long"},
            {"get", "SelDayFontColor", 0x40030064, "(): Long"},
            {"let", "SelDayFontColor", 0x40030064, "() = Long"},
            {"method", "ShowMonth", 0x6003006C, "(NewMonth: ref Integer, NewYear: ref Integer)"},
            {"method", "Create", 0x60030070,
             "(PictureBox: ref Object, FocusDate: ref Date, SelDate: opt ref Variant, "
             "CanMultiSelect: opt ref Variant, SpinInterval: opt ref Variant, NotifyOnChange: opt ref Variant, "
             "Control: opt ref Variant, CanChange: opt ref Variant): Boolean"},
            {"method", "MouseDown", 0x60030074, kMouse, kSister},
            {"method", "MouseMove", 0x60030078, kMouse, kSister},
            {"method", "MouseUp", 0x6003007C, kMouse, kSister},
            {"method", "DblClick", 0x60030080, "()", kSister},
            {"method", "Resize", 0x60030084, "()", kSister},
            {"method", "SelDaysAdd", 0x60030088, "(AddDate: ref Date)",
             "Adds the supplied date to the collection of selected days"},
            {"method", "SelDaysRemove", 0x6003008C, "(RemoveDate: ref Date)",
             "Removes the supplied date from the collection of selected days"},
            {"get", "SelDay", 0x68030090, "(): Date"},
            {"method", "SelDaysClear", 0x60030094, "()", "Empties the list of selected days"},
            {"get", "IsSelected", 0x68030098, "(SelDate: ref Date): Boolean", "True if the supplied date is selected"},
            {"get", "MinDate", 0x6803009C, "(): Date", kMinDate},
            {"let", "MinDate", 0x6803009C, "() = ref Date", kMinDate},
            {"get", "MaxDate", 0x680300A4, "(): Date", kMaxDate},
            {"let", "MaxDate", 0x680300A4, "() = ref Date", kMaxDate},
            {"get", "VisibleMonth", 0x680300AC, "(): Integer",
             "Returns the month number currently displayed in the control"},
            {"get", "VisibleYear", 0x680300B0, "(): Integer",
             "Returns the year number currently displayed in the control"},
            {"get", "CaptionBevel", 0x680300B4, "(): Integer"},
            {"let", "CaptionBevel", 0x680300B4, "() = ref Integer"},
            {"get", "DayHdrBevel", 0x680300BC, "(): Integer"},
            {"let", "DayHdrBevel", 0x680300BC, "() = ref Integer"},
            {"get", "DayBevel", 0x680300C4, "(): Integer"},
            {"let", "DayBevel", 0x680300C4, "() = ref Integer"},
            {"method", "KeyDown", 0x600300CC, "(KeyCode: ref Integer, Shift: ref Integer)"},
        }};
}

GoldenInterface Timer() {
    constexpr const char* kEnabled = "True if Tick events can be fired. Does not effect Alarm events.";
    constexpr const char* kAlarmEvents =
        "Set to a caller's interface which implements the IKWOAlarm interface to receive early bound Alarm events. "
        "Set to Nothing to receive late bound Alarm events.";
    constexpr const char* kTimerEvents =
        "Set to a caller's interface which implements the IKWOTimer interface to receive early bound Tick events. "
        "Set to Nothing to receive late bound Tick events.";
    constexpr const char* kInterval = "Specifies the interval in milliseconds to receive recurring Tick events.";
    return {"_KWOTimer",
            {
                {"get", "Item", 0x40030000, "(): Variant"},
                {"let", "Item", 0x40030000, "() = Variant"},
                {"set", "Item", 0x40030000, "() = Variant"},
                {"get", "ItemData", 0x40030001, "(): Long"},
                {"let", "ItemData", 0x40030001, "() = Long"},
                {"get", "Enabled", 0x68030003, "(): Boolean", kEnabled},
                {"let", "Enabled", 0x68030003, "() = ref Boolean", kEnabled},
                {"get", "AlarmEvents", 0x68030002, "(): IKWOAlarm", kAlarmEvents},
                {"set", "AlarmEvents", 0x68030002, "() = IKWOAlarm", kAlarmEvents},
                {"get", "TimerEvents", 0x68030001, "(): IKWOTimer", kTimerEvents},
                {"set", "TimerEvents", 0x68030001, "() = IKWOTimer", kTimerEvents},
                {"method", "AddAlarm", 0x60030004, "(DateTime: Date, ItemData: Long)"},
                {"get", "Interval", 0x68030000, "(): Long", kInterval},
                {"let", "Interval", 0x68030000, "() = Long", kInterval},
                {"hidden method", "TimerTick", 0x60030005,
                 "(TickType: opt ref TimerEventTypes, ItemData: opt ref Long, NewDateTime: opt ref Date)",
                 "Forces a Tick event. Used internally by the class."},
                {"method", "CancelTimers", 0x60030008,
                 "(TimerType: opt ref TimerEventTypes = 0, ItemData: opt ref Long = 0)"},
                {"method", "AddRelativeAlarm", 0x60030009, "(Interval: Long, ItemData: Long)"},
            }};
}

GoldenInterface TimerCallback() {
    return {"_IKWOTimer",
            {{"method", "Tick", 0x60030000, "(Timer: ref KWOTimer)",
              "Fired at the previously designated intervals (milliseconds)."}}};
}

GoldenInterface AlarmCallback() {
    return {"_IKWOAlarm",
            {{"method", "Alarm", 0x60030000, "(Timer: ref KWOTimer, AlarmData: ref Long, NewDateTime: ref Date)",
              "Fired once at the previously designated date/time."}}};
}

GoldenInterface TimerEvents() {
    return {"__KWOTimer",
            {
                {"event", "Tick", 1, "(Timer: KWOTimer)"},
                {"event", "Alarm", 2, "(Timer: KWOTimer, ItemData: ref Long, NewDateTime: ref Date)"},
            }};
}

}  // namespace

const GoldenLibrary& Golden() {
    static const GoldenLibrary library = {
        "KWOUtil",
        4,
        5,
        "KWO General and Common Utilities",
        {Registry(), Utility(), SplitterV(), PicBtn(), SysParams(), SysTray(), SysMetrics(), MonthView(), Timer(),
         TimerCallback(), AlarmCallback()},
        {TimerEvents()},
        {
            {"TimerEventTypes", {{"TimerEvent", 1}, {"AlarmEvent", 2}}},
            {"TimerErrors", {{"CantCreateTimer", -2147191504}}},
        },
        {
            {"KWORegistry", "_KWORegistry", ""},
            {"KWOUtility", "_KWOUtility", ""},
            {"KWOSplitterV", "_KWOSplitterV", ""},
            {"KWOPicBtn", "_KWOPicBtn", ""},
            {"KWOSysParams", "_KWOSysParams", ""},
            {"KWOSysTray", "_KWOSysTray", ""},
            {"KWOSysMetrics", "_KWOSysMetrics", ""},
            {"KWOMonthView", "_KWOMonthView", ""},
            {"KWOTimer", "_KWOTimer", "__KWOTimer"},
            {"IKWOTimer", "_IKWOTimer", ""},
            {"IKWOAlarm", "_IKWOAlarm", ""},
        },
    };
    return library;
}

std::string Line(const GoldenMember& member) {
    char id[16];
    std::snprintf(id, sizeof id, "0x%08X", member.id);
    std::string line = std::string(id) + ' ' + member.kind + ' ' + member.name + member.signature;
    if (*member.help != '\0') line += std::string(" \"") + member.help + '"';
    return line;
}

}  // namespace kwo::com_test
