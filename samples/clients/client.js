// KWOUtil from JScript, under any script host:
//
//   kwohost client.js
//   cscript client.js
//
// Bitness: that of the host. 64-bit Windows has two: System32\cscript.exe is 64-bit, SysWOW64\cscript.exe is 32-bit.
var currentUser = 0x80000001;
var keyName = "Software\\KWOUtil Client";
var registry = new ActiveXObject("KWOUtil.KWORegistry");
var timer = new ActiveXObject("KWOUtil.KWOTimer");
var utility = new ActiveXObject("KWOUtil.KWOUtility");

function twoDigits(number) {
    return (number < 10 ? "0" : "") + number;
}

function dateText(moment) {
    return moment.getFullYear() + "-" + twoDigits(moment.getMonth() + 1) + "-" + twoDigits(moment.getDate()) + " " +
        twoDigits(moment.getHours()) + ":" + twoDigits(moment.getMinutes()) + ":" + twoDigits(moment.getSeconds());
}

function dateOf(text) {
    var parts = /^(\d+)-(\d+)-(\d+) (\d+):(\d+):(\d+)$/.exec(text);
    return new Date(parts[1], parts[2] - 1, parts[3], parts[4], parts[5], parts[6]);
}

// JScript receives no by-reference result, so read with KWO_RegGetValueEx, whose result is the value.
var key = registry.KWO_RegCreateKey(currentUser, keyName);
registry.KWO_RegSetValue(key, "", "Greeting", "Hello");
WScript.Echo("by reference: " + registry.KWO_RegGetValueEx(key, "Greeting", "(none)"));

// A date: a text in a form of your own is read alike in every locale.
registry.KWO_RegSetValue(key, "", "When", dateText(new Date(2024, 1, 29, 13, 30, 0)));
var moment = dateOf(registry.KWO_RegGetValueEx(key, "When", ""));
WScript.Echo("date: " + dateText(moment));
registry.KWO_RegDeleteKey(currentUser, keyName);

// A callback object is any object with a function of this name. Alarms arrive while messages are processed; KWO_Pause
// processes them, here for 300 milliseconds.
timer.AlarmEvents = {
    Alarm: function (sender, tag, newDateTime) {
        WScript.Echo("event: alarm " + tag);
    }
};
timer.AddRelativeAlarm(50, 7);
utility.KWO_Pause(300);

// An error: this member refuses the seconds from 33 to 99. The number is in the lower half of an HRESULT, and JScript
// does not tell the source.
try {
    utility.KWO_Pause(50);
} catch (error) {
    WScript.Echo("error: " + (error.number & 0xFFFF));
    WScript.Echo("description: " + error.description);
}
