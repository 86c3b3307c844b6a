// Errors of handlers and callbacks of JScript, on their way through the timer to the code that waits for it.
var checks = 0;
function check(name, good) {
    checks++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}
function numberOf(action) {
    try {
        action();
    } catch (e) {
        return e.number & 0xFFFF;
    }
    return 0;
}

function clock_Tick(sender) {
    throw new Error(0x800A0000 + 78 | 0, "the handler fails");
}
var clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock");
check("the number of a handler's error", numberOf(function () { clock.TimerTick(1); }) == 78);
clock.TimerEvents = { Tick: function (sender) { throw new Error(0x800A0000 + 77 | 0, "the callback fails"); } };
check("the number of a callback's error", numberOf(function () { clock.TimerTick(1); }) == 77);
clock.TimerEvents = null;
WScript.Sleep(50);
WScript.Echo("done " + checks);
