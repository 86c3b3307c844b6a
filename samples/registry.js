// The registry class from JScript. The language does not receive by-reference results, so read values with
// KWO_RegGetValueEx, whose result is the value.
var currentUser = 0x80000001;
var keyName = "Software\\KWOUtil Sample";
var registry = new ActiveXObject("KWOUtil.KWORegistry");

var key = registry.KWO_RegCreateKey(currentUser, keyName);
WScript.Echo("KWO_RegSetValue: status " + registry.KWO_RegSetValue(key, "", "Greeting", "Hello from JScript"));
WScript.Echo("KWO_RegGetValueEx: " + registry.KWO_RegGetValueEx(key, "Greeting", "(none)"));
WScript.Echo("a missing value: " + registry.KWO_RegGetValueEx(key, "Missing", "(none)"));
WScript.Echo("KWO_RegDeleteValue: status " + registry.KWO_RegDeleteValue(currentUser, keyName, "Greeting"));
WScript.Echo("KWO_RegDeleteKey: status " + registry.KWO_RegDeleteKey(currentUser, keyName));
