// expect-output: ^one 2 3\.5 true false null undefined €$
// expect-output: ^1,2 \[object Object\]$
// expect-output: ^0\.3333333333333333 1e\+21 NaN -Infinity$
var checks = 1;
WScript.Echo("one", 2, 3.5, true, false, null, undefined, "\u20ac");
WScript.Echo([1, 2], {});
WScript.Echo(1 / 3, 1e21, NaN, -Infinity);
WScript.StdOut.WriteLine("ok standard output");
WScript.Echo("done " + checks);
