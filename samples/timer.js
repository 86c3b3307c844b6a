// Ticks and an alarm of KWOUtil.KWOTimer, as events and by plain objects of the script.
var ticks = 0;
var timer = WScript.CreateObject("KWOUtil.KWOTimer", "timer");

// The event "Tick" of an object with the prefix "timer" calls this function.
function timer_Tick(sender) {
    ticks++;
    WScript.Echo("tick " + ticks);
    if (ticks == 3) sender.Enabled = false;
}

timer.Interval = 100;
timer.Enabled = true;
WScript.Sleep(600);

// Any object with a function of that name is a callback object.
timer.TimerEvents = {
    Tick: function (sender) {
        WScript.Echo("called back; the interval is " + sender.Interval + " milliseconds");
        sender.CancelTimers();
    }
};
timer.AlarmEvents = {
    Alarm: function (sender, tag) {
        WScript.Echo("alarm " + tag);
    }
};
timer.AddRelativeAlarm(50, 7);
timer.Enabled = true;
WScript.Sleep(600);
WScript.Echo("no callback objects any more: " + (timer.TimerEvents == null && timer.AlarmEvents == null));
