// Watches files, and tells in a window and by an icon beside the clock when one of them changes.
//
//     kwohost watch.js FILE...        without a file it watches itself: change this text and save it
//
// The minimised window is only the icon; a double click on it brings the window back.

// ---- what is known of each file: a text that changes when the file does ----
var files = new ActiveXObject("Scripting.FileSystemObject");
var known = {};

function stateOf(path) {
    if (!files.FileExists(path)) return "missing";
    var file = files.GetFile(path);
    return file.Size + " bytes, " + new Date(file.DateLastModified).toLocaleString();
}
function readArguments() {
    for (var i = 0; i < WScript.Arguments.length; i++) known[files.GetAbsolutePathName(WScript.Arguments(i))] = "";
    if (WScript.Arguments.length == 0) known[WScript.ScriptFullName] = "";
    for (var path in known) known[path] = stateOf(path);
}
// Returns how many files have changed since the last call.
function look() {
    var changes = 0;
    for (var path in known) {
        var state = stateOf(path);
        if (state == known[path]) continue;
        known[path] = state;
        changes++;
        lstNews.AddItem(new Date().toLocaleTimeString() + "  " + files.GetFileName(path) + ": " + state);
    }
    return changes;
}

// ---- the timer: it ticks twice a second, and an alarm tells when nothing has happened for a minute ----
var quietMs = 60000, quiet = 1;
var clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock");

// A tick whose handler fails is cancelled, and a file that another program writes just now can fail. So every error ends
// here, and the next tick looks again.
function clock_Tick(sender) {
    try {
        var changes = look();
    } catch (error) {
        lblState.Caption = error.message;
        return;
    }
    if (changes == 0) return;
    tell(changes + (changes == 1 ? " change" : " changes"));
    lstNews.ListIndex = lstNews.ListCount - 1;
    clock.AddRelativeAlarm(quietMs, quiet);     // takes the place of the alarm before
}
// JScript cannot assign to newDateTime. An alarm that shall come again is added again.
function clock_Alarm(sender, tag, newDateTime) {
    tell("nothing new since " + new Date(new Date() - quietMs).toLocaleTimeString());
    sender.AddRelativeAlarm(quietMs, tag);
}
function tell(text) {
    lblState.Caption = text;
    tray.Tip = "Watch: " + text;
}

// ---- the window ----
function add(kind, name, left, top, width, height) {
    var control = form.AddControl(kind, name);
    control.Move(left, top, width, height);
    return control;
}
var form = Host.CreateForm("frmWatch");
form.Caption = "Watch";
form.Move(1500, 1200, 7500, 3600);
var lstNews = add("ListBox", "lstNews", 120, 120, 7140, 2250);
var lblState = add("Label", "lblState", 120, 2520, 3300, 300);
var chkPause = add("CheckBox", "chkPause", 3600, 2490, 1200, 330);
var cmdClear = add("CommandButton", "cmdClear", 4860, 2460, 1140, 390);
var cmdExit = add("CommandButton", "cmdExit", 6120, 2460, 1140, 390);
chkPause.Caption = "&Pause";
cmdClear.Caption = "&Clear";
cmdExit.Caption = "E&xit";
cmdExit.Cancel = true;                          // Esc presses it

// The event Click of the control chkPause calls this function.
function chkPause_Click() {
    clock.Enabled = chkPause.Value == 0;
    tell(clock.Enabled ? "watching" : "paused");
}
function cmdClear_Click() {
    lstNews.Clear();
}
function cmdExit_Click() {
    form.Close();
}
function frmWatch_Resize() {
    if (form.WindowState == 1) form.Hide();
}
function frmWatch_Unload() {
    Host.Stop();
}

// ---- the icon: what the mouse does on it arrives as a movement of a form of its own, which is never shown ----
var frmTray = Host.CreateForm("frmTray");
var tray = new ActiveXObject("KWOUtil.KWOSysTray");
function frmTray_MouseMove(button, shift, x, y) {
    if (Math.round(x / Screen.TwipsPerPixelX) != tray.DoubleClickMsg(1)) return;
    form.WindowState = 0;
    form.Show();
}

readArguments();
tray.Create(frmTray.hWnd, Host.LoadPicture(WScript.ScriptFullName.replace(WScript.ScriptName, "kwoutil.ico")), "Watch");
tell("watching");
clock.Interval = 500;
clock.Enabled = true;
clock.AddRelativeAlarm(quietMs, quiet);
form.Show();
Host.RunUntilStopped();
tray.Destroy();
