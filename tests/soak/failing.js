// Handlers and callbacks that throw. An error ends the tick or alarm that it belongs to, so each comes once.
// Wine's ActiveXObject never releases the class object, so WScript makes the objects.
var ticks = 0, alarms = 0, calledTicks = 0, calledAlarms = 0, direct = 0;
var clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock");
var called = WScript.CreateObject("KWOUtil.KWOTimer");
var plain = WScript.CreateObject("KWOUtil.KWOMonthView");

function clock_Tick(sender) {
    ticks++;
    throw new Error("the tick fails");
}
function clock_Alarm(sender, tag, newDateTime) {
    alarms++;
    throw new Error("the alarm fails");
}
var listener = {
    Tick: function (sender) {
        calledTicks++;
        throw new Error("the called tick fails");
    },
    Alarm: function (sender, tag, newDateTime) {
        calledAlarms++;
        throw new Error("the called alarm fails");
    }
};

clock.Interval = 40;
clock.Enabled = true;
clock.AddRelativeAlarm(90, 1);
called.TimerEvents = listener;
called.AlarmEvents = listener;
called.Interval = 40;
called.Enabled = true;
called.AddRelativeAlarm(90, 2);

// An error of a member, caught by the script.
try {
    plain.ShowMonth(1, 2026);
} catch (error) {
    direct++;
}

function Said() {
    return "tick " + ticks + ", alarm " + alarms + ", called tick " + calledTicks + ", called alarm " + calledAlarms + ", direct " + direct;
}
function Finish() {
    clock.CancelTimers();
    called.CancelTimers();
    clock = called = plain = listener = null;
    CollectGarbage();
}
