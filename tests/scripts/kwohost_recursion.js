// expect-exit: 1
// expect-error: kwohost_recursion\.js\([0-9]+, [0-9]+\): 28 \(0x800A001C\) .*stack
var checks = 0;
function check(name, good) {
    checks++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}

function endless() {
    endless();
}
check("before the recursion", true);
WScript.Echo("done " + checks);
endless();
