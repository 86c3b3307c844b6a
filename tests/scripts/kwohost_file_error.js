// An error of another component, which the engine of Wine has no text for, is told with its usual text.
// expect-exit: 1
// expect-error: kwohost_file_error\.js\(9, [0-9]+\): 53 \(0x800A0035\).*: File not found$
var files = new ActiveXObject("Scripting.FileSystemObject");
var missing = files.BuildPath(files.GetSpecialFolder(2), "no such file");
WScript.Echo((files.FileExists(missing) ? "not ok " : "ok ") + "there is no such file");
WScript.Echo("done 1");
// Nobody catches it.
files.GetFile(missing);
