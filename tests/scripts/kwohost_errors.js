// Errors of handlers and callbacks of JScript, on their way through the timer to the code that waits for it.
var checks = 0;
function check(name, good) {
    checks++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}
function raised(action) {
    try {
        action();
    } catch (e) {
        return e;
    }
    return { number: 0 };
}
function numberOf(action) {
    return raised(action).number & 0xFFFF;
}

function clock_Tick(sender) {
    throw new Error(0x800A0000 + 78 | 0, "the handler fails");
}
var clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock");
check("the number of a handler's error", numberOf(function () { clock.TimerTick(1); }) == 78);
clock.TimerEvents = { Tick: function (sender) { throw new Error(0x800A0000 + 77 | 0, "the callback fails"); } };
var error = raised(function () { clock.TimerTick(1); });
check("the number of a callback's error", (error.number & 0xFFFF) == 77);
check("its description", error.description == "the callback fails");
// Wine answers the timer with E_FAIL for a number that is no HRESULT.
clock.TimerEvents = { Tick: function (sender) { throw new Error(77, "a small number"); } };
error = raised(function () { clock.TimerTick(1); });
check("a small number", error.number == -2147467259 || (error.number & 0xFFFF) == 77);
check("the description of its error", error.description == "a small number");
clock.TimerEvents = null;
WScript.Sleep(0);
WScript.Echo("done " + checks);
