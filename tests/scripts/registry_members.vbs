' The registry class as a VBScript author uses it.
Option Explicit

Dim checks
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Const CurrentUser = &H80000001
Const KeyName = "Software\KWOUtilScriptTest"
Dim registry, value, key, i
Set registry = CreateObject("KWOUtil.KWORegistry")
registry.KWO_RegDeleteKey CurrentUser, KeyName

Check "a value is written", registry.KWO_RegSetValue(CurrentUser, KeyName, "v", "text ") = 0
Check "it is read into an empty variable", registry.KWO_RegGetValue(CurrentUser, KeyName, "v", value) = 0
Check "without its trailing blank, as text", TypeName(value) = "String" And value = "text"
value = 5
Check "it is read into a numeric variable", registry.KWO_RegGetValue(CurrentUser, KeyName, "v", value) = 0 And value = "text"
Check "a missing value is status 2 and empty", registry.KWO_RegGetValue(CurrentUser, KeyName, "none", value) = 2 And value = ""
Check "an empty value reads back empty", registry.KWO_RegSetValue(CurrentUser, KeyName, "e", "") = 0 And registry.KWO_RegGetValue(CurrentUser, KeyName, "e", value) = 0 And value = ""

key = registry.KWO_RegCreateKey(CurrentUser, KeyName)
Check "a key is a 32-bit number", TypeName(key) = "Long" And key <> 0
Check "and a root of further calls", registry.KWO_RegSetValue(key, "Below", "n", "1") = 0
Check "text as the default", registry.KWO_RegGetValueEx(key, "v", "d") = "text"
Check "a blank is an empty text", registry.KWO_RegGetValueEx(key, "e", "d") = ""
Check "the default when there is none", registry.KWO_RegGetValueEx(key, "none", 42) = 42
Check "an empty default comes back empty", IsEmpty(registry.KWO_RegGetValueEx(key, "v", Empty))
Check "a null default comes back null", IsNull(registry.KWO_RegGetValueEx(key, "v", Null))
Check "an object as default comes back itself", registry.KWO_RegGetValueEx(key, "v", registry) Is registry
value = registry.KWO_RegGetValueEx(key, "v", Array(1, 2, 3))
Check "an array as default comes back", UBound(value) = 2
registry.KWO_RegSetValue key, "", "d", "0"
Check "0 is the first automation date", registry.KWO_RegGetValueEx(key, "d", Now) = CDate(0)
value = String(5000, "x")
registry.KWO_RegSetValue key, "", "long", value
Check "a long text is read whole", registry.KWO_RegGetValueEx(key, "long", "") = value
Check "and is more data for the shorter way", registry.KWO_RegGetValue(CurrentUser, KeyName, "long", value) = 234 And value = ""

Check "a key with keys below is not deleted", registry.KWO_RegDeleteKey(CurrentUser, KeyName) <> 0
Check "a key below is", registry.KWO_RegDeleteKey(key, "Below") = 0
Check "a value is deleted", registry.KWO_RegDeleteValue(CurrentUser, KeyName, "v") = 0
Check "once", registry.KWO_RegDeleteValue(CurrentUser, KeyName, "v") = 2
Check "a key is deleted", registry.KWO_RegDeleteKey(CurrentUser, KeyName) = 0
Check "a deleted key cannot be read", registry.KWO_RegGetValueEx(key, "e", "gone") = "gone"
Check "nor a closed or zero one", registry.KWO_RegGetValueEx(0, "e", "gone") = "gone"
Check "a root that is none is an invalid handle", registry.KWO_RegDeleteKey(0, KeyName) = 6

WScript.Echo "done " & checks
