// The registry class as a JScript author uses it: roots are unsigned numbers there, and nothing comes back by reference.
var checks = 0;
function check(name, good) {
    checks++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}

var currentUser = 0x80000001;
var keyName = "Software\\KWOUtilScriptTestJ";
var registry = new ActiveXObject("KWOUtil.KWORegistry");

var key = registry.KWO_RegCreateKey(currentUser, keyName);
check("an unsigned root is taken", key !== 0);
check("a value is written", registry.KWO_RegSetValue(currentUser, keyName, "v", "text") === 0);
check("and read", registry.KWO_RegGetValueEx(key, "v", "") === "text");
var before = "untouched";
check("a value passed by value is read for its status", registry.KWO_RegGetValue(currentUser, keyName, "v", before) === 0);
check("names have any case", registry.kwo_regdeletevalue(currentUser, keyName, "v") === 0);
check("a number as the default", registry.KWO_RegGetValueEx(key, "v", 2.5) === 2.5);
check("a key is deleted", registry.KWO_RegDeleteKey(currentUser, keyName) === 0);
check("a missing key is status 2", registry.KWO_RegDeleteKey(currentUser, keyName) === 2);

WScript.Echo("done " + checks);
