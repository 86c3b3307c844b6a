// An error of the script's own that nobody catches is told with its own number.
// expect-exit: 1
// expect-error: kwohost_uncaught\.js\(18, [0-9]+\): 77 \(0x800A004D\): the reason$
var checks = 0;
function check(name, good) {
    checks++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}
var own = new Error(78, "another");
check("its number", own.number == 78 && own.description == "another");
check("its kind", own instanceof Error && new TypeError("x") instanceof Error && own.constructor == Error);
check("a text alone", new Error("y").message == "y" && Error("z").message == "z" && new Error().message == "");
WScript.Echo("done " + checks);

function fail() {
    own = new Error(79, "not thrown");
    // The line below is the one to tell.
    throw new Error(77, "the reason");
}
fail();
