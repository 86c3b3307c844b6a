// The example of docs/javascript.md, and what the page says of dates, arguments by reference and errors.
// expect-output: ^alarm 7$
// expect-output: ^13 Type mismatch$
var count = 0;
function check(name, good) {
    count++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}
function raised(action) {
    try {
        action();
    } catch (error) {
        return error;
    }
    return null;
}
function hexOf(error) {
    return error === null ? "none" : (error.number >>> 0).toString(16);
}

//@example

check("snoozed twice", snoozed == 3);

// Waits until it is so, or much too long.
function waitFor(isSo) {
    for (var turns = 0; turns < 400 && !isSo(); turns++) WScript.Sleep(20);
}

// Dates.
var registry = new ActiveXObject("KWOUtil.KWORegistry");
var calendar = new ActiveXObject("KWOUtil.KWOMonthView");
calendar.MaxDate = days(new Date(2024, 6, 29));
var back = new Date(calendar.MaxDate);
check("a number of days, and the date that comes back", back.getTime() == new Date(2024, 6, 29).getTime());
var root = 0x80000001;
var path = "Software\\My Program";
var key = registry.KWO_RegCreateKey(root, path);
registry.KWO_RegSetValue(key, "", "When", "2024-07-29 13:30:15");
back = new Date(registry.KWO_RegGetValueEx(key, "When", calendar.MaxDate));
check("a date with a time", back.getTime() == new Date(2024, 6, 29, 13, 30, 15).getTime());
clock.Item = registry.KWO_RegGetValueEx(key, "When", calendar.MaxDate);
check("a date that is passed on", new Date(clock.Item).getTime() == back.getTime());
check("a number as default", typeof registry.KWO_RegGetValueEx(key, "When", days(back)) == "number");
check("a text", raised(function () { clock.AddAlarm("2030-01-31 07:30", 9); }) === null);
check("a Date", hexOf(raised(function () { clock.AddAlarm(new Date(2030, 0, 31), 9); })) == "80020005");
var heard = 0;
clock.AlarmEvents = { Alarm: function (sender, tag, newDateTime) { heard = new Date(newDateTime).getTime(); } };
clock.TimerTick(2, 7, days(back));
check("a date that a handler receives", heard == back.getTime());
check("what Wine cannot do with a date", hexOf(raised(function () { return typeof clock.Item; })) == "80004001" &&
    hexOf(raised(function () { if (clock.Item) heard = 0; })) == "80004001");

// By reference.
registry.KWO_RegSetValue(root, path, "Greeting", "Hello");
var value = "before";
check("no text by reference", registry.KWO_RegGetValue(root, path, "Greeting", value) == 0 && value == "before");
registry.KWO_RegDeleteKey(root, path);
var alarms = 0;
var isOver = false;
clock.AlarmEvents = {
    Alarm: function (sender, tag, newDateTime) {
        if (tag == 9) return isOver = true;
        alarms++;
        newDateTime = days(new Date());
        sender.AddRelativeAlarm(1500, 9);       // by then it would have come again, after a second
    }
};
clock.AddRelativeAlarm(10, 7);
waitFor(function () { return isOver; });
check("an alarm does not come again by its argument", isOver && alarms == 1);

// A calendar whose form refuses every day.
var frmMain = Host.CreateForm("frmMain");
frmMain.Move(3000, 2000, 6000, 6000);
var picMonth = frmMain.AddControl("PictureBox", "picMonth");
picMonth.Move(150, 150, 4000, 3600);
picMonth.TabStop = true;
var asked = 0;
function frmMain_OnChangeDate(pictureBox, newDate, cancel) { asked++; cancel = true; }
calendar = new ActiveXObject("KWOUtil.KWOMonthView");
calendar.Create(picMonth, days(new Date(2026, 10, 2)), days(new Date(2026, 10, 2)), false, 150, true, frmMain, true);
frmMain.Show();
var enter = 13;
calendar.SelDaysClear();
calendar.KeyDown(enter, 0);
check("it is asked", asked == 1);
check("it cannot refuse", calendar.IsSelected(days(new Date(2026, 10, 2))));
check("the key is not used up", enter == 13);
var button = new ActiveXObject("KWOUtil.KWOPicBtn");
button.Create(picMonth, "&Save");
function frmMain_OnButtonClick(pictureBox) { }
check("the button says whether it was its key", button.Form_KeyDown(83, 4) && !button.Form_KeyDown(84, 4));
frmMain.Close();

// Calls.
var utility = new ActiveXObject("KWOUtil.KWOUtility");
check("an argument left out", utility.KWO_WindowsDir(true) == utility.KWO_WindowsDir() + "\\");
var metrics = new ActiveXObject("KWOUtil.KWOSysMetrics");
check("a method", metrics.ScreenX() > 0);
check("a method without parentheses", hexOf(raised(function () { return metrics.ScreenX; })) == "80020003");
check("a property", metrics.ScaleMode == 3);
check("a property with parentheses", hexOf(raised(function () { return metrics.ScaleMode(); })) == "80020003");
check("no callback object", hexOf(raised(function () { clock.AlarmEvents = {}; })) == "800a000d");
var listener = { Alarm: function () { } };
clock.AlarmEvents = listener;
check("the same callback object", clock.AlarmEvents === listener);
clock.AlarmEvents = null;
check("none", clock.AlarmEvents === null);

tray = new ActiveXObject("KWOUtil.KWOSysTray");
check("a property with an argument", tray.MouseUpMsg(1) == 514);
check("without its argument", hexOf(raised(function () { return tray.MouseUpMsg; })) == "8002000e");
var frmTray = Host.CreateForm("frmTray");
var other = Host.LoadPicture("kwoutil.ico");
tray.Create(frmTray.hWnd, Host.LoadPicture("kwoutil.ico"), "");
tray.Icon = other;
check("a picture is assigned", tray.Icon.Handle == other.Handle);
tray.Destroy();
frmTray.Close();

// Errors.
var error = raised(function () { utility.KWO_Pause(50); });
check("the number", error.number == -2146828282 && numberOf(error) == 6);
check("the description", error.description == "Overflow" && error.message == "Overflow");
check("no source", typeof error.source == "undefined");
check("another HRESULT", numberOf({ number: -2147191504 }) == -2147191504 && numberOf({ number: -5 }) == -5);
check("an unknown member", numberOf(raised(function () { registry.NoSuchMember(); })) == 438);
check("a member that is read only", hexOf(raised(function () { utility.KWO_IsWinNT = true; })) == "80020003");
check("too few arguments", hexOf(raised(function () { registry.KWO_RegDeleteKey(); })) == "8002000e");
check("too many arguments", hexOf(raised(function () { registry.KWO_RegDeleteKey(1, "", 3, 4); })) == "8002000e");
check("a wrong type", hexOf(raised(function () { registry.KWO_RegDeleteKey("none", ""); })) == "80020005");
check("a number out of range", hexOf(raised(function () { registry.KWO_RegDeleteKey(1e20, ""); })) == "8002000a");
check("no description", raised(function () { registry.KWO_RegDeleteKey(); }).description == "");
check("an unknown class", numberOf(raised(function () { new ActiveXObject("KWOUtil.NoSuchClass"); })) == 429);
clock.CancelTimers();
WScript.Echo("done " + count);
