// expect-output: ^one 2 3\.5 true false null undefined €$
// expect-output: ^1,2 \[object Object\]$
var checks = 1;
WScript.Echo("one", 2, 3.5, true, false, null, undefined, "\u20ac");
WScript.Echo([1, 2], {});
WScript.StdOut.WriteLine("ok standard output");
WScript.Echo("done " + checks);
