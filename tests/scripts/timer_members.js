// The timer class as a JScript author uses it.
var checks = 0;
function Check(name, good) {
    checks++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}

var told = "";
function my_Tick(sender) {
    told += "t";
    if (told.length >= 3) sender.Enabled = false;
}
function my_Alarm(sender, tag, newDateTime) {
    told += tag;
}
function waitFor(text) {
    for (var turns = 0; turns < 400 && told.indexOf(text) < 0; turns++) WScript.Sleep(20);
}

var timer = WScript.CreateObject("KWOUtil.KWOTimer", "my_");
timer.Interval = 20;
timer.Enabled = true;
waitFor("ttt");
Check("ticks come as events", told == "ttt");
Check("the handler has switched it off", timer.Enabled === false);

told = "";
timer.AddRelativeAlarm(20, 4);
waitFor("4");
Check("alarms come as events", told == "4");

told = "";
var listener = { Tick: function (sender) { told += "l" + sender.Interval; } };
timer.TimerEvents = listener;
timer.AlarmEvents = { Alarm: function (sender, tag, newDateTime) { told += "a" + tag; } };
timer.TimerTick(1);
timer.TimerTick(2, 6);
Check("any object with the function is called", told == "l20a6");
Check("and reads back as itself", timer.TimerEvents === listener);

timer.TimerEvents = null;
told = "";
timer.TimerTick(1);
Check("null brings the event back", told == "t");

var failure = null;
try {
    timer.TimerEvents = { Tock: function () { } };
} catch (e) {
    failure = e;
}
Check("an object without the function is refused", failure !== null && (failure.number & 0xFFFF) == 13);

timer.Item = listener;
Check("Item keeps an object", timer.Item === listener);
timer.CancelTimers();
Check("cancelling everything lets the callback objects go", timer.AlarmEvents == null);

WScript.Echo("done " + checks);
