// arguments: first 'second word'
var checks = 0;
function check(name, good) {
    checks++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}

var words = "";
for (var e = new Enumerator(WScript.Arguments); !e.atEnd(); e.moveNext()) words += "[" + e.item() + "]";
check("enumerator", words == "[first][second word]");
check("arguments as a function", WScript.Arguments(1) == "second word");
check("item", WScript.Arguments.Item(0) == "first");
check("length", WScript.Arguments.length == 2);
check("script name", WScript.ScriptName == "kwohost_objects.js");
var dictionary = new ActiveXObject("Scripting.Dictionary");
dictionary.Add("a", 1);
check("new ActiveXObject", dictionary.Count == 1);
check("create object", WScript.CreateObject("Scripting.Dictionary").Count == 0);
function errorOf(action) {
    try {
        action();
    } catch (error) {
        return error.number & 0xFFFF;
    }
    return 0;
}
check("unknown member", errorOf(function () { WScript.Unknown(); }) == 438);
check("no such class", errorOf(function () { WScript.CreateObject("No.SuchClass"); }) == 429);
check("index behind the last", errorOf(function () { WScript.Arguments(2); }) == 9);
WScript.Echo("done " + checks);
