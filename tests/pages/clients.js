// The JScript example of docs/clients.md.
var count = 0;
function check(name, good) {
    count++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}
var before = new ActiveXObject("KWOUtil.KWORegistry");
before.KWO_RegSetValue(0x80000001, "Software\\My Program", "Greeting", "Hello");

//@example

check("read as a result", greeting == "Hello");
before.KWO_RegDeleteKey(0x80000001, "Software\\My Program");
WScript.Echo("done " + count);
