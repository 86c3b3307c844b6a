// expect-exit: 1
// expect-error: kwohost_runtime_error\.js\(12, [0-9]+\): 5009 \(0x800A1391\) [^:]+: .*missing.*
var checks = 0;
function check(name, good) {
    checks++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}


check("before the error", true);
WScript.Echo("done " + checks);
missing.member();
WScript.Echo("not ok goes on after an error");
