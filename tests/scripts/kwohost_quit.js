// expect-exit: 3
var checks = 0;
function check(name, good) {
    checks++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}

check("before the end", true);
WScript.Echo("done " + checks);
try {
    WScript.Quit(3);
} catch (error) {
    WScript.Echo("not ok Quit can be caught");
} finally {
    WScript.Echo("not ok finally runs after Quit");
}
